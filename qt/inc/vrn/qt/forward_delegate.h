#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <QPointer>
#include <QStyledItemDelegate>

#include <memory>
#include <unordered_map>
#include <utility>

class QAbstractItemView;

namespace vrn::qt {

class ForwardDelegateModelMediator;

/// Gives single cells delegates of their own. As the one delegate of a view, it hands each call
/// on to the delegate of the cell, or else to that of its row, of its column, or of all cells;
/// where there is none, it is a QStyledItemDelegate.
///
///     auto* table = new QTableView(form);
///     auto* delegate = new ForwardDelegate(*table);
///     delegate->setItemDelegate(new LineEditItemDelegate(
///         boost::make_shared<DoubleEditValidator>(2, 0.0, 100.0, false), table));
///     delegate->setItemDelegateForColumn(3, new CheckboxItemDelegate(table));
///     table->setItemDelegate(delegate);
///
/// The delegates belong to the caller. One that has been destroyed counts as none.
///
/// Each setter passes the signals of its delegate on, and stops passing on those of the delegate
/// before it. This is counted per call: a delegate of two cells commits twice, and when one of
/// the two gets another delegate, the view hears nothing more of the first, not even from the
/// other cell. With Qt 6, a view warns when an editor is closed twice. So give a delegate for
/// many cells to a column, a row or all cells.
///
/// If rows are inserted into the model that the view had when this was constructed, delegates
/// of rows and cells move along; past the largest number they are dropped. Nothing else moves
/// them: neither removed or moved rows, nor columns. Rows that are inserted below another row of
/// a tree count like those at the top.
class VRN_QT2_EXPORT ForwardDelegate : public QStyledItemDelegate
{
public:
    /// `view` becomes the parent. The caller makes this its delegate.
    explicit ForwardDelegate(QAbstractItemView& view);
    ~ForwardDelegate() override;

    /// A null delegate is the same as none. A ForwardDelegate that would hand calls back to this
    /// one is reported, and counts as none.
    void setItemDelegate(QAbstractItemDelegate* delegate);
    void setItemDelegateForCell(int row, int column, QAbstractItemDelegate* delegate);
    void setItemDelegateForColumn(int column, QAbstractItemDelegate* delegate);
    void setItemDelegateForRow(int row, QAbstractItemDelegate* delegate);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;

private:
    friend class ForwardDelegateModelMediator;

    using Delegate = QPointer<QAbstractItemDelegate>;
    using Cell = std::pair<int, int>; // Row and column.
    struct CellHash
    {
        std::size_t operator()(const Cell& cell) const;
    };

    QAbstractItemDelegate* get_cell_delegate(int row, int column) const;
    QAbstractItemDelegate* delegateOf(const QModelIndex& index) const;
    void replace(Delegate& slot, QAbstractItemDelegate* delegate);
    void connect_delegate(QAbstractItemDelegate* delegate);
    void disconnect_delegate(QAbstractItemDelegate* delegate);
    bool leadsTo(const ForwardDelegate& other) const;

    std::unordered_map<Cell, Delegate, CellHash> m_cells;
    std::unordered_map<int, Delegate> m_columns;
    std::unordered_map<int, Delegate> m_rows;
    Delegate m_default;
    std::shared_ptr<ForwardDelegateModelMediator> m_mediator;
};

} // namespace vrn::qt
