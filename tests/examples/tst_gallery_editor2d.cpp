#include <vrn/qt/editor2d.h>

#include <QCheckBox>
#include <QGraphicsPolygonItem>
#include <QLabel>

#include "gallery_page_test.h"

#include <cmath>

using namespace vrn::test;
using namespace vrn::qt;

// Drives the page of the 2D editor by the mouse of the X server.
class TestGalleryEditor2d : public GalleryPageTest
{
    Q_OBJECT

public:
    TestGalleryEditor2d()
        : GalleryPageTest("editor2d")
    {}

private Q_SLOTS:
    void aGripTakesItsCornerAlong()
    {
        auto* view = viewCalled("Plan");
        QGraphicsPolygonItem* polygon = nullptr;
        ed2d::GripItem* grip = nullptr;
        for (QGraphicsItem* item : view->scene()->items()) {
            if (auto* found = qgraphicsitem_cast<QGraphicsPolygonItem*>(item))
                polygon = found;
            if (auto* found = dynamic_cast<ed2d::GripItem*>(item))
                grip = found;
        }
        QVERIFY(polygon && grip);
        const QPointF corner = grip->pos();
        QVERIFY(polygon->polygon().contains(corner));
        const QPoint start = onScreen(view, corner);
        x11::moveMouse(start);
        QTRY_VERIFY(grip->hovering());
        x11::pressButton(1);
        QTRY_VERIFY(grip->isSelected());
        x11::moveMouse(start + QPoint(25, 15));
        QTRY_VERIFY(grip->pos() != corner);
        x11::releaseButton(1);
        QVERIFY(polygon->polygon().contains(grip->pos()));
        QVERIFY(!polygon->polygon().contains(corner));
    }

    void theWheelTakesTheLinkedViewsAlong()
    {
        auto* view = viewCalled("Plan");
        auto* sameX = viewCalled("The same part of x");
        auto* sameScale = viewCalled("The same scale");
        auto* partner = viewCalled("Linked both ways");
        const double own = sameX->pixelSize().y();
        x11::turnWheel(onScreen(view, QPointF(100.0, 60.0)), true);
        QTRY_VERIFY(view->pixelSize().x() < 0.9);
        const auto isNear = [](double a, double b) { return std::abs(a - b) < 1e-9; };
        QVERIFY(isNear(sameX->pixelSize().x(), view->pixelSize().x()));
        QVERIFY(isNear(sameX->pixelSize().y(), own));
        QVERIFY(isNear(sameScale->pixelSize().y(), view->pixelSize().y()));
        QVERIFY(isNear(partner->pixelSize().x(), view->pixelSize().x()));
        x11::turnWheel(onScreen(partner, partner->getCenter()));
        QTRY_VERIFY(view->pixelSize().x() > 0.9);
        QVERIFY(isNear(partner->pixelSize().x(), view->pixelSize().x()));
    }

    void aSwitchStopsTheWheel()
    {
        auto* view = viewCalled("Plan");
        click(find<QCheckBox>("Zooming"));
        QTRY_VERIFY(!find<QCheckBox>("Zooming")->isChecked());
        const QTransform before = view->transform();
        x11::turnWheel(onScreen(view, QPointF(100.0, 60.0)), true);
        QTest::qWait(200);
        QCOMPARE(view->transform(), before);
    }

    void theLineBelowTellsWhatTheViewFires()
    {
        auto* view = viewCalled("Plan");
        const auto status = [this] {
            for (const auto* label : page().findChildren<QLabel*>()) {
                if (label->text().contains("mouseMoved"))
                    return label->text();
            }
            return QString();
        };
        QVERIFY(status().contains("zoomChanged 0"));
        x11::turnWheel(onScreen(view, QPointF(100.0, 60.0)), true);
        QTRY_VERIFY(status().contains("zoomChanged 1"));
        QVERIFY(status().contains("pixel 0.8696 x 0.8696"));
        // What comes through a link fires nothing, but is told.
        auto* partner = viewCalled("Linked both ways");
        x11::turnWheel(onScreen(partner, partner->getCenter()), true);
        QTRY_VERIFY(status().contains("pixel 0.7561 x 0.7561"));
        QVERIFY(status().contains("zoomChanged 1"));
    }

private:
    graphics::EditorView* viewCalled(const QString& name) const
    {
        return dynamic_cast<graphics::EditorView*>(find<QGraphicsView>(name));
    }

    static QPoint onScreen(const QGraphicsView* view, const QPointF& point)
    {
        return view->viewport()->mapToGlobal(view->mapFromScene(point));
    }
};

VRN_GALLERY_TEST(TestGalleryEditor2d)
#include "tst_gallery_editor2d.moc"
