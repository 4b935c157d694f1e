#pragma once

#include <vrn/units/unit_id.h>

#include <string>
#include <vector>

/// Finds ids by what a user writes. A decimal number is the id itself, even if the unit
/// library does not know it: the library refuses it later.
namespace vrn::quantity_tool {

/// The kind with that name, such as "GEO_LENGTH". Throws UsageError if there is none.
units::UnitId::UnitId find_kind(const std::string& text);

/// The units with that symbol, in table order: several may share one. Throws UsageError
/// if there is none.
std::vector<units::UnitId::UnitId> find_units(const std::string& text);

} // namespace vrn::quantity_tool
