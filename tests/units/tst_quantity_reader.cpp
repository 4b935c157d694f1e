#include "formatting/quantity_reader_p.h"
#include "other_units.h"
#include "punctuation.h"
#include "quantity_comparison.h"
#include "reference_quantity_reader.h"

#include <vrn/units/catalogue.h>
#include <vrn/units/context.h>

#include "support/hostile_texts.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <map>

using namespace vrn::test;
using namespace vrn::units;

namespace {

void add_quantity_columns()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("unit");
}

void add_row(const char* name, const char* text, double value, int unit)
{
    QTest::newRow(name) << QString::fromUtf8(text) << value << unit;
}

void add_refused_row(const char* name, const char* text)
{
    add_row(name, text, 0, none);
}

} // namespace

class TestQuantityReader : public TestObject
{
    Q_OBJECT

private Q_SLOTS:
    // Worked examples, for the reader and for the reference. Another test compares these two
    // for each spelling and for random texts.
    void readsANumberAndAUnit_data()
    {
        add_quantity_columns();
        add_row("a unit with a slash", "12 kN/m2", 12, 72);
        add_row("a negative fraction", "-1/2 ft", -0.5, 213);
        add_row("a whole part and a fraction", "1 1/2 m", 1.5, 13);
        add_row("an exponent", "1.5e3 kN", 1500, 62);
        add_row("tabulators and line breaks for blanks", "12\t\n kN", 12, 62);
        add_row("a comma in the C locale ends the number", "1,5 m", 1, 13);
        add_row("percent by its sign", "5 %", 5, 8);
        add_row("percent as o/o", "5 o/o", 5, 8);
        add_row("percent as O/O", "5 O/O", 5, 8);
        add_row("per mille as O/OO", "5 O/OO", 5, 9);
        add_row("o/oo is the first unit of that symbol", "5 o/oo", 5, 2);
        add_row("a foot by its mark", "1'", 1, 213);
        add_row("an inch by its mark", "5''", 5, 214);
        add_row("a fraction of inches by their mark", "1 1/2''", 1.5, 214);
        add_row("the first unit of a symbol has it: W", "1 W", 1, 39);
        add_row("the first unit of a spelling has it: ''", "1 ''", 1, 214);
        add_row("a symbol beyond ASCII", "20 °C", 20, 6);
        add_row("a unit of three parts", "1 kg/sec/m2", 1, 311);
        add_row("a symbol with a minus sign inside", "3 in-lb", 3, 261);
        add_row("a unit that begins with 1", "3 1/m", 3, 17);
        add_row("a unit that begins with 1 and blanks in it", "1e3 1/m2", 1000, 84);
        add_row("a fraction and a unit that begins with 1", "1/2 1/m", 0.5, 17);
        add_row("a minus sign for no unit", "5 -", 5, 1);
        add_row("half of an exponent is lost", "-.5e3 m", -0.5, 13);
        add_row("an infinite value", "1/0 m", infinity, 13);
        add_row("the display symbol of fractional inches is none", "1 # #/#", 0, none);
    }
    void readsANumberAndAUnit() { check_reading(); }

    void readsANumberAlone_data()
    {
        add_quantity_columns();
        add_row("a leading blank", " 12", 12, 1);
        add_row("an exponent", "1e3", 1000, 1);
        add_row("an exponent after nothing but decimals is lost", ".5e3", 0.5, 1);
        add_row("two points", "1.2.3", 1.2, 1);
        add_row("a point", ".", 0, 1);
        add_row("a minus sign and a point", "-.", -0.0, 1);
        add_row("a denominator of 0", "1/0", infinity, 1);
        add_row("0/00 is a fraction and no unit", "5 0/00", not_a_number, 1);
        add_row("0/0 is a fraction and no unit", "5 0/0", not_a_number, 1);
        add_row("a number that overflows", "1e999", greatest, 1);
        add_row("a number that underflows", "1e-999", 0, 1);
    }
    void readsANumberAlone() { check_reading(); }

    void refusesWhatIsNotAQuantity_data()
    {
        add_quantity_columns();
        add_refused_row("an empty text", "");
        add_refused_row("a unit without a number", "m");
        add_refused_row("a trailing blank after a unit", "12 kN ");
        add_refused_row("a unit of the wrong case", "1 KN");
        add_refused_row("an unknown unit", "1 xyz");
        add_refused_row("a unit in 1 without a number", "1/m");
        add_refused_row("a word of an exponent", "2 e");
        // The search for a unit finds these parts of a number first.
        add_refused_row("an exponent with a capital letter before a unit", "1E3 kN");
        add_refused_row("an exponent with a plus sign before a unit", "1e+3 kN");
        add_refused_row("a unit with a point", "1 m.s");
        add_refused_row("a unit with two points", "1 h.m.s");
        add_refused_row("a unit of four parts", "1 kg/sec/m2/m");
        add_refused_row("a blank in a unit", "12 kN /m2");
        add_refused_row("two numbers and a unit", "1 2 m");
        add_refused_row("a plus sign", "+5");
        add_refused_row("infinity in words", "inf");
        add_refused_row("not-a-number in words", "nan");
        add_refused_row("feet and inches", "1' 3 1/2''");
        add_refused_row("feet and inches with a hyphen", "1'-3 1/2''");
    }
    void refusesWhatIsNotAQuantity() { check_reading(); }

    void readsTheNumberInTheLocale()
    {
        const auto comma = detail::read_quantity(L"1.234,5 kN", Punctuation::german(), m_symbols);
        QVERIFY(comma);
        QCOMPARE(comma->value, 1234.5);
        const auto fraction = detail::read_quantity(
            L"1.000 1/2 kN", Punctuation::german(), m_symbols);
        QVERIFY(!fraction);
    }

    void readsFeetAndInches_data()
    {
        add_quantity_columns();
        const auto row = [](const char* name, const char* text, double feet) {
            add_row(name, text, feet, 213);
        };
        row("marks", "1'3''", 1.25);
        row("words", "1ft 3in", 1.25);
        row("words and blanks", " 2 ft 6 in ", 2.5);
        row("a fraction of inches", "1' 3 1/2''", 1 + 3.5 / 12);
        row("what is written is read", "1' 3 1/2 ''", 1 + 3.5 / 12);
        row("an exponent", "1e1' 0''", 10);
        row("no feet", "'6''", 0.5);
        row("no inches", "1'''", 1);
        row("the sign applies to the feet alone", "-1' 6''", -0.5);
        row("minus zero inches", "1' -0''", 1);
        row("words for numbers are 0", "a'b''", 0);
        row("the last marks count", "1'2'6''", 1.5);
        row("four marks", "1''''", 1);
        row("an overflow", "1e999'0''", greatest);
        row("infinite inches", "1' 1/0''", infinity);
        // They belong to the white space around the length, and not to a group.
        row("line breaks around", "\r\n1' 6''\r\n", 1.5);
        row("the last words count", "1ft2ft6in", 1.5);
        row("words before the marks", "1ft 2in' 6''", 1.5);
        add_refused_row("feet alone", "1'");
        add_refused_row("inches alone", "5''");
        add_refused_row("the words of inches alone", "5 in");
        add_refused_row("a hyphen makes inches negative", "1'-3 1/2''");
        add_refused_row("negative inches", "-1' -6 ''");
        add_refused_row("inches that are not a number", "1' 0/0''");
        add_refused_row("a quotation mark for inches", "1' 6\"");
        add_refused_row("a mark and a word", "1' 6in");
        add_refused_row("the words in the wrong order", "6in 1ft");
        add_refused_row("words of the wrong case", "1FT 6IN");
        add_refused_row("a line break inside a group", "1\n1' 6''");
        add_refused_row("a line break between the groups", "1'\n6''");
        add_refused_row("a line break inside a group of words", "1ft 6\n in");
        add_refused_row("a line separator after the marks", "1' 6''\u2028");
        add_refused_row("a line separator inside a group", "1\u20281' 6''");
        add_refused_row("an empty text", "");
        add_refused_row("a plain number", "12");
    }
    void readsFeetAndInches()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        QFETCH(int, unit);
        const std::wstring wide = text.toStdWString();
        const auto reference = ReferenceQuantityReader::read_feet_and_inches(
            wide, std::locale::classic());
        QCOMPARE(unit_of(reference), unit);
        const auto length = detail::read_feet_and_inches(wide, std::locale::classic());
        QCOMPARE(unit_of(length), unit);
        if (length)
            QVERIFY2(nearly(length->value, value), QByteArray::number(length->value, 'g', 17));
    }

    // A match gives the whole text and each group. The parser of inches asks for three
    // results, as that of feet and inches does, and gets two: so it accepts nothing.
    void inchesAloneHaveOneGroupWhereAReadingAsksForTwo_data()
    {
        columns<QString, QString>("expression", "text");
        row("the mark of inches", "\\s*(.*)''\\s*", " 3 1/2''");
        row("the word for inches", "\\s*(.*)in\\s*", "3 1/2in ");
    }
    void inchesAloneHaveOneGroupWhereAReadingAsksForTwo()
    {
        QFETCH(QString, expression);
        QFETCH(QString, text);
        const auto groups = reference_match(expression.toStdWString(), text.toStdWString());
        QVERIFY(groups);
        QCOMPARE(groups->size(), std::size_t(1));
        QCOMPARE(QString::fromStdWString(groups->front().text), QString("3 1/2"));
    }

    void everySpellingIsReadUnlessItCannotBeTyped()
    {
        // Symbols with a point or a blank, and those of units that are only displayed.
        const std::vector<int> untypable{0, 215, 216, 291, 292, 293};
        std::map<std::string, int> first;
        for (const UnitRecord& record : list_units())
            first.emplace(record.symbol, static_cast<int>(record.id));
        for (const UnitRecord& record : list_units()) {
            const std::wstring text = L"2 " + QString::fromStdString(record.symbol).toStdWString();
            const auto quantity = detail::read_quantity(text, std::locale::classic(), m_symbols);
            const int id = static_cast<int>(record.id);
            const bool typable = std::find(untypable.begin(), untypable.end(), id)
                == untypable.end();
            const int expected = id == 0 ? 1 : typable ? first[record.symbol] : none;
            if (unit_of(quantity) != expected)
                QFAIL(qPrintable(QStringLiteral("%1 gives %2").arg(id).arg(unit_of(quantity))));
        }
    }

    void theFirstUnitKeepsASpelling()
    {
        const OtherUnits provider({{50, "x", {"y"}}, {40, "y", {"x", "z"}}, {1000, "", {}}});
        const detail::SymbolMap symbols(provider);
        QCOMPARE(static_cast<int>(symbols.find(L"x").value()), 50);
        QCOMPARE(static_cast<int>(symbols.find(L"y").value()), 50);
        QCOMPARE(static_cast<int>(symbols.find(L"z").value()), 40);
        QVERIFY(!symbols.find(L"X"));
        QVERIFY(!symbols.find(L""));
        QVERIFY(!symbols.find(std::wstring(mebi, L'x')));
    }

    void aProviderWithoutUnitsReadsNumbersAlone()
    {
        const OtherUnits provider({});
        const detail::SymbolMap symbols(provider);
        QCOMPARE(unit_of(detail::read_quantity(L"5", std::locale::classic(), symbols)), 1);
        QCOMPARE(unit_of(detail::read_quantity(L"5 m", std::locale::classic(), symbols)), none);
    }

    void answersAnyShortTextThatIsPasted_data()
    {
        QTest::addColumn<QString>("text");
        for (const auto& [name, text] : hostileTexts()) {
            if (text.size() <= longest_for_the_reference)
                QTest::newRow(name) << text;
        }
    }
    void answersAnyShortTextThatIsPasted()
    {
        QFETCH(QString, text);
        const std::wstring wide = text.toStdWString();
        QCOMPARE(unit_of(detail::read_quantity(wide, std::locale::classic(), m_symbols)),
            unit_of(m_reference.read(wide, std::locale::classic())));
        QCOMPARE(unit_of(detail::read_feet_and_inches(wide, std::locale::classic())),
            unit_of(ReferenceQuantityReader::read_feet_and_inches(wide, std::locale::classic())));
    }

private:
    void check_reading()
    {
        QFETCH(QString, text);
        QFETCH(double, value);
        QFETCH(int, unit);
        const std::wstring wide = text.toStdWString();
        QCOMPARE(unit_of(m_reference.read(wide, std::locale::classic())), unit);
        const auto quantity = detail::read_quantity(wide, std::locale::classic(), m_symbols);
        QCOMPARE(unit_of(quantity), unit);
        if (quantity)
            QVERIFY2(nearly(quantity->value, value), QByteArray::number(quantity->value, 'g', 17));
    }

    const VarnelikUnitProvider m_provider{};
    const detail::SymbolMap m_symbols{m_provider};
    const ReferenceQuantityReader m_reference{m_provider};
};

VRN_TEST(TestQuantityReader)
#include "tst_quantity_reader.moc"
