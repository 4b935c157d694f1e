#pragma once

#include <vrn/units/i_format_provider.h>
#include <vrn/units/i_unit_provider.h>

#include <string>

namespace vrn::units {
inline namespace v1 {

/// What is written after the values of `id`: the symbol of its display unit, or the
/// label that its format asks for. A label must be one of the spellings that the unit
/// has, or empty to hide the unit; any other is ignored.
std::string display_label(
    const IUnitProvider& unit_provider, const IFormatProvider& format_provider, UnitId::UnitId id);

} // namespace v1
} // namespace vrn::units
