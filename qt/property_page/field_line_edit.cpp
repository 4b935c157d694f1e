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

/// How much may be typed and pasted, as in any QLineEdit, which cuts what is longer. To cut a
/// pasted text takes it the square of this.
constexpr int mostCharacters = 32767;

/// Lets a control ask by its validator. The value is the text.
class AskingValidator : public IValidator
{
public:
    explicit AskingValidator(std::function<FieldQuestions::Verdict()> judge)
        : m_judge(std::move(judge))
    {
        // The control asks for the hint after it has validated the text.
        setEditHintFunction([this](const QString&) { return m_hint; });
    }

    bool validate(const QString& text, boost::any& value, const std::bitset<32>& /*flags*/) override
    {
        value = text;
        const FieldQuestions::Verdict verdict = m_judge();
        m_hint = verdict.hint;
        return verdict.isAccepted;
    }

    QString reformat(const boost::any& value, const std::bitset<32>& /*flags*/) override
    {
        const auto* text = boost::any_cast<QString>(&value);
        return text ? *text : QString();
    }

private:
    std::function<FieldQuestions::Verdict()> m_judge;
    QString m_hint;
};

// Editing goes on there after the other window or the menu.
bool isForOtherWindow(const QEvent& event)
{
    switch (static_cast<const QFocusEvent&>(event).reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
        return true;
    default:
        return false;
    }
}

bool isPlainKey(const QKeyEvent& event, Qt::Key key)
{
    return event.key() == key && (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
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
    : MultiEditLineEdit(parent, QString(), boost::make_shared<AskingValidator>([this] {
        return m_isFromOutside ? FieldQuestions::Verdict() : verdict();
    }),
        {}, 0, ExpandHorizontal)
    , m_questions(std::move(questions))
{
    // At the end of editing the control would rewrite the text. And textEdited() does not tell
    // of each change, so the control hears of them from onTextChanged().
    disconnect(edit(), &QLineEdit::editingFinished, this, &SimpleLineEdit::onEditingFinished);
    disconnect(edit(), &QLineEdit::textEdited, this, &SimpleLineEdit::onTextEdited);
    vrn_connect(edit(), &QLineEdit::textChanged, this, &FieldLineEdit::onTextChanged);
    vrn_connect(&impl(), &LineEditImpl::focused, this, [this] {
        if (!isPending())
            announce();
    });
    impl().setOffers([this](const QString&) {
        const auto offers = m_questions.offers;
        return offers();
    });
}

FieldLineEdit::~FieldLineEdit() = default;

LineEditImpl& FieldLineEdit::impl()
{
    return static_cast<LineEditImpl&>(*edit());
}

void FieldLineEdit::showText(const QString& text)
{
    m_showsVaries = false;
    show(&text);
}

void FieldLineEdit::showVaries()
{
    m_showsVaries = true;
    show(nullptr);
}

// Null stands for the text of varying objects.
void FieldLineEdit::show(const QString* text)
{
    m_isOpen = false;
    m_isTaken = false;
    {
        const QScopedValueRollback<bool> outside(m_isFromOutside, true);
        const int size = text ? int(text->size()) : 0;
        const int room = mostCharacters + (size < mostCharacters / 2 ? 0 : size);
        if (edit()->maxLength() < room)
            edit()->setMaxLength(room);
        if (text)
            setValue(*text);
        else
            forceVaries();
        if (edit()->maxLength() > room)
            edit()->setMaxLength(room);
    }
    m_shown = m_offered = edit()->text();
    impl().dropOffers();
    impl().showEditHint(QString());
    // A field in which nothing was typed has the colours of the palette.
    if (!edit()->styleSheet().isEmpty())
        edit()->setStyleSheet(QString());
    // What is typed next takes its place. Elsewhere the first digits count more than the last.
    if (edit()->hasFocus())
        selectAll();
    else
        edit()->setCursorPosition(0);
}

bool FieldLineEdit::isBaseline(const QString& text) const
{
    return text == m_shown || text == m_offered || text == getVariesString();
}

bool FieldLineEdit::isPending() const
{
    return m_isTaken || !isBaseline(edit()->text());
}

bool FieldLineEdit::isFull() const
{
    return edit()->text().size() >= edit()->maxLength();
}

// This may be destroyed meanwhile.
FieldQuestions::Verdict FieldLineEdit::verdict() const
{
    const auto ask = m_questions.judge;
    return ask();
}

void FieldLineEdit::refuse()
{
    m_isEndTold = true;
    judge();
}

void FieldLineEdit::judge()
{
    onTextEdited(edit()->text());
}

// A text is judged whatever it is: one that stood there before is black again.
bool FieldLineEdit::vetoValidation(const QString& /*text*/)
{
    return false;
}

void FieldLineEdit::onValidated(const QString& text, const boost::any& value)
{
    if (isPending())
        MultiEditLineEdit::onValidated(text, value);
}

void FieldLineEdit::onTextChanged()
{
    ++m_revision;
    if (m_isFromOutside)
        return;
    const Alive alive(this, edit());
    m_isTaken = false;
    m_isEndTold = false;
    judge();
    if (alive)
        Q_EMIT edited();
}

void FieldLineEdit::open()
{
    m_isOpen = true;
    if (isPending())
        return;
    // What is typed takes its place, however the field got the focus.
    if (m_showsVaries)
        selectAll();
    if (m_showsVaries || edit()->isReadOnly())
        return;
    const QString full = m_questions.fullText();
    const bool isAllSelected = edit()->selectedText() == edit()->text();
    const QScopedValueRollback<bool> outside(m_isFromOutside, true);
    if (edit()->text() != full)
        edit()->setText(full);
    m_offered = edit()->text();
    if (isAllSelected)
        selectAll();
}

void FieldLineEdit::announce()
{
    const Alive alive(this, edit());
    const QString hint = verdict().hint;
    if (!alive)
        return;
    impl().showEditHint(hint);
    if (!edit()->isReadOnly())
        impl().offer();
}

// Begins the editing in a field that has the focus.
void FieldLineEdit::resume()
{
    if (m_isOpen)
        return;
    open();
    if (!isPending())
        announce();
}

// While the window was inactive, which Qt does not tell the field.
bool FieldLineEdit::hasLostFocus()
{
    return m_isOpen && edit()->window()->focusWidget() != edit();
}

void FieldLineEdit::leave()
{
    if (!isPending()) {
        if (m_showsVaries)
            showVaries();
        else
            showText(QString(m_shown));
    } else if (!m_isEndTold) {
        end();
    }
}

void FieldLineEdit::end()
{
    m_isEndTold = true;
    Q_EMIT ended();
}

void FieldLineEdit::take()
{
    const Alive alive(this, edit());
    m_isTaken = true;
    judge();
    if (alive)
        end();
}

bool FieldLineEdit::eventFilter(QObject* watched, QEvent* event)
{
    if (!isEdit(watched))
        return MultiEditLineEdit::eventFilter(watched, event);
    const Alive alive(this, edit());
    if (handle(*event) || !alive)
        return true;
    const QScopedValueRollback<bool> outside(
        m_isFromOutside, m_isFromOutside || event->type() == QEvent::LanguageChange);
    return MultiEditLineEdit::eventFilter(watched, event);
}

// Returns whether the edit does not get the event.
bool FieldLineEdit::handle(QEvent& event)
{
    switch (event.type()) {
    case QEvent::FocusIn:
        if (m_isOpen)
            return false;
        // The mouse sets the cursor by itself. Other keys must not come before the digits.
        if (static_cast<QFocusEvent&>(event).reason() != Qt::MouseFocusReason)
            edit()->end(false);
        open();
        return false;
    case QEvent::FocusOut:
        if (!isForOtherWindow(event))
            leave();
        return false;
    case QEvent::EnabledChange:
        // Behind another window it loses the focus without an event.
        if (m_isOpen && !edit()->isEnabled())
            leave();
        return false;
    case QEvent::WindowActivate:
        // Qt goes on with what is in the window.
        if (hasLostFocus())
            QMetaObject::invokeMethod(
                this,
                [this] {
                    if (hasLostFocus())
                        leave();
                },
                Qt::QueuedConnection);
        return false;
    case QEvent::Drop:
        // Without the focus nothing would end the editing. The field before may end its own.
        if (const Alive alive(this, edit()); true) {
            edit()->setFocus(Qt::OtherFocusReason);
            if (alive)
                resume();
        }
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::InputMethod:
        resume();
        return false;
    case QEvent::KeyPress:
        return onKeyPress(static_cast<QKeyEvent&>(event));
    case QEvent::ShortcutOverride:
        return onShortcutOverride(static_cast<QKeyEvent&>(event));
    default:
        return false;
    }
}

bool FieldLineEdit::onKeyPress(QKeyEvent& event)
{
    const bool wasPending = isPending();
    if (isOfUndo(event) && !wasPending) {
        event.ignore(); // The application may have something to undo.
        return true;
    }
    if (isPlainKey(event, Qt::Key_Return) || isPlainKey(event, Qt::Key_Enter)) {
        if (!wasPending)
            return false;
        const Alive alive(this, edit());
        event.accept();
        end();
        if (alive && !isPending() && edit()->hasFocus())
            selectAll();
        return true;
    }
    if (isPlainKey(event, Qt::Key_Escape)) {
        if (!wasPending)
            return false;
        event.accept();
        Q_EMIT cancelled();
        return true;
    }
    if (isPlainKey(event, Qt::Key_F2)) {
        const Alive alive(this, edit());
        event.accept();
        m_isOpen = m_isOpen && wasPending;
        resume();
        if (alive)
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
        resume();
    return false;
}

bool FieldLineEdit::onShortcutOverride(QKeyEvent& event) const
{
    const bool wasPending = isPending();
    if (isOfUndo(event) && !wasPending) {
        event.ignore();
        return true;
    }
    const bool ends = isPlainKey(event, Qt::Key_Return) || isPlainKey(event, Qt::Key_Enter)
        || isPlainKey(event, Qt::Key_Escape);
    if (!(ends && wasPending) && !isPlainKey(event, Qt::Key_F2))
        return false;
    event.accept();
    return true;
}

} // namespace vrn::qt::detail
