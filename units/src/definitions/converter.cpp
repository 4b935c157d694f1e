#include <vrn/units/converter.h>

#include "definitions/unit_facts_p.h"

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

// The reciprocal is part of the result: a division would round differently.
double converted(double value, double factor, double other_factor)
{
    return factor * value * (1.0 / other_factor);
}

bool are_compatible(
    UnitId::UnitId from, const UnitFacts& from_facts, UnitId::UnitId to, const UnitFacts& to_facts)
{
    if (from == to)
        return true;
    if (!from_facts.compatible_units->empty())
        return contains(*from_facts.compatible_units, to);
    if (!to_facts.compatible_units->empty())
        return contains(*to_facts.compatible_units, from);
    return from_facts.dimension == to_facts.dimension;
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

boost::optional<IConverter::quantity> Converter::try_convert(
    quantity q, UnitId::UnitId unit_id) const
{
    const IUnitProvider& units = unit_provider();
    // To read the table is faster than several calls of the provider.
    if (const IdMap<UnitFacts>* table = table_of(units)) {
        const UnitFacts* from = table->find(q.unit_id);
        const UnitFacts* to = table->find(unit_id);
        // The provider refuses an unknown id.
        if (from && to) {
            if (!are_compatible(q.unit_id, *from, unit_id, *to))
                return boost::none;
            return quantity{unit_id, converted(q.value, from->factor, to->factor)};
        }
    }
    if (!can_convert(q.unit_id, unit_id))
        return boost::none;
    return quantity{
        unit_id, converted(q.value, units.get_factor(q.unit_id), units.get_factor(unit_id))};
}

IConverter::quantity Converter::convert(quantity q, UnitId::UnitId unit_id) const
{
    if (const auto result = try_convert(q, unit_id))
        return *result;
    VRN_ASSERT(can_convert(q.unit_id, unit_id))("q.unit_id", q.unit_id)("unit_id", unit_id);
    throw std::invalid_argument("Incompatible units.");
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
