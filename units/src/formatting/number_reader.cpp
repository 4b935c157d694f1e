#include "formatting/number_reader_p.h"

#include "formatting/subject_p.h"

#include <boost/container/small_vector.hpp>

#include <charconv>
#include <cstdint>
#include <sstream>
#include <string>
#include <system_error>

namespace vrn::units::detail {
namespace {

bool is_white_space(wchar_t character)
{
    return symbol_of(character) == symbols::blank;
}

bool can_stand_in_decimal(wchar_t character)
{
    return (character >= L'0' && character <= L'9') || character == L'.' || character == L'-'
        || character == L'+' || character == L'e' || character == L'E';
}

/// The value of 1 to 15 digits, which a double holds exactly. Empty for any other text.
std::optional<double> read_few_digits(std::wstring_view text)
{
    constexpr std::size_t most_digits = 15;

    if (text.empty() || text.size() > most_digits)
        return std::nullopt;
    std::int64_t value = 0;
    for (const wchar_t character : text) {
        if (character < L'0' || character > L'9')
            return std::nullopt;
        value = 10 * value + (character - L'0');
    }
    return static_cast<double>(value);
}

bool take_minus(std::wstring_view& text)
{
    const bool found = !text.empty() && text.front() == L'-';
    text.remove_prefix(found ? 1 : 0);
    return found;
}

std::wstring_view take_digits(std::wstring_view& text)
{
    const std::wstring_view digits = text.substr(0, count_digits(text, 0));
    text.remove_prefix(digits.size());
    return digits;
}

struct Fraction
{
    bool is_negative;
    /// With the blanks after it, which may group digits in the locale; may be empty.
    std::wstring_view whole;
    std::wstring_view numerator;
    std::wstring_view denominator;
};

/// The parts of a text that "(-?)(\d+\s+)?(-?)(\d+)/(\d+)" matches from end to end. Blanks
/// after the first digits decide which part these are, so nothing is read twice.
std::optional<Fraction> split_fraction(std::wstring_view text)
{
    Fraction fraction{};
    fraction.is_negative = take_minus(text);
    const std::wstring_view start = text;
    fraction.numerator = take_digits(text);
    const std::wstring_view after_blanks = trim_left(text);
    if (!fraction.numerator.empty() && after_blanks.size() < text.size()) {
        fraction.whole = start.substr(0, start.size() - after_blanks.size());
        fraction.numerator = {};
        text = after_blanks;
    }
    if (fraction.numerator.empty()) {
        // The second sign. It may directly follow the first.
        fraction.is_negative = take_minus(text) || fraction.is_negative;
        fraction.numerator = take_digits(text);
    }
    if (fraction.numerator.empty() || text.empty() || text.front() != L'/')
        return std::nullopt;
    text.remove_prefix(1);
    fraction.denominator = take_digits(text);
    if (fraction.denominator.empty() || !text.empty())
        return std::nullopt;
    return fraction;
}

} // namespace

std::wstring_view trim_left(std::wstring_view text)
{
    while (!text.empty() && is_white_space(text.front()))
        text.remove_prefix(1);
    return text;
}

std::wstring_view trim(std::wstring_view text)
{
    while (!text.empty() && is_white_space(text.back()))
        text.remove_suffix(1);
    return trim_left(text);
}

std::size_t count_digits(std::wstring_view text, std::size_t begin)
{
    std::size_t end = begin;
    while (end < text.size() && text[end] >= L'0' && text[end] <= L'9')
        ++end;
    return end - begin;
}

NumberReader::NumberReader(const std::locale& locale)
    : m_locale(locale)
    , m_is_classic(locale == std::locale::classic())
{}

double NumberReader::read(std::wstring_view text) const
{
    const std::optional<Fraction> fraction = split_fraction(text);
    if (!fraction)
        return read_decimal(text);
    const double whole = fraction->whole.empty() ? 0 : read_decimal(fraction->whole);
    const double value = read_decimal(fraction->numerator) / read_decimal(fraction->denominator)
        + whole;
    return fraction->is_negative ? -value : value;
}

double NumberReader::read_decimal(std::wstring_view text) const
{
    const std::optional<double> value = read_plain_decimal(text);
    return value ? *value : extract_from_stream(text);
}

// A stream skips white space before a number and stops at white space after it. It reads
// all of what remains here, and both conversions round to the nearest double.
std::optional<double> NumberReader::read_plain_decimal(std::wstring_view text) const
{
    constexpr std::size_t short_text = 64;

    if (!m_is_classic)
        return std::nullopt;
    text = trim(text);
    if (const std::optional<double> value = read_few_digits(text))
        return value;
    boost::container::small_vector<char, short_text> narrow(
        text.size(), boost::container::default_init);
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!can_stand_in_decimal(text[i]))
            return std::nullopt;
        narrow[i] = static_cast<char>(text[i]);
    }
    double value = 0;
    const char* const end = narrow.data() + narrow.size();
    const auto [rest, error] = std::from_chars(narrow.data(), end, value);
    if (error != std::errc() || rest != end)
        return std::nullopt;
    return value;
}

double NumberReader::extract_from_stream(std::wstring_view text) const
{
    std::wistringstream stream{std::wstring(text)};
    stream.imbue(m_locale);
    // Without this, the stream would catch std::bad_alloc and give 0.
    stream.exceptions(std::ios::badbit);
    double value = 0;
    stream >> value;
    return value;
}

} // namespace vrn::units::detail
