#pragma once
// Cuts drawing geometry to the plot area before it is drawn. Painter clipping
// alone is not enough: Qt's SVG generator writes no clip paths, so anything
// drawn beyond the plot area (data outside a fixed axis range) would show in
// the SVG drawing.

#include <QPainterPath>
#include <QPolygonF>
#include <QRectF>

#include <vector>

namespace Orv::Chart::Clipping {

// Cuts the segment a-b to the rectangle; false when none of it lies inside.
bool clipSegment(QPointF& a, QPointF& b, const QRectF& rect);
// The pieces of an open line that lie inside the rectangle.
std::vector<QPolygonF> clipPolyline(const QPolygonF& line, const QRectF& rect);
// The part of a closed area that lies inside the rectangle.
QPainterPath clipArea(const QPolygonF& area, const QRectF& rect);

} // namespace Orv::Chart
