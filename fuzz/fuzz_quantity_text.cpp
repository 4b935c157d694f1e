// Any text through the readers of quantities. What they make of a short text is what
// the standard library's expressions and streams make of it; a long text, which those
// have no stack for, only has to be answered.

#include "formatting/quantity_reader_p.h"
#include "reference_quantity_reader.h"

#include <vrn/units/varnelik_unit_provider.h>

#include <boost/locale/encoding_utf.hpp>

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace vrn::units;
using vrn::test::ReferenceQuantityReader;

namespace {

constexpr std::size_t longestCompared = 40;
constexpr std::size_t longestRepeated = 1U << 12U;

using Quantity = boost::optional<IConverter::quantity>;

bool same(const Quantity& left, const Quantity& right)
{
    if (!left || !right)
        return !left && !right;
    const bool bothAreNoNumber = left->value != left->value && right->value != right->value;
    return left->unit_id == right->unit_id
        && (bothAreNoNumber || std::memcmp(&left->value, &right->value, sizeof left->value) == 0);
}

void require_same(const char* what, const Quantity& actual, const Quantity& expected)
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

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const detail::SymbolMap symbols{VarnelikUnitProvider()};
    static const ReferenceQuantityReader reference{VarnelikUnitProvider()};
    const std::locale& locale = std::locale::classic();

    const char* const bytes = reinterpret_cast<const char*>(data);
    std::wstring text = boost::locale::conv::utf_to_utf<wchar_t>(bytes, bytes + size);
    const Quantity quantity = detail::read_quantity(text, locale, symbols);
    const Quantity length = detail::read_feet_and_inches(text, locale);
    if (text.size() <= longestCompared) {
        require_same("quantities", quantity, reference.read(text, locale));
        require_same(
            "feet and inches", length, ReferenceQuantityReader::read_feet_and_inches(text, locale));
    }

    // A matcher that backtracks would not come back from this.
    if (!text.empty() && size % 16 == 0) {
        while (text.size() < longestRepeated)
            text += text;
        detail::read_quantity(text, locale, symbols);
        detail::read_feet_and_inches(text, locale);
    }
    return 0;
}
