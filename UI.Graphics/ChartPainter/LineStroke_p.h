#pragma once
// Strokes open lines with the painter's pen as cheaply as gives the picture
// asked for. Qt's stroker is very slow on a line wider than a pixel that turns
// back on itself again and again, as a dense series does in every pixel
// column, while it draws separate segments fast. Round-capped segments cover
// exactly what a round-joined line covers, so a solid, opaque, round-joined
// pen with flat caps draws the line as its segments: the inner ones with round
// caps, the first and the last with the pen's flat caps. Only where the
// antialiased edges of two segments overlap may a pixel come out a shade darker.
//
// Everything else keeps Qt's polyline: pens at most a device pixel wide (Qt's
// own fast path), dashed pens (the dashes run on along the line), translucent
// pens or painters (overlapping segments would show darker) and devices other
// than images and widgets, such as SVG files, where one polyline is exact and
// costs nothing extra.

#include <QPainter>
#include <QPolygonF>

namespace Orv::Chart::LineStroke {

enum class Joins {
    // The pen's own joins: the settled picture.
    Pen,
    // None at all, every segment flat-capped: the cheapest line wider than a
    // pixel, for frames drawn while the user drags.
    Plain,
};

// Draws the open line with the painter's pen, as drawPolyline does.
void drawLine(QPainter& painter, const QPolygonF& line, Joins joins);

} // namespace Orv::Chart::LineStroke
