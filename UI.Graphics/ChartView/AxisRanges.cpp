#include "AxisRanges.h"

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
void addVisible(const KelChartDecimatedView::Data& points, double from, double to, Extent& extent)
{
    for (std::size_t k = 0; k < points.size; ++k)
        if (points.x[k] >= from && points.x[k] <= to)
            extent.add(points.y[k]);
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
    for (const Orv::Chart::PlotAxis& result : pipeline.axes())
        if (result.discrete)
            addFollower(dynamic_cast<KelChartAxisDiscrete*>(pairs.find(result.name)), result);
}

void AxisRanges::addFollower(KelChartAxisDiscrete* axis, const PlotAxis& result)
{
    const bool horizontal = isHorizontal(result.side);
    for (std::size_t i = 0; axis != nullptr && i < m_spans.size(); ++i) {
        if (m_spans[i].horizontal == horizontal && !m_spans[i].inverted) {
            m_followers.push_back({axis, i, result.min, result.max});
            return;
        }
    }
}

void AxisRanges::zoom(QPointF centre, double factor) const
{
    for (std::size_t i = 0; i < m_spans.size(); ++i)
        zoomSpan(i, centre, factor);
}

void AxisRanges::zoomAxis(std::size_t span, QPointF centre, double factor) const
{
    if (span < m_spans.size())
        zoomSpan(span, centre, factor);
}

void AxisRanges::zoomSpan(std::size_t index, QPointF centre, double factor) const
{
    if (!(factor > 0) || !std::isfinite(factor))
        return;
    const AxisSpan& span = m_spans[index];
    const double c = span.valueAt(centre);
    write(index, c - (c - span.min) * factor, c + (span.max - c) * factor);
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
        write(i, span.min + shift, span.max + shift);
    }
}

void AxisRanges::zoomTo(const QRectF& rect) const
{
    const QRectF box = rect.normalized();
    for (std::size_t i = 0; i < m_spans.size(); ++i) {
        const AxisSpan& span = m_spans[i];
        // A band one pixel thin along an axis leaves that axis alone.
        if ((span.horizontal ? box.width() : box.height()) < 1.0)
            continue;
        double a = span.valueAt(box.topLeft());
        double b = span.valueAt(box.bottomRight());
        if (a > b)
            std::swap(a, b);
        write(i, a, b);
    }
}

void AxisRanges::fitVertical(const ChartFrames& frames) const
{
    const Orv::Chart::Plot& pipeline = frames.pipeline();
    const KelChartPerVariableScaling& scaling = pipeline.scaling();
    for (std::size_t index = 0; index < m_spans.size(); ++index) {
        const AxisSpan& span = m_spans[index];
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
                addVisible(frames.view(i).data(), std::min(x->min, x->max), std::max(x->min, x->max), extent);
        }
        if (extent.empty())
            continue;
        // A flat stretch of data still gets a range around it.
        const double margin = extent.max > extent.min ? (extent.max - extent.min) * fitMargin
                                                      : std::max(std::abs(extent.max) * fitMargin, 0.5);
        write(index, extent.min - margin, extent.max + margin);
    }
}

void AxisRanges::write(std::size_t index, double min, double max) const
{
    const AxisSpan& span = m_spans[index];
    const double real[] = {span.logarithmic ? std::pow(10.0, min) : min, span.logarithmic ? std::pow(10.0, max) : max};
    // Ranges the scale could not show (overflowing, empty) leave the axis as it is.
    if (!usable(real[0], real[1]))
        return;
    span.axis->min.set(real[0]);
    span.axis->max.set(real[1]);
    span.axis->tightRange.set(true);
    span.axis->autoScale.set(false);
    // Followers keep the share of the leader's range they showed.
    for (const Follower& follower : m_followers) {
        if (follower.leader != index)
            continue;
        const double perUnit = (follower.max - follower.min) / (span.max - span.min);
        follower.axis->viewMin.set(follower.min + (min - span.min) * perUnit);
        follower.axis->viewMax.set(follower.min + (max - span.min) * perUnit);
    }
}

} // namespace Orv::Chart
