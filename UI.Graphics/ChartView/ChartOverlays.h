#pragma once
// What a view draws over the kept picture of its chart, the same in every
// host: the rubber band, the hover's crosshair, rings on the points the hover
// names and the box with its lines. Positions are the host's logical pixels;
// each function leaves the painter's state as it found it, but for its pen
// and brush.

#include "OrvChartViewExport.h"
#include "ChartNavigator.h"
#include "HoverText.h"

#include <QPainter>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QString>

#include <vector>

namespace Orv::Chart::ChartOverlays {

// The radius of the ring on a point the hover names.
constexpr double markerRadius = 4;

// A dashed rectangle over a translucent fill.
ORV_CHARTVIEW_EXPORT void paintBand(QPainter& painter, const QRectF& band);
// Dashed lines through `at` across the plot.
ORV_CHARTVIEW_EXPORT void paintCrosshair(QPainter& painter, const QRectF& plot, QPointF at);
// A ring on every hit with a place, clipped to just around the plot.
ORV_CHARTVIEW_EXPORT void paintHits(QPainter& painter, const QRectF& plot, const std::vector<HoverText::Hit>& hits);
// A box of lines beside `at`, moved to the other side or the edge to stay inside `area`.
ORV_CHARTVIEW_EXPORT void paintBox(QPainter& painter, QSize area, QPointF at, const QString& text);
// The band while one is drawn; else the crosshair, the rings and the box of the hover.
ORV_CHARTVIEW_EXPORT void paintAll(QPainter& painter, const ChartNavigator& navigator, QSize area);

} // namespace Orv::Chart::ChartOverlays
