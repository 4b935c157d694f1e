#pragma once

namespace vrn::test {

/// The longest that one step of a user may take, in milliseconds of processor
/// time: 50 in what is shipped. Code that is not optimised gets more, and
/// sanitizers get most; there the limit is against a step that hangs.
constexpr int timeLimitMs()
{
#if defined(__SANITIZE_ADDRESS__)
    return 2000;
#elif !defined(__OPTIMIZE__)
    return 250;
#else
    return 50;
#endif
}

} // namespace vrn::test
