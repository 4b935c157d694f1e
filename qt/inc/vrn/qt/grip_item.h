#pragma once

#include <vrn/qt/editor_item.h>

namespace vrn::qt::ed2d {

/// A handle of a shape in the 2D editor: a round knob, centred on its pos(), which keeps its
/// size on the screen at any zoom. The owner of the shape listens to positionChanged and
/// follows the grip's pos().
///
///     auto* line = new QGraphicsLineItem(0.0, 0.0, 100.0, 0.0);
///     auto* grip = new ed2d::GripItem(line);
///     grip->setPos(100.0, 0.0);
///     grip->positionChanged.connect(
///         [=] { line->setLine(QLineF(QPointF(), grip->pos())); });
///     auto* view = new graphics::EditorView;
///     view->setParent(form);
///     view->scene()->addItem(line);
///
/// A grip under the mouse swells by 3/10 beyond its bounding rectangle.
struct VRN_QT2_EXPORT GripItem : public EditorItem
{
    /// Besides what an EditorItem is, the grip ignores transformations. If that flag is
    /// cleared, each paint is reported, and shows the grip at the view's scale.
    explicit GripItem(QGraphicsItem* parent = nullptr);
    ~GripItem() override;

    /// A square of m_size around the origin.
    QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

    /// The diameter in pixels. It is set before the grip is in a scene, or by a derived class
    /// that calls prepareGeometryChange().
    double m_size = 8.0;
    /// Drawn as large as under the mouse. After a change, call update().
    bool m_emphasised = false;
};

} // namespace vrn::qt::ed2d
