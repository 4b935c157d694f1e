#pragma once

#include <vector>

namespace vrn::qt {
class SimpleLineEdit;
}

namespace gallery {

/// Gives the captions of `edits` one width, so that the edits behind them line
/// up.
void alignCaptions(const std::vector<vrn::qt::SimpleLineEdit*>& edits);

} // namespace gallery
