#include "row_editor_p.h"

#include <vrn/qt/editor_meta_data.h>
#include <vrn/qt/on_value_changed_hook.h>
#include <vrn/qt/varies_string.h>

#include <QApplication>

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
        const bool isForced = state.kind == PropertyState::Varies && m_editor.forceVaries;
        if (isForced)
            m_editor.forceVaries();
        else if (!state.value.empty() && m_editor.setValue)
            m_editor.setValue(state.value);
        else
            clear();
        if (!alive)
            return;
        m_state = state;
        m_isGiven = give(m_shown);
        if (alive) {
            m_isMisleading = state.value.empty() && !isForced && m_isGiven && !m_shown.empty();
            m_isShowing = false;
        }
    }

    /// An editor that shows a value where there is none is not one to edit with.
    void setReadOnly(bool readOnly) override { m_widget->setEnabled(!readOnly && !m_isMisleading); }

    RowEntry entry() const override
    {
        boost::any value;
        if (!give(value) || (m_isGiven && isSame(value, m_shown)))
            return {};
        if (!m_reason.isEmpty() && isSame(value, m_refused))
            return {EditState::Refused, {}, m_reason};
        if (!value.empty() && value.type() != m_row.field.valueType().type())
            return {EditState::Refused, {}, tr("It is a value of another type.")};
        if (value.empty() && !m_row.isOptional())
            return {EditState::Refused, {}, tr("A value is needed.")};
        return {EditState::Complete, value, QString()};
    }

    QString text() const override
    {
        boost::any value;
        if (!give(value) || (m_state.value.empty() && entry().state == EditState::Untouched))
            return m_state.kind == PropertyState::Varies ? getVariesString() : QString();
        return value.type() == m_row.field.valueType().type() ? m_row.field.text(value, m_units)
                                                              : QString();
    }

    void refuse(const QString& reason) override
    {
        give(m_refused);
        m_reason = reason;
    }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        return (event->type() == QEvent::KeyPress && entry().state != EditState::Untouched
                   && endsByKey(*event))
            || RowEditor::eventFilter(watched, event);
    }

private:
    /// False if the editor has no value that it would give to all objects.
    bool give(boost::any& value) const
    {
        value = boost::any();
        return m_editor.getValue && m_editor.getValue(value);
    }

    /// Editors of fields that are not optional need not know the empty value.
    void clear()
    {
        try {
            if (m_editor.setValue)
                m_editor.setValue(boost::any());
        } catch (const std::exception&) {
            // It keeps what it showed, which show() notices.
        }
    }

    /// Values of another type than that of the field are never the same.
    bool isSame(const boost::any& a, const boost::any& b) const
    {
        return m_row.field.valueType().isSame(a, b);
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
    const PropertySelection::Row& m_row;
    std::unique_ptr<OnValueChangedHook> m_hook;
    vrn::units::Context m_units;
    PropertyState m_state;
    boost::any m_shown;
    boost::any m_refused;
    QString m_reason;
    bool m_isGiven = false;
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
