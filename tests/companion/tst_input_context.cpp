#include <vrn/q/input_context.h>
#include <vrn/q/unit_index.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <array>

using namespace vrn::units;
using vrn::test::columns;
using vrn::test::row;

namespace {

UnitFormat formatOf(UnitId::UnitId unit, int precision)
{
    UnitFormat format;
    format.unit_id = unit;
    format.precision = precision;
    return format;
}

QString labelOf(int index)
{
    std::array<char, 32> buffer{};
    const bool hasLabel = vrn_get_unit_label(index, 1, buffer.data(), 31) != 0;
    return hasLabel ? QString::fromUtf8(buffer.data()) : QString();
}

} // namespace

class TestInputContext : public vrn::test::TestObject
{
    Q_OBJECT

protected Q_SLOTS:
    void cleanup()
    {
        set_active_input_context(Context());
        vrn::test::TestObject::cleanup();
    }

private Q_SLOTS:
    void isTheSystemZeroAtFirst()
    {
        QCOMPARE(get_active_input_context().format_provider().system_index(), 0);
        QVERIFY(get_active_input_context().format_provider().overrides().empty());
    }

    void theReferenceRefersToTheContextThatWasSetLast()
    {
        const Context& active = get_active_input_context();
        set_active_input_context(Context(8));
        QCOMPARE(active.format_provider().system_index(), 8);
        QCOMPARE(&active, &get_active_input_context());
        QCOMPARE(active.format({UnitId::GEO_LENGTH, 0.3048}, std::locale::classic()),
            std::wstring(L"1.00 ft"));
    }

    void aCopyDoesNotFollow()
    {
        const Context copy = get_active_input_context();
        set_active_input_context(Context(8));
        QCOMPARE(copy.format_provider().system_index(), 0);
    }

    void theActiveContextMayBeSetToItself()
    {
        set_active_input_context(Context(8));
        set_active_input_context(get_active_input_context());
        QCOMPARE(get_active_input_context().format_provider().system_index(), 8);
    }

    void aKindOfLengthIsAnsweredAsItIsShown_data()
    {
        columns<int, int, double, int, QString>("system", "index", "metres", "precision", "label");
        row("length in system 0", 0, 1001, 1.0, 3, "m");
        row("length in system 6", 6, 1001, 0.001, 0, "mm");
        row("length in system 7", 7, 1001, 0.001, 3, "mm");
        row("length in system 8", 8, 1001, 0.3048, 2, "ft");
        row("length in system 9", 9, 1001, 0.0254, 2, "in");
        row("thickness in system 1", 1, 1010, 0.01, 2, "cm");
        row("a unit is itself in any system", 8, 16, 0.001, 0, "mm");
    }
    void aKindOfLengthIsAnsweredAsItIsShown()
    {
        QFETCH(int, system);
        QFETCH(int, index);
        QFETCH(double, metres);
        QFETCH(int, precision);
        QFETCH(QString, label);
        set_active_input_context(Context(system));
        QCOMPARE(vrn_get_unitd(index, 0), metres);
        QCOMPARE(vrn_get_unitd(index, 1), metres);
        QCOMPARE(vrn_get_unit_precision(index, 1), precision);
        QCOMPARE(labelOf(index), label);
    }

    void overridesCount()
    {
        Context context(0, {{UnitId::GEO_LENGTH, formatOf(UnitId::INCH, 4)}});
        context.format_provider().set_label(UnitId::GEO_LENGTH, std::string("''"));
        set_active_input_context(context);
        QCOMPARE(vrn_get_unitd(1001, 0), 0.0254);
        QCOMPARE(vrn_get_unit_precision(1001, 1), 4);
        QCOMPARE(labelOf(1001), "''");
    }

    void aHiddenUnitHasNoLabel()
    {
        Context context;
        context.format_provider().set_label(UnitId::GEO_LENGTH, std::string());
        set_active_input_context(context);
        QCOMPARE(vrn_get_unitd(1001, 0), 1.0);
        QVERIFY(labelOf(1001).isNull());
    }

    void anOverrideOfAUnitDoesNotReachItsIndex()
    {
        set_active_input_context(Context(0, {{UnitId::METRE, formatOf(UnitId::FOOT, 1)}}));
        QCOMPARE(vrn_get_unitd(13, 0), 1.0);
        QCOMPARE(labelOf(13), "m");
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
        const auto shown = static_cast<UnitId::UnitId>(unit);
        set_active_input_context(Context(0, {{UnitId::GEO_LENGTH, formatOf(shown, 16)}}));
        for (const int index : {1001, unit}) {
            QCOMPARE(vrn_get_unitd(index, 0), metres);
            QCOMPARE(vrn_get_unit_precision(index, 1), 3);
            QCOMPARE(labelOf(index), label);
        }
    }

    void whatIsNoLengthIsReported_data()
    {
        columns<int>("index");
        row("a force", 62);
        row("an area", 22);
        row("a gap among the units", 12);
        row("a kind of force", 1101);
        row("a gap among the kinds", 1035);
        row("a kind of length that shows a force", 1001);
    }
    void whatIsNoLengthIsReported()
    {
        QFETCH(int, index);
        set_active_input_context(
            Context(0, {{UnitId::GEO_LENGTH, formatOf(UnitId::KILONEWTON, 3)}}));
        expectAssert("isKnownUnitIndex", {"unit"});
        QCOMPARE(vrn_get_unitd(index, 0), 1.0);
        expectAssert("isKnownUnitIndex", {"unit"});
        QVERIFY(labelOf(index).isNull());
    }
};

VRN_TEST(TestInputContext)
#include "tst_input_context.moc"
