#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>

#include <QGraphicsView>
#include <QPoint>
#include <QPointF>
#include <QString>

#include <memory>
#include <vector>

namespace vrn::qt::graphics {

namespace detail {
class Layer;
}

/// The view of the 2D editor. The wheel zooms about the mouse, the right button pans. Rulers,
/// cross hairs, a cursor of its own and a title are drawn over the scene in pixels, whatever
/// the zoom. A view can follow the zoom and the center of another.
///
///     auto* view = new graphics::EditorView;
///     view->setParent(form);
///     view->setRulers(true, true);
///     view->scene()->addRect(0.0, 0.0, 100.0, 50.0);
///     view->centerChanged.connect(
///         [=](const QPointF& center) { form->setWindowTitle(QString::number(center.x())); });
///     view->setCenter(QPointF(50.0, 25.0), true);
///
/// The view starts with a GraphicsScene of its own, which has no index and the rectangle from
/// (-200, -200) to (400, 400). Another one can be set, also none; setCenter() comes after that,
/// since Qt forgets the center. The scroll bars are off, but they do the panning, so the scene's
/// rectangle limits what can be seen.
///
/// The center is the view's own record of the scene point that it is kept on. It is not
/// limited to the scene, but what the view shows is: at the edge of the scene they differ.
///
/// The signals are fired synchronously, and carry the state that the view then has. A slot that
/// makes its own signal fire again is stopped after a hundred calls within each other: this is
/// reported, and nothing more is fired until the first slot has returned.
///
/// The setters of what is drawn ask for no repaint. The next repaint, or the next move of the
/// mouse with cross hairs or cursor, shows what they have changed.
///
/// A mouse move with cross hairs or cursor repaints only what is below them; the rest comes
/// from a layer, a picture of background and scene that every full repaint keeps.
/// There is no layer
/// - while a rubber band is up;
/// - in another viewportUpdateMode() than FullViewportUpdate, with optimizationFlags(), and in
///   a viewport that paints by OpenGL;
/// - while the scene has another view or a slot is connected to its changed(): these hear of
///   each move, as if the whole scene had changed, and so does this view.
/// A class that overrides drawForeground() calls that of this class first. A class that overrides
/// paintEvent() hands its event on to that of this class, and paints over the view after it; at a
/// mouse move the event has only the region that is repainted.
///
/// `delete` and `deleteLater` of the view, its parent or its window, of its scene and of views
/// that follow it or that it follows are safe in any slot of its signals. Excluded is `delete`
/// of the view, its parent or its window while Qt resizes the view, in slots of resized and of
/// the centerChanged before it, because Qt goes on with the view. `deleteLater` is safe
/// there, too. The slots that come after the one that destroyed the view still run.
class VRN_QT2_EXPORT EditorView : public QGraphicsView
{
public:
    /// The bits of a mask that says what to take from another view.
    enum Setting
    {
        CenterX = 1,
        CenterY = 2,
        ScaleX = 4,
        ScaleY = 8,
    };

    EditorView();
    ~EditorView() override;

    /// A mouse button was released, except the one that ended a pan. Presses are not reported.
    boost::signals2::signal<void(QMouseEvent*)> mouseReleased;
    /// The mouse was moved, also while it pans.
    boost::signals2::signal<void(QMouseEvent*)> mouseMoved;
    /// The center was changed by setCenter() with `notify`, the wheel or a pan, or was kept
    /// through a resize.
    boost::signals2::signal<void(const QPointF&)> centerChanged;
    /// The wheel has zoomed; comes after centerChanged.
    boost::signals2::signal<void()> zoomChanged;
    /// The view was resized; comes last.
    boost::signals2::signal<void()> resized;

    /// Keeps the view on a point of the scene, and fires centerChanged if `notify` is set.
    void setCenter(const QPointF& center, bool notify);
    const QPointF& getCenter() const { return m_center; }

    /// The size of a pixel in the scene. A mirrored axis has a negative one.
    QPointF pixelSize() const;

    /// While zooming is disabled, the wheel does nothing, and the view does not keep its
    /// center when it is resized.
    void setZoomingEnabled(bool enabled) { m_zoomingEnabled = enabled; }
    /// While panning is disabled, the scene gets the right button. A pan that has begun goes
    /// on.
    void setPanningEnabled(bool enabled) { m_panningEnabled = enabled; }

    /// Rulers along the left and the upper edge, in units of the scene. Both take the distance
    /// of their ticks from the width of a pixel. Off at first.
    void setRulers(bool left, bool top);
    /// Dotted lines through the mouse while it is in the view. On at first.
    void setDrawCrossHairs(bool draw);
    /// A cross with a box in place of the mouse cursor, which is hidden from the next time that
    /// the mouse enters or ends a pan. Off at first.
    void setDrawCustomCursor(bool draw);
    /// A text in the upper left corner, of which up to 10,000 characters are drawn. Empty at
    /// first.
    void setTitle(const QString& title);

    /// Takes what the bits of `mask` select from `other`, once, and fires nothing. After the
    /// scale of an axis is taken, the pixels of both views have the same size along it. A scale
    /// is not taken where the size of a pixel is zero or not finite.
    /// Without a view it is reported, and nothing happens.
    void acquireViewSettingsFrom(EditorView* other, int mask);
    /// From the next time that the wheel or a pan changes `other`, or that it is told to notify
    /// of its center, this view acquires its settings. It is not a link in a chain: views that
    /// follow this one hear nothing of it. A link lasts until one of the views goes. Two links
    /// acquire twice. Without a view it is reported, and nothing happens.
    void linkViewSettingsTo(EditorView* other, int mask);
    /// Each view follows the other.
    static void linkViewSettingsBidirectionally(EditorView* a, EditorView* b, int mask);

    /// Discards the layer and repaints the view. To be called when the picture changes and
    /// the scene does not know: when something that drawBackground() or an item shows has
    /// changed without an update(), or when drawForeground() of a derived class follows the
    /// mouse.
    void invalidateLayer();

protected:
    /// Scales both axes. Fires nothing, and leaves the center as it is.
    void scaleBy(double factor);

    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    void enterEvent(QEnterEvent* event) override;
#else
    void enterEvent(QEvent* event) override;
#endif
    void leaveEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void setupViewport(QWidget* viewport) override;
    bool viewportEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    /// A gradient from white to light grey across `rect`. The brush of the scene is not drawn.
    void drawBackground(QPainter* painter, const QRectF& rect) override;
    /// What the scene has in its foreground, then cross hairs, cursor, title and rulers.
    void drawForeground(QPainter* painter, const QRectF& rect) override;

private:
    struct Emissions;

    template <typename Signal, typename... Arguments>
    void fire(const Signal& signal, Arguments... arguments);

    void centerScene();
    void panTo(QMouseEvent* event);
    bool isStep(const QWheelEvent& event);
    void invalidateScene();
    void invalidateVisibleBackground();

    void drawCrossHairs(QPainter& painter, const QPoint& mouse) const;
    static void drawCustomCursor(QPainter& painter, const QPoint& mouse);
    void drawTitle(QPainter& painter) const;
    bool drawsAtMouse() const
    {
        return m_drawCrossHairs || m_drawCustomCursor;
    }

    bool mayUseLayer() const;
    bool isWhole(const QRegion& region) const;
    bool isSceneShared() const;
    bool hasLayerOf(const QRegion& region) const;
    bool paintFromLayer(const QRegion& region);
    void followMouse();
    QPoint mousePosition() const;
    QRegion drawnAt(const QPoint& mouse) const;
    void noteDrawnAt(const QPoint& mouse);

    QString m_title;
    bool m_leftRuler = false;
    bool m_topRuler = false;
    bool m_drawCrossHairs = true;
    bool m_drawCustomCursor = false;
    Qt::CursorShape m_savedCursor;
    bool m_mouseInside = false;
    bool m_zoomingEnabled = true;
    bool m_panningEnabled = true;
    bool m_panning = false;
    QPoint m_lastPan;
    QPointF m_center{50.0, 0.0};

    // A diagonal step of the wheel, until its companion has come.
    bool m_diagonalStep = false;
    ulong m_diagonalTime = 0;

    std::unique_ptr<detail::Layer> m_layer;
    // Where the screen shows cross hairs and cursor, and what is being painted.
    QPoint m_drawnAt;
    QRegion m_painted;

    // Keeps the signals when a slot destroys the view.
    std::shared_ptr<Emissions> m_emissions;
    std::vector<boost::signals2::scoped_connection> m_links;
};

} // namespace vrn::qt::graphics
