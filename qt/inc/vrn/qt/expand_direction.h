#pragma once

namespace vrn::qt {

/// The direction in which a control lines up its parts. Any other value counts as
/// vertical for a line edit and a Toolbar, and as horizontal for a GridLayouter; the
/// fixed type is what makes it a value.
enum ExpandDirection : int
{
    ExpandVertical = 0,
    ExpandHorizontal = 1,
};

} // namespace vrn::qt
