#include "layer_p.h"

#include <QBackingStore>
#include <QPaintEngine>
#include <QPainter>
#include <QWidget>

#include <cstring>

namespace vrn::qt::graphics::detail {
namespace {

// From pixels of the viewport to pixels of the screen.
QTransform toScreen(QPainter& painter)
{
    const bool isEnabled = painter.worldMatrixEnabled();
    painter.setWorldMatrixEnabled(false);
    const QTransform transform = painter.deviceTransform();
    painter.setWorldMatrixEnabled(isEnabled);
    return transform;
}

} // namespace

bool Layer::isOnScreen(const QPainter& painter, const QWidget& viewport)
{
    QBackingStore* store = viewport.backingStore();
    const QPaintEngine* engine = painter.paintEngine();
    // A store without a size has not been painted yet, and must not be asked for its device.
    if (!store || store->size().isEmpty() || !engine || engine->type() != QPaintEngine::Raster)
        return false;
    const QPaintDevice* device = engine->paintDevice();
    return device && device->devType() == QInternal::Image && device == store->paintDevice();
}

bool Layer::covers(const QRegion& region) const
{
    return !m_region.isEmpty() && (region - m_region).isEmpty();
}

void Layer::capture(QPainter& painter, const QWidget& viewport, const QRegion& region)
{
    const auto* window = static_cast<const QImage*>(painter.paintEngine()->paintDevice());
    m_region = region;
    m_toScreen = toScreen(painter);
    m_place = m_toScreen.mapRect(QRectF(viewport.rect())).toAlignedRect() & window->rect();
    if (m_pixels.size() != m_place.size() || m_pixels.format() != window->format())
        m_pixels = QImage(m_place.size(), window->format());

    // Row by row, because QImage::copy() would take new memory each time.
    const auto bytesOf = [window](int pixels) { return std::size_t(pixels * window->depth() / 8); };
    for (int y = 0; y < m_place.height(); ++y) {
        std::memcpy(m_pixels.scanLine(y),
            window->constScanLine(m_place.top() + y) + bytesOf(m_place.left()),
            bytesOf(m_place.width()));
    }
}

bool Layer::draw(QPainter& painter, const QWidget& viewport)
{
    if (!isOnScreen(painter, viewport))
        return false;
    if (toScreen(painter) != m_toScreen) {
        clear();
        return false;
    }
    painter.save();
    painter.setWorldTransform(m_toScreen.inverted());
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.drawImage(m_place.topLeft(), m_pixels);
    painter.restore();
    return true;
}

} // namespace vrn::qt::graphics::detail
