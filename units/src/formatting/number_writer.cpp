#include "formatting/number_writer_p.h"

#include <vrn/assert/smart_assert.h>

#include <boost/locale/utf.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <iomanip>
#include <numeric>
#include <sstream>

namespace vrn::units {
inline namespace v1 {
namespace {

/// In the classic locale `std::to_chars` writes what a stream writes: both round
/// correctly, and neither groups digits. It is many times faster.
bool is_classic(const std::locale& locale)
{
    return locale == std::locale::classic();
}

/// A stream of the locale that passes on what is thrown while it writes. By default a
/// stream catches it and leaves the number incomplete.
std::wostringstream make_stream(const std::locale& locale)
{
    std::wostringstream stream;
    stream.imbue(locale);
    stream.exceptions(std::ios::badbit);
    return stream;
}

/// After this many decimals, every digit of a double is 0. So no more are written,
/// even if a format asks for more.
constexpr std::int32_t most_decimals = 1074;

/// As many decimals as the buffer can hold for any double.
constexpr std::int32_t most_quick_decimals = 128;

void append_fixed(std::wstring& text, double v, std::int32_t precision, const std::locale& locale)
{
    if (precision <= most_quick_decimals && is_classic(locale)) {
        constexpr std::size_t sign_digits_and_point = 311;
        std::array<char, sign_digits_and_point + most_quick_decimals> buffer;
        const auto written = std::to_chars(
            buffer.data(), buffer.data() + buffer.size(), v, std::chars_format::fixed, precision);
        const auto length = static_cast<std::size_t>(written.ptr - buffer.data());
        text.resize(text.size() + length);
        std::copy_n(buffer.data(), length, text.end() - static_cast<std::ptrdiff_t>(length));
        return;
    }
    std::wostringstream stream = make_stream(locale);
    stream << std::fixed << std::setprecision(std::min(precision, most_decimals)) << v;
    text += stream.str();
}

// Decodes directly into the text: a temporary string would be the slowest part of writing.
void append_label(std::wstring& text, std::string_view label)
{
    namespace utf = boost::locale::utf;
    if (label.empty())
        return;
    text += L' ';
    for (auto at = label.begin(); at != label.end();) {
        const utf::code_point code = utf::utf_traits<char>::decode(at, label.end());
        if (utf::is_valid_codepoint(code))
            text += static_cast<wchar_t>(code);
    }
}

/// An empty text with room for most quantities.
std::wstring new_text()
{
    constexpr std::size_t usual_length = 32;

    std::wstring text;
    text.reserve(usual_length);
    return text;
}

} // namespace

void append_integer(std::wstring& text, std::int64_t number, const std::locale& locale)
{
    if (is_classic(locale)) {
        text += std::to_wstring(number);
        return;
    }
    std::wostringstream stream = make_stream(locale);
    stream << number;
    text += stream.str();
}

std::wstring write_fixed(
    double v, std::int32_t precision, std::string_view label, const std::locale& locale)
{
    std::wstring text = new_text();
    append_fixed(text, v, precision, locale);
    append_label(text, label);
    return text;
}

std::wstring write_scientific(
    double v, std::int32_t precision, std::string_view label, const std::locale& locale)
{
    if (!std::isfinite(v))
        return write_fixed(v, precision, label, locale);
    // Zero has the mantissa 0, even if it is negative.
    const int exponent = v == 0.0 ? 0 : static_cast<int>(std::log10(std::abs(v)));
    const double mantissa = v == 0.0 ? 0.0 : v / std::pow(10.0, exponent);
    std::wstring text = new_text();
    append_fixed(text, mantissa, precision, locale);
    text += L'e';
    append_integer(text, exponent, locale);
    append_label(text, label);
    return text;
}

std::wstring write_fraction(
    double v, std::int32_t p, std::string_view label, const std::locale& locale)
{
    VRN_ASSERT(p > 0)("p", p);
    const double lifted = v + whole_number_lift;
    if (p <= 0 || !fits_when_truncated<std::int64_t>(lifted))
        return write_fixed(v, p, label, locale);

    auto whole = static_cast<std::int64_t>(lifted);
    const double fraction = std::abs(v - static_cast<double>(whole));
    std::int64_t numerator = std::llround(p * fraction);
    const std::int64_t divisor = std::gcd(numerator, std::int64_t{p});
    const std::int64_t denominator = p / divisor;
    numerator /= divisor;
    if (denominator == 1) {
        whole += whole < 0 ? -numerator : numerator;
        numerator = 0;
    }

    std::wstring text = new_text();
    if (whole != 0 || numerator == 0)
        append_integer(text, whole, locale);
    if (whole != 0 && numerator != 0)
        text += L' ';
    if (numerator != 0) {
        append_integer(text, numerator, locale);
        text += L'/';
        append_integer(text, denominator, locale);
    }
    append_label(text, label);
    return text;
}

} // namespace v1
} // namespace vrn::units
