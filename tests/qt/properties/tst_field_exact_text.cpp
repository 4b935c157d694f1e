#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/entry_validator.h>
#include <vrn/qt/field.h>
#include <vrn/qt/property_set.h>
#include <vrn/qt/unit_validator.h>
#include <vrn/units/catalogue.h>

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/time_limit.h"

#include "beams.h"

#include <boost/make_shared.hpp>

#include <QElapsedTimer>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

using namespace vrn::qt;
using namespace vrn::test;
namespace UnitId = vrn::units::UnitId;
using vrn::units::Context;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr int metres = 0;
constexpr int feet = 8;
constexpr int systems = 10;

/// What an editor of a field makes of a text, in the numbers of the model.
class Editor
{
public:
    Editor(const Field& field, const Context& units)
        : m_field(field)
        , m_units(units)
        , m_validator(target(field, units))
    {}

    std::optional<double> read(const QString& text)
    {
        boost::any value;
        if (!m_validator.validate(text, value, {}))
            return std::nullopt;
        if (const auto* quantity = boost::any_cast<vrn::units::IConverter::quantity>(&value))
            return m_field.fromBase(quantity->value, m_units);
        return boost::any_cast<double>(value);
    }

private:
    static IValidator::pointer target(const Field& field, const Context& units)
    {
        if (field.shape() == Field::Shape::Quantity)
            return boost::make_shared<UnitValidator>(units, field.kind());
        return boost::make_shared<DoubleEditValidator>();
    }

    const Field& m_field;
    const Context& m_units;
    EntryValidator m_validator;
};

bool readsBack(Editor& editor, const QString& text, double value)
{
    const std::optional<double> read = editor.read(text);
    return read && haveSameBits(*read, value);
}

Context feetAndInches(int denominator = 16)
{
    Context units(feet);
    units.format_provider().set_unit(UnitId::GEO_LENGTH, UnitId::FEET_AND_FRACTIONAL_INCHES);
    units.format_provider().set_precision(UnitId::GEO_LENGTH, denominator);
    return units;
}

Context withoutLabel()
{
    Context units;
    units.format_provider().set_label(UnitId::GEO_LENGTH, std::string());
    return units;
}

/// As an application has them: of sensible size, with many bits or with few digits.
double anyValue(std::mt19937_64& random)
{
    const double sign = random() % 4 == 0 ? -1.0 : 1.0;
    const double part = std::generate_canonical<double, 53>(random);
    const double size = std::pow(10.0, double(int(random() % 13)) - 6.0);
    if (random() % 2 == 0)
        return sign * part * size;
    const double digits = std::pow(10.0, double(random() % 7));
    return sign * std::round(part * digits) / digits * size;
}

} // namespace

Q_DECLARE_METATYPE(vrn::units::Context)
using Made = Field (*)();
Q_DECLARE_METATYPE(Made)

class TestFieldExactText : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesTheShortestText_data();
    void givesTheShortestText();
    void isTheTextOfOtherShapes();
    void readsBackInEveryKindAndSystem();
    void readsBackInFeetAndInches();
    void readsBackAsAPlainUnit();
    void readsBackIfStoredInAnotherUnit();
    void readsBackAsANumber();
    void isTheShortestInTheShownUnit();
    void readsBackInEveryLocale();
    void followsAChangeOfTheSameUnits();
    void takesLittleTime();
    void isOfferedUnlessTheFieldSaysNo();
    void namesAHistory();
};

void TestFieldExactText::givesTheShortestText_data()
{
    columns<Made, Context, boost::any, QString>("field", "units", "value", "text");
    const Made length = [] { return Field(field::quantity(UnitId::GEO_LENGTH)); };
    const Made number = [] { return Field(field::number()); };
    const double third = 10.0 / 3.0;
    row("the shown text, if it has all digits", length, Context(), boost::any(3.5), "3.500 m");
    row("more digits", length, Context(), boost::any(third), "3.3333333333333335 m");
    row("few more digits", length, Context(), boost::any(3.00005), "3.00005 m");
    row("a small number", length, Context(), boost::any(1e-7), "1e-07 m");
    row("a large number, which is shown with all digits", length, Context(), boost::any(1e20 / 3.0),
        "33333333333333331968.000 m");
    row("minus zero", length, Context(), boost::any(-0.0), "-0.000 m");
    row("a decimal number of feet", length, Context(feet), boost::any(12.345 * 0.3048),
        "12.345 ft");
    row("metres, where no number of feet comes to the value", length, Context(feet),
        boost::any(0.4572), "0.4572 m");
    row("feet and inches", length, feetAndInches(), boost::any(1.5 * 0.3048), "1' 6 ''");
    row("decimal feet for what is no fraction of an inch", length, feetAndInches(),
        boost::any(3.3 * 0.3048), "3.3 ft");
    row("without a unit, if none is shown", length, withoutLabel(), boost::any(third),
        "3.3333333333333335");
    row("no value", length, Context(), boost::any(), "");
    row("infinity", length, Context(), boost::any(infinity), "inf m");
    row("a number", number, Context(), boost::any(third), "3.3333333333333335");
    row("a number that is shown with all digits", number, Context(), boost::any(0.125), "0.125");
    row("minus zero as a number", number, Context(), boost::any(-0.0), "-0");
    row("a number that is none", number, Context(),
        boost::any(std::numeric_limits<double>::quiet_NaN()), "nan");
}

void TestFieldExactText::givesTheShortestText()
{
    QFETCH(Made, field);
    QFETCH(Context, units);
    QFETCH(boost::any, value);
    QFETCH(QString, text);
    QCOMPARE(field().exactText(value, units), text);
}

void TestFieldExactText::isTheTextOfOtherShapes()
{
    const Context units;
    QCOMPARE(field::integer().exactText(1000, units), QString("1000"));
    QCOMPARE(field::text().exactText(QString("1' 6"), units), QString("1' 6"));
    QCOMPARE(field::flag().exactText(true, units), QString("Yes"));
    QCOMPARE(field::choice<int>({{"fixed", 0}}).exactText(0, units), QString("fixed"));
}

void TestFieldExactText::readsBackInEveryKindAndSystem()
{
    constexpr int valuesEach = 30;
    const vrn::units::VarnelikUnitProvider provider;
    std::mt19937_64 random(randomSeed());
    int count = 0;
    int inOtherUnits = 0;
    int withoutText = 0;
    for (const auto& set : vrn::units::list_unit_sets()) {
        const Field field = field::quantity(UnitId::UnitId(set.id));
        const auto listed = provider.get_compatible_units(UnitId::UnitId(set.id));
        const bool hasUnitOfBaseScale = std::any_of(listed.begin(), listed.end(),
            [&](UnitId::UnitId unit) { return provider.get_factor(unit) == 1.0; });
        for (int system = 0; system < systems; ++system) {
            const Context units(system);
            const auto kind = UnitId::UnitId(set.id);
            const auto shown = units.format_provider().get_unit(kind);
            // Two kinds are shown in a unit that they do not list.
            if (!units.converter().can_convert(shown, kind))
                continue;
            const QString label = QString::fromStdString(units.get_display_label(kind));
            Editor editor(field, units);
            for (int i = 0; i < valuesEach; ++i) {
                const double value = anyValue(random);
                const QString text = field.exactText(value, units);
                ++count;
                if (!readsBack(editor, text, value)) {
                    ++withoutText;
                    const QString what = QString("%1, system %2: %3").arg(set.name).arg(system);
                    QVERIFY2(!hasUnitOfBaseScale, qPrintable(what.arg(text)));
                    QCOMPARE(text, field.text(value, units));
                }
                if (!label.isEmpty() && !text.endsWith(QLatin1Char(' ') + label))
                    ++inOtherUnits;
            }
        }
    }
    qInfo("%d of %d in another unit than the shown one, %d without a text", inOtherUnits, count,
        withoutText);
    QVERIFY(withoutText < count / 100);
}

void TestFieldExactText::readsBackInFeetAndInches()
{
    std::mt19937_64 random(randomSeed());
    const Field field = field::quantity(UnitId::GEO_LENGTH);
    for (const auto unit : {UnitId::FEET_AND_FRACTIONAL_INCHES, UnitId::FRACTIONAL_INCHES}) {
        Context units = feetAndInches();
        units.format_provider().set_unit(UnitId::GEO_LENGTH, unit);
        Editor editor(field, units);
        int shown = 0;
        for (int i = 0; i < 3000; ++i) {
            const double sixteenths = double(int(random() % 4000) - 2000) / 16.0;
            const double value = i % 2 ? anyValue(random) : sixteenths * 0.0254;
            const QString text = field.exactText(value, units);
            QVERIFY2(readsBack(editor, text, value), qPrintable(text));
            if (readsBack(editor, field.text(value, units), value)) {
                ++shown;
                QCOMPARE(text, field.text(value, units));
            }
        }
        QVERIFY(shown > 300);
    }
}

void TestFieldExactText::readsBackAsAPlainUnit()
{
    std::mt19937_64 random(randomSeed());
    const Context units;
    int count = 0;
    int withoutText = 0;
    for (const auto& unit : vrn::units::list_units()) {
        const Field field = field::quantity(unit.id);
        Editor editor(field, units);
        for (int i = 0; i < 5; ++i, ++count) {
            const double value = anyValue(random);
            const QString text = field.exactText(value, units);
            if (readsBack(editor, text, value))
                continue;
            ++withoutText;
            QCOMPARE(text, field.text(value, units));
        }
    }
    qInfo("%d of %d have no text", withoutText, count);
    QVERIFY(withoutText < count / 10);
}

void TestFieldExactText::readsBackIfStoredInAnotherUnit()
{
    std::mt19937_64 random(randomSeed());
    const Field field = field::quantity(UnitId::SECT_LENGTH).storedIn(UnitId::MILLIMETRE);
    for (int system = 0; system < systems; ++system) {
        const Context units(system);
        Editor editor(field, units);
        int count = 0;
        int missed = 0;
        for (int i = 0; i < 2000; ++i, ++count) {
            const double value = anyValue(random);
            const QString text = field.exactText(value, units);
            if (!readsBack(editor, text, value)) {
                ++missed;
                QCOMPARE(text, field.text(value, units));
            }
        }
        qInfo("system %d: %d of %d have no text", system, missed, count);
        QVERIFY(missed < count / 20);
    }
}

void TestFieldExactText::readsBackAsANumber()
{
    std::mt19937_64 random(randomSeed());
    const Field field = field::number();
    const Context units;
    Editor editor(field, units);
    for (int i = 0; i < 20000; ++i) {
        const quint64 bits = random();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof(value));
        if (!std::isfinite(value))
            continue;
        const QString text = field.exactText(value, units);
        QVERIFY2(readsBack(editor, text, value), qPrintable(text));
    }
}

void TestFieldExactText::isTheShortestInTheShownUnit()
{
    std::mt19937_64 random(randomSeed());
    const Field field = field::quantity(UnitId::GEO_LENGTH);
    for (const int system : {metres, 7, feet, 9}) {
        const Context units(system);
        const QString label = QString::fromStdString(units.get_display_label(UnitId::GEO_LENGTH));
        Editor editor(field, units);
        for (int i = 0; i < 300; ++i) {
            // Typed with this many digits.
            const int digits = 1 + int(random() % 15);
            const double part = 1.0 + 9.0 * std::generate_canonical<double, 53>(random);
            const QString typed = QString::number(part, 'g', digits) + QLatin1Char(' ') + label;
            const double value = editor.read(typed).value();
            const QString text = field.exactText(value, units);
            if (text != field.text(value, units))
                QVERIFY2(text.size() <= typed.size(), qPrintable(typed + " became " + text));
        }
    }
}

void TestFieldExactText::readsBackInEveryLocale()
{
    const Field field = field::quantity(UnitId::GEO_LENGTH);
    const Context units;
    for (const char* name : {"de_DE", "de_CH", "fr_FR", "ar_EG", "hi_IN"}) {
        QLocale::setDefault(QLocale(name));
        Editor editor(field, units);
        for (const double value : {1234.5678901, 1.234, 1234.567, 1e-7, 0.1 + 0.2})
            QVERIFY2(readsBack(editor, field.exactText(value, units), value), name);
    }
    QLocale::setDefault(QLocale::c());
}

void TestFieldExactText::followsAChangeOfTheSameUnits()
{
    const Field field = field::quantity(UnitId::GEO_LENGTH);
    Context units;
    const double value = 12.3456 * 0.001;
    QCOMPARE(field.exactText(value, units), QString("0.0123456 m"));
    units.format_provider().set_unit(UnitId::GEO_LENGTH, UnitId::MILLIMETRE);
    QCOMPARE(field.exactText(value, units), QString("12.3456 mm"));
    QCOMPARE(field.exactText(value, Context()), QString("0.0123456 m"));
}

void TestFieldExactText::takesLittleTime()
{
    std::mt19937_64 random(randomSeed());
    const Field field = field::quantity(UnitId::GEO_LENGTH);
    const Context units(feet);
    constexpr int count = 2000;
    int characters = 0;
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < count; ++i)
        characters += int(field.exactText(anyValue(random), units).size());
    const qint64 elapsed = timer.elapsed();
    qInfo("%d texts, %d characters: %lld ms", count, characters, elapsed);
    QVERIFY(elapsed < timeLimitMs(100));
}

void TestFieldExactText::isOfferedUnlessTheFieldSaysNo()
{
    QVERIFY(field::quantity(UnitId::GEO_LENGTH).offersFullDigits());
    QVERIFY(field::number().offersFullDigits());
    QVERIFY(!field::number().fullDigits(false).offersFullDigits());
    QVERIFY(!field::integer().offersFullDigits());
    QVERIFY(!field::text().fullDigits(true).offersFullDigits());
}

void TestFieldExactText::namesAHistory()
{
    PropertySet<Beam> beams("beam", &countedBeams);
    beams.add("length", "Length", &Beam::length, field::quantity(UnitId::GEO_LENGTH).history())
        .add("load", "Load", &Beam::load, field::quantity(UnitId::GEO_LENGTH).history())
        .add("width", "Width", &Beam::width, field::quantity(UnitId::SECT_LENGTH).history())
        .add("factor", "Factor", &Beam::factor, field::number().history())
        .add("name", "Name", &Beam::name, field::text().history("names"))
        .add("grade", "Grade", &Beam::grade, field::text());
    const auto key = [&](const char* property) { return beams.find(property)->field.historyKey(); };
    QVERIFY(!key("length").empty());
    QCOMPARE(key("length"), key("load"));
    QVERIFY(key("length") != key("width"));
    QCOMPARE(key("factor"), std::string("property.factor"));
    QCOMPARE(key("name"), std::string("names"));
    QCOMPARE(key("grade"), std::string());
}

VRN_TEST(TestFieldExactText)
#include "tst_field_exact_text.moc"
