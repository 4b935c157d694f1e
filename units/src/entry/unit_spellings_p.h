#pragma once

#include "entry/entry_characters_p.h"

#include <boost/container/small_vector.hpp>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace vrn::units::detail {

/// Reads the keys of all units that begin at one place of an entry.
///
/// A key is a spelling reduced to what tells spellings apart: powers are digits, any product
/// sign is "*", "s" is "sec", and what begins with 1 begins with "/". So "kN·m", "kN m" and
/// "kN-m" have the key "kN*m", and "1/m²" has "/m2".
class UnitKeys
{
public:
    struct End
    {
        std::size_t of_key; ///< The length of the key.
        std::size_t in_text; ///< The place after the unit.
    };

    /// `text` is in plain characters.
    UnitKeys(std::wstring_view text, std::size_t begin);

    /// The shortest comes first. Empty if no unit begins there.
    const boost::container::small_vector<End, 8>& ends() const { return m_ends; }
    std::wstring_view key(const End& end) const { return {m_key.data(), end.of_key}; }

private:
    void read_unit();
    void read_product();
    bool read_product_sign();
    void read_word();
    bool read_power();
    void add_end();
    std::size_t after_blanks(std::size_t place) const;
    wchar_t at(std::size_t place) const { return place < m_text.size() ? m_text[place] : L'\0'; }

    std::wstring_view m_text;
    std::size_t m_place;
    bool m_is_in_brackets = false;
    EntryCharacters m_key;
    boost::container::small_vector<End, 8> m_ends;
};

/// The key of a whole text; empty if it is not a unit from end to end.
std::wstring unit_key(std::wstring_view text);

/// The keys of what engineers write for the unit with that symbol, besides the symbol.
const std::vector<std::wstring>& other_keys(const std::string& symbol);

/// The symbols of the units that a word means in different languages; empty for other words.
/// The key is in lower case.
std::vector<std::wstring_view> meanings_of(std::wstring_view key);

} // namespace vrn::units::detail
