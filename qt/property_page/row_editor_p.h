#pragma once

#include <vrn/qt/edit_state.h>
#include <vrn/qt/property_selection.h>
#include <vrn/qt/value_history.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

#include <QKeySequence>
#include <QObject>
#include <QString>

#include <functional>

namespace vrn::qt::detail {

/// What the user has made of an editor.
struct RowEntry
{
    EditState state = EditState::Untouched;
    /// If it is complete: a value of the field's type, a RelativeEdit, or an empty one that
    /// clears an optional property.
    boost::any value;
    QString reason; ///< If it is unfinished or refused.
};

/// What an editor may ask its page. Both throw PropertyError.
struct RowQuestions
{
    /// What the selected objects have in the property.
    std::function<PropertySpread()> spread;
    /// What the entry would do: "12 beams: 2.005 m to 7.625 m".
    std::function<QString(const boost::any& value)> preview;
    /// Null without a history.
    boost::shared_ptr<vrn::IValueHistoryStorage> history;
};

/// The editor of one row. It shows what the page tells it, and tells the page what the user
/// does. It neither reads nor writes the model.
class VRN_QT2_EXPORT RowEditor : public QObject
{
    Q_OBJECT

public:
    ~RowEditor() override;

    /// A child of the parent with which the editor was made. The page lays it out and owns
    /// it; the RowEditor is the widget's child and goes with it.
    virtual QWidget* widget() const = 0;

    /// Shows what was read, drops what is pending, and emits nothing.
    virtual void show(const PropertyState& state, const vrn::units::Context& units) = 0;
    virtual void setReadOnly(bool readOnly) = 0;

    virtual RowEntry entry() const = 0;
    /// What stands there. For the description of the row.
    virtual QString text() const = 0;
    /// What a screen reader adds to the text: why it is refused or not complete yet, or that
    /// objects differ where the text does not show it. It asks nobody.
    virtual QString status() const { return QString(); }
    /// Keeps what is pending, in red with this reason, which entry() gives from now on until
    /// the user changes the text or presses Enter. Emits nothing.
    virtual void refuse(const QString& reason) = 0;
    /// The entry has been written, and can be offered another time.
    virtual void remember() {}

Q_SIGNALS:
    /// entry() is another one.
    void changed();
    /// The user has ended the editing: by Enter, Tab, leaving the field or a pick. The page
    /// reads entry() now, writes it if it is complete, and calls show() or refuse().
    /// The picks of one gesture, such as keys in a closed list, become one undo step.
    void ended(bool isInGesture);
    /// Escape: the page shows what the model has.
    void cancelled();

protected:
    explicit RowEditor(QObject* parent);

    /// The keys that clear an optional property.
    static QKeySequence clearKeys();
    /// Calls `clear` for them, while `widget` has the focus.
    void onClearKeys(QWidget* widget, std::function<void()> clear);

    /// Emits ended() for Enter and cancelled() for Escape. False for other events.
    bool endsByKey(const QEvent& event);
};

/// An editor for the shape of the field. `row` has to outlive it.
VRN_QT2_EXPORT RowEditor* makeLineEditor(
    QWidget* parent, const PropertySelection::Row& row, const RowQuestions& questions);
VRN_QT2_EXPORT RowEditor* makeChoiceEditor(QWidget* parent, const PropertySelection::Row& row);
VRN_QT2_EXPORT RowEditor* makeFlagEditor(QWidget* parent, const PropertySelection::Row& row);
/// Wraps the editor that the application has registered. Null if there is none.
VRN_QT2_EXPORT RowEditor* makeRegisteredEditor(QWidget* parent, const PropertySelection::Row& row);

} // namespace vrn::qt::detail
