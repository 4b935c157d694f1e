#include "controls/popups/entry_popup_p.h"

#include <vrn/companion_qt/connect.h>

#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QMouseEvent>
#include <QWindow>

#include "controls/parts/readable_colours_p.h"

#include <algorithm>

namespace vrn::qt::detail {
namespace {

constexpr int mostRows = 10; ///< That are seen at a time.

} // namespace

EntryPopup::EntryPopup(QWidget* owner)
    : EditHintPopup(owner)
    , m_list(new QListWidget(this))
{
    layout()->setSpacing(0);
    layout()->addWidget(m_list);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    // A click must leave the focus in the edit.
    m_list->setFocusPolicy(Qt::NoFocus);
    new ReadableColours(m_list, this);
    vrn_connect(m_list, &QListWidget::itemClicked, this, [this](const QListWidgetItem* item) {
        if (item->flags().testFlag(Qt::ItemIsSelectable))
            choose();
    });
    EntryPopup::setHint(QString());
    EntryPopup::setCompletions({});
}

EntryPopup::~EntryPopup() = default;

void EntryPopup::setHint(const QString& hint)
{
    EditHintPopup::setHint(hint);
    fit();
}

void EntryPopup::setCompletions(const QStringList& labels, const std::vector<int>& headings)
{
    m_list->clear();
    m_list->addItems(labels);
    // The colours of the list do not show that an item is disabled.
    QFont bold = m_list->font();
    bold.setBold(true);
    for (const int row : headings) {
        m_list->item(row)->setFlags(Qt::NoItemFlags);
        m_list->item(row)->setFont(bold);
    }
    // As a field does it: in a layout from the right to the left, "3 m" would read "m 3".
    const bool isRightToLeft = !labels.isEmpty() && labels.first().isRightToLeft();
    m_list->setLayoutDirection(isRightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
    m_list->setHidden(labels.isEmpty());
    fit();
}

// The list is as wide as the hint.
void EntryPopup::fit()
{
    const int frame = 2 * m_list->frameWidth();
    int height = frame;
    for (int row = 0; row < std::min(m_list->count(), mostRows); ++row)
        height += m_list->sizeHintForRow(row);
    const int ownWidth = std::max(m_list->sizeHintForColumn(0), 0) + frame + 20;
    const int width = std::max(ownWidth, EditHintPopup::sizeHint().width());
    m_list->setFixedSize(QSize(width, height).boundedTo(largestSize()));
    label()->setMinimumWidth(m_list->count() == 0 ? 0 : m_list->width());
    resize(sizeHint().boundedTo(largestSize()));
}

QSize EntryPopup::sizeHint() const
{
    const QSize hint = EditHintPopup::sizeHint();
    if (m_list->count() == 0)
        return hint;
    return {std::max(hint.width(), m_list->width()), hint.height() + m_list->height()};
}

bool EntryPopup::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if (watched == parentWidget()
        && (type == QEvent::KeyPress || type == QEvent::ShortcutOverride)) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (isForList(key)) {
            event->accept();
            if (type == QEvent::KeyPress)
                handle(key);
            return true;
        }
    }
    // The hint hands what the mouse does to the window below.
    if (watched == windowHandle() && isOverList(*event))
        return false;
    return EditHintPopup::eventFilter(watched, event);
}

bool EntryPopup::isForList(const QKeyEvent& event) const
{
    const bool isPlain = (event.modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (!isVisible() || m_list->count() == 0 || !isPlain)
        return false;
    const bool isEntered = m_list->currentRow() >= 0;
    switch (event.key()) {
    case Qt::Key_Down:
        return true;
    case Qt::Key_Up:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
    case Qt::Key_Escape:
        return isEntered;
    default:
        return false;
    }
}

void EntryPopup::handle(const QKeyEvent& event)
{
    switch (event.key()) {
    case Qt::Key_Down:
        step(1);
        break;
    case Qt::Key_Up:
        step(-1);
        break;
    case Qt::Key_Escape:
        setCompletions({});
        Q_EMIT dropped();
        break;
    default:
        choose();
        break;
    }
}

// Up from the first row leaves the list; Down from the last one stays there.
void EntryPopup::step(int by)
{
    int row = m_list->currentRow() + by;
    while (row >= 0 && row < m_list->count()
        && !m_list->item(row)->flags().testFlag(Qt::ItemIsSelectable)) {
        row += by;
    }
    if (row < m_list->count())
        m_list->setCurrentRow(row);
}

bool EntryPopup::isOverList(const QEvent& event) const
{
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return m_list->isVisible()
            && m_list->geometry().contains(static_cast<const QMouseEvent&>(event).pos());
    default:
        return false;
    }
}

void EntryPopup::choose()
{
    const int row = m_list->currentRow();
    if (row < 0)
        return;
    setCompletions({});
    Q_EMIT chosen(row);
}

} // namespace vrn::qt::detail
