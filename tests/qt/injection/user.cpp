#include "injection/user.h"

#include "injection/scene.h"

#include <QApplication>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

namespace vrn::test::injection {
namespace {

QPointer<QWindow> windowOf(const QWidget* widget)
{
    return widget->window()->windowHandle();
}

// Not the one that has the focus: on this platform a popup takes it, and elsewhere it
// does not. Qt passes keys on to a popup that is open.
QPointer<QWindow> windowOfKeys()
{
    return scene().window ? windowOf(scene().window) : nullptr;
}

} // namespace

void press(Qt::Key key)
{
    const QPointer<QWindow> window = windowOfKeys();
    if (window)
        QTest::keyPress(window, key);
    if (window)
        QTest::keyRelease(window, key);
}

void undo()
{
    const QPointer<QWindow> window = windowOfKeys();
    for (const bool isPress : {true, false}) {
        if (window)
            QTest::simulateEvent(window, isPress, Qt::Key_Z, Qt::ControlModifier, {}, false);
    }
}

void click(QWidget* widget, QPoint position)
{
    const QPointer<QWindow> window = windowOf(widget);
    const QPoint place = widget->mapTo(widget->window(), position);
    if (window)
        QTest::mousePress(window, Qt::LeftButton, {}, place);
    if (window)
        QTest::mouseRelease(window, Qt::LeftButton, {}, place);
}

void hover(QWidget* widget, QPoint position)
{
    if (const QPointer<QWindow> window = windowOf(widget))
        QTest::mouseMove(window, widget->mapTo(widget->window(), position));
}

void turnWheelOver(QWidget* widget)
{
    const QPointF position(widget->rect().center());
    QWheelEvent event(position, widget->mapToGlobal(position.toPoint()), {}, {0, -120},
        Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}

void activate(QWidget* window)
{
    window->show();
    window->activateWindow();
    settle();
}

void leaveFocus()
{
    if (QWidget* focused = QApplication::focusWidget())
        focused->clearFocus();
}

void settle()
{
    for (int i = 0; i < 3; ++i)
        QCoreApplication::processEvents();
}

} // namespace vrn::test::injection
