#pragma once

#include "definitions/id_map_p.h"

#include <vrn/units/catalogue.h>

namespace vrn::units {
inline namespace v1 {

/// All units, in table order.
const IdMap<UnitRecord>& get_unit_records();

/// For each unit that shares its symbol with others: the ids of all that have it, in
/// table order. Alternative symbols do not count.
const IdMap<std::vector<UnitId::UnitId>>& get_same_symbol_groups();

} // namespace v1
} // namespace vrn::units
