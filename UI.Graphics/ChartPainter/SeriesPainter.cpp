#include "SeriesPainter_p.h"

#include "Clipping_p.h"
#include "SeriesLook_p.h"

#include "KelChartAxisDiscrete.h"

#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Orv::Chart {

namespace {

using Comp = Orv::Math::Vector3::Comp;

constexpr double undefinedMarkSize = 4.5;

bool finite(const QPointF& p)
{
    return std::isfinite(p.x()) && std::isfinite(p.y());
}

} // namespace

SeriesPainter::SeriesPainter(QPainter& painter, const Plot& pipeline, const ChartLayout& layout,
                             std::size_t index, const KelChartDecimatedView& view, LineStroke::Joins joins)
    : m_painter(painter)
    , m_pipeline(pipeline)
    , m_layout(layout)
    , m_index(index)
    , m_cache(pipeline.scaling().variable(index))
    , m_style(m_cache.variable().style)
    , m_matrix(pipeline.scaling().preciseMatrix(index))
    , m_xOffset(categoryOffset())
    , m_view(view)
    , m_points(view.data())
    , m_joins(joins)
{
}

void SeriesPainter::paint()
{
    const std::vector<Run> joined = runs();
    const QString plot = m_style.style.get();
    m_painter.save();
    m_painter.setClipRect(m_layout.plot());
    if (SeriesLook::fills(m_style) && plot != KelChart::styleBar)
        paintFill(joined);
    if (SeriesLook::drawsFromBaseLine(m_style))
        paintBaseLine();
    if (plot == KelChart::styleBar)
        paintBars();
    else if (plot == QLatin1String("stick"))
        paintSticks(joined);
    else
        paintLines(joined);
    paintSymbols();
    paintUndefined();
    m_painter.restore();
}

QPointF SeriesPainter::pixel(double x, double y) const
{
    const Orv::Math::DoubleMatrix::Point cube = m_matrix.map(x + m_xOffset, y, 0.0);
    return m_layout.toPixel(cube.x, cube.y);
}

QPointF SeriesPainter::pointPixel(std::size_t k) const
{
    return pixel(m_points.x[k], m_points.y[k]);
}

// The points land where `pixel` puts them.
KelChartDecimatedView::Placement SeriesPainter::placement() const
{
    const QRectF& plot = m_layout.plot();
    return {m_matrix, m_xOffset, plot.left(), plot.bottom(), plot.width(), plot.height()};
}

// A discrete axis labels each category at its label offset within the slot.
double SeriesPainter::categoryOffset() const
{
    if (!m_pipeline.scaling().isAxisDiscrete(Comp::X, m_index))
        return 0.0;
    const PlotAxis* axis = m_pipeline.axis(m_cache.variable().xAxis.get());
    const auto* discrete = axis ? dynamic_cast<const KelChartAxisDiscrete*>(axis->axis) : nullptr;
    return discrete ? SeriesLook::entry(discrete->labelOffset.get(), 0, 0.0) : 0.0;
}

double SeriesPainter::baseLinePixelY() const
{
    return pixel(0.0, m_pipeline.scaling().baseLine(m_index, Comp::Y)).y();
}

// The view breaks lines at points without y and at NaN points.
std::vector<SeriesPainter::Run> SeriesPainter::runs() const
{
    std::vector<Run> result(1);
    for (const std::size_t k : m_view.lines(placement())) {
        const QPointF at = k == KelChartDecimatedView::breakMark ? QPointF(qQNaN(), qQNaN()) : pointPixel(k);
        if (!finite(at) && !result.back().empty())
            result.emplace_back();
        if (finite(at))
            result.back().push_back(at);
    }
    if (result.back().empty())
        result.pop_back();
    return result;
}

// A point without y is marked only between the defined points' first and last x, where it
// breaks the series; before or after them the series has merely not started or already
// ended. Points without x likewise between the lowest and the highest defined y.
std::vector<QPointF> SeriesPainter::undefinedMarks() const
{
    const Orv::Math::BoundingBox& box = m_cache.bounds();
    const KelChartDecimatedView::Span& span = m_view.numberSpan();
    std::vector<QPointF> marks;
    const auto markX = [&](double x) {
        if (x >= span.lowX && x <= span.highX)
            marks.push_back(pixel(x, box.min().y()));
    };
    const auto markY = [&](double y) {
        if (y >= span.lowY && y <= span.highY)
            marks.push_back(pixel(box.min().x(), y));
    };
    for (std::size_t k = 0; k < m_points.yUndefCount; ++k)
        markX(m_points.yUndef[k]);
    for (std::size_t k = 0; k < m_points.xUndefCount; ++k)
        markY(m_points.xUndef[k]);
    for (const std::size_t k : m_view.halfNaN()) {
        if (std::isnan(m_points.y[k]))
            markX(m_points.x[k]);
        else
            markY(m_points.y[k]);
    }
    return marks;
}

QBrush SeriesPainter::yGradient(const QList<QColor>& colours) const
{
    Orv::Math::Vector2 extents;
    double baseLine = 0.0;
    m_pipeline.scaling().gradientExtents(m_index, Comp::Y, extents, baseLine);
    return SeriesLook::gradient(colours, pixel(0.0, extents.x()), pixel(0.0, extents.y()));
}

void SeriesPainter::paintFill(const std::vector<Run>& runs)
{
    const double base = baseLinePixelY();
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(SeriesLook::fillBrush(m_style, 0, yGradient(m_style.fillGradient.get())));
    for (const Run& run : runs) {
        QPolygonF area(QVector<QPointF>(run.begin(), run.end()));
        area << QPointF(run.back().x(), base) << QPointF(run.front().x(), base);
        m_painter.drawPath(Clipping::clipArea(area, m_layout.plot()));
    }
}

void SeriesPainter::paintBaseLine()
{
    const double y = baseLinePixelY();
    m_painter.setPen(QPen(m_pipeline.chart().textColor.get(), 1.0));
    m_painter.drawLine(QPointF(m_layout.plot().left(), y), QPointF(m_layout.plot().right(), y));
}

void SeriesPainter::paintLines(const std::vector<Run>& runs)
{
    const QString plot = m_style.style.get();
    if (plot != KelChart::styleLine && plot != KelChart::styleSpline && plot != KelChart::styleStep)
        return;
    m_painter.setPen(SeriesLook::linePen(m_style, yGradient(m_style.lineGradient.get())));
    m_painter.setBrush(Qt::NoBrush);
    for (const Run& run : runs) {
        if (plot == KelChart::styleStep)
            paintPolyline(steps(run));
        else if (plot == KelChart::styleSpline)
            paintSpline(run);
        else
            paintPolyline(QPolygonF(QVector<QPointF>(run.begin(), run.end())));
    }
}

void SeriesPainter::paintPolyline(const QPolygonF& line)
{
    for (const QPolygonF& piece : Clipping::clipPolyline(line, m_layout.plot()))
        LineStroke::drawLine(m_painter, piece, m_joins);
}

QPolygonF SeriesPainter::steps(const Run& run)
{
    QPolygonF line;
    for (std::size_t k = 0; k < run.size(); ++k) {
        if (k > 0)
            line << QPointF(run[k].x(), run[k - 1].y());
        line << run[k];
    }
    return line;
}

// A Catmull-Rom curve through the points, as cubic Bezier pieces.
void SeriesPainter::paintSpline(const Run& run)
{
    QPainterPath path(run.front());
    for (std::size_t k = 1; k < run.size(); ++k) {
        const QPointF before = run[k > 1 ? k - 2 : 0];
        const QPointF after = run[std::min(k + 1, run.size() - 1)];
        path.cubicTo(run[k - 1] + (run[k] - before) / 6.0, run[k] - (after - run[k - 1]) / 6.0, run[k]);
    }
    for (const QPolygonF& line : path.toSubpathPolygons())
        paintPolyline(line);
}

// The sticks to the lowest and highest point of each pixel column cover the rest.
void SeriesPainter::paintSticks(const std::vector<Run>& runs)
{
    const double base = baseLinePixelY();
    // A gradient line colours sticks as it colours lines: by y.
    m_painter.setPen(SeriesLook::linePen(m_style, yGradient(m_style.lineGradient.get())));
    for (const Run& run : runs)
        for (const QPointF& point : run) {
            QPointF foot(point.x(), base);
            QPointF top = point;
            if (Clipping::clipSegment(foot, top, m_layout.plot()))
                m_painter.drawLine(foot, top);
        }
}

// Bar widths and offsets count in the smallest x spacing of the series.
void SeriesPainter::paintBars()
{
    const double spacing = m_view.minXDelta();
    const double unit = std::isfinite(spacing) && spacing > 0 ? spacing : 1.0;
    const double base = m_pipeline.scaling().baseLine(m_index, Comp::Y);
    m_painter.setPen(SeriesLook::linePen(m_style, yGradient(m_style.lineGradient.get())));
    const QBrush gradient = yGradient(m_style.fillGradient.get());
    for (std::size_t k = 0; k < m_points.size; ++k) {
        if (!finite(pointPixel(k)))
            continue;
        const double centre = m_points.x[k] + SeriesLook::entry(m_style.barOffset.get(), k, 0.0) * unit;
        const double half = SeriesLook::entry(m_style.barWidth.get(), k, 1.0) * unit / 2.0;
        const QRectF bar = QRectF(pixel(centre - half, m_points.y[k]), pixel(centre + half, base))
                               .normalized()
                               .intersected(m_layout.plot());
        if (bar.isEmpty())
            continue;
        m_painter.setBrush(SeriesLook::fillBrush(m_style, k, gradient));
        m_painter.drawRect(bar);
        const double cap = SeriesLook::entry(m_style.barTopSize.get(), k, 0.0);
        const QRectF top(bar.left(), pixel(centre, m_points.y[k]).y() - cap / 2, bar.width(), cap);
        if (cap > 0)
            m_painter.fillRect(top.intersected(m_layout.plot()),
                               SeriesLook::entry(m_style.barTopColor.get(), k, QColor(Qt::black)));
    }
}

// One symbol per pixel, the one that would be drawn on top.
void SeriesPainter::paintSymbols()
{
    if (!SeriesLook::hasSymbols(m_style))
        return;
    for (const std::size_t k : m_view.points(placement())) {
        const QPointF at = pointPixel(k);
        if (m_layout.plot().contains(at))
            SeriesLook::paintSymbol(m_painter, m_style, k, at);
    }
}

void SeriesPainter::paintUndefined()
{
    m_painter.setPen(QPen(SeriesLook::lineColour(m_style), 1.5));
    for (const QPointF& at : undefinedMarks()) {
        if (!m_layout.plot().contains(at))
            continue;
        m_painter.drawLine(at + QPointF(-undefinedMarkSize, -undefinedMarkSize),
                           at + QPointF(undefinedMarkSize, undefinedMarkSize));
        m_painter.drawLine(at + QPointF(-undefinedMarkSize, undefinedMarkSize),
                           at + QPointF(undefinedMarkSize, -undefinedMarkSize));
    }
}

} // namespace Orv::Chart
