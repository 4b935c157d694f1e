#include <vrn/qt/object_model.h>

#include <vrn/assert/smart_assert.h>

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
        std::size_t end = first;
        while (end < ids.size() && ids[end].kind == ids[first].kind)
            ++end;
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
