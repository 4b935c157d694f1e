#include <vrn/qt/editor_item.h>

#include <QPainter>

#include "nesting_p.h"

namespace vrn::qt::ed2d {

EditorItem::EditorItem(QGraphicsItem* parent)
    : QGraphicsItem(parent)
    , m_nesting(std::make_shared<graphics::detail::Nesting>())
{
    setFlag(ItemIsMovable, true);
    setFlag(ItemIsSelectable, true);
    setFlag(ItemSendsGeometryChanges, true);
    setAcceptHoverEvents(true);
}

EditorItem::~EditorItem() = default;

QRectF EditorItem::boundingRect() const
{
    return QRectF(QPointF(0, 0), QSizeF(10.0, 10.0));
}

void EditorItem::paint(
    QPainter* painter, const QStyleOptionGraphicsItem* /*option*/, QWidget* /*widget*/)
{
    const Qt::GlobalColor colour = isSelected() ? Qt::red : m_hovering ? Qt::yellow : Qt::blue;
    painter->setBrush(QBrush(colour, Qt::SolidPattern));
    painter->drawRect(0, 0, 10, 10);
}

void EditorItem::hoverEnterEvent(QGraphicsSceneHoverEvent* event)
{
    if ((flags() & ItemIsSelectable) && !m_hovering) {
        m_hovering = true;
        update(QRectF());
    }
    QGraphicsItem::hoverEnterEvent(event);
}

void EditorItem::hoverLeaveEvent(QGraphicsSceneHoverEvent* event)
{
    if (m_hovering) {
        m_hovering = false;
        update(QRectF());
    }
    // The handler of the base class for entering, on purpose.
    QGraphicsItem::hoverEnterEvent(event);
}

QVariant EditorItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    if (change == ItemPositionHasChanged) {
        const graphics::detail::Emission emission(m_nesting);
        if (emission.mayFire())
            positionChanged();
    }
    return QGraphicsItem::itemChange(change, value);
}

} // namespace vrn::qt::ed2d
