#pragma once

#include <memory>

namespace vrn::test {

/// Held by an object or a function, it tells through `alive` whether that still
/// exists, and does so without a look into the memory of what has gone.
inline std::shared_ptr<bool> lifeIn(bool& alive)
{
    alive = true;
    return std::shared_ptr<bool>(&alive, [](bool* flag) { *flag = false; });
}

} // namespace vrn::test
