#include "line_row_editor_p.h"

#include <vrn/companion_qt/connect.h>
#include <vrn/qt/property_error.h>

#include <QAction>
#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QStyle>

#include <algorithm>
#include <deque>
#include <utility>

namespace vrn::qt::detail {
namespace {

using vrn::units::EntryState;

constexpr int longestLabel = 60; ///< In a list.

struct LineTexts
{
    Q_DECLARE_TR_FUNCTIONS(vrn::qt::PropertyPage)
};

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

RowEntry refusedEntry(const QString& reason)
{
    return {EditState::Refused, {}, reason};
}

QString labelFor(const QString& text)
{
    const QString line = text.left(longestLabel + 1).simplified();
    return line.size() <= longestLabel ? line : line.left(longestLabel) + QChar(0x2026);
}

} // namespace

LineRowEditor::LineRowEditor(
    QWidget* parent, const PropertySelection::Row& row, const RowQuestions& questions)
    : RowEditor(nullptr)
    , m_reader(row)
    , m_questions(questions)
{
    FieldQuestions asked;
    asked.judge = [this] { return judge(); };
    asked.offers = [this] { return offers(); };
    asked.fullText = [this] {
        return m_state.kind == PropertyState::Common ? m_reader.fullText(m_state.value)
                                                     : m_textAtRest;
    };
    m_line = new FieldLineEdit(parent, std::move(asked));
    setParent(m_line);
    vrn_connect(m_line, &FieldLineEdit::edited, this, &LineRowEditor::onEdited);
    vrn_connect(m_line, &FieldLineEdit::ended, this, &LineRowEditor::onEnded);
    vrn_connect(m_line, &FieldLineEdit::cancelled, this, &LineRowEditor::cancelled);

    m_mark = new QLabel(QString(QChar(0x2248)));
    m_mark->setToolTip(LineTexts::tr("The selected objects differ beyond the shown digits."));
    m_mark->hide();
    m_line->layout()->addWidget(m_mark);
    if (row.isOptional() && !row.isReadOnly())
        addClearAction();
}

LineRowEditor::~LineRowEditor() = default;

QWidget* LineRowEditor::widget() const
{
    return m_line;
}

QString LineRowEditor::text() const
{
    return m_line->edit()->text();
}

// An emptied text clears, too. This is for the mouse, and for an empty text.
void LineRowEditor::addClearAction()
{
    QLineEdit* const edit = m_line->edit();
    m_clear = edit->addAction(
        edit->style()->standardIcon(QStyle::SP_LineEditClearButton), QLineEdit::TrailingPosition);
    m_clear->setText(LineTexts::tr("Clear"));
    m_clear->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Delete));
    m_clear->setShortcutContext(Qt::WidgetShortcut);
    m_clear->setToolTip(
        LineTexts::tr("Clear (%1)").arg(m_clear->shortcut().toString(QKeySequence::NativeText)));
    vrn_connect(m_clear, &QAction::triggered, this, [this] {
        const QPointer<LineRowEditor> self(this);
        m_line->edit()->clear();
        if (self)
            take(boost::any());
    });
}

bool LineRowEditor::isSameAsShown(const PropertyState& state) const
{
    if (state.kind != m_state.kind)
        return false;
    return state.kind != PropertyState::Common
        || field().valueType().isSame(state.value, m_state.value);
}

void LineRowEditor::show(const PropertyState& state, const vrn::units::Context& units)
{
    m_isShown = true;
    bool isSame = isSameAsShown(state);
    m_state = state;
    m_spread.reset();
    m_reader.setUnits(units);
    m_isMarked = state.kind == PropertyState::Varies && looksAlike();
    const QString text = m_reader.text(m_isMarked ? spread().lowest : state.value);
    isSame = isSame && text == m_textAtRest;
    m_textAtRest = text;
    // What was offered keeps its digits, its selection and its cursor.
    if (m_line->isPending() || !m_line->isOpen() || !isSame)
        showAtRest();
    m_mark->setVisible(m_isMarked);
    showStatus();
}

void LineRowEditor::showAtRest()
{
    m_judged.reset();
    if (m_state.kind == PropertyState::Varies && !m_isMarked)
        m_line->showVaries();
    else
        m_line->showText(m_textAtRest);
}

// Empty if the model throws.
const PropertySpread& LineRowEditor::spread() const
{
    if (!m_spread) {
        m_spread.emplace();
        try {
            if (m_questions.spread)
                *m_spread = m_questions.spread();
        } catch (const PropertyError&) {}
    }
    return *m_spread;
}

// Whether the values differ in digits that are not shown. A text grows with its number.
bool LineRowEditor::looksAlike() const
{
    const Field::Shape shape = field().shape();
    if (shape != Field::Shape::Quantity && shape != Field::Shape::Number)
        return false;
    return !spread().lowest.empty() && spread().withoutValue == 0
        && m_reader.text(spread().lowest) == m_reader.text(spread().highest);
}

void LineRowEditor::setReadOnly(bool readOnly)
{
    m_line->setReadOnly(readOnly);
    if (!m_line->isPending())
        showAtRest();
    showStatus();
}

RowEntry LineRowEditor::entry() const
{
    return judged().entry;
}

const LineRowEditor::Judged& LineRowEditor::judged() const
{
    if (!m_judged || m_judged->revision != m_line->revision()) {
        m_judged.emplace();
        m_judged->revision = m_line->revision();
        if (m_line->isPending())
            *m_judged = read(text());
    }
    return *m_judged;
}

LineRowEditor::Judged LineRowEditor::read(const QString& text) const
{
    Judged made;
    made.revision = m_line->revision();
    if (m_line->isFull()) {
        made.entry = refusedEntry(
            LineTexts::tr("It has more than %1 characters.").arg(m_line->edit()->maxLength() - 1));
        return made;
    }
    const FieldReading reading = m_reader.read(text);
    made.entry = {editStateOf(reading.state), reading.value, reading.reason};
    made.outcome = reading.outcome;
    if (m_questions.preview && boost::any_cast<RelativeEdit>(&reading.value)) {
        try {
            made.outcome = m_questions.preview(reading.value);
        } catch (const PropertyError& error) {
            made.entry = refusedEntry(error.reason());
        }
    }
    return made;
}

FieldQuestions::Verdict LineRowEditor::judge() const
{
    const Judged& made = judged();
    const QString& reason = made.entry.reason;
    const QChar ellipsis(0x2026);
    switch (made.entry.state) {
    case EditState::Untouched:
        return {true, m_line->isOpen() ? hintAtRest() : QString()};
    case EditState::Complete:
        return {true, made.outcome};
    case EditState::Unfinished:
        return {false, reason.contains(ellipsis) ? reason : ellipsis + QLatin1Char(' ') + reason};
    case EditState::Refused:
        break;
    }
    return {false, reason};
}

QString LineRowEditor::hintAtRest() const
{
    if (m_state.kind != PropertyState::Varies)
        return QString();
    return m_isMarked ? m_mark->toolTip() : spread().text;
}

std::vector<EntryOffer> LineRowEditor::offers()
{
    std::vector<EntryOffer> made;
    if (m_line->isPending()) {
        for (const QString& each : m_reader.completions(text())) {
            if (each != text())
                made.push_back({each, each, {}});
        }
        return made;
    }
    if (m_state.kind == PropertyState::Varies)
        offerSpread(made);
    offerHistory(made);
    return made;
}

void LineRowEditor::offerSpread(std::vector<EntryOffer>& made)
{
    const std::vector<PropertySpread::Share>& shares = spread().frequent;
    for (const PropertySpread::Share& share : shares) {
        const QString full = m_reader.fullText(share.value);
        const bool hasTwin = std::any_of(shares.begin(), shares.end(),
            [&](const auto& other) { return &other != &share && other.text == share.text; });
        const QString label = LineTexts::tr("%1 \303\227 %2")
                                  .arg(QLocale().toString(qulonglong(share.objects)),
                                      labelFor(hasTwin ? full : share.text));
        made.push_back({label, full, [this, value = share.value] { take(value); }});
    }
}

void LineRowEditor::offerHistory(std::vector<EntryOffer>& /*made*/) {}

void LineRowEditor::remember(const boost::any& /*value*/) const {}

// The text stands there. Its value is exact, even if it is not the one of the text.
void LineRowEditor::take(const boost::any& value)
{
    decide({EditState::Complete, value, QString()});
    m_line->take();
}

void LineRowEditor::refuse(const QString& reason)
{
    decide(refusedEntry(reason));
    m_line->judge();
    showStatus();
}

// Until the text changes.
void LineRowEditor::decide(const RowEntry& made)
{
    m_judged.emplace();
    m_judged->revision = m_line->revision();
    m_judged->entry = made;
    m_judged->isDecided = true;
}

void LineRowEditor::onEdited()
{
    showStatus();
    Q_EMIT changed();
}

void LineRowEditor::onEnded()
{
    // The model may have changed since.
    if (m_judged && !m_judged->isDecided)
        m_judged.reset();
    const QPointer<LineRowEditor> self(this);
    const RowEntry made = entry();
    m_isShown = false;
    Q_EMIT ended(false);
    if (self && m_isShown && made.state == EditState::Complete)
        remember(made.value);
}

// For a screen reader, and for a field without the focus.
void LineRowEditor::showStatus()
{
    QLineEdit* const edit = m_line->edit();
    if (m_clear) {
        m_clear->setVisible(!edit->isReadOnly()
            && (m_state.kind == PropertyState::Common || m_state.kind == PropertyState::Varies));
    }
    QString status = m_state.reason;
    if (m_line->isPending())
        status = entry().reason;
    else if (m_isMarked)
        status = m_mark->toolTip();
    edit->setToolTip(status);
    if (!m_line->isPending() && m_state.kind == PropertyState::Varies && !m_isMarked)
        status = LineTexts::tr("The selected objects differ.");
    edit->setAccessibleDescription(status);
}

RowEditor* makeLineEditor(
    QWidget* parent, const PropertySelection::Row& row, const RowQuestions& questions)
{
    return new LineRowEditor(parent, row, questions);
}

} // namespace vrn::qt::detail
