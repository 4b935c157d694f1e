#pragma once

#include <vrn/units/unit_id.h>
#include <vrn/units/vrn_units_export.h>

#include <boost/optional.hpp>

#include <cstdint>
#include <string>

namespace vrn::units {
inline namespace v1 {

/// How the values of each unit and unit set are written; see UnitFormat.
///
/// Every getter throws std::invalid_argument with "Invalid unit id." for an id
/// that it cannot answer for. A setter that throws has changed nothing.
class VRN_UNITS_EXPORT IFormatProvider
{
public:
    virtual ~IFormatProvider();

    virtual bool is_known(UnitId::UnitId id) const = 0;

    /// The unit in which values under `id` are shown.
    virtual UnitId::UnitId get_unit(UnitId::UnitId id) const = 0;
    virtual void set_unit(UnitId::UnitId id, UnitId::UnitId unit) = 0;

    /// Digits after the decimal point, or the denominator of fractions.
    virtual std::int32_t get_precision(UnitId::UnitId id) const = 0;
    virtual void set_precision(UnitId::UnitId id, std::int32_t precision) = 0;

    /// 0 is fixed, 1 scientific, 2 a fraction. With any other format, values are
    /// written as empty text.
    virtual std::int32_t get_format(UnitId::UnitId id) const = 0;
    virtual void set_format(UnitId::UnitId id, std::int32_t format) = 0;

    /// The spelling to show in place of the display unit's symbol, if any.
    virtual boost::optional<std::string> get_label(UnitId::UnitId id) const = 0;
    virtual void set_label(UnitId::UnitId id, const boost::optional<std::string>& label) = 0;
};

} // namespace v1
} // namespace vrn::units
