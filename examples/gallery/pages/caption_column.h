#pragma once

#include <vector>

class QWidget;

namespace vrn::qt {
class SimpleLineEdit;
}

namespace gallery {

/// Gives the captions of `controls` one width, so that what stands behind them
/// lines up.
void alignCaptions(const std::vector<QWidget*>& controls);
void alignCaptions(const std::vector<vrn::qt::SimpleLineEdit*>& edits);

} // namespace gallery
