#include <vrn/units/entry.h>

#include "unit_test_support.h"

#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <locale>
#include <stdexcept>
#include <thread>

using namespace vrn::units;
using vrn::test::columns;
using vrn::test::row;
using vrn::test::thrownText;
using vrn::test::unitFormat;
using vrn::test::unitId;

namespace {

constexpr NumberSigns german{L',', L'.'};

Entry readLength(const char* text, int system = 0)
{
    return read_entry(QString::fromUtf8(text).toStdWString(), Context(system), UnitId::GEO_LENGTH);
}

QStringList strings(const std::vector<std::wstring>& texts)
{
    QStringList list;
    for (const std::wstring& text : texts)
        list.append(QString::fromStdWString(text));
    return list;
}

} // namespace

/// What docs/entry.md does not show: the parts of an answer, and the reader as an object.
class TestEntry : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theTextIsInPlainForm_data()
    {
        columns<QString, int, QString>("text", "system", "plain");
        row("a number has the shown unit", QStringLiteral("12"), 6, QStringLiteral("12"));
        row("so it has after a sum", QStringLiteral("12 + 1"), 6, QStringLiteral("13 mm"));
        row("a usual text stays as it is", QStringLiteral("12.50 m"), 0, QStringLiteral("12.50 m"));
        row("a unit is the symbol", QStringLiteral("12 feet"), 0, QStringLiteral("12 ft"));
        row("feet and inches are feet", QStringLiteral("5' 6''"), 0, QStringLiteral("5.5 ft"));
        row("a sum has the unit of its beginning", QStringLiteral("3 m + 20 cm"), 0,
            QStringLiteral("3.2 m"));
        row("a fraction is a decimal", QStringLiteral("1 1/2 m"), 0, QStringLiteral("1.5 m"));
        row("zero after a sum is 0", QStringLiteral("3 m - 300 cm"), 0, QStringLiteral("0 m"));
        row("a decimal less than 1 begins with 0", QStringLiteral("(-.05 m)"), 0,
            QStringLiteral("-0.05 m"));
        row("a large number has an exponent", QStringLiteral("1e20 m"), 0,
            QStringLiteral("1e20 m"));
        row("a small number, too", QStringLiteral("1e-7 m"), 0, QStringLiteral("1e-07 m"));
    }
    void theTextIsInPlainForm()
    {
        QFETCH(QString, text);
        QFETCH(int, system);
        QFETCH(QString, plain);
        const Entry entry = readLength(text.toUtf8(), system);
        QCOMPARE(entry.state, EntryState::Complete);
        QCOMPARE(QString::fromStdWString(entry.text), plain);
        QCOMPARE(entry.reason.problem, EntryProblem::None);
    }

    void aCalculationIsToldFromAQuantity_data()
    {
        columns<QString, bool>("text", "isCalculated");
        row("a quantity", QStringLiteral("12 m"), false);
        row("a fraction", QStringLiteral("1 1/2 m"), false);
        row("feet and inches", QStringLiteral("5' 6''"), false);
        row("a sum", QStringLiteral("3 m + 20 cm"), true);
        row("a product", QStringLiteral("2*3 m"), true);
        row("brackets", QStringLiteral("(3 m)"), true);
    }
    void aCalculationIsToldFromAQuantity()
    {
        QFETCH(QString, text);
        QFETCH(bool, isCalculated);
        QCOMPARE(readLength(text.toUtf8()).is_calculated, isCalculated);
    }

    void aReasonIsData()
    {
        const EntryReason reason = readLength("12 kN").reason;
        QCOMPARE(reason.problem, EntryProblem::UnitOfAnotherKind);
        QCOMPARE(int(reason.place), 3);
        QCOMPARE(QString::fromStdWString(reason.word), "kN");
        QCOMPARE(reason.kind_of_word, "a force");
        QCOMPARE(reason.wanted, "a length");
        QCOMPARE(strings(reason.units), (QStringList{"m", "cm", "mm", "ft", "in"}));
        QVERIFY(reason.suggestions.empty());
    }

    void theShownUnitIsNamedFirst()
    {
        QCOMPARE(strings(readLength("12 kN", 9).reason.units),
            (QStringList{"in", "m", "cm", "mm", "ft"}));
        QCOMPARE(strings(read_entry(L"12 kN", Context(), UnitId::GEO_DISTANCE).reason.units),
            (QStringList{"km", "m", "cm", "mm", "ft", "in"}));
    }

    void similarUnitsAreAtMostThree()
    {
        const Entry entry = read_entry(L"12 kN/m4", Context(), UnitId::LOAD_AREA);
        QCOMPARE(entry.reason.problem, EntryProblem::UnitUnknown);
        QVERIFY(!entry.reason.suggestions.empty() && entry.reason.suggestions.size() <= 3);
        QCOMPARE(QString::fromStdWString(entry.reason.suggestions.front()), "kN/m2");
    }

    void completionsStandInPlaceOfTheEnd_data()
    {
        columns<QString, QStringList>("text", "completions");
        row("after a number", QStringLiteral("12"),
            QStringList{"12 kN", "12 MN", "12 N", "12 kip", "12 lb"});
        row("after a blank", QStringLiteral("12 "),
            QStringList{"12 kN", "12 MN", "12 N", "12 kip", "12 lb"});
        row("after a letter", QStringLiteral("12 k"), QStringList{"12 kN", "12 kip"});
        row("in another case", QStringLiteral("12 K"), QStringList{"12 kN", "12 kip"});
        row("after a unit", QStringLiteral("12 kN"), QStringList{"12 kN"});
        row("in a sum", QStringLiteral("3 kN + 2l"), QStringList{"3 kN + 2 lb"});
        row("after nothing", QString(), QStringList());
        row("after a sign", QStringLiteral("3 +"), QStringList());
        row("after a word of another kind", QStringLiteral("3 mm"), QStringList());
        row("after brackets", QStringLiteral("(3 kN)"), QStringList());
        row("after what cannot be read", QStringLiteral("1..2"), QStringList());
    }
    void completionsStandInPlaceOfTheEnd()
    {
        QFETCH(QString, text);
        QFETCH(QStringList, completions);
        const EntryReader reader(Context(), UnitId::LOAD_POINT);
        const auto found = reader.completions(text.toStdWString());
        QCOMPARE(strings(found), completions);
        for (const std::wstring& each : found)
            QCOMPARE(reader.read(each).state, EntryState::Complete);
    }

    void aFieldMayHaveNoUnits_data()
    {
        columns<QString, QString, QString>("text", "plain", "reason");
        row("a number", QStringLiteral("12"), QStringLiteral("12"), QString());
        row("a sum", QStringLiteral("2 * (3 + 4)"), QStringLiteral("14"), QString());
        row("groups", QStringLiteral("1'250"), QStringLiteral("1250"), QString());
        row("a comma", QStringLiteral("1,5"), QString(),
            QStringLiteral("1,5: the comma is not the decimal sign: 1.5?"));
        row("a unit", QStringLiteral("12 m"), QString(),
            QStringLiteral("m is a length; a number is wanted"));
        row("a unit that does not exist", QStringLiteral("12 furlong"), QString(),
            QStringLiteral("no unit furlong for a number"));
        row("inches", QStringLiteral("12''"), QString(),
            QStringLiteral("'' is a length; a number is wanted"));
    }
    void aFieldMayHaveNoUnits()
    {
        QFETCH(QString, text);
        QFETCH(QString, plain);
        QFETCH(QString, reason);
        const Entry entry = EntryReader().read(text.toStdWString());
        QCOMPARE(QString::fromStdWString(sentence(entry.reason)), reason);
        QCOMPARE(entry.state == EntryState::Complete, reason.isEmpty());
        QCOMPARE(QString::fromStdWString(entry.text), plain);
        if (reason.isEmpty())
            QCOMPARE(
                entry.quantity, (IConverter::quantity{UnitId::DIMENSIONLESS, plain.toDouble()}));
        QVERIFY(EntryReader().completions(text.toStdWString()).empty());
    }

    void aPlainTextIsRecognized_data()
    {
        columns<QString, bool>("text", "isPlain");
        for (const char* const text : {"12", "-12", "12.5", "12 kN/m2", "-0.5 psf", "0 kN/m2"})
            row(text, QString::fromLatin1(text), true);
        for (const char* const text : {"", "-", "12 ", " 12", "12kN/m2", "12 kN/m^2", "12 kN",
                 "1e3", "1.", ".5", "12,5", "+12", "12  kN/m2", "1234567890123456789"})
            row(*text ? text : "nothing", QString::fromLatin1(text), false);
    }
    void aPlainTextIsRecognized()
    {
        QFETCH(QString, text);
        QFETCH(bool, isPlain);
        const Context context;
        const std::wstring wide = text.toStdWString();
        const EntryReader reader(context, UnitId::LOAD_AREA);
        QCOMPARE(reader.is_plain(wide), isPlain);
        if (isPlain) {
            const auto parsed = context.parse(wide, UnitId::LOAD_AREA, std::locale::classic());
            QCOMPARE(reader.read(wide).quantity, *parsed);
        }
    }

    void theSignsOfALocale_data()
    {
        columns<QByteArray, int, int>("locale", "decimal", "group");
        row("C", QByteArray("C"), int{L'.'}, int{L','});
        row("German", QByteArray("de_DE.UTF-8"), int{L','}, int{L'.'});
        row("Swiss", QByteArray("de_CH.UTF-8"), int{L'.'}, int{L'\u2019'});
    }
    void theSignsOfALocale()
    {
        QFETCH(QByteArray, locale);
        QFETCH(int, decimal);
        QFETCH(int, group);
        const NumberSigns signs = number_signs(std::locale(locale.constData()));
        QCOMPARE(int(signs.decimal), decimal);
        QCOMPARE(int(signs.group), group);
    }

    void anUnusualGroupSignOfTheLocaleGroups()
    {
        const EntryReader reader(Context(), UnitId::GEO_LENGTH);
        QCOMPARE(reader.read(L"1_234.5 m", {L'.', L'_'}).quantity.value, 1234.5);
        QCOMPARE(reader.read(L"1_234.5 m").state, EntryState::Refused);
    }

    void anUnknownKindThrowsAsParseDoes()
    {
        for (const int id : {12, 5000, -1}) {
            const auto parse = [id] { Context().parse(L"1", unitId(id), std::locale::classic()); };
            const auto read = [id] { read_entry(L"1", Context(), unitId(id)); };
            const QString text = thrownText<std::invalid_argument>(parse);
            QVERIFY(!text.isEmpty());
            QCOMPARE(thrownText<std::invalid_argument>(read), text);
        }
    }

    void aUnitThatTheKindDoesNotListIsReadIfItIsShown()
    {
        // UnitValidator refuses the text, for it cannot convert it.
        const Context context(7);
        const Entry entry = read_entry(L"3 Nmm/m2", context, UnitId::MAT_ELSUP_M3);
        QCOMPARE(entry.state, EntryState::Complete);
        QCOMPARE(entry.quantity.value, 3e-6);
        const auto parsed = context.parse(entry.text, UnitId::MAT_ELSUP_M3, std::locale::classic());
        QVERIFY(parsed);
        QCOMPARE(*parsed, entry.quantity);
    }

    void aKindShownInAnotherDimensionNeedsUnits()
    {
        const Context context(0, {{UnitId::GEO_LENGTH, unitFormat(UnitId::KILONEWTON, 1)}});
        const EntryReader reader(context, UnitId::GEO_LENGTH);
        QCOMPARE(reader.read(L"12 m").quantity.value, 12.0);
        const Entry bare = reader.read(L"12");
        QCOMPARE(bare.state, EntryState::Refused);
        QCOMPARE(bare.reason.problem, EntryProblem::UnitMissing);
    }

    void aNumberAloneIsInFeetAndInchesIfTheseAreShown()
    {
        const Context context(
            0, {{UnitId::GEO_LENGTH, unitFormat(UnitId::FEET_AND_FRACTIONAL_INCHES, 8)}});
        const EntryReader reader(context, UnitId::GEO_LENGTH);
        QCOMPARE(reader.read(L"5").quantity.value, 5 * 0.3048);
        QCOMPARE(reader.read(L"2 + 3").text, L"5");
        QCOMPARE(reader.read(L"5 m").quantity.value, 5.0);
    }

    void aReaderDoesNotSeeLaterChangesOfItsContext()
    {
        Context context;
        const EntryReader reader(context, UnitId::GEO_LENGTH);
        const EntryReader copy = reader;
        context.format_provider().set_unit(UnitId::GEO_LENGTH, UnitId::MILLIMETRE);
        QCOMPARE(reader.read(L"12").quantity.value, 12.0);
        QCOMPARE(copy.read(L"12").quantity.value, 12.0);
        QCOMPARE(EntryReader(context, UnitId::GEO_LENGTH).read(L"12").quantity.value, 0.012);
    }

    void anyThreadMayRead()
    {
        const EntryReader reader(Context(), UnitId::GEO_LENGTH);
        std::array<std::thread, 4> threads;
        std::array<int, 4> right{};
        for (std::size_t i = 0; i < threads.size(); ++i) {
            threads[i] = std::thread([&reader, &count = right[i]] {
                for (int k = 0; k < 100; ++k) {
                    count += reader.read(L"3 m + 20 cm").quantity.value == 3.2 ? 1 : 0;
                    count += reader.read(L"12 kN").reason.place == 3 ? 1 : 0;
                }
            });
        }
        for (std::size_t i = 0; i < threads.size(); ++i) {
            threads[i].join();
            QCOMPARE(right[i], 200);
        }
    }

    void eachProblemHasASentence()
    {
        for (int i = 1; i <= int(EntryProblem::BracketNotOpened); ++i) {
            EntryReason reason;
            reason.problem = static_cast<EntryProblem>(i);
            QVERIFY2(!sentence(reason).empty(), QByteArray::number(i));
        }
        QVERIFY(sentence({}).empty());
    }

    void germanSignsReadGermanNumbers()
    {
        const EntryReader reader(Context(), UnitId::GEO_LENGTH);
        QCOMPARE(reader.read(L"1.234,5 m", german).text, L"1234.5 m");
    }
};

VRN_TEST(TestEntry)
#include "tst_entry.moc"
