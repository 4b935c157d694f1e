#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers as scripts exchange them: in the C locale, and nothing around them.
namespace vrn::quantity_tool {

/// 17 significant digits, as printf's "%.17g" has it: the text that reads back as
/// the same number.
std::string exact_text(double value);

/// The fewest digits that read back as the same number.
std::string shortest_text(double value);

/// Empty where the text as a whole is no number, or one out of range.
std::optional<double> read_double(std::string_view text);
std::optional<std::int32_t> read_int32(std::string_view text);

} // namespace vrn::quantity_tool
