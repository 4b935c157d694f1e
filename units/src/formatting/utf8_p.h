#pragma once

#include <string>
#include <string_view>

namespace vrn::units {
inline namespace v1 {

/// Decodes UTF-8. What is no UTF-8 becomes U+FFFD, a byte at a time.
std::wstring from_utf8(std::string_view text);

} // namespace v1
} // namespace vrn::units
