#include "schema_enumerators.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "table_file.h"
#include "unit_test_support.h"

#include <QRegularExpression>

#include <algorithm>

using namespace vrn::test;
using namespace vrn::units;

namespace {

// As the file of the table has it, with the codes put together again from the answers of
// the provider.
QString defaultsOf(int set)
{
    QStringList texts;
    for (int system = 0; system < 10; ++system) {
        const UnitsetFormatProvider formats(system);
        const int code = formats.get_format(unitId(set)) * 100 + formats.get_precision(unitId(set));
        texts << QString("%1:%2").arg(int(formats.get_unit(unitId(set)))).arg(code);
    }
    return texts.join(' ');
}

QString compatibleUnitsOf(int set)
{
    QStringList texts;
    for (const auto unit : VarnelikUnitProvider().get_compatible_units(unitId(set)))
        texts << QString::number(unit);
    return texts.join(' ');
}

} // namespace

class TestUnitSets : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyRowIsAsInTheTable_data()
    {
        QTest::addColumn<int>("position");
        QTest::addColumn<QStringList>("row");

        int position = 0;
        for (const QStringList& row : readTable("unit_sets.tsv"))
            QTest::addRow("%s %s", qPrintable(row.at(0)), qPrintable(row.at(1)))
                << position++ << row;
    }
    void everyRowIsAsInTheTable()
    {
        QFETCH(int, position);
        QFETCH(QStringList, row);
        const UnitSetRow set = list_unit_sets().at(static_cast<std::size_t>(position));
        QCOMPARE(set.id, row.at(0).toInt());
        QCOMPARE(QString::fromUtf8(set.name), row.at(1));
        QCOMPARE(QString::fromUtf8(set.symbol), row.at(2));
        QStringList defaults;
        for (const UnitSetDefault& each : set.defaults)
            defaults << QString("%1:%2").arg(each.unit).arg(each.precision);
        QCOMPARE(defaults.join(' '), row.at(3));
        QStringList units;
        for (const int unit : set.compatible_units)
            units << QString::number(unit);
        while (units.last() == "0")
            units.removeLast();
        QCOMPARE(units.join(' '), row.at(4));
        // The providers answer the same.
        QCOMPARE(defaultsOf(set.id), row.at(3));
        QCOMPARE(compatibleUnitsOf(set.id), row.at(4));
    }

    void thereAre135SetsOfUnitsThatExist()
    {
        const VarnelikUnitProvider units;
        QCOMPARE(list_unit_sets().size(), std::size_t(135));
        QCOMPARE(readTable("unit_sets.tsv").size(), std::size_t(135));
        for (const UnitSetRow& set : list_unit_sets()) {
            for (const UnitSetDefault& each : set.defaults)
                QVERIFY2(units.is_known(unitId(each.unit)), set.name);
            for (const int unit : set.compatible_units)
                QVERIFY2(units.is_known(unitId(unit)), set.name);
        }
    }

    void defaultUnitsThatTheirSetDoesNotList()
    {
        QStringList found;
        for (const UnitSetRow& set : list_unit_sets()) {
            for (std::size_t system = 0; system < set.defaults.size(); ++system) {
                const int unit = set.defaults[system].unit;
                if (std::count(set.compatible_units.begin(), set.compatible_units.end(), unit) == 0)
                    found << QString("%1 in system %2: %3").arg(set.name).arg(system).arg(unit);
            }
        }
        const QStringList expected{
            "MAT_ELSUP_M3 in system 7: 189", "INERTIA_POINT in system 7: 54"};
        QCOMPARE(found, expected);
    }

    void onlyDistanceAndLengthOfferFeetWithFractions()
    {
        QStringList found;
        for (const UnitSetRow& set : list_unit_sets()) {
            const auto offers = [&set](int unit) {
                return std::count(set.compatible_units.begin(), set.compatible_units.end(), unit);
            };
            QCOMPARE(offers(215), offers(216));
            if (offers(215) != 0)
                found << set.name;
            for (const UnitSetDefault& each : set.defaults)
                QVERIFY2(each.unit != 215 && each.unit != 216, set.name);
        }
        QCOMPARE(found, QStringList({"GEO_DISTANCE", "GEO_LENGTH"}));
    }

    // An identifier has no room for "-", "/" and ".", as in "TIME/FREQU.".
    void enumeratorsAreNamedAfterTheirSets()
    {
        std::vector<SchemaEnumerator> kinds = readSchemaEnumerators();
        kinds.erase(std::remove_if(kinds.begin(), kinds.end(),
                        [](const SchemaEnumerator& each) { return each.id < 1000; }),
            kinds.end());
        const std::vector<UnitSetRow> sets = list_unit_sets();
        QCOMPARE(kinds.size(), sets.size());
        for (std::size_t i = 0; i < kinds.size(); ++i) {
            QCOMPARE(kinds[i].id, sets[i].id);
            const QString name = QString::fromUtf8(sets[i].name);
            QString identifier = name.endsWith('.') ? name.chopped(1) : name;
            identifier.replace(QRegularExpression("[^A-Z0-9_]"), "_");
            QCOMPARE(kinds[i].name, identifier);
            QCOMPARE(kinds[i].quoted, identifier == name ? QString() : name);
        }
    }
};

VRN_TEST(TestUnitSets)
#include "tst_unit_sets.moc"
