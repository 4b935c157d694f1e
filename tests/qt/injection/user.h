#pragma once

#include <QPoint>
#include <Qt>

class QWidget;

namespace vrn::test::injection {

// What comes from a keyboard and a mouse goes the whole way through Qt, from the window
// on. A window that goes on the way gets no more of it.

/// In the window of the scene.
void press(Qt::Key key);
/// Ctrl+Z, without the key Ctrl by itself.
void undo();
void click(QWidget* widget, QPoint position);
void hover(QWidget* widget, QPoint position);
void turnWheelOver(QWidget* widget);

/// Makes the window the active one.
void activate(QWidget* window);
/// Takes the focus from the widget that has it.
void leaveFocus();

/// Runs what is due in the event loop.
void settle();

} // namespace vrn::test::injection
