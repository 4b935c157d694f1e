#pragma once

#include <boost/container/small_vector.hpp>

#include <string_view>

namespace vrn::units::detail {

/// The characters that an entry may be written with in place of a plain one: blanks of all
/// kinds, hyphens and minus signs, signs for times and divided by, primes and quotation
/// marks, and the wide forms of ASCII. All others are themselves.
wchar_t plain_character(wchar_t character);

/// Holds an entry of usual length without memory from the heap.
using EntryCharacters = boost::container::small_vector<wchar_t, 64>;

/// The text in plain characters, one for one, so that places stay the same.
EntryCharacters plain_characters(std::wstring_view text);

constexpr bool is_digit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

inline constexpr wchar_t first_after_ascii = 0x80;

int superscript_digit_after_ascii(wchar_t character);
/// The digit that a superscript stands for; -1 for any other character.
inline int superscript_digit(wchar_t character)
{
    return character < first_after_ascii ? -1 : superscript_digit_after_ascii(character);
}

inline constexpr wchar_t superscript_minus = L'\u207b';

/// A fraction in one character.
struct CharacterFraction
{
    wchar_t character;
    int numerator;
    int denominator;
};

const CharacterFraction* find_fraction_after_ascii(wchar_t character);
/// Null if the character is none.
inline const CharacterFraction* find_fraction(wchar_t character)
{
    return character < first_after_ascii ? nullptr : find_fraction_after_ascii(character);
}

bool is_letter_after_ascii(wchar_t character);
/// Whether the character can be part of a word for a unit.
inline bool is_letter(wchar_t character)
{
    if (character >= first_after_ascii)
        return is_letter_after_ascii(character);
    return (character >= L'a' && character <= L'z') || (character >= L'A' && character <= L'Z')
        || character == L'%' || character == L'?';
}

} // namespace vrn::units::detail
