#include <vrn/qt/grip_item.h>

#include <QCursor>
#include <QPaintEngine>
#include <QPainter>

#include "editor_view_fixture.h"
#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <algorithm>
#include <cmath>

using namespace vrn::test;
using namespace vrn::qt::graphics;

namespace {

// Takes down what is drawn: a line for each call, with its place, and pen and brush where they
// change.
class Recorder : public QPaintDevice
{
public:
    struct Engine : public QPaintEngine
    {
        Engine()
            : QPaintEngine(AllFeatures)
        {}
        bool begin(QPaintDevice*) override { return true; }
        bool end() override { return true; }
        Type type() const override { return User; }
        void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
        void updateState(const QPaintEngineState& now) override
        {
            if (now.state() & DirtyPen)
                pen = now.pen();
            if (now.state() & DirtyHints)
                hints = now.renderHints();
            if (now.state() & DirtyTransform)
                transform = now.transform();
        }
        void drawLines(const QLineF* all, int count) override
        {
            for (int i = 0; i < count; ++i)
                lines.append(transform.map(all[i]));
            note(count);
        }
        void drawLines(const QLine* all, int count) override
        {
            for (int i = 0; i < count; ++i)
                lines.append(transform.map(QLineF(all[i])));
            note(count);
        }
        void drawRects(const QRectF* all, int count) override
        {
            for (int i = 0; i < count; ++i)
                rects.append(transform.mapRect(all[i]));
            note(count);
        }
        void drawTextItem(const QPointF& place, const QTextItem& item) override
        {
            texts.append(item.text());
            textPlaces.append(transform.map(place));
            textPens.append(pen);
        }
        void note(int count)
        {
            while (count--)
                pens.append(pen);
            isAntialiased = isAntialiased || hints.testFlag(QPainter::Antialiasing);
        }

        QPen pen;
        QPainter::RenderHints hints;
        QTransform transform;
        QVector<QLineF> lines;
        QVector<QPen> pens; // Of lines and rectangles.
        QVector<QRectF> rects;
        QStringList texts;
        QVector<QPointF> textPlaces;
        QVector<QPen> textPens;
        bool isAntialiased = false;
    };

    QPaintEngine* paintEngine() const override { return &m_engine; }
    const Engine& drawn() const { return m_engine; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
            return 400;
        case PdmHeight:
            return 300;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        case PdmDepth:
            return 32;
        default:
            return 96;
        }
    }

private:
    mutable Engine m_engine;
};

// A view whose viewport is 400 x 300, with an identity transform and the scene's origin in its
// upper left corner.
struct Fixture
{
    Fixture()
    {
        view.setFrameShape(QFrame::NoFrame);
        view.resize(400, 300);
        view.scene()->setSceneRect(0.0, 0.0, 400.0, 300.0);
        view.setDrawCrossHairs(false);
        view.show();
        (void)QTest::qWaitForWindowExposed(&view);
    }

    // What drawForeground() draws, with the painter as a view sets it up.
    void draw()
    {
        QPainter painter(&recorder);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setWorldTransform(view.viewportTransform());
        painter.setBrush(brush);
        view.drawForeground(&painter, view.mapToScene(view.rect()).boundingRect());
    }

    void putMouse(const QPoint& position)
    {
        QCursor::setPos(view.mapToGlobal(position));
        QCoreApplication::processEvents();
    }

    OpenView view;
    Recorder recorder;
    QBrush brush = Qt::NoBrush;
};

QString textOf(const QVector<QLineF>& lines)
{
    QStringList texts;
    for (const QLineF& line : lines) {
        texts << QStringLiteral("%1,%2-%3,%4")
                     .arg(line.x1())
                     .arg(line.y1())
                     .arg(line.x2())
                     .arg(line.y2());
    }
    return texts.join(' ');
}

bool arePens(const QVector<QPen>& pens, const QColor& colour, double width, Qt::PenStyle style)
{
    return !pens.isEmpty() && std::all_of(pens.begin(), pens.end(), [&](const QPen& pen) {
        return pen.color() == colour && pen.widthF() == width && pen.style() == style
            && pen.capStyle() == Qt::FlatCap && pen.joinStyle() == Qt::MiterJoin
            && pen.brush().style() == Qt::SolidPattern;
    });
}

} // namespace

// What a view draws around its scene.
class TestEditorViewDrawing : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theBackgroundIsADiagonalGradient_data()
    {
        columns<QRectF>("rect");
        row("the whole picture", QRectF(0.0, 0.0, 200.0, 100.0));
        row("a part of it", QRectF(50.0, 20.0, 60.0, 60.0));
    }
    void theBackgroundIsADiagonalGradient()
    {
        QFETCH(QRectF, rect);
        Fixture f;
        QImage image(200, 100, QImage::Format_RGB32);
        image.fill(Qt::blue);
        QPainter painter(&image);
        painter.setBrush(Qt::red);
        f.view.drawBackground(&painter, rect);
        QCOMPARE(painter.brush().style(), Qt::NoBrush);
        painter.end();
        const QRect pixels = rect.toRect();
        const auto lightness = [&](const QPoint& p) { return image.pixelColor(p).red(); };
        QVERIFY(lightness(pixels.topLeft()) >= 254);
        QVERIFY(std::abs(lightness(pixels.bottomRight()) - QColor(Qt::lightGray).red()) <= 1);
        const int middle = (255 + QColor(Qt::lightGray).red()) / 2;
        QVERIFY(std::abs(lightness(pixels.center()) - middle) <= 1);
        if (pixels != image.rect())
            QCOMPARE(image.pixelColor(0, 0), QColor(Qt::blue));
    }

    void theSceneDrawsNoBackground()
    {
        Fixture f;
        f.view.scene()->setBackgroundBrush(Qt::red);
        const QImage image = f.view.viewport()->grab().toImage();
        QVERIFY(image.pixelColor(5, 5).green() > 200);
    }

    void theGradientSpansWhatIsVisible()
    {
        Fixture f;
        f.view.scene()->setSceneRect(-5000.0, -5000.0, 10000.0, 10000.0);
        for (const QPointF& center : {QPointF(0.0, 0.0), QPointF(-3000.0, 777.0)}) {
            f.view.setCenter(center, false);
            const QImage image = f.view.viewport()->grab().toImage();
            QVERIFY(image.pixelColor(0, 0).red() >= 254);
            QVERIFY(image.pixelColor(399, 299).red() <= QColor(Qt::lightGray).red() + 1);
        }
    }

    void theSceneMayDrawInTheForeground()
    {
        Fixture f;
        f.view.scene()->setForegroundBrush(QColor(0, 255, 0));
        QCOMPARE(f.view.viewport()->grab().toImage().pixelColor(9, 9), QColor(0, 255, 0));
    }

    void crossHairsGoThroughTheMouse()
    {
        Fixture f;
        f.view.setDrawCrossHairs(true);
        f.putMouse(QPoint(120, 80));
        enter(f.view);
        f.draw();
        QCOMPARE(textOf(f.recorder.drawn().lines), QString("120,0-120,300 0,80-400,80"));
        QVERIFY(arePens(f.recorder.drawn().pens, Qt::darkGray, 1.0, Qt::DotLine));
        QVERIFY(!f.recorder.drawn().isAntialiased);
    }

    void crossHairsAreDrawnInTheViewOnly_data()
    {
        columns<QString, bool>("events", "drawn");
        row("before the mouse has come", "", false);
        row("when it has come", "enter", true);
        row("when it has left", "enter leave", false);
        row("switched off", "enter off", false);
    }
    void crossHairsAreDrawnInTheViewOnly()
    {
        QFETCH(QString, events);
        QFETCH(bool, drawn);
        Fixture f;
        f.putMouse(QPoint(4000, 4000));
        leave(f.view);
        f.view.setDrawCrossHairs(!events.contains("off"));
        if (events.contains("enter"))
            enter(f.view);
        if (events.contains("leave"))
            leave(f.view);
        f.draw();
        QCOMPARE(f.recorder.drawn().lines.size(), drawn ? 2 : 0);
    }

    void aNewViewHasCrossHairsOnly()
    {
        OpenView view;
        Recorder recorder;
        enter(view);
        QPainter painter(&recorder);
        view.drawForeground(&painter, QRectF());
        QCOMPARE(recorder.drawn().lines.size(), 2);
        QCOMPARE(recorder.drawn().rects.size(), 0);
        QCOMPARE(recorder.drawn().texts, QStringList());
    }

    // In coordinates of the view, but drawn from the corner of the viewport.
    void aFrameShiftsTheCrossHairs()
    {
        Fixture f;
        f.view.setFrameStyle(int(QFrame::Box) | int(QFrame::Plain));
        f.view.setLineWidth(7);
        f.view.setDrawCrossHairs(true);
        f.putMouse(QPoint(120, 80));
        enter(f.view);
        f.draw();
        QCOMPARE(textOf(f.recorder.drawn().lines), QString("120,0-120,300 0,80-400,80"));
    }

    void theCursorIsACrossWithABox_data()
    {
        columns<bool, QPoint>("inside", "mouse");
        row("in the view", true, QPoint(120, 80));
        row("outside of it", false, QPoint(-30, 500));
    }
    void theCursorIsACrossWithABox()
    {
        QFETCH(bool, inside);
        QFETCH(QPoint, mouse);
        Fixture f;
        f.putMouse(mouse);
        if (!inside)
            leave(f.view);
        f.view.setDrawCustomCursor(true);
        f.draw();
        QVector<QLineF> expected;
        for (const QPoint& d : {QPoint(0, -1), QPoint(0, 1), QPoint(-1, 0), QPoint(1, 0)})
            expected.append(QLineF(mouse + 20 * d, mouse + 6 * d));
        QCOMPARE(f.recorder.drawn().lines, expected);
        QCOMPARE(f.recorder.drawn().rects,
            QVector<QRectF>{QRectF(QPointF(mouse) - QPointF(4.0, 4.0), QSizeF(8.0, 8.0))});
        QCOMPARE(f.recorder.drawn().pens.size(), 5);
        QVERIFY(arePens(f.recorder.drawn().pens, Qt::black, 1.0, Qt::SolidLine));
        QVERIFY(!f.recorder.drawn().isAntialiased);
    }

    void theBoxIsFilledWithThePaintersBrush()
    {
        Fixture f;
        f.view.setDrawCustomCursor(true);
        f.putMouse(QPoint(50, 50));
        QImage image(400, 300, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        painter.setBrush(QColor(0, 0, 255));
        f.view.drawForeground(&painter, QRectF());
        painter.end();
        QCOMPARE(image.pixelColor(50, 50), QColor(0, 0, 255));
        QCOMPARE(image.pixelColor(46, 46), QColor(Qt::black));
        QCOMPARE(image.pixelColor(54, 54), QColor(Qt::black));
        QCOMPARE(image.pixelColor(50, 45), QColor(Qt::white));
        QCOMPARE(image.pixelColor(50, 43), QColor(Qt::black));
    }

    void theTitleStaysAtItsPlace_data()
    {
        columns<double>("zoom");
        for (const double zoom : {0.01, 1.0, 30.0})
            QTest::addRow("at a zoom of %g", zoom) << zoom;
    }
    void theTitleStaysAtItsPlace()
    {
        QFETCH(double, zoom);
        Fixture f;
        f.view.setTransform(QTransform::fromScale(zoom, zoom));
        f.view.setTitle("Plan");
        f.draw();
        QCOMPARE(f.recorder.drawn().texts, QStringList("Plan"));
        QCOMPARE(f.recorder.drawn().textPlaces, QVector<QPointF>{QPointF(20.0, 30.0)});
        QVERIFY(arePens(f.recorder.drawn().textPens, Qt::black, 1.0, Qt::SolidLine));
    }

    void theTitleIsDrawnToAGenerousLength_data()
    {
        columns<QString, QString>("title", "drawn");
        const QString pair = QString::fromUcs4(U"\U0001F600", 1);
        row("characters without a width", QString(5000, QChar(0x200b)) + "end",
            QString(5000, QChar(0x200b)) + "end");
        row("ten thousand", QString(10000, 'x'), QString(10000, 'x'));
        row("one more", QString(10001, 'x'), QString(10000, 'x'));
        row("a pair of surrogates is not split", QString(9999, 'x') + pair, QString(9999, 'x'));
        row("a pair that fits", QString(9998, 'x') + pair + "x", QString(9998, 'x') + pair);
    }
    void theTitleIsDrawnToAGenerousLength()
    {
        QFETCH(QString, title);
        QFETCH(QString, drawn);
        Fixture f;
        f.view.setTitle(title);
        f.draw();
        QCOMPARE(f.recorder.drawn().texts.join(QString()), drawn);
    }

    void theLabelsAreMultiplesOfTheMajorStep_data()
    {
        columns<double, QPointF, QString>("zoom", "corner", "labels");
        row("unscaled", 1.0, QPointF(0.0, 0.0), "0 100 200 300");
        row("the first one outside of the view", 1.0, QPointF(130.0, 0.0), "100 200 300 400 500");
        row("around zero", 1.0, QPointF(-150.0, 0.0), "-100 0 100 200");
        row("below zero, the last one outside", 1.0, QPointF(-690.0, 0.0),
            "-600 -500 -400 -300 -200");
        row("zoomed in", 10.0, QPointF(0.0, 0.0), "0 10 20 30");
        row("fractions", 100.0, QPointF(0.0, 0.0), "0 1 2 3");
        row("far in", 2000.0, QPointF(5.0, 5.0), "5");
        row("zoomed out", 0.15, QPointF(-1010.0, 0.0), "-1000 -500 0 500 1000 1500");
        row("an unrounded step", 0.08, QPointF(0.0, 0.0), "0 625 1250 1875 2500 3125 3750 4375");
        row("written with an exponent", 1e-6, QPointF(0.0, 0.0),
            "0 5e+07 1e+08 1.5e+08 2e+08 2.5e+08 3e+08 3.5e+08");
    }
    void theLabelsAreMultiplesOfTheMajorStep()
    {
        QFETCH(double, zoom);
        QFETCH(QPointF, corner);
        QFETCH(QString, labels);
        Fixture f;
        showFrom(f.view, corner, zoom);
        f.view.setRulers(false, true);
        f.draw();
        QCOMPARE(f.recorder.drawn().texts.join(' '), labels);
    }

    void ticksStandAtTheUpperEdge()
    {
        Fixture f;
        f.view.setRulers(false, true);
        f.draw();
        const auto& drawn = f.recorder.drawn();
        QVector<QLineF> expected;
        for (const int x : {0, 100, 200, 300})
            expected.append(QLineF(x, 0, x, 8));
        for (const int first : {0, 100, 200}) {
            for (int x = first; x <= first + 100; x += 20)
                expected.append(QLineF(x, 0, x, 3));
        }
        QCOMPARE(textOf(drawn.lines), textOf(expected));
        QVERIFY(arePens(drawn.pens, Qt::black, 0.0, Qt::SolidLine));
        QVERIFY(arePens(drawn.textPens, Qt::black, 0.0, Qt::SolidLine));
        QVERIFY(!drawn.isAntialiased);
    }

    void ticksStandAtTheLeftEdge()
    {
        Fixture f;
        f.view.setRulers(true, false);
        f.draw();
        QVector<QLineF> expected;
        for (const int y : {0, 100, 200})
            expected.append(QLineF(0, y, 8, y));
        for (const int first : {0, 100}) {
            for (int y = first; y <= first + 100; y += 20)
                expected.append(QLineF(0, y, 3, y));
        }
        QCOMPARE(textOf(f.recorder.drawn().lines), textOf(expected));
    }

    // With whole numbers throughout.
    void labelsStandBesideTheirTicks_data()
    {
        columns<bool>("left");
        row("above", false);
        row("left", true);
    }
    void labelsStandBesideTheirTicks()
    {
        QFETCH(bool, left);
        Fixture f;
        f.view.setRulers(left, !left);
        f.draw();
        QImage own(400, 300, QImage::Format_RGB32);
        own.fill(Qt::white);
        QImage expected = own;
        {
            QPainter painter(&own);
            f.view.drawForeground(&painter, QRectF());
        }
        {
            QPainter painter(&expected);
            painter.setPen(f.recorder.drawn().pens.first());
            for (const QLineF& line : f.recorder.drawn().lines)
                painter.drawLine(line);
            for (const int place : {0, 100, 200, 300}) {
                if (left && place == 300)
                    continue;
                const QString text = QString::number(place);
                QRect box = painter.fontMetrics().boundingRect(text);
                box.adjust(0, 0, 2, 0);
                if (left)
                    box.translate(9, place + box.height() / 3);
                else
                    box.translate(place - box.width() / 2, box.height() / 2 + 12);
                painter.drawText(box, Qt::AlignCenter, text);
            }
        }
        QCOMPARE(own, expected);
    }

    void theFirstFlagIsTheLeftRuler_data()
    {
        columns<bool, bool>("left", "top");
        row("none", false, false);
        row("left", true, false);
        row("above", false, true);
        row("both", true, true);
    }
    void theFirstFlagIsTheLeftRuler()
    {
        QFETCH(bool, left);
        QFETCH(bool, top);
        Fixture f;
        f.view.setRulers(left, top);
        f.draw();
        const auto& lines = f.recorder.drawn().lines;
        QCOMPARE(lines.contains(QLineF(0, 200, 8, 200)), left);
        QCOMPARE(lines.contains(QLineF(200, 0, 200, 8)), top);
        // The left one lies over the other.
        if (left && top)
            QVERIFY(lines.indexOf(QLineF(0, 200, 8, 200)) > lines.indexOf(QLineF(200, 0, 200, 8)));
    }

    void theLeftRulerGoesByTheWidthOfAPixel()
    {
        Fixture f;
        f.view.scene()->setSceneRect(0.0, 0.0, 400.0, 3000.0);
        f.view.setTransform(QTransform::fromScale(1.0, 0.1));
        f.view.setRulers(true, false);
        f.draw();
        QVERIFY(f.recorder.drawn().texts.size() >= 29);
        QCOMPARE(f.recorder.drawn().texts[1], QString("100"));
        QCOMPARE(f.recorder.drawn().lines[1], QLineF(0, 10, 8, 10));
    }

    void aMirroredRangeHasNoTicksButTheOneInIt()
    {
        Fixture f;
        f.view.scene()->setSceneRect(-200.0, -150.0, 400.0, 300.0);
        f.view.setTransform(QTransform::fromScale(1.0, -1.0));
        f.view.setRulers(true, false);
        f.draw();
        QCOMPARE(f.recorder.drawn().texts, QStringList());
        f.view.setRulers(false, true);
        f.draw();
        QCOMPARE(f.recorder.drawn().texts.join(' '), QString("-200 -100 0 100"));
    }

    // As many labels as can be told apart are those of the plain loop.
    void labelsAtLeastAPixelApartAreAllThere_data()
    {
        columns<double, double, int>("x", "y", "labels");
        row("equal axes", 1.0, 1.0, 3);
        row("a tenth", 1.0, 0.1, 30);
        row("a pixel apart", 1.0, 0.01, 300);
        row("zoomed in, a tenth", 10.0, 1.0, 30);
        row("higher than wide", 1.0, 3.0, 1);
    }
    void labelsAtLeastAPixelApartAreAllThere()
    {
        QFETCH(double, x);
        QFETCH(double, y);
        QFETCH(int, labels);
        Fixture f;
        f.view.setSceneRect(0.0, 0.0, 400.0 / x, 300.0 / y);
        f.view.setTransform(QTransform::fromScale(x, y));
        f.view.setRulers(true, false);
        f.draw();
        const double step = 100.0 / x;
        QStringList expected;
        const double last = f.view.mapToScene(f.view.rect().bottomRight()).y();
        for (double label = 0.0; label <= last; label += step)
            expected << QString::number(label);
        QCOMPARE(f.recorder.drawn().texts, expected);
        QCOMPARE(expected.size(), labels);
    }

    // A step is a half where the pixel has a negative width.
    void aMirroredWidthHasTheSmallestStep()
    {
        Fixture f;
        f.view.scene()->setSceneRect(0.0, 0.0, 400.0, 300.0);
        f.view.setTransform(QTransform::fromScale(-1.0, 1.0));
        f.view.setRulers(true, true);
        f.draw();
        const QStringList& texts = f.recorder.drawn().texts;
        QCOMPARE(texts.size(), 599);
        QCOMPARE(texts[1], QString("0.5"));
    }

    void rulersEndInAnyView_data()
    {
        columns<QTransform>("transform");
        row("far in", QTransform::fromScale(1e12, 1e12));
        row("far out", QTransform::fromScale(1e-12, 1e-12));
        row("out of the numbers", QTransform::fromScale(1e300, 1e300));
        row("nothing is left", QTransform::fromScale(1e-300, 1e-300));
        row("infinite", QTransform::fromScale(qInf(), qInf()));
        row("no number", QTransform::fromScale(qQNaN(), qQNaN()));
        row("degenerate", QTransform::fromScale(0.0, 0.0));
        row("degenerate in x", QTransform::fromScale(0.0, 1.0));
        row("very unequal", QTransform::fromScale(1e9, 1e-9));
        row("very unequal the other way round", QTransform::fromScale(1e-9, 1e9));
        row("mirrored and unequal", QTransform::fromScale(-1e-9, 1e-9));
        row("sheared", QTransform(1.0, 3.0, 2.0, 1.0, 0.0, 0.0));
        row("a quarter turn", QTransform().rotate(90.0));
        row("half a turn", QTransform().rotate(180.0));
    }
    void rulersEndInAnyView()
    {
        QFETCH(QTransform, transform);
        Fixture f;
        f.view.setRulers(true, true);
        f.view.setTransform(transform);
        for (const QPointF& center : {QPointF(0.0, 0.0), QPointF(1e15, -1e15)}) {
            f.view.setCenter(center, false);
            verifyTakesAtMost(timeLimitMs(1000), "both rulers", [&] {
                QImage image(400, 300, QImage::Format_RGB32);
                QPainter painter(&image);
                f.view.drawForeground(&painter, QRectF());
            });
        }
    }

    void tenThousandStepsOfTheWheelDoNoHarm_data()
    {
        columns<int>("angle");
        row("in", 120);
        row("out", -120);
    }
    void tenThousandStepsOfTheWheelDoNoHarm()
    {
        QFETCH(int, angle);
        Fixture f;
        f.view.setRulers(true, true);
        for (int step = 1; step <= 10000; ++step) {
            turnWheel(f.view, QPoint(130, 70), QPoint(0, angle));
            if (step % 100 == 0)
                f.draw();
        }
        f.view.repaint();
    }

    // What the guide to printing says. The item stands beyond the edge, but reaches over it.
    void aPrintNeedsAMarginForItemsAtTheEdge_data()
    {
        columns<int, bool>("margin", "isPrinted");
        row("without a margin it is left out", 0, false);
        row("with a margin it is there", 16, true);
    }
    void aPrintNeedsAMarginForItemsAtTheEdge()
    {
        QFETCH(int, margin);
        QFETCH(bool, isPrinted);
        Fixture f;
        auto* grip = new vrn::qt::ed2d::GripItem;
        grip->m_size = 16.0;
        f.view.scene()->addItem(grip);
        // Zoomed out, the grip is larger in the scene than Qt takes it to be.
        showFrom(f.view, QPointF(0.0, 0.0), 0.25);
        grip->setPos(-16.0, 400.0);
        QImage image(400, 300, QImage::Format_RGB32);
        const QRect pixels = image.rect().adjusted(-margin, -margin, margin, margin);
        QPainter painter(&image);
        f.view.render(&painter, pixels, pixels);
        painter.end();
        QCOMPARE(image.pixelColor(1, 97) == QColor(255, 0, 0), isPrinted);
        QCOMPARE(f.view.viewport()->grab().toImage().pixelColor(1, 97), QColor(255, 0, 0));
    }

    // So the guide to printing switches both off.
    void whatFollowsTheMouseIsPrintedToo_data()
    {
        columns<bool, bool, int>("crossHairs", "cursor", "lines");
        row("cross hairs", true, false, 2);
        row("the cursor", false, true, 4);
        row("both", true, true, 6);
        row("nothing if both are off", false, false, 0);
    }
    void whatFollowsTheMouseIsPrintedToo()
    {
        QFETCH(bool, crossHairs);
        QFETCH(bool, cursor);
        QFETCH(int, lines);
        Fixture f;
        f.putMouse(QPoint(120, 80));
        enter(f.view);
        f.view.setDrawCrossHairs(crossHairs);
        f.view.setDrawCustomCursor(cursor);
        const QRect pixels = f.view.viewport()->rect().adjusted(-16, -16, 16, 16);
        QPainter painter(&f.recorder);
        f.view.render(&painter, pixels, pixels);
        QCOMPARE(f.recorder.drawn().lines.size(), lines);
    }

    void theSettersAskForNoRepaint()
    {
        Fixture f;
        QCoreApplication::processEvents();
        f.view.paints = 0;
        f.view.setRulers(true, true);
        f.view.setTitle("Plan");
        f.view.setDrawCrossHairs(true);
        f.view.setDrawCustomCursor(true);
        QTest::qWait(50);
        QCOMPARE(f.view.paints, 0);
    }

private:
    // `corner` is the scene point in the upper left corner.
    static void showFrom(OpenView& view, const QPointF& corner, double zoom)
    {
        view.setSceneRect(QRectF(corner, QSizeF(view.viewport()->size()) / zoom));
        view.setTransform(QTransform::fromScale(zoom, zoom));
    }
};

VRN_TEST(TestEditorViewDrawing)
#include "tst_editor_view_drawing.moc"
