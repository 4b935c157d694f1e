#include "field_line_edit_p.h"

#include <vrn/companion_qt/connect.h>
#include <vrn/qt/i_validator.h>
#include <vrn/qt/varies_string.h>

#include <boost/make_shared.hpp>

#include <QKeyEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

#include "controls/parts/alive_p.h"

#include <utility>

namespace vrn::qt::detail {
namespace {

/// Lets a control ask by its validator. The value is the text.
class AskingValidator : public IValidator
{
public:
    explicit AskingValidator(const FieldQuestions& questions)
        : m_isAccepted(questions.isAccepted)
    {
        setEditHintFunction(questions.hint);
    }

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& /*flags*/) override
    {
        value = text;
        return m_isAccepted(text);
    }

    QString reformat(const boost::any& value, const std::bitset<32>& /*flags*/) override
    {
        const auto* text = boost::any_cast<QString>(&value);
        return text ? *text : QString();
    }

private:
    std::function<bool(const QString&)> m_isAccepted;
};

bool isToOtherWindow(const QFocusEvent& event)
{
    switch (event.reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return true;
    default:
        return false;
    }
}

bool isPlainKey(const QKeyEvent& event)
{
    return (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
}

bool isEnterKey(const QKeyEvent& event)
{
    return isPlainKey(event) && (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter);
}

bool isModifierKey(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
        return true;
    default:
        return false;
    }
}

bool isOfUndo(const QKeyEvent& event)
{
    return event.matches(QKeySequence::Undo) || event.matches(QKeySequence::Redo);
}

} // namespace

FieldLineEdit::FieldLineEdit(QWidget* parent, FieldQuestions questions)
    : MultiEditLineEdit(
        parent, QString(), boost::make_shared<AskingValidator>(questions), {}, 0, ExpandHorizontal)
    , m_questions(std::move(questions))
{
    // The control would rewrite the text. It hears of changes of the text from onTextChanged():
    // not every change by the user is told by textEdited().
    disconnect(edit(), &QLineEdit::editingFinished, this, &SimpleLineEdit::onEditingFinished);
    disconnect(edit(), &QLineEdit::textEdited, this, &SimpleLineEdit::onTextEdited);
    vrn_connect(edit(), &QLineEdit::textChanged, this, &FieldLineEdit::onTextChanged);
}

FieldLineEdit::~FieldLineEdit() = default;

void FieldLineEdit::showText(const QString& text)
{
    m_showsVaries = false;
    m_isOpen = false;
    setTextFrom(text);
    m_shown = m_offered = edit()->text();
    judge();
    edit()->setStyleSheet(QString());
}

void FieldLineEdit::showVaries()
{
    m_showsVaries = true;
    m_isOpen = false;
    {
        const QScopedValueRollback<bool> outside(m_isFromOutside, true);
        forceVaries();
    }
    m_shown = m_offered = edit()->text();
    judge();
    edit()->setStyleSheet(QString());
}

void FieldLineEdit::enterText(const QString& text)
{
    open();
    edit()->setText(text);
}

void FieldLineEdit::setTextFrom(const boost::any& value)
{
    const QScopedValueRollback<bool> outside(m_isFromOutside, true);
    setValue(value);
}

bool FieldLineEdit::isBaseline(const QString& text) const
{
    return text == m_shown || text == m_offered || text == getVariesString();
}

bool FieldLineEdit::isPending() const
{
    return !isBaseline(edit()->text());
}

void FieldLineEdit::judge()
{
    onTextEdited(edit()->text());
}

// The text that was there before is black whatever it is.
bool FieldLineEdit::vetoValidation(const QString& /*text*/)
{
    return false;
}

void FieldLineEdit::onValidated(const QString& text, const boost::any& value)
{
    if (!isBaseline(text))
        MultiEditLineEdit::onValidated(text, value);
}

void FieldLineEdit::onTextChanged()
{
    if (m_isFromOutside)
        return;
    const Alive alive(this, edit());
    m_isEndTold = false;
    judge();
    if (alive)
        Q_EMIT edited();
}

void FieldLineEdit::open()
{
    if (m_isOpen)
        return;
    if (isPending() || m_showsVaries || edit()->isReadOnly()) {
        m_isOpen = true;
        return;
    }
    m_isOpen = true;
    const QString full = m_questions.fullText();
    if (full == m_shown)
        return;
    const bool isAllSelected = edit()->selectedText() == edit()->text();
    setTextFrom(full);
    m_offered = edit()->text();
    if (isAllSelected)
        selectAll();
}

void FieldLineEdit::leave()
{
    if (isPending()) {
        if (!m_isEndTold)
            end();
        return;
    }
    m_isOpen = false;
    m_offered = m_shown;
    if (m_showsVaries)
        showVaries();
    else if (edit()->text() != m_shown)
        showText(m_shown);
}

// Returns whether this is still alive.
bool FieldLineEdit::end()
{
    const Alive alive(this, edit());
    m_isEndTold = true;
    Q_EMIT ended();
    return static_cast<bool>(alive);
}

bool FieldLineEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (!isEdit(watched))
        return MultiEditLineEdit::eventFilter(watched, event);
    const Alive alive(this, edit());
    switch (event->type()) {
    case QEvent::FocusIn:
        if (!m_isOpen || !isToOtherWindow(static_cast<QFocusEvent&>(*event)))
            open();
        break;
    case QEvent::FocusOut:
        if (!isToOtherWindow(static_cast<QFocusEvent&>(*event)))
            leave();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::InputMethod:
    case QEvent::Drop:
        open();
        break;
    case QEvent::KeyPress:
        if (onKeyPress(static_cast<QKeyEvent&>(*event)))
            return true;
        break;
    case QEvent::ShortcutOverride:
        if (onShortcutOverride(static_cast<QKeyEvent&>(*event)))
            return true;
        break;
    case QEvent::LanguageChange: {
        const QScopedValueRollback<bool> outside(m_isFromOutside, true);
        return MultiEditLineEdit::eventFilter(watched, event);
    }
    default:
        break;
    }
    return !alive || MultiEditLineEdit::eventFilter(watched, event);
}

bool FieldLineEdit::onKeyPress(QKeyEvent& event)
{
    const bool wasPending = isPending();
    if (isOfUndo(event) && !wasPending) {
        event.ignore(); // It goes on to the application.
        return true;
    }
    if (isEnterKey(event)) {
        if (!wasPending)
            return false;
        event.accept();
        if (end() && !isPending() && edit()->hasFocus())
            selectAll();
        return true;
    }
    if (isPlainKey(event) && event.key() == Qt::Key_Escape) {
        if (!wasPending)
            return false;
        event.accept();
        Q_EMIT cancelled();
        return true;
    }
    if (isPlainKey(event) && event.key() == Qt::Key_F2) {
        event.accept();
        open();
        selectAll();
        return true;
    }
    if (event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab) {
        // There may be no other widget to go to.
        if (wasPending && !m_isEndTold)
            end();
        return false;
    }
    if (!isModifierKey(event))
        open();
    return false;
}

bool FieldLineEdit::onShortcutOverride(QKeyEvent& event) const
{
    const bool wasPending = isPending();
    if (isOfUndo(event) && !wasPending) {
        event.ignore();
        return true;
    }
    const bool isForField = isPlainKey(event) && event.key() == Qt::Key_F2;
    const bool isEnding = isEnterKey(event) || (isPlainKey(event) && event.key() == Qt::Key_Escape);
    if (!isForField && !(isEnding && wasPending))
        return false;
    event.accept();
    return true;
}

} // namespace vrn::qt::detail
