#include "controls/line_edits/line_edit_impl_p.h"

#include <vrn/assert/smart_assert.h>
#include <vrn/companion_qt/connect.h>

#include <QApplication>
#include <QEvent>
#include <QInputMethodEvent>
#include <QPixmap>
#include <QPointer>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QToolButton>

#include "controls/parts/alive_p.h"
#include "controls/parts/readable_colours_p.h"
#include "controls/parts/run_both_p.h"
#include "controls/popups/edit_hint_popup_p.h"
#include "controls/popups/entry_popup_p.h"
#include "controls/popups/history_popup_p.h"
#include "controls/popups/popup_group_p.h"

#include <algorithm>
#include <utility>

namespace vrn::qt::detail {
namespace {

// Three dots over a base line: "there is more to this field". Their grey stands out on light
// and on dark grounds.
const char* const buttonIcon[] = {
    // clang-format off
    "12 12 2 1",
    "  c None",
    "# c #808080",
    "            ",
    "            ",
    "            ",
    "            ",
    "            ",
    "            ",
    "##   ##   ##",
    "##   ##   ##",
    "            ",
    "            ",
    "            ",
    "            ",
    // clang-format on
};

// The style sheet of a field with a button takes the top border out of sight by "margin-top:-1",
// and lifts the text by that and by "padding-top:-1".
constexpr int risenByMargin = 1;
constexpr int risenByPadding = 1;

} // namespace

LineEditImpl::LineEditImpl(unsigned int options, QWidget* parent)
    : QLineEdit(parent)
    , m_colours(new ReadableColours(this))
    , m_options(options)
{
    setFrame((options & optionBorderless) == 0);
}

LineEditImpl::~LineEditImpl()
{
    // From here on, a signal of QLineEdit would come from a half-destroyed edit.
    blockSignals(true);
    disposeOf(m_btn1);
    disposeOfPopups();
}

void LineEditImpl::setLook(const QString& styleSheet)
{
    m_colours->setStyleSheet(styleSheet);
}

QToolButton* LineEditImpl::addButton(
    const boost::function<QString(const QString&)>& fn, const QPixmap& pixmap)
{
    VRN_ASSERT(fn);
    VRN_ASSERT_MESSAGE(!m_btn1, "only 1 button allowed, at the moment.");
    if (m_btn1)
        return m_btn1;

    m_buttonFunction = fn;
    m_btn1 = new QToolButton(this);
    if (pixmap.isNull()) {
        const QPixmap builtIn(buttonIcon);
        m_btn1->setIcon(builtIn);
        m_btn1->setIconSize(builtIn.size());
    } else {
        m_btn1->setIcon(pixmap);
        m_btn1->setIconSize(QSize(12, 12));
    }
    m_btn1->setCursor(Qt::ArrowCursor);
    m_btn1->setStyleSheet(QStringLiteral("QToolButton { border: none; padding: 0; margin: 0; }"));
    m_btn1->show();

    const QSize button = m_btn1->sizeHint();
    m_roomForButton = button.width() + 1 + frameWidth();
    m_padding = QStringLiteral("QLineEdit { padding-right: %1px; padding-top:-1; margin-top:-1; "
                               "padding-bottom:0;  }")
                    .arg(m_roomForButton);
    setLook(m_padding);
    const int minimumHeight = (m_options & optionBorderless) != 0
        ? 16
        : button.height() + 2 * frameWidth();
    setMinimumSize(
        std::max(minimumSizeHint().width(), button.height() + 2 + 2 * frameWidth()), minimumHeight);
    placeButton();
    vrn_connect(m_btn1.data(), &QToolButton::clicked, this, &LineEditImpl::onClicked1);
    return m_btn1;
}

void LineEditImpl::setValueHistory(boost::shared_ptr<vrn::ValueHistory> history)
{
    m_history = std::move(history);
    if (m_historyPopup)
        m_historyPopup->setValueHistory(m_history);
}

void LineEditImpl::setCompletions(std::function<QStringList(const QString&)> completions)
{
    if (!completions) {
        setOffers(nullptr);
        return;
    }
    setOffers([completions = std::move(completions)](const QString& text) {
        std::vector<EntryOffer> offers;
        for (const QString& each : completions(text)) {
            if (each != text)
                offers.push_back({each, each, {}});
        }
        return offers;
    });
}

void LineEditImpl::setOffers(std::function<std::vector<EntryOffer>(const QString&)> offers)
{
    disposeOfPopups();
    m_offers.clear();
    m_giveOffers = std::move(offers);
    disconnect(this, &QLineEdit::textEdited, this, &LineEditImpl::offer);
    disconnect(this, &QLineEdit::editingFinished, this, &LineEditImpl::dropOffers);
    if (!m_giveOffers)
        return;
    vrn_connect(this, &QLineEdit::textEdited, this, &LineEditImpl::offer);
    vrn_connect(this, &QLineEdit::editingFinished, this, &LineEditImpl::dropOffers);
}

void LineEditImpl::showEditHint(const QString& hint)
{
    if (!m_popups && !hint.isEmpty())
        buildPopups();
    if (!m_hintPopup)
        return;
    m_hintPopup->setHint(hint);
    showHintPopup();
}

void LineEditImpl::showHintPopup()
{
    if (m_hintPopup->sizeHint().isEmpty())
        m_hintPopup->hide();
    else if (hasFocus())
        m_hintPopup->show();
    // A hint above the edit would otherwise grow over the edit.
    m_popups->reposition();
}

void LineEditImpl::offer()
{
    const Alive alive(this, this);
    const auto giveOffers = m_giveOffers;
    std::vector<EntryOffer> offers;
    if (giveOffers)
        offers = giveOffers(text());
    if (!alive)
        return;
    if (!m_popups && !offers.empty())
        buildPopups();
    if (!m_entryPopup)
        return;
    m_offers = std::move(offers);
    QStringList labels;
    std::vector<int> headings;
    for (const EntryOffer& each : m_offers) {
        if (each.isHeading)
            headings.push_back(int(labels.size()));
        labels.append(each.label);
    }
    m_entryPopup->setCompletions(labels, headings);
    showHintPopup();
}

void LineEditImpl::dropOffers()
{
    if (!m_entryPopup)
        return;
    m_offers.clear();
    m_entryPopup->setCompletions({});
    showHintPopup();
}

QSize LineEditImpl::sizeHint() const
{
    return inFull(QLineEdit::sizeHint());
}

QSize LineEditImpl::minimumSizeHint() const
{
    return inFull(QLineEdit::minimumSizeHint());
}

void LineEditImpl::changeEvent(QEvent* event)
{
    QLineEdit::changeEvent(event);
    const QEvent::Type type = event->type();
    if (m_btn1 && (type == QEvent::StyleChange || type == QEvent::LayoutDirectionChange))
        makeRoomForButton();
}

bool LineEditImpl::event(QEvent* event)
{
    // Qt goes on with the edit after the signals that an event leads to.
    const Alive alive(this, this);
    const bool takesFocus = event->type() == QEvent::FocusIn;
    const bool focusChanges = takesFocus || event->type() == QEvent::FocusOut;
    const bool buildsPopups = takesFocus && !m_popups;
    if (buildsPopups)
        buildPopups();
    // A combo box has the focus in place of its edit.
    const bool isInComboBox = focusProxy() != nullptr;
    // The popups were built too late for this event, or a combo box hands it straight to the edit.
    if (buildsPopups || (focusChanges && isInComboBox))
        tellPopups(event);
    const bool isTaken = QLineEdit::event(event);
    if (takesFocus && alive && hasFocus())
        Q_EMIT focused();
    return isTaken;
}

// The group comes first, so that the popups are in place when they show.
void LineEditImpl::tellPopups(QEvent* event)
{
    if (m_popups)
        m_popups->eventFilter(this, event);
    if (m_hintPopup)
        m_hintPopup->eventFilter(this, event);
    if (m_historyPopup)
        m_historyPopup->eventFilter(this, event);
}

// For each character of a long text, QLineEdit copies the part that fits. If the text is cut
// beforehand, this takes a third of the time.
void LineEditImpl::inputMethodEvent(QInputMethodEvent* event)
{
    // The maximum can be any int, even the smallest one.
    const qint64 room = qint64(maxLength()) - (text().size() - selectedText().size());
    const bool plainInsertion = !isReadOnly() && inputMask().isEmpty()
        && event->replacementLength() == 0;
    if (plainInsertion && room > 0 && event->commitString().size() > room) {
        event->setCommitString(
            event->commitString().left(static_cast<int>(room)), event->replacementStart());
        Q_EMIT inputRejected(); // As QLineEdit does when a text does not fit.
    }
    QLineEdit::inputMethodEvent(event);
}

// Nothing else tells of margins that the application has set.
void LineEditImpl::paintEvent(QPaintEvent* event)
{
    if (m_btn1 && textMargins() != m_margins)
        makeRoomForButton();
    QLineEdit::paintEvent(event);
}

void LineEditImpl::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    if (m_btn1)
        placeButton();
}

void LineEditImpl::buildPopups()
{
    if (m_giveOffers) {
        m_entryPopup = new EntryPopup(this);
        vrn_connect(m_entryPopup.data(), &EntryPopup::chosen, this, &LineEditImpl::onOfferChosen);
        vrn_connect(m_entryPopup.data(), &EntryPopup::dropped, this, &LineEditImpl::dropOffers);
        m_hintPopup = m_entryPopup.data();
    } else {
        m_hintPopup = new EditHintPopup(this);
    }
    m_historyPopup = new HistoryPopup(this);
    m_historyPopup->setValueHistory(m_history);
    vrn_connect(m_historyPopup.data(), &HistoryPopup::itemSelected, this,
        &LineEditImpl::onHistoryItemSelected);
    m_popups = new PopupGroup(this);
    m_popups->add(m_hintPopup);
    m_popups->add(m_historyPopup);
    vrn_connect(m_popups, &PopupGroup::editMoved, m_hintPopup.data(), &EditHintPopup::followOwner);
    vrn_connect(
        m_popups, &PopupGroup::editMoved, m_historyPopup.data(), &HistoryPopup::followOwner);
}

void LineEditImpl::disposeOfPopups()
{
    disposeOf(m_hintPopup);
    disposeOf(m_historyPopup);
    // One of the popups may be about to show, and may have called the application for that.
    if (m_popups)
        m_popups->deleteLater();
    m_popups = nullptr;
}

// The editing goes on: after a unit may come another quantity.
void LineEditImpl::onOfferChosen(int row)
{
    if (isReadOnly() || row >= int(m_offers.size()))
        return;
    const Alive alive(this, m_hintPopup);
    const EntryOffer chosen = m_offers[std::size_t(row)];
    setText(chosen.text);
    runBoth([&] { Q_EMIT textEdited(chosen.text); },
        [&] {
            if (alive)
                dropOffers();
        });
    if (alive && chosen.onTaken)
        chosen.onTaken();
}

void LineEditImpl::onHistoryItemSelected(const QString& text)
{
    if (text.isEmpty() || isReadOnly())
        return;
    const Alive alive(this, m_historyPopup);
    setText(text);
    runBoth([&] { Q_EMIT textEdited(text); },
        [&] {
            if (alive)
                Q_EMIT editingFinished();
        });
}

void LineEditImpl::onClicked1()
{
    if (!m_buttonFunction)
        return;
    const Alive alive(this, m_btn1);
    const auto fn = m_buttonFunction;
    const QString before = text();
    const QString after = fn(before);
    if (!alive || after == before)
        return;
    setText(after);
    selectAll();
    Q_EMIT textEdited(after);
}

void LineEditImpl::placeButton()
{
    const QSize button = m_btn1->sizeHint();
    m_btn1->move(rect().right() - frameWidth() - button.width(),
        (rect().bottom() + 1 - button.height()) / 2);
}

bool LineEditImpl::isPadded() const
{
    return !m_padding.isEmpty() && styleSheet() == m_padding;
}

// With a padding, Qt leaves out of the height what the style adds to that of a line edit.
QSize LineEditImpl::inFull(QSize hint) const
{
    if (!isPadded() || !hasFrame())
        return hint;
    QStyleOptionFrame option;
    initStyleOption(&option);
    const auto heightFor = [&](const QWidget* widget) {
        const QSize text(100, 100);
        return style()->sizeFromContents(QStyle::CT_LineEdit, &option, text, widget).height();
    };
    return hint + QSize(0, heightFor(nullptr) - heightFor(this) - risenByMargin - risenByPadding);
}

// Frame and text have their places beside the button with any style sheet. These margins do
// what the padding does, and take back what else it does: it is on the left if the text runs
// from right to left, and it lifts frame and text.
void LineEditImpl::makeRoomForButton()
{
    QMargins margins(0, 0, m_roomForButton, 0);
    if (isPadded()) {
        margins -= isRightToLeft() ? QMargins(m_roomForButton, -risenByPadding, 0, 0)
                                   : QMargins(0, -risenByPadding, m_roomForButton, 0);
    }
    m_ownMargins = ownMargins();
    m_margins = m_ownMargins + margins;
    setTextMargins(m_margins);
    setContentsMargins(0, isPadded() ? risenByMargin : 0, 0, 0);
}

// The application may set margins of its own, or change one side of those that it reads here.
// So a side that is as it was set last still has the margin that the application gave it.
QMargins LineEditImpl::ownMargins() const
{
    const QMargins now = textMargins();
    const auto side = [&](int (QMargins::*of)() const) {
        return (now.*of)() == (m_margins.*of)() ? (m_ownMargins.*of)() : (now.*of)();
    };
    return {side(&QMargins::left), side(&QMargins::top), side(&QMargins::right),
        side(&QMargins::bottom)};
}

int LineEditImpl::frameWidth() const
{
    if ((m_options & optionBorderless) != 0)
        return 0;
    return style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
}

} // namespace vrn::qt::detail
