#pragma once

// The differences between Qt 5.15 and Qt 6 that the sources cannot do without.

#include <QComboBox>
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

/// The width of a combo box follows its minimum length and not its entries. Qt 6 has left
/// only the policy that always keeps room for an icon; without an icon Qt 5 does not.
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
constexpr auto adjustToMinimumContentsLength = QComboBox::AdjustToMinimumContentsLengthWithIcon;
#else
// By number, because the name is hidden: Qt 5.15 calls it deprecated.
constexpr auto adjustToMinimumContentsLength = static_cast<QComboBox::SizeAdjustPolicy>(2);
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
