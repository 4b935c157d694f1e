#pragma once

#include <vrn/units/i_converter.h>

#include <boost/optional.hpp>

#include <cmath>
#include <cstring>
#include <limits>

namespace vrn::test {

constexpr std::size_t mebi = 1024 * 1024;
constexpr int none = -1; ///< Instead of the id of a unit.
constexpr double greatest = std::numeric_limits<double>::max();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

/// A longer text overflows the stack of the reference.
constexpr int longest_for_the_reference = 64;

/// Whether both have the same bits, or both are not-a-number.
inline bool identical(double left, double right)
{
    return (std::isnan(left) && std::isnan(right)) || std::memcmp(&left, &right, sizeof left) == 0;
}

/// Equal to the last digit but one, to spare the rows the rounding of sums.
inline bool nearly(double left, double right)
{
    return identical(left, right) || std::abs(left - right) <= 1e-15 * std::abs(right);
}

inline int unit_of(const boost::optional<units::IConverter::quantity>& quantity)
{
    return quantity ? static_cast<int>(quantity->unit_id) : none;
}

} // namespace vrn::test
