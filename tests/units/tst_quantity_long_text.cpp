#include "formatting/quantity_reader_p.h"
#include "formatting/subject_p.h"
#include "quantity_comparison.h"
#include "reference_quantity_reader.h"

#include <vrn/units/context.h>
#include <vrn/units/varnelik_unit_provider.h>

#include "support/hostile_texts.h"
#include "support/keystroke_time.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <map>
#include <set>

using namespace vrn::test;
using namespace vrn::units;

namespace {

/// The longest that a mebi may take in what is shipped.
constexpr int most_milliseconds = 20;

/// The part over and over, up to `size` characters.
std::wstring repeated(const std::wstring& part, std::size_t size)
{
    std::wstring text;
    text.reserve(size + part.size());
    while (text.size() + part.size() <= size)
        text += part;
    return text;
}

} // namespace

/// Texts of a mebi, which are too long for a matcher that backtracks or recurses.
class TestQuantityLongText : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // The reference would overflow the stack with these, so their rows give the answers.
    void answersAMebiThatIsPasted_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("unit");
        QTest::addColumn<bool>("is_length");
        QTest::addColumn<double>("feet");
        std::map<QByteArray, QString> hostile;
        for (const auto& [name, text] : hostileTexts()) {
            if (text.size() > longest_for_the_reference)
                hostile.emplace(name, text);
        }
        const auto shared = [&hostile](const char* name) {
            const auto found = hostile.extract(name);
            return found ? found.mapped() : QStringLiteral("no such text");
        };
        const auto of = [](char character) { return QString(int{mebi}, QLatin1Char(character)); };
        const auto row = [](const QString& name, const QString& text, double value, int unit) {
            QTest::newRow(qPrintable(name)) << text << value << unit << false << 0.0;
        };
        const auto length_row = [](const char* name, const QString& text, double feet) {
            QTest::newRow(name) << text << 0.0 << none << true << feet;
        };

        for (const char* const name : {"a mebi of blanks", "a mebi of the letter a",
                 "a mebi of the letter e", "a mebi of minus signs", "a mebi of combining accents"})
            row(name, shared(name), 0, none);
        row("a mebi of the digit 7", shared("a mebi of the digit 7"), greatest, 1);
        row("a mebi of zeros", shared("a mebi of zeros"), 0, 1);
        row("a mebi of points", shared("a mebi of points"), 0, 1);
        row("a mebi of commas", shared("a mebi of commas"), 0, 1);
        row("a number with a mebi of decimals", shared("a number with a mebi of decimals"), 1.0 / 3,
            1);
        length_row("a mebi of apostrophes", shared("a mebi of apostrophes"), 0);
        // A new text in the list needs a row here.
        for (const auto& [name, text] : hostile)
            QFAIL("no row for " + name);

        row("a mebi of the digit 1", of('1'), greatest, 1);
        for (const char character : std::string("/+Eftin%\n"))
            row(QStringLiteral("a mebi of U+%1").arg(int{character}, 4, 16, QLatin1Char('0')),
                of(character), 0, none);
        // The last marks count, and before them the number that the text begins with.
        length_row(
            "a mebi of feet and inches", QStringLiteral("1ft2in").repeated(mebi / 6), 1 + 2.0 / 12);
        length_row("a mebi of marks", QStringLiteral("1'2''").repeated(mebi / 5), 1 + 2.0 / 12);
        row("a mebi of slashes", QStringLiteral("1/m").repeated(mebi / 3), 0, none);
        row("a mebi of words", "1 " + QStringLiteral("kN ").repeated(mebi / 3) + "m", 0, none);
        row("a number and a mebi of letters", "1 " + of('k'), 0, none);
        row("a number, a mebi of blanks and a unit", "1" + of(' ') + "m", 1, 13);
    }
    void answersAMebiThatIsPasted()
    {
        QFETCH(bool, is_length);
        QFETCH(double, feet);
        QFETCH(QString, text);
        QFETCH(double, value);
        QFETCH(int, unit);
        const std::wstring wide = text.toStdWString();
        const auto quantity = detail::read_quantity(wide, std::locale::classic(), m_symbols);
        QCOMPARE(unit_of(quantity), unit);
        if (quantity)
            QVERIFY2(nearly(quantity->value, value), QByteArray::number(quantity->value, 'g', 17));
        const auto length = detail::read_feet_and_inches(wide, std::locale::classic());
        QCOMPARE(unit_of(length), is_length ? 213 : none);
        if (length)
            QVERIFY2(nearly(length->value, feet), QByteArray::number(length->value, 'g', 17));
    }

    void readsAQuantityOfAMebi()
    {
        const std::wstring blanks(mebi, L' ');
        const auto quantity = detail::read_quantity(
            blanks + L"3 1/2" + blanks + L"kN", std::locale::classic(), m_symbols);
        QCOMPARE(unit_of(quantity), 62);
        QCOMPARE(quantity->value, 3.5);
        const auto length = detail::read_feet_and_inches(
            blanks + L"1'" + blanks + L"6" + blanks + L"''" + blanks, std::locale::classic());
        QCOMPARE(unit_of(length), 213);
        QCOMPARE(length->value, 1.5);
    }

    void takesAMebiOfEachCharacterInTime_data()
    {
        add_part_columns();
        for (const wchar_t character : characters())
            add_part_rows(QStringLiteral("U+%1").arg(
                              static_cast<quint32>(character), 4, 16, QLatin1Char('0')),
                std::wstring(1, character));
    }
    void takesAMebiOfEachCharacterInTime() { check_part(); }

    void takesAMebiOfPartsInTime_data()
    {
        add_part_columns();
        for (const wchar_t* const part : {L"1ft2in", L"1'2''", L"1/m", L"1 ", L"1.", L"1,", L"k ",
                 L"1.234", L"1,234", L"1e", L"1/2 ", L"-1", L"m/"})
            add_part_rows(QString::fromWCharArray(part), part);
    }
    void takesAMebiOfPartsInTime() { check_part(); }

private:
    /// Each character that an expression or a spelling names, all others that may stand in
    /// a number, a quotation or between words, and one of each further kind.
    std::set<wchar_t> characters() const
    {
        std::set<wchar_t> found(detail::symbols::named.begin(), detail::symbols::named.end());
        for (const auto& [spelling, unit] : m_reference.spellings())
            found.insert(spelling.begin(), spelling.end());
        for (const wchar_t character :
            std::wstring(L"0123456789+-.,'\"`^_()xXpPaA\u2019\u2032\u2033"
                         L" \t\n\v\f\r\u0085\u00a0\u2028\u2029\u202f"))
            found.insert(character);
        // NUL, a control character, a letter, marks, digits of another script, a letter from
        // right to left, a half of a pair, outside the basic plane, the highest of all.
        for (const wchar_t character : {0x0, 0x7f, 0xe4, 0x301, 0x308, 0x661, 0x5d0, 0x4e2d, 0xd83d,
                 0x1d7d8, 0x1f600, 0x10ffff})
            found.insert(character);
        return found;
    }

    static void add_part_columns()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("part");
    }

    static void add_part_rows(const QString& name, const std::wstring& part)
    {
        for (const char* const locale : {"C", "de_DE.UTF-8"})
            QTest::newRow(qPrintable(name + " in " + locale))
                << QByteArray(locale) << QString::fromWCharArray(part.data(), int(part.size()));
    }

    void check_part()
    {
        QFETCH(QByteArray, locale);
        QFETCH(QString, part);
        const std::locale where(locale.constData());
        const std::wstring text = repeated(part.toStdWString(), mebi);
        const std::wstring sample = repeated(part.toStdWString(), longest_for_the_reference / 2);

        // Repetition adds only digits to the number of the sample.
        const auto quantity = detail::read_quantity(text, where, m_symbols);
        const auto sample_quantity = m_reference.read(sample, where);
        QCOMPARE(unit_of(quantity), unit_of(sample_quantity));
        if (quantity)
            QCOMPARE(
                quantity->value, sample_quantity->value > 1e9 ? greatest : sample_quantity->value);
        const auto length = detail::read_feet_and_inches(text, where);
        const auto sample_length = ReferenceQuantityReader::read_feet_and_inches(sample, where);
        QCOMPARE(unit_of(length), unit_of(sample_length));
        if (length)
            QCOMPARE(length->value, sample_length->value);

        const Context context;
        verifyTakesAtMost(timeLimitMs(most_milliseconds), "a field of lengths",
            [&] { context.parse(text, UnitId::GEO_LENGTH, where); });
    }

    const detail::SymbolMap m_symbols{VarnelikUnitProvider()};
    const ReferenceQuantityReader m_reference{VarnelikUnitProvider()};
};

VRN_TEST(TestQuantityLongText)
#include "tst_quantity_long_text.moc"
