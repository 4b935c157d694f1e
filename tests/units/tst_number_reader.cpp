#include "formatting/number_reader_p.h"
#include "punctuation.h"
#include "quantity_comparison.h"
#include "quantity_text_generator.h"
#include "reference_quantity_reader.h"

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <cstring>
#include <random>
#include <utility>

using namespace vrn::test;
using namespace vrn::units::detail;

namespace {

const std::vector<std::pair<const char*, std::locale>>& locales()
{
    static const std::vector<std::pair<const char*, std::locale>> list = {
        {"classic", std::locale::classic()},
        {"C by its name", std::locale("C")},
        {"German", Punctuation::german()},
        {"Swiss", Punctuation::swiss()},
        {"French", Punctuation::french()},
        {"Indian", Punctuation::indian()},
        {"classic marks", Punctuation::locale(L'.', L',', "")},
        {"e as the separator", Punctuation::locale(L'.', L'e', "\1")},
        {"minus as the point", Punctuation::locale(L'-', L'+', "\2")},
    };
    return list;
}

std::locale locale_named(const QByteArray& name)
{
    for (const auto& [known, locale] : locales()) {
        if (name == known)
            return locale;
    }
    qFatal("no such locale");
}

void add_locale_rows()
{
    QTest::addColumn<QByteArray>("locale");
    for (const auto& entry : locales())
        QTest::newRow(entry.first) << QByteArray(entry.first);
}

} // namespace

class TestNumberReader : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // What random texts rarely contain. They hold the rest.
    void readsWhatAStreamExtracts_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        const auto row = [](const char* name, const char* locale, const char* text, double value) {
            QTest::newRow(name) << QByteArray(locale) << QString::fromUtf8(text) << value;
        };
        row("minus zero", "classic", "-0", -0.0);
        row("nothing", "classic", "", 0);
        row("a word", "classic", "kN", 0);
        row("infinity in words", "classic", "inf", 0);
        row("not-a-number in words", "classic", "nan", 0);
        row("a hexadecimal number", "classic", "0x10", 0);
        row("blanks before the number", "classic", " \t\n12", 12);
        row("an overflow", "classic", "1e999", greatest);
        row("an overflow below zero", "classic", "-1e999", -greatest);
        row("an underflow", "classic", "1e-999", 0);
        row("an underflow below zero", "classic", "-1e-999", -0.0);
        row("the least double", "classic", "5e-324", 5e-324);
        row("half of the least double", "classic", "2e-324", 0);
        row("the greatest double", "classic", "1.7976931348623157e308", greatest);
        row("halfway between two doubles", "classic", "9007199254740993", 9007199254740992);
        row("digits of another script", "classic", "\u0661", 0);
        row("a group of the wrong size", "German", "1.5", 15);
        row("groups of two sizes", "Indian", "12,34,567.8", 1234567.8);
    }
    void readsWhatAStreamExtracts()
    {
        QFETCH(QByteArray, locale);
        QFETCH(QString, text);
        QFETCH(double, value);
        const std::wstring wide = text.toStdWString();
        const std::locale where = locale_named(locale);
        const double read = NumberReader(where).read_decimal(wide);
        QVERIFY2(identical(read, value), QByteArray::number(read, 'g', 17));
        QVERIFY(identical(reference_stream_number(wide, locale_named(locale)), value));
    }

    void readsFractions_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        const auto row = [](const char* name, const char* text, double value) {
            QTest::newRow(name) << QString::fromUtf8(text) << value;
        };
        row("a negative whole part", "-1 1/2", -1.5);
        row("a sign after the whole part", "1 -1/2", -1.5);
        row("two signs are one", "-1 -1/2", -1.5);
        row("two signs at once are one", "--1/2", -0.5);
        row("three signs end the fraction", "---1/2", 0);
        row("a blank after the sign ends it", "- 1/2", 0);
        row("a sign right after the whole part ends the fraction", "1-1/2", 1);
        row("a second whole part ends the fraction", "1 2 1/2", 1);
        row("a tabulator after the whole part", "3\t1/4", 3.25);
        row("a denominator of 0", "1/0", infinity);
        row("a negative fraction of 0", "-1/0", -infinity);
        row("0 of 0", "0/0", not_a_number);
        row("a whole part and 0 of 0", "5 0/00", not_a_number);
        row("a blank before the slash ends the number", "1 /2", 1);
        row("a blank after the slash ends the number", "1/ 2", 1);
    }
    void readsFractions()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        const double read = m_classic.read(text.toStdWString());
        QVERIFY2(identical(read, value), QByteArray::number(read, 'g', 17));
    }

    // The quick way for the classic locale and the slow one must not differ in one bit.
    void agreesWithAStreamOnRandomTexts_data() { add_locale_rows(); }
    void agreesWithAStreamOnRandomTexts()
    {
        QFETCH(QByteArray, locale);
        const std::locale where = locale_named(locale);
        std::mt19937 random(randomSeed());
        const std::wstring characters = L"0123456789012345678901234567890123456789....,,''-+eE /";
        for (int i = 0; i < 20000; ++i) {
            std::wstring text;
            for (std::size_t length = random() % (random() % 4 == 0 ? 30 : 7); length > 0; --length)
                text += characters[random() % characters.size()];
            const double stream = NumberReader(where).read_decimal(text);
            const double number = NumberReader(where).read(text);
            if (!identical(stream, reference_stream_number(text, where))
                || !identical(number, reference_number(text, where)))
                QFAIL(qPrintable(QString::fromStdWString(text)));
        }
    }

    void agreesWithAStreamOnEachDoubleItWrites()
    {
        std::mt19937_64 random(randomSeed());
        for (int i = 0; i < 20000; ++i) {
            const std::uint64_t bits = random();
            double value = 0;
            std::memcpy(&value, &bits, sizeof value);
            if (value - value != 0)
                continue;
            const std::wstring text =
                QString::number(value, 'g', static_cast<int>(1 + random() % 20)).toStdWString();
            const double read = NumberReader(std::locale::classic()).read_decimal(text);
            if (!identical(read, reference_stream_number(text, std::locale::classic())))
                QFAIL(qPrintable(QString::fromStdWString(text)));
        }
    }

    void readsAMebi_data()
    {
        columns<QString, double>("text", "value");
        const auto repeated = [](char character) {
            return QString(int{mebi}, QLatin1Char(character));
        };
        row("of digits", repeated('7'), greatest);
        row("of zeros", repeated('0'), 0.0);
        row("of zeros before a digit", repeated('0') + "5", 5.0);
        row("of decimals", "0." + repeated('3'), 1.0 / 3);
        row("of zeros after the point", "0." + repeated('0') + "1", 0.0);
        row("of blanks", repeated(' '), 0.0);
        row("of points", repeated('.'), 0.0);
        row("of letters after a number", "5" + repeated('e'), 0.0);
        row("of digits in the numerator", repeated('7') + "/2", greatest / 2);
        row("of digits in the denominator", "2/" + repeated('7'), 2 / greatest);
        row("of blanks after the whole part", "1" + repeated(' ') + "1/2", 1.5);
    }
    void readsAMebi()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        QVERIFY(identical(m_classic.read(text.toStdWString()), value));
    }

    void trimsWhiteSpaceOfTheClassicLocale_data()
    {
        columns<QString, QString>("text", "trimmed");
        row("none", "a b", "a b");
        row("both ends", " \t\n\v\f\ra b\r\f\v\n\t ", "a b");
        row("blanks alone", "  ", "");
        row("an empty text", "", "");
        row("a blank that does not break", "\u00a0a", "\u00a0a");
        row("a line separator", "a\u2028", "a\u2028");
    }
    void trimsWhiteSpaceOfTheClassicLocale()
    {
        QFETCH(QString, text);
        QFETCH(QString, trimmed);
        const std::wstring wide = text.toStdWString();
        QCOMPARE(QString::fromStdWString(std::wstring(trim(wide))), trimmed);
    }

private:
    const NumberReader m_classic{std::locale::classic()};
};

VRN_TEST(TestNumberReader)
#include "tst_number_reader.moc"
