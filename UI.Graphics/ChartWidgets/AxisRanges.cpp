#include "AxisRanges.h"

#include "KelChartAxisPair.h"

#include <cmath>
#include <utility>

namespace Orv::Chart {

namespace {

// Narrower ranges than this, relative to their magnitude, have no distinct
// doubles left to tick; zooming stops there.
constexpr double narrowest = 1e-12;

bool usable(double min, double max)
{
    const double width = max - min;
    return std::isfinite(min) && std::isfinite(max) && width > narrowest * std::max(std::abs(min), std::abs(max));
}

void autoScaleAxis(KelChartAxis* axis)
{
    if (auto* continuous = dynamic_cast<KelChartAxisContinuous*>(axis))
        continuous->autoScale.set(true);
}

} // namespace

double AxisSpan::valueAt(QPointF pixel) const
{
    double t = horizontal ? (pixel.x() - plot.left()) / plot.width() : (plot.bottom() - pixel.y()) / plot.height();
    if (inverted)
        t = 1.0 - t;
    return min + t * (max - min);
}

double AxisSpan::perPixel() const
{
    return (max - min) / (horizontal ? plot.width() : plot.height());
}

AxisRanges::AxisRanges(const Orv::Chart::Plot& pipeline, const Orv::Chart::AxisPairs& pairs,
                       const Orv::Chart::ChartLayout& layout)
{
    for (const Orv::Chart::PlotAxis& result : pipeline.axes()) {
        auto* axis = dynamic_cast<KelChartAxisContinuous*>(pairs.find(result.name));
        const KelChartAxisScale* scale = pipeline.run().findScale(result.name);
        if (result.discrete || axis == nullptr || scale == nullptr)
            continue;
        const bool horizontal = result.side == Orv::Chart::AxisSide::Bottom || result.side == Orv::Chart::AxisSide::Top;
        m_spans.push_back({axis, horizontal, result.ticks.logarithmic(), scale->inverted(), result.min, result.max,
                           layout.plot()});
    }
}

void AxisRanges::zoom(QPointF centre, double factor) const
{
    if (!(factor > 0) || !std::isfinite(factor))
        return;
    for (const AxisSpan& span : m_spans) {
        const double c = span.valueAt(centre);
        write(span, c - (c - span.min) * factor, c + (span.max - c) * factor);
    }
}

void AxisRanges::pan(QPointF from, QPointF to) const
{
    for (const AxisSpan& span : m_spans) {
        const double shift = span.valueAt(from) - span.valueAt(to);
        write(span, span.min + shift, span.max + shift);
    }
}

void AxisRanges::zoomTo(const QRectF& rect) const
{
    const QRectF box = rect.normalized();
    for (const AxisSpan& span : m_spans) {
        // A band one pixel thin along an axis leaves that axis alone.
        if ((span.horizontal ? box.width() : box.height()) < 1.0)
            continue;
        double a = span.valueAt(box.topLeft());
        double b = span.valueAt(box.bottomRight());
        if (a > b)
            std::swap(a, b);
        write(span, a, b);
    }
}

void AxisRanges::autoScaleAll(const Orv::Chart::AxisPairs& pairs)
{
    for (KelChartAxisPair* pair : {pairs.x, pairs.y, pairs.z}) {
        if (pair == nullptr)
            continue;
        autoScaleAxis(pair->first());
        autoScaleAxis(pair->second());
    }
}

void AxisRanges::write(const AxisSpan& span, double min, double max)
{
    if (span.logarithmic) {
        min = std::pow(10.0, min);
        max = std::pow(10.0, max);
    }
    // Ranges the scale could not show (overflowing, empty) leave the axis as it is.
    if (!usable(min, max))
        return;
    span.axis->min.set(min);
    span.axis->max.set(max);
    span.axis->autoScale.set(false);
}

} // namespace Orv::Chart
