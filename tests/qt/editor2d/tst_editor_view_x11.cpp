#include <vrn/qt/grip_item.h>

#include <QScreen>

#include "editor_view_fixture.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/x11_input.h"

#include <cmath>

using namespace vrn::test;
using namespace vrn::qt;

namespace {

// A view in a window that is active, with the mouse beside it.
struct Window
{
    Window()
    {
        form.resize(500, 400);
        form.move(100, 100);
        view.setParent(&form);
        view.setGeometry(50, 50, 400, 300);
        view.setFrameShape(QFrame::NoFrame);
        view.scene()->setSceneRect(-2000.0, -2000.0, 4000.0, 4000.0);
        view.scene()->addRect(-50.0, -50.0, 100.0, 80.0, QPen(), Qt::cyan);
        view.scene()->addItem(grip);
        grip->setPos(60.0, 20.0);
        view.setCenter(QPointF(0.0, 0.0), false);
        view.setRulers(true, true);
    }

    bool open()
    {
        x11::moveMouse(QPoint(5, 5));
        form.show();
        if (!QTest::qWaitForWindowActive(&form))
            return false;
        // It moves once more when the window manager adds the frame.
        QTest::qWait(300);
        log.take();
        return true;
    }

    QPoint onScreen(const QPoint& place) const { return view.viewport()->mapToGlobal(place); }

    // What the X server shows of the view.
    QImage shown() const
    {
        const QPoint corner = onScreen(QPoint());
        return view.screen()
            ->grabWindow(0, corner.x(), corner.y(), view.width(), view.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
    }

    bool showsAFullRepaint()
    {
        return shown() == view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    QWidget form;
    OpenView view;
    ed2d::GripItem* grip = new ed2d::GripItem;
    SignalLog log{view};
};

bool isNear(double a, double b)
{
    return std::abs(a - b) <= 1e-9;
}

} // namespace

// The view under a mouse that the X server moves.
class TestEditorViewX11 : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theWheelZoomsAboutTheMouse()
    {
        Window window;
        QVERIFY(window.open());
        const QPoint mouse(300, 80);
        const QPointF before = window.view.mapToScene(mouse);
        x11::turnWheel(window.onScreen(mouse), true);
        QTRY_VERIFY(isNear(window.view.pixelSize().x(), 1.0 / 1.15));
        x11::turnWheel(window.onScreen(mouse), true);
        QTRY_VERIFY(isNear(window.view.pixelSize().x(), 1.0 / 1.15 / 1.15));
        QVERIFY((window.view.mapToScene(mouse) - before).manhattanLength() < 3.0);
        x11::turnWheel(window.onScreen(mouse));
        QTRY_VERIFY(isNear(window.view.pixelSize().x(), 1.0 / 1.15));
        QVERIFY(window.log.take().endsWith(
            "centerChanged zoomChanged centerChanged zoomChanged centerChanged zoomChanged"));
        QTRY_VERIFY(window.showsAFullRepaint());
    }

    void theRightButtonPans()
    {
        Window window;
        QVERIFY(window.open());
        x11::moveMouse(window.onScreen(QPoint(200, 150)));
        QTRY_VERIFY(window.log.text.contains("mouseMoved"));
        const QPointF grabbed = window.view.mapToScene(200, 150);
        window.log.take();
        x11::pressButton(3);
        QTRY_COMPARE(window.view.cursor().shape(), Qt::ClosedHandCursor);
        x11::moveMouse(window.onScreen(QPoint(120, 180)));
        QTRY_COMPARE(window.view.mapToScene(120, 180), grabbed);
        QCOMPARE(window.log.take(), QString("centerChanged mouseMoved"));
        x11::releaseButton(3);
        QTRY_COMPARE(window.view.cursor().shape(), Qt::ArrowCursor);
        x11::moveMouse(window.onScreen(QPoint(220, 100)));
        QTRY_VERIFY(window.log.text.contains("mouseMoved"));
        QCOMPARE(window.view.mapToScene(120, 180), grabbed);
        QTRY_VERIFY(window.showsAFullRepaint());
    }

    void thePanEndsWithTheViewsOwnCursor()
    {
        Window window;
        window.view.setDrawCustomCursor(true);
        QVERIFY(window.open());
        x11::moveMouse(window.onScreen(QPoint(200, 150)));
        QTRY_COMPARE(window.view.cursor().shape(), Qt::BlankCursor);
        x11::pressButton(3);
        QTRY_COMPARE(window.view.cursor().shape(), Qt::ClosedHandCursor);
        x11::releaseButton(3);
        QTRY_COMPARE(window.view.cursor().shape(), Qt::BlankCursor);
        x11::moveMouse(QPoint(5, 5));
        QTRY_COMPARE(window.view.cursor().shape(), Qt::ArrowCursor);
    }

    void aGripIsDragged()
    {
        Window window;
        QVERIFY(window.open());
        int moves = 0;
        window.grip->positionChanged.connect([&] { ++moves; });
        const QPoint start = window.view.mapFromScene(window.grip->pos());
        x11::moveMouse(window.onScreen(start));
        QTRY_VERIFY(window.grip->hovering());
        x11::pressButton(1);
        QTRY_VERIFY(window.grip->isSelected());
        x11::moveMouse(window.onScreen(start + QPoint(30, -20)));
        QTRY_COMPARE(window.grip->pos(), QPointF(90.0, 0.0));
        QVERIFY(moves > 0);
        x11::releaseButton(1);
        QTRY_VERIFY(window.log.text.endsWith("mouseReleased "));
        x11::moveMouse(window.onScreen(QPoint(20, 200)));
        QTRY_VERIFY(!window.grip->hovering());
        QCOMPARE(window.grip->pos(), QPointF(90.0, 0.0));
        QTRY_VERIFY(window.showsAFullRepaint());
    }

    void crossHairsFollowTheMouseWhileItIsInTheView()
    {
        Window window;
        QVERIFY(window.open());
        const QImage without = window.shown();
        for (const QPoint& mouse : {QPoint(100, 100), QPoint(230, 170), QPoint(231, 171)}) {
            x11::moveMouse(window.onScreen(mouse));
            // Every third pixel is a dot; below the rulers, and above the other line.
            const auto dots = [&] {
                const QImage image = window.shown();
                int count = 0;
                for (int y = 30; y < 90; ++y)
                    count += image.pixelColor(mouse.x(), y) == Qt::darkGray;
                return count;
            };
            QTRY_COMPARE(dots(), 20);
            QTRY_VERIFY(window.showsAFullRepaint());
            QVERIFY(window.shown() != without);
        }
        // No button is held, and the scene is not painted again.
        window.view.wholePaints = 0;
        window.view.paints = 0;
        window.log.take();
        x11::moveMouse(window.onScreen(QPoint(300, 200)));
        QTRY_VERIFY(window.log.text.contains("mouseMoved"));
        QTRY_VERIFY(window.view.paints > 0);
        QCOMPARE(window.view.wholePaints, 0);
        QTRY_VERIFY(window.showsAFullRepaint());
        x11::moveMouse(QPoint(5, 5));
        QTRY_COMPARE(window.shown(), without);
    }
};

VRN_TEST(TestEditorViewX11)
#include "tst_editor_view_x11.moc"
