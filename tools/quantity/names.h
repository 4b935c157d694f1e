#pragma once

#include <vrn/units/unit_id.h>

#include <string>
#include <vector>

/// Ids by what a user writes for them. A decimal number is the id itself, whether
/// or not the unit library knows it: the library has its own answer to that.
namespace vrn::quantity_tool {

/// The kind of that name, such as "GEO_LENGTH". Throws UsageError if there is none.
units::UnitId::UnitId find_kind(const std::string& text);

/// The units of that symbol, in table order: one symbol may serve several. Throws
/// UsageError if there is none.
std::vector<units::UnitId::UnitId> find_units(const std::string& text);

} // namespace vrn::quantity_tool
