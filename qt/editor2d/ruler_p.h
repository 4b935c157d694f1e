#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <Qt>

#include <set>
#include <vector>

class QGraphicsView;
class QPainter;

namespace vrn::qt::graphics::detail {

/// The distance of two ticks without a label, a little more than ten pixels: a round number up
/// to 100, above that ten times `pixel`.
VRN_QT2_EXPORT double minorStep(double pixel);

/// Where the ticks with labels are: the multiples of `step` from `low` to `high`, both of these
/// brought to the multiple next to them towards zero. None if anything is not finite.
///
/// Where there are more than any screen has room for, some are left out.
VRN_QT2_EXPORT std::set<double> majorTicks(double low, double high, double step);

/// Where the ticks without labels are: four between each two with labels, and on those.
VRN_QT2_EXPORT std::vector<double> minorTicks(const std::set<double>& majorTicks);

/// Draws the ruler along the upper edge (horizontal) or the left edge (vertical).
void drawRuler(const QGraphicsView& view, QPainter& painter, Qt::Orientation orientation);

} // namespace vrn::qt::graphics::detail
