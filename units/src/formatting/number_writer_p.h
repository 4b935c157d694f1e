#pragma once

#include <cmath>
#include <cstdint>
#include <limits>
#include <locale>
#include <string>
#include <string_view>

namespace vrn::units {
inline namespace v1 {

/// The notations in which a number and its unit are written.
///
/// Each writes the number as a stream of the locale does, its decimal point and
/// grouping included, and then a blank and the label, which is given in UTF-8. An
/// empty label adds nothing.

/// With `precision` digits after the decimal point, but no more than 1074, which is the
/// most that a double can have: "12.500 kN".
std::wstring write_fixed(
    double v, std::int32_t precision, std::string_view label, const std::locale& locale);

/// As mantissa and exponent of ten: "1.500e3 kN". This is not the usual form: the
/// exponent is truncated toward zero, so that values below 1 have a mantissa below
/// 1, as in "0.500e-1". Infinities and not-a-number are written in fixed
/// notation.
std::wstring write_scientific(
    double v, std::int32_t precision, std::string_view label, const std::locale& locale);

/// As a whole number and a fraction with the denominator `p`, reduced: "2 1/2 in".
/// The sign of a value from -1 to 0 is lost. A value just below a whole number is
/// pulled up to it; if `p` is above 256, the distance may then count as a part.
///
/// Values that do not fit into a 64-bit integer are written in fixed notation. If `p` is
/// not a denominator, all values are, and the assertion "p > 0" fails.
std::wstring write_fraction(
    double v, std::int32_t p, std::string_view label, const std::locale& locale);

/// Appends the number without a unit.
void append_integer(std::wstring& text, std::int64_t number, const std::locale& locale);

/// Pulls a value just below a whole number up to it before it is truncated. One
/// 512th.
constexpr double whole_number_lift = 0.001953125;

/// Whether `v` without its decimals fits into an `Integer`. Infinities and not-a-number
/// do not.
template <typename Integer>
bool fits_when_truncated(double v)
{
    constexpr auto lowest = static_cast<double>(std::numeric_limits<Integer>::min());
    const double whole = std::trunc(v);
    return whole >= lowest && whole < -lowest;
}

} // namespace v1
} // namespace vrn::units
