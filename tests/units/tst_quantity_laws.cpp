#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "unit_test_support.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <set>

using namespace vrn::test;
using namespace vrn::units;
using vrn::test::columns;
using vrn::test::row;

namespace {

constexpr std::int32_t fixedNotation = 0;
constexpr std::int32_t scientificNotation = 1;
constexpr std::int32_t fractionNotation = 2;

/// A value that lies this little below a whole number is written as that number.
constexpr double wholeNumberLift = 1.0 / 512.0;

/// How many doubles lie between the two, which are finite.
std::uint64_t ulpsBetween(double left, double right)
{
    // Doubles of one sign are in the order of their bits.
    const auto place = [](double value) {
        std::int64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return bits < 0 ? std::numeric_limits<std::int64_t>::min() - bits : bits;
    };
    const auto distance = static_cast<std::uint64_t>(place(left))
        - static_cast<std::uint64_t>(place(right));
    return std::min(distance, std::uint64_t{0} - distance);
}

double ulpOf(double value)
{
    return std::nextafter(std::abs(value), std::numeric_limits<double>::infinity())
        - std::abs(value);
}

/// One way to show the values of a kind.
struct ShownForm
{
    UnitId::UnitId kind;
    UnitFormat format;
    Context context;
};

/// Whether a system shows a kind in a unit that the kind does not list. In that system,
/// values of the kind have no text: a value is converted to its display unit before it
/// is written, and a kind converts only to the units that it lists.
bool hasNoText(int system, int kind)
{
    return system == 7 && (kind == UnitId::MAT_ELSUP_M3 || kind == UnitId::INERTIA_POINT);
}

/// The whole number that a fraction begins with, and how many parts follow.
struct Fraction
{
    Fraction(double value, int ofDenominator)
        : whole(std::trunc(value + wholeNumberLift))
        , parts(std::round(ofDenominator * std::abs(value - whole)))
        , denominator(ofDenominator)
    {}

    bool isWhole() const { return parts == 0 || parts == denominator; }
    bool isZero() const { return whole == 0 && parts == 0; }

    double whole;
    double parts;
    int denominator;
};

/// The exceptions to "what is written is read back", each with its reason; empty if
/// a value is not an exception. `shown` is the value in the display unit.
const char* exceptionFor(const UnitFormat& format, double shown, bool groupsDigits)
{
    if (format.unit_id == UnitId::FEET_AND_FRACTIONAL_INCHES) {
        const double feet = std::trunc(shown + wholeNumberLift);
        const Fraction inches((shown - feet) * 12.0, format.precision);
        // Feet and inches are both written with the sign, but inches with a sign are
        // refused, because only the sign of the feet counts.
        return shown < 0 && !inches.isZero() ? "negative feet and inches" : "";
    }
    if (format.unit_id != UnitId::FRACTIONAL_INCHES && format.format != fractionNotation)
        return "";
    const Fraction fraction(shown, format.precision);
    // The sign is written with the whole part, which is not written if it is 0.
    if (shown < 0 && fraction.whole == 0 && !fraction.isZero())
        return "the sign of a fraction is lost";
    // The stream groups the digits of the whole part by the locale, but the grammar of
    // fractions accepts only digits.
    if (groupsDigits && std::abs(fraction.whole) >= 1000 && !fraction.isWhole())
        return "digits before a fraction are grouped";
    return "";
}

/// Half of what the last shown digit of `shown` counts, in the display unit.
double halfOfTheLastDigit(const UnitFormat& format, double shown)
{
    if (format.unit_id == UnitId::FEET_AND_FRACTIONAL_INCHES)
        return 0.5 / format.precision / 12.0;
    if (format.unit_id == UnitId::FRACTIONAL_INCHES || format.format == fractionNotation)
        return 0.5 / format.precision;
    const double half = 0.5 * std::pow(10.0, -format.precision);
    if (format.format == fixedNotation || shown == 0.0)
        return half;
    return half * std::pow(10.0, std::trunc(std::log10(std::abs(shown))));
}

} // namespace

// What holds for all quantities, tried with random ones.
class TestQuantityLaws : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsWrittenIsReadBack_data()
    {
        QTest::addColumn<int>("system");
        QTest::addColumn<QString>("locale");
        for (const char* const locale : {"C", "de_DE.UTF-8"}) {
            for (int system = 0; system < 10; ++system)
                QTest::addRow("system %d in %s", system, locale) << system << QString(locale);
        }
    }

    // Within half of the last digit that is shown. Besides the defaults of the system, each
    // unit that the kind lists is tried in each notation.
    void whatIsWrittenIsReadBack()
    {
        QFETCH(int, system);
        QFETCH(QString, locale);
        m_random.seed(randomSeed());
        m_exceptions.clear();
        m_locale = std::locale(locale.toLatin1().constData());
        const bool isGerman = locale != "C";
        const auto& punctuation = std::use_facet<std::numpunct<wchar_t>>(m_locale);
        QCOMPARE(punctuation.decimal_point(), isGerman ? L',' : L'.');
        QCOMPARE(!punctuation.grouping().empty(), isGerman);

        std::set<int> untold;
        for (const UnitSetRow& row : list_unit_sets()) {
            if (hasNoText(system, row.id)) {
                untold.insert(row.id);
                checkNothingIsWritten(system, unitId(row.id));
            }
            for (const ShownForm& form : shownFormsOf(row, system)) {
                for (int i = 0; i < 4; ++i)
                    checkReadBack(form, randomNumber());
                // Each exception comes up, whatever the seed, and more feet than 32 bits hold.
                for (const double shown : {0.0, 1.998, -0.5, -1.5, 1234.5, 3e9})
                    checkReadBack(form, shown);
                if (QTest::currentTestFailed())
                    return;
            }
        }

        // Each exception must have come up.
        QCOMPARE(untold.size(), std::size_t(system == 7 ? 2 : 0));
        std::set<QByteArray> expected = {
            "negative feet and inches", "the sign of a fraction is lost"};
        if (isGerman)
            expected.insert("digits before a fraction are grouped");
        QCOMPARE(m_exceptions.size(), expected.size());
        QVERIFY(m_exceptions == expected);
    }

    void aConversionAndItsReverseGiveTheNumberBack()
    {
        m_random.seed(randomSeed());
        const Context context;
        const Converter& converter = context.converter();
        std::vector<UnitId::UnitId> ids = context.unit_provider().get_all_ids();
        std::uint64_t furthest = 0;
        int pairs = 0;
        for (const UnitId::UnitId from : ids) {
            for (const UnitId::UnitId to : ids) {
                if (!converter.can_convert(from, to))
                    continue;
                ++pairs;
                QVERIFY(converter.can_convert(to, from));
                for (int i = 0; i < 8; ++i) {
                    const double value = randomNumber();
                    const auto there = converter.convert({from, value}, to);
                    QCOMPARE(there.unit_id, to);
                    const double back = converter.convert(there, from).value;
                    const std::uint64_t distance = ulpsBetween(back, value);
                    furthest = std::max(furthest, distance);
                    if (distance > 4)
                        QFAIL(qPrintable(QStringLiteral("%1 of %2 by %3: %4 ulp")
                                             .arg(value, 0, 'g', 17)
                                             .arg(from)
                                             .arg(to)
                                             .arg(distance)));
                }
            }
        }
        qInfo("%d pairs, at most %llu ulp", pairs, static_cast<unsigned long long>(furthest));
        QVERIFY(pairs > 5000);
    }

    void theBaseScaleIsThatOfTheUnitSets()
    {
        m_random.seed(randomSeed());
        const Context context;
        const Converter& converter = context.converter();
        for (const UnitSetRow& row : list_unit_sets()) {
            const UnitId::UnitId kind = unitId(row.id);
            for (const UnitId::UnitId unit : context.unit_provider().get_compatible_units(kind)) {
                const double value = randomNumber();
                // To the base scale, both multiply once, so they are equal.
                const double base = converter.to_base({unit, value});
                QVERIFY(base == converter.convert({unit, value}, kind).value);
                QVERIFY(base == converter.to_base({kind, base}));
                QVERIFY(base == converter.from_base(base, kind).value);
                // From the base scale, the one divides and the other multiplies by the reciprocal.
                const auto back = converter.from_base(base, unit);
                QCOMPARE(back.unit_id, unit);
                QVERIFY(ulpsBetween(back.value, converter.convert({kind, base}, unit).value) <= 2);
                QVERIFY(ulpsBetween(back.value, value) <= 2);
            }
        }
    }

    void aUnitOfFactorOneIsTheBaseScale()
    {
        m_random.seed(randomSeed());
        const Context context;
        for (const UnitRecord& unit : list_units()) {
            const double value = randomNumber();
            const bool isBase = unit.factor == 1.0;
            QCOMPARE(context.converter().to_base({unit.id, value}) == value, isBase);
            QCOMPARE(context.converter().from_base(value, unit.id).value == value, isBase);
        }
    }

private:
    double randomNumber()
    {
        std::uniform_real_distribution<double> exponent(-4.0, 7.0);
        const double magnitude = std::pow(10.0, exponent(m_random));
        return std::bernoulli_distribution()(m_random) ? magnitude : -magnitude;
    }

    std::vector<ShownForm> shownFormsOf(const UnitSetRow& row, int system) const
    {
        const UnitId::UnitId kind = unitId(row.id);
        const Context defaults(system);
        UnitFormat format;
        format.unit_id = defaults.format_provider().get_unit(kind);
        format.precision = defaults.format_provider().get_precision(kind);
        format.format = defaults.format_provider().get_format(kind);

        std::vector<ShownForm> forms;
        const auto add = [&](const UnitFormat& each) {
            forms.push_back({kind, each, Context(system, {{row.id, each}})});
        };
        if (!hasNoText(system, row.id)) {
            forms.push_back({kind, format, defaults});
            format.precision = 6;
            format.format = scientificNotation;
            add(format);
        }
        for (const UnitId::UnitId unit : defaults.unit_provider().get_compatible_units(kind)) {
            format.unit_id = unit;
            format.precision = 3;
            format.format = fixedNotation;
            add(format);
            format.precision = 8;
            format.format = fractionNotation;
            add(format);
        }
        return forms;
    }

    void checkReadBack(const ShownForm& form, double shown)
    {
        const double factor = form.context.unit_provider().get_factor(form.format.unit_id);
        const double value = shown * factor;
        const std::wstring text = form.context.format({form.kind, value}, m_locale);
        const auto read = form.context.parse(text, form.kind, m_locale);
        const double allowed = halfOfTheLastDigit(form.format, shown) * factor + 8 * ulpOf(value);
        const bool holds = read && read->unit_id == form.kind
            && std::abs(read->value - value) <= allowed;

        const bool groupsDigits =
            !std::use_facet<std::numpunct<wchar_t>>(m_locale).grouping().empty();
        const QByteArray exception = exceptionFor(form.format, shown, groupsDigits);
        if (!exception.isEmpty())
            m_exceptions.insert(exception);
        if (holds != exception.isEmpty()) {
            QFAIL(qPrintable(
                QStringLiteral("kind %1, %2 of unit %3 is written \"%4\", read as %5 "
                               "of %6; %7")
                    .arg(form.kind)
                    .arg(shown, 0, 'g', 17)
                    .arg(form.format.unit_id)
                    .arg(QString::fromStdWString(text))
                    .arg(read ? read->value / factor : 0.0, 0, 'g', 17)
                    .arg(read ? int(read->unit_id) : -1)
                    .arg(exception.isEmpty() ? QStringLiteral("this is no exception")
                                             : QStringLiteral("an exception: ") + exception)));
        }
    }

    void checkNothingIsWritten(int system, UnitId::UnitId kind)
    {
        expectAssert("can_convert(q.unit_id, unit_id)", {"q.unit_id", "unit_id"});
        const Context context(system);
        QVERIFY_EXCEPTION_THROWN(context.format({kind, 1.0}, m_locale), std::invalid_argument);
        QVERIFY(!context.parse(L"1", kind, m_locale));
    }

    std::mt19937_64 m_random;
    std::locale m_locale;
    std::set<QByteArray> m_exceptions;
};

VRN_TEST(TestQuantityLaws)
#include "tst_quantity_laws.moc"
