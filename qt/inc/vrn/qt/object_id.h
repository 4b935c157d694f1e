#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace vrn::qt {

/// Names one object for as long as the program runs: a kind, and a key of the
/// application's choice. The key is not given to another object of the kind, not even after
/// the first one has been deleted. So undoing a deletion brings back the same id, and what
/// was recorded under it holds again. A row number is not a key.
struct ObjectId
{
    std::uint64_t key = 0;
    std::uint32_t kind = 0; ///< As PropertyModel::addKind() returned it; 0 is the first.

    constexpr ObjectId() = default;
    // Implicit: most programs have one kind, and write {1, 2, 3}.
    constexpr ObjectId(std::uint64_t theKey, std::uint32_t theKind = 0)
        : key(theKey)
        , kind(theKind)
    {}

    friend constexpr bool operator==(const ObjectId& a, const ObjectId& b)
    {
        return a.key == b.key && a.kind == b.kind;
    }
    friend constexpr bool operator!=(const ObjectId& a, const ObjectId& b) { return !(a == b); }
    friend constexpr bool operator<(const ObjectId& a, const ObjectId& b)
    {
        return std::tie(a.kind, a.key) < std::tie(b.kind, b.key);
    }
};

using ObjectIds = std::vector<ObjectId>;
using PropertyKeys = std::vector<std::string>;

/// Ids that do not change, and that copies share. It reads as an ObjectIds does.
class SharedIds
{
public:
    SharedIds() = default;
    // Implicit, like the conversion back.
    SharedIds(ObjectIds ids)
        : m_ids(std::make_shared<const ObjectIds>(std::move(ids)))
    {}
    SharedIds(std::initializer_list<ObjectId> ids)
        : SharedIds(ObjectIds(ids))
    {}

    operator const ObjectIds&() const { return get(); }
    const ObjectIds& get() const
    {
        static const ObjectIds none;
        return m_ids ? *m_ids : none;
    }

    ObjectIds::const_iterator begin() const { return get().begin(); }
    ObjectIds::const_iterator end() const { return get().end(); }
    std::size_t size() const { return get().size(); }
    bool empty() const { return get().empty(); }
    const ObjectId& operator[](std::size_t i) const { return get()[i]; }

private:
    std::shared_ptr<const ObjectIds> m_ids;
};

} // namespace vrn::qt
