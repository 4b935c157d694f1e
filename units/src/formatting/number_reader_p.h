#pragma once

#include <locale>
#include <optional>
#include <string_view>

namespace vrn::units::detail {

/// `text` without the white space of the classic locale at its ends.
std::wstring_view trim(std::wstring_view text);

/// The quick way to read a number, where it is certain to give what
/// read_stream_number() gives: in the classic locale, for a text that is a decimal
/// number from end to end. Nothing for any other text, and for a number that
/// overflows or underflows.
std::optional<double> read_plain_decimal(std::wstring_view text, const std::locale& locale);

/// The number at the beginning of `text`, as a wide string stream of the locale
/// extracts it. Whatever the state of the stream, its value counts: 0 where no
/// number begins the text, the nearest finite number where one overflows. What
/// stands behind the number is ignored.
double read_stream_number(std::wstring_view text, const std::locale& locale);

/// The number that `text` is: a fraction with or without a whole part, as
/// "-1 3/8", or else what read_stream_number() makes of it. Any text is a number
/// here. A denominator of 0 gives an infinite value or not-a-number.
double read_number(std::wstring_view text, const std::locale& locale);

} // namespace vrn::units::detail
