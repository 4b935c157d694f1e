#include "controls/popups/popup_group_p.h"

#include <vrn/companion_qt/connect.h>

#include <QApplication>
#include <QEvent>
#include <QLineEdit>
#include <QScreen>

#include <algorithm>

namespace vrn::qt::detail {
namespace {

// What task bars leave of the screen that the edit is on.
QRect roomAround(const QWidget& edit)
{
    const QPoint center = edit.mapToGlobal(edit.rect().center());
    const QScreen* screen = QGuiApplication::screenAt(center);
    return (screen ? screen : edit.screen())->availableGeometry();
}

} // namespace

PopupGroup::PopupGroup(QLineEdit* edit)
    : QObject(edit)
    , m_edit(edit)
{
    m_settled.setSingleShot(true);
    vrn_connect(&m_settled, &QTimer::timeout, this, [this] {
        // They are moved first, and shown afterwards.
        reposition();
        Q_EMIT editMoved();
    });
    edit->installEventFilter(this);
}

PopupGroup::~PopupGroup() = default;

void PopupGroup::add(QWidget* popup)
{
    popup->installEventFilter(this);
    m_popups.emplace_back(popup);
}

bool PopupGroup::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    const bool moves = type == QEvent::Move || type == QEvent::Resize;
    if (watched == m_edit && type == QEvent::FocusIn) {
        watchAncestors();
        reposition();
    }
    // Without a focus widget the window has lost the activation. Popups may still stand.
    if (watched == m_edit && type == QEvent::FocusOut && QApplication::focusWidget())
        unwatchAncestors();
    if (moves && (watched == m_edit || isAncestor(watched))) {
        reposition();
        m_settled.start();
    }
    if (type == QEvent::Show && holds(watched)) {
        watchAncestors();
        // The final size of a popup is known only after it was shown.
        m_settled.start();
    }
    return QObject::eventFilter(watched, event);
}

// The popups are windows of their own: nothing else moves them.
void PopupGroup::watchAncestors()
{
    for (QWidget* widget = m_edit; !widget->isWindow();) {
        widget = widget->parentWidget();
        widget->installEventFilter(this);
    }
}

void PopupGroup::unwatchAncestors()
{
    for (QWidget* widget = m_edit; !widget->isWindow();) {
        widget = widget->parentWidget();
        widget->removeEventFilter(this);
    }
}

bool PopupGroup::isAncestor(const QObject* object) const
{
    return object->isWidgetType() && static_cast<const QWidget*>(object)->isAncestorOf(m_edit);
}

bool PopupGroup::holds(const QObject* object) const
{
    return std::any_of(m_popups.begin(), m_popups.end(),
        [object](const QPointer<QWidget>& popup) { return popup.data() == object; });
}

void PopupGroup::reposition()
{
    constexpr int gap = 5;
    const QRect room = roomAround(*m_edit);
    QPoint below = m_edit->mapToGlobal(QPoint(0, m_edit->height()));
    QPoint above = m_edit->mapToGlobal(QPoint(0, 0));
    for (const QPointer<QWidget>& popup : m_popups) {
        if (!popup)
            continue;
        const int height = popup->height();
        const int x = std::max(
            room.x(), std::min(below.x(), room.x() + room.width() - popup->width()));
        const bool fitsBelow = below.y() + height <= room.y() + room.height();
        const bool fitsAbove = above.y() - height >= room.y();
        if (fitsBelow || !fitsAbove) {
            popup->move(x, below.y());
            below.ry() += height + gap;
        } else {
            popup->move(x, above.y() - height);
            above.ry() -= height + gap;
        }
    }
}

} // namespace vrn::qt::detail
