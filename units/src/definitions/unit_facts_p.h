#pragma once

#include "definitions/id_map_p.h"

#include <cstdint>
#include <string>
#include <vector>

namespace vrn::units {
inline namespace v1 {

/// What VarnelikUnitProvider answers for one unit or unit set. The pointers stay valid
/// until the process ends.
struct UnitFacts
{
    double factor;
    std::uint32_t dimension;
    const std::vector<UnitId::UnitId>* compatible_units;
    const std::string* symbol;
    const std::vector<std::string>* alternative_symbols; ///< Null for a unit set.
};

/// Implemented by VarnelikUnitProvider in unitset/, where units and unit sets meet.
IdMap<UnitFacts> make_unit_facts();

/// All units, then all unit sets, each in table order. This is inline because each
/// keystroke asks it several times.
inline const IdMap<UnitFacts>& get_unit_facts()
{
    static const IdMap<UnitFacts> facts = make_unit_facts();
    return facts;
}

} // namespace v1
} // namespace vrn::units
