#pragma once
// Draws one cached variable: every point goes through the variable's matrix
// into the normalised cube and from there to its pixel; nothing is scaled
// here. Lines, fills and sticks go through the variable's decimated view (per
// pixel column the points that make a difference), symbols through one point
// per pixel cell, so that millions of points draw as fast as thousands; bars,
// each as wide as the data say, are drawn one by one. Points on a discrete x axis sit at the axis's label offset within
// their category slot, where the axis puts its labels.
//
// Everything is cut to the plot area (see Clipping).
//
// Undefined points are drawn where the cache puts them, as a cross: a point
// without y at its x and the lowest y of the series, a point without x at its
// y and the lowest x. NaN values, which the cache keeps as ordinary values,
// are marked the same way. Only gaps inside the series are marked: a point
// without y before the first or after the last defined point in x (a column
// that starts late or ends early) is not, nor a point without x outside the
// defined points' y extent. Lines break at points without y and at NaN points,
// never running through them. Bars, sticks and filled areas start at the base
// line of the variable's y axis, which is drawn across the plot.

#include "ChartLayout.h"
#include "LineStroke_p.h"
#include "Plot.h"

#include "KelChartDecimatedView.h"

#include <QPainter>
#include <QPointF>

#include <cstddef>
#include <limits>
#include <vector>

namespace Orv::Chart {

class SeriesPainter {
public:
    // `view` is the decimated view of the variable's cache; `joins` those of its lines.
    SeriesPainter(QPainter& painter, const Plot& pipeline, const ChartLayout& layout, std::size_t index,
                  const KelChartDecimatedView& view, LineStroke::Joins joins);
    void paint();

private:
    // Runs of defined points that a line may join.
    using Run = std::vector<QPointF>;

    QPointF pixel(double x, double y) const;
    QPointF pointPixel(std::size_t k) const;
    KelChartDecimatedView::Placement placement() const;
    double categoryOffset() const;
    double baseLinePixelY() const;
    std::vector<Run> runs() const;
    std::vector<QPointF> undefinedMarks() const;

    void paintFill(const std::vector<Run>& runs);
    void paintBaseLine();
    void paintLines(const std::vector<Run>& runs);
    void paintPolyline(const QPolygonF& line);
    static QPolygonF steps(const Run& run);
    void paintSpline(const Run& run);
    void paintSticks(const std::vector<Run>& runs);
    void paintBars();
    void paintSymbols();
    void paintUndefined();
    QBrush yGradient(const QList<QColor>& colours) const;

    QPainter& m_painter;
    const Plot& m_pipeline;
    const ChartLayout& m_layout;
    std::size_t m_index;
    const KelChartVariableCache& m_cache;
    const KelChartVariableStyle& m_style;
    const Orv::Math::DoubleMatrix m_matrix;
    double m_xOffset;
    const KelChartDecimatedView& m_view;
    // The points drawn, read once per frame.
    KelChartDecimatedView::Data m_points;
    LineStroke::Joins m_joins;
};

} // namespace Orv::Chart
