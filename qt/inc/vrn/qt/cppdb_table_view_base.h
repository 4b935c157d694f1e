#pragma once

#include <vrn/qt/cell_data.h>
#include <vrn/qt/i_validator.h>
#include <vrn/qt/vrn_qt2_export.h>

#include <boost/any.hpp>
#include <boost/function.hpp>
#include <boost/optional.hpp>
#include <boost/shared_ptr.hpp>

#include <QPointer>
#include <QTableView>

#include <deque>

namespace vrn::qt::detail {

/// A table view whose clipboard commands work on values. Delete and Backspace clear the
/// selected cells, Cut and Copy write them as text, and Paste reads text: each cell through
/// the validator of its column. The values are those of EditRole in cell_data.h.
///
///     auto* members = new QStandardItemModel(3, 2, form);
///     const IValidator::pointer name(new StringEditValidator(40));
///     const IValidator::pointer length(new DoubleEditValidator(3, 0.0, 100.0, true));
///     auto* table = new detail::CppDbTableViewBase(
///         members, [=](int column) { return column == 0 ? name : length; }, form);
///     table->setModel(members);
///     table->setCreateNewRowHandler([=](int column, const auto& values) {
///         const int row = members->rowCount();
///         members->insertRow(row);
///         for (const auto& value : values) {
///             const QModelIndex cell = members->index(row, column++);
///             if (value && cell.isValid())
///                 members->setData(cell, QVariant::fromValue(*value), EditRole);
///         }
///     });
///
/// The view writes nothing but EditRole and ignores what `setData` returns. What the cell
/// shows is the model's to derive, also from an empty `boost::any`.
///
/// **On the clipboard**, rows end in "\n" and their cells are separated by "\t". A single cell
/// is its bare text. Numbers are written in the user's locale, for other programs, but read in
/// the C locale: with a decimal comma, what was copied is refused when it is pasted, except
/// that a comma before exactly three digits is taken for one between thousands. A tab or line
/// break in a value is not escaped.
///
/// **Clear** stores an empty `boost::any` in each selected cell.
///
/// **Copy** of a block leaves out the cells whose column has no validator, and those without
/// a value. A hole in the selection is an empty text. A row ends at its last cell.
///
/// **Paste** skips each text that the validator refuses, and says nothing.
///
/// - A text without tabs and line breaks goes to each selected cell.
/// - A block that is pasted on one cell has its corner there. Columns past the end of the
///   model are dropped, and so are rows, if no handler makes them.
/// - A block that is pasted on several cells is laid over their upper left corner, and only
///   these cells are written. A cell past the end of its line is left alone. A cell below the
///   last line makes keyPressEvent() throw `std::out_of_range`, after the cells before it have
///   been written. See docs/exceptions.md.
///
/// If there is a line break in the text, its last character is dropped, whatever it is. That is
/// the final line break of a block which this view has copied.
///
/// All indexes and numbers are those of the view's model, which may be a proxy. A block that
/// is pasted on one cell goes to the model of the constructor, so give both the same one. Cells
/// stay the same if the write of one of them sorts the rows anew. Cells that have been removed
/// meanwhile are skipped, and after a reset of the model all of them.
///
/// `delete` and `deleteLater` of the control, its parent or its window are safe in any
/// slot of its signals and in any function that it calls, also from a dialog there. The rest of
/// the command is then left out. Slots of what QTableView and its selection model emit for other
/// keys and for the mouse are excluded, because Qt goes on with the view then.
class VRN_QT2_EXPORT CppDbTableViewBase : public QTableView
{
public:
    /// What the clipboard has for a new row: an element for each cell of the line, which is
    /// unset if the validator has refused the text.
    using NewRow = std::deque<boost::optional<boost::any>>;

    /// Asserts "m_model" and "m_getColumnValidator". The model is not owned. It is not set
    /// either: call setModel().
    ///
    /// `getColumnValidator` is called for each cell. A column without a validator, a null
    /// pointer, is not copied; pasting into it is reported and skipped. A block that is
    /// pasted on one cell is read to the end of each line, so the function is called for columns
    /// past the last one, too; there a null pointer is fine. If the function is empty,
    /// keyPressEvent() throws `boost::bad_function_call`.
    CppDbTableViewBase(QAbstractItemModel* model,
        boost::function<boost::shared_ptr<IValidator>(int)> getColumnValidator, QWidget* parent);
    ~CppDbTableViewBase() override;

    /// Called for a line of the clipboard that goes below the last row of the model, with the
    /// column of the first element. It must append a row to the model and fill it: the view
    /// does not write to that row. If it appends no row, the paste ends.
    void setCreateNewRowHandler(boost::function<void(int column, const NewRow& values)> handler);

    /// Other keys than those of the commands have the effect that they have in
    /// QAbstractItemView.
    void keyPressEvent(QKeyEvent* event) override;

private:
    void clearCells();
    void copy() const;
    void paste();
    void pasteAt(const QModelIndex& corner, const QByteArray& block);

    QModelIndexList selectedCells() const;

    QPointer<QAbstractItemModel> m_model;
    boost::function<boost::shared_ptr<IValidator>(int)> m_getColumnValidator;
    boost::function<void(int, const NewRow&)> m_createNewRow;
};

} // namespace vrn::qt::detail
