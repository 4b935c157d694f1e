#pragma once

#include <vrn/qt/edit_state.h>
#include <vrn/qt/property_selection.h>
#include <vrn/qt/value_history.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <QWidget>

#include <memory>
#include <string>

class QUndoStack;

namespace vrn::qt {

/// What a row of a page shows, for tests and tools.
struct PropertyRow
{
    PropertyState::Kind state = PropertyState::NoObject;
    QString text; ///< What the editor shows, or would show once its section is open.
    QString reason; ///< Why it is unreadable, unfinished or refused.
    EditState edit = EditState::Untouched;
    bool isReadOnly = false;
    /// Whether the user may edit it as far as FieldOf::enabledIf() is concerned.
    bool isEnabled = true;
};

/// Shows the properties of the selected objects, and writes what the user edits and nothing
/// else:
///
///     PropertySet<Beam> beams("beam", [](int n) { return tr("%n beam(s)", nullptr, n); });
///     beams.section("geometry", tr("Geometry"))
///         .add("depth", tr("&Depth"), &Beam::depth,
///             field::quantity(UnitId::GEO_LENGTH).between(0.1, 40.0));
///     ObjectModel objects;
///     objects.addKind(beams, [this](ObjectId id) {
///         return id.key < selection.size() ? &selection[id.key] : nullptr;
///     });
///     QUndoStack undo;
///
///     auto* page = new PropertyPage(form);
///     page->setModel(&objects);
///     page->setUndoStack(&undo);
///     page->setSelection({0, 1});
///
/// What the user types is pending from the first key that changes the text until Enter, Tab or
/// leaving the field. Folding, hiding or disabling the field, see FieldOf::enabledIf(), another
/// selection, other units, another locale, setReadOnly() and a window that is asked to close end
/// it, too, before they take effect. A complete text is written to the objects that it was typed
/// for. One that is not complete stays, in red with its reason, after Enter, Tab and leaving; the
/// others drop it. Another window and an open menu do not end it, and neither do changes of the
/// model: Escape then shows what the model has. Before anything else that takes the model as it is,
/// such as saving or deleting, call finishEditing().
///
/// The page holds model, stack and history weakly or shared; the model and the stack may go
/// before it. Once flush() has run, it shows what a new page would show, but for a field with
/// a pending text. While the model writes, for this page or for anybody else, no other edit is
/// taken: a pending text then ends after the write, and another selection, other units and the
/// like are shown after that.
///
/// Names of the objects in it, for tests and style sheets: "length" for the editor of the
/// property "length", "length.caption", "length.unit", "section.geometry", "filter", "receipt".
///
/// `delete` and `deleteLater` of the page, its parent or its window are safe in any slot of
/// its signals and in any function of the model and of the history that it calls, also from a
/// dialog there. There are two exceptions:
/// - An edit may end because a widget around the page is hidden: Qt goes on with what it hides.
///   To hide the page itself is safe, and so is closing its window.
/// - Qt goes on with an editor of the page after the signals of that editor.
class VRN_QT2_EXPORT PropertyPage : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(bool readOnly READ isReadOnly WRITE setReadOnly)
    Q_PROPERTY(bool filterVisible READ isFilterVisible WRITE setFilterVisible)
    Q_PROPERTY(bool receiptVisible READ isReceiptVisible WRITE setReceiptVisible)

public:
    explicit PropertyPage(QWidget* parent = nullptr);
    /// A pending text is dropped: nothing is written from here.
    ~PropertyPage() override;

    PropertyModel* model() const;
    void setModel(PropertyModel* model);
    /// Without a stack edits cannot be undone.
    void setUndoStack(QUndoStack* stack);
    /// Where fields with a Field::history() keep what was entered. Without it there is none.
    void setHistory(boost::shared_ptr<vrn::IValueHistoryStorage> storage);

    /// In any order. An id that finds no object is passed over and not forgotten: when
    /// undoing brings back a deleted object, the page shows it again.
    void setSelection(const ObjectIds& ids);
    const ObjectIds& selection() const; ///< Sorted, without duplicates.

    bool isReadOnly() const;
    void setReadOnly(bool readOnly);
    bool isFilterVisible() const;
    void setFilterVisible(bool visible);
    bool isReceiptVisible() const;
    void setReceiptVisible(bool visible);

    /// Whether a text waits for its end.
    bool isPending() const;
    /// Writes a complete text. False if a field has one that is not complete or was refused:
    /// the first in reading order gets the focus and shows its reason, and the application
    /// stops what it was about to do. False, too, if a text is pending while the model writes.
    bool finishEditing();
    /// As Escape in each field.
    void cancelEditing();

    /// Reads and shows at once what is due at the end of this turn of the event loop.
    void flush();

    /// Gives all selected objects the value as if the user had entered it, with receipt and
    /// undo step. Throws PropertyError; see PropertySelection::edit().
    PropertyReceipt setValue(const std::string& key, const boost::any& value);

    /// The common values of the selection, and loading them; see PropertySelection. A pending
    /// text is ended before. Both throw PropertyError.
    /// @{
    QJsonObject save();
    PropertyReceipt load(const QJsonObject& saved);
    /// @}

    /// Which sections are open, for QSettings. restoreState() returns false, and changes
    /// nothing, if `state` is damaged or has another format. Sections are known by their
    /// keys, and those that `state` does not know stay as they are.
    /// @{
    QByteArray saveState() const;
    bool restoreState(const QByteArray& state);
    /// @}

    /// Opens the section, and makes the editor if need be. Null for an unknown key. It
    /// belongs to the page, and goes with another selection.
    QWidget* editor(const std::string& key);
    PropertyRow row(const std::string& key) const;

    void setVisible(bool visible) override;

Q_SIGNALS:
    /// After the write, and after the page has read again.
    void edited(const vrn::qt::PropertyReceipt& receipt);
    /// `caption` names the property.
    void refused(const QString& caption, const QString& reason);
    void pendingChanged(bool pending);

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    class Private;
    std::unique_ptr<Private> m_private;
};

} // namespace vrn::qt
