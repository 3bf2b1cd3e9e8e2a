#pragma once
// What the painter's tests need again and again: settings written by path,
// the sample chart, one series set up as for a file's data, and a chart
// painted into an image or an SVG document as a host paints it.

#include "ChartPainter.h"
#include "DataSet.h"
#include "Plot.h"

#include "KelChart2D.h"
#include "KelProperties.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QSize>
#include <QStringList>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace PaintedChart {

// Writes each "path=value" into the tree; a setting that does not take fails the test.
void assignAll(KelProperties& root, const QStringList& settings);

// The sample chart with its data bound.
std::unique_ptr<KelChart2D> sample(KelModifiedGroup& group);

// One series of a data set; empty flags leave every value defined.
Orv::Chart::DataSeries series(const QString& xName, std::vector<float> x, const QString& yName, std::vector<float> y,
                              std::vector<bool> xUndefined = {}, std::vector<bool> yUndefined = {});

// The chart on white, the size of the painter's layout.
QImage image(const Orv::Chart::ChartPainter& painter, QSize size);

// The chart as an SVG document, with a view box of its size when asked for.
QByteArray svg(const Orv::Chart::ChartPainter& painter, QSize size, bool withViewBox = false);

// The line colour every SeriesChart draws its series in.
const QColor seriesColour(0xff, 0x00, 0xff);

// A chart set up for one series as for a file's data, its line in the series colour.
class SeriesChart : public ::testing::Test {
protected:
    // A fresh chart for `one` with `settings` applied, through the pipeline to a painter at `size`.
    void draw(Orv::Chart::DataSeries one, const QStringList& settings = {});

    QImage image() const { return PaintedChart::image(*painter, size); }
    QByteArray svg(bool withViewBox = false) const { return PaintedChart::svg(*painter, size, withViewBox); }
    // Where the first variable's point (x, y) is drawn.
    QPointF pixelOf(double x, double y) const;

    QSize size{400, 300};
    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    std::unique_ptr<Orv::Chart::Plot> plot;
    std::unique_ptr<Orv::Chart::ChartPainter> painter;
};

} // namespace PaintedChart
