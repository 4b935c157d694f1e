#include <vrn/q/input_context.h>
#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/forward_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/units/unknown_unit.h>

#include <boost/make_shared.hpp>

#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QHash>
#include <QLineEdit>
#include <QLocale>
#include <QScopeGuard>

#include <limits>
#include <memory>
#include <optional>

using vrn::qt::DistanceEditValidator;
using vrn::qt::ForwardValidator;
using vrn::qt::SimpleLineEdit;
using vrn::qt::ValidationFlagUserLocale;
using vrn::units::Context;
using vrn::units::set_active_input_context;
using vrn::units::UnknownUnit;

namespace UnitId = vrn::units::UnitId;

namespace {

constexpr int metre = 13;
constexpr int centimetre = 15;
constexpr int millimetre = 16;
constexpr int foot = 213;
constexpr int inch = 214;
constexpr int notAUnit = -7;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const std::bitset<32> noFlags;
const std::bitset<32> userLocale(1U << ValidationFlagUserLocale);
const std::bitset<32> allButUserLocale = ~userLocale;

// A field without limits that a test would notice.
DistanceEditValidator fieldOf(int unit)
{
    return {unit, -1e9, 1e9, true};
}

// What came of a text: accepted or refused with a value, or the unit thrown.
struct Outcome
{
    bool accepted = false;
    boost::any value = QString("before");
    std::optional<QByteArray> unknownUnit;
};

using Operation = bool (DistanceEditValidator::*)(
    const QString&, boost::any&, const std::bitset<32>&);

Outcome outcomeOf(DistanceEditValidator& validator, Operation operation, const QString& text,
    const std::bitset<32>& flags = noFlags)
{
    Outcome outcome;
    try {
        outcome.accepted = (validator.*operation)(text, outcome.value, flags);
    } catch (const UnknownUnit& error) {
        outcome.unknownUnit = QByteArray::fromStdString(error.unit());
    }
    return outcome;
}

constexpr Operation keystroke = &DistanceEditValidator::validate;
constexpr Operation finish = &DistanceEditValidator::validateWhenFinished;

double number(const boost::any& value)
{
    const double* held = boost::any_cast<double>(&value);
    if (!held)
        QTest::qFail("the value holds no double", __FILE__, __LINE__);
    return held ? *held : 0.0;
}

} // namespace

// The user's locale has a decimal comma throughout: a validator that reads it
// without being told to fails here.
class TestDistanceEditValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void anEmptyText_data()
    {
        QTest::addColumn<bool>("zeroIfEmpty");
        QTest::addColumn<QString>("emptyAllowed");
        QTest::addColumn<boost::any>("value");
        const boost::any zero = 0.0;
        const boost::any none;
        QTest::newRow("is zero where it counts as zero") << true << "as built" << zero;
        QTest::newRow("is a text without a unit, and zero, where it counts for nothing")
            << false << "as built" << zero;
        QTest::newRow("is no value where that is allowed") << false << "yes" << none;
        QTest::newRow("is no value where that is allowed later") << true << "yes" << none;
        QTest::newRow("is zero where no value is allowed later") << false << "no" << zero;
    }

    void anEmptyText()
    {
        QFETCH(bool, zeroIfEmpty);
        QFETCH(QString, emptyAllowed);
        QFETCH(boost::any, value);
        DistanceEditValidator validator(metre, -1.0, 1.0, zeroIfEmpty);
        if (emptyAllowed != "as built")
            validator.setEmptyValueAllowed(emptyAllowed == "yes");
        for (const QString& text : {QString(""), QString()}) {
            boost::any got = QString("before");
            QVERIFY(validator.validate(text, got, noFlags));
            QCOMPARE(got, value);
            got = QString("before");
            QVERIFY(validator.validateWhenFinished(text, got, noFlags));
            QCOMPARE(got, value);
        }
    }

    // Blanks are no empty text; they run out without a unit.
    void blanksAreZeroWhateverEmptyTextIs_data()
    {
        QTest::addColumn<bool>("zeroIfEmpty");
        QTest::addColumn<bool>("emptyAllowed");
        QTest::newRow("empty text counts as zero") << true << false;
        QTest::newRow("empty text is no value") << false << true;
        QTest::newRow("empty text counts for nothing") << false << false;
    }

    void blanksAreZeroWhateverEmptyTextIs()
    {
        QFETCH(bool, zeroIfEmpty);
        QFETCH(bool, emptyAllowed);
        DistanceEditValidator validator(metre, -1.0, 1.0, zeroIfEmpty);
        if (emptyAllowed)
            validator.setEmptyValueAllowed(true);
        boost::any value;
        QVERIFY(validator.validate(" \t ", value, noFlags));
        QCOMPARE(value, boost::any(0.0));
    }

    void theZeroOfAnEmptyTextIsClamped()
    {
        DistanceEditValidator validator(metre, 5.0, 9.0, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished("", value, noFlags));
        QCOMPARE(value, boost::any(5.0));
    }

    void noValueIsNotClamped()
    {
        DistanceEditValidator validator(metre, 5.0, 9.0, true);
        validator.setEmptyValueAllowed(true);
        boost::any value = 7;
        QVERIFY(validator.validateWhenFinished("", value, noFlags));
        QCOMPARE(value, boost::any());
    }

    void aBareNumberIsInTheFieldsUnit_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("metres");
        QTest::newRow("metres") << metre << "1.5" << 1.5;
        QTest::newRow("centimetres") << centimetre << "150" << 1.5;
        QTest::newRow("millimetres") << millimetre << "1500" << 1.5;
        QTest::newRow("feet") << foot << "10" << 3.048;
        QTest::newRow("inches") << inch << "10" << 0.254;
        QTest::newRow("a negative number") << millimetre << "-1500" << -1.5;
        QTest::newRow("a plus sign") << millimetre << "+1500" << 1.5;
        QTest::newRow("an exponent") << millimetre << "1.5e3" << 1.5;
        QTest::newRow("blanks around") << millimetre << " 1500 " << 1.5;
        QTest::newRow("infinity") << millimetre << "inf" << infinity;
        QTest::newRow("not-a-number") << millimetre << "nan" << notANumber;
    }

    void aBareNumberIsInTheFieldsUnit()
    {
        QFETCH(int, unit);
        QFETCH(QString, text);
        QFETCH(double, metres);
        auto validator = fieldOf(unit);
        boost::any value;
        QVERIFY(validator.validate(text, value, noFlags));
        QCOMPARE(number(value), metres);
    }

    void aUnitBehindTheNumberIsUnderstoodInEveryField_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("metres");
        QTest::newRow("metres") << "5 m" << 5.0;
        QTest::newRow("decimetres") << "5 dm" << 0.5;
        QTest::newRow("centimetres") << "150 cm" << 1.5;
        QTest::newRow("millimetres") << "1500 mm" << 1.5;
        QTest::newRow("a decimal point") << "1.5 cm" << 0.015;
        QTest::newRow("no blank before the unit") << "1.5cm" << 0.015;
        QTest::newRow("no point and no blank") << "5m" << 5.0;
        QTest::newRow("several blanks before the unit") << "5   cm" << 0.05;
        QTest::newRow("a tab before the unit") << "5\tcm" << 0.05;
        QTest::newRow("a no-break space before the unit")
            << QString("5%1cm").arg(QChar(0xA0)) << 0.05;
        QTest::newRow("blanks around everything") << "  5 cm  " << 0.05;
        QTest::newRow("no digit before the point") << ".5 m" << 0.5;
        QTest::newRow("no digit behind the point") << "5. m" << 5.0;
        QTest::newRow("a minus sign counts as a punctuation mark") << "-1m" << -1.0;
        QTest::newRow("a minus sign and a blank before the unit") << "-15 cm" << -0.15;
    }

    void aUnitBehindTheNumberIsUnderstoodInEveryField()
    {
        QFETCH(QString, text);
        QFETCH(double, metres);
        for (const int unit : {metre, centimetre, millimetre, foot, inch}) {
            auto validator = fieldOf(unit);
            for (const Operation operation : {keystroke, finish}) {
                const Outcome outcome = outcomeOf(validator, operation, text);
                QVERIFY(!outcome.unknownUnit);
                QVERIFY(outcome.accepted);
                QCOMPARE(number(outcome.value), metres);
            }
        }
    }

    void aNumberWithAUnitIsWorthTheSameNumberWithout()
    {
        auto validator = fieldOf(metre);
        boost::any withUnit;
        boost::any bare;
        QVERIFY(validator.validate("150 cm", withUnit, noFlags));
        QVERIFY(validator.validate("1.5", bare, noFlags));
        QCOMPARE(withUnit, bare);
    }

    void aTextThatEndsBeforeAUnitIsZero_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("a decimal comma") << "1,5";
        QTest::newRow("a comma behind a number") << "15,";
        QTest::newRow("a punctuation mark alone") << "-";
        QTest::newRow("a point alone") << ".";
        QTest::newRow("feet") << "5'";
        QTest::newRow("a fraction") << "1/2";
        QTest::newRow("a percentage") << "50%";
        QTest::newRow("blanks around") << "  1,5  ";
        QTest::newRow("blanks") << "   ";
    }

    void aTextThatEndsBeforeAUnitIsZero()
    {
        QFETCH(QString, text);
        auto validator = fieldOf(millimetre);
        boost::any value = QString("before");
        QVERIFY(validator.validate(text, value, noFlags));
        QCOMPARE(value, boost::any(0.0));
    }

    void theZeroOfSuchATextIsClampedAsAnyNumber()
    {
        DistanceEditValidator validator(metre, 5.0, 9.0, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished("1,5", value, noFlags));
        QCOMPARE(value, boost::any(5.0));
    }

    void noNumberBeforeTheUnitIsARefusal_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("letters") << "abc";
        QTest::newRow("a unit alone") << "m";
        QTest::newRow("a plus sign is no punctuation mark") << "+1m";
        QTest::newRow("a minus sign and a unit") << "-m";
        QTest::newRow("a minus sign, a point and a number") << "-.5m";
        QTest::newRow("two minus signs") << "--1 m";
        QTest::newRow("a minus sign behind the number") << "1-m";
        QTest::newRow("a decimal comma") << "1,5 cm";
        QTest::newRow("a group") << "1,000 m";
        QTest::newRow("a fraction") << "1/2 m";
        QTest::newRow("an unknown unit with no number before it") << "1,5 yd";
        QTest::newRow("feet and inches") << "5' 3''";
    }

    // The value stays 0.0: finishing does not clamp it.
    void noNumberBeforeTheUnitIsARefusal()
    {
        QFETCH(QString, text);
        DistanceEditValidator validator(metre, 5.0, 9.0, true);
        for (const Operation operation : {keystroke, finish}) {
            const Outcome outcome = outcomeOf(validator, operation, text);
            QVERIFY(!outcome.unknownUnit);
            QVERIFY(!outcome.accepted);
            QCOMPARE(outcome.value, boost::any(0.0));
        }
    }

    void anUnknownUnitIsThrown_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("unit");
        QTest::newRow("yards") << "2 yd" << QByteArray("yd");
        QTest::newRow("a unit in capitals") << "2 M" << QByteArray("M");
        QTest::newRow("a unit with one capital") << "2 Mm" << QByteArray("Mm");
        QTest::newRow("a unit with something behind") << "2 cm2" << QByteArray("cm2");
        QTest::newRow("two units") << "2 m m" << QByteArray("m m");
        QTest::newRow("the field's own unit where it is not metric") << "2 ft" << QByteArray("ft");
        QTest::newRow("a unit outside ASCII") << QString::fromUtf8("2 µm") << QByteArray("µm");
        QTest::newRow("an exponent") << "1e3m" << QByteArray("e3m");
        QTest::newRow("a second number") << "1 000 m" << QByteArray("000 m");
        QTest::newRow("a second decimal point") << "5.5.5" << QByteArray(".5");
        QTest::newRow("a decimal point behind a minus sign") << "-1.5 m" << QByteArray(".5 m");
        QTest::newRow("blanks around") << "  2   yd  " << QByteArray("yd");
        QTest::newRow("a plus sign as unit") << "2+" << QByteArray("+");
        QTest::newRow("a number too large for a double") << "1e999" << QByteArray("e999");
    }

    void anUnknownUnitIsThrown()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, unit);
        DistanceEditValidator validator(foot, 5.0, 9.0, true);
        for (const Operation operation : {keystroke, finish}) {
            const Outcome outcome = outcomeOf(validator, operation, text);
            QVERIFY(outcome.unknownUnit.has_value());
            QCOMPARE(*outcome.unknownUnit, unit);
            QCOMPARE(outcome.value, boost::any(0.0));
        }
    }

    void aKeystrokeLooksAtNoLimit()
    {
        DistanceEditValidator validator(millimetre, 0.0, 1.0, true);
        boost::any value;
        QVERIFY(validator.validate("5000", value, noFlags));
        QCOMPARE(number(value), 5.0);
        QVERIFY(validator.validate("-5 m", value, noFlags));
        QCOMPARE(number(value), -5.0);
    }

    // The limits are metres, whatever the field's unit.
    void finishingClamps_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("metres");
        QTest::newRow("a number above the range") << "5000" << 2.0;
        QTest::newRow("a number below the range") << "5" << 1.0;
        QTest::newRow("a number in the range") << "1500" << 1.5;
        QTest::newRow("a number with a unit above the range") << "5 m" << 2.0;
        QTest::newRow("a number with a unit below the range") << "5 cm" << 1.0;
        QTest::newRow("infinity") << "inf" << 2.0;
        QTest::newRow("minus infinity") << "-inf" << 1.0;
        QTest::newRow("not-a-number stays") << "nan" << notANumber;
    }

    void finishingClamps()
    {
        QFETCH(QString, text);
        QFETCH(double, metres);
        DistanceEditValidator validator(millimetre, 1.0, 2.0, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished(text, value, noFlags));
        QCOMPARE(number(value), metres);
    }

    // As after Enter: the formatted text is validated again.
    void nanEndsAsTheMaximum()
    {
        DistanceEditValidator validator(metre, 1.0, 2.0, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished("nan", value, noFlags));
        const QString shown = validator.reformat(value, noFlags);
        QCOMPARE(shown, QString("2.000"));
        QVERIFY(validator.validateWhenFinished(shown, value, noFlags));
        QCOMPARE(number(value), 2.0);
    }

    // Finishing looks at the minimum first, and only then else at the maximum;
    // formatting brings the number below the maximum, then above the minimum.
    void aMinimumAboveTheMaximum_data()
    {
        QTest::addColumn<double>("metres");
        QTest::addColumn<double>("finished");
        QTest::addColumn<QString>("text");
        QTest::newRow("a number below both") << 0.0 << 9.0 << "9.000";
        QTest::newRow("a number between") << 5.0 << 9.0 << "9.000";
        QTest::newRow("the minimum itself") << 9.0 << 1.0 << "9.000";
        QTest::newRow("a number above both") << 10.0 << 1.0 << "9.000";
    }

    void aMinimumAboveTheMaximum()
    {
        QFETCH(double, metres);
        QFETCH(double, finished);
        QFETCH(QString, text);
        expectAssert("m_min < m_max", {"m_min", "m_max"});
        DistanceEditValidator validator(metre, 9.0, 1.0, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished(QString::number(metres), value, noFlags));
        QCOMPARE(value, boost::any(finished));
        QCOMPARE(validator.reformat(metres, noFlags), text);
    }

    void aKindIsReadInTheUnitOfTheMoment()
    {
        const auto back = qScopeGuard([] { set_active_input_context(Context()); });
        DistanceEditValidator validator = fieldOf(UnitId::GEO_LENGTH);
        validator.showUnitPostfix(true);
        boost::any value;
        QVERIFY(validator.validate("2.000", value, noFlags));
        QCOMPARE(number(value), 2.0);
        QCOMPARE(validator.reformat(2.0, noFlags), QString("2.000 m"));
        set_active_input_context(Context(9));
        QVERIFY(validator.validate("2.000", value, noFlags));
        QCOMPARE(number(value), 0.0508);
        // The decimals stay: system 9 shows two.
        QCOMPARE(validator.reformat(0.0508, noFlags), QString("2.000 in"));
    }

    // The value is taken before the change, and set after it.
    void aFieldFollowsAChangeOfTheUnit()
    {
        const auto back = qScopeGuard([] { set_active_input_context(Context()); });
        const auto distance = [] {
            return boost::make_shared<DistanceEditValidator>(UnitId::GEO_LENGTH, -1e9, 1e9, true);
        };
        const auto forwarder = boost::make_shared<ForwardValidator>(distance());
        const std::unique_ptr<SimpleLineEdit> field(
            SimpleLineEdit::create(nullptr, {}, forwarder, 0, vrn::qt::ExpandHorizontal));
        field->setValue(2.0);
        const boost::any value = field->getValue();
        set_active_input_context(Context(9));
        field->setValue(value);
        QCOMPARE(field->edit()->text(), QString("78.740"));
        QCOMPARE(number(field->getValue()), 78.740 * 0.0254);
        forwarder->setValidator(distance());
        field->setValue(value);
        QCOMPARE(field->edit()->text(), QString("78.74"));
    }

    void aBadRangeIsReported_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::newRow("a minimum that is the maximum") << 1.0 << 1.0;
        QTest::newRow("a limit that is no number") << 1.0 << notANumber;
    }

    void aBadRangeIsReported()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        expectAssert("m_min < m_max", {"m_min", "m_max"});
        const DistanceEditValidator validator(metre, min, max, true);
    }

    void aValueIsWrittenInTheFieldsUnit_data()
    {
        QTest::addColumn<int>("unit");
        QTest::addColumn<double>("metres");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("textWithUnit");
        QTest::newRow("metres") << metre << 1.5 << "1.500"
                                << "1.500 m";
        QTest::newRow("centimetres") << centimetre << 1.5 << "150.0"
                                     << "150.0 cm";
        QTest::newRow("millimetres") << millimetre << 1.5 << "1500"
                                     << "1500 mm";
        QTest::newRow("feet") << foot << 3.048 << "10.000"
                              << "10.000 ft";
        QTest::newRow("inches") << inch << 0.254 << "10.000"
                                << "10.000 in";
        QTest::newRow("a negative value") << millimetre << -1.5 << "-1500"
                                          << "-1500 mm";
        QTest::newRow("a value to be rounded") << centimetre << 0.12345 << "12.3"
                                               << "12.3 cm";
    }

    void aValueIsWrittenInTheFieldsUnit()
    {
        QFETCH(int, unit);
        QFETCH(double, metres);
        QFETCH(QString, text);
        QFETCH(QString, textWithUnit);
        auto validator = fieldOf(unit);
        QCOMPARE(validator.reformat(metres, noFlags), text);
        validator.showUnitPostfix(true);
        QCOMPARE(validator.reformat(metres, noFlags), textWithUnit);
        validator.showUnitPostfix(false);
        QCOMPARE(validator.reformat(metres, noFlags), text);
    }

    void thePostfixStandsBehindTheUnit()
    {
        auto validator = fieldOf(metre);
        validator.showUnitPostfix(true);
        validator.setPostfix("(net)");
        QCOMPARE(validator.reformatForDisplay(1.5, noFlags), QString("1.500 m (net)"));
    }

    void formattingClamps_data()
    {
        QTest::addColumn<double>("metres");
        QTest::addColumn<QString>("text");
        QTest::newRow("a number above the range") << 5.0 << "2000";
        QTest::newRow("a number below the range") << 0.5 << "1000";
        QTest::newRow("a number in the range") << 1.5 << "1500";
        QTest::newRow("infinity") << infinity << "2000";
        QTest::newRow("minus infinity") << -infinity << "1000";
        QTest::newRow("not-a-number is the maximum") << notANumber << "2000";
    }

    void formattingClamps()
    {
        QFETCH(double, metres);
        QFETCH(QString, text);
        DistanceEditValidator validator(millimetre, 1.0, 2.0, true);
        QCOMPARE(validator.reformat(metres, noFlags), text);
    }

    void noValueIsAnEmptyTextWithoutAUnit()
    {
        auto validator = fieldOf(metre);
        validator.setEmptyValueAllowed(true);
        validator.showUnitPostfix(true);
        QCOMPARE(validator.reformat({}, noFlags), QString(""));
    }

    void aForeignTypeIsReportedAndIsANullText_data()
    {
        QTest::addColumn<boost::any>("value");
        QTest::addColumn<bool>("emptyAllowed");
        QTest::newRow("an integer") << boost::any(1) << false;
        QTest::newRow("a float") << boost::any(1.0F) << false;
        QTest::newRow("a text") << boost::any(QString("1.0")) << false;
        QTest::newRow("no value where none is allowed") << boost::any() << false;
        QTest::newRow("an integer where no value is allowed") << boost::any(1) << true;
    }

    void aForeignTypeIsReportedAndIsANullText()
    {
        QFETCH(boost::any, value);
        QFETCH(bool, emptyAllowed);
        auto validator = fieldOf(metre);
        validator.setEmptyValueAllowed(emptyAllowed);
        validator.showUnitPostfix(true);
        expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        QVERIFY(validator.reformat(value, noFlags).isNull());
        QCOMPARE(asserts().last().values.at(0).second, std::string(value.type().name()));
    }

    void theFlagsChooseTheLocaleOfABareNumber()
    {
        auto validator = fieldOf(metre);
        boost::any value;
        for (const std::bitset<32>& flags : {userLocale, ~noFlags}) {
            QVERIFY(validator.validate("1,5", value, flags));
            QCOMPARE(value, boost::any(1.5));
            QVERIFY(validator.validateWhenFinished("1.234,5", value, flags));
            QCOMPARE(value, boost::any(1234.5));
        }
        for (const std::bitset<32>& flags : {noFlags, allButUserLocale}) {
            QVERIFY(validator.validate("1,5", value, flags));
            QCOMPARE(value, boost::any(0.0));
            QVERIFY(validator.validate("1.5", value, flags));
            QCOMPARE(value, boost::any(1.5));
        }
    }

    // A number before a unit is always read in the C locale.
    void theFlagsDoNotChangeANumberBeforeAUnit()
    {
        auto validator = fieldOf(metre);
        boost::any value;
        QVERIFY(validator.validate("1.5 m", value, userLocale));
        QCOMPARE(value, boost::any(1.5));
        QVERIFY(!validator.validate("1,5 m", value, userLocale));
        QCOMPARE(value, boost::any(0.0));
    }

    void theFlagsChooseTheLocaleToWriteBy()
    {
        auto validator = fieldOf(metre);
        validator.showUnitPostfix(true);
        QCOMPARE(validator.reformat(1234.5, noFlags), QString("1234.500 m"));
        QCOMPARE(validator.reformat(1234.5, allButUserLocale), QString("1234.500 m"));
        QCOMPARE(validator.reformat(1234.5, userLocale), QString("1.234,500 m"));
    }

    void anUnknownFieldUnitIsReportedAndCountsAsTheMetre()
    {
        expectAssert("isKnownUnitIndex", {"unit"});
        auto validator = fieldOf(notAUnit);
        boost::any value;
        expectAssert("isKnownUnitIndex", {"unit"});
        QVERIFY(validator.validate("1.5", value, noFlags));
        QCOMPARE(value, boost::any(1.5));
        expectAssert("isKnownUnitIndex", {"unit"});
        QCOMPARE(validator.reformat(1.5, noFlags), QString("1.500"));
    }

    void hostileTexts_data()
    {
        QTest::addColumn<QString>("text");
        for (const auto& [name, text] : vrn::test::hostileTexts())
            QTest::newRow(name) << text;
        const QString digits(1024 * 1024, '7');
        QTest::newRow("a mebi of digits and a unit") << digits + " mm";
        QTest::newRow("a mebi of zeros and a unit") << QString(digits.size(), '0') + "5 mm";
        QTest::newRow("a number and a mebi of blanks") << "5" + QString(digits.size(), ' ') + "mm";
        QTest::newRow("digits of the Arabic script and a unit")
            << QString::fromUtf8("\u0661\u0662 mm");
    }

    // Only a number with an unknown text behind it may throw; every text that
    // is accepted or throws stands here, and all others are refused with 0.0.
    void hostileTexts()
    {
        QFETCH(QString, text);
        const QByteArray name = QTest::currentDataTag();
        static const QHash<QByteArray, double> accepted = {
            {"a mebi of zeros", 0.0},
            {"a mebi of the digit 7", 0.0},
            {"a number with a mebi of decimals", 1.0 / 3.0},
            {"a mebi of blanks", 0.0},
            {"digits of the Arabic script", 0.0},
            {"a number beyond 64 bits", 1e20},
            {"nan", notANumber},
            {"inf", infinity},
            {"minus inf", -infinity},
            {"a mebi of zeros and a unit", 0.005},
            {"a number and a mebi of blanks", 0.005},
        };
        static const QHash<QByteArray, QByteArray> thrown = {
            {"a zero character inside", QByteArray("\0002", 2)},
            {"a line break inside", "2"},
            {"a carriage return and a tab", "2"},
            {"1e999", "e999"},
            {"-1e999", "e999"},
            {"1e-999", "e-999"},
            {"0x10", "x10"},
        };

        auto validator = fieldOf(metre);
        Outcome outcome;
        vrn::test::verifyTakesAKeystroke(
            "validate", [&] { outcome = outcomeOf(validator, keystroke, text); });
        QCOMPARE(outcome.unknownUnit.has_value(), thrown.contains(name));
        if (outcome.unknownUnit)
            QCOMPARE(*outcome.unknownUnit, thrown.value(name));
        QCOMPARE(outcome.accepted, accepted.contains(name));
        QCOMPARE(outcome.value, boost::any(accepted.value(name, 0.0)));

        DistanceEditValidator ranged(metre, 5.0, 9.0, true);
        Outcome finished;
        vrn::test::verifyTakesAKeystroke(
            "validateWhenFinished", [&] { finished = outcomeOf(ranged, finish, text); });
        QCOMPARE(finished.accepted, outcome.accepted);
        QVERIFY(finished.unknownUnit == outcome.unknownUnit);
        if (!finished.accepted)
            QCOMPARE(finished.value, boost::any(0.0));
    }
};

VRN_TEST(TestDistanceEditValidator)
#include "tst_distance_edit_validator.moc"
