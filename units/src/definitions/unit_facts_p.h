#pragma once

#include "definitions/id_map_p.h"

#include <vrn/units/i_unit_provider.h>

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

/// The facts of all units and unit sets, if `provider` answers from them: it is the
/// library's own, and its table never changes. Null for any other. Implemented in
/// unitset/, where units and unit sets meet.
const IdMap<UnitFacts>* table_of(const IUnitProvider& provider);

} // namespace v1
} // namespace vrn::units
