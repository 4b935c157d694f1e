#pragma once

#include <vrn/units/unit_id.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace vrn::units {
inline namespace v1 {

/// Values by identifier: found in constant time, walked in the order in which
/// they were put in. Identifiers are small, so a plain table of positions serves
/// as the index.
template <typename Value>
class IdMap
{
public:
    using Entry = std::pair<UnitId::UnitId, Value>;

    /// `id` is not negative and not yet in the map.
    void emplace(UnitId::UnitId id, Value value)
    {
        const auto slot = static_cast<std::size_t>(id);
        if (slot >= m_positions.size())
            m_positions.resize(slot + 1, none);
        m_positions[slot] = static_cast<Position>(m_entries.size());
        m_entries.emplace_back(id, std::move(value));
    }

    /// Null where there is no such id.
    const Value* find(UnitId::UnitId id) const noexcept
    {
        // A negative id becomes a slot far behind the last.
        const auto slot = static_cast<std::uint32_t>(id);
        if (slot >= m_positions.size() || m_positions[slot] == none)
            return nullptr;
        return &m_entries[m_positions[slot]].second;
    }

    std::size_t size() const noexcept { return m_entries.size(); }
    auto begin() const noexcept { return m_entries.begin(); }
    auto end() const noexcept { return m_entries.end(); }

private:
    using Position = std::uint16_t;
    static constexpr Position none = std::numeric_limits<Position>::max();

    std::vector<Position> m_positions; ///< By id.
    std::vector<Entry> m_entries;
};

} // namespace v1
} // namespace vrn::units
