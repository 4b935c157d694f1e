#pragma once

// The differences between Qt 5.15 and Qt 6 that the sources cannot do without.

#include <QComboBox>
#include <QEvent>
#include <QMouseEvent>
#include <QWindow>

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
#include <QEnterEvent>
#endif

namespace vrn::qt::compat {

/// The argument of QWidget::enterEvent.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
using EnterEvent = QEnterEvent;
#else
using EnterEvent = QEvent;
#endif

/// The width of a combo box follows its minimum length and not its entries. Qt 6 has left
/// only the policy that always keeps room for an icon; without an icon Qt 5 does not.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
constexpr auto adjustToMinimumContentsLength = QComboBox::AdjustToMinimumContentsLengthWithIcon;
#else
// By number, because the name is hidden: Qt 5.15 calls it deprecated.
constexpr auto adjustToMinimumContentsLength = static_cast<QComboBox::SizeAdjustPolicy>(2);
#endif

/// Makes the window a tool tip for an X11 window manager, at the next change of its flags.
/// Qt 5 does so by itself for WA_X11NetWmWindowTypeToolTip. Qt 6.4 loses that attribute on
/// the way to the server, but its platform plugin still reads the type from this property.
inline void announceAsToolTip(QWindow* window)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    constexpr int toolTip = 0x400;
    window->setProperty("_q_xcb_wm_window_type", toolTip);
#else
    Q_UNUSED(window)
#endif
}

/// Where on the screen the mouse is.
inline QPoint globalPosition(const QMouseEvent& event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.globalPosition().toPoint();
#else
    return event.globalPos();
#endif
}

} // namespace vrn::qt::compat
