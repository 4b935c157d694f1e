#include <QScrollBar>

#include "editor_view_fixture.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cmath>
#include <optional>

using namespace vrn::test;
using namespace vrn::qt::graphics;

namespace {

constexpr int allSettings = EditorView::CenterX | EditorView::CenterY | EditorView::ScaleX
    | EditorView::ScaleY;

// Views whose scenes are much larger than they are.
struct ShownView : public OpenView
{
    ShownView()
    {
        scene()->setSceneRect(-5000.0, -5000.0, 10000.0, 10000.0);
        resize(400, 300);
        show();
        (void)QTest::qWaitForWindowExposed(this);
    }
};

bool isNear(double a, double b)
{
    return std::abs(a - b) <= 1e-9 * std::max(1.0, std::abs(b));
}

bool isNear(const QPointF& a, const QPointF& b)
{
    return isNear(a.x(), b.x()) && isNear(a.y(), b.y());
}

} // namespace

// Views that take over zoom and center from each other.
class TestEditorViewLinks : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachBitTakesOneSetting_data()
    {
        columns<int, QPointF, QPointF>("mask", "center", "pixel");
        row("none", 0, QPointF(10.0, 20.0), QPointF(1.0, 1.0));
        row("1: x of the center", 1, QPointF(70.0, 20.0), QPointF(1.0, 1.0));
        row("2: y of the center", 2, QPointF(10.0, 80.0), QPointF(1.0, 1.0));
        row("4: scale of x", 4, QPointF(10.0, 20.0), QPointF(0.5, 1.0));
        row("8: scale of y", 8, QPointF(10.0, 20.0), QPointF(1.0, 0.25));
        row("3: the center", 3, QPointF(70.0, 80.0), QPointF(1.0, 1.0));
        row("5: all of x", 5, QPointF(70.0, 20.0), QPointF(0.5, 1.0));
        row("12: the scale", 12, QPointF(10.0, 20.0), QPointF(0.5, 0.25));
        row("15: all", 15, QPointF(70.0, 80.0), QPointF(0.5, 0.25));
        row("16: nothing else", 16, QPointF(10.0, 20.0), QPointF(1.0, 1.0));
        row("-1: all", -1, QPointF(70.0, 80.0), QPointF(0.5, 0.25));
    }
    void eachBitTakesOneSetting()
    {
        QFETCH(int, mask);
        QFETCH(QPointF, center);
        QFETCH(QPointF, pixel);
        ShownView view;
        ShownView other;
        view.setCenter(QPointF(10.0, 20.0), false);
        other.setTransform(QTransform::fromScale(2.0, 4.0));
        other.setCenter(QPointF(70.0, 80.0), false);
        SignalLog log(view);
        SignalLog otherLog(other);
        view.acquireViewSettingsFrom(&other, mask);
        QCOMPARE(view.getCenter(), center);
        QVERIFY(isNear(view.pixelSize(), pixel));
        const QPointF middle = view.mapToScene(view.viewport()->rect().center());
        QVERIFY(std::abs(middle.x() - center.x()) < 2.0 && std::abs(middle.y() - center.y()) < 2.0);
        QCOMPARE(log.take(), QString());
        QCOMPARE(otherLog.take(), QString());
    }

    void aMaskOfZeroRepaints()
    {
        ShownView view;
        ShownView other;
        QCoreApplication::processEvents();
        view.paints = 0;
        view.acquireViewSettingsFrom(&other, 0);
        QTRY_COMPARE(view.paints, 1);
    }

    void aMirroredAxisIsTaken()
    {
        ShownView view;
        ShownView other;
        other.setTransform(QTransform::fromScale(1.0, -2.0));
        view.acquireViewSettingsFrom(&other, EditorView::ScaleY);
        QVERIFY(isNear(view.pixelSize(), QPointF(1.0, -0.5)));
    }

    void noViewIsReported()
    {
        ShownView view;
        expectAssert("other");
        view.acquireViewSettingsFrom(nullptr, allSettings);
        expectAssert("other");
        view.linkViewSettingsTo(nullptr, allSettings);
        expectAssert("a && b");
        EditorView::linkViewSettingsBidirectionally(&view, nullptr, allSettings);
        expectAssert("a && b");
        EditorView::linkViewSettingsBidirectionally(nullptr, &view, allSettings);
        QCOMPARE(view.getCenter(), QPointF(50.0, 0.0));
        QCOMPARE(view.centerChanged.num_slots(), std::size_t(0));
    }

    void aLinkedViewFollows_data()
    {
        columns<QString, bool>("event", "follows");
        row("nothing is copied by linking", "none", false);
        row("the wheel", "wheel", true);
        row("a pan", "pan", true);
        row("a center that is told", "told", true);
        row("a center that is not", "silent", false);
        row("a scale", "scale", false);
    }
    void aLinkedViewFollows()
    {
        QFETCH(QString, event);
        QFETCH(bool, follows);
        ShownView view;
        ShownView other;
        other.setCenter(QPointF(700.0, 800.0), false);
        other.setTransform(QTransform::fromScale(2.0, 3.0));
        view.linkViewSettingsTo(&other, allSettings);
        if (event == "wheel")
            turnWheel(other, QPoint(10, 10), QPoint(0, 120));
        else if (event == "told" || event == "silent")
            other.setCenter(QPointF(300.0, 400.0), event == "told");
        else if (event == "scale")
            other.scaleBy(3.0);
        else if (event == "pan") {
            enter(other);
            press(other, QPoint(100, 100), Qt::RightButton);
            move(other, QPoint(130, 150), Qt::RightButton);
        }
        QCOMPARE(view.getCenter() == other.getCenter(), follows);
        QCOMPARE(isNear(view.pixelSize(), other.pixelSize()), follows);
        if (!follows)
            QCOMPARE(view.getCenter(), QPointF(50.0, 0.0));
    }

    void aResizeIsFollowedByTheCenterAlone()
    {
        ShownView view;
        ShownView other;
        view.linkViewSettingsTo(&other, allSettings);
        QCOMPARE(other.resized.num_slots(), std::size_t(0));
        other.setCenter(QPointF(300.0, 400.0), false);
        other.resize(500, 350);
        QCOMPARE(view.getCenter(), QPointF(300.0, 400.0));
        QCOMPARE(view.size(), QSize(400, 300));
    }

    void aChainEndsAtTheFirstLink()
    {
        ShownView a;
        ShownView b;
        ShownView c;
        b.linkViewSettingsTo(&a, allSettings);
        c.linkViewSettingsTo(&b, allSettings);
        a.setCenter(QPointF(300.0, 400.0), true);
        QCOMPARE(b.getCenter(), QPointF(300.0, 400.0));
        QCOMPARE(c.getCenter(), QPointF(50.0, 0.0));
    }

    void aLinkInBothDirectionsDoesNotLoop()
    {
        ShownView a;
        ShownView b;
        EditorView::linkViewSettingsBidirectionally(&a, &b, allSettings);
        SignalLog logA(a);
        SignalLog logB(b);
        turnWheel(a, QPoint(10, 10), QPoint(0, 120));
        QVERIFY(isNear(a.pixelSize(), b.pixelSize()));
        QCOMPARE(b.getCenter(), a.getCenter());
        turnWheel(b, QPoint(90, 10), QPoint(0, -120));
        QVERIFY(isNear(a.pixelSize(), b.pixelSize()));
        QCOMPARE(b.getCenter(), a.getCenter());
        QCOMPARE(logA.take(), QString("centerChanged zoomChanged"));
        QCOMPARE(logB.take(), QString("centerChanged zoomChanged"));
    }

    void bothDirectionsTakeTheMask()
    {
        ShownView a;
        ShownView b;
        EditorView::linkViewSettingsBidirectionally(&a, &b, EditorView::CenterX);
        a.setCenter(QPointF(1.0, 2.0), true);
        QCOMPARE(b.getCenter(), QPointF(1.0, 0.0));
        b.setCenter(QPointF(3.0, 4.0), true);
        QCOMPARE(a.getCenter(), QPointF(3.0, 2.0));
    }

    void aViewMayFollowItself()
    {
        ShownView view;
        view.linkViewSettingsTo(&view, allSettings);
        turnWheel(view, QPoint(10, 10), QPoint(0, 120));
        QVERIFY(isNear(view.pixelSize(), QPointF(1.0, 1.0) / 1.15));
    }

    // Each link acquires anew, in the order of linking: scrolling tells of it.
    void twoLinksRunTwice()
    {
        ShownView view;
        ShownView other;
        QStringList acquired;
        const auto note = [&] {
            acquired
                << QStringLiteral("%1, %2").arg(view.getCenter().x()).arg(view.getCenter().y());
        };
        connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, &view, note);
        connect(view.verticalScrollBar(), &QScrollBar::valueChanged, &view, note);
        view.linkViewSettingsTo(&other, EditorView::CenterX);
        view.linkViewSettingsTo(&other, EditorView::CenterY);
        other.setCenter(QPointF(300.0, 400.0), true);
        QCOMPARE(acquired, QStringList({"300, 0", "300, 400"}));

        view.linkViewSettingsTo(&other, EditorView::CenterX);
        other.centerChanged.connect([&](const QPointF&) { acquired << "told"; });
        // What a link has acquired is taken back, so that the next one shows.
        connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, &view, [&] {
            if (view.getCenter().x() == other.getCenter().x() && acquired.size() < 10)
                view.setCenter(QPointF(0.0, view.getCenter().y()), false);
        });
        acquired.clear();
        other.setCenter(QPointF(700.0, 400.0), true);
        QCOMPARE(acquired, QStringList({"700, 400", "0, 400", "700, 400", "0, 400", "told"}));
    }

    // The leader leaves the numbers that have a pixel, but the follower does not.
    void aScaleThatIsNoNumberIsNotTaken_data()
    {
        columns<int>("angle");
        row("far in", 120);
        row("far out", -120);
    }
    void aScaleThatIsNoNumberIsNotTaken()
    {
        QFETCH(int, angle);
        ShownView view;
        ShownView other;
        view.linkViewSettingsTo(&other, allSettings);
        for (int i = 0; i < 6000; ++i) {
            turnWheel(other, QPoint(130, 70), QPoint(0, angle));
            QVERIFY(std::isfinite(view.transform().m11()) && view.transform().m11() > 0.0);
            QVERIFY(std::isfinite(view.transform().m22()) && view.transform().m22() > 0.0);
        }
        other.resetTransform();
        other.setCenter(QPointF(300.0, 400.0), true);
        QCOMPARE(view.getCenter(), QPointF(300.0, 400.0));
        QVERIFY(isNear(view.pixelSize(), other.pixelSize()));
    }

    // What follows gets its turn in the order of the links.
    void linksRunInTheirOrder()
    {
        ShownView view;
        ShownView other;
        std::optional<QPointF> before;
        std::optional<QPointF> after;
        other.centerChanged.connect([&](const QPointF&) { before = view.getCenter(); });
        view.linkViewSettingsTo(&other, allSettings);
        other.centerChanged.connect([&](const QPointF&) { after = view.getCenter(); });
        other.setCenter(QPointF(7.0, 8.0), true);
        QCOMPARE(*before, QPointF(50.0, 0.0));
        QCOMPARE(*after, QPointF(7.0, 8.0));
    }

    void aLinkBlocksItselfWhileItRuns()
    {
        ShownView view;
        ShownView other;
        view.linkViewSettingsTo(&other, allSettings);
        // Scrolling is the one thing that tells of it while it runs.
        int depth = 0;
        connect(view.horizontalScrollBar(), &QScrollBar::valueChanged, &view, [&] {
            if (++depth < 5)
                other.setCenter(other.getCenter() + QPointF(10.0, 0.0), true);
        });
        other.setCenter(QPointF(1000.0, 0.0), true);
        QCOMPARE(depth, 1);
        QCOMPARE(other.getCenter(), QPointF(1010.0, 0.0));
        QCOMPARE(view.getCenter(), QPointF(1000.0, 0.0));
    }

    void linksDoNotOutliveAView()
    {
        auto follower = std::make_unique<ShownView>();
        auto followed = std::make_unique<ShownView>();
        follower->linkViewSettingsTo(followed.get(), allSettings);
        follower.reset();
        QCOMPARE(followed->zoomChanged.num_slots(), std::size_t(0));
        QCOMPARE(followed->centerChanged.num_slots(), std::size_t(0));
        turnWheel(*followed, QPoint(10, 10), QPoint(0, 120));

        follower = std::make_unique<ShownView>();
        follower->linkViewSettingsTo(followed.get(), allSettings);
        followed.reset();
        turnWheel(*follower, QPoint(10, 10), QPoint(0, 120));
    }

    void aViewMayGoWhileTheOtherTells_data()
    {
        columns<bool, bool, bool>("follower", "first", "byWheel");
        row("the follower, before its turn", true, true, false);
        row("the follower, after its turn", true, false, false);
        row("the followed one, before its follower's turn", false, true, false);
        row("the followed one, after its follower's turn", false, false, false);
        row("the follower, by the wheel", true, true, true);
        row("the followed one, by the wheel", false, true, true);
    }
    void aViewMayGoWhileTheOtherTells()
    {
        QFETCH(bool, follower);
        QFETCH(bool, first);
        QFETCH(bool, byWheel);
        QPointer<ShownView> view = new ShownView;
        QPointer<ShownView> other = new ShownView;
        const auto destroy = [=](const QPointF&) { delete (follower ? view : other); };
        if (first)
            other->centerChanged.connect(destroy);
        view->linkViewSettingsTo(other, allSettings);
        view->linkViewSettingsTo(other, allSettings);
        if (!first)
            other->centerChanged.connect(destroy);
        if (byWheel)
            turnWheel(*other, QPoint(10, 10), QPoint(0, 120));
        else
            other->setCenter(QPointF(70.0, 80.0), true);
        QCOMPARE(view.isNull(), follower);
        QCOMPARE(other.isNull(), !follower);
        if (!follower)
            QCOMPARE(view->getCenter(), first ? QPointF(50.0, 0.0) : QPointF(70.0, 80.0));
        delete view;
        delete other;
    }

    void viewsGoInAnyOrder()
    {
        QList<int> order = {0, 1, 2};
        do {
            std::vector<std::unique_ptr<ShownView>> views(3);
            for (auto& view : views)
                view = std::make_unique<ShownView>();
            for (std::size_t i = 0; i < 3; ++i) {
                EditorView::linkViewSettingsBidirectionally(
                    views[i].get(), views[(i + 1) % 3].get(), allSettings);
            }
            for (const int i : order) {
                views[std::size_t(i)].reset();
                for (auto& view : views) {
                    if (view)
                        turnWheel(*view, QPoint(10, 10), QPoint(0, 120));
                }
            }
        } while (std::next_permutation(order.begin(), order.end()));
    }
};

VRN_TEST(TestEditorViewLinks)
#include "tst_editor_view_links.moc"
