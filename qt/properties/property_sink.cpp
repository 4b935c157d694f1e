#include <vrn/qt/property_sink.h>

#include <vrn/assert/smart_assert.h>
#include <vrn/qt/property_error.h>

#include <QCoreApplication>

#include <algorithm>

namespace vrn::qt {

PropertySink::PropertySink(const ObjectIds& ids)
    : m_ids(ids)
{}

PropertySink::~PropertySink() = default;

bool PropertySink::wants(std::size_t key) const
{
    if (key >= m_slots.size())
        return false;
    const Slot& slot = m_slots[key];
    return slot.column || (slot.summary && !slot.summary->varies);
}

void PropertySink::put(std::size_t key, ObjectId object, const boost::any& value)
{
    if (!putAt(key, object, value)) {
        VRN_ASSERT_MESSAGE(false, "a value has the type of its field")
        ("type", value.type().name());
        putAt(key, object, boost::any());
    }
}

void PropertySink::put(std::size_t key, ObjectId object, const QVariant& value)
{
    if (!putAt(key, object, value)) {
        throw PropertyError(
            QCoreApplication::translate("PropertySink", "\"%1\" is not a value of this property.")
                .arg(value.toString()));
    }
}

template <typename Value>
bool PropertySink::putAt(std::size_t key, ObjectId object, const Value& value)
{
    const std::size_t place = placeOf(object);
    if (key >= m_slots.size() || place == m_ids.size())
        return true;
    Slot& slot = m_slots[key];
    if (slot.column)
        return slot.column->set(place, value);
    return !slot.summary || slot.summary->put(value);
}

bool PropertySink::takes(std::size_t key, const std::type_info& type) const
{
    if (key >= m_slots.size())
        return false;
    const Slot& slot = m_slots[key];
    const std::type_info* wanted = slot.column ? &slot.column->type()
        : slot.summary                         ? &slot.summary->type()
                                               : nullptr;
    if (!wanted)
        return false;
    VRN_ASSERT_MESSAGE(*wanted == type, "a value has the type of its field")("type", type.name());
    return *wanted == type;
}

std::size_t PropertySink::placeOf(ObjectId object)
{
    // Most models put object by object, or property by property.
    for (const std::size_t place : {m_lastPlace, m_lastPlace + 1}) {
        if (place < m_ids.size() && m_ids[place] == object)
            return m_lastPlace = place;
    }
    const auto found = std::lower_bound(m_ids.begin(), m_ids.end(), object);
    if (found == m_ids.end() || *found != object)
        return m_ids.size();
    return m_lastPlace = std::size_t(found - m_ids.begin());
}

} // namespace vrn::qt
