#include "formatting/expression_p.h"
#include "formatting/quantity_grammar_p.h"
#include "reference_quantity_reader.h"

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <algorithm>
#include <string>
#include <vector>

using namespace vrn::units::detail;
using vrn::test::columns;
using vrn::test::ReferenceGrammar;
using vrn::test::row;

namespace {

using Extent = Expression::Extent;

constexpr std::size_t mebi = 1024 * 1024;

struct Case
{
    std::wstring expression;
    Extent extent;
};

/// Every expression of the two lists, and each pair of a number and a unit.
std::vector<Case> all_expressions()
{
    std::vector<Case> cases;
    for (const ReferenceGrammar* grammar :
        {&vrn::test::reference_exponent_grammar(), &vrn::test::reference_decimal_grammar()}) {
        for (const std::wstring& number : grammar->numbers)
            cases.push_back({number, Extent::whole_text});
        for (const std::wstring& unit : grammar->units) {
            cases.push_back({unit, Extent::anywhere});
            for (const std::wstring& number : grammar->numbers)
                cases.push_back({number + unit, Extent::whole_text});
        }
    }
    return cases;
}

void add_expression_rows()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("searched");
    for (const Case& c : all_expressions()) {
        const QString text = QString::fromStdWString(c.expression);
        const bool searched = c.extent == Extent::anywhere;
        const QString name = (searched ? QStringLiteral("searched: ") : QString()) + text;
        QTest::newRow(qPrintable(name)) << text << searched;
    }
}

Case fetched_case()
{
    QFETCH(QString, text);
    QFETCH(bool, searched);
    return {text.toStdWString(), searched ? Extent::anywhere : Extent::whole_text};
}

/// The groups as one text, or "none" if there is no match.
QString written(const std::optional<std::vector<vrn::test::ReferenceGroup>>& groups)
{
    if (!groups)
        return QStringLiteral("none");
    QString text;
    for (const auto& group : *groups)
        text +=
            QStringLiteral("%1:[%2] ").arg(group.begin).arg(QString::fromStdWString(group.text));
    return text;
}

QString match_of(const Expression& expression, const std::wstring& text, std::size_t count)
{
    Subject subject(text);
    Groups groups;
    if (!expression.match(subject, groups))
        return QStringLiteral("none");
    std::vector<vrn::test::ReferenceGroup> found;
    for (std::size_t i = 0; i < count; ++i) {
        const auto begin = groups[i].data() == nullptr ? 0 : groups[i].data() - text.data();
        found.push_back({std::wstring(groups[i]), static_cast<std::size_t>(begin)});
    }
    return written(found);
}

QString reference_of(const Case& c, const std::wstring& text)
{
    return written(c.extent == Extent::anywhere ? vrn::test::reference_search(c.expression, text)
                                                : vrn::test::reference_match(c.expression, text));
}

/// An expression with 2 states to the power of `doublings`, and some more. It asks for
/// a 1 at one place. Read from the end, a text shows only at its beginning which place
/// that is, so each 1 may be the one.
std::wstring expression_of_states(std::size_t doublings)
{
    std::wstring expression;
    for (std::size_t i = 0; i < doublings; ++i)
        expression += L"[1e]";
    return expression + L"1[1e]*";
}

std::size_t group_count(const std::wstring& expression)
{
    std::size_t count = 0;
    for (std::size_t i = 0; i + 1 < expression.size(); ++i)
        count += expression[i] == L'(' && expression[i + 1] != L'?' ? 1U : 0U;
    return count;
}

} // namespace

class TestExpression : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theListsAreAsDocumented()
    {
        const auto same = [](const QuantityExpressions& lists, const ReferenceGrammar& documented) {
            const auto equal = [](const auto& left, const auto& right) {
                return std::equal(left.begin(), left.end(), right.begin(), right.end());
            };
            return equal(lists.numbers, documented.numbers) && equal(lists.units, documented.units);
        };
        QVERIFY(same(exponent_expressions(), vrn::test::reference_exponent_grammar()));
        QVERIFY(same(decimal_expressions(), vrn::test::reference_decimal_grammar()));
    }

    void agreesWithTheStandardLibraryOnAllShortTexts_data() { add_expression_rows(); }
    void agreesWithTheStandardLibraryOnAllShortTexts()
    {
        // One character for each that an expression names, and for each other kind.
        const std::wstring alphabet = L"1.,/-+eE7 \n\u2028k";
        constexpr std::size_t longest = 3;

        const Case c = fetched_case();
        const Expression expression(c.expression, c.extent);
        const std::size_t count = group_count(c.expression);
        std::vector<std::wstring> texts{L""};
        for (std::size_t i = 0; i < texts.size(); ++i) {
            const std::wstring text = texts[i];
            const QString expected = reference_of(c, text);
            const QString actual = match_of(expression, text, count);
            if (actual != expected)
                QFAIL(qPrintable(QStringLiteral("[%1] gives %2 and not %3")
                                     .arg(QString::fromStdWString(text), actual, expected)));
            if (text.size() < longest) {
                for (const wchar_t character : alphabet)
                    texts.push_back(text + character);
            }
        }
        const std::size_t n = alphabet.size();
        QCOMPARE(texts.size(), 1 + n + n * n + n * n * n);
    }

    void takesCharactersForWhatTheClassicLocaleDoes_data()
    {
        columns<QString>("text");
        row("a digit", "\\d");
        row("white space", "\\s");
        row("no part of a unit", "[^\\s\\.,/]");
    }
    void takesCharactersForWhatTheClassicLocaleDoes()
    {
        QFETCH(QString, text);
        const Case c{text.toStdWString(), Extent::whole_text};
        const Expression expression(c.expression, c.extent);
        for (std::uint32_t code = 0; code <= 0x10FFFF; ++code) {
            const std::wstring character(1, static_cast<wchar_t>(code));
            if (match_of(expression, character, 0) != reference_of(c, character))
                QFAIL(qPrintable(QStringLiteral("U+%1").arg(code, 4, 16)));
            // The planes after the first have no characters of interest, so a sample will do.
            if (code > 0xFFFF)
                code += 96;
        }
    }

    void givesTheGroupsThatGreedyQuantifiersLeave_data()
    {
        columns<QString, bool, QString, QString>("expression", "searched", "text", "groups");
        row("the first star takes all it can", "([\\d,]*),([\\d,]*),,", false, "1,2,3,,",
            "0:[1,2] 4:[3] ");
        row("a star leaves what the rest needs", "(\\d*)(\\d)", false, "123", "0:[12] 2:[3] ");
        row("an option is taken where it can be", "(-?)(-?)", false, "-", "0:[-] 1:[] ");
        row("a group that is left out is empty", "(\\d+\\s+)?(\\d)", false, "5", "0:[] 0:[5] ");
        row("a group once", "((?:/e){1,2})", false, "/e", "0:[/e] ");
        row("a group twice", "((?:/e){1,2})", false, "/e/e", "0:[/e/e] ");
        row("a group three times", "((?:/e){1,2})", false, "/e/e/e", "none");
        row("the leftmost match is found", "(\\d+)", true, "e 12 n 345", "2:[12] ");
        row("a match may begin before its group", "\\s*(-)\\s*$", true, "1 -", "2:[-] ");
        row("a dollar holds at the end alone", "\\s*(-)\\s*$", true, "- e", "none");
        row("a dollar finds the last", "\\s*(-)\\s*$", true, "--", "1:[-] ");
        row("nothing in an empty text", "(\\d*)", false, "", "0:[] ");
    }
    void givesTheGroupsThatGreedyQuantifiersLeave()
    {
        QFETCH(QString, expression);
        QFETCH(bool, searched);
        QFETCH(QString, text);
        QFETCH(QString, groups);
        const Case c{expression.toStdWString(), searched ? Extent::anywhere : Extent::whole_text};
        QCOMPARE(match_of(Expression(c.expression, c.extent), text.toStdWString(),
                     group_count(c.expression)),
            groups);
        QCOMPARE(reference_of(c, text.toStdWString()), groups);
    }

    void leavesTheGroupsAloneWhereItDoesNotMatch()
    {
        const Expression expression(L"(\\d)", Extent::whole_text);
        Subject subject(L"e");
        Groups groups{L"before"};
        QVERIFY(!expression.match(subject, groups));
        QVERIFY(groups[0] == L"before");
    }

    void refusesWhatItDoesNotKnow_data()
    {
        columns<QString>("text");
        row("an alternative", "1|e");
        row("a range of characters", "[e-t]");
        row("a character without a symbol", "k");
        row("any character", ".");
        row("a quantifier of nothing", "+");
        row("a star after a group", "(1)*");
        row("a lazy quantifier", "1*?");
        row("a count after a character", "1{1,2}");
        row("another count after a group", "(?:1){2}");
        row("a look ahead", "(?=1)");
        row("a group without an end", "(1");
        row("an end without a group", "1)");
        row("a class without an end", "[1");
        row("an escape without a character", "1\\");
        row("a word boundary", "\\b");
        row("a form feed", "\\f");
        row("a tabulator", "\\t");
        row("a line feed", "\\n");
        row("a back reference", "(1)\\1");
        row("a beginning inside", "1^");
        row("an end inside", "1$1");
        row("more groups than Groups holds", "(1)(1)(1)");
        row("more steps than a set holds", QString(64, QLatin1Char('1')));
    }
    void refusesWhatItDoesNotKnow()
    {
        QFETCH(QString, text);
        for (const Extent extent : {Extent::whole_text, Extent::anywhere}) {
            expectAssert("compiled", {"expression"});
            const Expression expression(text.toStdWString(), extent);
            for (const wchar_t* const subject : {L"", L"1", L"e", L"111"})
                QCOMPARE(match_of(expression, subject, 1), QStringLiteral("none"));
        }
    }

    void takesAsManyStepsAsASetHolds()
    {
        const std::wstring ones(63, L'1');
        const Expression expression(ones, Extent::whole_text);
        QCOMPARE(match_of(expression, ones, 0), QString());
        QCOMPARE(match_of(expression, ones + L'1', 0), QStringLiteral("none"));
    }

    void takesAsManyStatesAsATransitionHolds()
    {
        const Case c{expression_of_states(10), Extent::whole_text};
        const Expression expression(c.expression, c.extent);
        for (const wchar_t* const text : {L"eeeeeeeeee1", L"eeeeeeeeeee", L"1111111111",
                 L"eeeeeeeeeee1eeeeeeeeeeeee", L"1111111111eeeee11111111"})
            QCOMPARE(match_of(expression, text, 0), reference_of(c, text));
    }

    void refusesAnExpressionOfTooManyStates()
    {
        for (const Extent extent : {Extent::whole_text, Extent::anywhere}) {
            expectAssert("fits", {"states"});
            const Expression expression(expression_of_states(11), extent);
            for (const wchar_t* const text : {L"", L"1", L"eeeeeeeeeee1", L"1111111111111111"})
                QCOMPARE(match_of(expression, text, 0), QStringLiteral("none"));
        }
    }

    // Here a recursive matcher would overflow the stack, and one that backtracks would take
    // hours.
    void readsAMebiInEachExpression_data() { add_expression_rows(); }
    void readsAMebiInEachExpression()
    {
        const Case c = fetched_case();
        const Expression expression(c.expression, c.extent);
        for (const std::wstring& part : std::vector<std::wstring>{L"1", L"7", L" ", L"\n", L"k",
                 L"e", L"-", L".", L",", L"/", L"'", L"+", L"1ft2in", L"/m", L"1 ", L"1/1 "}) {
            std::wstring text;
            while (text.size() < mebi)
                text += part;
            Subject subject(text);
            Groups groups;
            const bool matches = expression.match(subject, groups);
            // After a few characters, repetition changes nothing but counts.
            std::wstring sample;
            for (std::size_t i = 0; i < 12; ++i)
                sample += part;
            QCOMPARE(matches, reference_of(c, sample) != QStringLiteral("none"));
        }
    }
};

VRN_TEST(TestExpression)
#include "tst_expression.moc"
