#include <vrn/qt/double_edit_validator.h>

#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLocale>

#include <cmath>
#include <limits>

using vrn::qt::DoubleEditValidator;
using vrn::qt::ValidationFlagUserLocale;

namespace {

constexpr double lowest = std::numeric_limits<double>::lowest();
constexpr double highest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const std::bitset<32> noFlags;
const std::bitset<32> userLocale(1U << ValidationFlagUserLocale);
const std::bitset<32> allButUserLocale = ~userLocale;

} // namespace

// The user's locale has a decimal comma throughout: a validator that reads it
// without being told to fails here.
class TestDoubleEditValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void anEmptyText_data()
    {
        QTest::addColumn<bool>("zeroIfEmpty");
        QTest::addColumn<QString>("emptyAllowed");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<boost::any>("value");
        const boost::any zero = 0.0;
        const boost::any none;
        QTest::newRow("is zero where it counts as zero") << true << "as built" << true << zero;
        QTest::newRow("is refused where it counts for nothing")
            << false << "as built" << false << zero;
        QTest::newRow("is no value where that is allowed") << false << "yes" << true << none;
        QTest::newRow("is no value where that is allowed later") << true << "yes" << true << none;
        QTest::newRow("is zero where no value is allowed") << true << "no" << true << zero;
        QTest::newRow("becomes zero where no value is allowed later")
            << false << "no" << true << zero;
    }

    void anEmptyText()
    {
        QFETCH(bool, zeroIfEmpty);
        QFETCH(QString, emptyAllowed);
        QFETCH(bool, accepted);
        QFETCH(boost::any, value);
        DoubleEditValidator validator(3, -1.0, 1.0, zeroIfEmpty);
        if (emptyAllowed != "as built")
            validator.setEmptyValueAllowed(emptyAllowed == "yes");
        for (const QString& text : {QString(""), QString()}) {
            boost::any got = 7;
            QCOMPARE(validator.validate(text, got, noFlags), accepted);
            QCOMPARE(got, value);
            got = 7;
            QCOMPARE(validator.validateWhenFinished(text, got, noFlags), accepted);
            QCOMPARE(got, value);
        }
    }

    void anEmptyTextIsZeroByDefault()
    {
        DoubleEditValidator plain;
        DoubleEditValidator ranged(-1.0, 1.0);
        for (DoubleEditValidator* validator : {&plain, &ranged}) {
            boost::any value;
            QVERIFY(validator->validate("", value, noFlags));
            QCOMPARE(value, boost::any(0.0));
            validator->setEmptyValueAllowed(true);
            QVERIFY(validator->validate("", value, noFlags));
            QCOMPARE(value, boost::any());
            QCOMPARE(validator->reformat(value, noFlags), QString(""));
        }
    }

    void theZeroOfAnEmptyTextIsClamped()
    {
        DoubleEditValidator validator(5.0, 9.0);
        boost::any value;
        QVERIFY(validator.validate("", value, noFlags));
        QCOMPARE(value, boost::any(0.0));
        QVERIFY(validator.validateWhenFinished("", value, noFlags));
        QCOMPARE(value, boost::any(5.0));
    }

    void noValueIsNotClamped()
    {
        DoubleEditValidator validator(5.0, 9.0);
        validator.setEmptyValueAllowed(true);
        boost::any value = 7;
        QVERIFY(validator.validateWhenFinished("", value, noFlags));
        QCOMPARE(value, boost::any());
    }

    void aTextIsReadAsANumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<double>("value");
        QTest::newRow("a whole number") << "5" << true << 5.0;
        QTest::newRow("a decimal point") << "1.5" << true << 1.5;
        QTest::newRow("a negative number") << "-1.5" << true << -1.5;
        QTest::newRow("a plus sign") << "+1.5" << true << 1.5;
        QTest::newRow("an exponent") << "1.5e3" << true << 1500.0;
        QTest::newRow("no digit before the point") << ".5" << true << 0.5;
        QTest::newRow("no digit behind the point") << "5." << true << 5.0;
        QTest::newRow("more decimals than are shown") << "0.123456" << true << 0.123456;
        QTest::newRow("infinity") << "inf" << true << infinity;
        QTest::newRow("no number at all") << "nan" << true << notANumber;
        QTest::newRow("letters") << "abc" << false << 0.0;
        QTest::newRow("a decimal comma") << "1,5" << false << 0.0;
        QTest::newRow("a number and a unit") << "1.5 cm" << false << 0.0;
        QTest::newRow("a sign alone") << "-" << false << 0.0;
        QTest::newRow("two numbers") << "1 2" << false << 0.0;
        QTest::newRow("a hexadecimal number") << "0x10" << false << 0.0;
        QTest::newRow("a number too large for a double") << "1e999" << false << 0.0;
        QTest::newRow("a number too small for a double") << "-1e999" << false << 0.0;
        QTest::newRow("blanks are not empty") << "  " << false << 0.0;
    }

    void aTextIsReadAsANumber()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(double, value);
        DoubleEditValidator validator;
        DoubleEditValidator optional;
        optional.setEmptyValueAllowed(true);
        for (DoubleEditValidator* each : {&validator, &optional}) {
            boost::any got = QString("before");
            QCOMPARE(each->validate(text, got, noFlags), accepted);
            QCOMPARE(got, boost::any(value));
        }
    }

    void aKeystrokeLooksAtNoLimit_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("above the range") << "5" << 5.0;
        QTest::newRow("below the range") << "-5" << -5.0;
        QTest::newRow("the highest number there is") << "1.7976931348623157e308" << highest;
    }

    void aKeystrokeLooksAtNoLimit()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        DoubleEditValidator validator(0.0, 1.0);
        boost::any got;
        QVERIFY(validator.validate(text, got, noFlags));
        QCOMPARE(got, boost::any(value));
    }

    void finishingClamps_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::newRow("a number above the range") << 0.0 << 1.0 << "5" << 1.0;
        QTest::newRow("a number below the range") << 0.0 << 1.0 << "-5" << 0.0;
        QTest::newRow("a number in the range") << 0.0 << 1.0 << "0.25" << 0.25;
        QTest::newRow("the minimum itself") << 0.5 << 1.0 << "0.5" << 0.5;
        QTest::newRow("the maximum itself") << 0.5 << 1.0 << "1" << 1.0;
        QTest::newRow("infinity") << 0.0 << 1.0 << "inf" << 1.0;
        QTest::newRow("minus infinity") << 0.0 << 1.0 << "-inf" << 0.0;
        QTest::newRow("not-a-number stays") << 0.0 << 1.0 << "nan" << notANumber;
        QTest::newRow("a minimum above the maximum, below both") << 9.0 << 1.0 << "0" << 9.0;
        QTest::newRow("a minimum above the maximum, between") << 9.0 << 1.0 << "5" << 9.0;
        QTest::newRow("a minimum above the maximum, above both") << 9.0 << 1.0 << "10" << 1.0;
        QTest::newRow("a minimum that is no number") << notANumber << 1.0 << "0.5" << 0.5;
        QTest::newRow("a maximum that is no number") << 0.0 << notANumber << "5" << 5.0;
    }

    void finishingClamps()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(QString, text);
        QFETCH(double, value);
        DoubleEditValidator validator(min, max);
        boost::any got = QString("before");
        QVERIFY(validator.validateWhenFinished(text, got, noFlags));
        QCOMPARE(got, boost::any(value));
    }

    void theDefaultRangeIsAnyFiniteNumber()
    {
        DoubleEditValidator validator;
        boost::any value;
        QVERIFY(validator.validateWhenFinished("1.7976931348623157e308", value, noFlags));
        QCOMPARE(value, boost::any(highest));
        QVERIFY(validator.validateWhenFinished("inf", value, noFlags));
        QCOMPARE(value, boost::any(highest));
        QVERIFY(validator.validateWhenFinished("-inf", value, noFlags));
        QCOMPARE(value, boost::any(lowest));
    }

    void finishingRefusesWithAnUnclampedZero_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("zeroIfEmpty");
        QTest::newRow("letters") << "abc" << true;
        QTest::newRow("a decimal comma") << "7,5" << true;
        QTest::newRow("an empty text that counts for nothing") << "" << false;
    }

    void finishingRefusesWithAnUnclampedZero()
    {
        QFETCH(QString, text);
        QFETCH(bool, zeroIfEmpty);
        DoubleEditValidator validator(3, 5.0, 9.0, zeroIfEmpty);
        boost::any value = 7;
        QVERIFY(!validator.validateWhenFinished(text, value, noFlags));
        QCOMPARE(value, boost::any(0.0));
    }

    void formattingClamps_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("a number above the range") << 0.0 << 1.0 << 5.0 << "1.000";
        QTest::newRow("a number below the range") << 0.5 << 1.0 << -5.0 << "0.500";
        QTest::newRow("a number in the range") << 0.0 << 1.0 << 0.25 << "0.250";
        QTest::newRow("the minimum itself") << 0.5 << 1.0 << 0.5 << "0.500";
        QTest::newRow("the maximum itself") << 0.5 << 1.0 << 1.0 << "1.000";
        QTest::newRow("infinity") << 0.5 << 1.0 << infinity << "1.000";
        QTest::newRow("minus infinity") << 0.5 << 1.0 << -infinity << "0.500";
        QTest::newRow("not-a-number is the minimum") << 0.5 << 1.0 << notANumber << "0.500";
        QTest::newRow("a minimum above the maximum, below both") << 9.0 << 1.0 << 0.0 << "9.000";
        QTest::newRow("a minimum above the maximum, between") << 9.0 << 1.0 << 5.0 << "9.000";
        QTest::newRow("a minimum above the maximum, above both") << 9.0 << 1.0 << 10.0 << "1.000";
        QTest::newRow("a minimum that is no number") << notANumber << 1.0 << 0.5 << "nan";
        QTest::newRow("a maximum that is no number") << 0.0 << notANumber << 0.5 << "nan";
    }

    void formattingClamps()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(double, value);
        QFETCH(QString, text);
        DoubleEditValidator validator(min, max);
        const boost::any given = value;
        QCOMPARE(validator.reformat(given, noFlags), text);
        QCOMPARE(given, boost::any(value));
    }

    // As after Enter: the formatted text is validated again.
    void nanEndsAsTheMinimum_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::addColumn<int>("length");
        QTest::newRow("of a range") << 0.5 << 1.0 << 5;
        QTest::newRow("that there is, without a range") << lowest << highest << 314;
    }

    void nanEndsAsTheMinimum()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(int, length);
        DoubleEditValidator validator(min, max);
        boost::any value;
        QVERIFY(validator.validateWhenFinished("nan", value, noFlags));
        const QString shown = validator.reformat(value, noFlags);
        QCOMPARE(shown.size(), length);
        QVERIFY(validator.validateWhenFinished(shown, value, noFlags));
        QCOMPARE(value, boost::any(min));
    }

    void aDerivedClassCanRefuseNan()
    {
        struct NumberValidator : public DoubleEditValidator
        {
            bool validate(
                const QString& text, boost::any& value, const std::bitset<32>& flags) override
            {
                const bool ok = DoubleEditValidator::validate(text, value, flags);
                const auto* number = boost::any_cast<double>(&value);
                return ok && !(number && std::isnan(*number));
            }
        };
        NumberValidator validator;
        boost::any value;
        QVERIFY(!validator.validateWhenFinished("nan", value, noFlags));
        QVERIFY(validator.validateWhenFinished("1.5", value, noFlags));
    }

    void theRangeOfADefaultOneDoesNotShortenANumber()
    {
        DoubleEditValidator validator;
        validator.setPrecision(0);
        const QLocale c(QLocale::C, QLocale::AnyCountry);
        QCOMPARE(validator.reformat(highest, noFlags), c.toString(highest, 'f', 0));
        QCOMPARE(validator.reformat(lowest, noFlags), c.toString(lowest, 'f', 0));
    }

    void aBillionDecimalsAreAsManyAsThereCanBe()
    {
        DoubleEditValidator validator;
        validator.setPrecision(std::numeric_limits<int>::max());
        QString text;
        vrn::test::verifyTakesAKeystroke("reformat",
            [&] { text = validator.reformat(std::numeric_limits<double>::denorm_min(), noFlags); });
        QCOMPARE(text.size(), 1076); // "0." and the decimals of the smallest double
        QVERIFY(text.endsWith("625"));
    }

    void theDecimals_data()
    {
        QTest::addColumn<int>("precision");
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("none") << 0 << 1234.5678 << "1235";
        QTest::newRow("one") << 1 << 1234.5678 << "1234.6";
        QTest::newRow("more than the number has") << 6 << 1234.5678 << "1234.567800";
        QTest::newRow("a number that is rounded to zero") << 2 << 0.001 << "0.00";
        QTest::newRow("a large number without an exponent") << 1 << 1e15 << "1000000000000000.0";
    }

    void theDecimals()
    {
        QFETCH(int, precision);
        QFETCH(double, value);
        QFETCH(QString, text);
        DoubleEditValidator built(precision, lowest, highest, true);
        QCOMPARE(built.reformat(value, noFlags), text);
        DoubleEditValidator set;
        set.setPrecision(precision);
        QCOMPARE(set.reformat(value, noFlags), text);
    }

    void threeDecimalsByDefault()
    {
        DoubleEditValidator plain;
        DoubleEditValidator ranged(0.0, 9.0);
        QCOMPARE(plain.reformat(1.23456, noFlags), QString("1.235"));
        QCOMPARE(ranged.reformat(1.23456, noFlags), QString("1.235"));
    }

    void aNegativePrecisionIsStoredWithoutACheck()
    {
        DoubleEditValidator validator;
        validator.setPrecision(-2);
        const QLocale c(QLocale::C, QLocale::AnyCountry);
        QCOMPARE(validator.reformat(1.25, noFlags), c.toString(1.25, 'f', -2));
    }

    void aForeignTypeIsReportedAndIsAnEmptyText_data()
    {
        QTest::addColumn<boost::any>("value");
        QTest::addColumn<bool>("emptyAllowed");
        QTest::newRow("an integer") << boost::any(1) << false;
        QTest::newRow("a float") << boost::any(1.0F) << false;
        QTest::newRow("a text") << boost::any(QString("1.0")) << false;
        QTest::newRow("no value where none is allowed") << boost::any() << false;
        QTest::newRow("an integer where no value is allowed") << boost::any(1) << true;
    }

    void aForeignTypeIsReportedAndIsAnEmptyText()
    {
        QFETCH(boost::any, value);
        QFETCH(bool, emptyAllowed);
        DoubleEditValidator validator;
        validator.setEmptyValueAllowed(emptyAllowed);
        expectAssert("value.type() == typeid(double)", {"value.type().name()"});
        QCOMPARE(validator.reformat(value, noFlags), QString(""));
        QCOMPARE(asserts().last().values.at(0).second, std::string(value.type().name()));
    }

    void noValueIsAnEmptyTextWithoutAReport()
    {
        DoubleEditValidator validator(5.0, 9.0);
        validator.setEmptyValueAllowed(true);
        QCOMPARE(validator.reformat({}, noFlags), QString(""));
    }

    void theFlagsChooseTheLocaleToReadBy_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("inC");
        QTest::addColumn<double>("valueInC");
        QTest::addColumn<bool>("inUsers");
        QTest::addColumn<double>("valueInUsers");
        QTest::newRow("a decimal comma") << "1,5" << false << 0.0 << true << 1.5;
        QTest::newRow("a decimal point") << "1.5" << true << 1.5 << false << 0.0;
        QTest::newRow("a group and a comma") << "1.234,5" << false << 0.0 << true << 1234.5;
        QTest::newRow("a point that the user takes for a group")
            << "1.234" << true << 1.234 << true << 1234.0;
        QTest::newRow("neither") << "15" << true << 15.0 << true << 15.0;
    }

    void theFlagsChooseTheLocaleToReadBy()
    {
        QFETCH(QString, text);
        QFETCH(bool, inC);
        QFETCH(double, valueInC);
        QFETCH(bool, inUsers);
        QFETCH(double, valueInUsers);
        DoubleEditValidator validator;
        boost::any value;
        for (const std::bitset<32>& flags : {noFlags, allButUserLocale}) {
            QCOMPARE(validator.validate(text, value, flags), inC);
            QCOMPARE(value, boost::any(valueInC));
            QCOMPARE(validator.validateWhenFinished(text, value, flags), inC);
            QCOMPARE(value, boost::any(valueInC));
        }
        for (const std::bitset<32>& flags : {userLocale, ~noFlags}) {
            QCOMPARE(validator.validate(text, value, flags), inUsers);
            QCOMPARE(value, boost::any(valueInUsers));
            QCOMPARE(validator.validateWhenFinished(text, value, flags), inUsers);
            QCOMPARE(value, boost::any(valueInUsers));
        }
    }

    void theFlagsChooseTheLocaleToWriteBy()
    {
        DoubleEditValidator validator;
        validator.setPostfix("kN");
        QCOMPARE(validator.reformat(1234567.5, noFlags), QString("1234567.500"));
        QCOMPARE(validator.reformat(1234567.5, allButUserLocale), QString("1234567.500"));
        QCOMPARE(validator.reformat(1234567.5, userLocale), QString("1.234.567,500"));
        QCOMPARE(validator.reformatForDisplay(1.5, noFlags), QString("1.500 kN"));
        QCOMPARE(validator.reformatForDisplay(1.5, userLocale), QString("1,500 kN"));
    }

    void theThirdConstructorReportsABadRange_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::newRow("a minimum above the maximum") << 9.0 << 1.0;
        QTest::newRow("a minimum that is the maximum") << 1.0 << 1.0;
        QTest::newRow("a limit that is no number") << notANumber << 1.0;
    }

    void theThirdConstructorReportsABadRange()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        expectAssert("m_min < m_max", {"m_min", "m_max"});
        const DoubleEditValidator validator(3, min, max, true);
    }

    void whatTheThirdConstructorReportsIsKept()
    {
        expectAssert("m_min < m_max", {"m_min", "m_max"});
        expectAssert("m_precision >= 0", {"m_precision"});
        DoubleEditValidator validator(-2, 9.0, 1.0, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished("5", value, noFlags));
        QCOMPARE(value, boost::any(9.0));
        QVERIFY(validator.validateWhenFinished("10", value, noFlags));
        QCOMPARE(value, boost::any(1.0));
        const QLocale c(QLocale::C, QLocale::AnyCountry);
        QCOMPARE(validator.reformat(1.0, noFlags), c.toString(9.0, 'f', -2));
    }

    void onlyThePrecisionIsReportedWhereOnlyItIsBad()
    {
        expectAssert("m_precision >= 0", {"m_precision"});
        const DoubleEditValidator validator(-1, 1.0, 9.0, true);
    }

    void noDecimalsAreNoReport() { const DoubleEditValidator validator(0, 1.0, 9.0, true); }

    // Only the third constructor and setRange() look at what they are given.
    void limitsAreStoredWithoutACheck()
    {
        DoubleEditValidator validator(9.0, 1.0);
        boost::any value;
        QVERIFY(validator.validateWhenFinished("5", value, noFlags));
        QCOMPARE(value, boost::any(9.0));

        validator.setMinimum(3.0);
        validator.setMaximum(2.0);
        QVERIFY(validator.validateWhenFinished("0", value, noFlags));
        QCOMPARE(value, boost::any(3.0));
        QVERIFY(validator.validateWhenFinished("5", value, noFlags));
        QCOMPARE(value, boost::any(2.0));
        QCOMPARE(validator.reformat(0.0, noFlags), QString("3.000"));
        QCOMPARE(validator.reformat(5.0, noFlags), QString("2.000"));
    }

    void aRangeIsSet()
    {
        DoubleEditValidator validator;
        validator.setRange(2.0, 3.0);
        QCOMPARE(validator.reformat(0.0, noFlags), QString("2.000"));
        QCOMPARE(validator.reformat(5.0, noFlags), QString("3.000"));
    }

    void aBadRangeIsReportedAndStored_data()
    {
        QTest::addColumn<double>("min");
        QTest::addColumn<double>("max");
        QTest::addColumn<QString>("low");
        QTest::addColumn<QString>("high");
        QTest::newRow("a minimum above the maximum") << 9.0 << 1.0 << "9.000"
                                                     << "1.000";
        QTest::newRow("a minimum that is the maximum") << 2.0 << 2.0 << "2.000"
                                                       << "2.000";
    }

    void aBadRangeIsReportedAndStored()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(QString, low);
        QFETCH(QString, high);
        DoubleEditValidator validator;
        expectAssert("min < max", {"min", "max"});
        validator.setRange(min, max);
        QCOMPARE(validator.reformat(0.0, noFlags), low);
        QCOMPARE(validator.reformat(10.0, noFlags), high);
    }

    void aLongTextIsReadAsAShortOneIs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<double>("value");
        const QString zeros(2000, '0');
        const QString sevens(2000, '7');
        const QString blanks(2000, ' ');
        QTest::newRow("zeros before the number") << zeros + "1.5" << true << 1.5;
        QTest::newRow("zeros behind the number") << "1.5" + zeros << true << 1.5;
        QTest::newRow("a sign before them") << "-" + zeros + "1.5" << true << -1.5;
        QTest::newRow("blanks around the number") << blanks + "1.5" + blanks << true << 1.5;
        QTest::newRow("blanks around a long number")
            << blanks + zeros + "1.5" + blanks << true << 1.5;
        QTest::newRow("digits that an exponent takes back")
            << sevens + "e-2000" << true << 7.0 / 9.0;
        QTest::newRow("an exponent in capitals") << sevens + "E-2000" << true << 7.0 / 9.0;
        QTest::newRow("a number too large for a double") << sevens << false << 0.0;
        QTest::newRow("a number next to zero") << "0." + zeros + "1" << false << 0.0;
        QTest::newRow("a decimal comma") << zeros + "1,5" << false << 0.0;
        QTest::newRow("groups") << "0" + QString(",000").repeated(500) + ",001" << true << 1.0;
        QTest::newRow("two decimal points") << zeros + "1.5.5" << false << 0.0;
        QTest::newRow("a blank inside") << zeros + " 1.5" << false << 0.0;
        QTest::newRow("a zero character inside") << zeros + QChar(0) + "1" << false << 0.0;
        QTest::newRow("a zero character at the end") << zeros + QChar(0) << false << 0.0;
        QTest::newRow("a unit behind") << zeros + "1.5mm" << false << 0.0;
        QTest::newRow("a letter outside ASCII") << zeros + QChar(0x161) << false << 0.0;
        QTest::newRow("nan behind blanks") << blanks + "nan" << true << notANumber;
        QTest::newRow("inf behind blanks") << blanks + "-inf" << true << -infinity;
        QTest::newRow("letters") << QString(2000, 'a') << false << 0.0;
    }

    // Long texts take another way to the same number.
    void aLongTextIsReadAsAShortOneIs()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(double, value);
        bool isNumber = false;
        QLocale(QLocale::C, QLocale::AnyCountry).toDouble(text, &isNumber);
        QCOMPARE(accepted, isNumber);
        DoubleEditValidator validator;
        boost::any got;
        QCOMPARE(validator.validate(text, got, noFlags), accepted);
        QCOMPARE(got, boost::any(value));
    }

    void hostileTextsAreNumbersOrRefused_data()
    {
        QTest::addColumn<QString>("text");
        for (const auto& [name, text] : vrn::test::hostileTexts())
            QTest::newRow(name) << text;
    }

    // What is a number is QLocale's matter; that nothing else is made of a text
    // is ours.
    void hostileTextsAreNumbersOrRefused()
    {
        QFETCH(QString, text);
        bool isNumber = false;
        double number = QLocale(QLocale::C, QLocale::AnyCountry).toDouble(text, &isNumber);
        if (!isNumber)
            number = 0.0;

        DoubleEditValidator validator(5.0, 9.0);
        vrn::test::verifyTakesAKeystroke("validate", [&] {
            boost::any value = QString("before");
            QCOMPARE(validator.validate(text, value, noFlags), isNumber);
            QCOMPARE(value, boost::any(number));
        });
        const bool clamps = isNumber && !std::isnan(number);
        vrn::test::verifyTakesAKeystroke("validateWhenFinished", [&] {
            boost::any value = QString("before");
            QCOMPARE(validator.validateWhenFinished(text, value, noFlags), isNumber);
            QCOMPARE(value, boost::any(clamps ? qBound(5.0, number, 9.0) : number));
        });
        // No field is typed into in the user's locale; there it only must go well.
        boost::any value;
        validator.validate(text, value, userLocale);
        QVERIFY(boost::any_cast<double>(&value));
    }
};

VRN_TEST(TestDoubleEditValidator)
#include "tst_double_edit_validator.moc"
