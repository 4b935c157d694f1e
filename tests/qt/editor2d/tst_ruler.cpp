#include "ruler_p.h"
#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cmath>
#include <limits>

using namespace vrn::test;
using namespace vrn::qt::graphics::detail;

using Ticks = QVector<double>;

namespace {

constexpr double inf = std::numeric_limits<double>::infinity();
const double noNumber = std::numeric_limits<double>::quiet_NaN();

template <typename Range>
Ticks listOf(const Range& range)
{
    Ticks ticks;
    for (const double x : range)
        ticks.append(x);
    return ticks;
}

} // namespace

// Where the ticks of a ruler are. How they are drawn is a matter of the view.
class TestRuler : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void aMinorStepIsALittleMoreThanTenPixels_data()
    {
        columns<double, double>("pixel", "step");
        row("1e-9", 1e-9, 0.1);
        row("1e-6", 1e-6, 0.1);
        row("0.001", 0.001, 0.1);
        row("0.0099, just below the first step", 0.0099, 0.1);
        row("0.01, where ten pixels are as long as the first step", 0.01, 0.2);
        row("0.015", 0.015, 0.2);
        row("0.02", 0.02, 0.5);
        row("0.049", 0.049, 0.5);
        row("0.05", 0.05, 1.0);
        row("0.1", 0.1, 2.0);
        row("0.19", 0.19, 2.0);
        row("0.2", 0.2, 5.0);
        row("0.5", 0.5, 10.0);
        row("0.99", 0.99, 10.0);
        row("1", 1.0, 20.0);
        row("2", 2.0, 50.0);
        row("5", 5.0, 100.0);
        row("9.99, just below the last step", 9.99, 100.0);
        row("10, from where no step is round", 10.0, 100.0);
        row("12.34", 12.34, 123.4);
        row("1e3", 1e3, 1e4);
        row("1e6", 1e6, 1e7);
        row("1e9", 1e9, 1e10);
        row("zero", 0.0, 0.1);
        row("a mirrored one", -1.0, 0.1);
        row("a large mirrored one", -1e9, 0.1);
        row("infinite", inf, inf);
    }
    void aMinorStepIsALittleMoreThanTenPixels()
    {
        QFETCH(double, pixel);
        QFETCH(double, step);
        QCOMPARE(minorStep(pixel), step);
    }

    void majorTicksAreMultiplesOfTheStep_data()
    {
        columns<double, double, double, Ticks>("low", "high", "step", "ticks");
        row("around zero", -12.0, 12.0, 5.0, Ticks{-10, -5, 0, 5, 10});
        row("at multiples", -10.0, 10.0, 5.0, Ticks{-10, -5, 0, 5, 10});
        row("a positive low end: the first lies outside", 7.0, 16.0, 5.0, Ticks{5, 10, 15});
        row("a negative high end: the last lies outside", -16.0, -7.0, 5.0, Ticks{-15, -10, -5});
        row("less than a step, positive", 6.0, 7.0, 5.0, Ticks{5});
        row("less than a step, around zero", -1.0, 1.0, 5.0, Ticks{0});
        row("less than a step, negative", -7.0, -6.0, 5.0, Ticks{-5});
        row("a point", 5.0, 5.0, 5.0, Ticks{5});
        row("mirrored", 12.0, -12.0, 5.0, Ticks{});
        row("mirrored, less than a step apart", 7.0, 6.0, 5.0, Ticks{5});
        row("mirrored around zero, less than a step apart", 1.0, -1.0, 5.0, Ticks{0});
        row("fractions", 0.4, 1.7, 0.5, Ticks{0, 0.5, 1, 1.5});
        row("more steps than an int counts", 3e12, 3e12 + 2.0, 1.0,
            Ticks{3e12, 3e12 + 1, 3e12 + 2});
        row("at 1e15", 1e15, 1e15 + 1.0, 0.5, Ticks{1e15, 1e15 + 0.5, 1e15 + 1});
        row("where the step is too small to add", 1e18, 1e18 + 1024.0, 0.5, Ticks{1e18});
        row("an infinite low end", -inf, 1.0, 1.0, Ticks{});
        row("an infinite high end", 1.0, inf, 1.0, Ticks{});
        row("both infinite", -inf, inf, 1.0, Ticks{});
        row("no number below", noNumber, 1.0, 1.0, Ticks{});
        row("no number above", 1.0, noNumber, 1.0, Ticks{});
        row("an infinite step", -1.0, 1.0, inf, Ticks{});
        row("a step that is not a number", -1.0, 1.0, noNumber, Ticks{});
        row("a step of zero", -1.0, 1.0, 0.0, Ticks{});
    }
    void majorTicksAreMultiplesOfTheStep()
    {
        QFETCH(double, low);
        QFETCH(double, high);
        QFETCH(double, step);
        QFETCH(Ticks, ticks);
        QCOMPARE(listOf(majorTicks(low, high, step)), ticks);
    }

    // What a tick is called must not depend on the side from which it is reached.
    void zeroHasNoSign()
    {
        const std::set<double> ticks = majorTicks(-0.3, 12.0, 5.0);
        QVERIFY(!std::signbit(*ticks.begin()));
    }

    void ticksComeByRepeatedAddition()
    {
        constexpr double step = 617.0000000000001;
        double x = std::trunc(-1e5 / step) * step;
        const double last = std::trunc(1e5 / step) * step;
        Ticks expected;
        for (; x <= last; x += step)
            expected.append(x);
        QCOMPARE(listOf(majorTicks(-1e5, 1e5, step)), expected);
    }

    // A view whose axes differ may have any number of ticks in its height. Up to ten thousand
    // are as they come.
    void moreTicksThanFitAreThinnedOut_data()
    {
        columns<double, double, double>("high", "distance", "count");
        row("ten thousand", 5000.0, 0.5, 10001.0);
        row("some more", 6000.0, 1.0, 6001.0);
        row("a million times as many", 5e9, 5e5, 10001.0);
        row("as many as there can be", 1e300, 0.0, 10001.0);
    }
    void moreTicksThanFitAreThinnedOut()
    {
        QFETCH(double, high);
        QFETCH(double, distance);
        QFETCH(double, count);
        const Ticks ticks = listOf(majorTicks(0.0, high, 0.5));
        const auto size = double(ticks.size());
        QVERIFY(size <= count && size > 0.9 * count);
        if (distance > 0.0)
            QCOMPARE(ticks[1], distance);
    }

    void minorTicksAreBetweenMajorOnes_data()
    {
        columns<Ticks, Ticks>("major", "minor");
        row("none", Ticks{}, Ticks{});
        row("none next to a single one", Ticks{5}, Ticks{});
        row("between two", Ticks{0, 5}, Ticks{0, 1, 2, 3, 4, 5});
        row("between three", Ticks{0, 5, 10}, Ticks{0, 1, 2, 3, 4, 5, 5, 6, 7, 8, 9, 10});
        // The sum of five fifths is more than a half.
        row("the last may be missing", Ticks{1.0, 1.0 + 0x1p-52}, Ticks{1.0});
    }
    void minorTicksAreBetweenMajorOnes()
    {
        QFETCH(Ticks, major);
        QFETCH(Ticks, minor);
        const std::set<double> ticks(major.begin(), major.end());
        QCOMPARE(listOf(minorTicks(ticks)), minor);
    }

    void anyRangeEnds_data()
    {
        columns<double>("center");
        for (const double center : {0.0, 1.0, 1e9, 1e15, -1e15, 1e18, 1e300, -1e300})
            QTest::addRow("around %g", center) << center;
    }
    void anyRangeEnds()
    {
        QFETCH(double, center);
        verifyTakesAtMost(timeLimitMs(1000), "all ranges", [&] {
            for (double pixel = 1e-300; pixel < 1e300; pixel *= 1e30) {
                for (const double factor : {1.0, -1.0, 1e-12, 1e12}) {
                    const double width = 1000.0 * pixel * factor;
                    const auto ticks = majorTicks(
                        center - width, center + width, 5.0 * minorStep(pixel));
                    QVERIFY(ticks.size() <= 20000);
                    QVERIFY(minorTicks(ticks).size() <= 10 * ticks.size());
                }
            }
        });
    }
};

VRN_TEST(TestRuler)
#include "tst_ruler.moc"
