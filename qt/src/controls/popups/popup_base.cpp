#include "controls/popups/popup_base_p.h"

#include <QApplication>
#include <QFocusEvent>
#include <QPointer>
#include <QWindow>

#include "controls/parts/alive_p.h"

namespace vrn::qt::detail {
namespace {

constexpr qreal opacityAtRest = 0.7;
constexpr qreal opacityUnderMouse = 0.9;

// A widget in a window that is not shown yet is not out of sight.
bool isScrolledOutOfSight(const QWidget& widget)
{
    return widget.isVisible() && widget.visibleRegion().isEmpty();
}

} // namespace

PopupBase::PopupBase(QWidget* owner)
    : QWidget(owner)
    , m_owner(owner)
{
    owner->installEventFilter(this);
    setWindowFlags(Qt::Tool | Qt::FramelessWindowHint);
    setStyleSheet(QStringLiteral("* {  border: 1px solid gray; background-color:white;}"));
    setContentsMargins(0, 0, 0, 0);
    setWindowOpacity(opacityAtRest);
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_ShowWithoutActivating);
    // As a mere tool a popup gets a button in the task bar from some window managers, and
    // the activation if it shows before the user has typed anything.
    setAttribute(Qt::WA_X11NetWmWindowTypeToolTip);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

PopupBase::~PopupBase() = default;

void PopupBase::setVisible(bool visible)
{
    m_shown = visible;
    if (!visible || isScrolledOutOfSight(*m_owner)) {
        QWidget::setVisible(false);
        return;
    }
    // The popup may have been shown empty and have something to show now.
    if (isVisible() && testAttribute(Qt::WA_DontShowOnScreen) && !sizeHint().isEmpty())
        QWidget::setVisible(false);
    // Some window managers minimise the popups with their window. A popup that is shown
    // minimised would minimise its window as well, or never come back.
    setWindowState(windowState() & ~Qt::WindowMinimized);
    QWidget::setVisible(true);
}

void PopupBase::followOwner()
{
    if (m_shown)
        setVisible(true);
}

void PopupBase::showEvent(QShowEvent* event)
{
    // A window of size (0, 0) would still be a dot on the screen.
    setAttribute(Qt::WA_DontShowOnScreen, sizeHint().isEmpty());
    // Only on the window: the widget keeps the flags of its constructor.
    if (QWindow* window = windowHandle()) {
        compat::announceAsToolTip(window);
        window->setFlag(Qt::WindowDoesNotAcceptFocus);
    }
    QWidget::showEvent(event);
}

bool PopupBase::event(QEvent* event)
{
    if (event->type() == QEvent::WindowDeactivate)
        hide();
    return QWidget::event(event);
}

bool PopupBase::eventFilter(QObject* watched, QEvent* event)
{
    // Showing it may call a storage, and hiding it may end the editing of the owner.
    const Alive alive(this, this);
    if (watched == m_owner && event->type() == QEvent::FocusIn)
        show();
    // This window is never the active one, so it follows the window of the owner.
    if (watched == m_owner
        && (event->type() == QEvent::WindowDeactivate || event->type() == QEvent::Hide))
        hide();
    if (watched == m_owner && event->type() == QEvent::FocusOut) {
        const bool windowChanges = static_cast<QFocusEvent*>(event)->reason()
            == Qt::ActiveWindowFocusReason;
        const QPointer<QWidget> focused(QApplication::focusWidget());
        if (!windowChanges && focused != this) {
            hide();
            if (focused)
                focused->setFocus(Qt::OtherFocusReason);
        }
    }
    return QWidget::eventFilter(watched, event);
}

void PopupBase::enterEvent(compat::EnterEvent* event)
{
    setWindowOpacity(opacityUnderMouse);
    QWidget::enterEvent(event);
}

void PopupBase::leaveEvent(QEvent* event)
{
    setWindowOpacity(opacityAtRest);
    QWidget::leaveEvent(event);
}

} // namespace vrn::qt::detail
