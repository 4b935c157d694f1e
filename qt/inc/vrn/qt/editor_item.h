#pragma once

#include <vrn/qt/vrn_qt2_export.h>

#include <boost/signals2/signal.hpp>

#include <QGraphicsItem>

#include <memory>

namespace vrn::qt::graphics::detail {
struct Nesting;
}

namespace vrn::qt::ed2d {

/// The base of items that the user selects and drags in the 2D editor. It says when it has
/// been moved, and knows whether the mouse is over it. By itself it is a square of 10 units.
///
/// What derives from it overrides boundingRect() and paint(), and asks hovering() and
/// isSelected() which look to have. GripItem is an example.
///
/// As with any QGraphicsItem, the owner is the parent item or the scene. A slot of
/// positionChanged may move the item again, and may destroy other items or leave its own to
/// the event loop. It must not `delete` the item, its scene or a view in which it is being
/// dragged: Qt goes on with all of these after the slot.
struct VRN_QT2_EXPORT EditorItem : public QGraphicsItem
{
    /// The item is movable and selectable, reports its moves and accepts hover events.
    explicit EditorItem(QGraphicsItem* parent = nullptr);
    ~EditorItem() override;

    /// From (0, 0) to (10, 10).
    QRectF boundingRect() const override;
    /// Red if selected, otherwise yellow under the mouse, otherwise blue.
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget) override;

    /// Whether the mouse is over the item. An item that was not selectable when the mouse came
    /// does not know of it.
    bool hovering() const { return m_hovering; }

    /// Fired when pos() has changed, by a drag or by code, as long as the item has the flag
    /// ItemSendsGeometryChanges. A slot that moves the item is called again from within
    /// itself; if it still moves the item at the 100th such call, that is reported, and this
    /// and all further moves in it fire nothing.
    boost::signals2::signal<void()> positionChanged;

protected:
    void hoverEnterEvent(QGraphicsSceneHoverEvent* event) override;
    void hoverLeaveEvent(QGraphicsSceneHoverEvent* event) override;
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;

private:
    bool m_hovering = false;
    std::shared_ptr<graphics::detail::Nesting> m_nesting;
};

} // namespace vrn::qt::ed2d
