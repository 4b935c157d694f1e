#include <vrn/qt/double_edit_validator.h>

#include "support/keystroke_time.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLocale>

#include <cmath>
#include <limits>

using vrn::qt::DoubleEditValidator;
using vrn::test::columns;
using vrn::test::row;

namespace {

constexpr double lowest = std::numeric_limits<double>::lowest();
constexpr double highest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

const std::bitset<32> noFlags;

} // namespace

// The user's locale has a decimal comma: a validator that reads it without being told to
// fails here.
class TestDoubleEditValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

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

    void aTextIsReadAsANumber_data()
    {
        columns<QString, bool, double>("text", "accepted", "value");
        row("a whole number", "5", true, 5.0);
        row("a decimal point", "1.5", true, 1.5);
        row("a negative number", "-1.5", true, -1.5);
        row("a plus sign", "+1.5", true, 1.5);
        row("an exponent", "1.5e3", true, 1500.0);
        row("no digit before the point", ".5", true, 0.5);
        row("no digit after the point", "5.", true, 5.0);
        row("more decimals than are shown", "0.123456", true, 0.123456);
        row("infinity", "inf", true, infinity);
        row("no number at all", "nan", true, notANumber);
        row("letters", "abc", false, 0.0);
        row("a decimal comma", "1,5", false, 0.0);
        row("a number and a unit", "1.5 cm", false, 0.0);
        row("a sign alone", "-", false, 0.0);
        row("two numbers", "1 2", false, 0.0);
        row("a hexadecimal number", "0x10", false, 0.0);
        row("a number too large for a double", "1e999", false, 0.0);
        row("a number too small for a double", "-1e999", false, 0.0);
        row("blanks are not empty", "  ", false, 0.0);
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

    void aLimitThatIsNoNumber_data()
    {
        columns<double, double, double>("min", "max", "number");
        row("a minimum", notANumber, 1.0, 0.5);
        row("a maximum", 0.0, notANumber, 5.0);
    }

    void aLimitThatIsNoNumber()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(double, number);
        expectAssert("m_min < m_max", {"m_min", "m_max"});
        DoubleEditValidator validator(3, min, max, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished(QString::number(number), value, noFlags));
        QCOMPARE(value, boost::any(number));
        QCOMPARE(validator.reformat(number, noFlags), QString("nan"));
    }

    // As after Enter: the formatted text is validated again.
    void nanEndsAsTheMinimum_data()
    {
        columns<double, double, int>("min", "max", "length");
        row("of a range", 0.5, 1.0, 5);
        row("that there is, without a range", lowest, highest, 314);
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
        columns<int, double, QString>("precision", "value", "text");
        row("none", 0, 1234.5678, "1235");
        row("one", 1, 1234.5678, "1234.6");
        row("more than the number has", 6, 1234.5678, "1234.567800");
        row("a number that is rounded to zero", 2, 0.001, "0.00");
        row("a large number without an exponent", 1, 1e15, "1000000000000000.0");
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

    // It is kept all the same, and Qt is given it.
    void onlyTheConstructorReportsANegativePrecision()
    {
        expectAssert("m_precision >= 0", {"m_precision"});
        DoubleEditValidator built(-2, 1.0, 9.0, true);
        DoubleEditValidator set;
        set.setPrecision(-2);
        const QLocale c(QLocale::C, QLocale::AnyCountry);
        for (DoubleEditValidator* validator : {&built, &set})
            QCOMPARE(validator->reformat(1.23456, noFlags), c.toString(1.23456, 'f', -2));
    }

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

    void aRangeIsSetAndABadOneIsReported_data()
    {
        columns<double, double, QString, QString>("min", "max", "low", "high");
        row("a range", 2.0, 3.0, "2.000", "3.000");
        row("a minimum above the maximum", 9.0, 1.0, "9.000", "1.000");
        row("a minimum that is the maximum", 2.0, 2.0, "2.000", "2.000");
    }

    void aRangeIsSetAndABadOneIsReported()
    {
        QFETCH(double, min);
        QFETCH(double, max);
        QFETCH(QString, low);
        QFETCH(QString, high);
        DoubleEditValidator validator;
        if (min >= max)
            expectAssert("min < max", {"min", "max"});
        validator.setRange(min, max);
        QCOMPARE(validator.reformat(0.0, noFlags), low);
        QCOMPARE(validator.reformat(10.0, noFlags), high);
    }

    void aLongTextIsReadAsAShortOneIs_data()
    {
        columns<QString, bool, double>("text", "accepted", "value");
        const QString zeros(2000, '0');
        const QString sevens(2000, '7');
        const QString blanks(2000, ' ');
        row("zeros before the number", zeros + "1.5", true, 1.5);
        row("zeros after the number", "1.5" + zeros, true, 1.5);
        row("a sign before them", "-" + zeros + "1.5", true, -1.5);
        row("blanks around the number", blanks + "1.5" + blanks, true, 1.5);
        row("blanks around a long number", blanks + zeros + "1.5" + blanks, true, 1.5);
        row("digits that an exponent takes back", sevens + "e-2000", true, 7.0 / 9.0);
        row("an exponent in capitals", sevens + "E-2000", true, 7.0 / 9.0);
        row("a number too large for a double", sevens, false, 0.0);
        row("a number next to zero", "0." + zeros + "1", false, 0.0);
        row("a decimal comma", zeros + "1,5", false, 0.0);
        row("groups", "0" + QString(",000").repeated(500) + ",001", true, 1.0);
        row("two decimal points", zeros + "1.5.5", false, 0.0);
        row("a blank inside", zeros + " 1.5", false, 0.0);
        row("a zero character inside", zeros + QChar(0) + "1", false, 0.0);
        row("a zero character at the end", zeros + QChar(0), false, 0.0);
        row("a unit after the number", zeros + "1.5mm", false, 0.0);
        row("a letter outside ASCII", zeros + QChar(0x161), false, 0.0);
        row("nan after blanks", blanks + "nan", true, notANumber);
        row("inf after blanks", blanks + "-inf", true, -infinity);
        row("letters", QString(2000, 'a'), false, 0.0);
    }

    // Another function reads long texts, and must come to the same number.
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
};

VRN_TEST(TestDoubleEditValidator)
#include "tst_double_edit_validator.moc"
