// Reads any text as a quantity and writes the quantity again. The first bytes of the input
// choose the locale, the unit system and the format. A short text must give the same result
// as the expressions and streams of the standard library. Those would overflow the stack on
// a long text, so a long text only needs to return.

#include "formatting/quantity_reader_p.h"
#include "punctuation.h"
#include "reference_quantity_reader.h"

#include <vrn/assert/smart_assert.h>
#include <vrn/units/units.h>

#include <boost/locale/encoding_utf.hpp>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iomanip>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>

using namespace vrn::units;
using vrn::test::Punctuation;
using vrn::test::ReferenceQuantityReader;

namespace {

constexpr std::size_t longestCompared = 40;
constexpr std::size_t longestRepeated = 1U << 12U;

using Quantity = boost::optional<IConverter::quantity>;

/// The input: ten bytes of choices, 0 if the input ends before them, and then a text.
///
///     0     locale, and the unit system in the upper four bits
///     1-2   kind of the field, by its place among all ids
///     3     override: 1 exists, 2 as a fraction, 4 in another format, 8 with a label,
///           16 with an empty label
///     4-5   display unit of the override, by its place among all units
///     6-9   precision of the override
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size)
    {
        const std::size_t length = std::min(size, m_choices.size());
        std::copy_n(data, length, m_choices.begin());
        const char* const bytes = reinterpret_cast<const char*>(data);
        m_text = std::string_view(bytes + length, size - length);
    }

    std::string_view text() const { return m_text; }

    const std::locale& locale() const
    {
        static const std::locale locales[] = {std::locale::classic(), Punctuation::german(),
            Punctuation::french(), Punctuation::swiss(), Punctuation::indian()};
        return locales[(m_choices[0] & 15U) % std::size(locales)];
    }

    std::int32_t system() const { return (m_choices[0] >> 4U) % 10; }

    UnitId::UnitId kind() const
    {
        static const std::vector<UnitId::UnitId> ids = VarnelikUnitProvider().get_all_ids();
        return ids[number(1, 2) % ids.size()];
    }

    bool hasOverride() const { return has(1); }

    UnitFormat format() const
    {
        const auto& units = list_units();
        const UnitRecord& unit = units[number(4, 2) % units.size()];
        UnitFormat format;
        format.unit_id = unit.id;
        format.precision = static_cast<std::int32_t>(number(6, 4));
        format.format = (has(2) ? 2 : 0) + (has(4) ? 1 : 0);
        if (has(16))
            format.label.set_value(std::string());
        else if (has(8))
            format.label.set_value(
                unit.alternative_symbols.empty() ? unit.symbol : unit.alternative_symbols.back());
        return format;
    }

private:
    bool has(unsigned flag) const { return (m_choices[3] & flag) != 0; }

    std::uint32_t number(std::size_t begin, std::size_t count) const
    {
        std::uint32_t number = 0;
        for (std::size_t i = begin + count; i-- > begin;)
            number = number << 8U | m_choices[i];
        return number;
    }

    std::array<std::uint8_t, 10> m_choices{};
    std::string_view m_text;
};

bool same(const Quantity& left, const Quantity& right)
{
    if (!left || !right)
        return !left && !right;
    const bool bothAreNoNumber = left->value != left->value && right->value != right->value;
    return left->unit_id == right->unit_id
        && (bothAreNoNumber || std::memcmp(&left->value, &right->value, sizeof left->value) == 0);
}

void requireSame(const char* what, const Quantity& actual, const Quantity& expected)
{
    if (same(actual, expected))
        return;
    const auto write = [](const char* who, const Quantity& quantity) {
        if (quantity)
            std::fprintf(stderr, "%s: %.17g of unit %d\n", who, quantity->value,
                static_cast<int>(quantity->unit_id));
        else
            std::fprintf(stderr, "%s: nothing\n", who);
    };
    std::fprintf(stderr, "The readers of %s differ.\n", what);
    write("ours", actual);
    write("reference", expected);
    std::abort();
}

Quantity read(const std::wstring& text, const std::locale& locale)
{
    static const detail::SymbolMap symbols{VarnelikUnitProvider()};
    static const ReferenceQuantityReader reference{VarnelikUnitProvider()};

    const Quantity quantity = detail::read_quantity(text, locale, symbols);
    const Quantity length = detail::read_feet_and_inches(text, locale);
    if (text.size() <= longestCompared) {
        requireSame("quantities", quantity, reference.read(text, locale));
        requireSame(
            "feet and inches", length, ReferenceQuantityReader::read_feet_and_inches(text, locale));
    }
    return quantity;
}

/// Only an override may cause a report: its unit may not fit the kind, and its precision may
/// not be a denominator. Any other report is a failure.
void refuseOtherAsserts(const vrn::smartassert::AssertReport& report)
{
    static const std::set<std::string> expected = {"can_convert(q.unit_id, unit_id)",
        "m_converter->can_convert(q.unit_id, UnitId::FOOT)",
        "m_converter->can_convert(q.unit_id, UnitId::INCH)", "precision >= 0", "p > 0"};
    if (expected.count(report.expression) != 0)
        return;
    std::fprintf(stderr, "An assertion has failed: %s\n", report.expression.c_str());
    std::abort();
}

/// The quantity in fixed notation, written by a stream.
std::wstring streamed(const Context& context, IConverter::quantity q, const std::locale& locale)
{
    constexpr std::int32_t mostDecimals = 1074;

    const auto& formats = context.format_provider();
    const std::int32_t precision = formats.get_precision(q.unit_id);
    const std::string label = context.get_display_label(q.unit_id);
    std::wostringstream stream;
    stream.imbue(locale);
    stream << std::fixed << std::setprecision(precision < 0 ? 3 : std::min(precision, mostDecimals))
           << context.converter().convert(q, formats.get_unit(q.unit_id)).value;
    if (!label.empty())
        stream << L' ' << boost::locale::conv::utf_to_utf<wchar_t>(label);
    return stream.str();
}

/// Writes the quantity, then reads the text.
void write(const Context& context, IConverter::quantity q, const std::locale& locale)
try {
    const std::wstring text = context.format(q, locale);
    const auto& formats = context.format_provider();
    const UnitId::UnitId unit = formats.get_unit(q.unit_id);
    const bool isFraction = unit == UnitId::FEET_AND_FRACTIONAL_INCHES
        || unit == UnitId::FRACTIONAL_INCHES;
    if (!isFraction && formats.get_format(q.unit_id) == 0 && text != streamed(context, q, locale)) {
        std::fprintf(stderr, "%ls is not what a stream writes.\n", text.c_str());
        std::abort();
    }
    read(text, locale);
} catch (const std::invalid_argument& error) {
    if (error.what() != std::string_view("Incompatible units."))
        throw;
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    vrn::smartassert::set_assert_handler(refuseOtherAsserts);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const Input input(data, size);
    const std::locale& locale = input.locale();
    const std::string_view bytes = input.text();
    std::wstring text = boost::locale::conv::utf_to_utf<wchar_t>(
        bytes.data(), bytes.data() + bytes.size());
    const Quantity quantity = read(text, locale);

    Context context(input.system());
    if (const Quantity value = context.parse(text, input.kind(), locale))
        write(context, *value, locale);
    if (input.hasOverride()) {
        context = Context(input.system(), {{input.kind(), input.format()}});
        if (const Quantity value = context.parse(text, input.kind(), locale))
            write(context, *value, locale);
        // The number is written in the kind of the field, even if its unit does not fit.
        if (quantity)
            write(context, {input.kind(), quantity->value}, locale);
    }

    // A matcher that backtracks would never finish this.
    if (!text.empty() && bytes.size() % 16 == 0) {
        while (text.size() < longestRepeated)
            text += text;
        read(text, locale);
    }
    return 0;
}
