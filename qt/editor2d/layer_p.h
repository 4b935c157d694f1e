#pragma once

#include <QImage>
#include <QRect>
#include <QRegion>
#include <QTransform>

class QPainter;
class QWidget;

namespace vrn::qt::graphics::detail {

/// A picture of what a viewport shows below its foreground, in pixels of the screen. It is
/// copied from the window while that is being painted, so it costs no second paint, and what is
/// brought back from it is the same to the pixel at any scale of the screen.
class Layer
{
public:
    /// Whether `painter` paints `viewport` into its window, by the raster engine. Otherwise it
    /// paints a picture of it or prints it.
    static bool isOnScreen(const QPainter& painter, const QWidget& viewport);

    void clear() { m_region = QRegion(); }
    /// Whether the layer has all of `region`, in coordinates of the viewport.
    bool covers(const QRegion& region) const;

    /// Takes over what has been painted so far, of which `region` is new.
    void capture(QPainter& painter, const QWidget& viewport, const QRegion& region);
    /// Paints all of the layer. False if the viewport is not painted into its window, or now
    /// has another place or scale there: then the layer is of no use any more, and is cleared.
    bool draw(QPainter& painter, const QWidget& viewport);

private:
    QImage m_pixels;
    QRect m_place; ///< In the window, in pixels of the screen.
    QTransform m_toScreen;
    QRegion m_region;
};

} // namespace vrn::qt::graphics::detail
