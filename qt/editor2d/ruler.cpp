#include "ruler_p.h"

#include <QFontMetrics>
#include <QGraphicsView>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <optional>

namespace vrn::qt::graphics::detail {
namespace {

constexpr double maxTicks = 10000.0;

// Where a tick is drawn; none if it is far outside of the view, where a QPoint may overflow.
std::optional<QPoint> placeOf(const QGraphicsView& view, const QPointF& point)
{
    constexpr double far = 1e6;
    const QPointF place = view.viewportTransform().map(point);
    if (std::abs(place.x()) < far && std::abs(place.y()) < far)
        return view.mapFromScene(point);
    return std::nullopt;
}

class Ruler
{
public:
    Ruler(const QGraphicsView& view, QPainter& painter, Qt::Orientation orientation)
        : m_view(view)
        , m_painter(painter)
        , m_isHorizontal(orientation == Qt::Horizontal)
        , m_visible(
              view.mapToScene(view.rect().topLeft()), view.mapToScene(view.rect().bottomRight()))
    {}

    void draw() const
    {
        // Both rulers go by the width of a pixel.
        const double pixel = m_view.mapToScene(QPoint(1, 0)).x()
            - m_view.mapToScene(QPoint(0, 0)).x();
        const std::set<double> major = m_isHorizontal
            ? majorTicks(m_visible.left(), m_visible.right(), minorStep(pixel) * 5.0)
            : majorTicks(m_visible.top(), m_visible.bottom(), minorStep(pixel) * 5.0);
        for (const double x : major)
            drawMajorTick(x);
        for (const double x : minorTicks(major)) {
            if (const auto place = placeOf(m_view, pointAt(x)))
                drawTick(*place, 3);
        }
    }

private:
    QPointF pointAt(double x) const
    {
        return m_isHorizontal ? QPointF(x, m_visible.top()) : QPointF(m_visible.left(), x);
    }

    void drawTick(const QPoint& place, int length) const
    {
        m_painter.drawLine(place, place + (m_isHorizontal ? QPoint(0, length) : QPoint(length, 0)));
    }

    void drawMajorTick(double x) const
    {
        const auto place = placeOf(m_view, pointAt(x));
        if (!place)
            return;
        const QString text = QStringLiteral("%1").arg(x, 0, 'g', -1, QLatin1Char(' '));
        QRect box = m_painter.fontMetrics().boundingRect(text);
        box.adjust(0, 0, 2, 0);
        drawTick(*place, 8);
        box.translate(*place
            + (m_isHorizontal ? QPoint(-(box.width() / 2), box.height() / 2 + 12)
                              : QPoint(9, box.height() / 3)));
        m_painter.drawText(box, Qt::AlignCenter, text);
    }

    const QGraphicsView& m_view;
    QPainter& m_painter;
    const bool m_isHorizontal;
    const QRectF m_visible;
};

} // namespace

double minorStep(double pixel)
{
    const double d = pixel * 10.0;
    for (const double step : {0.1, 0.2, 0.5, 1.0, 2.0, 5.0, 10.0, 20.0, 50.0, 100.0}) {
        if (step > d)
            return step;
    }
    return d;
}

std::set<double> majorTicks(double low, double high, double step)
{
    // The sum turns a negative zero into a positive one: its label has no sign.
    const double first = std::trunc(low / step) * step + 0.0;
    const double last = std::trunc(high / step) * step;
    const double count = std::ceil((last - first) / step / maxTicks);
    if (!std::isfinite(first) || !std::isfinite(last) || !std::isfinite(count))
        return {};
    // By repeated addition, so the last tick may be missing. It ends early where the numbers
    // are too large to add to.
    const double distance = step * std::max(1.0, count);
    std::set<double> ticks;
    for (double x = first; x <= last && ticks.insert(x).second; x += distance) {}
    return ticks;
}

std::vector<double> minorTicks(const std::set<double>& majorTicks)
{
    std::vector<double> ticks;
    for (auto b = majorTicks.begin(); b != majorTicks.end(); ++b) {
        if (b == majorTicks.begin())
            continue;
        const double a = *std::prev(b);
        const double step = (*b - a) / 5.0;
        for (double t = a; t <= *b; t += step) {
            ticks.push_back(t);
            if (t + step == t)
                break;
        }
    }
    return ticks;
}

void drawRuler(const QGraphicsView& view, QPainter& painter, Qt::Orientation orientation)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setWorldMatrixEnabled(false);
    painter.setPen(
        QPen(QBrush(Qt::black, Qt::SolidPattern), 0.0, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    Ruler(view, painter, orientation).draw();
    painter.restore();
}

} // namespace vrn::qt::graphics::detail
