#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/table_view.h>

#include <boost/make_shared.hpp>

#include <QAbstractTableModel>
#include <QApplication>
#include <QClipboard>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLocale>
#include <QSortFilterProxyModel>

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "comparison.h"

namespace bench {
namespace {

using namespace vrn::qt;

double mixtureOf(const std::vector<double>& numbers, std::size_t columns)
{
    double sum = 0.0;
    for (std::size_t first = 0; first < numbers.size(); first += columns)
        sum += numbers[first] * numbers[first + columns - 1];
    return sum;
}

class NumberModel : public QAbstractTableModel
{
public:
    NumberModel(int rows, int columns)
        : m_columns(columns)
        , m_numbers(std::size_t(rows) * std::size_t(columns))
    {
        std::iota(m_numbers.begin(), m_numbers.end(), 0.125);
    }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_numbers.size()) / m_columns;
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : m_columns;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role == EditRole)
            return QVariant::fromValue<boost::any>(numberAt(index));
        return role == Qt::DisplayRole ? QVariant(numberAt(index)) : QVariant();
    }
    bool setData(const QModelIndex& index, const QVariant& value, int) override
    {
        m_numbers[place(index)] = boost::any_cast<double>(value.value<boost::any>());
        Q_EMIT dataChanged(index, index);
        return true;
    }

    // Depends on which cells share a row, but not on the order of the rows.
    double mixture() const { return mixtureOf(m_numbers, std::size_t(m_columns)); }

    double numberAt(const QModelIndex& index) const { return m_numbers[place(index)]; }

private:
    std::size_t place(const QModelIndex& index) const
    {
        return std::size_t(index.row() * m_columns + index.column());
    }

    int m_columns;
    std::vector<double> m_numbers;
};

/// A view of numbers, perhaps sorted by their first column.
struct Table
{
    Table(int rows, int columns, bool sorted = false)
        : model(rows, columns)
    {
        if (sorted) {
            proxy.setSourceModel(&model);
            proxy.sort(0);
        }
        view = std::make_unique<detail::CppDbTableViewBase>(
            &shown(sorted), [this](int) { return validator; }, nullptr);
        view->setModel(&shown(sorted));
    }

    QAbstractItemModel& shown(bool sorted)
    {
        return sorted ? static_cast<QAbstractItemModel&>(proxy) : model;
    }

    void press(int key) const
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::ControlModifier);
        view->keyPressEvent(&event);
    }

    NumberModel model;
    QSortFilterProxyModel proxy;
    IValidator::pointer validator = boost::make_shared<DoubleEditValidator>();
    std::unique_ptr<detail::CppDbTableViewBase> view;
};

// --- copy --------------------------------------------------------------------------------

constexpr int copiedColumns = 7;

std::shared_ptr<Table> selectedTable(int rows)
{
    auto table = std::make_shared<Table>(rows, copiedColumns);
    table->view->selectAll();
    return table;
}

void copy(const Table& table)
{
    table.press(Qt::Key_C);
    if (!QApplication::clipboard()->text().startsWith(QLatin1String("0.125\t1.125\t")))
        qFatal("the numbers were not copied");
}

void formatBare(const Table& table)
{
    const QLocale locale;
    int length = 0;
    const QModelIndexList selected = table.view->selectionModel()->selectedIndexes();
    for (const QModelIndex& index : selected)
        length += int(locale.toString(table.model.numberAt(index), 'f', 3).size());
    if (length == 0)
        qFatal("the numbers were not written");
}

// --- paste -------------------------------------------------------------------------------

constexpr int pastedRows = 10000;
constexpr int pastedColumns = 10;

/// Numbers in random order, which are others each time.
class Texts
{
public:
    Texts()
    {
        std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same in each run
        std::vector<int> eighths(pastedRows * pastedColumns);
        std::iota(eighths.begin(), eighths.end(), 0);
        for (Block& block : m_blocks) {
            std::shuffle(eighths.begin(), eighths.end(), random);
            std::vector<double> numbers;
            for (const int eighth : eighths) {
                numbers.push_back(0.125 * eighth);
                block.cells.push_back(QString::number(numbers.back(), 'f', 3));
                block.text += block.cells.back();
                block.text += QLatin1Char(block.cells.size() % pastedColumns == 0 ? '\n' : '\t');
            }
            block.mixture = mixtureOf(numbers, pastedColumns);
        }
    }

    struct Block
    {
        std::vector<QString> cells;
        QString text;
        double mixture = 0.0;
    };
    const Block& next() { return m_blocks[++m_count % 2]; }

private:
    Block m_blocks[2];
    std::size_t m_count = 0;
};

void paste(Table& table, bool sorted, Texts& texts)
{
    const Texts::Block& block = texts.next();
    QApplication::clipboard()->setText(block.text);
    table.view->selectionModel()->select(
        table.shown(sorted).index(0, 0), QItemSelectionModel::ClearAndSelect);
    table.press(Qt::Key_V);
    // The sums are exact: those of multiples of 1/64.
    if (table.model.mixture() != block.mixture)
        qFatal("the numbers were not pasted");
}

void setBare(Table& table, bool sorted, Texts& texts)
{
    const Texts::Block& block = texts.next();
    QAbstractItemModel& model = table.shown(sorted);
    auto cell = block.cells.begin();
    for (int row = 0; row < pastedRows; ++row) {
        for (int column = 0; column < pastedColumns; ++column, ++cell) {
            boost::any value;
            if (table.validator->validate(*cell, value, {}))
                model.setData(model.index(row, column), QVariant::fromValue(value), EditRole);
        }
    }
}

void addPaste(const std::string& name, const std::string& alternative, double bound, bool sorted)
{
    const auto table = std::make_shared<Table>(pastedRows, pastedColumns, sorted);
    const auto texts = std::make_shared<Texts>();
    add({name, alternative, bound, [=] { paste(*table, sorted, *texts); },
        [=] { setBare(*table, sorted, *texts); }});
}

} // namespace

void addTableViewComparisons()
{
    const auto table = selectedTable(20000);
    add({"table view/copy 20000 x 7 numbers", "selectedIndexes() and QLocale::toString", 3.0,
        [=] { copy(*table); }, [=] { formatBare(*table); }});
    const auto large = selectedTable(100000);
    const auto small = selectedTable(1000);
    add({"table view/copy 100000 x 7 numbers at once", "1000 x 7 numbers, 100 times", 1.3,
        [=] { copy(*large); },
        [=] {
            for (int i = 0; i < 100; ++i)
                copy(*small);
        }});
    addPaste("table view/paste 10000 x 10 numbers", "validate() and setData()", 2.0, false);
    addPaste("table view/paste them into a sorted proxy", "the same into the proxy", 1.1, true);
}

} // namespace bench
