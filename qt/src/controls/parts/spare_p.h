#pragma once

namespace vrn::qt::detail {

/// Stands in for a part that somebody has destroyed, after a report. All controls share
/// it; it is never shown and belongs to no window.
template <typename Part, typename... Args>
Part& spare(Args... args)
{
    static auto* part = new Part(args...);
    return *part;
}

} // namespace vrn::qt::detail
