#include "formatting/number_reader_p.h"

#include "formatting/expression_p.h"

#include <boost/container/small_vector.hpp>

#include <charconv>
#include <sstream>
#include <string>
#include <system_error>

namespace vrn::units::detail {
namespace {

bool is_white_space(wchar_t character)
{
    const Symbol symbol = symbol_of(character);
    return symbol == symbols::blank || symbol == symbols::line_break;
}

bool can_stand_in_decimal(wchar_t character)
{
    return (character >= L'0' && character <= L'9') || character == L'.' || character == L'-'
        || character == L'+' || character == L'e' || character == L'E';
}

double extract_from_stream(std::wstring_view text, const std::locale& locale)
{
    std::wistringstream stream{std::wstring(text)};
    stream.imbue(locale);
    double value = 0;
    stream >> value;
    return value;
}

/// Sign, whole part, sign, numerator, denominator.
const Expression& fraction()
{
    static const Expression expression(
        LR"((-?)(\d+\s+)?(-?)(\d+)/(\d+))", Expression::Extent::whole_text);
    return expression;
}

} // namespace

std::wstring_view trim(std::wstring_view text)
{
    while (!text.empty() && is_white_space(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_white_space(text.back()))
        text.remove_suffix(1);
    return text;
}

// A stream skips white space before a number and ends at white space behind it. It
// takes in what remains here from end to end, and both conversions round to the
// nearest double.
std::optional<double> read_plain_decimal(std::wstring_view text, const std::locale& locale)
{
    constexpr std::size_t short_text = 64;

    if (locale != std::locale::classic())
        return std::nullopt;
    text = trim(text);
    boost::container::small_vector<char, short_text> narrow(
        text.size(), boost::container::default_init);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!can_stand_in_decimal(text[i]))
            return std::nullopt;
        narrow[i] = static_cast<char>(text[i]);
    }
    double value = 0;
    const char* const end = narrow.data() + narrow.size();
    const auto [behind, error] = std::from_chars(narrow.data(), end, value);
    if (error != std::errc() || behind != end)
        return std::nullopt;
    return value;
}

double read_stream_number(std::wstring_view text, const std::locale& locale)
{
    const std::optional<double> value = read_plain_decimal(text, locale);
    return value ? *value : extract_from_stream(text, locale);
}

double read_number(std::wstring_view text, const std::locale& locale)
{
    // No fraction is a plain decimal: this spares most numbers the match.
    if (const std::optional<double> value = read_plain_decimal(text, locale))
        return *value;
    Subject subject(text);
    Groups groups;
    if (!fraction().match(subject, groups))
        return extract_from_stream(text, locale);

    const auto [sign, whole, late_sign, numerator, denominator] = groups;
    const double factor = sign.empty() && late_sign.empty() ? 1 : -1;
    const double whole_value = whole.empty() ? 0 : read_stream_number(whole, locale);
    const double fraction_value = read_stream_number(numerator, locale)
        / read_stream_number(denominator, locale);
    return (fraction_value + whole_value) * factor;
}

} // namespace vrn::units::detail
