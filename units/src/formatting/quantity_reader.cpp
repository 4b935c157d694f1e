#include "formatting/quantity_reader_p.h"

#include "formatting/number_reader_p.h"
#include "formatting/quantity_grammar_p.h"

#include <algorithm>
#include <optional>

namespace vrn::units::detail {
namespace {

bool ends_line(wchar_t character)
{
    return character == L'\n' || character == L'\r' || character == L'\u2028'
        || character == L'\u2029';
}

/// The length of the number at the beginning of `text` if it is written like "12",
/// "-1.5" or "1.5e-3", or else 0.
std::size_t plain_number_length(std::wstring_view text)
{
    const auto is = [&](std::size_t i, wchar_t character) {
        return i < text.size() && text[i] == character;
    };
    std::size_t length = is(0, L'-') ? 1 : 0;
    const std::size_t whole = count_digits(text, length);
    if (whole == 0)
        return 0;
    length += whole;
    if (is(length, L'.')) {
        const std::size_t decimals = count_digits(text, length + 1);
        if (decimals == 0)
            return 0;
        length += 1 + decimals;
    }
    if (is(length, L'e')) {
        const std::size_t sign = is(length + 1, L'-') ? 1 : 0;
        const std::size_t exponent = count_digits(text, length + 1 + sign);
        if (exponent == 0)
            return 0;
        length += 1 + sign + exponent;
    }
    return length;
}

/// The quick way for what people type most: a plain number and a known word as its
/// unit. Empty for any other text. The grammars give the same result:
///
/// - A number without "e" does not match the first grammar. In the second, only the
///   first number matches it, since the others need a slash among the digits.
/// - A number with "e" is read by the first number of the first grammar. No unit is
///   found within it: a unit does not begin with a digit, "." or "-". It may begin
///   with "e", but then it takes in the unit that follows and closes the text too.
/// - The word begins with the first character that can begin a unit, and goes to the
///   end. The first or the second unit of the grammar finds it there, closing the
///   text, and the same unit glued to the number has the word as its group.
boost::optional<IConverter::quantity> read_usual_quantity(
    std::wstring_view text, const NumberReader& numbers, const SymbolMap& symbols)
{
    constexpr std::size_t longest = 64;

    if (text.size() > longest)
        return boost::none;
    const std::size_t length = plain_number_length(text);
    if (length == 0)
        return boost::none;
    // A blank after the unit is left to the grammars: no word contains one.
    const std::wstring_view word = trim_left(text.substr(length));
    const std::optional<UnitId::UnitId> unit = word.empty() ? UnitId::DIMENSIONLESS
                                                            : symbols.find_word(word);
    if (!unit)
        return boost::none;
    const std::optional<double> value = numbers.read_plain_decimal(text.substr(0, length));
    if (!value)
        return boost::none;
    return IConverter::quantity{*unit, *value};
}

boost::optional<IConverter::quantity> read_by_grammar(const QuantityGrammar& grammar, Subject& text,
    const NumberReader& numbers, const SymbolMap& symbols)
{
    Groups groups;
    // It does not matter to the pairs which unit closes the text: each such unit would
    // try all of them, with the same result.
    if (grammar.unit_closes(text)) {
        for (const Expression& pair : grammar.pairs()) {
            if (!pair.match(text, groups))
                continue;
            if (const std::optional<UnitId::UnitId> unit = symbols.find(trim(groups[1])))
                return IConverter::quantity{*unit, numbers.read(trim(groups[0]))};
        }
    }
    for (const Expression& number : grammar.numbers()) {
        if (number.match(text, groups))
            return IConverter::quantity{UnitId::DIMENSIONLESS, numbers.read(groups[0])};
    }
    return boost::none;
}

struct FeetAndInches
{
    std::wstring_view feet;
    std::wstring_view inches;
};

/// For the marks "'" and "''", the groups of "\s*(.*)'(.*)''\s*", matched from end to
/// end. The mark of inches can only be at the end. The first group takes as much as it can,
/// so it ends at the last mark of feet before that. `content` is trimmed, so any line end in
/// it would be in a group, but "." does not match a line end.
std::optional<FeetAndInches> split_feet_and_inches(
    std::wstring_view content, std::wstring_view foot_mark, std::wstring_view inch_mark)
{
    if (content.size() < inch_mark.size())
        return std::nullopt;
    const std::wstring_view rest = content.substr(0, content.size() - inch_mark.size());
    if (content.substr(rest.size()) != inch_mark)
        return std::nullopt;
    const std::size_t at = rest.rfind(foot_mark);
    if (at == std::wstring_view::npos || std::any_of(rest.begin(), rest.end(), ends_line))
        return std::nullopt;
    return FeetAndInches{rest.substr(0, at), rest.substr(at + foot_mark.size())};
}

} // namespace

boost::optional<IConverter::quantity> read_quantity(
    std::wstring_view text, const std::locale& locale, const SymbolMap& symbols)
{
    const NumberReader numbers(locale);
    if (const auto quantity = read_usual_quantity(text, numbers, symbols))
        return quantity;
    Subject subject(text);
    boost::optional<IConverter::quantity> quantity = read_by_grammar(
        QuantityGrammar::exponent(), subject, numbers, symbols);
    if (!quantity)
        quantity = read_by_grammar(QuantityGrammar::decimal(), subject, numbers, symbols);
    return quantity;
}

boost::optional<IConverter::quantity> read_feet_and_inches(
    std::wstring_view text, const std::locale& locale)
{
    // The mark and the word for inches end in one of these characters. Most lengths do
    // not, and skip the comparisons.
    const std::wstring_view content = trim(text);
    if (content.empty() || (content.back() != L'\'' && content.back() != L'n'))
        return boost::none;
    std::optional<FeetAndInches> parts = split_feet_and_inches(content, L"'", L"''");
    if (!parts)
        parts = split_feet_and_inches(content, L"ft", L"in");
    if (!parts)
        return boost::none;
    const NumberReader numbers(locale);
    const double feet = numbers.read(trim(parts->feet));
    const double inches = numbers.read(trim(parts->inches));
    // This refuses not-a-number too.
    if (!(inches >= 0))
        return boost::none;
    return IConverter::quantity{UnitId::FOOT, inches * metres_per_inch / metres_per_foot + feet};
}

} // namespace vrn::units::detail
