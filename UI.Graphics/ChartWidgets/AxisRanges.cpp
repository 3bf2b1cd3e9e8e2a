#include "AxisRanges.h"

#include "KelChartAxisPair.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Orv::Chart {

namespace {

// Narrower ranges than this, relative to their magnitude, have no distinct
// doubles left to tick; zooming stops there.
constexpr double narrowest = 1e-12;
// The share of a fitted range left free above and below the data.
constexpr double fitMargin = 0.05;

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

bool isHorizontal(AxisSide side)
{
    return side == AxisSide::Bottom || side == AxisSide::Top;
}

struct Extent {
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();

    void add(double value)
    {
        if (!std::isfinite(value))
            return;
        min = std::min(min, value);
        max = std::max(max, value);
    }
    bool empty() const { return !(min <= max); }
};

// The y extent of a series' points whose x lies in [from, to].
void addVisible(const KelChartVariableCache& cache, double from, double to, Extent& extent)
{
    const auto& xs = cache.x();
    const auto& ys = cache.y();
    for (std::size_t k = 0; k < xs.size() && k < ys.size(); ++k)
        if (xs[k] >= from && xs[k] <= to)
            extent.add(ys[k]);
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
        m_spans.push_back({axis, result.name, result.side, isHorizontal(result.side), result.ticks.logarithmic(),
                           scale->inverted(), result.min, result.max, layout.plot(), layout.axisBand(result.side)});
    }
}

void AxisRanges::zoom(QPointF centre, double factor) const
{
    for (const AxisSpan& span : m_spans)
        zoomSpan(span, centre, factor);
}

void AxisRanges::zoomAxis(std::size_t span, QPointF centre, double factor) const
{
    if (span < m_spans.size())
        zoomSpan(m_spans[span], centre, factor);
}

void AxisRanges::zoomSpan(const AxisSpan& span, QPointF centre, double factor)
{
    if (!(factor > 0) || !std::isfinite(factor))
        return;
    const double c = span.valueAt(centre);
    write(span, c - (c - span.min) * factor, c + (span.max - c) * factor);
}

std::size_t AxisRanges::spanAt(QPointF pixel) const
{
    for (std::size_t i = 0; i < m_spans.size(); ++i)
        if (m_spans[i].band.contains(pixel))
            return i;
    return npos;
}

void AxisRanges::pan(QPointF from, QPointF to, std::size_t only) const
{
    for (std::size_t i = 0; i < m_spans.size(); ++i) {
        if (only != npos && i != only)
            continue;
        const AxisSpan& span = m_spans[i];
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

void AxisRanges::fitVertical(const Orv::Chart::Plot& pipeline) const
{
    const KelChartPerVariableScaling& scaling = pipeline.scaling();
    for (const AxisSpan& span : m_spans) {
        if (span.horizontal)
            continue;
        Extent extent;
        for (std::size_t i = 0; i < scaling.size(); ++i) {
            if (!scaling.valid(i))
                continue;
            const KelChartVariableCache& cache = scaling.variable(i);
            if (cache.variable().yAxis.get() != span.name)
                continue;
            const PlotAxis* x = pipeline.axis(cache.variable().xAxis.get());
            if (x != nullptr && !x->discrete)
                addVisible(cache, std::min(x->min, x->max), std::max(x->min, x->max), extent);
        }
        if (extent.empty())
            continue;
        // A flat stretch of data still gets a range around it.
        const double margin = extent.max > extent.min ? (extent.max - extent.min) * fitMargin
                                                      : std::max(std::abs(extent.max) * fitMargin, 0.5);
        write(span, extent.min - margin, extent.max + margin);
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
    span.axis->tightRange.set(true);
    span.axis->autoScale.set(false);
}

} // namespace Orv::Chart
