#include <vrn/q/input_context.h>
#include <vrn/qt/distance_edit_validator.h>
#include <vrn/qt/forward_validator.h>
#include <vrn/qt/simple_line_edit.h>
#include <vrn/units/unknown_unit.h>

#include <boost/make_shared.hpp>

#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLineEdit>
#include <QLocale>
#include <QScopeGuard>

#include <limits>
#include <memory>
#include <optional>

using vrn::qt::DistanceEditValidator;
using vrn::qt::ForwardValidator;
using vrn::qt::SimpleLineEdit;
using vrn::test::columns;
using vrn::test::row;
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

// A field without limits that a test would notice.
DistanceEditValidator fieldOf(int unit)
{
    return {unit, -1e9, 1e9, true};
}

// What came of a text: it was accepted or refused and left a value, or its unit was thrown.
struct Outcome
{
    bool accepted = false;
    boost::any value = QString("before");
    std::optional<QByteArray> unknownUnit;
};

using Operation = bool (DistanceEditValidator::*)(
    const QString&, boost::any&, const std::bitset<32>&);

Outcome outcomeOf(DistanceEditValidator& validator, Operation operation, const QString& text)
{
    Outcome outcome;
    try {
        outcome.accepted = (validator.*operation)(text, outcome.value, noFlags);
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

// The user's locale has a decimal comma: a validator that reads it without being told to
// fails here.
class TestDistanceEditValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    // Blanks are not an empty text. They end before a unit.
    void blanksAreZeroWhateverEmptyTextIs()
    {
        DistanceEditValidator zero(metre, -1.0, 1.0, true);
        DistanceEditValidator nothing(metre, -1.0, 1.0, false);
        DistanceEditValidator noValue(metre, -1.0, 1.0, false);
        noValue.setEmptyValueAllowed(true);
        for (DistanceEditValidator* validator : {&zero, &nothing, &noValue}) {
            boost::any value;
            QVERIFY(validator->validate(" \t ", value, noFlags));
            QCOMPARE(value, boost::any(0.0));
        }
    }

    void aBareNumberIsInTheFieldsUnit_data()
    {
        columns<int, QString, double>("unit", "text", "metres");
        row("metres", metre, "1.5", 1.5);
        row("centimetres", centimetre, "150", 1.5);
        row("millimetres", millimetre, "1500", 1.5);
        row("feet", foot, "10", 3.048);
        row("inches", inch, "10", 0.254);
        row("a negative number", millimetre, "-1500", -1.5);
        row("a plus sign", millimetre, "+1500", 1.5);
        row("an exponent", millimetre, "1.5e3", 1.5);
        row("blanks around", millimetre, " 1500 ", 1.5);
        row("infinity", millimetre, "inf", infinity);
        row("not-a-number", millimetre, "nan", notANumber);
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

    void aUnitAfterTheNumberIsUnderstoodInEveryField_data()
    {
        columns<QString, double>("text", "metres");
        row("metres", "5 m", 5.0);
        row("decimetres", "5 dm", 0.5);
        row("centimetres", "150 cm", 1.5);
        row("millimetres", "1500 mm", 1.5);
        row("a decimal point", "1.5 cm", 0.015);
        row("no blank before the unit", "1.5cm", 0.015);
        row("no point and no blank", "5m", 5.0);
        row("several blanks before the unit", "5   cm", 0.05);
        row("a tab before the unit", "5\tcm", 0.05);
        row("a no-break space before the unit", QString("5%1cm").arg(QChar(0xA0)), 0.05);
        row("blanks around everything", "  5 cm  ", 0.05);
        row("no digit before the point", ".5 m", 0.5);
        row("no digit after the point", "5. m", 5.0);
        row("a minus sign counts as a punctuation mark", "-1m", -1.0);
        row("a minus sign and a blank before the unit", "-15 cm", -0.15);
    }

    void aUnitAfterTheNumberIsUnderstoodInEveryField()
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
        columns<QString>("text");
        row("a decimal comma", "1,5");
        row("a comma after a number", "15,");
        row("a punctuation mark alone", "-");
        row("a point alone", ".");
        row("feet", "5'");
        row("a fraction", "1/2");
        row("a percentage", "50%");
        row("blanks around", "  1,5  ");
        row("blanks", "   ");
    }

    void aTextThatEndsBeforeAUnitIsZero()
    {
        QFETCH(QString, text);
        auto validator = fieldOf(millimetre);
        boost::any value = QString("before");
        QVERIFY(validator.validate(text, value, noFlags));
        QCOMPARE(value, boost::any(0.0));
    }

    void noNumberBeforeTheUnitIsARefusal_data()
    {
        columns<QString>("text");
        row("letters", "abc");
        row("a unit alone", "m");
        row("a plus sign is no punctuation mark", "+1m");
        row("a minus sign and a unit", "-m");
        row("a minus sign, a point and a number", "-.5m");
        row("two minus signs", "--1 m");
        row("a minus sign after the number", "1-m");
        row("a decimal comma", "1,5 cm");
        row("a group", "1,000 m");
        row("a fraction", "1/2 m");
        row("an unknown unit with no number before it", "1,5 yd");
        row("feet and inches", "5' 3''");
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
        columns<QString, QByteArray>("text", "unit");
        row("yards", "2 yd", QByteArray("yd"));
        row("a unit in capitals", "2 M", QByteArray("M"));
        row("a unit with one capital", "2 Mm", QByteArray("Mm"));
        row("a unit with something after it", "2 cm2", QByteArray("cm2"));
        row("two units", "2 m m", QByteArray("m m"));
        row("the field's own unit where it is not metric", "2 ft", QByteArray("ft"));
        row("a unit outside ASCII", QString::fromUtf8("2 µm"), QByteArray("µm"));
        row("an exponent", "1e3m", QByteArray("e3m"));
        row("a second number", "1 000 m", QByteArray("000 m"));
        row("a second decimal point", "5.5.5", QByteArray(".5"));
        row("a decimal point after a minus sign", "-1.5 m", QByteArray(".5 m"));
        row("blanks around", "  2   yd  ", QByteArray("yd"));
        row("a plus sign as unit", "2+", QByteArray("+"));
        row("a number too large for a double", "1e999", QByteArray("e999"));
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

    void theLimitsAreMetresInEveryField_data()
    {
        columns<QString, double, double, QString>("text", "typed", "finished", "shown");
        row("a number above the range", "5000", 5.0, 2.0, "2000");
        row("a number below the range", "5", 0.005, 1.0, "1000");
        row("a number in the range", "1500", 1.5, 1.5, "1500");
        row("a number with a unit above the range", "5 m", 5.0, 2.0, "2000");
        row("a number with a unit below the range", "-5 m", -5.0, 1.0, "1000");
        row("a text that ends before a unit", "1,5", 0.0, 1.0, "1000");
    }

    void theLimitsAreMetresInEveryField()
    {
        QFETCH(QString, text);
        QFETCH(double, typed);
        QFETCH(double, finished);
        QFETCH(QString, shown);
        DistanceEditValidator validator(millimetre, 1.0, 2.0, true);
        boost::any value;
        QVERIFY(validator.validate(text, value, noFlags));
        QCOMPARE(number(value), typed);
        QCOMPARE(validator.reformat(value, noFlags), shown);
        QVERIFY(validator.validateWhenFinished(text, value, noFlags));
        QCOMPARE(number(value), finished);
    }

    void aLimitThatIsNoNumberIsReported()
    {
        expectAssert("m_min < m_max", {"m_min", "m_max"});
        const DistanceEditValidator validator(metre, 1.0, notANumber, true);
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

    void aValueIsWrittenInTheFieldsUnit_data()
    {
        columns<int, double, QString, QString>("unit", "metres", "text", "textWithUnit");
        row("metres", metre, 1.5, "1.500", "1.500 m");
        row("centimetres", centimetre, 1.5, "150.0", "150.0 cm");
        row("millimetres", millimetre, 1.5, "1500", "1500 mm");
        row("feet", foot, 3.048, "10.000", "10.000 ft");
        row("inches", inch, 0.254, "10.000", "10.000 in");
        row("a negative value", millimetre, -1.5, "-1500", "-1500 mm");
        row("a value to be rounded", centimetre, 0.12345, "12.3", "12.3 cm");
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

    // Hostile texts without a unit are tested for all numeric validators together.
    void aHostileTextWithAUnit_data()
    {
        columns<QString, bool, double>("text", "accepted", "metres");
        const int mebi = 1024 * 1024;
        row("a mebi of digits", QString(mebi, '7') + " mm", false, 0.0);
        row("a mebi of zeros", QString(mebi, '0') + "5 mm", true, 0.005);
        row("a mebi of blanks", "5" + QString(mebi, ' ') + "mm", true, 0.005);
        row("digits of the Arabic script", QString::fromUtf8("\u0661\u0662 mm"), false, 0.0);
    }

    void aHostileTextWithAUnit()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(double, metres);
        auto validator = fieldOf(metre);
        for (const Operation operation : {keystroke, finish}) {
            Outcome outcome;
            vrn::test::verifyTakesAKeystroke(
                "the text", [&] { outcome = outcomeOf(validator, operation, text); });
            QVERIFY(!outcome.unknownUnit);
            QCOMPARE(outcome.accepted, accepted);
            QCOMPARE(outcome.value, boost::any(metres));
        }
    }
};

VRN_TEST(TestDistanceEditValidator)
#include "tst_distance_edit_validator.moc"
