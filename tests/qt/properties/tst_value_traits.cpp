#include <vrn/qt/value_traits.h>

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include "beams.h"

#include <cmath>
#include <limits>
#include <random>

using namespace vrn::qt::detail;
using namespace vrn::test;

namespace {

double fromBits(quint64 bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof(value));
    return value;
}

} // namespace

class TestValueTraits : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void comparesNumbersByTheirBits();
    void writesNumbersThatReadBack_data();
    void writesNumbersThatReadBack();
    void writesEveryNumberSoThatItReadsBack();
    void readsOnlyWhatItWrites_data();
    void readsOnlyWhatItWrites();
    void keepsIntegersOfEveryType();
    void takesBytesOfEveryTextThere_data();
    void takesBytesOfEveryTextThere();
    void takesRandomBytesThereAndBack();
    void readsVariants_data();
    void readsVariants();
};

void TestValueTraits::comparesNumbersByTheirBits()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QVERIFY(isSame(nan, nan));
    QVERIFY(!isSame(0.0, -0.0));
    QVERIFY(!isSame(nan, -nan));
    QVERIFY(isSame(0.1F, 0.1F));
    QVERIFY(!isSame(0.1, std::nextafter(0.1, 1.0)));
    QVERIFY(isSame(std::string("a"), std::string("a")));
}

void TestValueTraits::writesNumbersThatReadBack_data()
{
    columns<double, QString>("value", "text");
    row("short", 7.62, "7.62");
    row("whole", 3.0, "3");
    row("a third", 1.0 / 3.0, "0.3333333333333333");
    row("minus zero", -0.0, "-0");
    row("the smallest", std::numeric_limits<double>::denorm_min(), "5e-324");
    row("infinite", -std::numeric_limits<double>::infinity(), "-inf");
    row("not a number", fromBits(0x7ff8000000000000), "nan:7ff8000000000000");
    row("another that is not a number", fromBits(0xfff0000000000001), "nan:fff0000000000001");
}

void TestValueTraits::writesNumbersThatReadBack()
{
    QFETCH(double, value);
    QTEST(exactText(value), "text");
    QVERIFY(isSame(exactNumber(exactText(value)).value(), value));
}

void TestValueTraits::writesEveryNumberSoThatItReadsBack()
{
    std::mt19937_64 random(randomSeed());
    for (int i = 0; i < 100000; ++i) {
        const double value = fromBits(random());
        const std::optional<double> back = exactNumber(exactText(value));
        QVERIFY2(back && isSame(*back, value), qPrintable(exactText(value)));
    }
}

void TestValueTraits::readsOnlyWhatItWrites_data()
{
    columns<QString>("text");
    row("nothing", "");
    row("a blank", " 1");
    row("another way of writing", "1.0");
    row("a plus", "+1");
    row("a comma", "1,5");
    row("a unit", "1 m");
    row("too many digits", "0.10000000000000000001");
    row("too large", "1e999");
    row("hexadecimal", "0x10");
    row("not a number without bits", "nan");
    row("a number given by its bits", "nan:3ff0000000000000");
    row("bits in capitals", "nan:7FF8000000000000");
    row("too many bits", "nan:07ff8000000000000");
}

void TestValueTraits::readsOnlyWhatItWrites()
{
    QFETCH(QString, text);
    QVERIFY(!exactNumber(text));
}

void TestValueTraits::keepsIntegersOfEveryType()
{
    const auto goesThereAndBack = [](auto value) {
        using Traits = ValueTraits<decltype(value)>;
        return Traits::fromText(Traits::toText(value)) == value
            && Traits::fromVariant(Traits::toVariant(value)) == value;
    };
    QVERIFY(goesThereAndBack(std::numeric_limits<qint64>::min()));
    QVERIFY(goesThereAndBack(std::numeric_limits<quint64>::max()));
    QVERIFY(goesThereAndBack(std::numeric_limits<signed char>::min()));
    QVERIFY(goesThereAndBack(std::numeric_limits<unsigned short>::max()));
    QVERIFY(goesThereAndBack(Support::Free));
    QVERIFY(goesThereAndBack(true));
    QVERIFY(goesThereAndBack(false));
    QVERIFY(!ValueTraits<bool>::fromText("1"));
    QVERIFY(!ValueTraits<int>::fromText("2147483648"));
    QVERIFY(!ValueTraits<int>::fromText("01"));
    QVERIFY(!ValueTraits<unsigned>::fromText("-1"));
}

void TestValueTraits::takesBytesOfEveryTextThere_data()
{
    columns<QByteArray, QString>("bytes", "text");
    row("plain", QByteArray("S235"), "S235");
    row("empty", QByteArray(""), "");
    row("of two bytes", QByteArray("\xc3\xbc"), QString(QChar(0xfc)));
    row("outside the basic plane", QByteArray("\xf0\x9f\x8f\x97"),
        QString::fromUtf8("\xf0\x9f\x8f\x97"));
    row("with a zero", QByteArray("a\0b", 3), QString("a") + QChar(0) + "b");
    row("Latin-1", QByteArray("T\xfcr"), QString("T") + QChar(0xdcfc) + "r");
    row("cut off", QByteArray("a\xe2\x82"), QString("a") + QChar(0xdce2) + QChar(0xdc82));
    row("too long for its character", QByteArray("\xc0\xaf"),
        QString(QChar(0xdcc0)) + QChar(0xdcaf));
    row("half a surrogate pair", QByteArray("\xed\xb3\xbc"),
        QString(QChar(0xdced)) + QChar(0xdcb3) + QChar(0xdcbc));
}

void TestValueTraits::takesBytesOfEveryTextThere()
{
    QFETCH(QByteArray, bytes);
    QTEST(textFrom(bytes.toStdString()), "text");
    QCOMPARE(QByteArray::fromStdString(utf8From(textFrom(bytes.toStdString()))), bytes);
}

void TestValueTraits::takesRandomBytesThereAndBack()
{
    std::mt19937 random(randomSeed());
    const std::string alphabet = "a\x80\xbf\xc2\xe0\xa0\xed\x9f\xef\xf0\x90\xf4\x8f\xff\xbb";
    for (int i = 0; i < 100000; ++i) {
        std::string bytes;
        for (unsigned size = random() % 8; size > 0; --size)
            bytes += alphabet[random() % alphabet.size()];
        QCOMPARE(utf8From(textFrom(bytes)), bytes);
    }
}

void TestValueTraits::readsVariants_data()
{
    columns<QVariant, bool, bool, bool>("variant", "isNumber", "isInteger", "isFlag");
    row("a number", QVariant(12.0), true, true, false);
    row("a text with a number", QVariant("12"), true, true, false);
    row("another text", QVariant("twelve"), false, false, false);
    row("one", QVariant(1), true, true, true);
    row("true", QVariant(true), true, true, true);
    row("too large for an int", QVariant(qlonglong(1) << 32), true, false, false);
    row("bytes", QVariant(QByteArray("x")), false, false, false);
}

void TestValueTraits::readsVariants()
{
    QFETCH(QVariant, variant);
    QTEST(ValueTraits<double>::fromVariant(variant).has_value(), "isNumber");
    QTEST(ValueTraits<int>::fromVariant(variant).has_value(), "isInteger");
    QTEST(ValueTraits<bool>::fromVariant(variant).has_value(), "isFlag");
}

VRN_TEST(TestValueTraits)
#include "tst_value_traits.moc"
