#include "controls/popups/popup_group_p.h"

#include <QEvent>
#include <QLineEdit>
#include <QTimer>

#include <algorithm>

namespace vrn::qt::detail {

PopupGroup::PopupGroup(QLineEdit* edit)
    : QObject(edit)
    , m_edit(edit)
{
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
    if (watched == m_edit
        && (type == QEvent::Move || type == QEvent::Resize || type == QEvent::FocusIn))
        reposition();
    if (watched == m_edit->window() && type == QEvent::Move && isAnyVisible())
        reposition();
    if (type == QEvent::Show && holds(watched)) {
        // The popups are windows of their own: nobody else moves them along.
        m_edit->window()->installEventFilter(this);
        // The final size of a popup is known only after it was shown.
        QTimer::singleShot(0, this, &PopupGroup::reposition);
    }
    return QObject::eventFilter(watched, event);
}

bool PopupGroup::holds(const QObject* object) const
{
    return std::any_of(m_popups.begin(), m_popups.end(),
        [object](const QPointer<QWidget>& popup) { return popup.data() == object; });
}

bool PopupGroup::isAnyVisible() const
{
    return std::any_of(m_popups.begin(), m_popups.end(),
        [](const QPointer<QWidget>& popup) { return popup && popup->isVisible(); });
}

void PopupGroup::reposition()
{
    constexpr int gap = 5;
    QPoint position = m_edit->mapToGlobal(QPoint(0, m_edit->height()));
    for (const QPointer<QWidget>& popup : m_popups) {
        if (!popup)
            continue;
        popup->move(position);
        position.ry() += popup->height() + gap;
    }
}

} // namespace vrn::qt::detail
