#include <vrn/base/any_predicates.h>
#include <vrn/qt/multi_edit_value.h>
#include <vrn/units/i_converter.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <functional>
#include <vector>

using vrn::qt::MultiEditValue;
using vrn::test::row;

namespace {

// The arguments of the predicate, call by call.
std::vector<std::pair<boost::any, boost::any>> asked;

bool recordingDiffer(const boost::any& a, const boost::any& b)
{
    asked.emplace_back(a, b);
    return vrn::any_differ<int>(a, b);
}

// Answers "they differ" for values that are equal.
bool contrary(const boost::any& a, const boost::any& b)
{
    return vrn::any_equal<int>(a, b);
}

using Step = std::function<void(MultiEditValue&)>;
using Steps = std::vector<Step>;

Step reset()
{
    return [](MultiEditValue& value) { value.reset(); };
}

Step read(const boost::any& read)
{
    return [read](MultiEditValue& value) { value.readValue(read); };
}

Step set(const boost::any& set)
{
    return [set](MultiEditValue& value) { value.setValue(set); };
}

Step forceVaries()
{
    return [](MultiEditValue& value) { value.forceVaries(); };
}

} // namespace

Q_DECLARE_METATYPE(Steps)

class TestMultiEditValue : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        asked.clear();
    }

    void whatStepsLeadTo_data()
    {
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<bool>("varies");
        QTest::addColumn<boost::any>("current");
        QTest::addColumn<int>("comparisons");
        const boost::any a = 1;
        const boost::any b = 2;
        const boost::any none;
        // clang-format off
        row("a new one has no value", Steps{}, false, none, 0);
        row("the first read sets the value, and nothing is compared", Steps{read(a)}, false, a, 0);
        row("equal values are common", Steps{read(a), read(a), read(a)}, false, a, 2);
        row("different values vary", Steps{read(a), read(b)}, true, none, 1);
        row("a, b, a varies from the second on, and compares no more", Steps{read(a), read(b), read(a), read(a)}, true, none, 1);
        row("reset forgets the value", Steps{read(a), reset()}, false, none, 0);
        row("reset ends a variation", Steps{read(a), read(b), reset()}, false, none, 1);
        row("after a reset the next read is the first", Steps{read(a), read(b), reset(), read(b)}, false, b, 1);
        row("forceVaries hides the value", Steps{read(a), forceVaries()}, true, none, 0);
        row("after forceVaries reads do nothing", Steps{read(a), forceVaries(), read(a)}, true, none, 0);
        row("forceVaries keeps fresh: the read after reset and forceVaries is taken", Steps{read(a), reset(), forceVaries(), read(b)}, false, b, 0);
        row("forceVaries on a new one varies", Steps{forceVaries()}, true, none, 0);
        row("setValue ends a variation", Steps{read(a), read(b), set(a)}, false, a, 1);
        row("after setValue a read is compared with what was set", Steps{read(a), set(b), read(b)}, false, b, 1);
        row("after setValue a different read varies", Steps{read(a), set(b), read(a)}, true, none, 1);
        row("setValue keeps fresh: the read after it is the first", Steps{set(a), read(b)}, false, b, 0);
        row("the stored value outlives a variation", Steps{read(a), forceVaries(), set(b), read(b)}, false, b, 1);
        row("an empty value is a value: two are equal", Steps{read(none), read(none)}, false, none, 1);
        row("an empty value differs from another", Steps{read(a), read(none)}, true, none, 1);
        row("a foreign type differs", Steps{read(a), read(std::string("1"))}, true, none, 1);
        row("setValue of an empty value has no value", Steps{read(a), set(none)}, false, none, 0);
        // clang-format on
    }
    void whatStepsLeadTo()
    {
        QFETCH(Steps, steps);
        MultiEditValue value(&recordingDiffer);
        for (const Step& step : steps)
            step(value);
        QTEST(value.dataVaries(), "varies");
        QTEST(value.getCurrentValue(), "current");
        QTEST(int(asked.size()), "comparisons");
    }

    void thePredicateIsAskedWithTheReadAndTheStoredValue()
    {
        MultiEditValue value(&recordingDiffer);
        value.readValue(1);
        value.readValue(2);
        QCOMPARE(asked.size(), std::size_t(1));
        QCOMPARE(asked.front().first, boost::any(2));
        QCOMPARE(asked.front().second, boost::any(1));
    }

    void theAnswerOfThePredicateIsNotNegated()
    {
        MultiEditValue value(&contrary);
        value.readValue(1);
        value.readValue(2);
        QVERIFY(!value.dataVaries());
        value.readValue(1);
        QVERIFY(value.dataVaries());
    }

    void quantitiesAreComparedByTheReadyMadePredicate()
    {
        namespace units = vrn::units;
        using units::IConverter;
        const IConverter::quantity metre{units::UnitId::GEO_LENGTH, 1.0};
        MultiEditValue value(&vrn::any_differ<IConverter::quantity>);
        value.readValue(metre);
        value.readValue(metre);
        QVERIFY(!value.dataVaries());
        value.readValue(IConverter::quantity{units::UnitId::GEO_DISTANCE, 1.0});
        QVERIFY(value.dataVaries());
    }

    void theFirstReadGoesThroughTheVirtualSetValue()
    {
        struct Doubling : public MultiEditValue
        {
            Doubling()
                : MultiEditValue(&recordingDiffer)
            {}
            void setValue(const boost::any& value) override
            {
                MultiEditValue::setValue(2 * boost::any_cast<int>(value));
            }
        };
        Doubling value;
        value.readValue(21);
        QCOMPARE(value.getCurrentValue(), boost::any(42));
        value.readValue(42);
        QVERIFY(!value.dataVaries());
    }

    void aMissingPredicateIsReportedAndAnyTwoValuesDiffer()
    {
        expectAssert("fn");
        MultiEditValue value(nullptr);
        value.readValue(1);
        QCOMPARE(value.getCurrentValue(), boost::any(1));
        value.readValue(1);
        QVERIFY(value.dataVaries());
    }
};

VRN_TEST(TestMultiEditValue)
#include "tst_multi_edit_value.moc"
