#pragma once

#include "support/address_sanitizer.h"

namespace vrn::test {

/// The longest that one step of a user may take, in milliseconds of processor
/// time: `shipped`, 50 where nothing else is said, in what is shipped. Code that
/// is not optimised gets more, and sanitizers get most; there the limit is against
/// a step that hangs.
constexpr int timeLimitMs(int shipped = 50)
{
#if defined(VRN_ADDRESS_SANITIZER)
    return 100 * shipped;
#elif !defined(__OPTIMIZE__)
    return 10 * shipped;
#else
    return shipped;
#endif
}

} // namespace vrn::test
