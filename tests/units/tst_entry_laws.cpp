#include <vrn/units/units.h>

#include "unit_test_support.h"

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"
#include "support/time_limit.h"

#include <boost/locale/encoding_utf.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>
#include <locale>
#include <random>
#include <regex>
#include <set>

using namespace vrn::units;
using vrn::test::columns;
using vrn::test::row;
using vrn::test::unitFormat;
using vrn::test::unitId;

namespace {

const std::wstring blankCharacters = L" \t\n\u00a0\u2009\u202f\u3000";
const std::wstring minusCharacters = L"-\u2010\u2013\u2212\uff0d";
const std::wstring primeCharacters = L"'\u2018\u2019\u2032\u00b4\uff07";

QString shown(const std::wstring& text)
{
    return QString::fromStdWString(text);
}

QString shown(const Entry& entry)
{
    if (entry.state == EntryState::Complete)
        return QString::number(entry.quantity.value, 'g', 17);
    return shown(sentence(entry.reason)) + (entry.state == EntryState::Refused ? "" : " (so far)");
}

std::wstring symbolOf(UnitId::UnitId id)
{
    return boost::locale::conv::utf_to_utf<wchar_t>(VarnelikUnitProvider().get_symbol(id));
}

/// Whether a system shows a kind in a unit that the kind does not list, so that its values
/// have no text.
bool hasNoText(int system, int kind)
{
    return system == 7 && (kind == UnitId::MAT_ELSUP_M3 || kind == UnitId::INERTIA_POINT);
}

bool isMetricLength(const std::wstring& symbol)
{
    return symbol == L"km" || symbol == L"m" || symbol == L"cm" || symbol == L"mm";
}

bool isFraction(UnitId::UnitId unit)
{
    return unit == UnitId::FEET_AND_FRACTIONAL_INCHES || unit == UnitId::FRACTIONAL_INCHES;
}

/// Why a text that was written in a locale is not read as what it states; empty if it is.
QByteArray exceptionFor(const std::wstring& text, const std::wstring& symbol, bool isLength)
{
    static const std::wregex onePoint(LR"(-?\d{1,3}\.\d{3}( .*)?)");
    static const std::wregex hyphenOfInches(LR"(0' -.*)");

    if (std::regex_match(text, onePoint))
        return "a point may be a decimal sign";
    if (std::regex_match(text, hyphenOfInches))
        return "a hyphen after feet joins";
    if (isLength && text.find(L'\u2019') != std::wstring::npos && !isMetricLength(symbol))
        return "an apostrophe may be the mark of feet";
    return {};
}

/// How long the call takes, in milliseconds; the least of three.
template <typename Call>
double millisecondsOf(Call call)
{
    double least = std::numeric_limits<double>::infinity();
    for (int i = 0; i < 3; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        call();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now()
            - begin;
        least = std::min(least, time.count());
    }
    return least;
}

} // namespace

/// What holds for all entries, tried with random ones.
class TestEntryLaws : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_random.seed(vrn::test::randomSeed()); }

    void whatAFieldWritesIsRead_data()
    {
        columns<QByteArray>("locale");
        for (const char* const locale : {"C", "de_DE.UTF-8", "fr_FR.UTF-8", "de_CH.UTF-8"})
            row(locale, QByteArray(locale));
    }

    // A text is read as the number that it states if that number is written as the same text.
    void whatAFieldWritesIsRead()
    {
        QFETCH(QByteArray, locale);
        const std::locale language(locale.constData());
        std::set<QByteArray> exceptions;
        for (int system = 0; system < 10; ++system) {
            for (const UnitSetRow& kind : list_unit_sets()) {
                for (const Context& context : contextsOf(kind, system))
                    checkWriting(context, unitId(kind.id), language, exceptions);
                if (QTest::currentTestFailed())
                    return;
            }
        }
        std::set<QByteArray> due = {"a hyphen after feet joins"};
        if (locale == "de_DE.UTF-8")
            due.insert("a point may be a decimal sign");
        else if (locale == "de_CH.UTF-8")
            due.insert("an apostrophe may be the mark of feet");
        QCOMPARE(
            QStringList(exceptions.begin(), exceptions.end()), QStringList(due.begin(), due.end()));
    }

    void whatTheContractReadsIsReadTheSame_data()
    {
        columns<int>("system");
        for (int system = 0; system < 10; ++system)
            QTest::addRow("system %d", system) << system;
    }

    // docs/entry.md lists the exceptions; these texts avoid them.
    void whatTheContractReadsIsReadTheSame()
    {
        QFETCH(int, system);
        const Context context(system);
        int read = 0;
        for (const UnitId::UnitId kind : context.unit_provider().get_all_ids()) {
            const EntryReader reader(context, kind);
            for (const std::wstring& unit : unitsOf(context, kind)) {
                for (int i = 0; i < 3; ++i)
                    checkContract(context, kind, reader, quantity(unit), read);
            }
            if (kind == UnitId::GEO_LENGTH || kind == UnitId::METRE) {
                for (int i = 0; i < 300; ++i)
                    checkContract(context, kind, reader, feetAndInches(), read);
            }
            if (QTest::currentTestFailed())
                return;
        }
        QVERIFY(read > 3000);
    }

    void blanksAndLookalikesDoNotMatter_data()
    {
        columns<QStringList>("symbols");
        row("a quantity", QStringList{"-", "12.5", "m"});
        row("feet and inches", QStringList{"5", "'", "-", "6 1/2", "''"});
        row("feet and bare inches", QStringList{"5", "'", "6"});
        row("feet in words", QStringList{"5", "ft", "6", "in"});
        row("a sum", QStringList{"3", "m", "+", "20", "cm", "-", "1", "'"});
        row("brackets", QStringList{"2", "*", "(", "3", "'", "6", "\"", ")"});
        row("a product", QStringList{"2", "*", "3.5", "m", "/", "7"});
        row("a fraction", QStringList{"3", "/", "4", "m"});
        row("a power", QStringList{"1.5", "*", "10^-3", "m"});
        row("groups", QStringList{"1 000", "mm"});
        row("an apostrophe", QStringList{"1'250", "mm"});
        row("two readings", QStringList{"6", "m", "/", "2", "m"});
        row("another kind", QStringList{"6", "kN", "/", "m"});
    }
    void blanksAndLookalikesDoNotMatter()
    {
        QFETCH(QStringList, symbols);
        const EntryReader reader(Context(), UnitId::GEO_LENGTH);
        const Entry plain = reader.read(symbols.join(' ').toStdWString());
        for (int i = 0; i < 500; ++i) {
            std::wstring text;
            for (const QString& symbol : symbols) {
                text.append(std::wstring(below(3), L' '));
                text.append(symbol.toStdWString());
            }
            text.append(std::wstring(below(3), L' '));
            for (wchar_t& character : text)
                character = lookalike(character);
            const Entry entry = reader.read(text);
            QVERIFY2(entry.state == plain.state && entry.quantity == plain.quantity
                    && entry.reason.problem == plain.reason.problem,
                qPrintable('"' + shown(text) + "\": " + shown(entry) + ", not " + shown(plain)));
        }
    }

    // A number of up to 15 digits is the only one of so few that is read as its double.
    void aNumberIsWrittenInTheFewestDigits()
    {
        const EntryReader reader(Context(), UnitId::GEO_LENGTH);
        for (int i = 0; i < 20000; ++i) {
            std::wstring number = std::to_wstring(1 + below(999));
            for (std::size_t more = below(5); more > 0; --more)
                number += std::to_wstring(below(10));
            if (const std::size_t decimals = below(8)) {
                number += L'.';
                for (std::size_t more = 1; more < decimals; ++more)
                    number += std::to_wstring(below(10));
                number += std::to_wstring(1 + below(9));
            }
            if (below(2) == 0)
                number.insert(0, 1, L'-');
            const Entry entry = reader.read(L"(" + number + L") m");
            QCOMPARE(shown(entry.text), shown(number + L" m"));
        }
    }

    // A symbol in another case is the same unit, or none.
    void theCaseOfWordsDoesNotMatter()
    {
        const Context context;
        std::set<std::wstring> refused;
        for (const UnitSetRow& kind : list_unit_sets()) {
            const EntryReader reader(context, unitId(kind.id));
            for (const std::wstring& unit : unitsOf(context, unitId(kind.id))) {
                const Entry plain = reader.read(L"3 " + unit);
                if (plain.state != EntryState::Complete)
                    continue;
                for (int i = 0; i < 4; ++i) {
                    const std::wstring other = inOtherCase(unit, i);
                    const Entry entry = reader.read(L"3 " + other);
                    if (entry.state != EntryState::Complete)
                        refused.insert(other);
                    else
                        QVERIFY2(entry.quantity == plain.quantity,
                            qPrintable(shown(other) + " is read as " + shown(entry)));
                }
            }
        }
        // The units with a second meaning begin with "m" or "M", but for the "Nm" and "nM".
        for (const std::wstring& each : refused)
            QVERIFY2(each.find_first_of(L"mM") != std::wstring::npos, qPrintable(shown(each)));
        QVERIFY(refused.count(L"mn") == 1 && refused.count(L"mpa") == 1);
        QVERIFY(refused.count(L"KN") == 0 && refused.count(L"MM") == 0);
    }

    void aMebiIsRefusedInTime_data()
    {
        columns<QString>("part");
        for (const char* const part :
            {"(", "1+", "1", "a", " ", "'", "-", "1'2''", "m*", "1/m", ".", ",", "1 ", "12 k"})
            row(part, QString::fromLatin1(part));
    }
    void aMebiIsRefusedInTime()
    {
        QFETCH(QString, part);
        constexpr int mebi = 1024 * 1024;
        const std::wstring text = part.repeated(mebi / part.size()).toStdWString();
        const EntryReader reader(Context(), UnitId::GEO_LENGTH);
        Entry entry;
        const double time = millisecondsOf([&] { entry = reader.read(text); });
        QCOMPARE(entry.reason.problem, EntryProblem::TooLong);
        QVERIFY(entry.reason.place <= text.size());
        QVERIFY(reader.completions(text).empty());
        QVERIFY2(time <= vrn::test::timeLimitMs(10), QByteArray::number(time));
    }

    void theLongestTextTakesLinearTime_data() { aMebiIsRefusedInTime_data(); }
    void theLongestTextTakesLinearTime()
    {
        QFETCH(QString, part);
        const std::wstring text = part.repeated(1000 / part.size()).toStdWString();
        const EntryReader reader(Context(), UnitId::GEO_LENGTH);
        Entry entry;
        const double time = millisecondsOf([&] { entry = reader.read(text); });
        QVERIFY(entry.reason.problem != EntryProblem::TooLong);
        QVERIFY(entry.reason.place <= text.size());
        QVERIFY2(time <= vrn::test::timeLimitMs(20), QByteArray::number(time));
    }

    void bracketsAreReadToTheLimit()
    {
        const EntryReader reader(Context(), UnitId::GEO_LENGTH);
        const auto nested = [](std::size_t depth) {
            return std::wstring(depth, L'(') + L"2 m" + std::wstring(depth, L')');
        };
        QCOMPARE(reader.read(nested(32)).quantity.value, 2.0);
        const Entry entry = reader.read(nested(33));
        QCOMPARE(entry.reason.problem, EntryProblem::TooDeep);
        QCOMPARE(int(entry.reason.place), 32);
    }

private:
    std::size_t below(std::size_t limit) { return m_random() % limit; }

    wchar_t anyOf(const std::wstring& characters) { return characters[below(characters.size())]; }

    wchar_t lookalike(wchar_t character)
    {
        for (const std::wstring& alike : {blankCharacters, minusCharacters, primeCharacters}) {
            if (character == alike.front())
                return anyOf(alike);
        }
        return character;
    }

    static std::wstring inOtherCase(const std::wstring& text, int way)
    {
        std::wstring other = text;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const bool isUpper = way == 0 || (way == 2 && i == 0) || (way == 3 && i % 2 == 0);
            if (text[i] < 0x80)
                other[i] = static_cast<wchar_t>(isUpper ? std::toupper(static_cast<int>(text[i]))
                                                        : std::tolower(static_cast<int>(text[i])));
        }
        return other;
    }

    /// The defaults and another notation. In the first metric and the first US system also
    /// each unit that the kind lists, in decimals and in fractions.
    static std::vector<Context> contextsOf(const UnitSetRow& kind, int system)
    {
        std::vector<Context> contexts;
        if (!hasNoText(system, kind.id)) {
            const auto shownUnit = Context(system).format_provider().get_unit(unitId(kind.id));
            contexts.emplace_back(system);
            contexts.emplace_back(
                system, std::map<int, UnitFormat>{{kind.id, unitFormat(shownUnit, 6, 1)}});
        }
        if (system % 8 != 0)
            return contexts;
        for (const UnitId::UnitId unit :
            VarnelikUnitProvider().get_compatible_units(unitId(kind.id))) {
            contexts.emplace_back(system,
                std::map<int, UnitFormat>{{kind.id, unitFormat(unit, isFraction(unit) ? 8 : 0)}});
            contexts.emplace_back(
                system, std::map<int, UnitFormat>{{kind.id, unitFormat(unit, 8, 2)}});
        }
        return contexts;
    }

    void checkWriting(const Context& context, UnitId::UnitId kind, const std::locale& locale,
        std::set<QByteArray>& exceptions)
    {
        const UnitId::UnitId unit = context.format_provider().get_unit(kind);
        const EntryReader reader(context, kind);
        const bool isLength = context.unit_provider().get_factor(unit) > 0
            && reader.read(L"1 mm").state == EntryState::Complete;
        for (const double number : {0.0, -0.5, 1.5, 999.875, 1234.5, -1234567.25}) {
            const double value = number * context.unit_provider().get_factor(unit);
            const std::wstring text = context.format({kind, value}, locale);
            const Entry entry = reader.read(text, number_signs(locale));
            const bool isSame = entry.state == EntryState::Complete
                && isWrittenAs(context, entry.quantity, locale, text);
            const QByteArray exception = exceptionFor(text, symbolOf(unit), isLength);
            if (!exception.isEmpty() && !isSame)
                exceptions.insert(exception);
            QVERIFY2(isSame || !exception.isEmpty(),
                qPrintable(QStringLiteral("\"%1\" is read as %2").arg(shown(text), shown(entry))));
        }
    }

    /// Inches that make a foot are written as inches, but read as a foot.
    static bool isWrittenAs(const Context& context, const IConverter::quantity& quantity,
        const std::locale& locale, const std::wstring& text)
    {
        return context.format(quantity, locale) == text
            || text.find(L"' 12 ''") != std::wstring::npos;
    }

    /// The symbols that a kind lists, or those of the units of the same dimension.
    static std::set<std::wstring> unitsOf(const Context& context, UnitId::UnitId kind)
    {
        std::set<std::wstring> symbols = {L""};
        const auto& listed = context.unit_provider().get_compatible_units(kind);
        for (const UnitId::UnitId unit : listed)
            symbols.insert(symbolOf(unit));
        if (listed.empty()) {
            for (const UnitRecord& unit : list_units()) {
                if (unit.dimension == context.unit_provider().get_dimension(kind))
                    symbols.insert(boost::locale::conv::utf_to_utf<wchar_t>(unit.symbol));
            }
            // A plain unit prefers itself.
            symbols.erase(symbolOf(kind));
        }
        return symbols;
    }

    std::wstring digits(std::size_t most)
    {
        std::wstring text(1, static_cast<wchar_t>(L'1' + static_cast<wchar_t>(below(9))));
        while (below(most) != 0)
            text += static_cast<wchar_t>(L'0' + static_cast<wchar_t>(below(10)));
        return text;
    }

    std::wstring number(bool hasUnit)
    {
        switch (below(8)) {
        case 0:
            return digits(3) + L"." + digits(3);
        case 1:
            return L"." + digits(3);
        case 2:
            return digits(3) + L".";
        case 3:
            return digits(2) + L"." + digits(2) + (hasUnit || below(2) == 0 ? L"e" : L"E")
                + (below(2) == 0 ? L"-" : L"") + digits(1);
        case 4:
            return digits(3) + L"/" + digits(3);
        case 5: {
            // Three digits might be a group.
            const std::wstring numerator = digits(2).substr(0, 2);
            return digits(3) + std::wstring(1 + below(2), L' ') + numerator + L"/" + digits(3);
        }
        default:
            return digits(3);
        }
    }

    std::wstring quantity(const std::wstring& unit)
    {
        // Digits that touch a 1 are one number here.
        const bool needsBlank = unit.substr(0, 1) == L"1";
        std::wstring text(below(2), L' ');
        text += below(3) == 0 ? L"-" : L"";
        text += number(!unit.empty());
        text += std::wstring(below(3) + (needsBlank ? 1 : 0), L' ');
        return text + unit;
    }

    std::wstring feetAndInches()
    {
        const bool hasMarks = below(2) == 0;
        std::wstring text(below(2), L' ');
        text += number(true) + std::wstring(below(2), L' ') + (hasMarks ? L"'" : L"ft");
        text += std::wstring(below(2), L' ') + number(true) + std::wstring(below(2), L' ');
        return text + (hasMarks ? L"''" : L"in") + std::wstring(below(2), L' ');
    }

    static void checkContract(const Context& context, UnitId::UnitId kind,
        const EntryReader& reader, const std::wstring& text, int& read)
    {
        const auto parsed = context.parse(text, kind, std::locale::classic());
        if (!parsed)
            return;
        ++read;
        const Entry entry = reader.read(text);
        QVERIFY2(entry.state == EntryState::Complete && entry.quantity == *parsed,
            qPrintable(QStringLiteral("\"%1\" is read as %2 of %3 in %4, not %5")
                           .arg(shown(text), shown(entry))
                           .arg(int(kind))
                           .arg(context.format_provider().system_index())
                           .arg(parsed->value, 0, 'g', 17)));
    }

    std::mt19937 m_random;
};

VRN_TEST(TestEntryLaws)
#include "tst_entry_laws.moc"
