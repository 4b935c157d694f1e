#include <vrn/assert/smart_assert.h>

#include "support/test_main.h"

#include <QTest>

#include <vector>

using namespace vrn::smartassert;

namespace {

// Collects reports while it lives.
struct Collector
{
    Collector()
        : previous(set_assert_handler([this](const AssertReport& r) { reports.push_back(r); }))
    {}
    ~Collector() { set_assert_handler(previous); }

    std::vector<AssertReport> reports;
    AssertHandler previous;
};

} // namespace

class TestSmartAssert : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aTrueConditionReportsNothingAndEvaluatesNoValues()
    {
        Collector collector;
        int evaluated = 0;
        VRN_ASSERT(1 < 2)("evaluated", ++evaluated);
        QVERIFY(collector.reports.empty());
        QCOMPARE(evaluated, 0);
    }

    void aReportHasTheExpressionAsItStands()
    {
        Collector collector;
        const int low = 2;
        VRN_ASSERT(low < 1);
        QCOMPARE(collector.reports.size(), std::size_t(1));
        QCOMPARE(collector.reports[0].expression, std::string("low < 1"));
        QVERIFY(collector.reports[0].message.empty());
        QVERIFY(collector.reports[0].values.empty());
    }

    void theFileIsRelativeToTheProject()
    {
        Collector collector;
        VRN_ASSERT(false);
        const int line = __LINE__ - 1;
        QCOMPARE(collector.reports[0].file, std::string("tests/companion/tst_smart_assert.cpp"));
        QCOMPARE(collector.reports[0].line, line);
    }

    void valuePairsKeepTheirOrderAndEveryDigit()
    {
        Collector collector;
        VRN_ASSERT(false)("third", 1.0 / 3.0)("name", "steel")("flag", true);
        const std::vector<std::pair<std::string, std::string>> expected = {
            {"third", "0.33333333333333331"}, {"name", "steel"}, {"flag", "true"}};
        QVERIFY(collector.reports[0].values == expected);
    }

    void aMessageComesAlong()
    {
        Collector collector;
        VRN_ASSERT_MESSAGE(false, "no more than one");
        QCOMPARE(collector.reports[0].message, std::string("no more than one"));
    }

    void executionGoesOn()
    {
        Collector collector;
        int steps = 0;
        for (int i = 0; i < 3; ++i) {
            VRN_ASSERT(i < 0);
            ++steps;
        }
        QCOMPARE(steps, 3);
        QCOMPARE(collector.reports.size(), std::size_t(3));
    }

    void anAssertionIsOneStatementUnderAnIf()
    {
        Collector collector;
        bool elseRan = false;
        if (steelIsWood())
            VRN_ASSERT(false);
        else
            elseRan = true;
        QVERIFY(elseRan);
        QVERIFY(collector.reports.empty());
    }

    void settingAHandlerReturnsTheOneBefore()
    {
        int outer = 0;
        const AssertHandler original = set_assert_handler([&](const AssertReport&) { ++outer; });
        const AssertHandler previous = set_assert_handler([](const AssertReport&) {});
        previous({});
        QCOMPARE(outer, 1);
        set_assert_handler(original);
    }

    void anEmptyHandlerBringsBackTheDefault()
    {
        const AssertHandler original = set_assert_handler({});
        const AssertHandler current = set_assert_handler({});
        QVERIFY(current);
        set_assert_handler(original);
    }

    void aHandlerMayAssertAndReplaceItself()
    {
        int depth = 0;
        const AssertHandler original = set_assert_handler([&](const AssertReport&) {
            ++depth;
            set_assert_handler([&](const AssertReport&) { depth += 10; });
            VRN_ASSERT(depth == 0);
        });
        VRN_ASSERT(false);
        set_assert_handler(original);
        QCOMPARE(depth, 11);
    }

private:
    static bool steelIsWood() { return false; }
};

VRN_TEST(TestSmartAssert)
#include "tst_smart_assert.moc"
