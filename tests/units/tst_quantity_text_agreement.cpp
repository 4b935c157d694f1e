#include "formatting/number_reader_p.h"
#include "formatting/quantity_reader_p.h"
#include "other_units.h"
#include "punctuation.h"
#include "quantity_comparison.h"
#include "quantity_text_generator.h"
#include "reference_quantity_reader.h"

#include <vrn/units/varnelik_unit_provider.h>

#include "support/random_seed.h"
#include "support/test_main.h"
#include "support/test_object.h"

#include <algorithm>

using namespace vrn::units;
using vrn::test::Punctuation;
using vrn::test::QuantityTextGenerator;
using vrn::test::ReferenceQuantityReader;

namespace {

QString written(const boost::optional<IConverter::quantity>& quantity)
{
    if (!quantity)
        return QStringLiteral("nothing");
    return QStringLiteral("%1 of unit %2")
        .arg(quantity->value, 0, 'g', 17)
        .arg(static_cast<int>(quantity->unit_id));
}

bool same(const boost::optional<IConverter::quantity>& left,
    const boost::optional<IConverter::quantity>& right)
{
    if (!left || !right)
        return !left && !right;
    return left->unit_id == right->unit_id && vrn::test::identical(left->value, right->value);
}

/// The number, and the parts of the spelling with the slashes between them.
std::vector<std::wstring> pieces_of(const std::wstring& number, const std::wstring& spelling)
{
    std::vector<std::wstring> pieces{number, std::wstring()};
    for (const wchar_t character : spelling) {
        if (character == L'/')
            pieces.insert(pieces.end(), {L"/", std::wstring()});
        else
            pieces.back() += character;
    }
    return pieces;
}

std::size_t number_from_environment(const char* name, std::size_t fallback)
{
    bool is_number = false;
    const auto number = qEnvironmentVariable(name).toULongLong(&is_number);
    return is_number ? static_cast<std::size_t>(number) : fallback;
}

} // namespace

/// Our reader and the reference, text by text.
///
/// VRN_RANDOM_TEXTS in the environment sets the number of random texts in each row.
class TestQuantityTextAgreement : public vrn::test::TestObject
{
    Q_OBJECT

private Q_SLOTS:
    void agreesOnEachSpellingAfterEachNumber_data()
    {
        QTest::addColumn<QString>("number");
        for (const char* const number : {"12", "-12", "1.5", "1,5", ".5", ",5", "1.2.3", "1e3",
                 "1.5e3", "1,5E-3", "-2e+1", ".5e3", "-,5E2", "1/2", "-1/2", "/2", "1 1/2",
                 "1  11/2", "-1 -1/2", "1/0", "1", "3 1", ".", "e", "-", "", "1e400", "0/0"})
            QTest::newRow(*number == '\0' ? "none" : number) << QString::fromLatin1(number);
    }
    void agreesOnEachSpellingAfterEachNumber()
    {
        QFETCH(QString, number);
        const std::wstring wide = number.toStdWString();
        for (const std::wstring& spelling : m_spellings) {
            if (QTest::currentTestFailed())
                return;
            // Bit by bit: a blank at each place where one may stand.
            const std::vector<std::wstring> pieces = pieces_of(wide, spelling);
            for (unsigned blanks = 0; blanks < 1U << (pieces.size() + 1); ++blanks) {
                std::wstring text;
                for (std::size_t i = 0; i < pieces.size(); ++i)
                    text += ((blanks >> i & 1U) != 0 ? L" " : L"") + pieces[i];
                if ((blanks >> pieces.size() & 1U) != 0)
                    text += L' ';
                check(text, std::locale::classic());
            }
        }
    }

    void agreesOnRandomTexts_data()
    {
        // One sequence for the seed and for each of the next three.
        QTest::addColumn<unsigned>("offset");
        for (unsigned offset = 0; offset < 4; ++offset)
            QTest::addRow("sequence %u", offset) << offset;
    }
    void agreesOnRandomTexts()
    {
        QFETCH(unsigned, offset);
        const std::size_t count = number_from_environment("VRN_RANDOM_TEXTS", 20'000);
        QuantityTextGenerator generator(vrn::test::randomSeed() + offset, m_spellings);
        std::size_t quantities = 0;
        for (std::size_t i = 0; i < count && !QTest::currentTestFailed(); ++i) {
            const std::wstring text = generator.next();
            // The locale changes the values alone, and streams are slow.
            const std::locale& locale = i % 4 == 0 ? m_german : std::locale::classic();
            quantities += check(text, locale) ? 1U : 0U;
        }
        // Otherwise the texts would prove little.
        QVERIFY2(quantities > count / 4 && quantities < count - count / 4,
            QByteArray::number(static_cast<qulonglong>(quantities)));
    }

    // Spellings that look like parts of numbers, or that no unit expression matches as a whole.
    void agreesOnSpellingsThatNoCatalogueShouldHave()
    {
        std::vector<std::wstring> spellings;
        std::vector<vrn::test::OtherUnits::Unit> units;
        for (const char* const spelling : {"e", "E", "e3", "E3", "e-3", "E-3", "eV", "E/m", "e/e",
                 "5", "5m", "-", "-m", ".", ".5", "/m", "m/", "m//m", "a/b/c", "a/b/c/d", "a b",
                 "a,b", " a", "a ", "1/m", "1 /m", "'", "''", "+", "+3", "in", "ft", "1"}) {
            units.push_back({static_cast<int>(100 + units.size()), spelling, {}});
            spellings.push_back(QString::fromLatin1(spelling).toStdWString());
        }
        const vrn::test::OtherUnits provider(units);
        const detail::SymbolMap symbols(provider);
        const ReferenceQuantityReader reference(provider);
        QuantityTextGenerator generator(vrn::test::randomSeed(), spellings);
        for (int i = 0; i < 40'000 && !QTest::currentTestFailed(); ++i)
            check(generator.next(), std::locale::classic(), symbols, reference);
    }

private:
    bool check(const std::wstring& text, const std::locale& locale)
    {
        return check(text, locale, m_symbols, m_reference);
    }

    /// Fails the test if the readers differ. Returns whether the text is a quantity.
    static bool check(const std::wstring& text, const std::locale& locale,
        const detail::SymbolMap& symbols, const ReferenceQuantityReader& reader)
    {
        const auto ours = detail::read_quantity(text, locale, symbols);
        const auto reference = reader.read(text, locale);
        const auto our_length = detail::read_feet_and_inches(text, locale);
        const auto reference_length = ReferenceQuantityReader::read_feet_and_inches(text, locale);
        if (!same(ours, reference) || !same(our_length, reference_length))
            QTest::qFail(
                qPrintable(
                    QStringLiteral("[%1] gives %2 and not %3; as a length %4, not %5")
                        .arg(QString::fromStdWString(text), written(ours), written(reference),
                            written(our_length), written(reference_length))),
                __FILE__, __LINE__);
        return reference.has_value() || reference_length.has_value();
    }

    static std::vector<std::wstring> sorted_spellings(const ReferenceQuantityReader& reader)
    {
        std::vector<std::wstring> spellings;
        for (const auto& entry : reader.spellings())
            spellings.push_back(entry.first);
        std::sort(spellings.begin(), spellings.end());
        return spellings;
    }

    const VarnelikUnitProvider m_provider{};
    const detail::SymbolMap m_symbols{m_provider};
    const ReferenceQuantityReader m_reference{m_provider};
    const std::vector<std::wstring> m_spellings = sorted_spellings(m_reference);
    const std::locale m_german = Punctuation::german();
};

VRN_TEST(TestQuantityTextAgreement)
#include "tst_quantity_text_agreement.moc"
