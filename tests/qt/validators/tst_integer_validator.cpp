#include <vrn/qt/integer_validator.h>

#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLocale>

#include <limits>
#include <type_traits>

using vrn::qt::IntegerValidator;
using vrn::qt::IValidator;

namespace {

const std::bitset<32> noFlags;
const std::bitset<32> allFlags = ~noFlags;

constexpr int lowest = std::numeric_limits<int>::lowest();
constexpr int highest = std::numeric_limits<int>::max();

template <typename T>
std::unique_ptr<IntegerValidator<T>> ofAnySize()
{
    return std::make_unique<IntegerValidator<T>>(
        std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max(), true);
}

// A validator of the type that `prototype` holds.
std::unique_ptr<IValidator> ofTypeOf(const boost::any& prototype)
{
    if (prototype.type() == typeid(unsigned int))
        return ofAnySize<unsigned int>();
    if (prototype.type() == typeid(unsigned short))
        return ofAnySize<unsigned short>();
    return ofAnySize<int>();
}

boost::any word(unsigned short value)
{
    return value;
}

} // namespace

// The user's locale groups digits by points: a validator that reads or writes
// by any locale fails here.
class TestIntegerValidator : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }

    void theValueTypes()
    {
        static_assert(std::is_same_v<IntegerValidator<int>::value_type, int>);
        static_assert(std::is_same_v<IntegerValidator<unsigned int>::value_type, unsigned int>);
        static_assert(std::is_same_v<IntegerValidator<unsigned short>::value_type, unsigned short>);
        static_assert(std::is_base_of_v<IValidator, IntegerValidator<int>>);
    }

    void anEmptyText_data()
    {
        QTest::addColumn<bool>("zeroIfEmpty");
        QTest::addColumn<QString>("emptyAllowed");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<boost::any>("value");
        const boost::any none;
        QTest::newRow("is no value where it counts as zero") << true << "as built" << true << none;
        QTest::newRow("is refused where it counts for nothing")
            << false << "as built" << false << boost::any(0);
        QTest::newRow("is no value where that is allowed") << false << "yes" << true << none;
        QTest::newRow("is no value where that is allowed later") << true << "yes" << true << none;
        QTest::newRow("is no value where no value is allowed later")
            << false << "no" << true << none;
    }

    void anEmptyText()
    {
        QFETCH(bool, zeroIfEmpty);
        QFETCH(QString, emptyAllowed);
        QFETCH(bool, accepted);
        QFETCH(boost::any, value);
        IntegerValidator<int> validator(-5, 5, zeroIfEmpty);
        if (emptyAllowed != "as built")
            validator.setEmptyValueAllowed(emptyAllowed == "yes");
        for (const QString& text : {QString(""), QString()}) {
            boost::any got = QString("before");
            QCOMPARE(validator.validate(text, got, noFlags), accepted);
            QCOMPARE(got, value);
            got = QString("before");
            QCOMPARE(validator.validateWhenFinished(text, got, noFlags), accepted);
            QCOMPARE(got, value);
        }
    }

    void noValueIsNotClamped_data()
    {
        QTest::addColumn<bool>("emptyAllowed");
        QTest::newRow("where it is allowed") << true;
        QTest::newRow("where it counts as zero") << false;
    }

    void noValueIsNotClamped()
    {
        QFETCH(bool, emptyAllowed);
        IntegerValidator<int> validator(5, 9, true);
        validator.setEmptyValueAllowed(emptyAllowed);
        boost::any value = 7;
        QVERIFY(validator.validateWhenFinished("", value, noFlags));
        QCOMPARE(value, boost::any());
    }

    void aTextIsReadAsAWholeNumber_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<int>("value");
        QTest::newRow("digits") << "42" << true << 42;
        QTest::newRow("a negative number") << "-42" << true << -42;
        QTest::newRow("a plus sign") << "+42" << true << 42;
        QTest::newRow("leading zeros are decimal") << "010" << true << 10;
        QTest::newRow("blanks around the number") << " 42 " << true << 42;
        QTest::newRow("a fraction") << "1.5" << false << 0;
        QTest::newRow("a fraction of zero") << "5.0" << false << 0;
        QTest::newRow("an exponent") << "1e3" << false << 0;
        QTest::newRow("a hexadecimal number") << "0x10" << false << 0;
        QTest::newRow("letters") << "abc" << false << 0;
        QTest::newRow("not-a-number") << "nan" << false << 0;
        QTest::newRow("infinity") << "inf" << false << 0;
        QTest::newRow("a sign alone") << "-" << false << 0;
        QTest::newRow("two numbers") << "1 2" << false << 0;
        QTest::newRow("blanks are not empty") << "  " << false << 0;
        QTest::newRow("groups by comma") << "1,234" << false << 0;
        QTest::newRow("groups by point") << "1.234" << false << 0;
        QTest::newRow("a number above 64 bits") << "9223372036854775808" << false << 0;
        QTest::newRow("a number below 64 bits") << "-9223372036854775809" << false << 0;
    }

    void aTextIsReadAsAWholeNumber()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(int, value);
        IntegerValidator<int> validator(lowest, highest, true);
        boost::any got = QString("before");
        QCOMPARE(validator.validate(text, got, noFlags), accepted);
        QCOMPARE(got, boost::any(value));
        got = QString("before");
        QCOMPARE(validator.validateWhenFinished(text, got, noFlags), accepted);
        QCOMPARE(got, boost::any(value));
    }

    void aNumberKeepsItsLowBits_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<boost::any>("value");
        QTest::newRow("unsigned short: its highest") << "65535" << word(65535);
        QTest::newRow("unsigned short: one more") << "65536" << word(0);
        QTest::newRow("unsigned short: 70000") << "70000" << word(4464);
        QTest::newRow("unsigned short: -1") << "-1" << word(65535);
        QTest::newRow("unsigned int: its highest") << "4294967295" << boost::any(4294967295U);
        QTest::newRow("unsigned int: one more") << "4294967296" << boost::any(0U);
        QTest::newRow("unsigned int: -1") << "-1" << boost::any(4294967295U);
        QTest::newRow("unsigned int: -4294967296") << "-4294967296" << boost::any(0U);
        QTest::newRow("int: its highest") << "2147483647" << boost::any(highest);
        QTest::newRow("int: one more") << "2147483648" << boost::any(lowest);
        QTest::newRow("int: its lowest") << "-2147483648" << boost::any(lowest);
        QTest::newRow("int: one less") << "-2147483649" << boost::any(highest);
        QTest::newRow("int: all low bits") << "4294967295" << boost::any(-1);
        QTest::newRow("int: the highest of 64 bits") << "9223372036854775807" << boost::any(-1);
        QTest::newRow("int: the lowest of 64 bits") << "-9223372036854775808" << boost::any(0);
        QTest::newRow("int: an ordinary large number") << "99999999999" << boost::any(1215752191);
    }

    void aNumberKeepsItsLowBits()
    {
        QFETCH(QString, text);
        QFETCH(boost::any, value);
        const auto validator = ofTypeOf(value);
        boost::any got;
        QVERIFY(validator->validate(text, got, noFlags));
        QCOMPARE(got, value);
        QVERIFY(validator->validateWhenFinished(text, got, noFlags));
        QCOMPARE(got, value);
    }

    void aKeystrokeLooksAtNoLimit()
    {
        IntegerValidator<int> validator(0, 10, true);
        boost::any value;
        QVERIFY(validator.validate("50", value, noFlags));
        QCOMPARE(value, boost::any(50));
        QVERIFY(validator.validate("-50", value, noFlags));
        QCOMPARE(value, boost::any(-50));
    }

    void finishingClamps_data()
    {
        QTest::addColumn<int>("min");
        QTest::addColumn<int>("max");
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<int>("value");
        QTest::newRow("a number above the range") << 0 << 10 << "50" << true << 10;
        QTest::newRow("a number below the range") << 0 << 10 << "-50" << true << 0;
        QTest::newRow("a number in the range") << 0 << 10 << "5" << true << 5;
        QTest::newRow("the minimum itself") << 3 << 10 << "3" << true << 3;
        QTest::newRow("the maximum itself") << 3 << 10 << "10" << true << 10;
        QTest::newRow("what is left of a number too large") << 0 << 10 << "2147483648" << true << 0;
        QTest::newRow("what is left of a number too small")
            << 0 << 10 << "-2147483649" << true << 10;
        QTest::newRow("a number that wraps into the range") << 0 << 10 << "4294967301" << true << 5;
        QTest::newRow("the zero of a refused text, below") << 5 << 9 << "abc" << false << 5;
        QTest::newRow("the zero of a refused text, above") << -9 << -5 << "abc" << false << -5;
        QTest::newRow("the zero of a refused text, within") << -9 << 9 << "abc" << false << 0;
    }

    void finishingClamps()
    {
        QFETCH(int, min);
        QFETCH(int, max);
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(int, value);
        IntegerValidator<int> validator(min, max, true);
        boost::any got = QString("before");
        QCOMPARE(validator.validateWhenFinished(text, got, noFlags), accepted);
        QCOMPARE(got, boost::any(value));
    }

    void theZeroOfARefusedEmptyTextIsClampedToo()
    {
        IntegerValidator<int> validator(5, 9, false);
        boost::any value;
        QVERIFY(!validator.validate("", value, noFlags));
        QCOMPARE(value, boost::any(0));
        QVERIFY(!validator.validateWhenFinished("", value, noFlags));
        QCOMPARE(value, boost::any(5));
    }

    void finishingClampsAfterTheLowBitsAreTaken()
    {
        IntegerValidator<unsigned int> wide(0, 100, true);
        boost::any value;
        QVERIFY(wide.validateWhenFinished("-1", value, noFlags));
        QCOMPARE(value, boost::any(100U));
        QVERIFY(wide.validateWhenFinished("4294967300", value, noFlags));
        QCOMPARE(value, boost::any(4U));

        IntegerValidator<unsigned short> narrow(5000, 6000, true);
        QVERIFY(narrow.validateWhenFinished("70000", value, noFlags));
        QCOMPARE(value, word(5000));
        QVERIFY(narrow.validateWhenFinished("-1", value, noFlags));
        QCOMPARE(value, word(6000));
        QVERIFY(!narrow.validateWhenFinished("abc", value, noFlags));
        QCOMPARE(value, word(5000));
    }

    void formattingClamps_data()
    {
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("a number above the range") << 50 << "10";
        QTest::newRow("a number below the range") << -50 << "-3";
        QTest::newRow("a number in the range") << 5 << "5";
        QTest::newRow("a negative number in the range") << -2 << "-2";
        QTest::newRow("the minimum itself") << -3 << "-3";
        QTest::newRow("the maximum itself") << 10 << "10";
    }

    void formattingClamps()
    {
        QFETCH(int, value);
        QFETCH(QString, text);
        IntegerValidator<int> validator(-3, 10, true);
        QCOMPARE(validator.reformat(value, noFlags), text);
    }

    // Finishing looks at the minimum first, and only then else at the maximum;
    // formatting brings the number below the maximum, then above the minimum.
    void aMinimumAboveTheMaximum_data()
    {
        QTest::addColumn<int>("number");
        QTest::addColumn<int>("finished");
        QTest::addColumn<QString>("text");
        QTest::newRow("a number below both") << -5 << 10 << "10";
        QTest::newRow("a number between") << 5 << 10 << "10";
        QTest::newRow("the minimum itself") << 10 << 0 << "10";
        QTest::newRow("a number above both") << 20 << 0 << "10";
    }

    void aMinimumAboveTheMaximum()
    {
        QFETCH(int, number);
        QFETCH(int, finished);
        QFETCH(QString, text);
        expectAssert("min <= max", {"min", "max"});
        IntegerValidator<int> validator(10, 0, true);
        boost::any value;
        QVERIFY(validator.validateWhenFinished(QString::number(number), value, noFlags));
        QCOMPARE(value, boost::any(finished));
        QCOMPARE(validator.reformat(number, noFlags), text);
    }

    void aRangeOfOneNumberIsNoReport()
    {
        IntegerValidator<int> validator(5, 5, true);
        QCOMPARE(validator.reformat(7, noFlags), QString("5"));
    }

    void everyTypeIsWrittenWhole_data()
    {
        QTest::addColumn<boost::any>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("the highest int") << boost::any(highest) << "2147483647";
        QTest::newRow("the lowest int") << boost::any(lowest) << "-2147483648";
        QTest::newRow("the highest unsigned int") << boost::any(4294967295U) << "4294967295";
        QTest::newRow("the highest unsigned short") << word(65535) << "65535";
    }

    void everyTypeIsWrittenWhole()
    {
        QFETCH(boost::any, value);
        QFETCH(QString, text);
        QCOMPARE(ofTypeOf(value)->reformat(value, noFlags), text);
    }

    void noValueIsFormatted_data()
    {
        QTest::addColumn<QString>("emptyAllowed");
        QTest::addColumn<QString>("text");
        QTest::newRow("as zero where it counts as zero") << "as built"
                                                         << "0";
        QTest::newRow("as an empty text where it is allowed") << "yes"
                                                              << "";
        QTest::newRow("as zero where it is allowed no more") << "no"
                                                             << "0";
    }

    // The zero is not brought into the range.
    void noValueIsFormatted()
    {
        QFETCH(QString, emptyAllowed);
        QFETCH(QString, text);
        IntegerValidator<int> validator(5, 9, true);
        if (emptyAllowed != "as built")
            validator.setEmptyValueAllowed(emptyAllowed == "yes");
        QCOMPARE(validator.reformat({}, noFlags), text);
    }

    void aForeignTypeIsReportedAndIsANullText_data()
    {
        QTest::addColumn<boost::any>("value");
        QTest::addColumn<bool>("zeroIfEmpty");
        QTest::newRow("an unsigned int") << boost::any(1U) << true;
        QTest::newRow("an unsigned short") << word(1) << true;
        QTest::newRow("a double") << boost::any(1.0) << true;
        QTest::newRow("a text") << boost::any(QString("1")) << true;
        QTest::newRow("no value where it counts for nothing") << boost::any() << false;
    }

    void aForeignTypeIsReportedAndIsANullText()
    {
        QFETCH(boost::any, value);
        QFETCH(bool, zeroIfEmpty);
        IntegerValidator<int> validator(0, 10, zeroIfEmpty);
        expectAssert("value.type() == typeid(value_type)", {"value.type().name()"});
        QVERIFY(validator.reformat(value, noFlags).isNull());
        QCOMPARE(asserts().last().values.at(0).second, std::string(value.type().name()));
    }

    void anIntIsForeignToTheUnsignedTypes()
    {
        expectAssert("value.type() == typeid(value_type)", {"value.type().name()"});
        QVERIFY(ofAnySize<unsigned int>()->reformat(1, noFlags).isNull());
        expectAssert("value.type() == typeid(value_type)", {"value.type().name()"});
        QVERIFY(ofAnySize<unsigned short>()->reformat(1, noFlags).isNull());
    }

    void theFlagsAreNotRead_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("accepted");
        QTest::addColumn<int>("value");
        QTest::newRow("digits") << "1234567" << true << 1234567;
        QTest::newRow("groups as the user's locale has them") << "1.234" << false << 0;
        QTest::newRow("groups as the C locale may have them") << "1,234" << false << 0;
    }

    void theFlagsAreNotRead()
    {
        QFETCH(QString, text);
        QFETCH(bool, accepted);
        QFETCH(int, value);
        IntegerValidator<int> validator(lowest, highest, true);
        for (const std::bitset<32>& flags : {noFlags, allFlags, std::bitset<32>(1)}) {
            boost::any got;
            QCOMPARE(validator.validate(text, got, flags), accepted);
            QCOMPARE(got, boost::any(value));
            QCOMPARE(validator.validateWhenFinished(text, got, flags), accepted);
            QCOMPARE(got, boost::any(value));
            QCOMPARE(validator.reformat(1234567, flags), QString("1234567"));
        }
    }

    void displayTextHasThePostfix()
    {
        IntegerValidator<int> validator(0, 10, true);
        validator.setPostfix("pcs");
        QCOMPARE(validator.reformatForDisplay(50, noFlags), QString("10 pcs"));
        QCOMPARE(validator.reformatForDisplay({}, noFlags), QString("0 pcs"));
    }

    void hostileTextsAreNumbersOrRefused_data()
    {
        QTest::addColumn<QString>("text");
        for (const auto& [name, text] : vrn::test::hostileTexts())
            QTest::newRow(name) << text;
    }

    void hostileTextsAreNumbersOrRefused()
    {
        QFETCH(QString, text);
        answersAKeystroke<int>(text);
        answersAKeystroke<unsigned int>(text);
        answersAKeystroke<unsigned short>(text);
    }

private:
    // What is a number is QString's matter; that nothing else is made of a text
    // is ours.
    template <typename T>
    static void answersAKeystroke(const QString& text)
    {
        bool isNumber = false;
        const qlonglong number = text.toLongLong(&isNumber, 10);
        const T expected = isNumber ? static_cast<T>(number) : T(0);

        IntegerValidator<T> validator(5, 9, true);
        vrn::test::verifyTakesAKeystroke("validate", [&] {
            boost::any value = QString("before");
            QCOMPARE(validator.validate(text, value, noFlags), isNumber);
            QCOMPARE(value, boost::any(expected));
        });
        vrn::test::verifyTakesAKeystroke("validateWhenFinished", [&] {
            boost::any value = QString("before");
            QCOMPARE(validator.validateWhenFinished(text, value, noFlags), isNumber);
            QCOMPARE(value, boost::any(qBound(T(5), expected, T(9))));
        });
    }
};

VRN_TEST(TestIntegerValidator)
#include "tst_integer_validator.moc"
