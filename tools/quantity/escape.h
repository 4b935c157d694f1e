#pragma once

#include <string>
#include <string_view>

namespace vrn::quantity_tool {

/// Any text as one field of one line: `\t`, `\n`, `\r`, `\0` and `\\` stand for the
/// characters that a field cannot contain.
std::string escape(std::string_view text);

/// The opposite of escape(). Throws UsageError for a backslash that starts none of these.
std::string unescape(std::string_view text);

/// Any bytes as part of a message of one line, for a person to read. The result is UTF-8
/// and cannot control a terminal. A line feed becomes a blank. Other control characters,
/// and bytes that are not UTF-8, are shown as `\t`, `\r`, `\0` or `\x1b`. Backslashes stay
/// as they are, so the bytes cannot be restored.
std::string printable(std::string_view text);

} // namespace vrn::quantity_tool
