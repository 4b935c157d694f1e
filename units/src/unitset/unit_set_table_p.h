#pragma once

#include <vrn/units/catalogue.h>

#include <array>

namespace vrn::units {
inline namespace v1 {

/// All unit sets, in the order of their ids.
extern const std::array<UnitSetRow, 135> unitSetTable;

} // namespace v1
} // namespace vrn::units
