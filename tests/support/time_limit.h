#pragma once

namespace vrn::test {

/// The longest that one step of a user may take, in milliseconds. Sanitizers
/// slow every step down and get more.
constexpr int timeLimitMs()
{
#if defined(__SANITIZE_ADDRESS__)
    return 2000;
#else
    return 50;
#endif
}

} // namespace vrn::test
