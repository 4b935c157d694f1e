#pragma once

#include <vrn/qt/property_error.h>
#include <vrn/qt/property_model.h>

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

namespace vrn::qt {

namespace detail {

/// The part of an edit, or of a read, that concerns one kind.
struct IdRange
{
    const ObjectId* ids;
    std::size_t first; ///< The place of ids[0].
    std::size_t count;
};

/// Objects of one kind.
class VRN_QT2_EXPORT ObjectAccess
{
public:
    virtual ~ObjectAccess();

    ObjectAccess(const ObjectAccess&) = delete;
    ObjectAccess& operator=(const ObjectAccess&) = delete;

    virtual void read(const PropertyKeys& keys, const IdRange& range, PropertySink& sink) const = 0;
    virtual void write(const PropertyEdit& edit, const IdRange& range,
        std::vector<std::unique_ptr<Rollback>>& rollbacks) const = 0;
    /// True if it has written, which could not throw and need not be checked.
    virtual bool writePlain(const PropertyEdit& edit, const IdRange& range) const = 0;
    /// Throws PropertyError if an object does not meet a requirement.
    virtual void check(const std::string& key, const IdRange& range) const = 0;
    virtual ObjectIds objects() const = 0;

protected:
    ObjectAccess() = default;
};

} // namespace detail

/// A model of objects of C++ classes, which the application keeps wherever it likes:
///
///     PropertySet<Beam> beams("beam", [](int n) { return tr("%n beam(s)", nullptr, n); });
///     beams.add("depth", tr("&Depth"), &Beam::depth, field::number());
///     ObjectModel objects;
///     objects.addKind(beams, [this](ObjectId id) {
///         return id.key < selection.size() ? &selection[id.key] : nullptr;
///     });
///     const QString depth = objects.text(1, "depth"); // "3.333"
///
/// The functions of a PropertySet must not add or remove objects.
class VRN_QT2_EXPORT ObjectModel : public PropertyModel
{
    Q_OBJECT

public:
    explicit ObjectModel(QObject* parent = nullptr);
    ~ObjectModel() override;

    /// `find` gives the object of an id, or null. A pointer is not kept beyond a call.
    /// `objects`, if there is one, gives the ids of all.
    template <typename T, typename Find>
    std::uint32_t addKind(
        const PropertySet<T>& properties, Find find, std::function<ObjectIds()> objects = {})
    {
        static_assert(std::is_invocable_r_v<T*, Find, ObjectId>, "an ObjectId gives a T*");
        return addAccess(properties,
            std::make_unique<Access<T, Find>>(properties, std::move(find), std::move(objects)));
    }

    /// The objects of a map, by key. It has to outlive the use of the model. Announce what
    /// comes and goes.
    template <typename T>
    std::uint32_t addKind(const PropertySet<T>& properties, std::map<std::uint64_t, T>* objects)
    {
        const auto kind = kindCount();
        return addKind(
            properties,
            [objects](ObjectId id) {
                const auto object = objects->find(id.key);
                return object == objects->end() ? nullptr : &object->second;
            },
            [objects, kind] {
                ObjectIds ids;
                ids.reserve(objects->size());
                for (const auto& object : *objects)
                    ids.emplace_back(object.first, kind);
                return ids;
            });
    }

    void read(const PropertyKeys& keys, const ObjectIds& ids, PropertySink& sink) const override;
    ObjectIds objects(std::uint32_t kind) const override;

protected:
    void write(const std::vector<PropertyEdit>& edits) override;

private:
    template <typename T, typename Find>
    class Access;

    std::uint32_t addAccess(
        const PropertyList& properties, std::unique_ptr<detail::ObjectAccess> access);
    const detail::ObjectAccess* access(std::uint32_t kind) const;

    std::map<std::uint32_t, std::unique_ptr<detail::ObjectAccess>> m_access;
};

template <typename T, typename Find>
class ObjectModel::Access final : public detail::ObjectAccess
{
public:
    Access(const PropertySet<T>& properties, Find find, std::function<ObjectIds()> objects)
        : m_properties(properties)
        , m_find(std::move(find))
        , m_objects(std::move(objects))
    {}

    void read(
        const PropertyKeys& keys, const detail::IdRange& range, PropertySink& sink) const override
    {
        std::vector<const detail::Accessor<T>*> accessors;
        for (const std::string& key : keys)
            accessors.push_back(accessorOf(key));
        forEachPart(range, [&](T* const* objects, const detail::Places& places) {
            for (std::size_t key = 0; key < keys.size(); ++key) {
                if (accessors[key] && sink.wants(key))
                    accessors[key]->read(objects, places, key, sink);
            }
        });
    }

    bool writePlain(const PropertyEdit& edit, const detail::IdRange& range) const override
    {
        const detail::Accessor<T>* accessor = accessorOf(edit.key);
        if (!accessor || accessor->canThrow() || isRequired(edit.key))
            return false;
        forEachPart(range, [&](T* const* objects, const detail::Places& places) {
            accessor->writeForGood(objects, places, edit.values);
        });
        return true;
    }

    void write(const PropertyEdit& edit, const detail::IdRange& range,
        std::vector<std::unique_ptr<detail::Rollback>>& rollbacks) const override
    {
        const detail::Accessor<T>* accessor = accessorOf(edit.key);
        if (!accessor)
            return;
        const Found found(*this, range);
        rollbacks.emplace_back();
        accessor->write(found.objects.data(), found.places, edit.values, rollbacks.back());
    }

    void check(const std::string& key, const detail::IdRange& range) const override
    {
        if (!isRequired(key))
            return;
        const Found found(*this, range);
        for (const auto& requirement : m_properties.requirements()) {
            if (!isAbout(requirement, key))
                continue;
            for (const T* object : found.objects) {
                const QString reason = requirement.reasonAgainst(*object);
                if (!reason.isEmpty())
                    throw PropertyError(reason);
            }
        }
    }

    ObjectIds objects() const override { return m_objects ? m_objects() : ObjectIds(); }

private:
    /// Objects that are there, and their places among all ids.
    struct Found
    {
        Found(const Access& access, const detail::IdRange& range)
        {
            for (std::size_t i = 0; i < range.count; ++i) {
                if (T* object = access.m_find(range.ids[i])) {
                    objects.push_back(object);
                    there.push_back(range.first + i);
                }
            }
            places = {range.first, objects.size(), there.data()};
        }

        Found(const Found&) = delete;
        Found& operator=(const Found&) = delete;

        std::vector<T*> objects;
        std::vector<std::size_t> there;
        detail::Places places;
    };

    /// How many are there before the first one that is not. `found` is nothing that m_find
    /// looks at, so that the compiler need not read anew where its container begins and ends.
    std::size_t findWhileThere(const detail::IdRange& range, T** __restrict found) const
    {
        std::size_t count = 0;
        while (count < range.count && (found[count] = m_find(range.ids[count])))
            ++count;
        return count;
    }

    /// In parts that stay in the cache while all of their properties are read.
    template <typename Use>
    void forEachPart(const detail::IdRange& range, const Use& use) const
    {
        constexpr std::size_t most = 512;
        std::array<T*, most> objects; // filled before it is used
        for (std::size_t done = 0; done < range.count; done += most) {
            const detail::IdRange part{
                range.ids + done, range.first + done, std::min(most, range.count - done)};
            const std::size_t count = findWhileThere(part, objects.data());
            if (count == part.count) {
                use(objects.data(), detail::Places{part.first, count, nullptr});
            } else {
                const Found found(*this, part);
                use(found.objects.data(), found.places);
            }
        }
    }

    using Requirement = typename PropertySet<T>::Requirement;
    static bool isAbout(const Requirement& requirement, const std::string& key)
    {
        return std::find(requirement.keys.begin(), requirement.keys.end(), key)
            != requirement.keys.end();
    }
    bool isRequired(const std::string& key) const
    {
        const auto& all = m_properties.requirements();
        return std::any_of(
            all.begin(), all.end(), [&](const Requirement& each) { return isAbout(each, key); });
    }

    const detail::Accessor<T>* accessorOf(const std::string& key) const
    {
        const PropertyDescription* property = m_properties.find(key);
        if (!property)
            return nullptr;
        const auto place = property - m_properties.properties().data();
        return m_properties.accessors()[static_cast<std::size_t>(place)].get();
    }

    PropertySet<T> m_properties;
    Find m_find;
    std::function<ObjectIds()> m_objects;
};

} // namespace vrn::qt
