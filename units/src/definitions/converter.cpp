#include <vrn/units/converter.h>

#include <vrn/assert/smart_assert.h>

#include <algorithm>
#include <stdexcept>

namespace vrn::units {
inline namespace v1 {
namespace {

bool contains(const std::vector<UnitId::UnitId>& ids, UnitId::UnitId id)
{
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

} // namespace

IConverter::~IConverter() = default;

void Converter::set_unit_provider(const IUnitProvider* unit_provider)
{
    m_unit_provider = unit_provider;
}

const IUnitProvider& Converter::unit_provider() const
{
    if (!m_unit_provider)
        throw std::logic_error("No unit provider set.");
    return *m_unit_provider;
}

bool Converter::can_convert(UnitId::UnitId from, UnitId::UnitId to) const
{
    const IUnitProvider& units = unit_provider();
    if (from == to)
        return true;
    const auto& units_of_from = units.get_compatible_units(from);
    const auto& units_of_to = units.get_compatible_units(to);
    if (!units_of_from.empty())
        return contains(units_of_from, to);
    if (!units_of_to.empty())
        return contains(units_of_to, from);
    return units.get_dimension(from) == units.get_dimension(to);
}

IConverter::quantity Converter::convert(quantity q, UnitId::UnitId unit_id) const
{
    if (!can_convert(q.unit_id, unit_id)) {
        VRN_ASSERT(can_convert(q.unit_id, unit_id))
        ("q.unit_id", q.unit_id)("unit_id", unit_id);
        throw std::invalid_argument("Incompatible units.");
    }
    const IUnitProvider& units = unit_provider();
    // The reciprocal is part of the result: a division would round differently.
    const double in_base_scale = units.get_factor(q.unit_id) * q.value;
    return {unit_id, in_base_scale * (1.0 / units.get_factor(unit_id))};
}

double Converter::to_base(quantity q) const
{
    return unit_provider().get_factor(q.unit_id) * q.value;
}

IConverter::quantity Converter::from_base(double value, UnitId::UnitId unit_id) const
{
    return {unit_id, value / unit_provider().get_factor(unit_id)};
}

} // namespace v1
} // namespace vrn::units
