#pragma once

class QPalette;

namespace gallery {

/// Light text on dark grounds, as a dark desktop has them.
QPalette darkPalette();

} // namespace gallery
