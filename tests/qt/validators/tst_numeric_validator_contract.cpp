#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/double_edit_validator.h>
#include <vrn/qt/integer_validator.h>
#include <vrn/qt/unit_validator.h>
#include <vrn/units/unknown_unit.h>

#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QHash>
#include <QLocale>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

using namespace vrn::qt;
using vrn::test::columns;
using vrn::test::row;
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

// What came of a text: it was accepted or refused and left a value, or its unit was thrown.
struct Outcome
{
    bool accepted = false;
    boost::any value = QString("before");
    std::optional<QByteArray> unknownUnit;
};

// What is to come of a hostile text, before any clamping.
struct Answer
{
    bool accepted = false;
    double number = 0.0;
    std::optional<QByteArray> unknownUnit;
};

using Validate = bool (IValidator::*)(const QString&, boost::any&, const std::bitset<32>&);
constexpr Validate operations[] = {&IValidator::validate, &IValidator::validateWhenFinished};

enum class Sort
{
    Double,
    Integer,
    Distance,
    Quantity
};

// One of the numeric validators, and how it differs from the others.
struct Kind
{
    QByteArray name;
    Sort sort;
    std::function<Field(double min, double max, bool zeroIfEmpty)> make;
    /// The value that stands for a number.
    std::function<boost::any(double)> valueOf;
    int decimals;
    QString unit;
    Answer (*hostile)(const QByteArray& name, const QString& text);

    QString textOf(double number) const { return QString::number(number, 'f', decimals) + unit; }

    bool isBadRange(double min, double max) const
    {
        return sort == Sort::Integer ? min > max : sort != Sort::Quantity && min >= max;
    }
};

// A form of the value that can be compared: the number of a quantity and its id, or the
// value itself.
boost::any plain(const boost::any& value)
{
    if (const auto* quantity = boost::any_cast<Quantity>(&value))
        return QString("%1 of %2").arg(quantity->value, 0, 'g', 17).arg(int(quantity->unit_id));
    return value;
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

// What is a number is Qt's matter. That nothing else is made of a text is ours.
Answer hostileDouble(const QByteArray& /*name*/, const QString& text)
{
    Answer answer;
    const QLocale c(QLocale::C, QLocale::AnyCountry);
    const double number = c.toDouble(text, &answer.accepted);
    answer.number = answer.accepted ? number : 0.0;
    return answer;
}

template <typename T>
Answer hostileInteger(const QByteArray& /*name*/, const QString& text)
{
    Answer answer;
    answer.number = static_cast<T>(text.toLongLong(&answer.accepted, 10));
    return answer;
}

Answer hostileDistance(const QByteArray& name, const QString& /*text*/)
{
    static const QHash<QByteArray, Answer> answers = {
        {"a mebi of zeros", {true, 0.0, {}}},
        {"a mebi of the digit 7", {true, 0.0, {}}},
        {"a number with a mebi of decimals", {true, 1.0 / 3.0, {}}},
        {"a mebi of blanks", {true, 0.0, {}}},
        {"digits of the Arabic script", {true, 0.0, {}}},
        {"a number beyond 64 bits", {true, 1e20, {}}},
        {"nan", {true, notANumber, {}}},
        {"inf", {true, infinity, {}}},
        {"minus inf", {true, -infinity, {}}},
        {"a zero character inside", {false, 0.0, QByteArray("\0002", 2)}},
        {"a line break inside", {false, 0.0, "2"}},
        {"a carriage return and a tab", {false, 0.0, "2"}},
        {"1e999", {false, 0.0, "e999"}},
        {"-1e999", {false, 0.0, "e999"}},
        {"1e-999", {false, 0.0, "e-999"}},
        {"0x10", {false, 0.0, "x10"}},
    };
    return answers.value(name);
}

Answer hostileLoad(const QByteArray& name, const QString& /*text*/)
{
    static const QHash<QByteArray, Answer> answers = {
        {"a mebi of the digit 7", {true, highest, {}}},
        {"a mebi of zeros", {true, 0.0, {}}},
        {"a mebi of points", {true, 0.0, {}}},
        {"a mebi of commas", {true, 0.0, {}}},
        {"a number with a mebi of decimals", {true, 1.0 / 3.0, {}}},
        {"1e999", {true, highest, {}}},
        {"-1e999", {true, lowest, {}}},
        {"1e-999", {true, 0.0, {}}},
        {"a number beyond 64 bits", {true, 1e20, {}}},
    };
    return answers.value(name);
}

// Apostrophes are feet and inches, each of them missing.
Answer hostileLength(const QByteArray& name, const QString& text)
{
    return name == "a mebi of apostrophes" ? Answer{true, 0.0, {}} : hostileLoad(name, text);
}

boost::any valueOfDouble(double number)
{
    return number;
}

Kind doubles()
{
    const auto make = [](double min, double max, bool zeroIfEmpty) {
        return fieldOf(std::make_unique<DoubleEditValidator>(3, min, max, zeroIfEmpty));
    };
    return {"double", Sort::Double, make, &valueOfDouble, 3, "", &hostileDouble};
}

template <typename T>
Kind integers(const char* name)
{
    const auto make = [](double min, double max, bool zeroIfEmpty) {
        return fieldOf(std::make_unique<IntegerValidator<T>>(
            static_cast<T>(min), static_cast<T>(max), zeroIfEmpty));
    };
    const auto valueOf = [](double number) { return boost::any(static_cast<T>(number)); };
    return {name, Sort::Integer, make, valueOf, 0, "", &hostileInteger<T>};
}

Kind distances()
{
    const auto make = [](double min, double max, bool zeroIfEmpty) {
        auto validator = std::make_unique<DistanceEditValidator>(
            UnitId::METRE, min, max, zeroIfEmpty);
        validator->showUnitPostfix(true);
        return fieldOf(std::move(validator));
    };
    return {"distance", Sort::Distance, make, &valueOfDouble, 3, " m", &hostileDistance};
}

Kind quantities(const char* name, UnitId::UnitId id, int decimals, const char* unit,
    Answer (*hostile)(const QByteArray&, const QString&))
{
    const auto make = [id](double min, double max, bool /*zeroIfEmpty*/) {
        auto validator = std::make_unique<UnitValidator>(Context(), id);
        validator->set_minimum(min);
        validator->set_maximum(max);
        return fieldOf(std::move(validator));
    };
    const auto valueOf = [id](double number) { return boost::any(Quantity{id, number}); };
    return {name, Sort::Quantity, make, valueOf, decimals, unit, hostile};
}

const std::vector<Kind>& kinds()
{
    static const std::vector<Kind> all = {doubles(), integers<int>("int"),
        integers<unsigned int>("unsigned int"), integers<unsigned short>("unsigned short"),
        distances(), quantities("length", UnitId::GEO_LENGTH, 3, " m", &hostileLength),
        quantities("load", UnitId::LOAD_AREA, 2, " kN/m2", &hostileLoad)};
    return all;
}

} // namespace

Q_DECLARE_METATYPE(const Kind*)

// What all numeric validators do in the same way, and where they differ. The user's locale
// of Qt has a decimal comma: a validator that reads it without being told to fails here.
class TestNumericValidatorContract : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void anEmptyText_data()
    {
        columns<const Kind*, QString>("kind", "setup");
        const std::pair<const char*, const char*> setups[] = {{"counts as zero", "zero"},
            {"counts for nothing", "refused"}, {"is no value", "zero yes"},
            {"is no value instead of a refusal", "refused yes"}, {"is not allowed", "zero no"},
            {"is not allowed and not refused", "refused no"},
            {"is not allowed any more", "zero yes no"}};
        for (const Kind& kind : kinds()) {
            for (const auto& [name, setup] : setups) {
                // A quantity has no way to refuse it.
                if (kind.sort != Sort::Quantity || QString(setup).startsWith("zero"))
                    row(kind.name + ": " + name, &kind, setup);
            }
        }
    }

    // The zero of an empty text is clamped as any number; no value is not.
    void anEmptyText()
    {
        QFETCH(const Kind*, kind);
        QFETCH(QString, setup);
        const Field field = kind->make(5.0, 9.0, setup.startsWith("zero"));
        for (const QString& step : setup.split(' ').mid(1))
            field.setEmptyValueAllowed(step == "yes");

        const bool isInteger = kind->sort == Sort::Integer;
        // To a distance it is a text that ends before a unit.
        const bool accepted = setup != "refused" || kind->sort == Sort::Distance;
        const bool allowed = setup.endsWith("yes");
        const bool shownAsZero = isInteger && accepted && !allowed;
        const boost::any zero = allowed || shownAsZero ? boost::any() : kind->valueOf(0.0);
        const bool clamped = !zero.empty() && (accepted || isInteger);
        for (const QString& text : {QString(""), QString()}) {
            const Outcome keystroke = outcomeOf(field, &IValidator::validate, text);
            QCOMPARE(keystroke.accepted, accepted);
            QCOMPARE(plain(keystroke.value), plain(zero));
            const Outcome end = outcomeOf(field, &IValidator::validateWhenFinished, text);
            QCOMPARE(end.accepted, accepted);
            QCOMPARE(plain(end.value), plain(clamped ? kind->valueOf(5.0) : zero));
        }
        if (!allowed && !shownAsZero)
            expectForeignType(*kind);
        QCOMPARE(field.validator->reformat({}, noFlags), QString(shownAsZero ? "0" : ""));
    }

    void aNumber_data()
    {
        columns<const Kind*, double, double, QString, double, double, double>(
            "kind", "min", "max", "text", "typed", "finished", "shown");
        for (const Kind& kind : kinds()) {
            const auto number = [&kind](const char* name, double min, double max, const char* text,
                                    double typed, double finished, double shown) {
                row(kind.name + ": " + name, &kind, min, max, text, typed, finished, shown);
            };
            number("below the range", 5, 9, "3", 3, 5, 5);
            number("the minimum itself", 5, 9, "5", 5, 5, 5);
            number("in the range", 5, 9, "7", 7, 7, 7);
            number("the maximum itself", 5, 9, "9", 9, 9, 9);
            number("above the range", 5, 9, "12", 12, 9, 9);
            number("a range of one number, from below", 5, 5, "3", 3, 5, 5);
            number("a range of one number, from above", 5, 5, "7", 7, 5, 5);
            // Finishing looks at the minimum first, and at the maximum only if the number is
            // not below it. Some format in the same order. The others bring the number below
            // the maximum, then above the minimum.
            const bool minimumWins = kind.sort == Sort::Integer || kind.sort == Sort::Distance;
            number("below a reversed range", 9, 1, "0", 0, 9, 9);
            number("in a reversed range", 9, 1, "5", 5, 9, 9);
            number("the minimum of a reversed range", 9, 1, "9", 9, 1, minimumWins ? 9 : 1);
            number("above a reversed range", 9, 1, "10", 10, 1, minimumWins ? 9 : 1);
            if (!kind.name.startsWith("unsigned")) {
                number("below a negative range", -9, -5, "-12", -12, -9, -9);
                number("in a negative range", -9, -5, "-7", -7, -7, -7);
                number("above a negative range", -9, -5, "0", 0, -5, -5);
            }
            if (kind.sort != Sort::Integer) {
                const bool isQuantity = kind.sort == Sort::Quantity;
                number("infinity", 5, 9, isQuantity ? "1/0" : "inf", infinity, 9, 9);
                number("minus infinity", 5, 9, isQuantity ? "-1/0" : "-inf", -infinity, 5, 5);
                number("not-a-number", 5, 9, isQuantity ? "0/0" : "nan", notANumber,
                    isQuantity ? 5 : notANumber, kind.sort == Sort::Distance ? 9 : 5);
            }
        }
    }

    // A keystroke looks at no limit; finishing and formatting clamp. A bad range is reported
    // and kept.
    void aNumber()
    {
        QFETCH(const Kind*, kind);
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(QString, text);
        QFETCH(double, typed);
        QFETCH(double, finished);
        QFETCH(double, shown);
        if (kind->isBadRange(min, max) && kind->sort == Sort::Integer)
            expectAssert("min <= max", {"min", "max"});
        else if (kind->isBadRange(min, max))
            expectAssert("m_min < m_max", {"m_min", "m_max"});
        const Field field = kind->make(min, max, true);
        const Outcome keystroke = outcomeOf(field, &IValidator::validate, text);
        QVERIFY(keystroke.accepted);
        QCOMPARE(plain(keystroke.value), plain(kind->valueOf(typed)));
        const Outcome end = outcomeOf(field, &IValidator::validateWhenFinished, text);
        QVERIFY(end.accepted);
        QCOMPARE(plain(end.value), plain(kind->valueOf(finished)));

        field.validator->setPostfix("(net)");
        QCOMPARE(field.validator->reformat(keystroke.value, noFlags), kind->textOf(shown));
        QCOMPARE(field.validator->reformatForDisplay(keystroke.value, noFlags),
            kind->textOf(shown) + " (net)");
        QCOMPARE(plain(keystroke.value), plain(kind->valueOf(typed)));
    }

    void aRefusedText_data()
    {
        columns<const Kind*, QString>("kind", "text");
        for (const Kind& kind : kinds()) {
            for (const char* text : {"abc", "five metres", "-m", "\xC2\xBD"})
                row(kind.name + ": " + text, &kind, QString::fromUtf8(text));
            if (kind.sort != Sort::Distance)
                row(kind.name + ": blanks are not empty", &kind, "  ");
        }
    }

    // A zero is left in the value. Only the integers clamp it.
    void aRefusedText()
    {
        QFETCH(const Kind*, kind);
        QFETCH(QString, text);
        for (const double min : {0.0, 5.0}) {
            const Field field = kind->make(min, 9.0, true);
            const double finished = kind->sort == Sort::Integer ? min : 0.0;
            for (const bool emptyAllowed : {false, true}) {
                field.setEmptyValueAllowed(emptyAllowed);
                const Outcome keystroke = outcomeOf(field, &IValidator::validate, text);
                QVERIFY(!keystroke.accepted);
                QCOMPARE(plain(keystroke.value), plain(kind->valueOf(0.0)));
                const Outcome end = outcomeOf(field, &IValidator::validateWhenFinished, text);
                QVERIFY(!end.accepted);
                QCOMPARE(plain(end.value), plain(kind->valueOf(finished)));
            }
        }
    }

    void aForeignTypeIsReportedAndIsANullText_data()
    {
        columns<const Kind*, boost::any>("kind", "value");
        const std::pair<const char*, boost::any> values[] = {{"an int", 1}, {"an unsigned int", 1U},
            {"an unsigned short", static_cast<unsigned short>(1)}, {"a float", 1.0F},
            {"a double", 1.0}, {"a text", QString("1")}, {"an id without a number", UnitId::METRE},
            {"a quantity", Quantity{UnitId::METRE, 1.0}}};
        for (const Kind& kind : kinds()) {
            for (const auto& [name, value] : values) {
                if (value.type() != kind.valueOf(1.0).type())
                    row(kind.name + ": " + name, &kind, value);
            }
        }
    }

    void aForeignTypeIsReportedAndIsANullText()
    {
        QFETCH(const Kind*, kind);
        QFETCH(boost::any, value);
        const Field field = kind->make(5.0, 9.0, true);
        for (const bool emptyAllowed : {false, true}) {
            field.setEmptyValueAllowed(emptyAllowed);
            expectForeignType(*kind);
            QVERIFY(field.validator->reformat(value, noFlags).isNull());
            asserts().verify();
            if (kind->sort != Sort::Quantity)
                QCOMPARE(asserts().last().values.at(0).second, std::string(value.type().name()));
        }
    }

    void theFlags_data()
    {
        columns<const Kind*, QString, boost::any, boost::any, QString>(
            "kind", "text", "inC", "inUsers", "shownInUsers");
        const boost::any refused;
        for (const Kind& kind : kinds()) {
            const auto text = [&kind](const char* typed, const boost::any& inC,
                                  const boost::any& inUsers, const QString& shownInUsers) {
                row(kind.name + ": " + typed, &kind, typed, inC, inUsers, shownInUsers);
            };
            if (kind.sort == Sort::Double) {
                text("1,5", refused, 1.5, "12.345,000");
                text("1.5", 1.5, refused, "12.345,000");
                text("1.234,5", refused, 1234.5, "12.345,000");
                text("1.234", 1.234, 1234.0, "12.345,000");
                text("15", 15.0, 15.0, "12.345,000");
            } else if (kind.sort == Sort::Integer) {
                text("12345", kind.valueOf(12345), kind.valueOf(12345), "12345");
                text("12.345", refused, refused, "12345");
                text("12,345", refused, refused, "12345");
            } else if (kind.sort == Sort::Distance) {
                // In C the text ends before a unit.
                text("1,5", 0.0, 1.5, "12.345,000 m");
                text("1.234", 1.234, 1234.0, "12.345,000 m");
                // A number before a unit is always read in the C locale.
                text("1.5 m", 1.5, 1.5, "12.345,000 m");
                text("1,5 m", refused, refused, "12.345,000 m");
            } else {
                // The comma ends the number. The user's std::locale is not that of Qt.
                text("1,5", kind.valueOf(1.0), kind.valueOf(1.0), kind.textOf(12345));
                text("1.5", kind.valueOf(1.5), kind.valueOf(1.5), kind.textOf(12345));
            }
        }
    }

    // The first flag chooses the locale; the others mean nothing.
    void theFlags()
    {
        QFETCH(const Kind*, kind);
        QFETCH(QString, text);
        QFETCH(boost::any, inC);
        QFETCH(boost::any, inUsers);
        QFETCH(QString, shownInUsers);
        const Field field = kind->make(0.0, 50000.0, true);
        for (const auto& flags : {noFlags, ~userLocale, userLocale, ~noFlags}) {
            const bool isUsers = flags.test(ValidationFlagUserLocale);
            const boost::any& read = isUsers ? inUsers : inC;
            for (const Validate operation : operations) {
                const Outcome outcome = outcomeOf(field, operation, text, flags);
                QCOMPARE(outcome.accepted, !read.empty());
                QCOMPARE(plain(outcome.value), plain(read.empty() ? kind->valueOf(0.0) : read));
            }
            QCOMPARE(field.validator->reformat(kind->valueOf(12345.0), flags),
                isUsers ? shownInUsers : kind->textOf(12345.0));
        }
    }

    void aHostileText_data()
    {
        columns<const Kind*, QString, QByteArray>("kind", "text", "name");
        for (const Kind& kind : kinds()) {
            for (const auto& [name, text] : vrn::test::hostileTexts())
                row(kind.name + ": " + name, &kind, text, name);
        }
    }

    void aHostileText()
    {
        QFETCH(const Kind*, kind);
        QFETCH(QString, text);
        QFETCH(QByteArray, name);
        const Answer expected = kind->hostile(name, text);
        const double number = expected.number;
        const bool clamps = expected.accepted || kind->sort == Sort::Integer;
        const double finished = clamps && !std::isnan(number) ? qBound(5.0, number, 9.0) : number;
        for (const Validate operation : operations) {
            const Field field = kind->make(5.0, 9.0, true);
            Outcome outcome;
            vrn::test::verifyTakesAKeystroke(
                "the text", [&] { outcome = outcomeOf(field, operation, text); });
            QVERIFY(outcome.unknownUnit == expected.unknownUnit);
            QCOMPARE(outcome.accepted, expected.accepted);
            const bool ends = operation == &IValidator::validateWhenFinished;
            QCOMPARE(plain(outcome.value), plain(kind->valueOf(ends ? finished : number)));
        }
        // No field is typed into in the user's locale. There the text must only do no harm.
        outcomeOf(kind->make(5.0, 9.0, true), &IValidator::validate, text, userLocale);
    }

private:
    void expectForeignType(const Kind& kind)
    {
        if (kind.sort == Sort::Quantity)
            expectAssert("value.type() == typeid(units::IConverter::quantity)");
        else if (kind.sort == Sort::Integer)
            expectAssert("value.type() == typeid(value_type)", {"value.type().name()"});
        else
            expectAssert("value.type() == typeid(double)", {"value.type().name()"});
    }
};

VRN_TEST(TestNumericValidatorContract)
#include "tst_numeric_validator_contract.moc"
