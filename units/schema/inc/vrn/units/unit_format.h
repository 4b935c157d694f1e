// Made from unit_format.bond by make_headers.py; changes belong there.
#pragma once

#include <vrn/units/bond.h>
#include <vrn/units/unit_id.h>

#include <cstdint>
#include <string>
#include <tuple>

namespace vrn::units {
inline namespace v1 {

/// How the values of one unit or unit set are written.
struct UnitFormat
{
    /// The display unit.
    UnitId::UnitId unit_id = UnitId::BLANK;
    /// Digits after the decimal point; the denominator if `format` is 2 or the display
    /// unit is one of fractional inches.
    std::int32_t precision = 0;
    /// 0 fixed, 1 scientific, 2 fraction.
    std::int32_t format = 0;
    /// A spelling to show instead of the display unit's symbol: one of the unit's
    /// alternative symbols, or an empty text to show no unit.
    ::bond::maybe<std::string> label;

    friend bool operator==(const UnitFormat& left, const UnitFormat& right)
    {
        const auto members = [](const UnitFormat& each) {
            return std::tie(each.unit_id, each.precision, each.format, each.label);
        };
        return members(left) == members(right);
    }
    friend bool operator!=(const UnitFormat& left, const UnitFormat& right)
    {
        return !(left == right);
    }
};

} // namespace v1
} // namespace vrn::units
