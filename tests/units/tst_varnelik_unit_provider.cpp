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
    void knowsUnitsAndSets_data()
    {
        QTest::addColumn<int>("id");
        QTest::addColumn<bool>("known");

        QTest::newRow("the first unit") << 0 << true;
        QTest::newRow("a unit") << 13 << true;
        QTest::newRow("the last unit") << 403 << true;
        QTest::newRow("the gap at 12") << 12 << false;
        QTest::newRow("the gap at 200") << 200 << false;
        QTest::newRow("the gap at 294") << 294 << false;
        QTest::newRow("the gap at 360") << 360 << false;
        QTest::newRow("the gap at 394") << 394 << false;
        QTest::newRow("behind the last unit") << 404 << false;
        QTest::newRow("below the first set") << 999 << false;
        QTest::newRow("the first set") << 1000 << true;
        QTest::newRow("a gap among the sets") << 1035 << false;
        QTest::newRow("the last set") << 1291 << true;
        QTest::newRow("behind the last set") << 1292 << false;
        QTest::newRow("a negative id") << -1 << false;
        QTest::newRow("the lowest id") << std::numeric_limits<int>::min() << false;
        QTest::newRow("the highest id") << std::numeric_limits<int>::max() << false;
    }

    void knowsUnitsAndSets()
    {
        QFETCH(int, id);
        QFETCH(bool, known);

        QCOMPARE(VarnelikUnitProvider().is_known(unitId(id)), known);
    }

    void everyGetterRefusesAnUnknownId_data()
    {
        QTest::addColumn<int>("id");

        QTest::newRow("a gap among the units") << 12;
        QTest::newRow("a gap among the sets") << 1106;
        QTest::newRow("a negative id") << -1;
        QTest::newRow("the lowest id") << std::numeric_limits<int>::min();
        QTest::newRow("the highest id") << std::numeric_limits<int>::max();
    }

    void everyGetterRefusesAnUnknownId()
    {
        QFETCH(int, id);

        const VarnelikUnitProvider units;
        const auto unit = unitId(id);
        using Error = std::invalid_argument;
        QCOMPARE(thrownText<Error>([&] { units.get_dimension(unit); }), "unit_id");
        QCOMPARE(thrownText<Error>([&] { units.get_factor(unit); }), "unit_id");
        QCOMPARE(thrownText<Error>([&] { units.get_symbol(unit); }), "unit_id");
        QCOMPARE(thrownText<Error>([&] { units.get_alternative_symbols(unit); }), "unit_id");
        QCOMPARE(thrownText<Error>([&] { units.get_compatible_units(unit); }), "unit_id");
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
    }

    void theBaseFlagIsNoPartOfTheDimension()
    {
        QCOMPARE(VarnelikUnitProvider().get_dimension(UnitId::KILONEWTON), 0x011E01U);
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

    void aSetHasNoAlternativeSymbols()
    {
        QCOMPARE(thrownText<std::invalid_argument>(
                     [] { VarnelikUnitProvider().get_alternative_symbols(UnitId::GEO_LENGTH); }),
            "unit_id");
    }
};

VRN_TEST(TestVarnelikUnitProvider)
#include "tst_varnelik_unit_provider.moc"
