#pragma once

namespace vrn::qt::detail {

/// The flags that a control passes to its validator: what a user types into a field is
/// in the C locale.
constexpr unsigned long noFlags = 0;

} // namespace vrn::qt::detail
