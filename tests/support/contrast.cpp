#include "support/contrast.h"

#include <QImage>
#include <QMap>
#include <QPixmap>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace vrn::test {
namespace {

double luminance(const QColor& colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

} // namespace

double contrast(const QColor& a, const QColor& b)
{
    const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

Legibility legibility(QWidget& widget, const QRect& place)
{
    const QImage image = widget.grab(place).toImage();
    QMap<QRgb, int> count;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            ++count[image.pixel(x, y)];
    }
    const QList<QRgb> colours = count.keys();
    const auto mostFrequent = std::max_element(
        colours.begin(), colours.end(), [&](QRgb a, QRgb b) { return count[a] < count[b]; });
    if (mostFrequent == colours.end())
        return {};

    Legibility result{QColor(*mostFrequent), QColor(*mostFrequent)};
    for (const QRgb colour : colours) {
        const double ratio = contrast(QColor(colour), result.ground);
        if (ratio > result.contrast) {
            result.text = QColor(colour);
            result.contrast = ratio;
        }
    }
    return result;
}

} // namespace vrn::test
