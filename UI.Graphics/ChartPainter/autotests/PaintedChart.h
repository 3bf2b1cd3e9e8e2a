#pragma once
// What the painter's tests need again and again: settings written by path,
// and a chart painted into an image or an SVG document as a host paints it.

#include "ChartPainter.h"

#include "KelProperties.h"

#include <QByteArray>
#include <QImage>
#include <QSize>
#include <QStringList>

namespace PaintedChart {

// Writes each "path=value" into the tree; a setting that does not take fails the test.
void assignAll(KelProperties& root, const QStringList& settings);

// The chart on white, the size of the painter's layout.
QImage image(const Orv::Chart::ChartPainter& painter, QSize size);

// The chart as an SVG document, with a view box of its size when asked for.
QByteArray svg(const Orv::Chart::ChartPainter& painter, QSize size, bool withViewBox = false);

} // namespace PaintedChart
