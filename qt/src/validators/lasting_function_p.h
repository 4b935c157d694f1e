#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace vrn::qt::detail {

/// `fn` in a form that may be replaced from inside a call of it: the call keeps
/// `fn` until it is over. A copy of `fn` before each call would do that too, but
/// would copy its state on every keystroke and forget what it changes there.
template <typename Result, typename... Args>
std::function<Result(Args...)> lasting(std::function<Result(Args...)> fn)
{
    if (!fn)
        return {};
    return [shared = std::make_shared<std::function<Result(Args...)>>(std::move(fn))](
               Args... args) -> Result {
        // The function may destroy this lambda, and itself with it.
        const auto running = shared; // NOLINT(performance-unnecessary-copy-initialization)
        return (*running)(std::forward<Args>(args)...);
    };
}

} // namespace vrn::qt::detail
