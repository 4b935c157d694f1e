#pragma once

#include <QPoint>
#include <QString>
#include <QStringList>

/// Keys and clicks that come from the X server, as a user's do, through the
/// window manager and whatever window has the keyboard, and what the server says
/// of windows. For tests of the label "x11". Each function fails the running test
/// if the event could not be made; it returns when the server has it, so the test
/// then waits for the effect.
namespace vrn::test::x11 {

/// Types `text` into the window that has the keyboard.
void type(const QString& text);

/// Presses and releases keys, each by its X name, as in "Return" or "ctrl+a".
void press(const QStringList& keys);

/// Clicks with the left button at a position of the screen.
void click(const QPoint& position);

/// Moves the mouse to a position of the screen.
void moveMouse(const QPoint& position);

/// Presses or releases a button where the mouse is: 1 is the left one, 3 the right one.
void pressButton(int button);
void releaseButton(int button);

/// Turns the wheel by one notch towards the user, or away from them, at a position of the
/// screen.
void turnWheel(const QPoint& position, bool isAway = false);

/// The window that the window manager calls active; 0 for none.
quintptr activeWindow();

/// Asks the window manager to minimise a window, as a button of its frame does.
void minimise(quintptr window);

/// Asks the window manager to activate a window, as a task bar does.
void activate(quintptr window);

/// What xprop says of a property of a window; empty if the window has no such one.
QString property(quintptr window, const QString& name);

/// Where the upper left corner of a window is on the screen.
QPoint place(quintptr window);

/// Whether the server shows the window, which may still be covered by another.
bool isViewable(quintptr window);

} // namespace vrn::test::x11
