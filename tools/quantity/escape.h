#pragma once

#include <string>
#include <string_view>

namespace vrn::quantity_tool {

/// Any text within one field of one line: `\t`, `\n`, `\r`, `\0` and `\\` stand
/// for the characters that could not be there.
std::string escape(std::string_view text);

/// The opposite of escape(). Throws UsageError for a backslash that starts none of the
/// five.
std::string unescape(std::string_view text);

/// Any bytes within one line of a message, for a person to read: nothing in it controls
/// the terminal, and all of it is UTF-8. A line feed becomes a blank. Another control
/// character, and a byte that is not UTF-8, is shown as `\t`, `\r`, `\0` or `\x1b`.
/// Backslashes stay, so there is no way back.
std::string printable(std::string_view text);

} // namespace vrn::quantity_tool
