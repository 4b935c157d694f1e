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
#include <memory>
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
    , m_reader(std::make_shared<FieldReader>(row))
    , m_questions(questions)
{
    FieldQuestions asked;
    asked.judge = [this] { return judge(); };
    asked.offers = [this] { return offers(); };
    asked.fullText = [this] {
        return m_state.kind == PropertyState::Common && field().offersFullDigits()
            ? m_reader->fullText(m_state.value)
            : m_textAtRest;
    };
    m_line = new FieldLineEdit(parent, std::move(asked));
    setParent(m_line);
    vrn_connect(m_line, &FieldLineEdit::edited, this, &LineRowEditor::onEdited);
    vrn_connect(m_line, &FieldLineEdit::ended, this, &LineRowEditor::onEnded);
    vrn_connect(m_line, &FieldLineEdit::cancelled, this, &LineRowEditor::cancelled);

    m_mark = new QLabel(QString(QChar(0x2248)));
    m_mark->setObjectName(QStringLiteral("mark"));
    m_mark->hide();
    // As wide as the other editors of a page.
    m_line->layout()->setContentsMargins(0, 0, 0, 0);
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

QString LineRowEditor::status() const
{
    if (m_line->isPending())
        return m_judged ? m_judged->entry.reason : QString();
    return m_isMarked ? m_mark->toolTip() : QString();
}

// An emptied text clears, too. This is for the mouse, and for an empty text.
void LineRowEditor::addClearAction()
{
    QLineEdit* const edit = m_line->edit();
    m_clear = edit->addAction(
        edit->style()->standardIcon(QStyle::SP_LineEditClearButton), QLineEdit::TrailingPosition);
    m_clear->setShortcut(clearKeys());
    m_clear->setShortcutContext(Qt::WidgetShortcut);
    vrn_connect(m_clear, &QAction::triggered, this, [this] {
        const QPointer<LineRowEditor> self(this);
        m_line->edit()->clear();
        if (self)
            take(boost::any());
    });
}

void LineRowEditor::retranslate()
{
    m_mark->setToolTip(LineTexts::tr("The selected objects differ beyond the shown digits."));
    if (!m_clear)
        return;
    m_clear->setText(LineTexts::tr("Clear"));
    m_clear->setToolTip(
        LineTexts::tr("Clear (%1)").arg(m_clear->shortcut().toString(QKeySequence::NativeText)));
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
    const QPointer<LineRowEditor> self(this);
    bool isSame = isSameAsShown(state);
    m_state = state;
    m_spread.reset();
    retranslate();
    m_reader->setUnits(units);
    const QString common = state.kind == PropertyState::Varies ? textOfAll()
                                                               : m_reader->text(state.value);
    if (!self)
        return;
    m_isMarked = state.kind == PropertyState::Varies && !common.isEmpty();
    isSame = isSame && common == m_textAtRest;
    m_textAtRest = common;
    // What was offered keeps its digits, its selection and its cursor.
    if (m_line->isPending() || !m_line->isOpen() || !isSame)
        showAtRest();
    else if (state.kind == PropertyState::Varies)
        m_line->announce(); // The objects may vary in another way.
    if (!self)
        return;
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

// Empty if the model throws. The model may destroy this.
PropertySpread LineRowEditor::spread()
{
    if (m_spread)
        return *m_spread;
    const QPointer<LineRowEditor> self(this);
    const auto ask = m_questions.spread;
    PropertySpread asked;
    try {
        if (ask)
            asked = ask();
    } catch (const PropertyError&) {}
    if (self)
        m_spread = asked;
    return asked;
}

// The text of varying objects if they differ only in digits that are not shown. A text grows
// with its number.
QString LineRowEditor::textOfAll()
{
    const Field::Shape shape = field().shape();
    if (shape != Field::Shape::Quantity && shape != Field::Shape::Number)
        return QString();
    const auto reader = m_reader;
    // Most values that differ have different texts, and all are not read for that.
    const auto& [one, other] = m_state.different;
    if (one.empty() || reader->text(one) != reader->text(other))
        return QString();
    const PropertySpread all = spread();
    if (all.lowest.empty() || all.withoutValue > 0)
        return QString();
    const QString lowest = reader->text(all.lowest);
    return lowest == reader->text(all.highest) ? lowest : QString();
}

void LineRowEditor::setReadOnly(bool readOnly)
{
    if (readOnly == m_line->edit()->isReadOnly())
        return;
    m_line->setReadOnly(readOnly);
    if (!m_line->isPending())
        showAtRest();
    showStatus();
}

RowEntry LineRowEditor::entry() const
{
    return judged().entry;
}

// The check may be the application's, and may destroy this.
LineRowEditor::Judged LineRowEditor::judged() const
{
    const int revision = m_line->revision();
    if (m_judged && m_judged->revision == revision)
        return *m_judged;
    const QPointer<const LineRowEditor> self(this);
    Judged made;
    if (m_line->isPending())
        made = read();
    made.revision = revision;
    if (self)
        m_judged = made;
    return made;
}

LineRowEditor::Judged LineRowEditor::read() const
{
    Judged made;
    if (m_line->isFull()) {
        made.entry = refusedEntry(
            LineTexts::tr("It has more than %1 characters.").arg(m_line->edit()->maxLength() - 1));
        return made;
    }
    const auto preview = m_questions.preview;
    const auto reader = m_reader;
    const FieldReading reading = reader->read(text());
    made.entry = {editStateOf(reading.state), reading.value, reading.reason};
    made.outcome = reading.outcome;
    if (preview && boost::any_cast<RelativeEdit>(&reading.value)) {
        try {
            made.outcome = preview(reading.value);
        } catch (const PropertyError& error) {
            made.entry = refusedEntry(error.reason());
        }
    }
    return made;
}

FieldQuestions::Verdict LineRowEditor::judge()
{
    const QPointer<LineRowEditor> self(this);
    const Judged made = judged();
    const QString& reason = made.entry.reason;
    const QChar ellipsis(0x2026);
    switch (made.entry.state) {
    case EditState::Untouched:
        return {true, self && m_line->isOpen() ? hintAtRest() : QString()};
    case EditState::Complete:
        return {true, made.outcome};
    case EditState::Unfinished:
        return {false, reason.contains(ellipsis) ? reason : ellipsis + QLatin1Char(' ') + reason};
    case EditState::Refused:
        break;
    }
    return {false, reason};
}

QString LineRowEditor::hintAtRest()
{
    if (m_state.kind != PropertyState::Varies)
        return QString();
    return m_isMarked ? m_mark->toolTip() : spread().text;
}

std::vector<EntryOffer> LineRowEditor::offers()
{
    if (!m_line->isPending())
        return offersAtRest();
    std::vector<EntryOffer> made;
    for (const QString& each : m_reader->completions(text())) {
        if (each != text())
            made.push_back({each, each, {}});
    }
    return made;
}

std::vector<EntryOffer> LineRowEditor::offersAtRest()
{
    const QPointer<LineRowEditor> self(this);
    std::vector<EntryOffer> made;
    if (m_state.kind == PropertyState::Varies) {
        const PropertySpread all = spread();
        if (!self)
            return {};
        for (const PropertySpread::Share& share : all.frequent)
            made.push_back(offerOf(share, all));
    }
    std::deque<std::wstring> entries;
    try {
        if (auto history = this->history())
            history->get(entries);
    } catch (...) {
        // A history that fails offers nothing.
        entries.clear();
    }
    if (!self)
        return {};
    QStringList texts;
    for (const std::wstring& entry : entries)
        texts << m_reader->textOfEntry(QString::fromStdWString(entry));
    texts.removeDuplicates();
    // Else nothing tells the two lists apart.
    if (!made.empty() && !texts.isEmpty())
        made.push_back({LineTexts::tr("Entered before"), QString(), {}, true});
    for (const QString& text : texts) {
        made.push_back({labelFor(text), text, [this] {
                            m_judged.reset();
                            m_isOfHistory = true;
                            m_line->take();
                        }});
    }
    return made;
}

EntryOffer LineRowEditor::offerOf(const PropertySpread::Share& share, const PropertySpread& all)
{
    const QString full = m_reader->fullText(share.value);
    const auto alike = std::count_if(all.frequent.begin(), all.frequent.end(),
        [&](const PropertySpread::Share& other) { return other.text == share.text; });
    const QString label = LineTexts::tr("%1 \303\227 %2")
                              .arg(QLocale().toString(qulonglong(share.objects)),
                                  labelFor(alike > 1 ? full : share.text));
    return {label, full, [this, value = share.value] { take(value); }};
}

std::optional<vrn::ValueHistory> LineRowEditor::history() const
{
    const std::string key = field().historyKey();
    if (!m_questions.history || key.empty())
        return std::nullopt;
    return vrn::ValueHistory(QString::fromStdString(key).toStdWString(), m_questions.history);
}

// The text stands there. Its value is exact, even if it is not the one of the text.
void LineRowEditor::take(const boost::any& value)
{
    decide({EditState::Complete, value, QString()});
    m_line->take();
}

void LineRowEditor::refuse(const QString& reason)
{
    decide(refusedEntry(reason));
    m_line->refuse(); // By what is decided.
    showStatus();
}

// Until the text changes.
void LineRowEditor::decide(const RowEntry& made)
{
    Judged decided;
    decided.revision = m_line->revision();
    decided.entry = made;
    decided.isDecided = true;
    m_judged = decided;
}

void LineRowEditor::onEdited()
{
    m_isOfHistory = false;
    showStatus();
    Q_EMIT changed();
}

void LineRowEditor::onEnded()
{
    // The model may have changed since, and what has refused may not do it again.
    if (m_judged && !(m_judged->isDecided && m_judged->entry.state == EditState::Complete))
        m_judged.reset();
    Q_EMIT ended(false);
}

// With number, unit and full digits, so that it has its meaning in other units, too.
void LineRowEditor::remember()
{
    const QPointer<LineRowEditor> self(this);
    const RowEntry made = entry();
    // An entry of the history keeps its place.
    if (!self || std::exchange(m_isOfHistory, false) || made.state != EditState::Complete
        || made.value.type() != field().valueType().type()) {
        return;
    }
    const QString entered = m_reader->fullText(made.value);
    try {
        if (auto history = this->history(); history && !entered.isEmpty())
            history->add(entered.toStdWString());
    } catch (...) {
        // The value is written. Only the history lacks it.
    }
}

// For a field without the focus, and for one whose text is empty and cannot be red.
void LineRowEditor::showStatus()
{
    QLineEdit* const edit = m_line->edit();
    if (m_clear) {
        m_clear->setVisible(!edit->isReadOnly()
            && (m_state.kind == PropertyState::Common || m_state.kind == PropertyState::Varies));
    }
    const QString status = this->status();
    edit->setToolTip(status.isEmpty() ? m_state.reason : status);
    edit->setPlaceholderText(m_line->isPending() ? status : QString());
}

RowEditor* makeLineEditor(
    QWidget* parent, const PropertySelection::Row& row, const RowQuestions& questions)
{
    return new LineRowEditor(parent, row, questions);
}

} // namespace vrn::qt::detail
