#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

/// Keys and clicks that come from the X server, as a user's do, through the
/// window manager and whatever window has the keyboard. For tests of the label
/// "x11". Each function fails the running test if the event could not be made;
/// it returns when the server has it, so the test then waits for the effect.
namespace vrn::test::x11 {

/// Types `text` into the window that has the keyboard.
void type(const QString& text);

/// Presses and releases keys, each by its X name, as in "Return" or "ctrl+a".
void press(const QStringList& keys);

/// Clicks with the left button at a position of the screen.
void click(const QPoint& position);

/// The window that the window manager calls active; 0 for none.
quintptr activeWindow();

} // namespace vrn::test::x11
