#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <limits>
#include <stdexcept>

using namespace vrn::test;
using namespace vrn::units;

class TestUnitsetFormatProvider : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theDefaultOfASetInASystem_data()
    {
        columns<int, int, int, int, int>("system", "set", "unit", "precision", "format");
        row("length in system 0", 0, 1001, 13, 3, 0);
        row("length in system 8", 8, 1001, 213, 2, 0);
        row("thickness in system 1", 1, 1010, 15, 2, 0);
        row("code 103 is scientific with 3 digits", 0, 1083, 107, 3, 1);
        row("code 5 is fixed with 5 digits", 9, 1033, 3, 5, 0);
        row("the last column", 9, 1001, 214, 2, 0);
    }
    void theDefaultOfASetInASystem()
    {
        QFETCH(int, system);
        QFETCH(int, set);
        QFETCH(int, unit);
        QFETCH(int, precision);
        QFETCH(int, format);
        const UnitsetFormatProvider formats(system);
        QCOMPARE(int(formats.get_unit(unitId(set))), unit);
        QCOMPARE(formats.get_precision(unitId(set)), precision);
        QCOMPARE(formats.get_format(unitId(set)), format);
        QVERIFY(!formats.get_label(unitId(set)));
        QVERIFY(formats.is_known(unitId(set)));
    }

    void aSystemThatDoesNotExistIsReportedAndTheSetIsNotKnown_data()
    {
        columns<int>("system");
        row("one after the last", 10);
        row("a negative index", -1);
        row("the highest index", std::numeric_limits<int>::max());
    }
    void aSystemThatDoesNotExistIsReportedAndTheSetIsNotKnown()
    {
        QFETCH(int, system);
        const UnitsetFormatProvider formats(system);
        const std::string expression = "index < defaults_of_one_unit->size()";
        expectAssert(expression, {"system_index", "id"});
        QVERIFY(!formats.is_known(UnitId::GEO_LENGTH));
        QCOMPARE(
            asserts().last().file, std::string("units/src/unitset/unitset_format_provider.cpp"));
        expectAssert(expression, {"system_index", "id"});
        QCOMPARE(thrownText<std::invalid_argument>([&] { formats.get_unit(UnitId::GEO_LENGTH); }),
            "Invalid unit id.");
        // A unit has no default in a system, so asking for one is not an error.
        QCOMPARE(formats.get_precision(UnitId::METRE), 3);
    }

    // Only a set has a default in the system, and a gap is not a set.
    void aGapAmongTheSetsIsNotReportedInASystemThatDoesNotExist()
    {
        QVERIFY(!UnitsetFormatProvider(10).is_known(unitId(1106)));
    }

    // An id below 1000 that is not a unit has a format, but no precision.
    void whatIsKnown_data()
    {
        columns<int, bool, bool>("id", "known", "hasPrecision");
        row("a unit", 13, true, true);
        row("an id below 1000 that is not a unit", 12, true, false);
        row("the last id below 1000", 999, true, false);
        row("zero", 0, true, true);
        row("a negative id", -1, false, false);
        row("the lowest id", std::numeric_limits<int>::min(), false, false);
        row("a set", 1291, true, true);
        row("the gap after 1034", 1035, false, false);
        row("the gap before 1080", 1079, false, false);
        row("the gap at 1084", 1084, false, false);
        row("the gap at 1106", 1106, false, false);
        row("the gap at 1110", 1110, false, false);
        row("the highest id", std::numeric_limits<int>::max(), false, false);
    }
    void whatIsKnown()
    {
        QFETCH(int, id);
        QFETCH(bool, known);
        QFETCH(bool, hasPrecision);
        const UnitsetFormatProvider formats;
        QCOMPARE(formats.is_known(unitId(id)), known);
        const auto refusal = [](bool answers) { return answers ? "" : "Invalid unit id."; };
        using Error = std::invalid_argument;
        QCOMPARE(thrownText<Error>([&] { formats.get_unit(unitId(id)); }), refusal(known));
        QCOMPARE(
            thrownText<Error>([&] { formats.get_precision(unitId(id)); }), refusal(hasPrecision));
        QCOMPARE(thrownText<Error>([&] { formats.get_format(unitId(id)); }), refusal(known));
        QCOMPARE(thrownText<Error>([&] { formats.get_label(unitId(id)); }), refusal(known));
        if (known && id < 1000) {
            QCOMPARE(int(formats.get_unit(unitId(id))), id);
            QCOMPARE(formats.get_format(unitId(id)), 0);
            QVERIFY(!formats.get_label(unitId(id)));
        }
    }

    void aUnitIsShownAsItself()
    {
        const UnitsetFormatProvider formats(8);
        QCOMPARE(int(formats.get_unit(UnitId::CENTIMETRE)), 15);
        QCOMPARE(formats.get_precision(UnitId::CENTIMETRE), 1);
        QCOMPARE(formats.get_format(UnitId::CENTIMETRE), 0);
        QCOMPARE(formats.get_precision(UnitId::PER_KELVIN), 3);
        QCOMPARE(formats.get_format(UnitId::PER_KELVIN), 1);
        QVERIFY(!formats.get_label(UnitId::CENTIMETRE));
    }

    // The table of sets begins with a row of the id 0 that shows unit 1 with 3 digits and
    // stands for no set: it must not be found.
    void theIdZeroIsTheBlankUnitInEverySystem_data()
    {
        columns<int>("system");
        row("the first", 0);
        row("the last", 9);
        row("one that does not exist, which is reported only for a set", 10);
    }
    void theIdZeroIsTheBlankUnitInEverySystem()
    {
        QFETCH(int, system);
        UnitsetFormatProvider formats(system);
        QCOMPARE(int(formats.get_unit(UnitId::BLANK)), 0);
        QVERIFY(!formats.get_label(UnitId::BLANK));
        // An override copies the default of a set. A unit has no such default.
        formats.set_format(UnitId::BLANK, 1);
        QCOMPARE(int(formats.get_unit(UnitId::BLANK)), 0);
        QCOMPARE(formats.get_precision(UnitId::BLANK), 0);
    }

    void aSetterOnASetKeepsTheOtherFields()
    {
        UnitsetFormatProvider formats(1);
        formats.set_precision(UnitId::THERMAL_EXP, 7);
        QCOMPARE(int(formats.get_unit(UnitId::THERMAL_EXP)), 107);
        QCOMPARE(formats.get_precision(UnitId::THERMAL_EXP), 7);
        QCOMPARE(formats.get_format(UnitId::THERMAL_EXP), 1);

        formats.set_unit(UnitId::THERMAL_EXP, UnitId::PER_DEGREE_FAHRENHEIT);
        QCOMPARE(formats.get_precision(UnitId::THERMAL_EXP), 7);
        formats.set_format(UnitId::THERMAL_EXP, 0);
        QCOMPARE(int(formats.get_unit(UnitId::THERMAL_EXP)), 210);
        QCOMPARE(formats.get_format(UnitId::THERMAL_EXP), 0);
        QCOMPARE(formats.overrides().size(), std::size_t(1));
    }

    void theFirstOverrideOfAUnitStartsFromABlank()
    {
        UnitsetFormatProvider formats;
        formats.set_precision(UnitId::PER_KELVIN, 2);
        QCOMPARE(int(formats.get_unit(UnitId::PER_KELVIN)), 0);
        QCOMPARE(formats.get_precision(UnitId::PER_KELVIN), 2);
        QCOMPARE(formats.get_format(UnitId::PER_KELVIN), 0);

        formats.set_unit(UnitId::PER_KELVIN, UnitId::PER_KELVIN);
        QCOMPARE(int(formats.get_unit(UnitId::PER_KELVIN)), 107);
        QCOMPARE(formats.get_precision(UnitId::PER_KELVIN), 2);
    }

    void anOverrideMakesAnyIdKnown()
    {
        UnitsetFormatProvider formats;
        formats.set_unit(unitId(1035), UnitId::METRE);
        QVERIFY(formats.is_known(unitId(1035)));
        QCOMPARE(int(formats.get_unit(unitId(1035))), 13);
        formats.set_precision(unitId(-1), 4);
        QVERIFY(formats.is_known(unitId(-1)));
        QCOMPARE(formats.get_precision(unitId(-1)), 4);
    }

    void anOverrideCountsAsAWhole()
    {
        const UnitsetFormatProvider formats(0, {{UnitId::THERMAL_EXP, unitFormat(210, 0)}});
        QCOMPARE(int(formats.get_unit(UnitId::THERMAL_EXP)), 210);
        QCOMPARE(formats.get_precision(UnitId::THERMAL_EXP), 0);
        QCOMPARE(formats.get_format(UnitId::THERMAL_EXP), 0);
    }

    void labels()
    {
        UnitsetFormatProvider formats;
        formats.set_label(UnitId::GEO_LENGTH, std::string("'"));
        QCOMPARE(formats.get_label(UnitId::GEO_LENGTH).get(), std::string("'"));
        // A later setter keeps the label.
        formats.set_unit(UnitId::GEO_LENGTH, UnitId::FOOT);
        QCOMPARE(formats.get_label(UnitId::GEO_LENGTH).get(), std::string("'"));
        formats.set_label(UnitId::GEO_LENGTH, std::string());
        QCOMPARE(formats.get_label(UnitId::GEO_LENGTH).get(), std::string());
        formats.set_label(UnitId::GEO_LENGTH, boost::none);
        QVERIFY(!formats.get_label(UnitId::GEO_LENGTH));
        QCOMPARE(int(formats.get_unit(UnitId::GEO_LENGTH)), 213);
    }
};

VRN_TEST(TestUnitsetFormatProvider)
#include "tst_unitset_format_provider.moc"
