#pragma once

#include <array>
#include <cstdint>

namespace vrn::units {
inline namespace v1 {

/// One unit as the table holds it.
struct UnitRow
{
    std::uint32_t id;
    std::uint32_t packed; ///< The code of the dimension, and baseFlag.
    std::int32_t precision; ///< Default digits, plus 100 times the default format.
    double factor; ///< From this unit to the base scale.
    const char* symbol; ///< UTF-8.
};

/// Marks the row that stands for the base scale of its family.
///
/// The other bits of UnitRow::packed are four exponents, each a two's-complement bit
/// field: length in bits 0 to 4, time in 8 to 12, mass in 16 to 18 and temperature
/// in 20 to 22. So 0x011E01, mass times length over time squared, is a force. The
/// fields are only compared as one code, never read one by one.
constexpr std::uint32_t baseFlag = 1U << 30;

/// The precision code of that many digits in scientific notation.
constexpr std::int32_t scientific(std::int32_t digits)
{
    return 100 + digits;
}

/// The base scale has metres, seconds, kelvins, tonnes and therefore kilonewtons:
/// 1 kN is 1 t m/sec2.
extern const std::array<UnitRow, 399> unitTable;

} // namespace v1
} // namespace vrn::units
