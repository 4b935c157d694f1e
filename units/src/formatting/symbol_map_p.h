#pragma once

#include <vrn/units/i_unit_provider.h>

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace vrn::units::detail {

/// The spellings of all units that a provider knows, as they are typed.
///
/// If units share a spelling, it belongs to the first in the order of the provider's
/// ids. Spellings are compared exactly: "KN" is not a unit.
class SymbolMap
{
public:
    explicit SymbolMap(const IUnitProvider& provider);

    // The keys are views of m_spellings.
    SymbolMap(const SymbolMap&) = delete;
    SymbolMap& operator=(const SymbolMap&) = delete;

    std::optional<UnitId::UnitId> find(std::wstring_view spelling) const;

    /// The same for a spelling that is a word or words with slashes between them. Such a
    /// spelling cannot be mistaken for a part of the number before it: "kN/m2", not "1/m".
    std::optional<UnitId::UnitId> find_word(std::wstring_view spelling) const;

private:
    struct Entry
    {
        UnitId::UnitId id;
        bool is_word;
    };

    const Entry* entry_of(std::wstring_view spelling) const;
    void add_unit(const IUnitProvider& provider, UnitId::UnitId id);
    void add(std::wstring spelling, UnitId::UnitId id);

    std::deque<std::wstring> m_spellings;
    std::unordered_map<std::wstring_view, Entry> m_entries;
    std::size_t m_longest = 0;
};

} // namespace vrn::units::detail
