#include <vrn/qt/editor_view.h>

#include <vrn/qt/graphics_scene.h>

#include <vrn/assert/smart_assert.h>

#include <boost/signals2/shared_connection_block.hpp>

#include <QCursor>
#include <QLinearGradient>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QPointer>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "layer_p.h"
#include "nesting_p.h"
#include "qt_compat_p.h"
#include "ruler_p.h"

namespace vrn::qt::graphics {
namespace {

QPen penOf(Qt::GlobalColor colour, Qt::PenStyle style)
{
    return QPen(QBrush(colour, Qt::SolidPattern), 1.0, style, Qt::FlatCap, Qt::MiterJoin);
}

// A scroll bar takes an int.
int bounded(double position)
{
    constexpr double max = std::numeric_limits<int>::max();
    return std::isnan(position) ? 0 : static_cast<int>(std::max(-max, std::min(position, max)));
}

// How to scale so that the pixels agree. A view that is zoomed out of the numbers has no size
// of a pixel that another one could take.
double scaleBetween(double own, double wanted)
{
    const double factor = own / wanted;
    return std::isfinite(factor) && factor != 0.0 ? factor : 1.0;
}

void scrollBy(QScrollBar& bar, int distance)
{
    bar.setValue(bounded(static_cast<double>(bar.value()) + distance));
}

} // namespace

// The members are empty until the view is destroyed while one of its signals runs.
struct EditorView::Emissions : detail::Nesting
{
    decltype(EditorView::mouseReleased) released;
    decltype(EditorView::mouseMoved) moved;
    decltype(EditorView::centerChanged) center;
    decltype(EditorView::zoomChanged) zoom;
    decltype(EditorView::resized) size;
};

EditorView::EditorView()
    : m_savedCursor(cursor().shape())
    , m_layer(std::make_unique<detail::Layer>())
    , m_emissions(std::make_shared<Emissions>())
{
    auto* scene = new GraphicsScene(this);
    scene->setItemIndexMethod(QGraphicsScene::NoIndex);
    scene->setSceneRect(-200.0, -200.0, 600.0, 600.0);
    setCenter(QPointF(50.0, 0.0), true);
    setScene(scene);
    setCacheMode(QGraphicsView::CacheNone);
    setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
    setRenderHint(QPainter::Antialiasing, true);
    setDragMode(QGraphicsView::RubberBandDrag);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setAttribute(Qt::WA_MouseTracking, true);
    viewport()->setMouseTracking(true);
}

EditorView::~EditorView()
{
    // A slot that destroys the view returns into a signal, which has to be there still.
    *m_emissions = {*m_emissions, std::move(mouseReleased), std::move(mouseMoved),
        std::move(centerChanged), std::move(zoomChanged), std::move(resized)};
}

template <typename Signal, typename... Arguments>
void EditorView::fire(const Signal& signal, Arguments... arguments)
{
    const std::shared_ptr<Emissions> keptMeanwhile = m_emissions;
    const detail::Emission emission(keptMeanwhile);
    if (emission.mayFire())
        signal(arguments...);
}

void EditorView::setCenter(const QPointF& center, bool notify)
{
    m_center = center;
    centerScene();
    if (notify)
        fire(centerChanged, m_center);
}

// QGraphicsView::centerOn() converts to whole pixels, which must not overflow. What is so far
// away is cut off by the scroll bars anyway.
void EditorView::centerScene()
{
    constexpr double far = 1e9;
    const QPointF place = transform().map(m_center);
    if (std::abs(place.x()) < far && std::abs(place.y()) < far) {
        centerOn(m_center);
        return;
    }
    const auto near = [=](double position) {
        return std::isnan(position) ? 0.0 : std::max(-far, std::min(position, far));
    };
    const QPointF center = transform().inverted().map(QPointF(near(place.x()), near(place.y())));
    if (std::isfinite(center.x()) && std::isfinite(center.y()))
        centerOn(center);
}

QPointF EditorView::pixelSize() const
{
    return mapToScene(QPoint(1, 1)) - mapToScene(QPoint(0, 0));
}

void EditorView::scaleBy(double factor)
{
    scale(factor, factor);
}

// What is shown over the scene is not on the screen yet, and is to come with the next move of
// the mouse: that repaints everything if there is no layer.

void EditorView::setRulers(bool left, bool top)
{
    m_leftRuler = left;
    m_topRuler = top;
    m_layer->clear();
}

void EditorView::setDrawCrossHairs(bool draw)
{
    m_drawCrossHairs = draw;
    m_layer->clear();
}

void EditorView::setDrawCustomCursor(bool draw)
{
    m_drawCustomCursor = draw;
    m_layer->clear();
}

void EditorView::setTitle(const QString& title)
{
    m_title = title;
    m_layer->clear();
}

void EditorView::acquireViewSettingsFrom(EditorView* other, int mask)
{
    VRN_ASSERT(other);
    if (!other)
        return;
    const QPointF own = pixelSize();
    const QPointF wanted = other->pixelSize();
    scale(mask & ScaleX ? scaleBetween(own.x(), wanted.x()) : 1.0,
        mask & ScaleY ? scaleBetween(own.y(), wanted.y()) : 1.0);
    if (mask & CenterX)
        m_center.setX(other->m_center.x());
    if (mask & CenterY)
        m_center.setY(other->m_center.y());
    centerScene();
    invalidateVisibleBackground();
}

void EditorView::linkViewSettingsTo(EditorView* other, int mask)
{
    VRN_ASSERT(other);
    if (!other)
        return;
    const auto follow = [self = QPointer<EditorView>(this), source = QPointer<EditorView>(other),
                            mask](const boost::signals2::connection& connection) {
        const boost::signals2::shared_connection_block block(connection);
        // Both may go in a slot of the signal that is running.
        if (self && source)
            self->acquireViewSettingsFrom(source, mask);
    };
    // Those to views that have gone.
    m_links.erase(std::remove_if(m_links.begin(), m_links.end(),
                      [](const auto& link) { return !link.connected(); }),
        m_links.end());
    m_links.emplace_back(other->zoomChanged.connect_extended(follow));
    m_links.emplace_back(other->centerChanged.connect_extended(
        [follow](const boost::signals2::connection& connection, const QPointF&) {
            follow(connection);
        }));
}

void EditorView::linkViewSettingsBidirectionally(EditorView* a, EditorView* b, int mask)
{
    VRN_ASSERT(a && b);
    if (!a || !b)
        return;
    a->linkViewSettingsTo(b, mask);
    b->linkViewSettingsTo(a, mask);
}

void EditorView::invalidateLayer()
{
    m_layer->clear();
    viewport()->update();
}

void EditorView::invalidateScene()
{
    if (scene())
        scene()->invalidate(QRectF(), QGraphicsScene::AllLayers);
}

// Its gradient spans what is visible.
void EditorView::invalidateVisibleBackground()
{
    if (scene())
        scene()->invalidate(mapToScene(rect()).boundingRect(), QGraphicsScene::BackgroundLayer);
}

void EditorView::mousePressEvent(QMouseEvent* event)
{
    if (m_panningEnabled && event->button() == Qt::RightButton) {
        m_panning = true;
        m_lastPan = event->pos();
        setCursor(Qt::ClosedHandCursor);
        event->accept();
        return;
    }
    QGraphicsView::mousePressEvent(event);
}

void EditorView::mouseMoveEvent(QMouseEvent* event)
{
    const QPointer<EditorView> self(this);
    if (m_mouseInside && m_panning) {
        panTo(event);
    } else {
        if (drawsAtMouse())
            followMouse();
        QGraphicsView::mouseMoveEvent(event);
    }
    if (self)
        fire(mouseMoved, event);
}

void EditorView::panTo(QMouseEvent* event)
{
    const QPointer<EditorView> self(this);
    event->accept();
    scrollBy(*horizontalScrollBar(), m_lastPan.x() - event->pos().x());
    scrollBy(*verticalScrollBar(), m_lastPan.y() - event->pos().y());
    m_center = mapToScene(rect()).boundingRect().center();
    fire(centerChanged, m_center);
    if (!self)
        return;
    m_lastPan = event->pos();
    invalidateVisibleBackground();
}

void EditorView::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_panning && event->button() == Qt::RightButton) {
        m_panning = false;
        setCursor(m_drawCustomCursor ? Qt::BlankCursor : m_savedCursor);
        event->accept();
        return;
    }
    const QPointer<EditorView> self(this);
    QGraphicsView::mouseReleaseEvent(event);
    if (self)
        fire(mouseReleased, event);
}

void EditorView::wheelEvent(QWheelEvent* event)
{
    if (!isStep(*event) || !m_zoomingEnabled)
        return;
    const QPoint mouse = event->position().toPoint();
    const QPoint angle = event->angleDelta();
    const int delta = angle.y() != 0 ? angle.y() : angle.x();
    const QPointF before = mapToScene(mouse);
    scaleBy(delta > 0 ? 1.15 : 0.8695652173913044);
    const QPointF after = mapToScene(mouse);
    m_center = QPointF(
        m_center.x() + before.x() - after.x(), m_center.y() + before.y() - after.y());
    centerScene();

    const QPointer<EditorView> self(this);
    fire(centerChanged, m_center);
    if (self)
        fire(zoomChanged);
}

// Qt sends another event without an angle after a diagonal step, which would undo the zoom. Any
// other event without an angle zooms out.
bool EditorView::isStep(const QWheelEvent& event)
{
    const QPoint angle = event.angleDelta();
    const bool isCompanion = m_diagonalStep && angle.isNull()
        && event.timestamp() == m_diagonalTime;
    m_diagonalStep = angle.x() != 0 && angle.y() != 0;
    m_diagonalTime = event.timestamp();
    return !isCompanion;
}

// These three are here so that derived classes find them in this class.

void EditorView::focusInEvent(QFocusEvent* event)
{
    QGraphicsView::focusInEvent(event);
}

void EditorView::focusOutEvent(QFocusEvent* event)
{
    QGraphicsView::focusOutEvent(event);
}

void EditorView::dragMoveEvent(QDragMoveEvent* event)
{
    QGraphicsView::dragMoveEvent(event);
}

// If this happens in a pan, the closed hand is saved and stays after it.
void EditorView::enterEvent(compat::EnterEvent* event)
{
    QWidget::enterEvent(event);
    m_mouseInside = true;
    invalidateScene();
    m_savedCursor = cursor().shape();
    if (m_drawCustomCursor)
        setCursor(Qt::BlankCursor);
}

void EditorView::leaveEvent(QEvent* event)
{
    QWidget::leaveEvent(event);
    m_mouseInside = false;
    invalidateScene();
    setCursor(m_savedCursor);
}

void EditorView::resizeEvent(QResizeEvent* event)
{
    const QPointer<EditorView> self(this);
    // Zooming is asked, not panning.
    if (m_zoomingEnabled) {
        const QPointF center = m_center;
        QGraphicsView::resizeEvent(event);
        setCenter(center, true);
    } else {
        QGraphicsView::resizeEvent(event);
    }
    if (self)
        fire(resized);
}

void EditorView::setupViewport(QWidget* viewport)
{
    QGraphicsView::setupViewport(viewport);
    viewport->setMouseTracking(true);
}

bool EditorView::viewportEvent(QEvent* event)
{
    // QGraphicsView must not see a paint that leaves out the scene: it would forget updates of
    // the scene that are still to come.
    if (event->type() == QEvent::Paint
        && hasLayerOf(static_cast<const QPaintEvent*>(event)->region()))
        return QAbstractScrollArea::viewportEvent(event); // NOLINT(bugprone-parent-virtual-call)
    return QGraphicsView::viewportEvent(event);
}

void EditorView::paintEvent(QPaintEvent* event)
{
    // What changes while there may be no layer does not get into it.
    if (!mayUseLayer())
        m_layer->clear();
    if (paintFromLayer(event->region()))
        return;
    // Only the region of the event is painted, but as a part of the whole: the gradient must
    // not depend on how much is painted.
    QPaintEvent whole(viewport()->rect());
    m_painted = event->region();
    QGraphicsView::paintEvent(&whole);
    m_painted = QRegion();
}

void EditorView::drawBackground(QPainter* painter, const QRectF& rect)
{
    QLinearGradient gradient(rect.topLeft(), rect.bottomRight());
    gradient.setColorAt(0.0, Qt::white);
    gradient.setColorAt(1.0, Qt::lightGray);
    painter->fillRect(rect.intersected(rect), QBrush(gradient));
    painter->setBrush(Qt::NoBrush);
}

void EditorView::drawForeground(QPainter* painter, const QRectF& rect)
{
    const QPoint mouse = mousePosition();
    if (!m_painted.isEmpty() && detail::Layer::isOnScreen(*painter, *viewport())) {
        // Around a part that is painted, the window still has the foreground of the last paint.
        if (mayUseLayer() && isWhole(m_painted))
            m_layer->capture(*painter, *viewport(), m_painted);
        noteDrawnAt(mouse);
    }

    QGraphicsView::drawForeground(painter, rect);
    painter->save();
    painter->setWorldMatrixEnabled(false);
    if (m_drawCrossHairs && m_mouseInside)
        drawCrossHairs(*painter, mouse);
    if (m_drawCustomCursor)
        drawCustomCursor(*painter, mouse);
    if (!m_title.isEmpty())
        drawTitle(*painter);
    painter->restore();
    if (m_topRuler)
        detail::drawRuler(*this, *painter, Qt::Horizontal);
    if (m_leftRuler)
        detail::drawRuler(*this, *painter, Qt::Vertical);
}

void EditorView::drawCrossHairs(QPainter& painter, const QPoint& mouse) const
{
    const QRectF r(rect());
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(penOf(Qt::darkGray, Qt::DotLine));
    painter.drawLine(QPointF(mouse.x(), r.top()), QPointF(mouse.x(), r.bottom()));
    painter.drawLine(QPointF(r.left(), mouse.y()), QPointF(r.right(), mouse.y()));
}

void EditorView::drawCustomCursor(QPainter& painter, const QPoint& mouse)
{
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(penOf(Qt::black, Qt::SolidLine));
    for (const QPoint& direction : {QPoint(0, -1), QPoint(0, 1), QPoint(-1, 0), QPoint(1, 0)})
        painter.drawLine(mouse + direction * 20, mouse + direction * 6);
    painter.drawRect(QRectF(mouse - QPoint(4, 4), QSizeF(8.0, 8.0)));
}

void EditorView::drawTitle(QPainter& painter) const
{
    // What comes after that costs time, but is not seen.
    constexpr int longest = 10000;
    int length = std::min(longest, int(m_title.size()));
    if (length < m_title.size() && m_title[length - 1].isHighSurrogate())
        --length;
    painter.setPen(penOf(Qt::black, Qt::SolidLine));
    painter.drawText(QPointF(20.0, 30.0), m_title.left(length));
}

// The foreground is drawn there in coordinates of the viewport, which differ from those of the
// view by the width of the frame.
QPoint EditorView::mousePosition() const
{
    return mapFromGlobal(QCursor::pos());
}

QRegion EditorView::drawnAt(const QPoint& mouse) const
{
    constexpr int line = 2; // On each side, for a screen with any scale.
    constexpr int cursor = 20 + line;
    QRegion region;
    region += QRect(mouse.x() - line, 0, 2 * line + 1, viewport()->height());
    region += QRect(0, mouse.y() - line, viewport()->width(), 2 * line + 1);
    region += QRect(mouse - QPoint(cursor, cursor), QSize(2 * cursor + 1, 2 * cursor + 1));
    return region & viewport()->rect();
}

bool EditorView::mayUseLayer() const
{
    return drawsAtMouse() && viewportUpdateMode() == FullViewportUpdate && !optimizationFlags()
        && rubberBandRect().isEmpty();
}

// A scene change repaints all that is visible. So a smaller region is one that followMouse() has
// asked for, or one that a window in front of the view has left: there the scene is as it was.
bool EditorView::isWhole(const QRegion& region) const
{
    return (viewport()->visibleRegion() - region).isEmpty();
}

// Whether others hear of it if the scene is invalidated.
bool EditorView::isSceneShared() const
{
    struct Access : QGraphicsScene
    {
        using QGraphicsScene::isSignalConnected;
    };
    static const QMetaMethod changed = QMetaMethod::fromSignal(&QGraphicsScene::changed);
    return scene()->views().size() > 1 || (scene()->*(&Access::isSignalConnected))(changed);
}

void EditorView::followMouse()
{
    if (!scene())
        return;
    if (!mayUseLayer() || !m_layer->covers(viewport()->visibleRegion()) || isSceneShared()) {
        invalidateScene();
        return;
    }
    const QRegion strips = drawnAt(m_drawnAt) + drawnAt(mousePosition());
    viewport()->update(strips.isEmpty() ? QRect(0, 0, 1, 1) : strips);
}

bool EditorView::hasLayerOf(const QRegion& region) const
{
    return scene() && mayUseLayer() && !isWhole(region) && m_layer->covers(region);
}

bool EditorView::paintFromLayer(const QRegion& region)
{
    if (!hasLayerOf(region))
        return false;
    QPainter painter(viewport());
    if (!m_layer->draw(painter, *viewport()))
        return false;
    // As QGraphicsView leaves the painter to the foreground.
    painter.setRenderHints(painter.renderHints(), false);
    painter.setRenderHints(renderHints(), true);
    painter.setWorldTransform(viewportTransform());
    m_painted = region;
    drawForeground(&painter, mapToScene(viewport()->rect()).boundingRect());
    m_painted = QRegion();
    return true;
}

// The mouse may have moved since the paint was asked for.
void EditorView::noteDrawnAt(const QPoint& mouse)
{
    const QPoint before = std::exchange(m_drawnAt, mouse);
    if (before == mouse || !drawsAtMouse())
        return;
    const QRegion missing = drawnAt(before) + drawnAt(mouse) - m_painted;
    if (!missing.isEmpty())
        viewport()->update(missing);
}

} // namespace vrn::qt::graphics
