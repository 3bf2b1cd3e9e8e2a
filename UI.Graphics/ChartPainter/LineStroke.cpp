#include "LineStroke_p.h"

#include <QLineF>
#include <QPaintEngine>
#include <QVector>

#include <cmath>

namespace Orv::Chart {

namespace {

// Qt strokes solid pens up to one device pixel wide on a fast path of its own.
// The device's pixel ratio scales like a transform but is not part of one.
bool isThin(const QPainter& painter, const QPen& pen)
{
    const double ratio = painter.device() != nullptr ? painter.device()->devicePixelRatioF() : 1.0;
    const double scale =
        pen.isCosmetic() ? 1.0 : ratio * std::sqrt(std::abs(painter.combinedTransform().determinant()));
    return pen.widthF() * scale <= 1.0;
}

bool drawsOnRaster(QPainter& painter)
{
    const QPaintEngine* engine = painter.paintEngine();
    return engine != nullptr && engine->type() == QPaintEngine::Raster;
}

bool drawsAsSegments(QPainter& painter, LineStroke::Joins joins)
{
    const QPen& pen = painter.pen();
    const bool joinsMatch =
        joins == LineStroke::Joins::Plain || (pen.joinStyle() == Qt::RoundJoin && pen.capStyle() == Qt::FlatCap);
    return joinsMatch && pen.style() == Qt::SolidLine && !isThin(painter, pen) && pen.brush().isOpaque()
           && painter.opacity() >= 1.0 && drawsOnRaster(painter);
}

// The segments from vertex `first` to vertex `last`.
QVector<QLineF> segments(const QPolygonF& line, int first, int last)
{
    QVector<QLineF> result;
    result.reserve(last - first);
    for (int i = first; i < last; ++i)
        result.append(QLineF(line[i], line[i + 1]));
    return result;
}

void drawWithCaps(QPainter& painter, const QVector<QLineF>& lines, Qt::PenCapStyle caps)
{
    const QPen pen = painter.pen();
    QPen capped = pen;
    capped.setCapStyle(caps);
    painter.setPen(capped);
    painter.drawLines(lines);
    painter.setPen(pen);
}

// The inner segments' round caps are the round joins; the line's two ends keep the pen's flat caps.
void drawRoundJoined(QPainter& painter, const QPolygonF& line)
{
    const int last = line.size() - 1;
    painter.drawLine(line[0], line[1]);
    painter.drawLine(line[last - 1], line[last]);
    drawWithCaps(painter, segments(line, 1, last - 1), Qt::RoundCap);
}

} // namespace

void LineStroke::drawLine(QPainter& painter, const QPolygonF& line, Joins joins)
{
    // Up to three points the polyline is as cheap, and a single joint has no inner segment to round it.
    const int fewest = joins == Joins::Plain ? 3 : 4;
    if (line.size() < fewest || !drawsAsSegments(painter, joins))
        painter.drawPolyline(line);
    else if (joins == Joins::Plain)
        drawWithCaps(painter, segments(line, 0, line.size() - 1), Qt::FlatCap);
    else
        drawRoundJoined(painter, line);
}

} // namespace Orv::Chart
