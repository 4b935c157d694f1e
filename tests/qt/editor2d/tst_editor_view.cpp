#include <vrn/qt/graphics_scene.h>

#include <QGraphicsRectItem>
#include <QGraphicsSceneMouseEvent>
#include <QMimeData>
#include <QScrollBar>

#include "editor_view_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cmath>

using namespace vrn::test;
using namespace vrn::qt::graphics;

Q_DECLARE_METATYPE(Qt::MouseButton)
Q_DECLARE_METATYPE(QEvent::Type)

namespace {

// A view of 400 x 300 pixels, whose scene is much larger.
struct Fixture
{
    Fixture()
    {
        view.scene()->setSceneRect(-5000.0, -5000.0, 10000.0, 10000.0);
        view.resize(400, 300);
        view.show();
        (void)QTest::qWaitForWindowExposed(&view);
        view.setCenter(QPointF(50.0, 0.0), false);
        log.take();
    }

    OpenView view;
    SignalLog log{view};
};

// Which events it has got.
struct LoggingScene : public QGraphicsScene
{
    bool event(QEvent* event) override
    {
        types.append(event->type());
        return QGraphicsScene::event(event);
    }
    QVector<QEvent::Type> types;
};

bool isNear(const QPointF& a, const QPointF& b, double tolerance = 1e-9)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y()) <= tolerance;
}

} // namespace

// The state of a view and what it does in events. Drawing and links have tests of their own.
class TestEditorView : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewViewIsAsDescribed()
    {
        EditorView view;
        QCOMPARE(view.parent(), nullptr);
        QCOMPARE(view.getCenter(), QPointF(50.0, 0.0));
        QCOMPARE(view.cacheMode(), QGraphicsView::CacheNone);
        QCOMPARE(view.viewportUpdateMode(), QGraphicsView::FullViewportUpdate);
        QVERIFY(view.renderHints().testFlag(QPainter::Antialiasing));
        QCOMPARE(view.dragMode(), QGraphicsView::RubberBandDrag);
        QCOMPARE(view.horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QCOMPARE(view.verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
        QVERIFY(view.testAttribute(Qt::WA_MouseTracking));
        QVERIFY(view.viewport()->hasMouseTracking());
        QCOMPARE(view.cursor().shape(), Qt::ArrowCursor);
    }

    // The center is applied before there is a scene, and does not show until a resize.
    void aNewViewShowsItsCenterFromTheFirstResize()
    {
        EditorView view;
        const QPointF middle = view.mapToScene(view.viewport()->rect().center());
        QGraphicsScene scene(-200.0, -200.0, 600.0, 600.0);
        QGraphicsView plain;
        plain.centerOn(50.0, 0.0);
        plain.setScene(&scene);
        plain.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        plain.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        QCOMPARE(middle, plain.mapToScene(plain.viewport()->rect().center()));
        QVERIFY(!isNear(middle, QPointF(50.0, 0.0), 2.0));
        view.resize(300, 200);
        view.show();
        QVERIFY(isNear(view.mapToScene(view.viewport()->rect().center()), QPointF(50.0, 0.0), 2.0));
    }

    void theBaseClassHandlesFocusAndDrags_data()
    {
        columns<QEvent::Type>("type");
        row("focus comes", QEvent::FocusIn);
        row("focus goes", QEvent::FocusOut);
        row("something is dragged over the view", QEvent::GraphicsSceneDragMove);
    }
    void theBaseClassHandlesFocusAndDrags()
    {
        QFETCH(QEvent::Type, type);
        Fixture f;
        LoggingScene scene;
        f.view.setScene(&scene);
        scene.types.clear();
        QFocusEvent focusIn(QEvent::FocusIn);
        QFocusEvent focusOut(QEvent::FocusOut);
        const QMimeData data;
        QDragMoveEvent drag(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        if (type == QEvent::FocusIn)
            f.view.focusInEvent(&focusIn);
        else if (type == QEvent::FocusOut)
            f.view.focusOutEvent(&focusOut);
        else
            f.view.dragMoveEvent(&drag);
        QVERIFY(scene.types.contains(type));
    }

    void theSceneHasHandledTheMouseBeforeTheSignal()
    {
        Fixture f;
        LoggingScene scene;
        f.view.setScene(&scene);
        press(f.view, QPoint(20, 20), Qt::LeftButton);
        QVector<QEvent::Type> before;
        f.view.mouseMoved.connect([&](QMouseEvent*) { before = scene.types; });
        f.view.mouseReleased.connect([&](QMouseEvent*) { before = scene.types; });
        scene.types.clear();
        move(f.view, QPoint(30, 30), Qt::LeftButton);
        QVERIFY(before.contains(QEvent::GraphicsSceneMouseMove));
        before.clear();
        release(f.view, QPoint(30, 30), Qt::LeftButton);
        QVERIFY(before.contains(QEvent::GraphicsSceneMouseRelease));
    }

    void theSceneOfANewViewIsItsChild()
    {
        QPointer<QGraphicsScene> scene;
        {
            EditorView view;
            scene = view.scene();
            QVERIFY(dynamic_cast<GraphicsScene*>(scene.data()));
            QCOMPARE(scene->parent(), &view);
            QCOMPARE(scene->itemIndexMethod(), QGraphicsScene::NoIndex);
            QCOMPARE(scene->sceneRect(), QRectF(-200.0, -200.0, 600.0, 600.0));
        }
        QVERIFY(!scene);
    }

    void aNewViewportIsTracked()
    {
        EditorView view;
        view.setViewport(new QWidget);
        QVERIFY(view.viewport()->hasMouseTracking());
    }

    void setCenterKeepsThePointInTheMiddle_data()
    {
        columns<bool, QString>("notify", "signalsFired");
        row("silently", false, "");
        row("with its signal", true, "centerChanged");
    }
    void setCenterKeepsThePointInTheMiddle()
    {
        QFETCH(bool, notify);
        QFETCH(QString, signalsFired);
        Fixture f;
        f.view.setCenter(QPointF(120.0, -80.0), notify);
        QCOMPARE(f.log.take(), signalsFired);
        QCOMPARE(f.view.getCenter(), QPointF(120.0, -80.0));
        const QPointF middle = f.view.mapToScene(f.view.viewport()->rect().center());
        QVERIFY(isNear(middle, QPointF(120.0, -80.0), 2.0));
    }

    void centerChangedCarriesTheCenter()
    {
        Fixture f;
        QPointF told;
        f.view.centerChanged.connect([&](const QPointF& center) { told = center; });
        f.view.setCenter(QPointF(1.0, 2.0), true);
        QCOMPARE(told, QPointF(1.0, 2.0));
    }

    // The recorded center goes on where the scroll bars stop.
    void theCenterIsNotLimitedToTheScene_data()
    {
        columns<QPointF, bool, bool>("center", "left", "top");
        row("right of it", QPointF(1e6, 1e6), false, false);
        row("left of it", QPointF(-1e6, -1e6), true, true);
        row("far right, where pixels are no ints", QPointF(1e15, 1e15), false, false);
        row("far left, where pixels are no ints", QPointF(-1e15, -1e15), true, true);
        row("far right and left", QPointF(1e300, -1e300), false, true);
        row("infinite", QPointF(qInf(), -qInf()), false, true);
    }
    void theCenterIsNotLimitedToTheScene()
    {
        QFETCH(QPointF, center);
        QFETCH(bool, left);
        QFETCH(bool, top);
        Fixture f;
        f.view.setCenter(center, false);
        QVERIFY(f.view.getCenter().x() == center.x() && f.view.getCenter().y() == center.y());
        const QScrollBar* x = f.view.horizontalScrollBar();
        const QScrollBar* y = f.view.verticalScrollBar();
        QCOMPARE(x->value(), left ? x->minimum() : x->maximum());
        QCOMPARE(y->value(), top ? y->minimum() : y->maximum());
    }

    void pixelSizeIsThatOfTheTransform_data()
    {
        columns<QTransform, QPointF>("transform", "size");
        row("unscaled", QTransform(), QPointF(1.0, 1.0));
        row("zoomed in", QTransform::fromScale(4.0, 4.0), QPointF(0.25, 0.25));
        row("other in x than in y", QTransform::fromScale(0.5, 2.0), QPointF(2.0, 0.5));
        row("mirrored in y, with its sign", QTransform::fromScale(1.0, -1.0), QPointF(1.0, -1.0));
    }
    void pixelSizeIsThatOfTheTransform()
    {
        QFETCH(QTransform, transform);
        QFETCH(QPointF, size);
        Fixture f;
        f.view.setTransform(transform);
        QVERIFY(isNear(f.view.pixelSize(), size));
    }

    void scaleByFiresNothingAndKeepsTheCenter()
    {
        Fixture f;
        f.view.scaleBy(2.0);
        QCOMPARE(f.log.take(), QString());
        QCOMPARE(f.view.getCenter(), QPointF(50.0, 0.0));
        QVERIFY(isNear(f.view.pixelSize(), QPointF(0.5, 0.5)));
    }

    void theWheelZoomsByTheSignOfItsAngle_data()
    {
        columns<QPoint, double>("angle", "factor");
        row("away from the user", QPoint(0, 120), 1.15);
        row("towards the user", QPoint(0, -120), 1 / 1.15);
        row("a small angle is a whole step", QPoint(0, 1), 1.15);
        row("a large angle is one step", QPoint(0, 1200), 1.15);
        row("horizontal, where the vertical angle is zero", QPoint(120, 0), 1.15);
        row("horizontal, backwards", QPoint(-120, 0), 1 / 1.15);
        row("diagonal: the vertical angle counts", QPoint(-120, 120), 1.15);
        row("zero zooms out", QPoint(0, 0), 1 / 1.15);
    }
    void theWheelZoomsByTheSignOfItsAngle()
    {
        QFETCH(QPoint, angle);
        QFETCH(double, factor);
        Fixture f;
        turnWheel(f.view, QPoint(100, 100), angle);
        QVERIFY(isNear(f.view.pixelSize(), QPointF(1.0, 1.0) / factor));
        QCOMPARE(f.log.take(), QString("centerChanged zoomChanged"));
    }

    void theCompanionOfADiagonalStepIsNoStep_data()
    {
        columns<QPoint, ulong, bool>("first", "time", "isStep");
        row("after a diagonal step, at its time", QPoint(120, 120), 7UL, false);
        row("after a diagonal step, later", QPoint(120, 120), 8UL, true);
        row("after a vertical step", QPoint(0, 120), 7UL, true);
        row("after a horizontal step", QPoint(120, 0), 7UL, true);
    }
    void theCompanionOfADiagonalStepIsNoStep()
    {
        QFETCH(QPoint, first);
        QFETCH(ulong, time);
        QFETCH(bool, isStep);
        Fixture f;
        turnWheel(f.view, QPoint(100, 100), first, 7);
        f.log.take();
        turnWheel(f.view, QPoint(100, 100), QPoint(), time);
        QCOMPARE(f.log.take(), isStep ? QString("centerChanged zoomChanged") : QString());
        QVERIFY(isNear(f.view.pixelSize(), QPointF(1.0, 1.0) / (isStep ? 1.0 : 1.15)));
        // Only one event is the companion.
        turnWheel(f.view, QPoint(100, 100), QPoint(), time);
        QCOMPARE(f.log.take(), QString("centerChanged zoomChanged"));
    }

    void thePointUnderTheMouseStaysThere()
    {
        Fixture f;
        const QPoint mouse(310, 70);
        QPointF told;
        f.view.centerChanged.connect([&](const QPointF& center) { told = center; });
        for (const int angle : {120, 120, 120, -120, 120}) {
            const QPointF before = f.view.mapToScene(mouse);
            const QPointF center = f.view.getCenter();
            turnWheel(f.view, mouse, QPoint(0, angle));
            const double pixel = f.view.pixelSize().x();
            QVERIFY(isNear(f.view.mapToScene(mouse), before, 2.0 * pixel));
            QVERIFY(!isNear(f.view.getCenter(), center, pixel));
            QCOMPARE(told, f.view.getCenter());
        }
    }

    void twoStepsUpAndDownComeBack()
    {
        Fixture f;
        turnWheel(f.view, QPoint(10, 10), QPoint(0, 120));
        turnWheel(f.view, QPoint(10, 10), QPoint(0, -120));
        QVERIFY(isNear(f.view.pixelSize(), QPointF(1.0, 1.0), 1e-12));
    }

    void theWheelDoesNothingWhileZoomingIsDisabled()
    {
        Fixture f;
        f.view.setZoomingEnabled(false);
        const int scrolled = f.view.verticalScrollBar()->value();
        turnWheel(f.view, QPoint(100, 100), QPoint(0, 120));
        QCOMPARE(f.log.take(), QString());
        QCOMPARE(f.view.transform(), QTransform());
        QCOMPARE(f.view.verticalScrollBar()->value(), scrolled);
        f.view.setZoomingEnabled(true);
        turnWheel(f.view, QPoint(100, 100), QPoint(0, 120));
        QCOMPARE(f.log.take(), QString("centerChanged zoomChanged"));
    }

    void aPanMovesTheSceneWithTheMouse()
    {
        Fixture f;
        enter(f.view);
        press(f.view, QPoint(200, 150), Qt::RightButton);
        QCOMPARE(f.view.cursor().shape(), Qt::ClosedHandCursor);
        QCOMPARE(f.log.take(), QString());
        const QPointF grabbed = f.view.mapToScene(200, 150);
        move(f.view, QPoint(230, 110), Qt::RightButton);
        QCOMPARE(f.log.take(), QString("centerChanged mouseMoved"));
        QCOMPARE(f.view.mapToScene(230, 110), grabbed);
        QCOMPARE(f.view.getCenter(), f.view.mapToScene(f.view.rect()).boundingRect().center());
        move(f.view, QPoint(100, 100), Qt::RightButton);
        QCOMPARE(f.view.mapToScene(100, 100), grabbed);
        f.log.take();
        release(f.view, QPoint(100, 100), Qt::RightButton);
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(f.log.take(), QString());
        move(f.view, QPoint(50, 50));
        QCOMPARE(f.log.take(), QString("mouseMoved"));
        QCOMPARE(f.view.mapToScene(100, 100), grabbed);
    }

    void theListenersSeeThePanDone()
    {
        Fixture f;
        enter(f.view);
        press(f.view, QPoint(200, 150), Qt::RightButton);
        const QPointF grabbed = f.view.mapToScene(200, 150);
        QPointF told;
        f.view.centerChanged.connect([&](const QPointF&) { told = f.view.mapToScene(210, 160); });
        move(f.view, QPoint(210, 160), Qt::RightButton);
        QCOMPARE(told, grabbed);
    }

    void aPanStopsAtTheEdgeOfTheScene()
    {
        Fixture f;
        enter(f.view);
        press(f.view, QPoint(0, 0), Qt::RightButton);
        for (int i = 0; i < 100; ++i) {
            move(f.view, QPoint(390, 290), Qt::RightButton);
            release(f.view, QPoint(390, 290), Qt::RightButton);
            press(f.view, QPoint(0, 0), Qt::RightButton);
        }
        QCOMPARE(f.view.horizontalScrollBar()->value(), f.view.horizontalScrollBar()->minimum());
        // It is read from the view, unlike the center of setCenter().
        QVERIFY(f.view.getCenter().x() > -5000.0);
    }

    // The scroll bars are as long as they can be.
    void aPanDoesNotOverflow()
    {
        Fixture f;
        f.view.setTransform(QTransform::fromScale(1e12, 1e12));
        f.view.horizontalScrollBar()->setValue(f.view.horizontalScrollBar()->maximum());
        enter(f.view);
        press(f.view, QPoint(300, 150), Qt::RightButton);
        move(f.view, QPoint(0, 150), Qt::RightButton);
        QCOMPARE(f.view.horizontalScrollBar()->value(), f.view.horizontalScrollBar()->maximum());
    }

    void onlyTheRightButtonPans_data()
    {
        columns<Qt::MouseButton>("button");
        row("left", Qt::LeftButton);
        row("middle", Qt::MiddleButton);
    }
    void onlyTheRightButtonPans()
    {
        QFETCH(Qt::MouseButton, button);
        Fixture f;
        f.view.setDragMode(QGraphicsView::NoDrag);
        enter(f.view);
        const QPointF corner = f.view.mapToScene(0, 0);
        press(f.view, QPoint(200, 150), button);
        move(f.view, QPoint(230, 110), button);
        release(f.view, QPoint(230, 110), button);
        QCOMPARE(f.view.mapToScene(0, 0), corner);
        QCOMPARE(f.log.take(), QString("mouseMoved mouseReleased"));
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
    }

    void theSceneGetsTheRightButtonWhilePanningIsDisabled()
    {
        struct Scene : public QGraphicsScene
        {
            void mousePressEvent(QGraphicsSceneMouseEvent*) override { ++presses; }
            int presses = 0;
        };
        Fixture f;
        Scene scene;
        f.view.setScene(&scene);
        enter(f.view);
        press(f.view, QPoint(20, 20), Qt::RightButton);
        release(f.view, QPoint(20, 20), Qt::RightButton);
        QCOMPARE(scene.presses, 0);
        QCOMPARE(f.log.take(), QString());
        f.view.setPanningEnabled(false);
        press(f.view, QPoint(20, 20), Qt::RightButton);
        release(f.view, QPoint(20, 20), Qt::RightButton);
        QCOMPARE(scene.presses, 1);
        QCOMPARE(f.log.take(), QString("mouseReleased"));
    }

    void disablingDoesNotEndAPan()
    {
        Fixture f;
        enter(f.view);
        press(f.view, QPoint(200, 150), Qt::RightButton);
        const QPointF grabbed = f.view.mapToScene(200, 150);
        f.view.setPanningEnabled(false);
        move(f.view, QPoint(220, 150), Qt::RightButton);
        QCOMPARE(f.view.mapToScene(220, 150), grabbed);
        f.log.take();
        release(f.view, QPoint(220, 150), Qt::RightButton);
        QCOMPARE(f.log.take(), QString());
        QCOMPARE(f.view.cursor().shape(), Qt::ArrowCursor);
    }

    void aLeftReleaseInAPanIsFiredAndThePanGoesOn()
    {
        Fixture f;
        enter(f.view);
        press(f.view, QPoint(200, 150), Qt::RightButton);
        release(f.view, QPoint(200, 150), Qt::LeftButton);
        QCOMPARE(f.log.take(), QString("mouseReleased"));
        move(f.view, QPoint(220, 150), Qt::RightButton);
        QCOMPARE(f.log.take(), QString("centerChanged mouseMoved"));
    }

    void aRightReleaseWithoutAPanIsFired()
    {
        Fixture f;
        release(f.view, QPoint(200, 150), Qt::RightButton);
        QCOMPARE(f.log.take(), QString("mouseReleased"));
    }

    // The first step after the mouse has come back covers the whole way.
    void aPanRestsWhileTheMouseIsOutside()
    {
        Fixture f;
        enter(f.view);
        press(f.view, QPoint(200, 150), Qt::RightButton);
        const QPointF grabbed = f.view.mapToScene(200, 150);
        leave(f.view);
        move(f.view, QPoint(260, 150), Qt::RightButton);
        QCOMPARE(f.log.take(), QString("mouseMoved"));
        QCOMPARE(f.view.mapToScene(200, 150), grabbed);
        enter(f.view);
        move(f.view, QPoint(280, 150), Qt::RightButton);
        QCOMPARE(f.log.take(), QString("centerChanged mouseMoved"));
        QCOMPARE(f.view.mapToScene(280, 150), grabbed);
    }

    void aMoveBeforeTheFirstEnterDoesNotPan()
    {
        Fixture f;
        leave(f.view);
        OpenView fresh;
        SignalLog log(fresh);
        press(fresh, QPoint(20, 15), Qt::RightButton);
        move(fresh, QPoint(10, 10), Qt::RightButton);
        QCOMPARE(log.take(), QString("mouseMoved"));
        // The saved cursor is the one that the view has had.
        release(fresh, QPoint(10, 10), Qt::RightButton);
        QCOMPARE(fresh.cursor().shape(), Qt::ArrowCursor);
    }

    void theCursorFollowsTheMouse_data()
    {
        columns<QString, Qt::CursorShape>("events", "shape");
        row("in the view it is kept", "enter", Qt::CrossCursor);
        row("after the view it comes back", "enter leave", Qt::CrossCursor);
        row("the view's own cursor hides it", "own enter", Qt::BlankCursor);
        row("switched on later it stays till the next enter", "enter own", Qt::CrossCursor);
        row("at the next enter it is hidden", "enter own leave enter", Qt::BlankCursor);
        row("outside it is back", "own enter leave", Qt::CrossCursor);
        row("in a pan", "enter press", Qt::ClosedHandCursor);
        row("after a pan", "enter press release", Qt::CrossCursor);
        row("after a pan with the view's own cursor", "own enter press release", Qt::BlankCursor);
        row("after a pan in which that was switched on", "enter press own release",
            Qt::BlankCursor);
        row("after a pan in which that was switched off", "own enter press off release",
            Qt::CrossCursor);
        row("out of the view in a pan", "enter press leave", Qt::CrossCursor);
        // What was saved on entering is the closed hand.
        row("after a pan in which the mouse came in", "press enter release", Qt::ClosedHandCursor);
        row("and after it has left", "press enter release leave", Qt::ClosedHandCursor);
    }
    void theCursorFollowsTheMouse()
    {
        QFETCH(QString, events);
        QFETCH(Qt::CursorShape, shape);
        Fixture f;
        leave(f.view);
        f.view.setCursor(Qt::CrossCursor);
        const std::map<QString, std::function<void()>> actions = {
            {"enter", [&] { enter(f.view); }},
            {"leave", [&] { leave(f.view); }},
            {"press", [&] { press(f.view, QPoint(20, 20), Qt::RightButton); }},
            {"release", [&] { release(f.view, QPoint(20, 20), Qt::RightButton); }},
            {"own", [&] { f.view.setDrawCustomCursor(true); }},
            {"off", [&] { f.view.setDrawCustomCursor(false); }},
        };
        for (const QString& event : events.split(' '))
            actions.at(event)();
        QCOMPARE(f.view.cursor().shape(), shape);
    }

    void aResizeKeepsTheCenterIfZoomingIsEnabled_data()
    {
        columns<bool, bool, QString>("zooming", "panning", "signalsFired");
        row("enabled", true, true, "centerChanged resized");
        row("enabled, panning not", true, false, "centerChanged resized");
        row("disabled", false, true, "resized");
    }
    void aResizeKeepsTheCenterIfZoomingIsEnabled()
    {
        QFETCH(bool, zooming);
        QFETCH(bool, panning);
        QFETCH(QString, signalsFired);
        Fixture f;
        f.view.setZoomingEnabled(zooming);
        f.view.setPanningEnabled(panning);
        const QPointF corner = f.view.mapToScene(0, 0);
        f.view.resize(600, 500);
        QCOMPARE(f.log.take(), signalsFired);
        QCOMPARE(f.view.getCenter(), QPointF(50.0, 0.0));
        const QPointF middle = f.view.mapToScene(f.view.viewport()->rect().center());
        QCOMPARE(isNear(middle, f.view.getCenter(), 2.0), zooming);
        QCOMPARE(f.view.mapToScene(0, 0) == corner, !zooming);
    }

    void eventsWithoutASceneDoNoHarm_data()
    {
        columns<bool>("custom");
        row("with cross hairs", false);
        row("with the view's own cursor, too", true);
    }
    void eventsWithoutASceneDoNoHarm()
    {
        QFETCH(bool, custom);
        Fixture f;
        f.view.setDrawCustomCursor(custom);
        f.view.setScene(nullptr);
        f.log.take();
        enter(f.view);
        move(f.view, QPoint(10, 10));
        press(f.view, QPoint(10, 10), Qt::RightButton);
        move(f.view, QPoint(20, 20), Qt::RightButton);
        release(f.view, QPoint(20, 20), Qt::RightButton);
        press(f.view, QPoint(10, 10), Qt::LeftButton);
        release(f.view, QPoint(20, 20), Qt::LeftButton);
        turnWheel(f.view, QPoint(20, 20), QPoint(0, 120));
        f.view.resize(300, 300);
        f.view.setCenter(QPointF(1.0, 1.0), true);
        OpenView other;
        f.view.acquireViewSettingsFrom(&other, 15);
        leave(f.view);
        f.view.grab();
        QCOMPARE(f.log.take(),
            QString("mouseMoved centerChanged mouseMoved mouseReleased centerChanged zoomChanged "
                    "centerChanged resized centerChanged"));
    }

    void aSlotThatFiresItsOwnSignalWithoutEndIsStopped()
    {
        Fixture f;
        int calls = 0;
        f.view.centerChanged.connect([&](const QPointF& center) {
            ++calls;
            f.view.setCenter(center + QPointF(1.0, 0.0), true);
            f.view.setCenter(center - QPointF(1.0, 0.0), true);
        });
        expectAssert("depth <= maxDepth", {}, "A slot makes its own signal fire without end.");
        f.view.setCenter(QPointF(), true);
        QCOMPARE(calls, 100);
        // Afterwards all is as before.
        expectAssert("depth <= maxDepth", {}, "A slot makes its own signal fire without end.");
        f.view.setCenter(QPointF(), true);
        QCOMPARE(calls, 200);
    }

    void aSlotMaySetTheCenterAgain()
    {
        Fixture f;
        f.view.centerChanged.connect([&](const QPointF& center) {
            if (center.x() > 0.0)
                f.view.setCenter(QPointF(0.0, center.y()), true);
        });
        f.view.setCenter(QPointF(10.0, 5.0), true);
        QCOMPARE(f.view.getCenter(), QPointF(0.0, 5.0));
        QCOMPARE(f.log.take(), QString("centerChanged centerChanged"));
    }
};

VRN_TEST(TestEditorView)
#include "tst_editor_view.moc"
