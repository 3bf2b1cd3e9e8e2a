#pragma once
// Pan and zoom as a host does them: through the chart's properties. Each
// continuous axis of the frame gets a fixed range ("autoScale" off, "min" and
// "max") computed in its scale's coordinates, which are log10 of the values
// on a logarithmic axis, and written back as real values (numbers in the
// axis's unit on a time axis). The range is shown as written ("tightRange"
// on): a zoom in and out again, or a pan, moves by exactly what it asked.
// A discrete axis along the same edges as a continuous one follows it with a
// view window ("viewMin", "viewMax"), so that bars stay on their hours.

#include "OrvChartViewExport.h"
#include "ChartFrames.h"
#include "ChartLayout.h"
#include "ElementClasses.h"
#include "Plot.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"

#include <QPointF>
#include <QRectF>

#include <cstddef>
#include <vector>

namespace Orv::Chart {

// One continuous axis of a frame: its range in scale coordinates and the
// plot edge it runs along.
struct ORV_CHARTVIEW_EXPORT AxisSpan {
    KelChartAxisContinuous* axis;
    // As series name it ("axis.y.left").
    QString name;
    AxisSide side;
    bool horizontal;
    bool logarithmic;
    bool inverted;
    double min;
    double max;
    QRectF plot;
    // The band beside the plot with the axis's ticks and labels.
    QRectF band;

    // The scale coordinate under the pixel, along this axis.
    double valueAt(QPointF pixel) const;
    // Scale coordinates per pixel.
    double perPixel() const;
};

class ORV_CHARTVIEW_EXPORT AxisRanges {
public:
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);

    AxisRanges(const Orv::Chart::Plot& pipeline, const Orv::Chart::AxisPairs& pairs,
               const Orv::Chart::ChartLayout& layout);

    const std::vector<AxisSpan>& spans() const { return m_spans; }

    // `factor` < 1 zooms in, keeping the value under `centre` in place.
    void zoom(QPointF centre, double factor) const;
    // The same along one axis only.
    void zoomAxis(std::size_t span, QPointF centre, double factor) const;
    // The span whose axis band holds the pixel, or npos.
    std::size_t spanAt(QPointF pixel) const;
    // The vertical axes to the data inside the horizontal ranges shown, with
    // a margin of 5% at each end; axes without such data keep their ranges.
    // `frames` are those the ranges were taken from; their views give the
    // points, live series included.
    void fitVertical(const ChartFrames& frames) const;
    // Moves the ranges so that the value under `from` comes under `to`; all
    // of them, or only the span at that index.
    void pan(QPointF from, QPointF to, std::size_t only = npos) const;
    // Zooms to the values inside the pixel rectangle.
    void zoomTo(const QRectF& rect) const;

private:
    // A discrete axis that moves with the continuous span `leader`.
    struct Follower {
        KelChartAxisDiscrete* axis;
        std::size_t leader;
        double min;
        double max;
    };

    void addFollower(KelChartAxisDiscrete* axis, const PlotAxis& result);
    void write(std::size_t span, double min, double max) const;
    void zoomSpan(std::size_t span, QPointF centre, double factor) const;

    std::vector<AxisSpan> m_spans;
    std::vector<Follower> m_followers;
};

} // namespace Orv::Chart
