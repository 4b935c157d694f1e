#pragma once

namespace vrn::qt {

/// The direction in which a control lines up its parts. Any other value counts as
/// vertical for a line edit and a Toolbar, and as horizontal for a GridLayouter. The
/// type is fixed so that the enumeration can hold such values.
enum ExpandDirection : int
{
    ExpandVertical = 0,
    ExpandHorizontal = 1,
};

} // namespace vrn::qt
