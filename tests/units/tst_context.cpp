#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <memory>
#include <stdexcept>
#include <utility>

using namespace vrn::test;
using namespace vrn::units;

namespace {

const std::locale& classic = std::locale::classic();

Context inFeet()
{
    return Context(3, {{UnitId::GEO_LENGTH, unitFormat(213, 1)}});
}

// Shows by a text that the parts of a context work together.
QString oneMetre(const Context& context)
{
    return formatted(context, UnitId::GEO_LENGTH, 1.0);
}

} // namespace

class TestContext : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void isTheSystemZeroWithoutOverridesByDefault()
    {
        const Context context;
        QCOMPARE(context.format_provider().system_index(), 0);
        QVERIFY(context.format_provider().overrides().empty());
        QVERIFY(context.unit_provider().is_known(UnitId::FOOT));
        QCOMPARE(oneMetre(context), "1.000 m");
        QCOMPARE(
            context.converter().convert({UnitId::FOOT, 1.0}, UnitId::GEO_LENGTH).value, 0.3048);
    }

    void aCopySeesNoLaterChangeAndOutlivesItsOriginal()
    {
        auto original = std::make_unique<Context>(inFeet());
        const Context copy = *original;
        original->format_provider().set_unit(UnitId::GEO_LENGTH, UnitId::INCH);
        QCOMPARE(oneMetre(*original), "39.4 in");
        original.reset();
        QCOMPARE(oneMetre(copy), "3.3 ft");
        QCOMPARE(copy.format_provider().system_index(), 3);
    }

    void aMoveTakesTheOverridesAndLeavesTheSystem()
    {
        auto original = std::make_unique<Context>(inFeet());
        const Context moved = std::move(*original);
        QVERIFY(original->format_provider().overrides().empty());
        QCOMPARE(original->format_provider().system_index(), 3);
        QCOMPARE(oneMetre(*original), "1.000 m");
        original.reset();
        QCOMPARE(oneMetre(moved), "3.3 ft");
        QCOMPARE(moved.format_provider().system_index(), 3);
    }

    void anAssignedContextOutlivesItsSource()
    {
        auto source = std::make_unique<Context>(inFeet());
        Context copied;
        copied = *source;
        Context moved;
        moved = std::move(*source);
        source.reset();
        QCOMPARE(oneMetre(copied), "3.3 ft");
        QCOMPARE(oneMetre(moved), "3.3 ft");
        QCOMPARE(moved.format_provider().system_index(), 3);
    }

    void aContextAssignedToItselfStays()
    {
        Context context = inFeet();
        const Context& same = context;
        context = same;
        QCOMPARE(oneMetre(context), "3.3 ft");
    }

    void theDimensionThatIsShown_data()
    {
        columns<int, unsigned>("id", "dimension");
        row("a unit", 213, 0x000001U);
        row("a set", 1101, 0x011E01U);
        row("feet with fractions", 215, 0x000001U);
        // Its first unit has another dimension than the unit that it shows.
        row("a set by its display unit", 1237, 0x000000U);
    }
    void theDimensionThatIsShown()
    {
        QFETCH(int, id);
        QFETCH(unsigned, dimension);
        QCOMPARE(Context().get_display_dimension(unitId(id)), dimension);
    }

    void anOverrideDecidesOnTheDimension()
    {
        const Context context(
            0, {{UnitId::GEO_LENGTH, unitFormat(62, 3)}, {UnitId::GEO_AREA, unitFormat(1000, 3)}});
        QCOMPARE(context.get_display_dimension(UnitId::GEO_LENGTH), 0x011E01U);
        // Even a set may be a display unit.
        QCOMPARE(context.get_display_dimension(UnitId::GEO_AREA), 0x000001U);
    }

    void noDimensionForWhatIsNotKnown_data()
    {
        columns<int>("id");
        row("a gap among the units", 12);
        row("a gap among the sets", 1035);
        row("a negative id", -1);
        row("a set that shows a gap", 1001);
    }
    void noDimensionForWhatIsNotKnown()
    {
        QFETCH(int, id);
        const Context context(0, {{UnitId::GEO_LENGTH, unitFormat(12, 3)}});
        const auto unknown = unitId(id);
        QCOMPARE(thrownText<std::invalid_argument>([&] { context.get_display_dimension(unknown); }),
            "Invalid unit id.");
        QCOMPARE(thrownText<std::invalid_argument>([&] { context.parse(L"1", unknown, classic); }),
            "Invalid unit id.");
    }

    void readsIntoTheIdThatIsAskedFor_data()
    {
        columns<int, QString, int, double>("system", "text", "id", "value");
        row("a number without a unit is in the display unit", 6, "12", 1001, 0.012);
        row("a number alone for a unit is in that unit", 0, "12", 15, 12.0);
        row("the dimensionless sign counts as no unit", 6, "12 -", 1001, 0.012);
        row("a unit that the set lists", 0, "3 ft", 1001, 0.9144);
        row("a unit into another unit", 0, "3 ft", 212, 1.0);
        row("feet and inches in a metric field", 0, "1' 6''", 1001, 0.4572);
        row("feet and inches for a metric unit", 0, "1' 6''", 16, 457.2);
        row("feet alone", 0, "1'", 1001, 0.3048);
        row("inches alone", 0, "5''", 1001, 0.127);
        row("inches alone, with a fraction", 0, "1 1/2''", 1001, 0.0381);
        row("a symbol that the kind has under another unit", 0, "2 kN/m3", 1091, 2.0);
        row("the first of three units that fits the kind", 0, "3 W", 1216, 0.003);
        row("the last of three units that fits the kind", 0, "3 W", 1282, 3.0);
        row("a symbol with another scale for the kind", 0, "2 bar", 1280, 200000.0);
        row("the first unit of the symbol where both fit", 0, "2 bar", 351, 0.002);
    }
    void readsIntoTheIdThatIsAskedFor()
    {
        QFETCH(int, system);
        QFETCH(QString, text);
        QFETCH(int, id);
        QFETCH(double, value);
        const auto parsed = Context(system).parse(text.toStdWString(), unitId(id), classic);
        QVERIFY(parsed);
        QCOMPARE(int(parsed->unit_id), id);
        QCOMPARE(parsed->value, value);
    }

    void refusesAQuantityOfAnotherKind_data()
    {
        columns<int, QString, int>("system", "text", "id");
        row("a force for a length", 0, "5 kN", 1001);
        row("a length that the kind does not list", 0, "1 dm", 1001);
        row("no unit of the symbol is of the kind", 0, "2 bar", 1001);
        row("a default unit that its kind does not list", 7, "3 Nmm/m2", 1100);
        row("the same with a number alone", 7, "3", 1100);
        row("the other kind with such a default unit", 7, "3", 1182);
        row("no symbol at all", 0, "5 furlong", 1001);
        row("a hyphen between feet and inches", 0, "1'-3 1/2''", 1001);
        // The word would otherwise be read as no inches.
        row("a word that ends in the word for inches", 0, "main", 1001);
        row("a word before the mark of inches", 0, "a''", 1001);
        row("no number", 0, "m", 1001);
        row("nothing", 0, "", 1001);
    }
    void refusesAQuantityOfAnotherKind()
    {
        QFETCH(int, system);
        QFETCH(QString, text);
        QFETCH(int, id);
        QVERIFY(!Context(system).parse(text.toStdWString(), unitId(id), classic));
    }

    void bothNamespacesNameOneClass()
    {
        static_assert(std::is_same_v<vrn::units::Context, vrn::units::v1::Context>);
        static_assert(std::is_same_v<vrn::units::UnitFormat, vrn::units::v1::UnitFormat>);
        static_assert(std::is_nothrow_move_constructible_v<Context>);
        static_assert(!std::is_polymorphic_v<Context>);
    }
};

VRN_TEST(TestContext)
#include "tst_context.moc"
