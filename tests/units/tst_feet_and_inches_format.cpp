#include "punctuation.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <cmath>
#include <limits>

using namespace vrn::test;
using namespace vrn::units;

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

Context contextOf(int id, int displayUnit, int denominator)
{
    return Context(0, {{id, unitFormat(displayUnit, denominator)}});
}

} // namespace

class TestFeetAndInchesFormat : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void feetInchesAndFraction_data()
    {
        columns<double, int, QString>("length", "denominator", "text");
        row("feet, inches and a fraction", 1.2916666, 8, "1' 3 1/2 ''");
        row("zero", 0.0, 8, "0' 0 ''");
        row("feet alone", 5.0, 8, "5' 0 ''");
        row("inches alone", 0.5, 8, "0' 6 ''");
        row("a fraction alone", 0.5 / 12, 8, "0' 1/2 ''");
        row("within a 512th below a foot", 1.9985, 8, "2' 0 ''");
        row("inches that round up to a foot stay inches", 1.998, 8, "1' 12 ''");
        row("a negative length has two signs", -1.5, 8, "-1' -6 ''");
        row("between -1 and 0 the inches have the sign", -0.5, 8, "0' -6 ''");
        row("the denominator 3", 1.0 + 1.0 / 36, 3, "1' 1/3 ''");
        row("the denominator 1", 1.3, 1, "1' 4 ''");
        row("no fifth digit is grouped", 12345.5, 8, "12345' 6 ''");
    }
    void feetInchesAndFraction() { verifyWritten(UnitId::FOOT, 215); }

    void inchesAndFraction_data()
    {
        columns<double, int, QString>("length", "denominator", "text");
        row("inches and a fraction", 3.5, 8, "3 1/2 ''");
        row("zero", 0.0, 8, "0 ''");
        row("just below a whole inch", 2.999, 8, "3 ''");
        row("no inches become feet", 30.25, 8, "30 1/4 ''");
        row("a negative length", -3.5, 8, "-3 1/2 ''");
        row("between -1 and 0 the sign is lost", -0.5, 8, "1/2 ''");
        row("sixteenths", 0.0625, 16, "1/16 ''");
        row("infinity in fixed notation", infinite, 8, "inf ''");
        row("what is not a number in fixed notation", notANumber, 8, "nan ''");
        row("more than 64 bits hold, in fixed notation", 0x1p70, 1, "1180591620717411303424.0 ''");
    }
    void inchesAndFraction() { verifyWritten(UnitId::INCH, 216); }

    // The mark of inches is a spelling of this unit, and the only one that is written.
    void theMarkOfInchesMayBeSetAsTheLabel()
    {
        UnitFormat inches = unitFormat(216, 8);
        inches.label = "''";
        const Context context(0, {{UnitId::GEO_LENGTH, inches}});
        QCOMPARE(context.format_provider().get_label(UnitId::GEO_LENGTH).get(), std::string("''"));
        QCOMPARE(context.get_display_label(UnitId::GEO_LENGTH), std::string("''"));
        QCOMPARE(formatted(context, UnitId::GEO_LENGTH, 3.5 * 0.0254), "3 1/2 ''");
    }

    void feetThatNo32BitsHoldAreInFixedNotation_data()
    {
        columns<double, int, QString>("length", "denominator", "text");
        row("the highest", 2147483647.5, 2, "2147483647' 6 ''");
        row("above the highest", 2147483648.0, 2, "2147483648.00 ft");
        row("the lowest", -2147483648.5, 2, "-2147483648' -6 ''");
        row("below the lowest", -2147483650.0, 2, "-2147483650.00 ft");
        row("infinity", infinite, 8, "inf ft");
        row("negative infinity", -infinite, 8, "-inf ft");
        row("what is not a number", notANumber, 8, "nan ft");
    }
    void feetThatNo32BitsHoldAreInFixedNotation() { verifyWritten(UnitId::FOOT, 215); }

    void theLocaleReachesTheFractionAlone()
    {
        const Context context = contextOf(UnitId::INCH, 215, 2000);
        QCOMPARE(formatted(context, UnitId::INCH, 12 * 1234 + 0.0005, Punctuation::german()),
            "1234' 1/2.000 ''");
    }

    void theFeetAreInTheGlobalLocale()
    {
        const Context context = contextOf(UnitId::GEO_LENGTH, 215, 8);
        const std::locale before = std::locale::global(Punctuation::german());
        const QString text = formatted(context, UnitId::GEO_LENGTH, 12345.5 * 0.3048);
        std::locale::global(before);
        QCOMPARE(text, "12.345' 6 ''");
    }

    void unitsWithoutOverridesUseTheirOwnDigitsAsDenominator()
    {
        QCOMPARE(formatted(Context(), 215, 1.5), "1' 6 ''");
        QCOMPARE(formatted(Context(), 216, 1.0 + 1.0 / 3), "1 1/3 ''");
    }

    void theLabelIsAlwaysTheInchMark()
    {
        Context context = contextOf(UnitId::GEO_LENGTH, 215, 8);
        context.format_provider().set_label(UnitId::GEO_LENGTH, std::string());
        QCOMPARE(formatted(context, UnitId::GEO_LENGTH, 0.3048), "1' 0 ''");
    }

    void aNegativeDenominatorIsReportedAndReplacedByFour()
    {
        for (const auto& [unit, text] : {std::pair(215, "1' 3 3/4 ''"), {216, "15 3/4 ''"}}) {
            const Context context = contextOf(UnitId::GEO_LENGTH, unit, -1);
            expectAssert("precision >= 0", {"precision"});
            QCOMPARE(formatted(context, UnitId::GEO_LENGTH, 0.40005), text);
        }
    }

    // This may happen by accident: a kind has no decimals in its system and is then shown
    // in feet and inches.
    void aDenominatorOfZeroIsReportedAndTheInchesAreInFixedNotation()
    {
        for (const auto& [unit, text] : {std::pair(215, "1' 4 ''"), {216, "16 ''"}}) {
            Context context(6);
            context.format_provider().set_unit(UnitId::GEO_LENGTH, unitId(unit));
            QCOMPARE(context.format_provider().get_precision(UnitId::GEO_LENGTH), 0);
            expectAssert("p > 0", {"p"});
            QCOMPARE(formatted(context, UnitId::GEO_LENGTH, 0.40005), text);
        }
    }

    void aQuantityOfAnotherKindIsReportedAndEmpty_data()
    {
        columns<int, int, QString, QString>("id", "unit", "expression", "file");
        const QString foot = "m_converter->can_convert(q.unit_id, UnitId::FOOT)";
        const QString inch = "m_converter->can_convert(q.unit_id, UnitId::INCH)";
        const QString feetFile = "units/src/formatting/feet_and_fractional_inches_parser.cpp";
        const QString inchesFile = "units/src/formatting/fractional_inches_parser.cpp";
        row("a force in feet", 62, 215, foot, feetFile);
        row("a force in inches", 62, 216, inch, inchesFile);
        row("a length that lists no feet", 1026, 215, foot, feetFile);
        row("a force by its kind in inches", 1101, 216, inch, inchesFile);
    }
    void aQuantityOfAnotherKindIsReportedAndEmpty()
    {
        QFETCH(int, id);
        QFETCH(int, unit);
        QFETCH(QString, expression);
        QFETCH(QString, file);
        expectAssert(expression.toStdString(), {"q.unit_id"});
        QCOMPARE(formatted(contextOf(id, unit, 8), id, 1.0), "");
        QCOMPARE(QString::fromStdString(asserts().last().file), file);
    }

private:
    // `id` is the unit of the lengths, and `unit` the one that shows them.
    static void verifyWritten(int id, int unit)
    {
        QFETCH(double, length);
        QFETCH(int, denominator);
        QFETCH(QString, text);
        QCOMPARE(formatted(contextOf(id, unit, denominator), id, length), text);
    }
};

VRN_TEST(TestFeetAndInchesFormat)
#include "tst_feet_and_inches_format.moc"
