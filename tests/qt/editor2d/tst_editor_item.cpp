#include <vrn/qt/editor_item.h>

#include <QGraphicsScene>
#include <QGraphicsSceneHoverEvent>
#include <QGraphicsView>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

using namespace vrn::test;
using vrn::qt::ed2d::EditorItem;

namespace {

struct OpenItem : public EditorItem
{
    using EditorItem::EditorItem;
    using EditorItem::hoverEnterEvent;
    using EditorItem::hoverLeaveEvent;

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override
    {
        ++paints;
        EditorItem::paint(painter, option, widget);
    }
    int paints = 0;

    void enter()
    {
        QGraphicsSceneHoverEvent event(QEvent::GraphicsSceneHoverEnter);
        hoverEnterEvent(&event);
    }
    void leave()
    {
        QGraphicsSceneHoverEvent event(QEvent::GraphicsSceneHoverLeave);
        hoverLeaveEvent(&event);
    }
};

} // namespace

class TestEditorItem : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewItemIsAsDescribed()
    {
        OpenItem parent;
        auto* item = new OpenItem(&parent);
        QCOMPARE(item->parentItem(), &parent);
        QCOMPARE(item->flags(),
            QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable
                | QGraphicsItem::ItemSendsGeometryChanges);
        QVERIFY(item->acceptHoverEvents());
        QVERIFY(!item->hovering());
        QCOMPARE(item->boundingRect(), QRectF(0.0, 0.0, 10.0, 10.0));
    }

    void itsColourTellsItsState_data()
    {
        columns<bool, bool, QColor>("selected", "hovering", "colour");
        row("neither", false, false, QColor(Qt::blue));
        row("under the mouse", false, true, QColor(Qt::yellow));
        row("selected", true, false, QColor(Qt::red));
        row("selected and under the mouse", true, true, QColor(Qt::red));
    }
    void itsColourTellsItsState()
    {
        QFETCH(bool, selected);
        QFETCH(bool, hovering);
        QFETCH(QColor, colour);
        OpenItem item;
        item.setSelected(selected);
        if (hovering)
            item.enter();
        QImage image(20, 20, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setPen(Qt::green);
        const QStyleOptionGraphicsItem option;
        item.paint(&painter, &option, nullptr);
        painter.end();
        QCOMPARE(image.pixelColor(5, 5), colour);
        // The painter's pen is around it.
        for (const QPoint& corner : {QPoint(0, 0), QPoint(10, 0), QPoint(10, 10), QPoint(0, 10)})
            QCOMPARE(image.pixelColor(corner), QColor(Qt::green));
        QCOMPARE(image.pixelColor(11, 11), QColor(Qt::white));
    }

    void hoveringIsBetweenEnterAndLeave_data()
    {
        columns<QString, bool>("events", "hovering");
        row("entered", "enter", true);
        row("entered twice", "enter enter", true);
        row("left", "enter leave", false);
        row("left without having been entered", "leave", false);
        row("entered while it could not be selected", "fix enter", false);
        row("entered, then not selectable any more", "enter fix", true);
        row("left while it could not be selected", "enter fix leave", false);
    }
    void hoveringIsBetweenEnterAndLeave()
    {
        QFETCH(QString, events);
        QFETCH(bool, hovering);
        OpenItem item;
        for (const QString& event : events.split(' ')) {
            if (event == "enter")
                item.enter();
            else if (event == "leave")
                item.leave();
            else
                item.setFlag(QGraphicsItem::ItemIsSelectable, false);
        }
        QCOMPARE(item.hovering(), hovering);
    }

    void hoveringRepaintsTheItem()
    {
        QGraphicsScene scene;
        auto* item = new OpenItem;
        scene.addItem(item);
        QGraphicsView view(&scene);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const auto repaints = [&] {
            QTest::qWait(20);
            return std::exchange(item->paints, 0) > 0;
        };
        repaints();
        QVERIFY(!repaints());
        item->enter();
        QVERIFY(repaints());
        item->leave();
        QVERIFY(repaints());
    }

    void movesAreTold_data()
    {
        columns<QString, int>("move", "count");
        row("to another position", "elsewhere", 1);
        row("to where it is", "here", 0);
        row("by moveBy", "by", 1);
        row("without the flag", "unflagged", 0);
        row("of its parent", "parent", 0);
        row("no other change", "rotate", 0);
    }
    void movesAreTold()
    {
        QFETCH(QString, move);
        QFETCH(int, count);
        OpenItem parent;
        auto* item = new OpenItem(&parent);
        int fired = 0;
        item->positionChanged.connect([&] { ++fired; });
        if (move == "elsewhere")
            item->setPos(3.0, 4.0);
        else if (move == "here")
            item->setPos(item->pos());
        else if (move == "by")
            item->moveBy(1.0, 0.0);
        else if (move == "parent")
            parent.setPos(3.0, 4.0);
        else if (move == "rotate")
            item->setRotation(30.0);
        else {
            item->setFlag(QGraphicsItem::ItemSendsGeometryChanges, false);
            item->setPos(3.0, 4.0);
        }
        QCOMPARE(fired, count);
    }

    void theNewPositionCanBeRead()
    {
        OpenItem item;
        QPointF told;
        item.positionChanged.connect([&] { told = item.pos(); });
        item.setPos(3.0, 4.0);
        QCOMPARE(told, QPointF(3.0, 4.0));
    }

    void aSlotMayMoveTheItemAgain()
    {
        OpenItem item;
        QVector<QPointF> told;
        item.positionChanged.connect([&] {
            told.append(item.pos());
            item.setPos(qRound(item.pos().x()), 0.0);
        });
        item.setPos(3.4, 4.0);
        QCOMPARE(told, (QVector<QPointF>{QPointF(3.4, 4.0), QPointF(3.0, 0.0)}));
        QCOMPARE(item.pos(), QPointF(3.0, 0.0));
    }

    void aSlotThatMovesTheItemWithoutEndIsStopped()
    {
        OpenItem item;
        int calls = 0;
        item.positionChanged.connect([&] {
            ++calls;
            item.moveBy(1.0, 0.0);
            item.moveBy(-3.0, 0.0);
        });
        expectAssert("depth <= maxDepth", {}, "A slot makes its own signal fire without end.");
        item.setPos(1.0, 1.0);
        QCOMPARE(calls, 100);
        item.positionChanged.disconnect_all_slots();
        int fired = 0;
        item.positionChanged.connect([&] { ++fired; });
        item.setPos(0.5, 0.5);
        QCOMPARE(fired, 1);
    }
};

VRN_TEST(TestEditorItem)
#include "tst_editor_item.moc"
