#include <vrn/qt/object_model.h>

#include <vrn/assert/smart_assert.h>

#include <algorithm>
#include <limits>

namespace vrn::qt {

namespace detail {

ObjectAccess::~ObjectAccess() = default;

} // namespace detail

namespace {

/// Calls `use` with each kind among the ids.
template <typename Use>
void forEachKind(const ObjectIds& ids, const Use& use)
{
    for (std::size_t first = 0; first < ids.size();) {
        const ObjectId last(std::numeric_limits<std::uint64_t>::max(), ids[first].kind);
        const auto from = ids.begin() + std::ptrdiff_t(first);
        const auto end = std::size_t(std::upper_bound(from, ids.end(), last) - ids.begin());
        use(ids[first].kind, detail::IdRange{ids.data() + first, first, end - first});
        first = end;
    }
}

} // namespace

ObjectModel::ObjectModel(QObject* parent)
    : PropertyModel(parent)
{}

ObjectModel::~ObjectModel() = default;

std::uint32_t ObjectModel::addAccess(
    const PropertyList& properties, std::unique_ptr<detail::ObjectAccess> access)
{
    const std::uint32_t kind = PropertyModel::addKind(properties);
    m_access[kind] = std::move(access);
    return kind;
}

const detail::ObjectAccess* ObjectModel::access(std::uint32_t kind) const
{
    const auto found = m_access.find(kind);
    return found == m_access.end() ? nullptr : found->second.get();
}

void ObjectModel::read(const PropertyKeys& keys, const ObjectIds& ids, PropertySink& sink) const
{
    forEachKind(ids, [&](std::uint32_t kind, const detail::IdRange& range) {
        if (const detail::ObjectAccess* objects = access(kind))
            objects->read(keys, range, sink);
    });
}

ObjectIds ObjectModel::objects(std::uint32_t kind) const
{
    const detail::ObjectAccess* objects = access(kind);
    return objects ? objects->objects() : ObjectIds();
}

void ObjectModel::write(const std::vector<PropertyEdit>& edits)
{
    // Most edits: one property of one kind.
    if (edits.size() == 1 && !edits[0].ids.empty()
        && edits[0].ids.get().front().kind == edits[0].ids.get().back().kind) {
        const ObjectIds& ids = edits[0].ids;
        const detail::ObjectAccess* objects = access(ids.front().kind);
        if (objects && objects->writePlain(edits[0], {ids.data(), 0, ids.size()}))
            return;
    }

    std::vector<std::unique_ptr<detail::Rollback>> rollbacks;
    try {
        for (const PropertyEdit& edit : edits) {
            forEachKind(edit.ids, [&](std::uint32_t kind, const detail::IdRange& range) {
                if (const detail::ObjectAccess* objects = access(kind))
                    objects->write(edit, range, rollbacks);
            });
        }
        // After all edits, because a requirement may tie one property to another.
        for (const PropertyEdit& edit : edits) {
            forEachKind(edit.ids, [&](std::uint32_t kind, const detail::IdRange& range) {
                if (const detail::ObjectAccess* objects = access(kind))
                    objects->check(edit.key, range);
            });
        }
    } catch (...) {
        while (!rollbacks.empty()) {
            try {
                if (rollbacks.back())
                    rollbacks.back()->run();
            } catch (...) {
                VRN_ASSERT_MESSAGE(false, "a setter takes back what its getter gave");
            }
            rollbacks.pop_back();
        }
        throw;
    }
}

} // namespace vrn::qt
