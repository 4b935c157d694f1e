#include "line_row_editor_p.h"

#include <vrn/companion_qt/connect.h>
#include <vrn/qt/property_error.h>

#include <QLineEdit>

#include "field_line_edit_p.h"

namespace vrn::qt::detail {
namespace {

using vrn::units::EntryState;

EditState editStateOf(EntryState state)
{
    switch (state) {
    case EntryState::Complete:
        return EditState::Complete;
    case EntryState::Unfinished:
        return EditState::Unfinished;
    case EntryState::Refused:
        break;
    }
    return EditState::Refused;
}

} // namespace

LineRowEditor::LineRowEditor(
    QWidget* parent, const PropertySelection::Row& row, const RowQuestions& questions)
    : RowEditor(nullptr)
    , m_reader(row)
    , m_questions(questions)
{
    m_line = new FieldLineEdit(parent,
        {[this](const QString& text) { return isAccepted(text); },
            [this](const QString& text) { return hint(text); }, [this] { return fullText(); }});
    setParent(m_line);
    vrn_connect(m_line, &FieldLineEdit::edited, this, &LineRowEditor::onEdited);
    vrn_connect(m_line, &FieldLineEdit::ended, this, [this] { Q_EMIT ended(false); });
    vrn_connect(m_line, &FieldLineEdit::cancelled, this, &LineRowEditor::cancelled);
}

LineRowEditor::~LineRowEditor() = default;

QWidget* LineRowEditor::widget() const
{
    return m_line;
}

bool LineRowEditor::isSameAsShown(const PropertyState& state) const
{
    if (state.kind != m_state.kind)
        return false;
    return state.kind != PropertyState::Common
        || m_reader.row().field.valueType().isSame(state.value, m_state.value);
}

void LineRowEditor::show(const PropertyState& state, const vrn::units::Context& units)
{
    const bool isSame = isSameAsShown(state);
    const QString before = m_reader.text(m_state.value);
    m_state = state;
    m_refusal.clear();
    m_reader.setUnits(units);
    const QString now = m_reader.text(state.value);
    // What has the focus keeps its digits, its selection and its cursor.
    if (isSame && now == before && m_line->isOffered())
        return;
    if (state.kind == PropertyState::Varies)
        m_line->showVaries();
    else
        m_line->showText(now);
}

void LineRowEditor::setReadOnly(bool readOnly)
{
    m_line->setReadOnly(readOnly);
}

QString LineRowEditor::fullText() const
{
    return m_state.kind == PropertyState::Common ? m_reader.fullText(m_state.value)
                                                 : m_reader.text(m_state.value);
}

QString LineRowEditor::text() const
{
    return m_line->edit()->text();
}

RowEntry LineRowEditor::entry() const
{
    return entryOf(text(), nullptr);
}

// What it comes to is told in `outcome`, if that is not null.
RowEntry LineRowEditor::entryOf(const QString& text, QString* outcome) const
{
    if (!m_line->isPending())
        return {};
    if (!m_refusal.isEmpty() && text == m_refusedText)
        return {EditState::Refused, {}, m_refusal};
    const FieldReading reading = m_reader.read(text);
    if (outcome)
        *outcome = reading.outcome;
    const bool isRelative = boost::any_cast<RelativeEdit>(&reading.value) != nullptr;
    if (isRelative && m_questions.preview) {
        try {
            const QString effect = m_questions.preview(reading.value);
            if (outcome)
                *outcome = effect;
        } catch (const PropertyError& error) {
            return {EditState::Refused, {}, error.reason()};
        }
    }
    return {editStateOf(reading.state), reading.value, reading.reason};
}

bool LineRowEditor::isAccepted(const QString& text) const
{
    const EditState state = entryOf(text, nullptr).state;
    return state == EditState::Untouched || state == EditState::Complete;
}

QString LineRowEditor::hint(const QString& text) const
{
    QString outcome;
    const RowEntry made = entryOf(text, &outcome);
    const QChar ellipsis(0x2026);
    switch (made.state) {
    case EditState::Untouched:
        return QString();
    case EditState::Complete:
        return outcome;
    case EditState::Unfinished:
        return made.reason.contains(ellipsis) ? made.reason
                                              : ellipsis + QLatin1Char(' ') + made.reason;
    case EditState::Refused:
        break;
    }
    return made.reason;
}

void LineRowEditor::onEdited()
{
    m_refusal.clear();
    Q_EMIT changed();
}

void LineRowEditor::refuse(const QString& reason)
{
    m_refusal = reason;
    m_refusedText = text();
    m_line->judge();
}

RowEditor* makeLineEditor(
    QWidget* parent, const PropertySelection::Row& row, const RowQuestions& questions)
{
    return new LineRowEditor(parent, row, questions);
}

} // namespace vrn::qt::detail
