#include <vrn/units/varnelik_unit_provider.h>

#include "definitions/unit_facts_p.h"
#include "definitions/unit_records_p.h"
#include "unitset/unit_formats_p.h"

#include <stdexcept>
#include <typeinfo>

namespace vrn::units {
inline namespace v1 {

namespace {

IdMap<UnitFacts> make_unit_facts()
{
    static const std::vector<UnitId::UnitId> no_units;
    static const std::string no_symbol;

    IdMap<UnitFacts> facts;
    for (const auto& [id, unit] : get_unit_records()) {
        facts.emplace(
            id, {unit.factor, unit.dimension, &no_units, &unit.symbol, &unit.alternative_symbols});
    }
    for (const auto& [id, units] : get_set_units()) {
        const std::uint32_t dimension = facts.find(units.front())->dimension;
        facts.emplace(id, {1.0, dimension, &units, &no_symbol, nullptr});
    }
    return facts;
}

// All units, then all unit sets, each in table order.
const IdMap<UnitFacts>& get_unit_facts()
{
    static const IdMap<UnitFacts> facts = make_unit_facts();
    return facts;
}

std::vector<UnitId::UnitId> gather_all_ids()
{
    std::vector<UnitId::UnitId> ids;
    ids.reserve(get_unit_facts().size());
    for (const auto& [id, facts] : get_unit_facts())
        ids.push_back(id);
    return ids;
}

const UnitFacts& unit_facts(UnitId::UnitId unit_id)
{
    if (const UnitFacts* facts = get_unit_facts().find(unit_id))
        return *facts;
    throw std::invalid_argument("unit_id");
}

} // namespace

const IdMap<UnitFacts>* table_of(const IUnitProvider& provider)
{
    return typeid(provider) == typeid(VarnelikUnitProvider) ? &get_unit_facts() : nullptr;
}

IUnitProvider::~IUnitProvider() = default;

bool VarnelikUnitProvider::is_known(UnitId::UnitId unit_id) const
{
    return get_unit_facts().find(unit_id) != nullptr;
}

std::vector<UnitId::UnitId> VarnelikUnitProvider::get_all_ids() const
{
    static const std::vector<UnitId::UnitId> ids = gather_all_ids();
    return ids;
}

std::uint32_t VarnelikUnitProvider::get_dimension(UnitId::UnitId unit_id) const
{
    return unit_facts(unit_id).dimension;
}

double VarnelikUnitProvider::get_factor(UnitId::UnitId unit_id) const
{
    return unit_facts(unit_id).factor;
}

const std::string& VarnelikUnitProvider::get_symbol(UnitId::UnitId unit_id) const
{
    return *unit_facts(unit_id).symbol;
}

const std::vector<std::string>& VarnelikUnitProvider::get_alternative_symbols(
    UnitId::UnitId unit_id) const
{
    const UnitFacts& facts = unit_facts(unit_id);
    if (!facts.alternative_symbols)
        throw std::invalid_argument("unit_id");
    return *facts.alternative_symbols;
}

const std::vector<UnitId::UnitId>& VarnelikUnitProvider::get_compatible_units(
    UnitId::UnitId unit_id) const
{
    return *unit_facts(unit_id).compatible_units;
}

} // namespace v1
} // namespace vrn::units
