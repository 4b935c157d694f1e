#include "row_editor_p.h"

#include <vrn/qt/editor_meta_data.h>
#include <vrn/qt/on_value_changed_hook.h>
#include <vrn/qt/property_error.h>
#include <vrn/qt/varies_string.h>

#include <QApplication>
#include <QPointer>

#include "controls/parts/alive_p.h"

#include <exception>
#include <memory>
#include <utility>

namespace vrn::qt::detail {

namespace {

/// What the application's editor gives directly after it was told what to show is untouched.
class RegisteredRowEditor final : public RowEditor
{
public:
    RegisteredRowEditor(EditorMetaData editor, const PropertySelection::Row& row)
        : RowEditor(editor.widget)
        , m_widget(editor.widget)
        , m_editor(std::move(editor))
        , m_row(row)
    {
        if (m_widget->metaObject()->indexOfSignal("valueChanged()") >= 0) {
            m_hook = std::make_unique<OnValueChangedHook>(m_widget, [this] { onValueChanged(); });
        }
        m_widget->installEventFilter(this);
        connect(qApp, &QApplication::focusChanged, this, &RegisteredRowEditor::onFocusChanged);
    }

    QWidget* widget() const override { return m_widget; }

    void show(const PropertyState& state, const vrn::units::Context& units) override
    {
        const Alive alive(this, m_widget);
        m_isShowing = true;
        m_reason.clear();
        m_units = units;
        const bool isForced = state.kind == PropertyState::Varies && forceVaries();
        const bool isSet = alive && !isForced && setValue(state.value);
        const Given shown = alive ? give() : Given();
        if (!alive)
            return;
        m_state = state;
        m_shown = shown;
        const bool hasValue = !state.value.empty();
        m_isMisleading = !m_shown.error.isEmpty() || (hasValue && !isSet)
            || (!hasValue && !isForced && m_shown.isGiven && !m_shown.value.empty());
        m_isShowing = false;
    }

    /// An editor that shows another value than the objects have is not one to edit with.
    void setReadOnly(bool readOnly) override { m_widget->setEnabled(!readOnly && !m_isMisleading); }

    RowEntry entry() const override
    {
        const QPointer<const RegisteredRowEditor> self(this);
        const Given now = give();
        if (!self || m_isMisleading || isSame(now, m_shown)
            || (!now.isGiven && now.error.isEmpty()))
            return {};
        if (!m_reason.isEmpty() && isSame(now, m_refused))
            return {EditState::Refused, {}, m_reason};
        if (!now.error.isEmpty())
            return {EditState::Refused, {}, now.error};
        const boost::any& value = now.value;
        if (!value.empty() && value.type() != m_row.field.valueType().type())
            return {EditState::Refused, {}, tr("It is a value of another type.")};
        if (value.empty() && !m_row.isOptional())
            return {EditState::Refused, {}, tr("A value is needed.")};
        return {EditState::Complete, value, QString()};
    }

    QString text() const override
    {
        const QPointer<const RegisteredRowEditor> self(this);
        const Given now = give();
        if (!self)
            return QString();
        if (!now.isGiven || m_isMisleading || (m_state.value.empty() && isSame(now, m_shown)))
            return textOfState();
        return now.value.type() == m_row.field.valueType().type()
            ? m_row.field.text(now.value, m_units)
            : QString();
    }

    void refuse(const QString& reason) override
    {
        const QPointer<RegisteredRowEditor> self(this);
        const Given refused = give();
        if (!self)
            return;
        m_refused = refused;
        m_reason = reason;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const Alive alive(this, m_widget);
            const bool isPending = entry().state != EditState::Untouched;
            // It may be folded away meanwhile.
            if (!alive || !m_widget->isVisible() || (isPending && endsByKey(*event)))
                return true;
        }
        return RowEditor::eventFilter(watched, event);
    }

private:
    /// What the editor has. What its functions throw goes no further, because the page has
    /// other rows to show and to write.
    struct Given
    {
        bool isGiven = false; ///< Otherwise it has no value that it would give to all objects.
        boost::any value;
        QString error; ///< What was thrown instead.
    };

    Given give() const
    {
        const auto getValue = m_editor.getValue;
        Given given;
        try {
            given.isGiven = getValue && getValue(given.value);
        } catch (...) {
            given.error = PropertyError::from(std::current_exception()).reason();
        }
        if (!given.isGiven)
            given.value = boost::any();
        return given;
    }

    /// Values of another type than that of the field are never the same.
    bool isSame(const Given& a, const Given& b) const
    {
        return a.isGiven == b.isGiven && a.error == b.error
            && (!a.isGiven || m_row.field.valueType().isSame(a.value, b.value));
    }

    /// False if it throws: editors of fields that are not optional need not know the empty
    /// value.
    bool setValue(const boost::any& value) const
    {
        const auto set = m_editor.setValue;
        try {
            if (set)
                set(value);
            return bool(set);
        } catch (...) {
            return false;
        }
    }

    bool forceVaries() const
    {
        const auto force = m_editor.forceVaries;
        try {
            if (force)
                force();
            return bool(force);
        } catch (...) {
            return false;
        }
    }

    QString textOfState() const
    {
        return m_state.kind == PropertyState::Varies ? getVariesString()
            : m_state.value.empty()                  ? QString()
                                                     : m_row.field.text(m_state.value, m_units);
    }

    // What the user drags has the focus, and is one edit until the focus goes.
    void onValueChanged()
    {
        if (m_isShowing)
            return;
        const Alive alive(this, m_widget);
        const bool isInGesture = holds(QApplication::focusWidget());
        Q_EMIT changed();
        if (alive)
            Q_EMIT ended(isInGesture);
    }

    // Another window and a menu take the focus without ending anything. The focus may move on
    // while the window is inactive.
    void onFocusChanged(QWidget* /*from*/, QWidget* to)
    {
        if (holds(to))
            m_isEntered = true;
        if (m_isShowing || !to || holds(to) || to->window() != m_widget->window()
            || !std::exchange(m_isEntered, false)) {
            return;
        }
        const Alive alive(this, m_widget);
        Q_EMIT changed();
        if (alive)
            Q_EMIT ended(false);
    }

    bool holds(const QWidget* widget) const
    {
        return widget && (widget == m_widget || m_widget->isAncestorOf(widget));
    }

    QWidget* const m_widget;
    const EditorMetaData m_editor;
    const PropertySelection::Row m_row; ///< The one of the page may go while this is in use.
    std::unique_ptr<OnValueChangedHook> m_hook;
    vrn::units::Context m_units;
    PropertyState m_state;
    Given m_shown;
    Given m_refused;
    QString m_reason;
    bool m_isMisleading = false;
    bool m_isShowing = false;
    bool m_isEntered = false; ///< It has the focus, or had it when its window was active last.
};

} // namespace

RowEditor* makeRegisteredEditor(QWidget* parent, const PropertySelection::Row& row)
{
    Hints hints;
    setTextHint(hints, "editor", row.field.editor());
    setTextHint(hints, "key", row.key);
    setTextHint(hints, "title", row.title.toStdString());
    setHint<bool>(hints, "optional", row.isOptional());
    setHint<NamedValueList>(hints, "values", row.field.entries());
    setHint<Field>(hints, "field", row.field);
    EditorMetaData editor;
    try {
        editor = createEditorFromHints(parent, hints);
    } catch (const std::exception&) {
        // The page makes an editor of its own.
        return nullptr;
    }
    return editor.widget ? new RegisteredRowEditor(std::move(editor), row) : nullptr;
}

} // namespace vrn::qt::detail
