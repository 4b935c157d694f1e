#include <vrn/q/input_context.h>
#include <vrn/q/unit_index.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "units/unit_test_support.h"

#include <array>
#include <cstring>
#include <limits>

using namespace vrn::test;
using namespace vrn::units;

namespace {

// Null if there is none.
QString labelOf(int index)
{
    std::array<char, 32> buffer{};
    const bool hasLabel = vrn_get_unit_label(index, 1, buffer.data(), 31) != 0;
    return hasLabel ? QString::fromUtf8(buffer.data()) : QString();
}

void verifyAnswers(int index, double metres, int precision, const QString& label)
{
    QCOMPARE(vrn_get_unitd(index, 0), metres);
    QCOMPARE(vrn_get_unitd(index, 1), metres);
    QCOMPARE(vrn_get_unit_precision(index, 1), precision);
    QCOMPARE(labelOf(index), label);
}

} // namespace

class TestUnitIndex : public TestObject
{
    Q_OBJECT

protected Q_SLOTS:
    void cleanup()
    {
        set_active_input_context(Context());
        TestObject::cleanup();
    }

private Q_SLOTS:
    void aLengthIsAnsweredAsItIsShown_data()
    {
        columns<int, int, double, int, QString>("system", "index", "metres", "precision", "label");
        row("metre", 0, 13, 1.0, 3, "m");
        row("decimetre", 0, 14, 0.1, 3, "dm");
        row("centimetre", 0, 15, 0.01, 1, "cm");
        row("millimetre", 0, 16, 0.001, 0, "mm");
        row("foot", 0, 213, 0.3048, 3, "ft");
        row("inch", 0, 214, 0.0254, 3, "in");
        row("kilometre", 0, 11, 1000.0, 3, "km");
        row("mile", 0, 211, 1609.344, 3, "mi");
        row("yard", 0, 212, 0.9144, 3, "yd");
        row("a unit is itself in any system", 8, 16, 0.001, 0, "mm");
        row("length in system 0", 0, 1001, 1.0, 3, "m");
        row("length in system 6", 6, 1001, 0.001, 0, "mm");
        row("length in system 7", 7, 1001, 0.001, 3, "mm");
        row("length in system 8", 8, 1001, 0.3048, 2, "ft");
        row("length in system 9", 9, 1001, 0.0254, 2, "in");
        row("thickness in system 1", 1, 1010, 0.01, 2, "cm");
    }
    void aLengthIsAnsweredAsItIsShown()
    {
        QFETCH(int, system);
        QFETCH(int, index);
        QFETCH(double, metres);
        QFETCH(int, precision);
        QFETCH(QString, label);
        set_active_input_context(Context(system));
        verifyAnswers(index, metres, precision, label);
    }

    void aFootIsTwelveInches() { QCOMPARE(vrn_get_unitd(213, 0), 12 * vrn_get_unitd(214, 0)); }

    void overridesCount()
    {
        Context context(0, {{UnitId::GEO_LENGTH, unitFormat(214, 4)}});
        context.format_provider().set_label(UnitId::GEO_LENGTH, std::string("''"));
        set_active_input_context(context);
        verifyAnswers(1001, 0.0254, 4, "''");
    }

    void aHiddenUnitHasNoLabel()
    {
        Context context;
        context.format_provider().set_label(UnitId::GEO_LENGTH, std::string());
        set_active_input_context(context);
        verifyAnswers(1001, 1.0, 3, QString());
    }

    void anOverrideOfAUnitDoesNotReachItsIndex()
    {
        set_active_input_context(Context(0, {{UnitId::METRE, unitFormat(213, 1)}}));
        verifyAnswers(13, 1.0, 3, "m");
    }

    void feetAndInchesWithFractionsAreAnsweredAsPlainOnes_data()
    {
        columns<int, double, QString>("unit", "metres", "label");
        row("feet", 215, 0.3048, "ft");
        row("inches", 216, 0.0254, "in");
    }
    void feetAndInchesWithFractionsAreAnsweredAsPlainOnes()
    {
        QFETCH(int, unit);
        QFETCH(double, metres);
        QFETCH(QString, label);
        set_active_input_context(Context(0, {{UnitId::GEO_LENGTH, unitFormat(unit, 16)}}));
        for (const int index : {1001, unit})
            verifyAnswers(index, metres, 3, label);
    }

    void anythingElseIsReportedAndAnsweredAsTheMetreWithoutALabel_data()
    {
        columns<int>("index");
        row("a negative index", -7);
        row("a force", 62);
        row("an area", 22);
        row("a gap among the units", 12);
        row("a kind of force", 1101);
        row("a gap among the kinds", 1035);
        row("a kind of length that shows a force", 1001);
    }
    void anythingElseIsReportedAndAnsweredAsTheMetreWithoutALabel()
    {
        QFETCH(int, index);
        set_active_input_context(Context(0, {{UnitId::GEO_LENGTH, unitFormat(62, 3)}}));
        expectAssert("isKnownUnitIndex", {"unit"});
        QCOMPARE(vrn_get_unitd(index, 0), 1.0);
        expectAssert("isKnownUnitIndex", {"unit"});
        QCOMPARE(vrn_get_unit_precision(index, 1), 3);
        char untouched = 'x';
        expectAssert("isKnownUnitIndex", {"unit"});
        QCOMPARE(vrn_get_unit_label(index, 1, &untouched, 31), 0);
        QCOMPARE(untouched, 'x');
    }

    void aLabelThatDoesNotFitIsNotWritten_data()
    {
        columns<int>("limit");
        row("a character too little", 1);
        row("no room", 0);
        row("less than no room", -1);
        row("the lowest limit", std::numeric_limits<int>::min());
    }
    void aLabelThatDoesNotFitIsNotWritten()
    {
        QFETCH(int, limit);
        char untouched = 'x';
        QCOMPARE(vrn_get_unit_label(16, 1, &untouched, limit), 0);
        QCOMPARE(untouched, 'x');
    }

    void aLabelMayFillItsRoom()
    {
        std::array<char, 3> buffer;
        buffer.fill('x');
        QVERIFY(vrn_get_unit_label(16, 1, buffer.data(), 2) != 0);
        QCOMPARE(std::strlen(buffer.data()), std::size_t(2));
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
