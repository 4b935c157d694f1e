#include "punctuation.h"
#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <cmath>
#include <cstring>
#include <iomanip>
#include <limits>
#include <random>
#include <sstream>
#include <stdexcept>

using namespace vrn::test;
using namespace vrn::units;

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

// Kilonewtons written in one way.
QString written(
    double value, int precision, int format, const std::locale& locale = std::locale::classic())
{
    const Context context(0, {{UnitId::KILONEWTON, unitFormat(62, precision, format)}});
    return formatted(context, UnitId::KILONEWTON, value, locale);
}

} // namespace

class TestQuantityFormat : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // The comparison with a stream holds the rest.
    void fixedNotation_data()
    {
        columns<double, int, QString>("value", "precision", "text");
        row("a negative value", -0.25, 1, "-0.2 kN");
        row("a negative zero keeps its sign", -0.0, 2, "-0.00 kN");
        row("what rounds to zero keeps its sign", -1e-9, 2, "-0.00 kN");
        row("a negative precision is 3", 12.5, -1, "12.500 kN");
        row("infinity", infinite, 3, "inf kN");
        row("negative infinity", -infinite, 3, "-inf kN");
        row("what is not a number", notANumber, 3, "nan kN");
    }
    void fixedNotation() { verifyWritten(0); }

    void scientificNotation_data()
    {
        columns<double, int, QString>("value", "precision", "text");
        row("a mantissa from 1 to 10", 1500.0, 3, "1.500e3 kN");
        row("below 1 the mantissa is below 1", 0.05, 3, "0.500e-1 kN");
        row("just below 1", 0.99, 3, "0.990e0 kN");
        row("one", 1.0, 3, "1.000e0 kN");
        row("a tenth", 0.1, 3, "1.000e-1 kN");
        row("ten", 10.0, 3, "1.000e1 kN");
        row("a negative value", -1500.0, 3, "-1.500e3 kN");
        row("zero", 0.0, 3, "0.000e0 kN");
        row("a negative zero has no sign", -0.0, 3, "0.000e0 kN");
        row("no digits", 1500.0, 0, "2e3 kN");
        row("a mantissa that rounds up to 10 stays", 9.9999, 3, "10.000e0 kN");
        row("a negative precision is 3", 1500.0, -5, "1.500e3 kN");
        row("the largest magnitude", 1.5e308, 3, "1.500e308 kN");
        row("the smallest magnitude", 5e-324, 1, "0.5e-323 kN");
        row("infinity in fixed notation", infinite, 3, "inf kN");
        row("negative infinity in fixed notation", -infinite, 3, "-inf kN");
        row("what is not a number in fixed notation", notANumber, 3, "nan kN");
    }
    void scientificNotation() { verifyWritten(1); }

    // The precision is the denominator.
    void fractions_data()
    {
        columns<double, int, QString>("value", "precision", "text");
        row("a whole part and a reduced fraction", 2.5, 8, "2 1/2 kN");
        row("a fraction that is not reduced", 2.375, 8, "2 3/8 kN");
        row("a fraction alone", 0.25, 8, "1/4 kN");
        row("zero", 0.0, 8, "0 kN");
        row("a negative zero", -0.0, 8, "0 kN");
        row("a whole number", 7.0, 8, "7 kN");
        row("just below a whole number", 2.999, 8, "3 kN");
        row("what is lifted to a whole number still counts its distance", 0.9995, 2000,
            "1 1/2000 kN");
        row("rounded up to a whole number", 1.99, 8, "2 kN");
        row("rounded down to nothing", 0.05, 8, "0 kN");
        row("a half of the smallest part goes up", 0.0625, 8, "1/8 kN");
        row("a negative whole part carries the sign", -2.5, 8, "-2 1/2 kN");
        row("a negative whole number", -3.0, 8, "-3 kN");
        row("rounded down to a negative whole number", -1.99, 8, "-2 kN");
        row("between -1 and 0 the sign is lost", -0.5, 8, "1/2 kN");
        row("at -1 the sign is lost, too", -1.0, 8, "1 kN");
        row("the denominator 1", 2.6, 1, "3 kN");
        row("the denominator 3", 0.333, 3, "1/3 kN");
        row("a negative denominator is 3", 1.6666, -8, "1 2/3 kN");
        row("the largest denominator", 0.5, std::numeric_limits<int>::max(),
            "1073741824/2147483647 kN");
        row("the largest whole part below 2^63", std::nextafter(0x1p63, 0.0), 2,
            "9223372036854774784 kN");
        row("the lowest whole part", -0x1p63, 2, "-9223372036854775808 kN");
        row("2^63 in fixed notation", 0x1p63, 2, "9223372036854775808.00 kN");
        row("below -2^63 in fixed notation", -1e19, 1, "-10000000000000000000.0 kN");
        row("infinity in fixed notation", infinite, 8, "inf kN");
        row("negative infinity in fixed notation", -infinite, 8, "-inf kN");
        row("what is not a number in fixed notation", notANumber, 8, "nan kN");
    }
    void fractions() { verifyWritten(2); }

    void aDenominatorOfZeroIsReportedAndTheValueIsInFixedNotation()
    {
        expectAssert("p > 0", {"p"});
        QCOMPARE(written(2.5, 0, 2), "2 kN");
    }

    void anotherFormatIsEmptyText_data()
    {
        columns<int>("format");
        row("after the last", 3);
        row("negative", -1);
        row("the highest", std::numeric_limits<int>::max());
    }
    void anotherFormatIsEmptyText()
    {
        QFETCH(int, format);
        QCOMPARE(written(2.5, 3, format), "");
    }

    void theLocaleGivesPointAndGrouping_data()
    {
        columns<double, int, int, QString>("value", "precision", "format", "text");
        row("fixed", 1234567.5, 2, 0, "1.234.567,50 kN");
        row("scientific", 1500.0, 3, 1, "1,500e3 kN");
        row("the whole part of a fraction", 1234.5, 8, 2, "1.234 1/2 kN");
        row("both parts of a fraction", 0.5005, 2000, 2, "1.001/2.000 kN");
    }
    void theLocaleGivesPointAndGrouping()
    {
        QFETCH(double, value);
        QFETCH(int, precision);
        QFETCH(int, format);
        QFETCH(QString, text);
        QCOMPARE(written(value, precision, format, Punctuation::german()), text);
    }

    void moreDigitsThanANumberHasAreZeros_data()
    {
        QTest::addColumn<int>("precision");
        QTest::addColumn<int>("digits");
        QTest::addColumn<bool>("german");

        for (const auto& [precision, digits] :
            {std::pair(127, 127), {128, 128}, {129, 129}, {1073, 1073}, {1074, 1074}, {1075, 1074},
                {1'000'000, 1074}, {std::numeric_limits<int>::max(), 1074}}) {
            QTest::addRow("%d digits", precision) << precision << digits << false;
            QTest::addRow("%d digits in German", precision) << precision << digits << true;
        }
    }
    void moreDigitsThanANumberHasAreZeros()
    {
        QFETCH(int, precision);
        QFETCH(int, digits);
        QFETCH(bool, german);
        const std::locale locale = german ? Punctuation::german() : std::locale::classic();
        const QString zeros(digits - 1, QLatin1Char('0'));
        QCOMPARE(
            written(1234.5, precision, 0, locale), (german ? "1.234,5" : "1234.5") + zeros + " kN");
        QCOMPARE(written(1234.5, precision, 1, locale),
            written(1.2345, precision, 0, locale).replace(" kN", "e3 kN"));
    }

    void theSmallestNumberHas1074Digits()
    {
        const QString text = written(5e-324, 1080, 0);
        QVERIFY(text.startsWith("0.000"));
        QVERIFY(text.endsWith("5 kN"));
        QCOMPARE(text.size(), QString("0. kN").size() + 1074);
    }

    // The reference is a stream. The quick way past it must make no difference.
    void fixedNotationIsWhatAStreamWrites()
    {
        std::mt19937_64 random(randomSeed());
        for (int i = 0; i < 50'000; ++i) {
            double value = 0.0;
            const std::uint64_t bits = random();
            std::memcpy(&value, &bits, sizeof value);
            // Every second value is in the range of everyday numbers.
            if (i % 2 == 0)
                value = std::remainder(value, 1e6);
            const int precision = static_cast<int>(random() % 24);
            std::wostringstream expected;
            expected.imbue(std::locale::classic());
            expected << std::fixed << std::setprecision(precision) << value << L" kN";
            // The conversion of a unit to itself must not change the value.
            QCOMPARE(written(value, precision, 0), QString::fromStdWString(expected.str()));
        }
    }

    void digitsAreThoseOfTheIdAndNotOfTheDisplayUnit_data()
    {
        columns<int, int, double, QString>("system", "id", "value", "text");
        row("length in metres", 0, 1001, 1.2346, "1.235 m");
        row("length in millimetres, 0 digits", 6, 1001, 1.2346, "1235 mm");
        row("length in millimetres, 3 digits", 7, 1001, 1.2346, "1234.600 mm");
        row("length in feet", 8, 1001, 0.3048, "1.00 ft");
        row("length in inches", 9, 1001, 0.3048, "12.00 in");
        row("a millimetre itself", 7, 16, 12.0, "12 mm");
        row("thermal expansion in scientific notation", 0, 1083, 1.2e-5, "0.120e-4 1/K");
        row("a symbol outside ASCII", 0, 1215, 20.0, QString::fromUtf8("20.00 °C"));
        row("a display unit that the set does not list, shown as itself", 7, 54, 2.0, "2.000 kgm2");
    }
    void digitsAreThoseOfTheIdAndNotOfTheDisplayUnit()
    {
        QFETCH(int, system);
        QFETCH(int, id);
        QFETCH(double, value);
        QFETCH(QString, text);
        QCOMPARE(formatted(Context(system), id, value), text);
    }

    void labels_data()
    {
        columns<int, int, QString, QString>("id", "unit", "label", "text");
        row("no alternative spelling", 1001, 13, "x", "1.00 m");
        row("the symbol itself", 1001, 13, "m", "1.00 m");
        row("the symbol of another unit", 1001, 13, "ft", "1.00 m");
        row("an empty label hides the unit", 1001, 13, "", "1.00");
        row("an alternative spelling", 1006, 213, "'", "3.28 '");
        row("the alternative spelling of another unit", 1006, 213, "''", "3.28 ft");
        row("the alternative spelling of the inch", 1006, 214, "''", "39.37 ''");
    }
    void labels()
    {
        QFETCH(int, id);
        QFETCH(int, unit);
        QFETCH(QString, label);
        QFETCH(QString, text);
        Context context(0, {{id, unitFormat(unit, 2)}});
        context.format_provider().set_label(unitId(id), label.toStdString());
        QCOMPARE(formatted(context, id, 1.0), text);
        const QString shown = text.section(' ', 1);
        QCOMPARE(QString::fromStdString(context.get_display_label(unitId(id))), shown);
    }

    void anEmptyLabelLeavesNoBlankInAnyNotation()
    {
        for (const auto& [format, text] : {std::pair(0, "2.50"), {1, "2.50e0"}, {2, "2 1/2"}}) {
            Context context(0, {{UnitId::KILONEWTON, unitFormat(62, 2, format)}});
            context.format_provider().set_label(UnitId::KILONEWTON, std::string());
            QCOMPARE(formatted(context, UnitId::KILONEWTON, 2.5), text);
        }
    }

    void aDisplayUnitOfAnotherKindIsReportedAndRefused()
    {
        const Context context(0, {{UnitId::GEO_LENGTH, unitFormat(62, 2)}});
        expectAssert("can_convert(q.unit_id, unit_id)", {"q.unit_id", "unit_id"});
        QCOMPARE(
            thrownText<std::invalid_argument>([&] { formatted(context, UnitId::GEO_LENGTH, 1.0); }),
            "Incompatible units.");
    }

private:
    static void verifyWritten(int format)
    {
        QFETCH(double, value);
        QFETCH(int, precision);
        QFETCH(QString, text);
        QCOMPARE(written(value, precision, format), text);
    }
};

VRN_TEST(TestQuantityFormat)
#include "tst_quantity_format.moc"
