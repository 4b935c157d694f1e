#pragma once

#include <vrn/units/unit_id.h>
#include <vrn/units/vrn_units_export.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

/// The tables of this library, for programs that list units and kinds of quantity.
/// To convert, read and write quantities, use Context.
namespace vrn::units {
inline namespace v1 {

/// One unit.
struct UnitRecord
{
    UnitId::UnitId id = UnitId::BLANK;
    bool is_base = false; ///< Stands for the base scale of its family; for display only.
    std::uint32_t dimension = 0; ///< See IUnitProvider::get_dimension.
    std::int32_t precision = 0; ///< Default digits, plus 100 times the default format.
    double factor = 1.0; ///< From this unit to the base scale.
    std::string symbol; ///< UTF-8. Not unique: several units may share a symbol.
    std::vector<std::string> alternative_symbols;
};

/// How a unit set is shown in one unit system.
struct UnitSetDefault
{
    std::int32_t unit = 0; ///< The display unit.
    std::int32_t precision = 0; ///< Digits, plus 100 times the format.
};

/// One unit set, which is a kind of quantity.
struct UnitSetRow
{
    std::int32_t id = 0;
    const char* name = ""; ///< The key of the set, such as "GEO_LENGTH".
    const char* symbol = ""; ///< The short formula letter; not unique.
    std::array<UnitSetDefault, 10> defaults; ///< One for each unit system.
    std::array<std::int32_t, 15> compatible_units; ///< The first 0, if any, ends the list.
};

/// All units, in table order.
VRN_UNITS_EXPORT std::vector<UnitRecord> list_units();

/// All unit sets, in the order of their ids.
VRN_UNITS_EXPORT std::vector<UnitSetRow> list_unit_sets();

} // namespace v1
} // namespace vrn::units
