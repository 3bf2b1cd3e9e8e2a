#include "ChartLayout.h"

#include <algorithm>
#include <cmath>

namespace kelchart {

namespace {

bool hasAxis(const KelChartPipeline& run, AxisSide side)
{
    switch (side) {
    case AxisSide::Bottom:
        return run.xScales().first().valid();
    case AxisSide::Top:
        return run.xScales().second().valid();
    case AxisSide::Left:
        return run.yScales().first().valid();
    case AxisSide::Right:
        break;
    }
    return run.yScales().second().valid();
}

std::vector<std::size_t> legendEntriesOf(const KelChartPipeline& run)
{
    std::vector<std::size_t> entries;
    const KelChartPerVariableScaling& scaling = run.scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i)
        if (scaling.valid(i) && scaling.variable(i).variable().legend.get())
            entries.push_back(i);
    return entries;
}

} // namespace

ChartLayout::ChartLayout(const Pipeline& pipeline, QSize size)
    : ChartLayout(pipeline.run(), size)
{
}

ChartLayout::ChartLayout(const KelChartPipeline& pipeline, QSize size)
    : m_size(size)
    , m_legendEntries(legendEntriesOf(pipeline))
{
    const double left = hasAxis(pipeline, AxisSide::Left) ? verticalAxisWidth : emptySide;
    const double right = hasAxis(pipeline, AxisSide::Right) ? verticalAxisWidth : emptySide;
    const double top = titleHeight + (hasAxis(pipeline, AxisSide::Top) ? horizontalAxisHeight : emptySide / 2);
    const double width = std::max(1.0, size.width() - left - right);
    m_legendColumns = std::max(1, static_cast<int>(width / legendCellWidth));
    const auto rows = static_cast<double>((m_legendEntries.size() + m_legendColumns - 1) / m_legendColumns);
    const double bottom = (hasAxis(pipeline, AxisSide::Bottom) ? horizontalAxisHeight : emptySide)
                          + rows * legendRowHeight + (rows > 0 ? emptySide / 2 : 0);
    m_title = QRectF(0, 0, size.width(), titleHeight);
    m_plot = QRectF(left, top, width, std::max(1.0, size.height() - top - bottom));
}

QRectF ChartLayout::axisBand(AxisSide side) const
{
    switch (side) {
    case AxisSide::Bottom:
        return QRectF(m_plot.left(), m_plot.bottom(), m_plot.width(), horizontalAxisHeight);
    case AxisSide::Top:
        return QRectF(m_plot.left(), m_plot.top() - horizontalAxisHeight, m_plot.width(), horizontalAxisHeight);
    case AxisSide::Left:
        return QRectF(m_plot.left() - verticalAxisWidth, m_plot.top(), verticalAxisWidth, m_plot.height());
    case AxisSide::Right:
        break;
    }
    return QRectF(m_plot.right(), m_plot.top(), verticalAxisWidth, m_plot.height());
}

QRectF ChartLayout::legendCell(std::size_t entry) const
{
    const auto column = static_cast<double>(entry % static_cast<std::size_t>(m_legendColumns));
    const auto row = static_cast<double>(entry / static_cast<std::size_t>(m_legendColumns));
    const double top = m_size.height() - emptySide / 2
                       - std::ceil(static_cast<double>(m_legendEntries.size()) / m_legendColumns) * legendRowHeight;
    return QRectF(m_plot.left() + column * legendCellWidth, top + row * legendRowHeight, legendCellWidth,
                  legendRowHeight);
}

QPointF ChartLayout::toPixel(const Orv::Math::Vector3& cube) const
{
    return QPointF(m_plot.left() + (cube.x() + 1.0) / 2.0 * m_plot.width(),
                   m_plot.bottom() - (cube.y() + 1.0) / 2.0 * m_plot.height());
}

QPointF ChartLayout::alongAxis(AxisSide side, double position) const
{
    switch (side) {
    case AxisSide::Bottom:
        return QPointF(m_plot.left() + position * m_plot.width(), m_plot.bottom());
    case AxisSide::Top:
        return QPointF(m_plot.left() + position * m_plot.width(), m_plot.top());
    case AxisSide::Left:
        return QPointF(m_plot.left(), m_plot.bottom() - position * m_plot.height());
    case AxisSide::Right:
        break;
    }
    return QPointF(m_plot.right(), m_plot.bottom() - position * m_plot.height());
}

} // namespace kelchart
