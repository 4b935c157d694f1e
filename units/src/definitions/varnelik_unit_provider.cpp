#include <vrn/units/varnelik_unit_provider.h>

#include "definitions/unit_facts_p.h"

#include <stdexcept>

namespace vrn::units {
inline namespace v1 {
namespace {

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
