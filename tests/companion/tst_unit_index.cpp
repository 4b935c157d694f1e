#include <vrn/q/unit_index.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <array>
#include <cstring>
#include <limits>

using vrn::test::columns;
using vrn::test::row;

class TestUnitIndex : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void knownUnits_data()
    {
        columns<int, double, int, QString>("unit", "metres", "precision", "label");
        row("metre", 13, 1.0, 3, "m");
        row("decimetre", 14, 0.1, 3, "dm");
        row("centimetre", 15, 0.01, 1, "cm");
        row("millimetre", 16, 0.001, 0, "mm");
        row("foot", 213, 0.3048, 3, "ft");
        row("inch", 214, 0.0254, 3, "in");
        row("kilometre", 11, 1000.0, 3, "km");
        row("mile", 211, 1609.344, 3, "mi");
        row("yard", 212, 0.9144, 3, "yd");
        row("length of the active system", 1001, 1.0, 3, "m");
    }
    void knownUnits()
    {
        QFETCH(int, unit);
        QFETCH(double, metres);
        QFETCH(int, precision);
        QFETCH(QString, label);
        QCOMPARE(vrn_get_unitd(unit, 0), metres);
        QCOMPARE(vrn_get_unitd(unit, 1), metres);
        QCOMPARE(vrn_get_unit_precision(unit, 1), precision);
        std::array<char, 32> buffer{};
        QVERIFY(vrn_get_unit_label(unit, 1, buffer.data(), 31) != 0);
        QCOMPARE(QString::fromUtf8(buffer.data()), label);
    }

    void aFootIsTwelveInches() { QCOMPARE(vrn_get_unitd(213, 0), 12 * vrn_get_unitd(214, 0)); }

    void anUnknownUnitIsReportedAndAnsweredAsTheMetre()
    {
        expectAssert("isKnownUnitIndex", {"unit"});
        QCOMPARE(vrn_get_unitd(-7, 1), 1.0);
        expectAssert("isKnownUnitIndex", {"unit"});
        QCOMPARE(vrn_get_unit_precision(-7, 1), 3);
    }

    void anUnknownUnitHasNoLabel()
    {
        std::array<char, 32> buffer;
        buffer.fill('x');
        expectAssert("isKnownUnitIndex", {"unit"});
        QCOMPARE(vrn_get_unit_label(-7, 1, buffer.data(), 31), 0);
        QCOMPARE(buffer[0], 'x');
    }

    void aLabelThatDoesNotFitIsNotWritten()
    {
        std::array<char, 32> buffer;
        buffer.fill('x');
        QCOMPARE(vrn_get_unit_label(16, 1, buffer.data(), 1), 0);
        QCOMPARE(buffer[0], 'x');
        QVERIFY(vrn_get_unit_label(16, 1, buffer.data(), 2) != 0);
        QCOMPARE(std::strlen(buffer.data()), std::size_t(2));
    }

    void aLimitWithoutRoomIsNotWrittenTo_data()
    {
        columns<int>("limit");
        row("none", 0);
        row("less than none", -1);
        row("the lowest", std::numeric_limits<int>::min());
    }
    void aLimitWithoutRoomIsNotWrittenTo()
    {
        QFETCH(int, limit);
        char untouched = 'x';
        QCOMPARE(vrn_get_unit_label(13, 1, &untouched, limit), 0);
        QCOMPARE(untouched, 'x');
    }

    void aMissingBufferIsReported()
    {
        expectAssert("buffer");
        QCOMPARE(vrn_get_unit_label(13, 1, nullptr, 31), 0);
    }

    void anotherFactorThanTheTwoIsReported()
    {
        expectAssert("which == UnitSizeInMetres || which == DisplayToInternal", {"which"});
        QCOMPARE(vrn_get_unitd(15, 2), 0.01);
    }
};

VRN_TEST(TestUnitIndex)
#include "tst_unit_index.moc"
