#include <vrn/qt/grip_item.h>

#include <QBackingStore>
#include <QCursor>
#include <QGraphicsRectItem>
#include <QLabel>
#include <QPainter>

#include "editor_view_fixture.h"
#include "support/random_seed.h"
#include "support/random_sequence.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cmath>

using namespace vrn::test;
using namespace vrn::qt;

namespace {

void settle()
{
    for (int i = 0; i < 4; ++i)
        QCoreApplication::processEvents();
}

// Drops what the platform says of the mouse: without a screen it goes by the wrong scale.
class NoMouse : public QObject
{
public:
    using QObject::QObject;
    bool eventFilter(QObject*, QEvent* event) override
    {
        return event->type() == QEvent::MouseMove || event->type() == QEvent::Enter
            || event->type() == QEvent::Leave;
    }
};

// A window with a view at an odd place, so that at most scales its corner is between two
// pixels of the screen.
template <typename View>
struct BasicWindow
{
    BasicWindow()
    {
        form.resize(330, 260);
        view.setParent(&form);
        view.setGeometry(13, 9, 300, 230);
        view.setAutoFillBackground(true); // As in a QScrollArea, which moves what is painted.
        view.scene()->setSceneRect(-2000.0, -2000.0, 4000.0, 4000.0);
        for (int i = 0; i < 25; ++i) {
            auto* rect = new QGraphicsRectItem(0.0, 0.0, 33.3, 21.7);
            rect->setBrush(QColor::fromHsv(i * 14, 200, 220, 160));
            rect->setPos(i % 5 * 57.3 - 80.0, i / 5 * 45.1 - 110.0);
            rect->setRotation(i * 7.0);
            view.scene()->addItem(rect);
        }
        for (int i = 0; i < 4; ++i) {
            grips.append(new ed2d::GripItem);
            view.scene()->addItem(grips.last());
            grips.last()->setPos(i * 40.0, 10.0 - i * 20.0);
        }
        view.setRulers(true, true);
        view.setTitle("Plan of the ground floor");
        form.show();
        (void)QTest::qWaitForWindowExposed(&form);
        form.windowHandle()->installEventFilter(new NoMouse(&form));
        settle();
    }

    // In coordinates of the view.
    void putMouse(const QPoint& position)
    {
        QCursor::setPos(view.mapToGlobal(position));
        const bool wasInside = std::exchange(isInside, view.rect().contains(position));
        if (isInside && !wasInside)
            enter(view);
        if (isInside)
            move(view, position - view.viewport()->pos());
        else if (wasInside)
            leave(view);
        else // The view asks for no repaint when the mouse moves outside.
            view.viewport()->update();
        settle();
    }

    // What is on the screen.
    QImage shown() const
    {
        return static_cast<const QImage*>(form.backingStore()->paintDevice())->copy();
    }

    // What a paint shows that knows nothing of a layer: one into another picture.
    QImage painted()
    {
        QImage image = shown();
        image.fill(Qt::red);
        form.render(&image);
        return image;
    }

    // The pixels that belong to the viewport alone.
    QRect pixels(const QImage& image) const
    {
        const QPoint corner = view.viewport()->mapTo(&form, QPoint());
        const double scale = image.devicePixelRatio();
        const QRectF place(QPointF(corner) * scale, QSizeF(view.viewport()->size()) * scale);
        return place.toAlignedRect().adjusted(1, 1, -1, -1) & image.rect();
    }

    // How far a colour may be off is for what is painted in parts without a layer: where a
    // gradient is cut off, Qt rounds it in another way, and then again what it blends with it.
    QString difference(int tolerance = 0)
    {
        const QImage onScreen = shown();
        const QImage expected = painted();
        const QRect rect = pixels(onScreen);
        if (onScreen.copy(rect) == expected.copy(rect))
            return {};
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            for (int x = rect.left(); x <= rect.right(); ++x) {
                const QRgb a = onScreen.pixel(x, y);
                const QRgb b = expected.pixel(x, y);
                if (std::abs(qRed(a) - qRed(b)) > tolerance
                    || std::abs(qGreen(a) - qGreen(b)) > tolerance
                    || std::abs(qBlue(a) - qBlue(b)) > tolerance) {
                    return QStringLiteral("pixel %1, %2 shows %3 instead of %4")
                        .arg(x - rect.left())
                        .arg(y - rect.top())
                        .arg(onScreen.pixelColor(x, y).name(), expected.pixelColor(x, y).name());
                }
            }
        }
        return {};
    }

    QWidget form;
    View view;
    QList<ed2d::GripItem*> grips;
    bool isInside = false;
};

using Window = BasicWindow<OpenView>;

class ViewAndPainting : public Subject
{
public:
    static QStringList actions()
    {
        return {"move", "move", "move", "move", "move out", "event elsewhere", "wheel", "pan",
            "resize", "move an item", "select an item", "repaint the scene", "set the title",
            "set the rulers", "set cross hairs", "set the cursor", "link", "repaint a part",
            "cover a part", "rubber band", "share the scene", "switch the mode",
            "scroll in the window, repainting a part", "repaint while the mouse moves"};
    }

    explicit ViewAndPainting(bool hasLayer)
    {
        m_window.view.setOptimizationFlag(QGraphicsView::DontSavePainterState, !hasLayer);
        m_other.setGeometry(0, 0, 150, 120);
        m_other.setCenter(QPointF(30.0, 20.0), false);
        m_window.view.linkViewSettingsTo(&m_other, 15);
        m_cover.setGeometry(40, 30, 90, 70);
        m_cover.setAutoFillBackground(true);
    }

    QString perform(int action, unsigned argument) override
    {
        const QString name = actions().at(action);
        OpenView& view = m_window.view;
        const int a = int(argument % 320);
        const int b = int(argument / 320 % 250);
        const QPoint place(a - 10, b - 10);
        ed2d::GripItem* grip = m_window.grips.at(int(argument % 4));
        if (name == "move") {
            m_window.putMouse(place);
        } else if (name == "move out") {
            m_window.putMouse(QPoint(a - 400, 700));
        } else if (name == "event elsewhere") {
            move(view, place);
        } else if (name == "wheel") {
            turnWheel(view, place, QPoint(0, argument & 1024 ? 120 : -120));
        } else if (name == "pan") {
            m_window.putMouse(QPoint(100, 100));
            press(view, QPoint(100, 100), Qt::RightButton);
            move(view, place, Qt::RightButton);
            release(view, place, Qt::RightButton);
        } else if (name == "resize") {
            view.resize(200 + a / 4, 150 + b / 4);
        } else if (name == "move an item") {
            grip->setPos(a * 0.37 - 60.0, b * 0.71 - 90.0);
        } else if (name == "select an item") {
            grip->setSelected(!grip->isSelected());
        } else if (name == "repaint the scene") {
            view.scene()->update();
        } else if (name == "set the title") {
            view.setTitle(QString(a / 20, 'x'));
            showSettings(place);
        } else if (name == "set the rulers") {
            view.setRulers(argument & 1, argument & 2);
            showSettings(place);
        } else if (name == "set cross hairs") {
            m_crossHairs = argument & 1;
            view.setDrawCrossHairs(m_crossHairs);
            view.viewport()->update();
        } else if (name == "set the cursor") {
            m_cursor = argument & 1;
            view.setDrawCustomCursor(m_cursor);
            view.viewport()->update();
        } else if (name == "link") {
            turnWheel(m_other, place / 2, QPoint(0, argument & 1024 ? 120 : -120));
        } else if (name == "repaint a part") {
            view.viewport()->update(QRect(place, QSize(a / 3, b / 3)));
        } else if (name == "cover a part") {
            m_cover.setParent(m_cover.parent() ? nullptr : view.viewport());
            m_cover.setVisible(m_cover.parent());
            settle();
            m_cover.hide();
        } else if (name == "rubber band") {
            press(view, QPoint(20, 20), Qt::LeftButton);
            move(view, place, Qt::LeftButton);
            settle();
            m_window.putMouse(place + QPoint(5, 5));
            if (argument & 1)
                release(view, place, Qt::LeftButton);
        } else if (name == "share the scene") {
            m_other.setScene(argument & 1 ? view.scene() : m_otherScene);
            move(view, place);
        } else if (name == "switch the mode") {
            view.setViewportUpdateMode(QGraphicsView::SmartViewportUpdate);
            changeMeanwhile(*grip, argument);
            view.setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
            m_window.putMouse(place);
        } else if (name.startsWith("scroll")) {
            // By whole pixels of the screen, so that Qt moves what it has painted.
            m_window.view.move(1 + 4 * (a % 4), 1 + 4 * (b % 4));
            settle();
            m_window.putMouse(place);
        } else {
            move(view, place);
            view.scene()->update();
            view.viewport()->repaint(QRect(place, QSize(30, 30)));
        }
        settle();
        const bool isInParts = name.contains("part") || name.contains("while")
            || name.contains("mode");
        // What Qt moves was painted for another place, where edges are smoothed and rounded in
        // another way. A view without a layer shows the same.
        const int tolerance = name.startsWith("scroll") ? 8 : isInParts ? 2 : 0;
        const QString text = m_window.difference(tolerance);
        if (isInParts)
            view.viewport()->repaint();
        return text.isEmpty() ? text : name + ": " + text;
    }

private:
    // The layer cannot be kept up to date.
    static void changeMeanwhile(ed2d::GripItem& grip, unsigned argument)
    {
        settle();
        grip.moveBy(argument & 1 ? 15.0 : -15.0, argument & 2 ? 15.0 : -15.0);
        settle();
    }

    // The next move shows them, if it paints.
    void showSettings(const QPoint& place)
    {
        move(m_window.view, place);
        if (!m_crossHairs && !m_cursor)
            m_window.view.viewport()->update();
    }

    Window m_window;
    bool m_crossHairs = true;
    bool m_cursor = false;
    QLabel m_cover;
    OpenView m_other;
    QGraphicsScene* m_otherScene = m_other.scene();
};

// In 600 random steps.
QString differenceOf(unsigned seed, bool hasLayer)
{
    return findDifference(
        ViewAndPainting::actions(), [=] { return std::make_unique<ViewAndPainting>(hasLayer); },
        seed, 600);
}

} // namespace

// Moves of the mouse that repaint strips only. It runs at several scales of the screen.
class TestEditorViewLayer : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        QCursor::setPos(2000, 2000);
    }

    void whatIsShownIsWhatAFullRepaintShows()
    {
        unsigned seed = randomSeed();
        QString difference = differenceOf(seed, true);
        // Where Qt leaves out what only touches the part that it paints, a view without a layer
        // differs in the very same way.
        const auto pixel = [](const QString& text) { return text.section('\n', 0, 0); };
        while (!difference.isEmpty() && pixel(difference) == pixel(differenceOf(seed, false)))
            difference = differenceOf(++seed, true);
        QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }

    void aMoveDoesNotPaintTheScene_data()
    {
        columns<bool, bool>("crossHairs", "cursor");
        row("with cross hairs", true, false);
        row("with the cursor", false, true);
        row("with both", true, true);
    }
    void aMoveDoesNotPaintTheScene()
    {
        QFETCH(bool, crossHairs);
        QFETCH(bool, cursor);
        Window window;
        window.view.setDrawCrossHairs(crossHairs);
        window.view.setDrawCustomCursor(cursor);
        window.putMouse(QPoint(50, 60));
        window.putMouse(QPoint(55, 60));
        for (int x = 60; x < 200; x += 7) {
            window.view.paints = 0;
            window.view.wholePaints = 0;
            window.putMouse(QPoint(x, 80 + x / 3));
            QCOMPARE(window.view.paints, 1);
            QCOMPARE(window.view.wholePaints, 0);
            QCOMPARE(window.difference(), QString());
        }
    }

    void everyMovePaints_data()
    {
        columns<QString>("event");
        row("to another place", "move");
        row("at the same place", "stay");
        row("with the mouse elsewhere", "outside");
    }
    void everyMovePaints()
    {
        QFETCH(QString, event);
        Window window;
        window.putMouse(event == "outside" ? QPoint(-500, 900) : QPoint(50, 60));
        for (int i = 0; i < 3; ++i) {
            window.view.paints = 0;
            if (event == "move")
                window.putMouse(QPoint(80, 90 + 5 * i));
            else
                move(window.view, QPoint(50, 60));
            settle();
            QCOMPARE(window.view.paints, 1);
        }
    }

    void withoutCrossHairsAndCursorAMovePaintsNothing()
    {
        Window window;
        window.view.setDrawCrossHairs(false);
        window.putMouse(QPoint(50, 60));
        window.view.paints = 0;
        window.putMouse(QPoint(90, 60));
        QCOMPARE(window.view.paints, 0);
    }

    // What a full repaint on each move did for others is done for them as before.
    void othersHearOfEachMove_data()
    {
        columns<QString>("who");
        row("a slot of the scene's changed()", "slot");
        row("another view", "view");
    }
    void othersHearOfEachMove()
    {
        QFETCH(QString, who);
        Window window;
        OpenView other;
        if (who == "view") {
            other.setScene(window.view.scene());
            other.show();
            (void)QTest::qWaitForWindowExposed(&other);
        }
        QList<QRectF> told;
        if (who == "slot") {
            connect(window.view.scene(), &QGraphicsScene::changed, &other,
                [&](const QList<QRectF>& rects) { told += rects; });
        }
        window.putMouse(QPoint(50, 60));
        for (int i = 0; i < 5; ++i) {
            settle();
            told.clear();
            other.wholePaints = 0;
            window.view.wholePaints = 0;
            window.putMouse(QPoint(70 + i, 60));
            if (who == "view")
                QCOMPARE(other.wholePaints, 1);
            else
                QCOMPARE(told, QList<QRectF>{window.view.scene()->sceneRect()});
            QCOMPARE(window.view.wholePaints, 1);
            QCOMPARE(window.difference(), QString());
        }
    }

    void thereIsNoLayer_data()
    {
        columns<QString>("why");
        row("if scene changes are painted in parts", "mode");
        row("if items may leave the painter as they like", "flags");
        row("if the layer was invalidated", "invalidated");
        row("after the title was set", "title");
        row("after the rulers were set", "rulers");
    }
    void thereIsNoLayer()
    {
        QFETCH(QString, why);
        Window window;
        window.putMouse(QPoint(50, 60));
        if (why == "mode")
            window.view.setViewportUpdateMode(QGraphicsView::SmartViewportUpdate);
        else if (why == "flags")
            window.view.setOptimizationFlag(QGraphicsView::DontSavePainterState);
        else if (why == "invalidated")
            window.view.invalidateLayer();
        else if (why == "title")
            window.view.setTitle("other");
        else
            window.view.setRulers(false, false);
        window.view.wholePaints = 0;
        window.putMouse(QPoint(100, 60));
        QVERIFY(window.view.wholePaints >= 1);
        QCOMPARE(window.difference(), QString());
    }

    void noStaleLayerIsShown_data()
    {
        columns<QString>("meanwhile");
        row("after scene changes were painted in parts", "mode");
        row("after items could leave the painter as they liked", "flags");
    }
    void noStaleLayerIsShown()
    {
        QFETCH(QString, meanwhile);
        Window window;
        window.putMouse(QPoint(50, 60));
        const auto change = [&](bool isOff) {
            if (meanwhile == "mode") {
                window.view.setViewportUpdateMode(
                    isOff ? QGraphicsView::SmartViewportUpdate : QGraphicsView::FullViewportUpdate);
            } else {
                window.view.setOptimizationFlag(QGraphicsView::DontSavePainterState, isOff);
            }
        };
        change(true);
        window.grips[0]->setPos(20.0, 30.0);
        settle();
        change(false);
        window.putMouse(window.view.mapFromScene(QPointF(0.0, 10.0)));
        QCOMPARE(window.difference(), QString());
        window.putMouse(window.view.mapFromScene(QPointF(20.0, 30.0)));
        QCOMPARE(window.difference(), QString());
    }

    void theLayerIsTakenAnewAtAnotherPlaceInTheWindow()
    {
        Window window;
        window.putMouse(QPoint(50, 60));
        window.putMouse(QPoint(55, 60));
        window.view.paints = 0;
        window.view.move(1, 5);
        settle();
        // Qt has moved what was painted.
        QCOMPARE(window.view.paints, 0);
        window.putMouse(QPoint(60, 60));
        window.putMouse(QPoint(65, 60));
        window.view.wholePaints = 0;
        for (int i = 0; i < 5; ++i) {
            window.putMouse(QPoint(70 + 7 * i, 80));
            QCOMPARE(window.view.wholePaints, 0);
        }
        QCOMPARE(window.difference(), QString());
    }

    // What a derived view paints over all of it stays where strips are painted.
    void aDerivedViewMayPaintOverTheView()
    {
        struct Overlay : public OpenView
        {
            void paintEvent(QPaintEvent* event) override
            {
                OpenView::paintEvent(event);
                QPainter painter(viewport());
                painter.fillRect(QRect(40, 40, 100, 100), QColor(255, 0, 0, 100));
                regions.append(event->region());
            }
            QVector<QRegion> regions;
        };
        BasicWindow<Overlay> window;
        window.putMouse(QPoint(50, 60));
        window.putMouse(QPoint(55, 60));
        for (int i = 0; i < 10; ++i) {
            window.view.wholePaints = 0;
            window.view.regions.clear();
            window.putMouse(QPoint(60 + 9 * i, 70 + 8 * i));
            QCOMPARE(window.view.wholePaints, 0);
            QCOMPARE(window.view.regions.size(), 1);
            QVERIFY(!window.view.regions.first().contains(QPoint(5, 5)));
            QCOMPARE(window.difference(), QString());
        }
    }

    void invalidateLayerShowsWhatTheSceneDoesNotKnow()
    {
        struct Item : public QGraphicsRectItem
        {
            using QGraphicsRectItem::QGraphicsRectItem;
            void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) override
            {
                painter->fillRect(rect(), colour);
            }
            QColor colour = Qt::green;
        };
        Window window;
        auto* item = new Item(-20.0, -20.0, 60.0, 60.0);
        window.view.scene()->addItem(item);
        window.putMouse(QPoint(50, 60));
        item->colour = Qt::magenta;
        window.putMouse(QPoint(90, 70));
        QVERIFY(!window.difference().isEmpty());
        window.view.invalidateLayer();
        settle();
        QCOMPARE(window.difference(), QString());
        window.putMouse(QPoint(120, 70));
        QCOMPARE(window.difference(), QString());
    }

    // A slot of the move that changes the scene: its repaint comes after the strips.
    void aSceneChangeInAMoveIsShown()
    {
        Window window;
        window.putMouse(QPoint(50, 60));
        for (const bool isUpdate : {true, false}) {
            const boost::signals2::scoped_connection connection = window.view.mouseMoved.connect(
                [&](QMouseEvent*) {
                    window.grips[0]->moveBy(3.0, 2.0);
                    if (isUpdate)
                        window.view.scene()->update();
                    window.view.viewport()->repaint(0, 0, 20, 20);
                });
            for (int i = 0; i < 5; ++i) {
                window.putMouse(QPoint(70 + 11 * i, 90));
                QCOMPARE(window.difference(), QString());
            }
        }
    }

    void theMouseMayMoveBeforeThePaint()
    {
        Window window;
        window.putMouse(QPoint(50, 60));
        move(window.view, QPoint(50, 60));
        // Without an event; some part is painted.
        QCursor::setPos(window.view.mapToGlobal(QPoint(150, 160)));
        window.view.viewport()->repaint(10, 10, 20, 20);
        settle();
        QCOMPARE(window.difference(), QString());
    }

    // Printing must not take over the layer, nor what is noted of the screen.
    void aPictureOfTheViewChangesNothing()
    {
        Window window;
        window.putMouse(QPoint(50, 60));
        for (int i = 0; i < 5; ++i) {
            window.view.grab(QRect(20, 20, 100, 50));
            window.view.viewport()->grab();
            QImage image(700, 500, QImage::Format_ARGB32_Premultiplied);
            QPainter painter(&image);
            window.view.render(&painter);
            painter.end();
            window.view.wholePaints = 0;
            window.putMouse(QPoint(70 + 9 * i, 80));
            QCOMPARE(window.view.wholePaints, 0);
            QCOMPARE(window.difference(), QString());
        }
    }
};

VRN_TEST(TestEditorViewLayer)
#include "tst_editor_view_layer.moc"
