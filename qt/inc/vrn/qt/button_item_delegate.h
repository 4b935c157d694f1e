#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/function.hpp>

#include <QItemDelegate>
#include <QModelIndex>

#include <set>

namespace vrn::qt {

/// Makes a cell a push button with the text of the cell. It opens no editor: where a view would
/// open one, the button is pressed, and a function runs.
///
///     auto* table = new QTableView(form);
///     table->setItemDelegateForColumn(6,
///         new ButtonItemDelegate(
///             [](QAbstractItemModel* model, const QModelIndex& index) {
///                 model->removeRow(index.row());
///             },
///             table));
///
/// While the function runs, the button is painted sunken. It is flat until its row is selected.
///
/// The function may change the model as it likes, and may `delete` the delegate. It must not
/// `delete` the view, with which Qt goes on; `deleteLater` is fine. What it throws passes
/// through the view.
class VRN_QT2_EXPORT ButtonItemDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /// A missing function is reported, and a press then does nothing. The parent is also the
    /// widget that a style is told to paint for, if it is one.
    ButtonItemDelegate(
        boost::function<void(QAbstractItemModel*, const QModelIndex&)> editFn, QObject* parent);
    ~ButtonItemDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// The press. `parent` is painted at once, and null is returned.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    /// Does nothing.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    /// Does nothing.
    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;

private:
    // While a cell's function runs.
    mutable std::set<QModelIndex> m_pressed;
    boost::function<void(QAbstractItemModel*, const QModelIndex&)> m_editFn;
};

} // namespace vrn::qt
