#include <vrn/base/any_predicates.h>
#include <vrn/qt/multi_edit_value.h>
#include <vrn/units/i_converter.h>

#include "support/test_main.h"
#include "support/test_object.h"

#include <vector>

using vrn::qt::MultiEditValue;

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

} // namespace

class TestMultiEditValue : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TestObject::init();
        asked.clear();
    }

    // Worked examples. The random sequence beside a model holds all states.
    void threeObjectsOfWhichTheFirstAndTheLastAreAlikeVary()
    {
        MultiEditValue value(&recordingDiffer);
        value.readValue(1);
        QCOMPARE(value.getCurrentValue(), boost::any(1));
        QCOMPARE(asked.size(), std::size_t(0));
        for (const int read : {2, 1}) {
            value.readValue(read);
            QVERIFY(value.dataVaries());
            QVERIFY(value.getCurrentValue().empty());
            QCOMPARE(asked.size(), std::size_t(1));
        }
    }

    void theReadAfterResetAndForceVariesIsTheFirst()
    {
        MultiEditValue value(&recordingDiffer);
        value.readValue(1);
        value.reset();
        value.forceVaries();
        value.readValue(2);
        QVERIFY(!value.dataVaries());
        QCOMPARE(value.getCurrentValue(), boost::any(2));
        QCOMPARE(asked.size(), std::size_t(0));
    }

    void aForeignTypeDiffers()
    {
        MultiEditValue value(&recordingDiffer);
        value.readValue(1);
        value.readValue(std::string("1"));
        QVERIFY(value.dataVaries());
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
