#include "definitions/unit_facts_p.h"

#include "definitions/unit_records_p.h"
#include "unitset/unit_formats_p.h"

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

} // namespace

const IdMap<UnitFacts>& get_unit_facts()
{
    static const IdMap<UnitFacts> facts = make_unit_facts();
    return facts;
}

} // namespace v1
} // namespace vrn::units
