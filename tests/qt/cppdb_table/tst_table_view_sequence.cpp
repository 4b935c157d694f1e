#include <vrn/qt/cppdb_table_view_base.h>

#include <QSortFilterProxyModel>

#include "support/clipboard_rules.h"
#include "support/random_sequence.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_fixture.h"

#include <optional>
#include <stdexcept>

using namespace vrn::test;
using vrn::qt::EditRole;
using vrn::qt::detail::CppDbTableViewBase;

namespace {

constexpr int columnCount = 3;
constexpr int mostRows = 8;

/// What the handler does with a line for a new row.
enum class Handler
{
    None,
    Declines,
    AppendsOne,
    AppendsTwo,
};

/// The rules, on plain rows of typed values; a cell without a value is unset. Places are those
/// of the view, and `order` tells which row is where at the beginning of a command.
class Rules : public ClipboardRules
{
public:
    using Value = std::optional<boost::any>;
    using Row = std::vector<Value>;

    explicit Rules(const Columns& validators)
        : m_columns(validators)
    {}

    void clear(const std::vector<Place>& selected)
    {
        for (const Place& place : selected)
            rows[rowOf(place)][std::size_t(place.column)] = boost::any();
    }

    std::vector<Row> rows;
    std::vector<int> order;
    Handler handler = Handler::None;

protected:
    int rowCount() const override { return int(rows.size()); }

    std::optional<QString> written(const Place& place) const override
    {
        const Value& value = rows[rowOf(place)][std::size_t(place.column)];
        if (!value)
            return {};
        if (const auto* number = boost::any_cast<double>(&*value))
            return QString::number(*number, 'f', 3);
        const QString text = TypedModel::textOf(*value);
        return value->empty() ? QString() : text.startsWith('\'') ? text.mid(1).chopped(1) : text;
    }

    void read(const Place& place, const QString& text) override
    {
        readInto(rows[rowOf(place)], place.column, text);
    }

    bool append(int column, const QStringList& line) override
    {
        const bool makesRows = handler == Handler::AppendsOne || handler == Handler::AppendsTwo;
        if (!makesRows || rowCount() >= mostRows)
            return false;
        Row row(columnCount);
        for (const QString& text : line)
            readInto(row, column++, text);
        rows.push_back(row);
        if (handler == Handler::AppendsTwo)
            rows.emplace_back(columnCount);
        return true;
    }

private:
    std::size_t rowOf(const Place& place) const
    {
        const auto row = std::size_t(place.row);
        return row < order.size() ? std::size_t(order[row]) : row;
    }

    void readInto(Row& row, int column, const QString& text) const
    {
        boost::any value;
        if (column < columnCount && m_columns(column)->validate(text, value, {}))
            row[std::size_t(column)] = value;
    }

    const Columns& m_columns;
};

/// A view of a table beside the rules for it. The view of a sorted table shows a proxy that
/// sorts whenever the first column changes.
class Beside : public Subject
{
public:
    explicit Beside(bool sorted)
        : m_isSorted(sorted)
    {
        if (sorted) {
            m_proxy.setSourceModel(&m_model);
            m_proxy.sort(0);
        }
        m_view.emplace(&shown(), m_columns, nullptr);
        m_view->setModel(&shown());
        setClipboard({});
        for (int row = 0; row < m_model.rowCount(); ++row)
            m_rules.rows.push_back(rowOf(row));
    }

    static QStringList actions()
    {
        return {"select a cell", "select a block", "select another block", "select nothing",
            "clear", "clear by Backspace", "cut", "copy", "paste", "another text", "a line more",
            "another handler", "another key", "insert a row", "remove a row", "set a cell", "sort",
            "reset"};
    }

    QString perform(int action, unsigned argument) override
    {
        const QString name = actions().at(action);
        Choice choice(argument);
        m_thrown = m_throws = false;
        if (name.startsWith("select"))
            selectBy(name, choice);
        else if (name == "another key")
            press(*m_view, otherKey(choice), choice.below(2) ? Qt::ShiftModifier : Qt::NoModifier);
        else if (name == "another text" || name == "a line more")
            setText(name == "a line more" ? m_rules.clipboard : QString(), choice);
        else if (name == "another handler")
            setHandler(Handler(choice.below(m_isSorted ? 3 : 4)));
        else if (name == "sort")
            m_proxy.sort(m_isSorted ? 0 : -1, Qt::SortOrder(choice.below(2)));
        else if (name == "reset")
            m_model.reset();
        else if (name.endsWith("a row") || name == "set a cell")
            changeModel(name, choice);
        else
            command(name);
        return difference();
    }

private:
    QAbstractItemModel& shown()
    {
        return m_isSorted ? static_cast<QAbstractItemModel&>(m_proxy) : m_model;
    }

    Rules::Row rowOf(int row) const
    {
        Rules::Row cells;
        for (int column = 0; column < columnCount; ++column) {
            const QVariant cell = m_model.index(row, column).data(EditRole);
            cells.push_back(cell.canConvert<boost::any>() ? Rules::Value(cell.value<boost::any>())
                                                          : std::nullopt);
        }
        return cells;
    }

    void selectBy(const QString& name, Choice& choice)
    {
        auto& selection = *m_view->selectionModel();
        if (name == "select nothing" || shown().rowCount() == 0)
            return selection.clearSelection();
        const auto cell = [&] {
            const int row = choice.below(shown().rowCount());
            return shown().index(row, choice.below(columnCount));
        };
        const QModelIndex first = cell();
        const QModelIndex last = name == "select a cell" ? first : cell();
        const QItemSelection block(shown().index(std::min(first.row(), last.row()),
                                       std::min(first.column(), last.column())),
            shown().index(
                std::max(first.row(), last.row()), std::max(first.column(), last.column())));
        selection.select(block,
            name == "select another block" ? QItemSelectionModel::Toggle
                                           : QItemSelectionModel::ClearAndSelect);
    }

    static int otherKey(Choice& choice)
    {
        constexpr Qt::Key keys[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Right,
            Qt::Key_Home, Qt::Key_End, Qt::Key_Space, Qt::Key_Return, Qt::Key_Escape, Qt::Key_A};
        return keys[choice.below(int(std::size(keys)))];
    }

    void setText(QString text, Choice& choice)
    {
        static const char* const cells[] = {"7", "1.5", "-20", "", "x", "1,5", "\xC3\xA9", "8\r"};
        static const char* const separators[] = {"\t", "\n"};
        for (int i = choice.below(6); i >= 0; --i) {
            text += QString::fromUtf8(choice.of(cells));
            if (i > 0 || choice.below(2))
                text += choice.of(separators);
        }
        m_rules.clipboard = text.right(200);
        setClipboard(m_rules.clipboard);
    }

    void setHandler(Handler handler)
    {
        m_rules.handler = handler;
        if (handler == Handler::None)
            return m_view->setCreateNewRowHandler({});
        m_view->setCreateNewRowHandler(
            [this, handler](int column, const CppDbTableViewBase::NewRow& values) {
                if (handler == Handler::Declines || m_model.rowCount() >= mostRows)
                    return;
                const int row = m_model.rowCount();
                m_model.append("none,none,none");
                for (const auto& value : values) {
                    const QModelIndex cell = m_model.index(row, column++);
                    if (value && cell.isValid())
                        m_model.setData(cell, QVariant::fromValue(*value), EditRole);
                }
                if (handler == Handler::AppendsTwo)
                    m_model.append("none,none,none");
            });
    }

    void changeModel(const QString& name, Choice& choice)
    {
        static const char* const rows[] = {"1.0,'a',1", "-,-,-", "2.5,'',-", "none,other,3"};
        static const char* const cells[columnCount][4] = {
            {"0.5", "3.0", "-", "none"}, {"'b'", "''", "-", "other"}, {"4", "-5", "-", "none"}};
        const int count = m_model.rowCount();
        if (name == "insert a row" && count < mostRows) {
            const int row = choice.below(count + 1);
            m_model.insert(row, choice.of(rows));
            m_rules.rows.insert(m_rules.rows.begin() + row, rowOf(row));
        } else if (name == "remove a row" && count > 0) {
            const int row = choice.below(count);
            m_model.remove(row);
            m_rules.rows.erase(m_rules.rows.begin() + row);
        } else if (name == "set a cell" && count > 0) {
            const int row = choice.below(count);
            const int column = choice.below(columnCount);
            m_model.setData(
                m_model.index(row, column), TypedModel::cellOf(choice.of(cells[column])), EditRole);
            m_rules.rows[std::size_t(row)] = rowOf(row);
        }
    }

    void command(const QString& name)
    {
        std::vector<Place> selected;
        for (const QModelIndex& index : m_view->selectionModel()->selectedIndexes())
            selected.push_back({index.row(), index.column()});
        m_rules.order.clear();
        for (int row = 0; row < shown().rowCount(); ++row) {
            const QModelIndex index = shown().index(row, 0);
            m_rules.order.push_back((m_isSorted ? m_proxy.mapToSource(index) : index).row());
        }
        if (name == "copy" || name == "cut")
            m_rules.copy(selected);
        if (name.startsWith("clear") || name == "cut")
            m_rules.clear(selected);
        if (name == "paste")
            m_throws = !m_rules.paste(selected);
        try {
            if (name == "copy")
                pressCopy(*m_view);
            else if (name == "cut")
                pressCut(*m_view);
            else if (name == "paste")
                pressPaste(*m_view);
            else if (name == "clear")
                pressDelete(*m_view);
            else
                press(*m_view, Qt::Key_Backspace);
        } catch (const std::out_of_range&) {
            m_thrown = true;
        }
    }

    QString difference() const
    {
        if (m_thrown != m_throws)
            return m_thrown ? "an exception" : "no exception";
        if (clipboard() != m_rules.clipboard)
            return "the clipboard holds \"" + clipboard() + "\" instead of \"" + m_rules.clipboard
                + '"';
        if (m_model.rowCount() != int(m_rules.rows.size()))
            return QString("%1 rows instead of %2")
                .arg(m_model.rowCount())
                .arg(m_rules.rows.size());
        for (int row = 0; row < m_model.rowCount(); ++row) {
            const Rules::Row cells = rowOf(row);
            const Rules::Row& due = m_rules.rows[std::size_t(row)];
            for (std::size_t column = 0; column < columnCount; ++column) {
                if (describe(cells[column]) != describe(due[column]))
                    return QString("%1,%2 is %3 instead of %4")
                        .arg(row)
                        .arg(column)
                        .arg(describe(cells[column]), describe(due[column]));
            }
        }
        return {};
    }

    static QString describe(const Rules::Value& value)
    {
        return value ? vrn::test::describe(*value) : QString("no value");
    }

    const bool m_isSorted;
    Columns m_columns{"ntw"};
    TypedModel m_model{"1.0,'a',1 | 2.0,'b',2 | 3.0,'c',3 | 4.0,'d',4"};
    QSortFilterProxyModel m_proxy;
    QAbstractItemModelTester m_modelTester{
        &m_model, QAbstractItemModelTester::FailureReportingMode::QtTest};
    QAbstractItemModelTester m_proxyTester{
        &m_proxy, QAbstractItemModelTester::FailureReportingMode::QtTest};
    std::optional<CppDbTableViewBase> m_view;
    Rules m_rules{m_columns};
    bool m_thrown = false;
    bool m_throws = false;
};

} // namespace

class TestTableViewSequence : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aPlainTableFollowsTheRules()
    {
        runRandomSequences(
            Beside::actions(), [] { return std::make_unique<Beside>(false); }, 50000);
    }

    void aSortedTableFollowsTheRules()
    {
        runRandomSequences(
            Beside::actions(), [] { return std::make_unique<Beside>(true); }, 50000);
    }
};

VRN_TEST(TestTableViewSequence)
#include "tst_table_view_sequence.moc"
