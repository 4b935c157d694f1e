#pragma once

namespace vrn::qt {

/// The direction in which a control lines up its parts. Any value other than
/// ExpandHorizontal counts as vertical.
enum ExpandDirection
{
    ExpandVertical = 0,
    ExpandHorizontal = 1,
};

} // namespace vrn::qt
