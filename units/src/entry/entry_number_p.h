#pragma once

#include "entry/entry_field_p.h"

#include <vrn/units/entry_reason.h>
#include <vrn/units/number_signs.h>

#include <array>
#include <cstdint>

namespace vrn::units::detail {

/// An entry in plain characters, and as it was written.
class EntryText
{
public:
    EntryText(std::wstring_view written, std::wstring_view plain)
        : m_written(written)
        , m_plain(plain)
    {}

    std::size_t size() const { return m_plain.size(); }
    std::wstring_view plain() const { return m_plain; }
    /// The plain character there; 0 at the end.
    wchar_t at(std::size_t place) const { return place < m_plain.size() ? m_plain[place] : L'\0'; }
    std::size_t after_blanks(std::size_t place) const
    {
        while (at(place) == L' ')
            ++place;
        return place;
    }
    std::size_t after_digits(std::size_t place) const
    {
        while (is_digit_at(place))
            ++place;
        return place;
    }
    bool is_digit_at(std::size_t place) const { return at(place) >= L'0' && at(place) <= L'9'; }
    /// Whether nothing but blanks comes there.
    bool is_end(std::size_t place) const { return after_blanks(place) >= size(); }
    /// What was written from `begin` to `end`.
    std::wstring written(std::size_t begin, std::size_t end) const
    {
        return std::wstring(m_written.substr(begin, end - begin));
    }

private:
    std::wstring_view m_written;
    std::wstring_view m_plain;
};

/// Why reading has stopped, and whether more at the end of the text may mend it.
struct EntryFailure
{
    EntryReason reason;
    bool is_unfinished = false;
};

/// A number in an entry.
struct EntryNumber
{
    double value = 0.0;
    std::size_t begin = 0;
    std::size_t end = 0;
    bool is_whole = false; ///< Digits and nothing else.
    bool is_fraction = false; ///< "3/4" without a whole number before it.
    bool is_proper = true; ///< If it is such a fraction, it is less than 1.
    bool is_power_product = false; ///< "2*10^3", which is one number for all that.
};

/// So many digits are exact in a double, and so is the power of ten with as many zeros.
inline constexpr std::size_t most_exact_digits = 15;

/// Digits with a point before the last `decimals` of them. The quotient of two exact numbers is
/// the nearest double.
inline double exact_decimal(std::uint64_t digits, std::size_t decimals)
{
    constexpr std::array<double, most_exact_digits + 1> powers = {
        1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    return static_cast<double>(digits) / powers[decimals];
}

/// Whether a number may begin there.
bool begins_number(const EntryText& text, std::size_t place);

/// Reads the number that begins at `place`. A number after a sign of division is not the
/// numerator of a fraction. Returns false with the reason in `failure`.
bool read_number(const EntryText& text, std::size_t place, bool is_divisor, NumberSigns signs,
    const EntryField& field, EntryNumber& number, EntryFailure& failure);

} // namespace vrn::units::detail
