#pragma once

#include <vrn/qt/i_validator.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/function.hpp>
#include <boost/shared_ptr.hpp>

#include <QItemDelegate>

namespace vrn::qt {

/// Edits a cell through a validator. The model has the value of the cell, see cell_data.h;
/// the text in the cell is only how the value is written.
///
///     auto* table = new QTableView(form);
///     auto* model = new QStandardItemModel(3, 2, table);
///     model->setData(model->index(0, 1), QVariant::fromValue<boost::any>(12.5), EditRole);
///     table->setModel(model);
///     table->setItemDelegateForColumn(1,
///         new LineEditItemDelegate(
///             boost::make_shared<DoubleEditValidator>(2, 0.0, 100.0, false), table));
///
/// The editor shows the value as IValidator::reformat writes it. Nothing is validated while the
/// user types. When editing ends, IValidator::validate decides, and not validateWhenFinished:
/// of a text that it accepts, the value, what IValidator::reformatForDisplay writes for it, and
/// the same text as the tool tip go to the model in one setItemData(). A text that it refuses,
/// or accepts without a value, is dropped without a word, and the cell stays as it is.
///
/// Enter, Tab and a lost focus write the text and close the editor; Escape only closes it. The
/// editor gets Enter before the event filters of delegates do. Once the view has let go of the
/// editor, it emits nothing, and the delegate takes no more events of it.
///
/// A cell without a value has no editor and is a white block. An empty value is edited: the
/// validator is asked to write it.
///
/// The function of a button may open a dialog. While it runs, a lost focus does not end the edit,
/// and the editor gets the focus back afterwards. Functions of the validator and slots of the
/// model may open one, too, while the text is being written.
///
/// What the validator throws while the view commits its text reaches the application from the
/// event loop, after the view has finished. The cell stays as it is. An editor whose value the
/// validator throws at is closed from the event loop too, and writes nothing: its text is not
/// that of the cell.
///
/// `deleteLater` of the view, the model, the delegate and the editor is safe at any time, and so
/// is `delete` while an editor is open. `delete` of the view or the editor is excluded while a
/// view reads or writes the cell, in slots of the model or the delegate and in functions of the
/// validator, and so is that of the model in its own slots: Qt goes on with them.
class VRN_QT2_EXPORT LineEditItemDelegate : public QItemDelegate
{
    Q_OBJECT

public:
    /// Without a validator, values can be neither edited nor written; this is reported. It is
    /// for cells without a value.
    explicit LineEditItemDelegate(QObject* parent);
    LineEditItemDelegate(boost::shared_ptr<IValidator> validator, QObject* parent);
    /// Each editor has a button, which hands the text of the editor to `callback` and shows the
    /// text that it returns. This writes nothing to the model. An empty function makes no button.
    LineEditItemDelegate(boost::shared_ptr<IValidator> validator,
        boost::function<QString(const QString&)> callback, QObject* parent);
    ~LineEditItemDelegate() override;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    /// Null for a cell without a value.
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    /// An editor that this class has not made is reported, and nothing happens.
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(
        QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
        const QModelIndex& index) const override;
    /// That of QItemDelegate, until the view lets go of the editor.
    bool eventFilter(QObject* object, QEvent* event) override;

private Q_SLOTS:
    /// For a signal of an editor.
    void commitAndCloseEditor();
    /// For a signal of an editor that stays open.
    void commitOnly();

private:
    boost::shared_ptr<IValidator> m_validator;
    boost::function<QString(const QString&)> m_callback;
};

} // namespace vrn::qt
