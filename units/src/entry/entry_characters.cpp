#include "entry/entry_characters_p.h"

#include <algorithm>
#include <iterator>

namespace vrn::units::detail {
namespace {

struct Replacement
{
    wchar_t plain;
    std::wstring_view characters;
};

// clang-format off
constexpr Replacement replacements[] = {
    {L' ', L"\t\n\v\f\r\u0085\u00a0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007"
           L"\u2008\u2009\u200a\u2028\u2029\u202f\u205f\u3000"},
    {L'-', L"\u2010\u2011\u2012\u2013\u2212\ufe63"}, // hyphens, figure dash, en dash, minus
    {L'*', L"\u00b7\u00d7\u2022\u2219\u22c5\u30fb"}, // dots and the cross
    {L'/', L"\u00f7\u2044\u2215"}, // obelus, fraction slash, division slash
    {L'\'', L"\u0060\u00b4\u02b9\u02bc\u2018\u2019\u2032"}, // accents, quotation marks, prime
    {L'"', L"\u02ba\u201c\u201d\u2033"}, // quotation marks, double prime
    {L'\u00b0', L"\u00ba\u02da"}, // the ordinal and the ring, for the degree
    {L'K', L"\u212a"}, // the kelvin sign
};
// clang-format on

constexpr CharacterFraction fractions[] = {
    {L'\u00bc', 1, 4},
    {L'\u00bd', 1, 2},
    {L'\u00be', 3, 4},
    {L'\u2150', 1, 7},
    {L'\u2151', 1, 9},
    {L'\u2152', 1, 10},
    {L'\u2153', 1, 3},
    {L'\u2154', 2, 3},
    {L'\u2155', 1, 5},
    {L'\u2156', 2, 5},
    {L'\u2157', 3, 5},
    {L'\u2158', 4, 5},
    {L'\u2159', 1, 6},
    {L'\u215a', 5, 6},
    {L'\u215b', 1, 8},
    {L'\u215c', 3, 8},
    {L'\u215d', 5, 8},
    {L'\u215e', 7, 8},
};

constexpr std::wstring_view superscripts =
    L"\u2070\u00b9\u00b2\u00b3\u2074\u2075\u2076\u2077\u2078\u2079";

constexpr wchar_t first_wide = 0xff01;
constexpr wchar_t last_wide = 0xff5e;
constexpr wchar_t first_ascii = 0x21; ///< What the first of the wide forms stands for.

} // namespace

wchar_t plain_character(wchar_t character)
{
    if (character >= first_wide && character <= last_wide)
        character = static_cast<wchar_t>(character - first_wide + first_ascii);
    if (character >= L' ' && character < first_after_ascii && character != L'`')
        return character;
    for (const Replacement& replacement : replacements) {
        if (replacement.characters.find(character) != std::wstring_view::npos)
            return replacement.plain;
    }
    return character;
}

EntryCharacters plain_characters(std::wstring_view text)
{
    EntryCharacters plain(text.size(), boost::container::default_init);
    std::transform(text.begin(), text.end(), plain.begin(), plain_character);
    // As in "2 x 3.5 m". No unit is called so.
    for (std::size_t i = 1; i + 1 < plain.size(); ++i) {
        const bool is_cross = plain[i] == L'x' || plain[i] == L'X';
        if (is_cross && plain[i - 1] == L' ' && plain[i + 1] == L' ')
            plain[i] = L'*';
    }
    return plain;
}

int superscript_digit_after_ascii(wchar_t character)
{
    const std::size_t digit = superscripts.find(character);
    return digit != std::wstring_view::npos ? static_cast<int>(digit) : -1;
}

const CharacterFraction* find_fraction_after_ascii(wchar_t character)
{
    const auto* const found = std::find_if(std::begin(fractions), std::end(fractions),
        [character](const CharacterFraction& each) { return each.character == character; });
    return found != std::end(fractions) ? found : nullptr;
}

bool is_letter_after_ascii(wchar_t character)
{
    // Control characters and the halves of pairs are no letters.
    constexpr wchar_t last_control = 0x9f;
    constexpr wchar_t first_half = 0xd800;
    constexpr wchar_t last_half = 0xdfff;
    return character > last_control && !(character >= first_half && character <= last_half)
        && superscript_digit(character) < 0 && character != superscript_minus
        && find_fraction(character) == nullptr;
}

} // namespace vrn::units::detail
