#pragma once

#include <cstddef>
#include <locale>
#include <optional>
#include <string_view>

namespace vrn::units::detail {

/// `text` without the white space of the classic locale at its beginning.
std::wstring_view trim_left(std::wstring_view text);

/// `text` without the white space of the classic locale at both ends.
std::wstring_view trim(std::wstring_view text);

/// How many digits `text` has from `begin` on, without a gap.
std::size_t count_digits(std::wstring_view text, std::size_t begin);

/// Reads numbers as they are written in a locale.
class NumberReader
{
public:
    /// The locale must live as long as the reader.
    explicit NumberReader(const std::locale& locale);

    /// The number that `text` is: a fraction with or without a whole part, such as
    /// "-1 3/8", or else what read_decimal() gives. Any text is a number here. A
    /// denominator of 0 gives an infinite value or not-a-number.
    double read(std::wstring_view text) const;

    /// The number at the beginning of `text`, as a wide string stream of the locale
    /// extracts it. The value counts even if the extraction fails: it is 0 if the text
    /// does not begin with a number, and the nearest finite number if that overflows.
    /// What comes after the number is ignored.
    double read_decimal(std::wstring_view text) const;

    /// The same as read_decimal(), but faster, in the classic locale and for a text that
    /// is a decimal number from end to end. Empty in other locales, for any other text,
    /// and for a number that overflows or underflows.
    std::optional<double> read_plain_decimal(std::wstring_view text) const;

private:
    double extract_from_stream(std::wstring_view text) const;

    const std::locale& m_locale;
    bool m_is_classic;
};

} // namespace vrn::units::detail
