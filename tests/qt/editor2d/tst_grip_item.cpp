#include <vrn/qt/editor_view.h>
#include <vrn/qt/grip_item.h>

#include <QGraphicsSceneHoverEvent>
#include <QPainter>
#include <QStyleOptionGraphicsItem>

#include "editor_view_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cmath>

using namespace vrn::test;
using namespace vrn::qt;

namespace {

struct OpenGrip : public ed2d::GripItem
{
    using GripItem::GripItem;

    void enter()
    {
        QGraphicsSceneHoverEvent event(QEvent::GraphicsSceneHoverEnter);
        hoverEnterEvent(&event);
    }
};

// The grip as it is painted around the middle of an image, enlarged.
QImage paintedGrip(OpenGrip& grip, double scale, Qt::GlobalColor pen = Qt::green)
{
    QImage image(200, 200, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.translate(100.0, 100.0);
    painter.scale(scale, scale);
    painter.setPen(QPen(pen, 0.0));
    painter.setRenderHint(QPainter::Antialiasing);
    const QStyleOptionGraphicsItem option;
    grip.paint(&painter, &option, nullptr);
    return image;
}

// What is not white.
QRect inkOf(const QImage& image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != qRgb(255, 255, 255))
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

bool isNear(const QColor& a, const QColor& b, int tolerance = 3)
{
    return std::abs(a.red() - b.red()) <= tolerance && std::abs(a.green() - b.green()) <= tolerance
        && std::abs(a.blue() - b.blue()) <= tolerance;
}

} // namespace

class TestGripItem : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aNewGripIsAsDescribed()
    {
        OpenGrip parent;
        auto* grip = new OpenGrip(&parent);
        QCOMPARE(grip->parentItem(), &parent);
        QCOMPARE(grip->flags(),
            QGraphicsItem::ItemIsMovable | QGraphicsItem::ItemIsSelectable
                | QGraphicsItem::ItemSendsGeometryChanges
                | QGraphicsItem::ItemIgnoresTransformations);
        QVERIFY(grip->acceptHoverEvents());
        QCOMPARE(grip->zValue(), 0.0);
        QCOMPARE(grip->m_size, 8.0);
        QVERIFY(!grip->m_emphasised);
    }

    void itIsCentredOnItsPosition_data()
    {
        columns<double, QRectF>("size", "rect");
        row("8 pixels", 8.0, QRectF(-4.0, -4.0, 8.0, 8.0));
        row("5 pixels", 5.0, QRectF(-2.5, -2.5, 5.0, 5.0));
        row("no size", 0.0, QRectF());
    }
    void itIsCentredOnItsPosition()
    {
        QFETCH(double, size);
        QFETCH(QRectF, rect);
        OpenGrip grip;
        grip.m_size = size;
        QCOMPARE(grip.boundingRect(), rect);
    }

    // Red is at half of the lightness.
    void itsColoursRunDown_data()
    {
        columns<bool, QColor, QColor>("selected", "upper", "lower");
        row("not selected", false, QColor(255, 0, 0), QColor(128, 0, 0));
        row("selected", true, QColor(255, 230, 230), QColor(255, 51, 51));
    }
    void itsColoursRunDown()
    {
        QFETCH(bool, selected);
        QFETCH(QColor, upper);
        QFETCH(QColor, lower);
        OpenGrip grip;
        grip.setSelected(selected);
        // 160 pixels high.
        const QImage image = paintedGrip(grip, 20.0);
        QVERIFY(isNear(image.pixelColor(100, 25), upper));
        QVERIFY(isNear(image.pixelColor(100, 60), upper));
        QVERIFY(isNear(image.pixelColor(100, 98), upper));
        const auto between = [&](double part) {
            const auto mix = [part](int a, int b) { return int(std::lround(a + (b - a) * part)); };
            return QColor(mix(upper.red(), lower.red()), mix(upper.green(), lower.green()),
                mix(upper.blue(), lower.blue()));
        };
        QVERIFY(isNear(image.pixelColor(100, 140), between(0.5)));
        QVERIFY(isNear(image.pixelColor(100, 176), between(0.95), 6));
        // Straight down: the same from side to side.
        QVERIFY(isNear(image.pixelColor(60, 140), image.pixelColor(140, 140)));
    }

    void itIsRoundWithoutAntialiasingAndHasABlackEdge()
    {
        OpenGrip grip;
        const QImage image = paintedGrip(grip, 20.0);
        const QRect ink = inkOf(image);
        QVERIFY(std::abs(ink.width() - 161) <= 1 && std::abs(ink.height() - 161) <= 1);
        QCOMPARE(image.pixelColor(100, ink.top()), QColor(Qt::black));
        QCOMPARE(image.pixelColor(ink.left(), 100), QColor(Qt::black));
        QCOMPARE(image.pixelColor(ink.left() + 10, ink.top() + 10), QColor(Qt::white));
        // Nothing is mixed of the edge and the ground.
        for (int x = ink.left(); x <= ink.right(); ++x) {
            for (int y = ink.top(); y <= ink.bottom(); ++y) {
                const QColor colour = image.pixelColor(x, y);
                QVERIFY(colour == Qt::white || colour == Qt::black || colour.red() > 120);
                QVERIFY(colour == Qt::white || colour.green() == 0);
            }
        }
    }

    void itSwells_data()
    {
        columns<bool, bool, bool, double>("emphasised", "hovering", "selected", "factor");
        row("neither", false, false, false, 1.0);
        row("emphasised", true, false, false, 1.3);
        row("under the mouse", false, true, false, 1.3);
        row("both", true, true, false, 1.3);
        row("selected", false, false, true, 1.0);
        row("selected and under the mouse", false, true, true, 1.3);
    }
    void itSwells()
    {
        QFETCH(bool, emphasised);
        QFETCH(bool, hovering);
        QFETCH(bool, selected);
        QFETCH(double, factor);
        OpenGrip grip;
        grip.m_emphasised = emphasised;
        grip.setSelected(selected);
        if (hovering)
            grip.enter();
        const QImage image = paintedGrip(grip, 10.0);
        QVERIFY(std::abs(inkOf(image).width() - (80.0 * factor + 1.0)) <= 2.0);
        QCOMPARE(grip.boundingRect(), QRectF(-4.0, -4.0, 8.0, 8.0));
        QVERIFY(isNear(
            image.pixelColor(100, 95), selected ? QColor(255, 230, 230) : QColor(255, 0, 0)));
    }

    void itKeepsItsSizeAtAnyZoom_data()
    {
        columns<double, bool, int>("zoom", "hovering", "size");
        for (const double zoom : {0.05, 0.5, 1.0, 3.0, 40.0}) {
            QTest::addRow("%g", zoom) << zoom << false << 7;
            QTest::addRow("%g, 10.4 pixels under the mouse", zoom) << zoom << true << 10;
        }
    }
    void itKeepsItsSizeAtAnyZoom()
    {
        QFETCH(double, zoom);
        QFETCH(bool, hovering);
        QFETCH(int, size);
        OpenView view;
        view.setDrawCrossHairs(false);
        view.resize(300, 300);
        auto* shape = new QGraphicsRectItem;
        auto* grip = new OpenGrip(shape);
        view.scene()->addItem(shape);
        shape->setPos(30.0, 20.0);
        grip->setPos(2.0, 1.0);
        view.setTransform(QTransform::fromScale(zoom, zoom));
        view.setCenter(QPointF(32.0, 21.0), false);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        if (hovering)
            grip->enter();
        const QImage image = view.viewport()->grab().toImage();
        const QPoint place = view.mapFromScene(QPointF(32.0, 21.0));
        QRect red;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qRed(image.pixel(x, y)) > qGreen(image.pixel(x, y)) + 100)
                    red |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY(std::abs(red.width() - size) <= 1 && std::abs(red.height() - size) <= 1);
        QVERIFY((red.center() - place).manhattanLength() <= 2);
    }

    void aGripThatIsTransformedIsReportedAndPainted()
    {
        OpenGrip grip;
        grip.setFlag(QGraphicsItem::ItemIgnoresTransformations, false);
        for (int paint = 0; paint < 2; ++paint) {
            expectAssert("(flags() & ItemIgnoresTransformations) == ItemIgnoresTransformations");
            QVERIFY(std::abs(inkOf(paintedGrip(grip, 10.0)).width() - 81) <= 1);
        }
    }

    void aDragMovesIt()
    {
        OpenView view;
        view.resize(300, 300);
        auto* grip = new OpenGrip;
        view.scene()->addItem(grip);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QVector<QPointF> told;
        grip->positionChanged.connect([&] { told.append(grip->pos()); });
        const QPoint start = view.mapFromScene(grip->pos());
        press(view, start, Qt::LeftButton);
        move(view, start + QPoint(15, 5), Qt::LeftButton);
        move(view, start + QPoint(40, 20), Qt::LeftButton);
        release(view, start + QPoint(40, 20), Qt::LeftButton);
        QCOMPARE(told, (QVector<QPointF>{QPointF(15.0, 5.0), QPointF(40.0, 20.0)}));
        QVERIFY(grip->isSelected());
    }
};

VRN_TEST(TestGripItem)
#include "tst_grip_item.moc"
