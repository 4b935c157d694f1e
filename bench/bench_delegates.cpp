#include <vrn/qt/delegates.h>
#include <vrn/qt/double_edit_validator.h>

#include <boost/make_shared.hpp>

#include <QAbstractTableModel>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>

#include <memory>

#include "comparison.h"
#include "controls/line_edits/line_edit_impl_p.h"

namespace bench {
namespace {

using namespace vrn::qt;

constexpr int pages = 50;

// Each cell has a number of its own.
class Numbers : public QAbstractTableModel
{
public:
    Numbers(int rows, int columns)
        : m_rows(rows)
        , m_columns(columns)
    {}

    int rowCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : m_rows; }

    int columnCount(const QModelIndex& parent) const override
    {
        return parent.isValid() ? 0 : m_columns;
    }

    QVariant data(const QModelIndex& index, int role) const override
    {
        const double number = index.row() + 0.125 * index.column();
        if (role == Qt::DisplayRole)
            return QString::number(number, 'f', 3);
        if (role == vrn::qt::EditRole)
            return QVariant::fromValue<boost::any>(number);
        return {};
    }

    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        return QAbstractTableModel::flags(index) | Qt::ItemIsEditable;
    }

private:
    int m_rows;
    int m_columns;
};

boost::shared_ptr<IValidator> numbers()
{
    return boost::make_shared<DoubleEditValidator>(3, 0.0, 1e6, false);
}

// A table of which every cell can be seen, or as many as fit.
struct Table
{
    Table(int rows, int columns)
        : model(rows, columns)
    {
        view.setModel(&model);
        for (int column = 0; column < columns; ++column)
            view.setColumnWidth(column, 80);
        view.resize(1200, 900);
    }

    void show()
    {
        view.show();
        view.activateWindow();
        view.setFocus();
        QCoreApplication::processEvents();
    }

    Numbers model;
    QTableView view;
};

void deleteEditors()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

// Without painting on either side: a table paints all of its cells when it gets the focus back,
// which takes several times as long as the editor.
void editThousandCells(Table& table)
{
    table.view.setFocus();
    for (int row = 0; row < 100; ++row) {
        for (int column = 0; column < 10; ++column) {
            const QModelIndex index = table.model.index(row % 25, column);
            table.view.setCurrentIndex(index);
            table.view.edit(index);
            QWidget* editor = table.view.indexWidget(index);
            if (!editor || !editor->hasFocus())
                qFatal("no cell is being edited");
            QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            QCoreApplication::sendEvent(editor, &escape);
            deleteEditors();
        }
    }
}

// The line edit that the editor of a cell derives from, without a table.
void makeThousandLineEdits(QWidget& window)
{
    for (int i = 0; i < 1000; ++i) {
        auto* edit = new detail::LineEditImpl(detail::LineEditImpl::optionBorderless, &window);
        edit->setGeometry(80, 30, 80, 30);
        edit->show();
        edit->setFocus();
        if (!edit->hasFocus())
            qFatal("the edit has no focus");
        edit->deleteLater();
        deleteEditors();
    }
}

void scrollPages(Table& table)
{
    QScrollBar& bar = *table.view.verticalScrollBar();
    const int step = bar.maximum() / pages;
    for (int page = 0; page < pages; ++page) {
        bar.setValue(page * step);
        table.view.viewport()->repaint();
    }
}

} // namespace

void addDelegateComparisons()
{
    const auto edited = std::make_shared<Table>(25, 10);
    edited->view.setItemDelegate(new LineEditItemDelegate(numbers(), &edited->view));
    const auto bare = std::make_shared<QWidget>();
    bare->resize(1200, 900);
    bare->setFocusPolicy(Qt::StrongFocus);
    add({"delegates/1000 cells edited", "bare line edits outside of a table", 1.5,
        [edited] {
            edited->show();
            editThousandCells(*edited);
        },
        [bare] {
            bare->show();
            bare->activateWindow();
            QCoreApplication::processEvents();
            makeThousandLineEdits(*bare);
        }});

    const auto forwarded = std::make_shared<Table>(100'000, 7);
    auto* forward = new ForwardDelegate(forwarded->view);
    forward->setItemDelegate(new LineEditItemDelegate(numbers(), &forwarded->view));
    forward->setItemDelegateForColumn(1, new CheckboxItemDelegate(&forwarded->view));
    forward->setItemDelegateForRow(2, new LineEditItemDelegate(numbers(), &forwarded->view));
    forward->setItemDelegateForCell(3, 3, new LineEditItemDelegate(numbers(), &forwarded->view));
    forwarded->view.setItemDelegate(forward);
    const auto plain = std::make_shared<Table>(100'000, 7);
    plain->view.setItemDelegate(new QItemDelegate(&plain->view));
    forwarded->show();
    plain->show();
    add({"delegates/50 pages of 100000 rows", "QItemDelegate", 1.5,
        [forwarded] { scrollPages(*forwarded); }, [plain] { scrollPages(*plain); }});
}

} // namespace bench
