#pragma once

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vrn::units::detail {

/// What an expression sees of a character. The expressions of this library name
/// a dozen characters; all others differ in being a digit, white space, the end
/// of a line or none of these, as the classic locale has it.
using Symbol = std::uint8_t;

/// A set of symbols: bit n stands for symbol n.
using Symbols = std::uint32_t;

namespace symbols {

/// The characters that expressions name, each a symbol of its own.
inline constexpr std::wstring_view named = L"1.,/-+eE'ftin";

inline constexpr Symbol first_unnamed = static_cast<Symbol>(named.size());
inline constexpr Symbol digit = first_unnamed; ///< A digit other than '1'.
inline constexpr Symbol blank = first_unnamed + 1; ///< White space within a line.
inline constexpr Symbol line_break = first_unnamed + 2; ///< "\n" and "\r", white space too.
/// U+2028 and U+2029: they end a line, but are no white space of the classic locale.
inline constexpr Symbol separator = first_unnamed + 3;
inline constexpr Symbol other = first_unnamed + 4;
inline constexpr Symbol end = first_unnamed + 5; ///< Behind the last character.
inline constexpr std::size_t count = first_unnamed + 6;

} // namespace symbols

/// The symbol of a character.
Symbol symbol_of(wchar_t character);

/// A text made ready for expressions: its characters as symbols, and the working
/// memory that all expressions tried on it share. Only a text beyond 64
/// characters takes memory from the heap, 3 bytes for each character.
class Subject
{
public:
    /// Keeps `text` as a view.
    explicit Subject(std::wstring_view text);

    std::wstring_view text() const { return m_text; }
    std::size_t size() const { return m_text.size(); }
    /// Whether `part`, a view into the text, stands at its end.
    bool is_end(std::wstring_view part) const
    {
        return part.data() + part.size() == m_text.data() + m_text.size();
    }

    /// The symbols of the characters, and symbols::end behind the last.
    const Symbol* symbols() const { return m_symbols.data(); }
    /// The symbols that occur in the text.
    Symbols present() const { return m_present; }

    /// One place for each character and one behind the last, with no meaning of
    /// its own.
    std::uint16_t* trail() { return m_trail.data(); }

private:
    static constexpr std::size_t short_text = 64;

    std::wstring_view m_text;
    boost::container::small_vector<Symbol, short_text + 1> m_symbols;
    boost::container::small_vector<std::uint16_t, short_text + 1> m_trail;
    Symbols m_present = 0;
};

} // namespace vrn::units::detail
