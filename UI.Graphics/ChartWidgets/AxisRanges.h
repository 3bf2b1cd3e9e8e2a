#pragma once
// Pan and zoom as a host does them: through the chart's properties. Each
// continuous axis of the frame gets a fixed range ("autoScale" off, "min" and
// "max") computed in its scale's coordinates, which are log10 of the values
// on a logarithmic axis, and written back as real values (numbers in the
// axis's unit on a time axis). Discrete axes keep their categories.

#include "OrvChartWidgetsExport.h"
#include "ChartLayout.h"
#include "ElementClasses.h"
#include "Plot.h"

#include "KelChartAxisContinuous.h"

#include <QPointF>
#include <QRectF>

#include <vector>

namespace Orv::Chart {

// One continuous axis of a frame: its range in scale coordinates and the
// plot edge it runs along.
struct ORV_CHARTWIDGETS_EXPORT AxisSpan {
    KelChartAxisContinuous* axis;
    bool horizontal;
    bool logarithmic;
    bool inverted;
    double min;
    double max;
    QRectF plot;

    // The scale coordinate under the pixel, along this axis.
    double valueAt(QPointF pixel) const;
    // Scale coordinates per pixel.
    double perPixel() const;
};

class ORV_CHARTWIDGETS_EXPORT AxisRanges {
public:
    AxisRanges(const Orv::Chart::Plot& pipeline, const Orv::Chart::AxisPairs& pairs,
               const Orv::Chart::ChartLayout& layout);

    const std::vector<AxisSpan>& spans() const { return m_spans; }

    // `factor` < 1 zooms in, keeping the value under `centre` in place.
    void zoom(QPointF centre, double factor) const;
    // Moves the ranges so that the value under `from` comes under `to`.
    void pan(QPointF from, QPointF to) const;
    // Zooms to the values inside the pixel rectangle.
    void zoomTo(const QRectF& rect) const;
    // Every continuous axis back to automatic ranges.
    static void autoScaleAll(const Orv::Chart::AxisPairs& pairs);

private:
    static void write(const AxisSpan& span, double min, double max);

    std::vector<AxisSpan> m_spans;
};

} // namespace Orv::Chart
