#include <vrn/qt/unit_validator.h>

#include "quantity_in.h"
#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLocale>

#include <limits>
#include <stdexcept>

using vrn::qt::IValidator;
using vrn::qt::UnitValidator;
using vrn::test::columns;
using vrn::test::numberIn;
using vrn::test::verifyTakesAKeystroke;
using vrn::units::Context;
using vrn::units::UnitFormat;
using Quantity = vrn::units::IConverter::quantity;
using vrn::test::row;

namespace UnitId = vrn::units::UnitId;

namespace {

constexpr double lowest = std::numeric_limits<double>::lowest();
constexpr double highest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const std::bitset<32> noFlags;
const std::bitset<32> allButUserLocale = ~std::bitset<32>(1U << vrn::qt::ValidationFlagUserLocale);

// Systems of the tables: metres, millimetres, feet.
constexpr int metric = 0;
constexpr int millimetric = 6;
constexpr int customary = 8;

constexpr int length = UnitId::GEO_LENGTH;

UnitId::UnitId unitId(int id)
{
    return static_cast<UnitId::UnitId>(id);
}

UnitFormat format(int unit, int precision, int notation = 0)
{
    UnitFormat result;
    result.unit_id = unitId(unit);
    result.precision = precision;
    result.format = notation;
    return result;
}

// The message of the std::invalid_argument that `call` throws.
template <typename Call>
QString refusalOf(Call call)
{
    try {
        call();
    } catch (const std::invalid_argument& exception) {
        return QString::fromUtf8(exception.what());
    }
    return QStringLiteral("nothing was thrown");
}

} // namespace

// The user's locale of Qt has a decimal comma: a validator that reads it without being told
// to fails here.
class TestUnitValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    // Numbers under a unit set are in the base scale, under a unit in that unit.
    void aTextIsReadAsAQuantity_data()
    {
        columns<int, int, QString, double>("system", "id", "text", "number");
        row("a bare number is in the display unit", metric, length, "12", 12.0);
        row("a bare number is in the display unit of the system", millimetric, length, "12", 0.012);
        row("a bare number is in feet", customary, length, "12", 3.6576);
        row("the dash counts as no unit", millimetric, length, "12 -", 0.012);
        row("a unit counts more than the display unit", millimetric, length, "12 m", 12.0);
        row("a unit needs no blank", metric, length, "12mm", 0.012);
        row("a customary unit in a metric system", metric, length, "3.25 ft", 0.9906);
        row("feet and inches in a metric system", metric, length, "1' 6''", 0.4572);
        row("feet, inches and a fraction", customary, length, "1' 3 1/2''", 0.3937);
        row("a fraction", metric, length, "1 1/2 m", 1.5);
        row("a negative number", metric, length, "-1.5", -1.5);
        row("blanks around a bare number", metric, length, " 12 ", 12.0);
        row("a unit with a slash", metric, int(UnitId::LOAD_AREA), "12 kN/m2", 12.0);
        row("a unit of another scale", metric, int(UnitId::LOAD_AREA), "2 MPa", 2000.0);
        row("an exponent", metric, int(UnitId::LOAD_POINT), "1.5e3 kN", 1500.0);
        row("a symbol beyond ASCII", metric, int(UnitId::ANGLE), QString::fromUtf8("180 °"),
            3.141592653589793);
        row("a symbol that another kind has, too", metric, int(UnitId::NOM_WEIGHT), "24 kN/m3",
            24.0);
        row("a symbol whose first unit has another scale", metric, int(UnitId::X_PRESSURE), "2 bar",
            200000.0);
        row("a unit is kept as it is", metric, int(UnitId::MILLIMETRE), "12", 12.0);
        row("a unit takes others of its dimension", metric, int(UnitId::MILLIMETRE), "1.2 dm",
            120.0);
        row("a comma ends the number", metric, length, "12,5 m", 12.0);
        row("a point alone", metric, length, ".", 0.0);
        row("a denominator of zero", metric, length, "1/0", infinity);
        row("zero divided by zero", metric, length, "0/0", notANumber);
    }

    void aTextIsReadAsAQuantity()
    {
        QFETCH(int, system);
        QFETCH(int, id);
        QFETCH(QString, text);
        QFETCH(double, number);
        UnitValidator validator(Context(system), unitId(id));
        UnitValidator optional(Context(system), unitId(id));
        optional.setEmptyValueAllowed(true);
        for (UnitValidator* each : {&validator, &optional}) {
            boost::any value = QString("before");
            QVERIFY(each->validate(text, value, noFlags));
            const boost::any read = numberIn(value, id);
            const double* got = boost::any_cast<double>(&read);
            QVERIFY2(got, qPrintable(vrn::test::describe(read)));
            QCOMPARE(*got, number);
        }
    }

    void aTextIsRefused_data()
    {
        columns<int, int, QString>("system", "id", "text");
        row("that names no unit", metric, length, "5 xyz");
        row("in capitals", metric, int(UnitId::LOAD_POINT), "5 KN");
        row("with a unit of another kind", metric, length, "5 kN");
        row("with a length that the kind does not list", metric, length, "5 dm");
        row("of a unit alone", metric, length, "m");
        row("of a dash alone", metric, length, "-");
        row("of a reciprocal unit alone", metric, int(UnitId::GEO_CURVATURE), "1/m");
        row("with a blank after the unit", metric, length, "5 m ");
        row("of words", metric, length, "five metres");
        row("of two numbers", metric, length, "1 2");
        row("of not-a-number", metric, length, "nan");
        row("of infinity", metric, length, "inf m");
        row("with a hyphen between feet and inches", customary, length, "1'-3 1/2''");
        row("of feet and inches for a force", customary, int(UnitId::LOAD_POINT), "1' 6''");
        // The display unit in this system is one that the kind does not list.
        row("with a display unit that its kind does not list", 7, int(UnitId::MAT_ELSUP_M3),
            "5 Nmm/m2");
        row("without a unit for such a kind", 7, int(UnitId::MAT_ELSUP_M3), "5");
    }

    void aTextIsRefused()
    {
        QFETCH(int, system);
        QFETCH(int, id);
        QFETCH(QString, text);
        UnitValidator validator(Context(system), unitId(id));
        validator.set_minimum(1.0);
        for (const bool emptyAllowed : {false, true}) {
            validator.setEmptyValueAllowed(emptyAllowed);
            boost::any value = QString("before");
            QVERIFY(!validator.validate(text, value, noFlags));
            QCOMPARE(numberIn(value, id), boost::any(0.0));
            // The zero of a refusal is not clamped.
            value = QString("before");
            QVERIFY(!validator.validateWhenFinished(text, value, noFlags));
            QCOMPARE(numberIn(value, id), boost::any(0.0));
        }
    }

    // The unit that is shown or typed does not matter.
    void theLimitsAreInTheBaseScale()
    {
        UnitValidator validator(Context(millimetric), UnitId::GEO_LENGTH);
        validator.set_maximum(1.0);
        for (const char* const text : {"2000 mm", "2000", "2 m"}) {
            boost::any value;
            QVERIFY(validator.validate(text, value, noFlags));
            QCOMPARE(numberIn(value, UnitId::GEO_LENGTH), boost::any(2.0));
            QVERIFY(validator.validateWhenFinished(text, value, noFlags));
            QCOMPARE(numberIn(value, UnitId::GEO_LENGTH), boost::any(1.0));
        }
    }

    void theDefaultRangeIsAnyFiniteNumber()
    {
        UnitValidator validator(Context(metric), UnitId::GEO_LENGTH);
        boost::any value;
        QVERIFY(validator.validateWhenFinished("1/0 m", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::GEO_LENGTH), boost::any(highest));
        QVERIFY(validator.validateWhenFinished("-1/0 m", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::GEO_LENGTH), boost::any(lowest));
    }

    void aDerivedClassCanRefuseMore()
    {
        struct WithoutCommas : public UnitValidator
        {
            using UnitValidator::UnitValidator;

            bool validate(
                const QString& text, boost::any& value, const std::bitset<32>& flags) override
            {
                return !text.contains(',') && UnitValidator::validate(text, value, flags);
            }
        };
        WithoutCommas validator(Context(metric), UnitId::GEO_LENGTH);
        boost::any value;
        QVERIFY(!validator.validate("12,5 m", value, noFlags));
        QVERIFY(!validator.validateWhenFinished("12,5 m", value, noFlags));
        QVERIFY(validator.validateWhenFinished("12.5 m", value, noFlags));
    }

    // The rows of docs/quantities.md, as they happen at Enter.
    void aPlainUnitMayReadItsTextAsAnother_data()
    {
        columns<int, QStringList>("id", "texts");
        row("a unit whose symbol another one has before it", int(UnitId::X_WATT_PER_SQUARE_METRE),
            QStringList{"2500.000 W/m2", "2.500 W/m2", "0.003 W/m2"});
        row("the kind of that unit", int(UnitId::X_HEAT_FLUX_A),
            QStringList{"2500.000 W/m2", "2500.000 W/m2", "2500.000 W/m2"});
    }

    void aPlainUnitMayReadItsTextAsAnother()
    {
        QFETCH(int, id);
        QFETCH(QStringList, texts);
        UnitValidator validator(Context(metric), unitId(id));
        boost::any value = Quantity{unitId(id), 2500.0};
        for (const QString& text : texts) {
            QCOMPARE(validator.reformat(value, noFlags), text);
            QVERIFY(validator.validateWhenFinished(text, value, noFlags));
        }
    }

    void aQuantityIsShownInTheDisplayUnit_data()
    {
        columns<int, int, double, QString>("system", "id", "number", "text");
        row("metres", metric, length, 0.5, "0.500 m");
        row("millimetres", millimetric, length, 0.5, "500 mm");
        row("feet", customary, length, 0.3048, "1.00 ft");
        row("a unit with a slash", metric, int(UnitId::LOAD_AREA), 12.5, "12.50 kN/m2");
        row("a unit itself, with its own digits", metric, int(UnitId::KILONEWTON_PER_SQUARE_METRE),
            12.5, "12.500 kN/m2");
        row("a symbol beyond ASCII", metric, int(UnitId::ANGLE), 3.141592653589793,
            QString::fromUtf8("180.0 °"));
        row("scientific notation", metric, int(UnitId::THERMAL_EXP), 1.2e-5, "0.120e-4 1/K");
        row("a large number without grouping", metric, length, 1234567.0, "1234567.000 m");
    }

    void aQuantityIsShownInTheDisplayUnit()
    {
        QFETCH(int, system);
        QFETCH(int, id);
        QFETCH(double, number);
        QFETCH(QString, text);
        UnitValidator validator(Context(system), unitId(id));
        for (const std::bitset<32>& flags : {noFlags, allButUserLocale})
            QCOMPARE(validator.reformat(Quantity{unitId(id), number}, flags), text);
    }

    void aQuantityOfAnotherIdIsShownByItsOwn()
    {
        UnitValidator validator(Context(metric), UnitId::GEO_LENGTH);
        QCOMPARE(validator.reformat(Quantity{UnitId::FOOT, 2.5}, noFlags), QString("2.500 ft"));
        QCOMPARE(
            validator.reformat(Quantity{UnitId::LOAD_AREA, 2.5}, noFlags), QString("2.50 kN/m2"));
    }

    void aTypedUnitComesBackInTheDisplayUnit()
    {
        UnitValidator validator(Context(millimetric), UnitId::GEO_LENGTH);
        for (const char* const text : {"1.5 m", "1500 mm", "0.0015 km", "150 cm", "1500"}) {
            boost::any value;
            QVERIFY2(validator.validateWhenFinished(text, value, noFlags), text);
            QCOMPARE(validator.reformat(value, noFlags), QString("1500 mm"));
        }
    }

    void overridesOfTheContextReachTheTexts()
    {
        const Context eighths(
            metric, {{UnitId::GEO_LENGTH, format(UnitId::FEET_AND_FRACTIONAL_INCHES, 8)}});
        UnitValidator validator(eighths, UnitId::GEO_LENGTH);
        boost::any value;
        QVERIFY(validator.validate("1' 3 1/2''", value, noFlags));
        const QString shown = validator.reformat(value, noFlags);
        QCOMPARE(shown, QString("1' 3 1/2 ''"));
        boost::any again;
        QVERIFY(validator.validate(shown, again, noFlags));
        QCOMPARE(numberIn(again, UnitId::GEO_LENGTH), numberIn(value, UnitId::GEO_LENGTH));
    }

    void theIdCanBeSetLater()
    {
        UnitValidator validator{Context(metric)};
        validator.set_unit_id(UnitId::LOAD_AREA);
        QCOMPARE(validator.get_unit_id(), UnitId::LOAD_AREA);
        boost::any value;
        QVERIFY(validator.validate("3 kN/m2", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::LOAD_AREA), boost::any(3.0));
        validator.set_unit_id(UnitId::GEO_LENGTH);
        QCOMPARE(validator.get_unit_id(), UnitId::GEO_LENGTH);
        QVERIFY(!validator.validate("3 kN/m2", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::GEO_LENGTH), boost::any(0.0));
    }

    void withoutAnIdBareNumbersAreRead()
    {
        UnitValidator validator{Context(metric)};
        boost::any value;
        expectAssert("m_unit_id");
        QCOMPARE(validator.get_unit_id(), UnitId::BLANK);
        expectAssert("m_unit_id");
        QVERIFY(validator.validate("12", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::BLANK), boost::any(12.0));
        expectAssert("m_unit_id");
        QVERIFY(!validator.validate("12 m", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::BLANK), boost::any(0.0));
        expectAssert("m_unit_id");
        QVERIFY(validator.validate("", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::BLANK), boost::any(0.0));
        validator.setEmptyValueAllowed(true);
        QVERIFY(validator.validate("", value, noFlags));
        QVERIFY(value.empty());
    }

    void anUnknownIdThrows_data()
    {
        columns<int, QString>("id", "whenReformatted");
        row("no unit set", 1035, "Invalid unit id.");
        row("after all unit sets", 99999, "Invalid unit id.");
        row("negative", -1, "Invalid unit id.");
        // The formats answer for all ids below 1000; the missing unit shows in its factor.
        row("no unit", 12, "unit_id");
    }

    void anUnknownIdThrows()
    {
        QFETCH(int, id);
        QFETCH(QString, whenReformatted);
        UnitValidator validator(Context(metric), unitId(id));
        boost::any value;
        const QString invalid = "Invalid unit id.";
        QCOMPARE(refusalOf([&] { validator.validate("12", value, noFlags); }), invalid);
        QCOMPARE(refusalOf([&] { validator.validateWhenFinished("x", value, noFlags); }), invalid);
        const boost::any one = Quantity{unitId(id), 1.0};
        QCOMPARE(refusalOf([&] { validator.reformat(one, noFlags); }), whenReformatted);
        // An empty text is not read by the context.
        QVERIFY(validator.validate("", value, noFlags));
        QCOMPARE(numberIn(value, id), boost::any(0.0));
        validator.setEmptyValueAllowed(true);
        QVERIFY(validator.validate("", value, noFlags));
        QVERIFY(value.empty());
    }

    void aDisplayUnitOfAnotherKindThrowsWhenShown()
    {
        const Context forces(metric, {{UnitId::GEO_LENGTH, format(UnitId::KILONEWTON, 2)}});
        UnitValidator validator(forces, UnitId::GEO_LENGTH);
        expectAssert("can_convert(q.unit_id, unit_id)", {"q.unit_id", "unit_id"});
        const boost::any one = Quantity{UnitId::GEO_LENGTH, 1.0};
        QCOMPARE(
            refusalOf([&] { validator.reformat(one, noFlags); }), QString("Incompatible units."));
        // A number without a unit would be in that unit, so it is refused.
        boost::any value;
        QVERIFY(!validator.validate("1", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::GEO_LENGTH), boost::any(0.0));
        QVERIFY(validator.validate("1 m", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::GEO_LENGTH), boost::any(1.0));
    }

    void anOverrideGivesAKindATextThatHasNone()
    {
        const Context context(7,
            {{UnitId::MAT_ELSUP_M3,
                format(UnitId::KILONEWTON_METRE_PER_SQUARE_METRE_PER_RADIAN, 2)}});
        UnitValidator validator(context, UnitId::MAT_ELSUP_M3);
        QCOMPARE(validator.reformat(Quantity{UnitId::MAT_ELSUP_M3, 1.5}, noFlags),
            QString("1.50 kNm/m2/rad"));
    }

    void aLaterChangeOfTheContextDoesNotReachIt()
    {
        Context context(metric);
        UnitValidator validator(context, UnitId::GEO_LENGTH);
        context.format_provider().set_unit(UnitId::GEO_LENGTH, UnitId::MILLIMETRE);
        const boost::any value = Quantity{UnitId::GEO_LENGTH, 2.0};
        QCOMPARE(validator.reformat(value, noFlags), QString("2.000 m"));
        context = Context(customary);
        QCOMPARE(validator.reformat(value, noFlags), QString("2.000 m"));
    }

    void itOutlivesItsContext()
    {
        boost::shared_ptr<IValidator> validator;
        {
            const Context context(customary);
            validator.reset(new UnitValidator(context, UnitId::GEO_LENGTH));
        }
        boost::any value;
        QVERIFY(validator->validate("1 ft", value, noFlags));
        QCOMPARE(numberIn(value, UnitId::GEO_LENGTH), boost::any(0.3048));
        QCOMPARE(validator->reformat(value, noFlags), QString("1.00 ft"));
    }

    void anyNumberCanBeShown_data()
    {
        columns<double>("number");
        row("the highest", highest);
        row("the lowest", lowest);
        row("the smallest", std::numeric_limits<double>::denorm_min());
        row("infinity", infinity);
        row("minus infinity", -infinity);
        row("no number", notANumber);
        row("minus zero", -0.0);
    }

    void anyNumberCanBeShown()
    {
        QFETCH(double, number);
        const int fraction = 2;
        const Context contexts[] = {Context(metric),
            Context(metric, {{UnitId::GEO_LENGTH, format(UnitId::FEET_AND_FRACTIONAL_INCHES, 16)}}),
            Context(metric, {{UnitId::GEO_LENGTH, format(UnitId::FRACTIONAL_INCHES, 16)}}),
            Context(metric, {{UnitId::GEO_LENGTH, format(UnitId::FOOT, 16, fraction)}})};
        for (const Context& context : contexts) {
            UnitValidator validator(context, UnitId::GEO_LENGTH);
            QString text;
            verifyTakesAKeystroke("reformat", [&] {
                text = validator.reformat(Quantity{UnitId::GEO_LENGTH, number}, noFlags);
            });
            QVERIFY(!text.isEmpty());
        }
    }
};

VRN_TEST(TestUnitValidator)
#include "tst_unit_validator.moc"
