#include <vrn/qt/integer_validator.h>

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <QLocale>

#include <limits>
#include <type_traits>

using vrn::qt::IntegerValidator;
using vrn::qt::IValidator;
using vrn::test::columns;
using vrn::test::row;

namespace {

const std::bitset<32> noFlags;

constexpr int lowest = std::numeric_limits<int>::lowest();
constexpr int highest = std::numeric_limits<int>::max();

template <typename T>
std::unique_ptr<IValidator> validatorOf(
    qint64 min = std::numeric_limits<T>::lowest(), qint64 max = std::numeric_limits<T>::max())
{
    return std::make_unique<IntegerValidator<T>>(static_cast<T>(min), static_cast<T>(max), true);
}

// A validator of the type that `prototype` holds, with limits or without.
template <typename... Limits>
std::unique_ptr<IValidator> ofTypeOf(const boost::any& prototype, Limits... limits)
{
    if (prototype.type() == typeid(unsigned int))
        return validatorOf<unsigned int>(limits...);
    if (prototype.type() == typeid(unsigned short))
        return validatorOf<unsigned short>(limits...);
    return validatorOf<int>(limits...);
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

    void aTextIsReadAsAWholeNumber_data()
    {
        columns<QString, bool, int>("text", "accepted", "value");
        row("digits", "42", true, 42);
        row("a negative number", "-42", true, -42);
        row("a plus sign", "+42", true, 42);
        row("leading zeros are decimal", "010", true, 10);
        row("blanks around the number", " 42 ", true, 42);
        row("a fraction", "1.5", false, 0);
        row("a fraction of zero", "5.0", false, 0);
        row("an exponent", "1e3", false, 0);
        row("a hexadecimal number", "0x10", false, 0);
        row("letters", "abc", false, 0);
        row("not-a-number", "nan", false, 0);
        row("infinity", "inf", false, 0);
        row("a sign alone", "-", false, 0);
        row("two numbers", "1 2", false, 0);
        row("groups by comma", "1,234", false, 0);
        row("groups by point", "1.234", false, 0);
        row("a number above 64 bits", "9223372036854775808", false, 0);
        row("a number below 64 bits", "-9223372036854775809", false, 0);
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
        columns<QString, boost::any>("text", "value");
        row("unsigned short: its highest", "65535", word(65535));
        row("unsigned short: one more", "65536", word(0));
        row("unsigned short: 70000", "70000", word(4464));
        row("unsigned short: -1", "-1", word(65535));
        row("unsigned int: its highest", "4294967295", boost::any(4294967295U));
        row("unsigned int: one more", "4294967296", boost::any(0U));
        row("unsigned int: -1", "-1", boost::any(4294967295U));
        row("unsigned int: -4294967296", "-4294967296", boost::any(0U));
        row("int: its highest", "2147483647", boost::any(highest));
        row("int: one more", "2147483648", boost::any(lowest));
        row("int: its lowest", "-2147483648", boost::any(lowest));
        row("int: one less", "-2147483649", boost::any(highest));
        row("int: all low bits", "4294967295", boost::any(-1));
        row("int: the highest of 64 bits", "9223372036854775807", boost::any(-1));
        row("int: the lowest of 64 bits", "-9223372036854775808", boost::any(0));
        row("int: an ordinary large number", "99999999999", boost::any(1215752191));
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

    void finishingClampsAfterTheLowBitsAreTaken_data()
    {
        columns<int, int, QString, boost::any>("min", "max", "text", "value");
        row("int: what is left of a number too large", 0, 10, "2147483648", boost::any(0));
        row("int: what is left of a number too small", 0, 10, "-2147483649", boost::any(10));
        row("int: a number that wraps into the range", 0, 10, "4294967301", boost::any(5));
        row("unsigned int: -1", 0, 100, "-1", boost::any(100U));
        row("unsigned int: wraps into the range", 0, 100, "4294967300", boost::any(4U));
        row("unsigned short: 70000", 5000, 6000, "70000", word(5000));
        row("unsigned short: -1", 5000, 6000, "-1", word(6000));
    }

    void finishingClampsAfterTheLowBitsAreTaken()
    {
        QFETCH(int, min);
        QFETCH(int, max);
        QFETCH(QString, text);
        QFETCH(boost::any, value);
        boost::any got;
        QVERIFY(ofTypeOf(value, min, max)->validateWhenFinished(text, got, noFlags));
        QCOMPARE(got, value);
    }

    void everyTypeIsWrittenWhole_data()
    {
        columns<boost::any, QString>("value", "text");
        row("the highest int", boost::any(highest), "2147483647");
        row("the lowest int", boost::any(lowest), "-2147483648");
        row("the highest unsigned int", boost::any(4294967295U), "4294967295");
        row("the highest unsigned short", word(65535), "65535");
    }

    void everyTypeIsWrittenWhole()
    {
        QFETCH(boost::any, value);
        QFETCH(QString, text);
        QCOMPARE(ofTypeOf(value)->reformat(value, noFlags), text);
    }
};

VRN_TEST(TestIntegerValidator)
#include "tst_integer_validator.moc"
