#include <vrn/qt/grip_item.h>

#include <QGraphicsScene>
#include <QTimer>

#include "editor_view_fixture.h"
#include "support/keystroke_time.h"
#include "support/life.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::test;
using namespace vrn::qt;
using namespace vrn::qt::graphics;

namespace {

// Connects a slot to the signal called `name`.
void connectTo(EditorView& view, const QString& name, const std::function<void()>& slot)
{
    if (name == "mouseReleased")
        view.mouseReleased.connect([slot](QMouseEvent*) { slot(); });
    else if (name == "mouseMoved")
        view.mouseMoved.connect([slot](QMouseEvent*) { slot(); });
    else if (name == "centerChanged")
        view.centerChanged.connect([slot](const QPointF&) { slot(); });
    else if (name == "zoomChanged")
        view.zoomChanged.connect(slot);
    else if (name == "resized")
        view.resized.connect(slot);
    else
        qFatal("no such signal");
}

// Does what fires signals, as a user does it: by events of the window system.
void perform(QWidget& window, OpenView& view, const QString& action)
{
    const QPointer<QWindow> handle = window.windowHandle();
    const QPoint place = view.viewport()->mapTo(&window, QPoint(50, 50));
    const QPointer<OpenView> alive(&view);
    if (action == "setCenter") {
        view.setCenter(QPointF(1.0, 2.0), true);
    } else if (action == "wheel") {
        turnWheel(view, QPoint(50, 50), QPoint(0, 120));
    } else if (action == "diagonal wheel") {
        turnWheel(view, QPoint(50, 50), QPoint(120, 120), 5);
        if (alive)
            turnWheel(view, QPoint(50, 50), QPoint(), 5);
    } else if (action == "resize") {
        view.resize(view.size() + QSize(20, 20));
    } else if (action == "move") {
        QTest::mouseMove(handle, place + QPoint(3, 3));
        if (handle)
            QTest::mouseMove(handle, place);
    } else if (action == "click") {
        QTest::mouseClick(handle, Qt::LeftButton, Qt::NoModifier, place);
    } else if (action == "pan") {
        enter(view);
        QTest::mouseMove(handle, place);
        if (handle)
            QTest::mousePress(handle, Qt::RightButton, Qt::NoModifier, place);
        if (alive)
            move(view, QPoint(70, 70), Qt::RightButton);
    }
    QCoreApplication::processEvents();
}

} // namespace

// Views, scenes and items that go while something of them is running.
class TestEditorViewLifetime : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aSlotMayDestroyTheView_data()
    {
        columns<QString, QString, QString, bool>("signal", "action", "deed", "isWindow");
        const std::vector<std::pair<const char*, const char*>> signalsAndActions = {
            {"mouseReleased", "click"}, {"mouseMoved", "move"}, {"mouseMoved", "pan"},
            {"centerChanged", "setCenter"}, {"centerChanged", "wheel"}, {"centerChanged", "pan"},
            {"zoomChanged", "wheel"}, {"zoomChanged", "diagonal wheel"},
            {"centerChanged", "resize"}, {"resized", "resize"}};
        for (const auto& [signal, action] : signalsAndActions) {
            for (const char* deed : {"delete", "deleteLater", "delete the window",
                     "delete the scene", "set another scene", "set no scene"}) {
                for (const bool isWindow : {false, true}) {
                    // Qt goes on with the view while it resizes it.
                    if (QString(action) == "resize" && QString(deed).startsWith("delete")
                        && QString(deed) != "deleteLater" && QString(deed) != "delete the scene")
                        continue;
                    QTest::addRow("%s in %s of %s, %s", deed, signal, action,
                        isWindow ? "a window" : "part of a window")
                        << signal << action << deed << isWindow;
                }
            }
        }
    }
    void aSlotMayDestroyTheView()
    {
        QFETCH(QString, signal);
        QFETCH(QString, action);
        QFETCH(QString, deed);
        QFETCH(bool, isWindow);
        QPointer<QWidget> form = isWindow ? nullptr : new QWidget;
        QPointer<OpenView> view = new OpenView;
        QGraphicsScene another;
        if (form) {
            form->resize(400, 400);
            view->setParent(form);
        }
        QWidget* window = form ? form.data() : view.data();
        view->setDrawCustomCursor(true);
        view->resize(300, 300);
        view->scene()->addItem(new ed2d::GripItem);
        window->show();
        QVERIFY(QTest::qWaitForWindowExposed(window));
        // The mouse is in the view.
        QTest::mouseMove(window->windowHandle(), QPoint(100, 100));
        QCoreApplication::processEvents();

        int calls = 0;
        bool isHeld = false;
        const QPointer<QGraphicsScene> scene = view->scene();
        connectTo(*view, signal, [&, life = lifeIn(isHeld)] {
            if (++calls > 1)
                return;
            if (deed == "delete")
                delete view;
            else if (deed == "deleteLater")
                view->deleteLater();
            else if (deed == "delete the window")
                delete (form ? form.data() : static_cast<QWidget*>(view.data()));
            else if (deed == "delete the scene")
                delete scene;
            else
                view->setScene(deed == "set no scene" ? nullptr : &another);
            // The function is still there.
            QVERIFY(isHeld);
        });
        int later = 0;
        connectTo(*view, signal, [&] { ++later; });
        perform(*window, *view, action);
        QVERIFY(calls > 0);
        QVERIFY(later > 0);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCOMPARE(view.isNull(), deed.startsWith("delete") && deed != "delete the scene");
        if (view) {
            view->setScene(nullptr);
            delete view;
        }
        delete form;
        QVERIFY(!isHeld);
    }

    // What a signal does after its last slot, when most of its slots have gone.
    void aSlotMayDestroyTheViewAndDisconnectTheOthers()
    {
        auto* view = new OpenView;
        std::vector<boost::signals2::scoped_connection> connections;
        view->centerChanged.connect([&](const QPointF&) {
            connections.clear();
            delete view;
        });
        for (int i = 0; i < 10; ++i)
            connections.emplace_back(view->centerChanged.connect([](const QPointF&) {}));
        view->setCenter(QPointF(1.0, 1.0), true);
    }

    void theOtherSignalsOfAnEventAreNotFiredAfterTheEnd_data()
    {
        columns<QString, QString>("first", "action");
        row("no zoomChanged after centerChanged", "centerChanged", "wheel");
        row("no mouseMoved after centerChanged", "centerChanged", "pan");
    }
    void theOtherSignalsOfAnEventAreNotFiredAfterTheEnd()
    {
        QFETCH(QString, first);
        QFETCH(QString, action);
        auto* view = new OpenView;
        view->resize(300, 300);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view));
        enter(*view);
        connectTo(*view, first, [=] { delete view; });
        SignalLog log(*view);
        if (action == "wheel") {
            turnWheel(*view, QPoint(50, 50), QPoint(0, 120));
        } else {
            press(*view, QPoint(50, 50), Qt::RightButton);
            move(*view, QPoint(70, 70), Qt::RightButton);
        }
        QCOMPARE(log.take(), first);
    }

    // The slots after the one that destroyed the view get the center all the same.
    void theCenterOutlivesTheView()
    {
        auto* view = new OpenView;
        QPointF told;
        view->centerChanged.connect([=](const QPointF&) { delete view; });
        view->centerChanged.connect([&](const QPointF& center) { told = center; });
        view->setCenter(QPointF(12.0, 34.0), true);
        QCOMPARE(told, QPointF(12.0, 34.0));
    }

    void aSlotMayThrow()
    {
        OpenView view;
        view.centerChanged.connect([](const QPointF&) { throw std::runtime_error("no"); });
        for (int i = 0; i < 300; ++i)
            QVERIFY_EXCEPTION_THROWN(view.setCenter(QPointF(), true), std::runtime_error);
        QCOMPARE(view.getCenter(), QPointF());
    }

    void viewSceneAndItemsGoInAnyOrder()
    {
        QList<int> order = {0, 1, 2, 3};
        do {
            auto view = std::make_unique<OpenView>();
            auto second = std::make_unique<OpenView>();
            auto scene = std::make_unique<QGraphicsScene>();
            auto* item = new ed2d::GripItem;
            scene->addItem(item);
            for (OpenView* each : {view.get(), second.get()}) {
                each->setScene(scene.get());
                each->setDrawCustomCursor(true);
                each->show();
            }
            QCoreApplication::processEvents();
            for (const int which : order) {
                if (which == 0)
                    view.reset();
                else if (which == 1)
                    second.reset();
                else if (which == 2)
                    scene.reset();
                else if (scene)
                    delete item;
                for (OpenView* each : {view.get(), second.get()}) {
                    if (!each)
                        continue;
                    enter(*each);
                    move(*each, QPoint(20, 20));
                    turnWheel(*each, QPoint(20, 20), QPoint(0, 120));
                }
                QCoreApplication::processEvents();
            }
        } while (std::next_permutation(order.begin(), order.end()));
    }

    void aSlotOfAnItemMayDestroyLater_data()
    {
        columns<QString>("what");
        row("the item", "item");
        row("the scene", "scene");
        row("the view", "view");
        row("another item, at once", "other");
    }
    void aSlotOfAnItemMayDestroyLater()
    {
        QFETCH(QString, what);
        auto view = std::make_unique<OpenView>();
        view->resize(300, 300);
        auto* grip = new ed2d::GripItem;
        auto* other = new ed2d::GripItem;
        view->scene()->addItem(grip);
        view->scene()->addItem(other);
        other->setPos(50.0, 50.0);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        bool isDone = false;
        grip->positionChanged.connect([&] {
            if (isDone)
                return;
            isDone = true;
            if (what == "other")
                delete other;
            else if (what == "item")
                QTimer::singleShot(0, view.get(), [=] { delete grip; });
            else if (what == "scene")
                view->scene()->deleteLater();
            else
                view.release()->deleteLater();
        });
        OpenView* shown = view.get();
        const QPointer<OpenView> alive(shown);
        const QPoint start = shown->mapFromScene(grip->pos());
        press(*shown, start, Qt::LeftButton);
        move(*shown, start + QPoint(20, 20), Qt::LeftButton);
        QVERIFY(isDone);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        if (alive) {
            move(*shown, start + QPoint(30, 30), Qt::LeftButton);
            release(*shown, start + QPoint(30, 30), Qt::LeftButton);
        }
        QCOMPARE(alive.isNull(), what == "view");
    }

    void aLongTitleTakesNoTime_data()
    {
        columns<QChar>("character");
        row("from left to right", QChar('x'));
        row("from right to left", QChar(0x5d0));
        row("without a width", QChar(0x200b));
        row("a half of a pair", QChar(0xd83d));
    }
    void aLongTitleTakesNoTime()
    {
        QFETCH(QChar, character);
        OpenView view;
        view.resize(1200, 800);
        view.setTitle(QString(1 << 20, character));
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        verifyTakesAtMost(timeLimitMs(), "a repaint", [&] { view.viewport()->repaint(); });
    }
};

VRN_TEST(TestEditorViewLifetime)
#include "tst_editor_view_lifetime.moc"
