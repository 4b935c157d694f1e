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
    void everyRowStandsAsGiven_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QStringList>("row");

        int position = 0;
        for (const QStringList& row : readTable("units.tsv")) {
            QTest::addRow("unit %s %s", qPrintable(row.at(0)), qPrintable(row.at(5)))
                << position++ << row;
        }
    }
    void everyRowStandsAsGiven()
    {
        QFETCH(int, position);
        QFETCH(QStringList, row);
        const UnitRecord& record = m_units.at(static_cast<std::size_t>(position));
        QCOMPARE(int(record.id), row.at(0).toInt());
        QCOMPARE(record.dimension, row.at(1).toUInt(nullptr, 16));
        QCOMPARE(record.is_base, row.at(2) == "base");
        QCOMPARE(record.precision, row.at(3).toInt());
        // Bit for bit: QCOMPARE would let the last digits differ.
        QVERIFY(record.factor == row.at(4).toDouble());
        QCOMPARE('"' + QString::fromStdString(record.symbol) + '"', row.at(5));
    }

    void thereAre399Units()
    {
        QCOMPARE(m_units.size(), std::size_t(399));
        QCOMPARE(readTable("units.tsv").size(), std::size_t(399));
    }

    void everyIdOccursOnce()
    {
        std::set<int> ids;
        for (const UnitRecord& each : m_units)
            ids.insert(each.id);
        QCOMPARE(ids.size(), m_units.size());
    }

    void idsRiseExceptForOnePair()
    {
        std::vector<std::pair<int, int>> falls;
        for (std::size_t i = 1; i < m_units.size(); ++i) {
            if (m_units[i - 1].id > m_units[i].id)
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

    void oneSymbolWithTwoScales()
    {
        QCOMPARE(unit(76).symbol, unit(351).symbol);
        QCOMPARE(unit(76).factor, 100.0);
        QCOMPARE(unit(351).factor, 100000.0);
        QCOMPARE(unit(151).symbol, unit(384).symbol);
        QCOMPARE(unit(151).factor, 3600.0);
        QCOMPARE(unit(384).factor, 1.0);
    }

    void oneConversionWithFewerAndMoreDigits()
    {
        QCOMPARE(unit(37).symbol, unit(324).symbol);
        QVERIFY(unit(37).factor == 1.666666767e-05);
        QVERIFY(unit(324).factor == 1.6666666667e-05);
    }

    void enumeratorsHaveTheirIds_data()
    {
        columns<int, int>("enumerator", "id");
        row("BLANK is the unit of a blank symbol", int(UnitId::BLANK), 0);
        row("DIMENSIONLESS", int(UnitId::DIMENSIONLESS), 1);
        row("PERCENT", int(UnitId::PERCENT), 8);
        row("PER_MILLE", int(UnitId::PER_MILLE), 9);
        row("METRE", int(UnitId::METRE), 13);
        row("KILONEWTON_PER_SQUARE_METRE", int(UnitId::KILONEWTON_PER_SQUARE_METRE), 72);
        row("FOOT", int(UnitId::FOOT), 213);
        row("INCH", int(UnitId::INCH), 214);
        row("FEET_AND_FRACTIONAL_INCHES", int(UnitId::FEET_AND_FRACTIONAL_INCHES), 215);
        row("FRACTIONAL_INCHES", int(UnitId::FRACTIONAL_INCHES), 216);
        row("GEO_LENGTH", int(UnitId::GEO_LENGTH), 1001);
        row("TIME_FREQU", int(UnitId::TIME_FREQU), 1291);
    }
    void enumeratorsHaveTheirIds()
    {
        QFETCH(int, enumerator);
        QFETCH(int, id);
        QCOMPARE(enumerator, id);
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
        // Any 32-bit number may reach the library as an id.
        static_assert(std::is_same_v<std::underlying_type_t<UnitId::UnitId>, std::int32_t>);
    }
};

VRN_TEST(TestUnitCatalogue)
#include "tst_unit_catalogue.moc"
