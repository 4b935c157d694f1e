#pragma once

#include <boost/container/small_vector.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace vrn::units::detail {

/// What an expression sees of a character. The expressions of this library name a few
/// characters. Of the others they only see whether the classic locale calls them a
/// digit, white space or neither.
using Symbol = std::uint8_t;

/// A set of symbols: bit n stands for symbol n.
using Symbols = std::uint32_t;

namespace symbols {

/// The characters that expressions name. Each has a symbol of its own.
inline constexpr std::wstring_view named = L"1.,/-+eE";

inline constexpr Symbol first_unnamed = static_cast<Symbol>(named.size());
inline constexpr Symbol digit = first_unnamed; ///< A digit other than '1'.
inline constexpr Symbol blank = first_unnamed + 1; ///< White space, line breaks included.
inline constexpr Symbol other = first_unnamed + 2;
inline constexpr Symbol end = first_unnamed + 3; ///< After the last character.
inline constexpr std::size_t count = first_unnamed + 4;

} // namespace symbols

inline constexpr std::size_t ascii_count = 128;

constexpr std::size_t code_of(wchar_t character)
{
    return std::char_traits<wchar_t>::to_int_type(character);
}

constexpr std::array<Symbol, ascii_count> make_ascii_symbols()
{
    std::array<Symbol, ascii_count> table{};
    for (Symbol& symbol : table)
        symbol = symbols::other;
    for (wchar_t character = L'0'; character <= L'9'; ++character)
        table[code_of(character)] = symbols::digit;
    for (const wchar_t character : std::wstring_view(L" \t\n\v\f\r"))
        table[code_of(character)] = symbols::blank;
    for (std::size_t i = 0; i < symbols::named.size(); ++i)
        table[code_of(symbols::named[i])] = static_cast<Symbol>(i);
    return table;
}

inline constexpr std::array<Symbol, ascii_count> ascii_symbols = make_ascii_symbols();

/// The symbol of a character.
inline Symbol symbol_of(wchar_t character)
{
    const std::size_t code = code_of(character);
    return code < ascii_count ? ascii_symbols[code] : symbols::other;
}

/// A text ready for expressions: its characters as symbols, and working memory for all
/// expressions that are tried on it. Only a text of more than 64 characters takes memory
/// from the heap, 3 bytes for each character.
class Subject
{
public:
    /// Keeps `text` as a view.
    explicit Subject(std::wstring_view text);

    std::wstring_view text() const { return m_text; }
    std::size_t size() const { return m_text.size(); }
    /// Whether `part`, a view into the text, is at its end.
    bool is_end(std::wstring_view part) const
    {
        return part.data() + part.size() == m_text.data() + m_text.size();
    }

    /// The symbols of the characters, and symbols::end after the last.
    const Symbol* symbols() const { return m_symbols.data(); }
    /// The symbols that occur in the text.
    Symbols present() const { return m_present; }

    /// One place for each character and one after the last. The contents have no meaning
    /// of their own.
    std::uint16_t* trail() { return m_trail.data(); }

private:
    static constexpr std::size_t short_text = 64;

    std::wstring_view m_text;
    boost::container::small_vector<Symbol, short_text + 1> m_symbols;
    boost::container::small_vector<std::uint16_t, short_text + 1> m_trail;
    Symbols m_present = 0;
};

} // namespace vrn::units::detail
