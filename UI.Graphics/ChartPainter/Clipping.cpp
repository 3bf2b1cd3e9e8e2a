#include "Clipping_p.h"

#include <algorithm>

namespace Orv::Chart {

// Liang-Barsky: the segment is a + t (b - a) for t in [0, 1]; each edge of the
// rectangle narrows the range of t.
bool Clipping::clipSegment(QPointF& a, QPointF& b, const QRectF& rect)
{
    const QPointF d = b - a;
    const double p[4] = {-d.x(), d.x(), -d.y(), d.y()};
    const double q[4] = {a.x() - rect.left(), rect.right() - a.x(), a.y() - rect.top(), rect.bottom() - a.y()};
    double t0 = 0.0;
    double t1 = 1.0;
    for (int edge = 0; edge < 4; ++edge) {
        if (p[edge] == 0.0) {
            if (q[edge] < 0.0)
                return false;
            continue;
        }
        const double t = q[edge] / p[edge];
        if (p[edge] < 0.0)
            t0 = std::max(t0, t);
        else
            t1 = std::min(t1, t);
        if (t0 > t1)
            return false;
    }
    const QPointF start = a + d * t0;
    b = a + d * t1;
    a = start;
    return true;
}

std::vector<QPolygonF> Clipping::clipPolyline(const QPolygonF& line, const QRectF& rect)
{
    std::vector<QPolygonF> pieces;
    for (int i = 1; i < line.size(); ++i) {
        QPointF a = line[i - 1];
        QPointF b = line[i];
        if (!clipSegment(a, b, rect))
            continue;
        if (pieces.empty() || pieces.back().back() != a)
            pieces.emplace_back(QPolygonF() << a);
        pieces.back() << b;
    }
    return pieces;
}

QPainterPath Clipping::clipArea(const QPolygonF& area, const QRectF& rect)
{
    QPainterPath path;
    path.addPolygon(area);
    path.closeSubpath();
    if (rect.contains(area.boundingRect()))
        return path;
    QPainterPath bounds;
    bounds.addRect(rect);
    return path.intersected(bounds);
}

} // namespace Orv::Chart
