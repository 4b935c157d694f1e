#pragma once

#include <vrn/units/unit_id.h>
#include <vrn/units/vrn_units_export.h>

namespace vrn::units {
inline namespace v1 {

/// Converts values from one unit to another.
class VRN_UNITS_EXPORT IConverter
{
public:
    /// A number and what it is measured in, a unit or a unit set. The value of a
    /// unit set is in the base scale.
    struct quantity
    {
        UnitId::UnitId unit_id = UnitId::BLANK;
        double value = 0.0;

        /// Whether number and id are the same. Nothing is converted: 1 m does not
        /// equal 1000 mm.
        friend constexpr bool operator==(const quantity& a, const quantity& b)
        {
            return a.unit_id == b.unit_id && a.value == b.value;
        }
        friend constexpr bool operator!=(const quantity& a, const quantity& b) { return !(a == b); }
    };

    virtual ~IConverter();

    /// Two units convert if they measure the same. A unit and a unit set convert if
    /// the set lists the unit. Two different sets never convert.
    virtual bool can_convert(UnitId::UnitId from, UnitId::UnitId to) const = 0;

    /// The same quantity under `unit_id`. Throws std::invalid_argument with
    /// "Incompatible units." if can_convert says no.
    virtual quantity convert(quantity q, UnitId::UnitId unit_id) const = 0;

    /// The value of `q` in the base scale.
    virtual double to_base(quantity q) const = 0;

    /// The quantity under `unit_id` whose value in the base scale is `value`.
    virtual quantity from_base(double value, UnitId::UnitId unit_id) const = 0;
};

} // namespace v1
} // namespace vrn::units
