#pragma once

#include <vrn/qt/object_id.h>
#include <vrn/qt/value_type.h>

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

namespace vrn::qt {

/// Takes the values that a model reads, in any order of properties and objects:
///
///     struct Rows : public PropertyModel
///     {
///         void read(const PropertyKeys& keys, const ObjectIds& ids, PropertySink& sink)
///             const override
///         {
///             for (std::size_t key = 0; key < keys.size(); ++key) {
///                 for (const ObjectId& id : ids)
///                     sink.put(key, id, 12.5 + double(id.key));
///             }
///         }
///         void write(const std::vector<PropertyEdit>&) override {}
///     };
///
/// Properties are counted as they stand in the keys that are read. An id that was not asked
/// for is ignored. A value of another type than that of the field is reported, and the
/// object then has no value.
class VRN_QT2_EXPORT PropertySink
{
public:
    PropertySink(const PropertySink&) = delete;
    PropertySink& operator=(const PropertySink&) = delete;
    ~PropertySink();

    /// False once no further value of the property changes the answer. A model may ask, to
    /// save time.
    bool wants(std::size_t key) const;

    /// An empty value says that the object has none.
    void put(std::size_t key, ObjectId object, const boost::any& value);
    /// Brought to the type of the field; null says that the object has no value. Throws
    /// PropertyError for a variant that cannot be converted, such as a text for a number.
    void put(std::size_t key, ObjectId object, const QVariant& value);
    template <typename T>
    void put(std::size_t key, ObjectId object, const T& value)
    {
        put(key, object, boost::any(value));
    }

    /// The values of many objects at once, unboxed. `get` gives the value of each place, of
    /// the type V, one that is read as V, or an optional of these. See ObjectModel.
    template <typename V, typename Get>
    void putEach(std::size_t key, const detail::Places& places, const Get& get);

private:
    friend class PropertyModel;

    /// One of both; neither, if no kind has the property.
    struct Slot
    {
        std::shared_ptr<detail::ValueColumn> column;
        std::unique_ptr<detail::ValueSummary> summary;
    };

    explicit PropertySink(const ObjectIds& ids);
    bool takes(std::size_t key, const std::type_info& type) const;
    template <typename Value>
    bool putAt(std::size_t key, ObjectId object, const Value& value);
    /// Where the id stands among the ids that were asked for; their count if it is not one of them.
    std::size_t placeOf(ObjectId object);

    const ObjectIds& m_ids;
    std::size_t m_lastPlace = 0;
    std::vector<Slot> m_slots;
};

template <typename V, typename Get>
void PropertySink::putEach(std::size_t key, const detail::Places& places, const Get& get)
{
    if (!takes(key, typeid(V)))
        return;
    Slot& slot = m_slots[key];
    if (slot.summary) {
        static_cast<detail::TypedSummary<V>&>(*slot.summary).putEach(places, get);
        return;
    }
    using Stored = detail::Stored<std::decay_t<decltype(get(0))>>;
    auto& column = static_cast<detail::TypedColumn<V>&>(*slot.column);
    if (!Stored::isOptional && !places.each) {
        // All have a value, which leaves a tight loop.
        auto* cell = column.cells.data() + places.first;
        for (std::size_t i = 0; i < places.count; ++i)
            cell[i].value = Stored::value(get(i));
        std::fill_n(column.presence.begin() + std::ptrdiff_t(places.first), places.count,
            detail::Presence::Value);
        return;
    }
    for (std::size_t i = 0; i < places.count; ++i) {
        const std::size_t place = places[i];
        decltype(auto) raw = get(i);
        const bool hasValue = Stored::hasValue(raw);
        if (hasValue)
            column.cells[place].value = Stored::value(raw);
        column.presence[place] = hasValue ? detail::Presence::Value : detail::Presence::NoValue;
    }
}

} // namespace vrn::qt
