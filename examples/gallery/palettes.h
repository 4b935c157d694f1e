#pragma once

class QPalette;

namespace gallery {

/// `palette` with disabled text halfway between text and ground. That of Qt's own palette can
/// hardly be read: its contrast is 1.6.
QPalette withReadableDisabledText(QPalette palette);

/// Light text on dark grounds, as a dark desktop has them.
QPalette darkPalette();

} // namespace gallery
