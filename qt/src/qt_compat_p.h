#pragma once

// The differences between Qt 5.15 and Qt 6 that the sources cannot do without.

#include <QEvent>
#include <QMouseEvent>

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
