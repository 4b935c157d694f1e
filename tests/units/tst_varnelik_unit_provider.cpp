#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <limits>
#include <stdexcept>

using namespace vrn::test;
using namespace vrn::units;

class TestVarnelikUnitProvider : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void knowsUnitsAndSetsAndRefusesOtherIds_data()
    {
        columns<int, bool>("id", "known");
        row("the first unit", 0, true);
        row("a unit", 13, true);
        row("the last unit", 403, true);
        row("the gap at 12", 12, false);
        row("the gap at 200", 200, false);
        row("the gap at 294", 294, false);
        row("the gap at 360", 360, false);
        row("the gap at 394", 394, false);
        row("after the last unit", 404, false);
        row("below the first set", 999, false);
        row("the first set", 1000, true);
        row("a gap among the sets", 1035, false);
        row("the last set", 1291, true);
        row("after the last set", 1292, false);
        row("a negative id", -1, false);
        row("the lowest id", std::numeric_limits<int>::min(), false);
        row("the highest id", std::numeric_limits<int>::max(), false);
    }
    void knowsUnitsAndSetsAndRefusesOtherIds()
    {
        QFETCH(int, id);
        QFETCH(bool, known);
        const VarnelikUnitProvider units;
        const auto unit = unitId(id);
        QCOMPARE(units.is_known(unit), known);
        // A set is known, but has no alternative symbols.
        const QString refusal = known ? QString() : "unit_id";
        const QString refusalOfSets = id >= 1000 ? "unit_id" : refusal;
        using Error = std::invalid_argument;
        QCOMPARE(thrownText<Error>([&] { units.get_dimension(unit); }), refusal);
        QCOMPARE(thrownText<Error>([&] { units.get_factor(unit); }), refusal);
        QCOMPARE(thrownText<Error>([&] { units.get_symbol(unit); }), refusal);
        QCOMPARE(thrownText<Error>([&] { units.get_alternative_symbols(unit); }), refusalOfSets);
        QCOMPARE(thrownText<Error>([&] { units.get_compatible_units(unit); }), refusal);
    }

    void allIdsAreUnitsThenSetsInTableOrder()
    {
        std::vector<UnitId::UnitId> expected;
        for (const UnitRecord& each : list_units())
            expected.push_back(each.id);
        for (const UnitSetRow& each : list_unit_sets())
            expected.push_back(unitId(each.id));

        QCOMPARE(expected.size(), std::size_t(399 + 135));
        QVERIFY(VarnelikUnitProvider().get_all_ids() == expected);
    }

    void aUnitAnswersFromItsRow()
    {
        const VarnelikUnitProvider units;
        QCOMPARE(units.get_dimension(UnitId::KIP), 0x011E01U);
        QCOMPARE(units.get_factor(UnitId::KIP), 4.448221615);
        QCOMPARE(units.get_symbol(UnitId::KIP), std::string("kip"));
        QVERIFY(units.get_alternative_symbols(UnitId::KIP).empty());
        QVERIFY(units.get_compatible_units(UnitId::KIP).empty());
        // The flag of a base unit is not a part of its dimension.
        QCOMPARE(units.get_dimension(UnitId::KILONEWTON), 0x011E01U);
    }

    void aSetHasItsFirstUnitsDimensionTheFactorOneAndNoSymbol()
    {
        const VarnelikUnitProvider units;
        QCOMPARE(units.get_dimension(UnitId::TENDON_FORCE), 0x011E01U);
        // The first unit that it lists decides, not the one that it shows.
        QCOMPARE(units.get_dimension(UnitId::TEMP_DIFF), 0x100000U);
        QCOMPARE(units.get_factor(UnitId::TENDON_FORCE), 1.0);
        QVERIFY(units.get_symbol(UnitId::TENDON_FORCE).empty());
    }
};

VRN_TEST(TestVarnelikUnitProvider)
#include "tst_varnelik_unit_provider.moc"
