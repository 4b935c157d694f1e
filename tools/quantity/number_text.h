#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers for scripts: in the C locale, with nothing around them.
namespace vrn::quantity_tool {

/// 17 significant digits, like printf's "%.17g". The text reads back as the same number.
std::string exact_text(double value);

/// The fewest digits that read back as the same number.
std::string shortest_text(double value);

/// Empty if the whole text is not a number, or the number is out of range.
std::optional<double> read_double(std::string_view text);
std::optional<std::int32_t> read_int32(std::string_view text);

} // namespace vrn::quantity_tool
