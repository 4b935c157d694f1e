#include "schema_enumerators.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_file.h"
#include "unit_test_support.h"

#include <algorithm>
#include <map>
#include <set>

using namespace vrn::test;
using namespace vrn::units;

class TestUnitCatalogue : public TestObject
{
    Q_OBJECT

private:
    std::vector<UnitRecord> m_units = list_units();

    const UnitRecord& unit(int id) const
    {
        return *std::find_if(m_units.begin(), m_units.end(),
            [id](const UnitRecord& each) { return each.id == unitId(id); });
    }

private Q_SLOTS:
    void everyRowIsAsInTheTable_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QStringList>("row");

        int position = 0;
        for (const QStringList& row : readTable("units.tsv")) {
            QTest::addRow("unit %s %s", qPrintable(row.at(0)), qPrintable(row.at(5)))
                << position++ << row;
        }
    }
    void everyRowIsAsInTheTable()
    {
        QFETCH(int, position);
        QFETCH(QStringList, row);
        const UnitRecord& record = m_units.at(static_cast<std::size_t>(position));
        QCOMPARE(int(record.id), row.at(0).toInt());
        QCOMPARE(record.dimension, row.at(1).toUInt(nullptr, 16));
        QCOMPARE(record.is_base, row.at(2) == "base");
        QCOMPARE(record.precision, row.at(3).toInt());
        // Bit for bit: QCOMPARE would accept other last digits.
        QVERIFY(record.factor == row.at(4).toDouble());
        QCOMPARE('"' + QString::fromStdString(record.symbol) + '"', row.at(5));
    }

    void thereAre399UnitsWhoseIdsRiseExceptForOnePair()
    {
        QCOMPARE(m_units.size(), std::size_t(399));
        QCOMPARE(readTable("units.tsv").size(), std::size_t(399));
        std::vector<std::pair<int, int>> falls;
        for (std::size_t i = 1; i < m_units.size(); ++i) {
            if (m_units[i - 1].id >= m_units[i].id)
                falls.emplace_back(m_units[i - 1].id, m_units[i].id);
        }
        QCOMPARE(falls.size(), std::size_t(1));
        QCOMPARE(falls.front(), std::make_pair(234, 233));
    }

    void symbolsThatSeveralUnitsCarry()
    {
        std::map<QString, QStringList> groups;
        for (const UnitRecord& each : m_units)
            groups[QString::fromStdString(each.symbol)] << QString::number(each.id);
        std::map<QString, QStringList> expected;
        for (const QStringList& row : readTable("same_symbol_groups.tsv"))
            expected[row.at(0)] = row.at(1).split(' ');
        for (auto group = groups.begin(); group != groups.end();)
            group = group->second.size() > 1 ? std::next(group) : groups.erase(group);

        QCOMPARE(groups.size(), std::size_t(53));
        QVERIFY(groups == expected);
    }

    void onlyFootAndInchHaveAlternativeSymbols()
    {
        const std::map<int, std::vector<std::string>> expected{
            {213, {"'"}}, {214, {"''"}}, {216, {"''"}}};
        std::map<int, std::vector<std::string>> found;
        for (const UnitRecord& each : m_units) {
            if (!each.alternative_symbols.empty())
                found[each.id] = each.alternative_symbols;
        }
        QVERIFY(found == expected);
    }

    void aListedCopyIsTheCallersOwn()
    {
        auto units = list_units();
        units.front().symbol = "changed";
        QCOMPARE(list_units().front().symbol, std::string(" "));
    }

    void oneSymbolWithTwoFactors_data()
    {
        columns<int, double, int, double>("one", "factor", "other", "otherFactor");
        row("bar, of two scales", 76, 100.0, 351, 100000.0);
        row("kWh, of two scales", 151, 3600.0, 384, 1.0);
        row("l/min, with fewer and with more digits", 37, 1.666666767e-05, 324, 1.6666666667e-05);
    }
    void oneSymbolWithTwoFactors()
    {
        QFETCH(int, one);
        QFETCH(double, factor);
        QFETCH(int, other);
        QFETCH(double, otherFactor);
        QCOMPARE(unit(one).symbol, unit(other).symbol);
        QVERIFY(unit(one).factor == factor);
        QVERIFY(unit(other).factor == otherFactor);
    }

    void everyIdHasItsEnumerator()
    {
        const VarnelikUnitProvider provider;
        const std::vector<UnitId::UnitId> ids = provider.get_all_ids();
        std::set<int> enumerated;
        std::set<QString> names;
        for (const SchemaEnumerator& each : readSchemaEnumerators()) {
            QVERIFY2(enumerated.insert(each.id).second, qPrintable(each.name));
            QVERIFY2(names.insert(each.name).second, qPrintable(each.name));
            if (each.id < 1000)
                QCOMPARE(each.quoted, QString::fromStdString(provider.get_symbol(unitId(each.id))));
        }
        QCOMPARE(enumerated.size(), ids.size());
        QVERIFY(enumerated == std::set<int>(ids.begin(), ids.end()));
    }

    void theEnumerationIsScopedAsBondScopesIt()
    {
        static_assert(std::is_same_v<vrn::units::_bond_enumerators::UnitId::UnitId,
            decltype(vrn::units::UnitId::FOOT)>);
        static_assert(vrn::units::v1::UnitId::FOOT == vrn::units::UnitId::FOOT);
        static_assert(UnitId::BLANK == 0 && UnitId::DIMENSIONLESS == 1);
        static_assert(UnitId::PERCENT == 8 && UnitId::PER_MILLE == 9);
        static_assert(UnitId::METRE == 13 && UnitId::FOOT == 213 && UnitId::INCH == 214);
        static_assert(UnitId::KILONEWTON_PER_SQUARE_METRE == 72);
        static_assert(UnitId::FEET_AND_FRACTIONAL_INCHES == 215);
        static_assert(UnitId::FRACTIONAL_INCHES == 216);
        static_assert(UnitId::GEO_LENGTH == 1001 && UnitId::TIME_FREQU == 1291);
        // Any 32-bit number may reach the library as an id.
        static_assert(std::is_same_v<std::underlying_type_t<UnitId::UnitId>, std::int32_t>);
    }
};

VRN_TEST(TestUnitCatalogue)
#include "tst_unit_catalogue.moc"
