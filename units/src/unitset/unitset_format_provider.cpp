#include <vrn/units/unitset_format_provider.h>

#include "unitset/unit_formats_p.h"

#include <vrn/assert/smart_assert.h>

#include <stdexcept>
#include <utility>

namespace vrn::units {
inline namespace v1 {
namespace {

/// The format of a unit set in a unit system, or null if the id is not a unit set.
const UnitFormat* find_default_format(std::int32_t system_index, UnitId::UnitId id)
{
    const auto* defaults_of_one_unit = get_default_formats().find(id);
    if (!defaults_of_one_unit)
        return nullptr;
    const auto index = static_cast<std::uint32_t>(system_index);
    if (index < defaults_of_one_unit->size())
        return &(*defaults_of_one_unit)[index];
    VRN_ASSERT(index < defaults_of_one_unit->size())("system_index", system_index)("id", id);
    return nullptr;
}

bool is_unit_id(UnitId::UnitId id)
{
    return id >= 0 && id < 1000;
}

void require_unit_id(UnitId::UnitId id)
{
    if (!is_unit_id(id))
        throw std::invalid_argument("Invalid unit id.");
}

} // namespace

IFormatProvider::~IFormatProvider() = default;

UnitsetFormatProvider::UnitsetFormatProvider(
    std::int32_t system_index, std::map<std::int32_t, UnitFormat> overrides)
    : m_system_index(system_index)
    , m_overrides(std::move(overrides))
{}

UnitsetFormatProvider::~UnitsetFormatProvider() = default;

UnitsetFormatProvider::UnitsetFormatProvider(const UnitsetFormatProvider& other) = default;

UnitsetFormatProvider::UnitsetFormatProvider(UnitsetFormatProvider&& other) noexcept = default;

// The copy may throw; the move does not.
UnitsetFormatProvider& UnitsetFormatProvider::operator=(const UnitsetFormatProvider& other)
{
    return *this = UnitsetFormatProvider(other);
}

UnitsetFormatProvider& UnitsetFormatProvider::operator=(
    UnitsetFormatProvider&& other) noexcept = default;

const UnitFormat* UnitsetFormatProvider::find_entry(UnitId::UnitId id) const
{
    const auto found = m_overrides.find(id);
    if (found != m_overrides.end())
        return &found->second;
    // The defaults of a system are for unit sets only.
    return is_unit_id(id) ? nullptr : find_default_format(m_system_index, id);
}

UnitFormat& UnitsetFormatProvider::override_of(UnitId::UnitId id)
{
    const UnitFormat* entry = find_entry(id);
    return m_overrides.try_emplace(id, entry ? *entry : UnitFormat{}).first->second;
}

bool UnitsetFormatProvider::is_known(UnitId::UnitId id) const
{
    return find_entry(id) || is_unit_id(id);
}

UnitId::UnitId UnitsetFormatProvider::get_unit(UnitId::UnitId id) const
{
    if (const UnitFormat* entry = find_entry(id))
        return entry->unit_id;
    require_unit_id(id);
    return id;
}

void UnitsetFormatProvider::set_unit(UnitId::UnitId id, UnitId::UnitId unit)
{
    override_of(id).unit_id = unit;
}

std::int32_t UnitsetFormatProvider::get_precision(UnitId::UnitId id) const
{
    if (const UnitFormat* entry = find_entry(id))
        return entry->precision;
    if (const UnitFormat* format_of_unit = get_unit_formats().find(id))
        return format_of_unit->precision;
    throw std::invalid_argument("Invalid unit id.");
}

void UnitsetFormatProvider::set_precision(UnitId::UnitId id, std::int32_t precision)
{
    override_of(id).precision = precision;
}

std::int32_t UnitsetFormatProvider::get_format(UnitId::UnitId id) const
{
    if (const UnitFormat* entry = find_entry(id))
        return entry->format;
    require_unit_id(id);
    const UnitFormat* format_of_unit = get_unit_formats().find(id);
    return format_of_unit ? format_of_unit->format : 0;
}

void UnitsetFormatProvider::set_format(UnitId::UnitId id, std::int32_t format)
{
    override_of(id).format = format;
}

boost::optional<std::string> UnitsetFormatProvider::get_label(UnitId::UnitId id) const
{
    if (const UnitFormat* entry = find_entry(id)) {
        if (entry->label.is_nothing())
            return boost::none;
        return entry->label.value();
    }
    require_unit_id(id);
    return boost::none;
}

void UnitsetFormatProvider::set_label(UnitId::UnitId id, const boost::optional<std::string>& label)
{
    ::bond::maybe<std::string> text;
    if (label)
        text.set_value(*label);
    // Everything that may throw comes before the change.
    override_of(id).label = std::move(text);
}

} // namespace v1
} // namespace vrn::units
