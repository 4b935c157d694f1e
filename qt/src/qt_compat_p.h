#pragma once

// The differences between Qt 5.15 and Qt 6 that the sources cannot do without.

#include <QEvent>

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

} // namespace vrn::qt::compat
