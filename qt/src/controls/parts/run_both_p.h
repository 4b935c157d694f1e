#pragma once

namespace vrn::qt::detail {

/// Runs `first` and then `second`, which also runs if `first` throws: the exception
/// goes on when it is done. One that `second` throws goes on in its place.
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
