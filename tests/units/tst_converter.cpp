#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <cmath>
#include <limits>
#include <stdexcept>

using namespace vrn::test;
using namespace vrn::units;

class TestConverter : public TestObject
{
    Q_OBJECT

private:
    VarnelikUnitProvider m_units;

    Converter converter() const
    {
        Converter result;
        result.set_unit_provider(&m_units);
        return result;
    }

private Q_SLOTS:
    void saysWhatConverts_data()
    {
        columns<int, int, bool>("from", "to", "converts");
        row("a unit to itself", 13, 13, true);
        row("an unknown unit to itself", 12, 12, true);
        row("a set to itself", 1001, 1001, true);
        row("units of one dimension", 11, 213, true);
        row("units of two dimensions", 13, 22, false);
        row("units of one symbol and two dimensions", 202, 6, false);
        row("a listed unit to its set", 13, 1001, true);
        row("a set to a unit that it lists", 1001, 13, true);
        row("a length that the set does not list", 14, 1001, false);
        row("a set to a length that it does not list", 1001, 14, false);
        row("two sets of length", 1000, 1001, false);
        row("a display unit to its set where listed", 215, 1001, true);
        row("a display unit to a set that does not list it", 215, 1006, false);
        row("a default unit that its set does not list", 189, 1100, false);
        row("a set to a default unit that it does not list", 1182, 54, false);
    }
    void saysWhatConverts()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(bool, converts);
        QCOMPARE(converter().can_convert(unitId(from), unitId(to)), converts);
    }

    void anUnknownUnitIsRefused_data()
    {
        columns<int, int>("from", "to");
        row("from a gap", 12, 13);
        row("to a gap", 13, 12);
        row("to a gap from a set", 1001, 12);
        row("from a negative id", -1, 13);
        row("to the highest id", 13, std::numeric_limits<int>::max());
        // can_convert() does not look for the unit here, but the unit has no factor.
        row("from a gap to itself", 12, 12);
    }
    void anUnknownUnitIsRefused()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        using Error = std::invalid_argument;
        const auto convert = [&] { converter().convert({unitId(from), 1.0}, unitId(to)); };
        QCOMPARE(thrownText<Error>(convert), "unit_id");
        if (from != to) {
            QCOMPARE(thrownText<Error>([&] { converter().can_convert(unitId(from), unitId(to)); }),
                "unit_id");
        }
    }

    void converts_data()
    {
        columns<int, double, int, double>("from", "value", "to", "expected");
        row("feet to the set in base scale", 213, 1.0, 1001, 0.3048);
        row("the set in base scale to millimetres", 1001, 0.012, 16, 12.0);
        row("kips to kilonewtons", 262, 2.0, 62, 8.89644323);
        row("a negative value", 16, -5.0, 13, -0.005);
        row("zero degrees Celsius are zero degrees Fahrenheit", 202, 0.0, 204, 0.0);
        row("twenty degrees Celsius are twenty kelvins", 6, 20.0, 209, 20.0);
        row("a difference of nine degrees Fahrenheit", 204, 9.0, 201, 5.0000000004);
    }
    void converts()
    {
        QFETCH(int, from);
        QFETCH(double, value);
        QFETCH(int, to);
        QFETCH(double, expected);
        const auto result = converter().convert({unitId(from), value}, unitId(to));
        QCOMPARE(int(result.unit_id), to);
        QCOMPARE(result.value, expected);
    }

    void theReciprocalOfTheFactorIsMultiplied()
    {
        // A division gives another last digit here.
        const volatile double foot = 0.3048;
        const volatile double inch = 0.0254;
        int different = 0;
        for (int value = 1; value <= 1000; ++value) {
            const double product = foot * value;
            const volatile double reciprocal = 1.0 / inch;
            const auto result = converter().convert({UnitId::FOOT, double(value)}, UnitId::INCH);
            QVERIFY(result.value == product * reciprocal);
            different += result.value != product / inch ? 1 : 0;
        }
        QVERIFY(different > 0);
    }

    void infinityAndNotANumberStayWhatTheyAre()
    {
        const double infinite = std::numeric_limits<double>::infinity();
        const double none = std::numeric_limits<double>::quiet_NaN();
        QCOMPARE(converter().convert({UnitId::FOOT, -infinite}, UnitId::METRE).value, -infinite);
        QVERIFY(std::isnan(converter().convert({UnitId::FOOT, none}, UnitId::METRE).value));
    }

    void quantitiesAreComparedWithoutConversion_data()
    {
        columns<int, double, bool>("id", "value", "equal");
        row("the same number and unit", 13, 1.0, true);
        row("another number", 13, std::nextafter(1.0, 2.0), false);
        row("another unit", 16, 1.0, false);
        row("the same length in another unit", 16, 1000.0, false);
        row("the same length under a set", 1001, 1.0, false);
        row("no number", 13, std::numeric_limits<double>::quiet_NaN(), false);
    }
    void quantitiesAreComparedWithoutConversion()
    {
        QFETCH(int, id);
        QFETCH(double, value);
        QFETCH(bool, equal);
        const IConverter::quantity metre{UnitId::METRE, 1.0};
        const IConverter::quantity other{unitId(id), value};
        QCOMPARE(metre == other, equal);
        QCOMPARE(other == metre, equal);
        QCOMPARE(metre != other, !equal);
        QCOMPARE(other != metre, !equal);
    }

    void incompatibleUnitsAreReportedAndRefused()
    {
        expectAssert("can_convert(q.unit_id, unit_id)", {"q.unit_id", "unit_id"});
        QCOMPARE(thrownText<std::invalid_argument>([&] {
            converter().convert({UnitId::GEO_LENGTH, 5.0}, UnitId::GEO_DISTANCE);
        }),
            "Incompatible units.");
        QCOMPARE(asserts().last().values.at(0).second, std::string("1001"));
        QCOMPARE(asserts().last().values.at(1).second, std::string("1000"));
    }

    void toBaseAndFromBaseUseTheFactor()
    {
        QCOMPARE(converter().to_base({UnitId::INCH, 10.0}), 0.254);
        QCOMPARE(converter().to_base({UnitId::GEO_LENGTH, 10.0}), 10.0);
        const auto inches = converter().from_base(0.254, UnitId::INCH);
        QCOMPARE(int(inches.unit_id), 214);
        // This is a true division, unlike that in convert().
        QVERIFY(inches.value == 0.254 / 0.0254);
    }
};

VRN_TEST(TestConverter)
#include "tst_converter.moc"
