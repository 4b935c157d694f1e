#pragma once

#include <vrn/qt/i_validator.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <QItemDelegate>
#include <QPointer>
#include <QWidget>

namespace vrn::qt {

class MultiEditEnumBox;

/// Edits a cell with a MultiEditEnumBox, a drop-down list of named values. The model has the
/// value of the cell, see cell_data.h.
///
///     auto* table = new QTableView(form);
///     const auto fill = [](MultiEditEnumBox& box, const QModelIndex&) {
///         box.setValues({{"S235", 235}, {"S355", 355}});
///     };
///     table->setItemDelegateForColumn(
///         0, new ComboItemDelegate(table, fill, &vrn::any_equal<int>, nullptr));
///
/// An item that the user chooses with the mouse is written, and the editor closes. Items that
/// the user walks through by keys are not: Enter, Tab and a lost focus write what the box shows
/// then. Escape closes the editor without writing.
///
/// The name of the value, the same text as the tool tip, and the value itself go to the model
/// in three calls of setData(), in this order. One that fails is reported, and the next follows.
/// A box that varies writes nothing, and neither does one without a value. A pick in a varying
/// box closes the editor before the box stops varying, so it writes nothing either. If a proxy
/// filters the row out because of a role that was written, the rest goes to its source.
///
/// A cell with an empty value is reported when the editor opens. The box shows no item then, and
/// writes nothing unless the user chooses one.
///
/// A change of the cell while the editor is open is read by the box as the value of a second
/// object: if it is another value, the box varies.
///
/// Widgets that the fill callback adds to the box are parts of the editor: moving the focus
/// among them does not end editing. For those of composite editors of an application there are
/// these dynamic properties, which a part has:
///
/// - "vrn_property_delegate_editor_widget", the editor as a `QWidget*`;
/// - "vrn_property_delegate_filter_focus_out", true if the delegate takes only a lost focus of
///   the part for one of the editor, and not the keys;
/// - "vrn_property_delegate_combobox_commit_on_activate", which the box itself has in the turn
///   of the event loop in which the mouse was released over it.
///
/// Exceptions reach the application as those of a LineEditItemDelegate do; dialogs, `deleteLater`
/// and `delete` are safe where they are with that one. The fill callback may also destroy the
/// delegate or the box: no editor opens then.
class VRN_QT2_EXPORT ComboItemDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /// `fill` gives the box of a cell its items; without it there are none. `anyEq` compares
    /// values. With a validator, the box is editable.
    ComboItemDelegate(QObject* parent,
        boost::function<void(MultiEditEnumBox&, const QModelIndex&)> fill,
        bool (*anyEq)(const boost::any&, const boost::any&),
        boost::shared_ptr<IValidator> validator);
    ~ComboItemDelegate() override;

    bool eventFilter(QObject* object, QEvent* event) override;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// Null without a function to compare values, which is reported.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    /// An editor that is not a MultiEditEnumBox is reported, and nothing happens.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    /// Takes no event of a cell that is not being edited.
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
        const QModelIndex& index) override;

private Q_SLOTS:
    /// For a signal of a box: writes its value and closes it, unless it varies. A box without a
    /// value is reported.
    void emitCommitData();

private:
    bool takeEnter(QObject* object, QWidget* editor, QEvent* event);
    void commitAndClose(QWidget* editor);

    boost::function<void(MultiEditEnumBox&, const QModelIndex&)> m_fill;
    bool (*m_anyEq)(const boost::any&, const boost::any&);
    boost::shared_ptr<IValidator> m_validator;
    mutable QPointer<QWidget> m_written; ///< The box whose value is on its way to the model.
};

} // namespace vrn::qt
