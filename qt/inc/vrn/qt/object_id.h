#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <tuple>
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

} // namespace vrn::qt
