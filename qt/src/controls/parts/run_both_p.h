#pragma once

namespace vrn::qt::detail {

/// Runs `first` and then `second`, even if `first` throws. The exception is passed on
/// afterwards; one that `second` throws takes its place.
template <typename First, typename Second>
void runBoth(First first, Second second)
{
    try {
        first();
    } catch (...) {
        second();
        throw;
    }
    second();
}

} // namespace vrn::qt::detail
