#pragma once

#include <string>
#include <string_view>

/// Any text within one field of one line: `\t`, `\n`, `\r`, `\0` and `\\` stand
/// for the characters that could not be there.
namespace vrn::quantity_tool {

std::string escape(std::string_view text);

/// Throws UsageError for a backslash that starts none of the five.
std::string unescape(std::string_view text);

} // namespace vrn::quantity_tool
