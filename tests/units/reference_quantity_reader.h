#pragma once

#include <vrn/units/i_converter.h>
#include <vrn/units/i_unit_provider.h>

#include <boost/optional.hpp>

#include <locale>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace vrn::test {

/// One group of a match.
struct ReferenceGroup
{
    std::wstring text;
    std::size_t begin = 0; ///< Where it begins; 0 for a group that took no part.
};

/// The groups of `expression` in `text`, as std::wregex of the classic locale has
/// them, or nothing if it does not match the whole text.
std::optional<std::vector<ReferenceGroup>> reference_match(
    const std::wstring& expression, const std::wstring& text);

/// The same for the leftmost match anywhere in the text.
std::optional<std::vector<ReferenceGroup>> reference_search(
    const std::wstring& expression, const std::wstring& text);

/// What a wide string stream of the locale extracts.
double reference_stream_number(const std::wstring& text, const std::locale& locale);

/// A decimal number or a fraction.
double reference_number(const std::wstring& text, const std::locale& locale);

/// The two grammars as they are documented: numbers, then units.
struct ReferenceGrammar
{
    std::vector<std::wstring> numbers;
    std::vector<std::wstring> units;
};
const ReferenceGrammar& reference_exponent_grammar();
const ReferenceGrammar& reference_decimal_grammar();

/// Reads quantities by the documented steps, one after the other, with the regular
/// expressions and streams of the standard library. It is slow, and a text beyond
/// some thousand characters overflows the stack.
class ReferenceQuantityReader
{
public:
    using Quantity = boost::optional<units::IConverter::quantity>;

    explicit ReferenceQuantityReader(const units::IUnitProvider& provider);

    /// A number and a unit.
    Quantity read(const std::wstring& text, const std::locale& locale) const;
    /// Feet and inches.
    static Quantity read_feet_and_inches(const std::wstring& text, const std::locale& locale);

    /// Every spelling of a unit, with the id that it is read as.
    const std::unordered_map<std::wstring, units::UnitId::UnitId>& spellings() const
    {
        return m_spellings;
    }

private:
    Quantity read(
        const ReferenceGrammar& grammar, const std::wstring& text, const std::locale& locale) const;

    std::unordered_map<std::wstring, units::UnitId::UnitId> m_spellings;
};

} // namespace vrn::test
