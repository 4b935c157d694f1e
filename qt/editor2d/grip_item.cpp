#include <vrn/qt/grip_item.h>

#include <vrn/assert/smart_assert.h>

#include <QLinearGradient>
#include <QPainter>

namespace vrn::qt::ed2d {
namespace {

// How many times as light as red the upper and the lower end of the grip are.
QColor red(double lightness)
{
    const QColor base(255, 0, 0, 255);
    // Qt 5 has doubles here, Qt 6 has floats.
    using Part = decltype(base.lightnessF());
    return QColor::fromHslF(base.hslHueF(), base.hslSaturationF(),
        static_cast<Part>(base.lightnessF() * lightness), base.alphaF());
}

} // namespace

GripItem::GripItem(QGraphicsItem* parent)
    : EditorItem(parent)
{
    setFlag(ItemIsSelectable, true);
    setFlag(ItemIsMovable, true);
    setFlag(ItemSendsGeometryChanges, true);
    setFlag(ItemIgnoresTransformations, true);
    setZValue(0.0);
}

GripItem::~GripItem() = default;

QRectF GripItem::boundingRect() const
{
    return QRectF(QPointF(m_size * -0.5, m_size * -0.5), QPointF(m_size * 0.5, m_size * 0.5));
}

void GripItem::paint(
    QPainter* painter, const QStyleOptionGraphicsItem* /*option*/, QWidget* /*widget*/)
{
    VRN_ASSERT((flags() & ItemIgnoresTransformations) == ItemIgnoresTransformations);
    painter->setRenderHint(QPainter::Antialiasing, false);

    const QRectF r = boundingRect();
    // The lower x comes from the height. Where the rectangle is a square around the origin,
    // as here, it is the same as the upper one.
    QLinearGradient gradient(r.left() + (r.right() - r.left()) * 0.5, r.top(),
        r.top() + (r.bottom() - r.top()) * 0.5, r.bottom());
    const QColor upper = isSelected() ? red(1.9) : QColor(255, 0, 0, 255);
    gradient.setColorAt(0.0, upper);
    gradient.setColorAt(0.5, upper);
    gradient.setColorAt(1.0, isSelected() ? red(1.2) : red(0.5));
    painter->setBrush(gradient);

    if (m_emphasised || hovering())
        painter->scale(1.3, 1.3);
    painter->drawEllipse(boundingRect());
    painter->setPen(
        QPen(QBrush(Qt::black, Qt::SolidPattern), 0.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter->drawEllipse(boundingRect());
}

} // namespace vrn::qt::ed2d
