#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/unit_validator.h>
#include <vrn/units/unknown_unit.h>

#include "quantity_in.h"
#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QHash>
#include <QLocale>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

using namespace vrn::qt;
using vrn::units::Context;
using vrn::units::UnknownUnit;
using Quantity = vrn::units::IConverter::quantity;

namespace UnitId = vrn::units::UnitId;

namespace {

constexpr double lowest = std::numeric_limits<double>::lowest();
constexpr double highest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const std::bitset<32> noFlags;
const std::bitset<32> userLocale(1U << ValidationFlagUserLocale);

// A validator and the setter that its class adds to the interface.
struct Field
{
    std::unique_ptr<IValidator> validator;
    std::function<void(bool)> setEmptyValueAllowed;
};

template <typename Validator>
Field fieldOf(std::unique_ptr<Validator> validator)
{
    Validator& each = *validator;
    return {std::move(validator), [&each](bool allowed) { each.setEmptyValueAllowed(allowed); }};
}

// What comes of a text: accepted or refused with a value, or the unit thrown.
struct Outcome
{
    bool accepted = false;
    boost::any value = QString("before");
    std::optional<QByteArray> unknownUnit;
};

using Validate = bool (IValidator::*)(const QString&, boost::any&, const std::bitset<32>&);

// One of the numeric validators, and how it differs from the others.
struct Kind
{
    QByteArray name;
    std::function<Field(double min, double max, bool zeroIfEmpty)> make;
    /// The value that stands for a number.
    std::function<boost::any(double)> valueOf;
    /// The report about a bad range; none where the expression is empty.
    std::string rangeReport;
    std::vector<std::string> limits;
    bool oneNumberIsARange;
    /// The report about a value of a foreign type.
    std::string typeReport;
    std::vector<std::string> typeValues;
    /// Whether finishing clamps the zero of a refused text.
    bool clampsRefusals;
    /// What comes of a hostile text, before any clamping.
    std::function<Outcome(const QByteArray& name, const QString& text)> hostile;

    Field make5To9() const { return make(5.0, 9.0, true); }
};

// What can be compared: the number of a quantity, or the value itself.
boost::any plain(const boost::any& value)
{
    return boost::any_cast<Quantity>(&value) ? vrn::test::numberIn(value, UnitId::GEO_LENGTH)
                                             : value;
}

Outcome outcomeOf(
    const Field& field, Validate operation, const QString& text, const std::bitset<32>& flags = {})
{
    Outcome outcome;
    try {
        outcome.accepted = (field.validator.get()->*operation)(text, outcome.value, flags);
    } catch (const UnknownUnit& error) {
        outcome.unknownUnit = QByteArray::fromStdString(error.unit());
    }
    return outcome;
}

template <typename... T>
double numberAs(const boost::any& value)
{
    double number = notANumber;
    const auto take = [&](const auto* held) {
        number = held ? static_cast<double>(*held) : number;
    };
    (take(boost::any_cast<T>(&value)), ...);
    return number;
}

double numberIn(const boost::any& value)
{
    return numberAs<double, int, unsigned int, unsigned short>(value);
}

// What is a number is Qt's matter; that nothing else is made of a text is ours.
Outcome hostileDouble(const QByteArray& /*name*/, const QString& text)
{
    bool isNumber = false;
    const double number = QLocale(QLocale::C, QLocale::AnyCountry).toDouble(text, &isNumber);
    return {isNumber, isNumber ? number : 0.0, {}};
}

template <typename T>
Outcome hostileInteger(const QByteArray& /*name*/, const QString& text)
{
    bool isNumber = false;
    const qlonglong number = text.toLongLong(&isNumber, 10);
    return {isNumber, isNumber ? static_cast<T>(number) : T(0), {}};
}

Outcome hostileDistance(const QByteArray& name, const QString& /*text*/)
{
    static const QHash<QByteArray, double> numbers = {
        {"a mebi of zeros", 0.0},
        {"a mebi of the digit 7", 0.0},
        {"a number with a mebi of decimals", 1.0 / 3.0},
        {"a mebi of blanks", 0.0},
        {"digits of the Arabic script", 0.0},
        {"a number beyond 64 bits", 1e20},
        {"nan", notANumber},
        {"inf", infinity},
        {"minus inf", -infinity},
    };
    static const QHash<QByteArray, QByteArray> unknownUnits = {
        {"a zero character inside", QByteArray("\0002", 2)},
        {"a line break inside", "2"},
        {"a carriage return and a tab", "2"},
        {"1e999", "e999"},
        {"-1e999", "e999"},
        {"1e-999", "e-999"},
        {"0x10", "x10"},
    };
    Outcome outcome{numbers.contains(name), numbers.value(name, 0.0), {}};
    if (unknownUnits.contains(name))
        outcome.unknownUnit = unknownUnits.value(name);
    return outcome;
}

Outcome hostileLength(const QByteArray& name, const QString& /*text*/)
{
    static const QHash<QByteArray, double> numbers = {
        {"a mebi of the digit 7", highest},
        {"a mebi of zeros", 0.0},
        {"a mebi of points", 0.0},
        {"a mebi of commas", 0.0},
        // Feet and inches, each of them missing.
        {"a mebi of apostrophes", 0.0},
        {"a number with a mebi of decimals", 1.0 / 3.0},
        {"1e999", highest},
        {"-1e999", lowest},
        {"1e-999", 0.0},
        {"a number beyond 64 bits", 1e20},
    };
    return {numbers.contains(name), numbers.value(name, 0.0), {}};
}

template <typename T>
Kind integers(const QByteArray& name)
{
    const auto make = [](double min, double max, bool zeroIfEmpty) {
        return fieldOf(std::make_unique<IntegerValidator<T>>(
            static_cast<T>(min), static_cast<T>(max), zeroIfEmpty));
    };
    return {name, make, [](double number) { return boost::any(static_cast<T>(number)); },
        "min <= max", {"min", "max"}, true, "value.type() == typeid(value_type)",
        {"value.type().name()"}, true, &hostileInteger<T>};
}

Kind doubles()
{
    const auto make = [](double min, double max, bool zeroIfEmpty) {
        return fieldOf(std::make_unique<DoubleEditValidator>(3, min, max, zeroIfEmpty));
    };
    return {"double", make, [](double number) { return boost::any(number); }, "m_min < m_max",
        {"m_min", "m_max"}, false, "value.type() == typeid(double)", {"value.type().name()"}, false,
        &hostileDouble};
}

Kind distances()
{
    Kind kind = doubles();
    kind.name = "distance";
    kind.make = [](double min, double max, bool zeroIfEmpty) {
        auto validator = std::make_unique<DistanceEditValidator>(
            UnitId::METRE, min, max, zeroIfEmpty);
        validator->showUnitPostfix(true);
        return fieldOf(std::move(validator));
    };
    kind.hostile = &hostileDistance;
    return kind;
}

Kind quantities()
{
    const auto make = [](double min, double max, bool /*zeroIfEmpty*/) {
        auto validator = std::make_unique<UnitValidator>(Context(), UnitId::GEO_LENGTH);
        validator->set_minimum(min);
        validator->set_maximum(max);
        return fieldOf(std::move(validator));
    };
    return {"quantity", make,
        [](double number) {
            return boost::any(Quantity{UnitId::GEO_LENGTH, number});
        },
        "", {}, true, "value.type() == typeid(units::IConverter::quantity)", {}, false,
        &hostileLength};
}

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all = {doubles(), integers<int>("int"),
        integers<unsigned int>("unsigned int"), integers<unsigned short>("unsigned short"),
        distances(), quantities()};
    return all;
}

const Kind& kindOf(const QByteArray& name)
{
    const auto found = std::find_if(
        kinds().begin(), kinds().end(), [&name](const Kind& kind) { return kind.name == name; });
    return *found;
}

} // namespace

Q_DECLARE_METATYPE(const Kind*)

// What all numeric validators do in the same way, with the differences that there are as
// columns of the tables. The user's locale of Qt has a decimal comma throughout: what reads
// it without being told to fails here.
class TestNumericValidatorContract : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void anEmptyText_data()
    {
        QTest::addColumn<const Kind*>("kind");
        QTest::addColumn<QString>("setup");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<boost::any>("typed");
        QTest::addColumn<boost::any>("finished");
        QTest::addColumn<QString>("shown");
        const QString reported = "reported";
        for (const Kind& kind : kinds()) {
            const auto row = [&kind](const char* name, const char* setup, bool accepted,
                                 const boost::any& typed, const boost::any& finished,
                                 const QString& shown) {
                QTest::newRow(kind.name + ": " + name)
                    << &kind << setup << accepted << typed << finished << shown;
            };
            const boost::any none;
            const boost::any zero = kind.valueOf(0.0);
            const boost::any five = kind.valueOf(5.0);
            const bool isInteger = kind.clampsRefusals;
            const boost::any typed = isInteger ? none : zero;
            const boost::any finished = isInteger ? none : five;
            const QString shown = isInteger ? "0" : reported;
            row("no value where that is allowed", "refused yes", true, none, none, "");
            row("no value where that is allowed later", "zero yes", true, none, none, "");
            row("zero by default", "zero", true, typed, finished, shown);
            row("zero where no value is allowed", "zero no", true, typed, finished, shown);
            row("zero where no value is allowed any more", "zero yes no", true, typed, finished,
                shown);
            if (kind.name == "quantity")
                continue; // It has no way to refuse an empty text.
            row("zero instead of a refusal", "refused no", true, typed, finished, shown);
            if (kind.name == "distance")
                row("a text without a unit", "refused", true, zero, five, reported);
            else
                row("a refusal", "refused", false, zero, isInteger ? five : zero, reported);
        }
    }

    // The zero of an empty text is clamped as any number; no value is not.
    void anEmptyText()
    {
        QFETCH(const Kind*, kind);
        QFETCH(QString, setup);
        QFETCH(bool, accepted);
        QFETCH(boost::any, typed);
        QFETCH(boost::any, finished);
        QFETCH(QString, shown);
        const Field field = kind->make(5.0, 9.0, setup.startsWith("zero"));
        for (const QString& step : setup.split(' ').mid(1))
            field.setEmptyValueAllowed(step == "yes");
        for (const QString& text : {QString(""), QString()}) {
            const Outcome keystroke = outcomeOf(field, &IValidator::validate, text);
            QCOMPARE(keystroke.accepted, accepted);
            QCOMPARE(plain(keystroke.value), plain(typed));
            QCOMPARE(keystroke.value.type().name(), typed.type().name());
            const Outcome end = outcomeOf(field, &IValidator::validateWhenFinished, text);
            QCOMPARE(end.accepted, accepted);
            QCOMPARE(plain(end.value), plain(finished));
            QCOMPARE(end.value.type().name(), finished.type().name());
        }
        if (shown == "reported") {
            expectAssert(kind->typeReport, kind->typeValues);
            QVERIFY(field.validator->reformat({}, noFlags).isNull());
        } else {
            QCOMPARE(field.validator->reformat({}, noFlags), shown);
        }
    }

    void aNumber_data()
    {
        QTest::addColumn<const Kind*>("kind");
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("typed");
        QTest::addColumn<double>("finished");
        QTest::addColumn<double>("shown");
        for (const Kind& kind : kinds()) {
            const auto row = [&kind](const char* name, double min, double max, const char* text,
                                 double typed, double finished, double shown) {
                QTest::newRow(kind.name + ": " + name)
                    << &kind << min << max << text << typed << finished << shown;
            };
            row("below the range", 5, 9, "3", 3, 5, 5);
            row("the minimum itself", 5, 9, "5", 5, 5, 5);
            row("in the range", 5, 9, "7", 7, 7, 7);
            row("the maximum itself", 5, 9, "9", 9, 9, 9);
            row("above the range", 5, 9, "12", 12, 9, 9);
            row("a range of one number, from below", 5, 5, "3", 3, 5, 5);
            row("a range of one number, from above", 5, 5, "7", 7, 5, 5);
            // Finishing asks for the minimum first, and only else for the maximum. Some
            // format in the same order; the others bring the number below the maximum, and
            // then above the minimum.
            const bool minimumWins = kind.name != "double" && kind.name != "quantity";
            row("below a reversed range", 9, 1, "0", 0, 9, 9);
            row("in a reversed range", 9, 1, "5", 5, 9, 9);
            row("the minimum of a reversed range", 9, 1, "9", 9, 1, minimumWins ? 9 : 1);
            row("above a reversed range", 9, 1, "10", 10, 1, minimumWins ? 9 : 1);
            if (!kind.name.startsWith("unsigned")) {
                row("below a negative range", -9, -5, "-12", -12, -9, -9);
                row("in a negative range", -9, -5, "-7", -7, -7, -7);
                row("above a negative range", -9, -5, "0", 0, -5, -5);
            }
            if (kind.name == "double" || kind.name == "distance") {
                row("infinity", 5, 9, "inf", infinity, 9, 9);
                row("minus infinity", 5, 9, "-inf", -infinity, 5, 5);
                row("not-a-number", 5, 9, "nan", notANumber, notANumber,
                    kind.name == "double" ? 5 : 9);
            }
            if (kind.name == "quantity") {
                row("infinity", 5, 9, "1/0", infinity, 9, 9);
                row("minus infinity", 5, 9, "-1/0", -infinity, 5, 5);
                row("not-a-number", 5, 9, "0/0", notANumber, 5, 5);
            }
        }
    }

    // A keystroke looks at no limit, finishing and formatting clamp. What a constructor
    // reports is kept.
    void aNumber()
    {
        QFETCH(const Kind*, kind);
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(QString, text);
        QFETCH(double, typed);
        QFETCH(double, finished);
        QFETCH(double, shown);
        if (!kind->rangeReport.empty() && (min > max || (min == max && !kind->oneNumberIsARange)))
            expectAssert(kind->rangeReport, kind->limits);
        const Field field = kind->make(min, max, true);
        const Outcome keystroke = outcomeOf(field, &IValidator::validate, text);
        QVERIFY(keystroke.accepted);
        QCOMPARE(keystroke.value.type().name(), kind->valueOf(0.0).type().name());
        QCOMPARE(plain(keystroke.value), plain(kind->valueOf(typed)));
        const Outcome end = outcomeOf(field, &IValidator::validateWhenFinished, text);
        QVERIFY(end.accepted);
        QCOMPARE(plain(end.value), plain(kind->valueOf(finished)));

        const QString number = QString::number(shown, 'f', kind->clampsRefusals ? 0 : 3);
        const bool hasUnit = kind->name == "distance" || kind->name == "quantity";
        const QString expected = hasUnit ? number + " m" : number;
        QCOMPARE(field.validator->reformat(keystroke.value, noFlags), expected);
        QCOMPARE(plain(keystroke.value), plain(kind->valueOf(typed)));
        field.validator->setPostfix("(net)");
        QCOMPARE(field.validator->reformat(keystroke.value, noFlags), expected);
        QCOMPARE(
            field.validator->reformatForDisplay(keystroke.value, noFlags), expected + " (net)");
    }

    void aRefusedText_data()
    {
        QTest::addColumn<const Kind*>("kind");
        QTest::addColumn<QString>("text");
        for (const Kind& kind : kinds()) {
            for (const char* text : {"abc", "five metres", "-m", "\xC2\xBD"})
                QTest::newRow(kind.name + ": " + text) << &kind << QString::fromUtf8(text);
        }
    }

    // Zero is left in the value, and only some clamp it.
    void aRefusedText()
    {
        QFETCH(const Kind*, kind);
        QFETCH(QString, text);
        for (const double min : {0.0, 5.0}) {
            const Field field = kind->make(min, 9.0, true);
            for (const bool emptyAllowed : {false, true}) {
                field.setEmptyValueAllowed(emptyAllowed);
                const Outcome keystroke = outcomeOf(field, &IValidator::validate, text);
                QVERIFY(!keystroke.accepted);
                QCOMPARE(plain(keystroke.value), plain(kind->valueOf(0.0)));
                const Outcome end = outcomeOf(field, &IValidator::validateWhenFinished, text);
                QVERIFY(!end.accepted);
                QCOMPARE(plain(end.value), plain(kind->valueOf(kind->clampsRefusals ? min : 0.0)));
            }
        }
    }

    void aForeignTypeIsReportedAndIsANullText_data()
    {
        QTest::addColumn<const Kind*>("kind");
        QTest::addColumn<boost::any>("value");
        QTest::addColumn<bool>("emptyAllowed");
        const std::pair<const char*, boost::any> values[] = {{"an int", 1}, {"an unsigned int", 1U},
            {"an unsigned short", static_cast<unsigned short>(1)}, {"a float", 1.0F},
            {"a double", 1.0}, {"a text", QString("1")}, {"an id without a number", UnitId::METRE},
            {"a quantity", Quantity{UnitId::METRE, 1.0}}};
        for (const Kind& kind : kinds()) {
            for (const auto& [name, value] : values) {
                if (value.type() == kind.valueOf(1.0).type())
                    continue;
                QTest::newRow(kind.name + ": " + name) << &kind << value << false;
                QTest::newRow(kind.name + ": " + name + " where no value is allowed")
                    << &kind << value << true;
            }
        }
    }

    void aForeignTypeIsReportedAndIsANullText()
    {
        QFETCH(const Kind*, kind);
        QFETCH(boost::any, value);
        QFETCH(bool, emptyAllowed);
        const Field field = kind->make5To9();
        field.setEmptyValueAllowed(emptyAllowed);
        expectAssert(kind->typeReport, kind->typeValues);
        QVERIFY(field.validator->reformat(value, noFlags).isNull());
        if (!kind->typeValues.empty())
            QCOMPARE(asserts().last().values.at(0).second, std::string(value.type().name()));
    }

    void theFlags_data()
    {
        QTest::addColumn<const Kind*>("kind");
        QTest::addColumn<QString>("text");
        QTest::addColumn<boost::any>("inC");
        QTest::addColumn<boost::any>("inUsers");
        QTest::addColumn<QString>("shownInC");
        QTest::addColumn<QString>("shownInUsers");
        const auto row = [](const char* name, const char* text, const boost::any& inC,
                             const boost::any& inUsers, const char* shownInC,
                             const char* shownInUsers) {
            const Kind& kind = kindOf(name);
            QTest::newRow(kind.name + ": " + text)
                << &kind << text << inC << inUsers << shownInC << shownInUsers;
        };
        const boost::any refused;
        const char* const decimals = "12345.000";
        row("double", "1,5", refused, 1.5, decimals, "12.345,000");
        row("double", "1.5", 1.5, refused, decimals, "12.345,000");
        row("double", "1.234,5", refused, 1234.5, decimals, "12.345,000");
        row("double", "1.234", 1.234, 1234.0, decimals, "12.345,000");
        row("double", "15", 15.0, 15.0, decimals, "12.345,000");
        for (const char* integer : {"int", "unsigned int", "unsigned short"}) {
            const boost::any number = kindOf(integer).valueOf(12345.0);
            row(integer, "12345", number, number, "12345", "12345");
            row(integer, "12.345", refused, refused, "12345", "12345");
            row(integer, "12,345", refused, refused, "12345", "12345");
        }
        // The comma ends the text before a unit.
        row("distance", "1,5", 0.0, 1.5, "12345.000 m", "12.345,000 m");
        row("distance", "1.234", 1.234, 1234.0, "12345.000 m", "12.345,000 m");
        // A number before a unit is always in the C locale.
        row("distance", "1.5 m", 1.5, 1.5, "12345.000 m", "12.345,000 m");
        row("distance", "1,5 m", refused, refused, "12345.000 m", "12.345,000 m");
        // The comma ends the number. The user's std::locale is not that of Qt here.
        row("quantity", "1,5", 1.0, 1.0, "12345.000 m", "12345.000 m");
        row("quantity", "1.5 m", 1.5, 1.5, "12345.000 m", "12345.000 m");
    }

    // The first flag chooses the locale; the others mean nothing.
    void theFlags()
    {
        QFETCH(const Kind*, kind);
        QFETCH(QString, text);
        QFETCH(boost::any, inC);
        QFETCH(boost::any, inUsers);
        QFETCH(QString, shownInC);
        QFETCH(QString, shownInUsers);
        const Field field = kind->make(0.0, 50000.0, true);
        for (const auto& flags : {noFlags, ~userLocale, userLocale, ~noFlags}) {
            const bool isUsers = flags.test(ValidationFlagUserLocale);
            const boost::any& expected = isUsers ? inUsers : inC;
            for (const Validate operation :
                {&IValidator::validate, &IValidator::validateWhenFinished}) {
                const Outcome outcome = outcomeOf(field, operation, text, flags);
                QCOMPARE(outcome.accepted, !expected.empty());
                QCOMPARE(
                    plain(outcome.value), expected.empty() ? plain(kind->valueOf(0.0)) : expected);
            }
            QCOMPARE(field.validator->reformat(kind->valueOf(12345.0), flags),
                isUsers ? shownInUsers : shownInC);
        }
    }

    void aHostileText_data()
    {
        QTest::addColumn<const Kind*>("kind");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("name");
        for (const Kind& kind : kinds()) {
            for (const auto& [name, text] : vrn::test::hostileTexts())
                QTest::newRow(kind.name + ": " + name) << &kind << text << name;
        }
    }

    void aHostileText()
    {
        QFETCH(const Kind*, kind);
        QFETCH(QString, text);
        QFETCH(QByteArray, name);
        const Outcome expected = kind->hostile(name, text);
        const double number = numberIn(expected.value);
        const bool clamps = (expected.accepted || kind->clampsRefusals) && !std::isnan(number);
        const double finished = clamps ? qBound(5.0, number, 9.0) : number;
        for (const Validate operation :
            {&IValidator::validate, &IValidator::validateWhenFinished}) {
            const Field field = kind->make5To9();
            Outcome outcome;
            vrn::test::verifyTakesAKeystroke(
                "the text", [&] { outcome = outcomeOf(field, operation, text); });
            QVERIFY(outcome.unknownUnit == expected.unknownUnit);
            QCOMPARE(outcome.accepted, expected.accepted);
            const bool ends = operation == &IValidator::validateWhenFinished;
            QCOMPARE(plain(outcome.value), plain(kind->valueOf(ends ? finished : number)));
        }
        // No field is typed into in the user's locale; there it only must go well.
        outcomeOf(kind->make5To9(), &IValidator::validate, text, userLocale);
    }
};

VRN_TEST(TestNumericValidatorContract)
#include "tst_numeric_validator_contract.moc"
