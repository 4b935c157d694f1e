#pragma once

#include <vrn/units/unit_id.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <utility>
#include <vector>

namespace vrn::units {
inline namespace v1 {

/// Values by identifier. A look-up takes constant time, and iteration follows the order
/// of insertion. Identifiers are small, so a plain table serves as the index.
template <typename Value>
class IdMap
{
public:
    using Entry = std::pair<UnitId::UnitId, Value>;

    IdMap() = default;
    IdMap(IdMap&&) noexcept = default;
    IdMap& operator=(IdMap&&) noexcept = default;

    /// `id` must not be negative or already in the map.
    void emplace(UnitId::UnitId id, Value value)
    {
        const auto slot = static_cast<std::size_t>(id);
        if (slot >= m_by_id.size())
            m_by_id.resize(slot + 1);
        m_by_id[slot] = &m_entries.emplace_back(id, std::move(value)).second;
    }

    /// Null if there is no such id.
    const Value* find(UnitId::UnitId id) const noexcept
    {
        // A negative id becomes a slot far beyond the last.
        const auto slot = static_cast<std::uint32_t>(id);
        return slot < m_by_id.size() ? m_by_id[slot] : nullptr;
    }

    std::size_t size() const noexcept { return m_entries.size(); }
    auto begin() const noexcept { return m_entries.begin(); }
    auto end() const noexcept { return m_entries.end(); }

private:
    std::deque<Entry> m_entries; ///< Entries never move: m_by_id points at them.
    std::vector<const Value*> m_by_id;
};

} // namespace v1
} // namespace vrn::units
