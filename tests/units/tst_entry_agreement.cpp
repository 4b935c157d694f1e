#include "reference_entry_reader.h"
#include "unit_test_support.h"

#include "support/random_seed.h"
#include "support/table.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <algorithm>
#include <cmath>
#include <random>

using namespace vrn::units;
using vrn::test::columns;
using vrn::test::ReferenceEntryReader;
using vrn::test::row;
using vrn::test::unitId;

namespace {

using Unit = ReferenceEntryReader::Unit;

constexpr Unit metre{1.0, 1, true, false, false};
constexpr Unit foot{0.3048, 1, false, true, false};
constexpr Unit inch{0.0254, 1, false, false, true};
constexpr Unit kilonewton{1.0, 2, false, false, false};

ReferenceEntryReader lengthReader()
{
    const Unit centimetre{0.01, 1, true, false, false};
    const Unit millimetre{0.001, 1, true, false, false};
    const Unit mile{1609.344, 1, false, false, false};
    return ReferenceEntryReader(
        {{L"m", metre}, {L"cm", centimetre}, {L"mm", millimetre}, {L"ft", foot}, {L"in", inch},
            {L"mi", mile}, {L"'", foot}, {L"''", inch}, {L"\"", inch}},
        metre);
}

ReferenceEntryReader forceReader()
{
    const Unit newton{0.001, 2, false, false, false};
    return ReferenceEntryReader(
        {
            {L"kN", kilonewton},
            {L"N", newton},
            {L"n", newton},
            {L"kn", kilonewton},
        },
        kilonewton);
}

ReferenceEntryReader curvatureReader()
{
    const Unit per_metre{1.0, 3, false, false, false};
    const Unit per_kilometre{0.001, 3, false, false, false};
    const Unit per_millimetre{1000, 3, false, false, false};
    const Unit per_foot{3.28084, 3, false, false, false};
    const Unit per_inch{39.37007874, 3, false, false, false};
    return ReferenceEntryReader(
        {{L"1/m", per_metre}, {L"/m", per_metre}, {L"1/km", per_kilometre}, {L"/km", per_kilometre},
            {L"1/mm", per_millimetre}, {L"/mm", per_millimetre}, {L"1/ft", per_foot},
            {L"/ft", per_foot}, {L"1/in", per_inch}, {L"/in", per_inch}},
        per_kilometre);
}

/// Makes texts of the grammar, and texts that are nearly so.
class Generator
{
public:
    Generator(unsigned seed, std::vector<std::wstring> units)
        : m_random(seed)
        , m_units(std::move(units))
    {}

    std::wstring next()
    {
        std::wstring text = below(4) == 0 ? noise() : sum(2);
        if (below(3) == 0)
            change(text);
        return text.substr(0, longest);
    }

private:
    static constexpr std::size_t longest = 18;

    std::size_t below(std::size_t limit) { return m_random() % limit; }

    std::wstring anyOf(const std::vector<std::wstring>& list) { return list[below(list.size())]; }

    std::wstring blank() { return anyOf({L"", L"", L" "}); }

    std::wstring number()
    {
        switch (below(9)) {
        case 0:
            return anyOf({L"1.5", L".5", L"2.", L"1,5", L"1,234", L"1,234.5"});
        case 1:
            return anyOf({L"1 1/2", L"1 200/3", L"3/4", L"1/2", L"3-1/2", L"½", L"1½", L"2 ¼"});
        case 2:
            return anyOf({L"1 000", L"1'250", L"12 345.5", L"1'000'000", L"10 000"});
        case 3:
            return anyOf({L"1e3", L"10^3", L"1.5*10^3", L"2*10^-3", L"1.5e-3"});
        default:
            return anyOf({L"1", L"2", L"3", L"6", L"12", L"250"});
        }
    }

    std::wstring quantity()
    {
        switch (below(8)) {
        case 0:
            return number();
        case 1:
        case 2:
            return number() + anyOf({L"'", L"'", L"ft", L" ft "}) + blank()
                + anyOf({L"", L"", L"-"}) + blank() + number()
                + anyOf({L"''", L"\"", L"", L"in", L" in"});
        default:
            return number() + blank() + anyOf(m_units);
        }
    }

    std::wstring factor(int depth)
    {
        const std::wstring sign = below(8) == 0 ? L"-" : L"";
        if (depth > 0 && below(5) == 0)
            return sign + L"(" + sum(depth - 1) + L")" + (below(3) == 0 ? anyOf(m_units) : L"");
        return sign + quantity();
    }

    std::wstring product(int depth)
    {
        std::wstring text = below(3) == 0 ? number() : factor(depth);
        while (below(3) == 0)
            text += blank() + anyOf({L"*", L"/"}) + blank()
                + (below(2) == 0 ? number() : factor(depth));
        return text;
    }

    std::wstring sum(int depth)
    {
        std::wstring text = product(depth);
        while (below(3) == 0)
            text += blank() + anyOf({L"+", L"-"}) + blank() + product(depth);
        return text;
    }

    std::wstring noise()
    {
        std::vector<std::wstring> tokens = {L"1", L"2", L"3", L"6", L"10", L"12", L"250", L"000",
            L"200", L".", L",", L"'", L"''", L"\"", L"/", L"*", L"+", L"-", L"(", L")", L" ", L" ",
            L"^", L"e", L"10^3", L"½", L"1/"};
        tokens.insert(tokens.end(), m_units.begin(), m_units.end());
        std::wstring text;
        for (std::size_t count = 1 + below(8); count > 0; --count)
            text += anyOf(tokens);
        return text;
    }

    void change(std::wstring& text)
    {
        const std::size_t place = below(text.size() + 1);
        if (below(2) == 0 && place < text.size())
            text.erase(place, 1);
        else
            text.insert(place, anyOf({L" ", L"'", L"/", L"-", L"1", L"(", L")", L".", L",", L"m"}));
    }

    std::mt19937 m_random;
    std::vector<std::wstring> m_units;
};

bool isClose(double a, double b)
{
    return std::abs(a - b) <= 1e-9 * std::max({std::abs(a), std::abs(b), 1e-3});
}

std::size_t textCount()
{
    const int given = qEnvironmentVariableIntValue("VRN_RANDOM_TEXTS");
    return given > 0 ? static_cast<std::size_t>(given) : 1500;
}

} // namespace

/// No text has two readings: the reader gives the only meaning that the reference finds, or
/// it refuses. What it gives in plain form, Context::parse() reads as the same.
///
/// VRN_RANDOM_TEXTS in the environment sets the number of random texts in each row.
class TestEntryAgreement : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void theReferenceFindsAllMeanings_data()
    {
        columns<QString, QList<double>>("text", "meanings");
        using List = QList<double>;
        row("a number", QStringLiteral("12"), List{12.0});
        row("a sum", QStringLiteral("3 m + 20 cm"), List{3.2});
        row("a comma", QStringLiteral("1,234"), List{1.234, 1234.0});
        row("a group or a fraction", QStringLiteral("1 200/3"), List{1 + 200.0 / 3, 400.0});
        row("a quotient of units", QStringLiteral("6 m/2 m"), List{});
        row("a fraction of a unit", QStringLiteral("1/2 m"), List{0.5});
        row("a hyphen", QStringLiteral("3-1/2"), List{2.5, 3.5});
        row("a hyphen after feet", QStringLiteral("3'-6''"), List{1.0668});
        row("a hyphen after the word of feet", QStringLiteral("3 ft-6 in"), List{0.762, 1.0668});
        row("a power", QStringLiteral("6/2*10^3"), List{0.003, 3000.0});
        row("nothing", QStringLiteral("m"), List{});
    }
    void theReferenceFindsAllMeanings()
    {
        QFETCH(QString, text);
        QFETCH(QList<double>, meanings);
        std::vector<double> found = lengthReader().read(text.toStdWString());
        std::sort(found.begin(), found.end());
        found.erase(std::unique(found.begin(), found.end(), isClose), found.end());
        QCOMPARE(found.size(), std::size_t(meanings.size()));
        for (std::size_t i = 0; i < found.size(); ++i)
            QVERIFY2(isClose(found[i], meanings.at(int(i))), QByteArray::number(found[i], 'g', 17));
    }

    void noTextHasTwoReadings_data()
    {
        columns<int>("kind");
        row("lengths", int{UnitId::GEO_LENGTH});
        row("forces", int{UnitId::LOAD_POINT});
        row("curvatures", int{UnitId::GEO_CURVATURE});
    }
    void noTextHasTwoReadings()
    {
        QFETCH(int, kind);
        ReferenceEntryReader reference = kind == UnitId::GEO_LENGTH ? lengthReader()
            : kind == UnitId::LOAD_POINT                            ? forceReader()
                                                                    : curvatureReader();
        const std::vector<std::wstring> units = kind == UnitId::GEO_LENGTH
            ? std::vector<std::wstring>{L"m", L"m", L"cm", L"mm", L"ft", L"in", L"'", L"''"}
            : kind == UnitId::LOAD_POINT ? std::vector<std::wstring>{L"kN", L"N"}
                                         : std::vector<std::wstring>{L"1/m", L"/m", L"1/km"};
        const Context context;
        const EntryReader reader(context, unitId(kind));
        Generator generator(vrn::test::randomSeed(), units);
        std::size_t complete = 0;
        for (std::size_t i = 0; i < textCount(); ++i) {
            const std::wstring text = generator.next();
            const Entry entry = reader.read(text);
            QVERIFY2(entry.reason.place <= text.size(), qPrintable(QString::fromStdWString(text)));
            if (entry.state != EntryState::Complete)
                continue;
            const auto parsed = context.parse(entry.text, unitId(kind), std::locale::classic());
            QVERIFY2(parsed && *parsed == entry.quantity,
                qPrintable(QString::fromStdWString(text + L" is not " + entry.text)));
            ++complete;
            const std::vector<double> meanings = reference.read(text);
            const bool agrees = !meanings.empty()
                && std::all_of(meanings.begin(), meanings.end(),
                    [&](double each) { return isClose(each, entry.quantity.value); });
            QStringList found;
            for (const double each : meanings)
                found.append(QString::number(each, 'g', 17));
            QVERIFY2(agrees,
                qPrintable(QStringLiteral("\"%1\" is read as %2, and may be %3")
                               .arg(QString::fromStdWString(text))
                               .arg(entry.quantity.value, 0, 'g', 17)
                               .arg(found.join(QStringLiteral(" or ")))));
        }
        // Of the texts, many are read: the law does not hold for lack of readings.
        QVERIFY2(complete * 10 > textCount(), QByteArray::number(qulonglong(complete)));
    }
};

VRN_TEST(TestEntryAgreement)
#include "tst_entry_agreement.moc"
