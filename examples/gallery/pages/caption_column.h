#pragma once

#include <vector>

class QWidget;

namespace vrn::qt {
class SimpleLineEdit;
}

namespace gallery {

/// Gives all captions of `controls` the same width, so that their fields line up.
void alignCaptions(const std::vector<QWidget*>& controls);
void alignCaptions(const std::vector<vrn::qt::SimpleLineEdit*>& edits);

} // namespace gallery
