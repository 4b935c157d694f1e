#pragma once

#include <vrn/units/unit_id.h>
#include <vrn/units/vrn_units_export.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vrn::units {
inline namespace v1 {

/// What is known about units and unit sets, by id.
///
/// A unit set is a kind of quantity, such as UnitId::GEO_LENGTH. It has no
/// symbol, the factor 1, and a list of the units in which it may be written.
///
/// Every getter throws std::invalid_argument with "unit_id" for an unknown id.
class VRN_UNITS_EXPORT IUnitProvider
{
public:
    virtual ~IUnitProvider();

    virtual bool is_known(UnitId::UnitId unit_id) const = 0;

    /// The ids of all units, then those of all unit sets, each in table order.
    virtual std::vector<UnitId::UnitId> get_all_ids() const = 0;

    /// The code of the dimension. Two units measure the same if and only if their
    /// codes are equal. A unit set has the dimension of its first unit.
    virtual std::uint32_t get_dimension(UnitId::UnitId unit_id) const = 0;

    /// The factor from the unit to the base scale.
    virtual double get_factor(UnitId::UnitId unit_id) const = 0;

    /// The symbol in UTF-8; empty for a unit set.
    virtual const std::string& get_symbol(UnitId::UnitId unit_id) const = 0;

    /// Further spellings of the symbol, accepted on input and allowed as labels.
    /// Only units have them: for a unit set this throws.
    virtual const std::vector<std::string>& get_alternative_symbols(
        UnitId::UnitId unit_id) const = 0;

    /// The units in which a set may be written, in the order in which they are
    /// offered; empty for a unit.
    virtual const std::vector<UnitId::UnitId>& get_compatible_units(
        UnitId::UnitId unit_id) const = 0;
};

} // namespace v1
} // namespace vrn::units
