#pragma once

#include "definitions/id_map_p.h"

#include <vrn/units/unit_format.h>

#include <array>
#include <vector>

namespace vrn::units {
inline namespace v1 {

/// For each unit set, its format in each of the ten unit systems.
const IdMap<std::array<UnitFormat, 10>>& get_default_formats();

/// For each unit, the unit itself in its default format.
const IdMap<UnitFormat>& get_unit_formats();

/// For each unit set, the units in which it may be written, in the order of the table.
const IdMap<std::vector<UnitId::UnitId>>& get_set_units();

} // namespace v1
} // namespace vrn::units
