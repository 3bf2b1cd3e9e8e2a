#include "ChartLayout.h"

#include <algorithm>
#include <cmath>

namespace Orv::Chart {

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

struct LegendEntry {
    std::size_t cache;
    const KelChartVariable* variable;
};

// The drawn series with a legend entry, in the caches' order, which is their "order".
std::vector<LegendEntry> drawnEntries(const KelChartPipeline& run)
{
    std::vector<LegendEntry> entries;
    const KelChartPerVariableScaling& scaling = run.scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i)
        if (scaling.valid(i) && scaling.variable(i).variable().legend.get())
            entries.push_back({i, &scaling.variable(i).variable()});
    return entries;
}

// With the hidden series (no cache: "enabled" off) placed among them by their "order".
std::vector<LegendEntry> withHiddenEntries(std::vector<LegendEntry> entries, const KelChartVariableList& variables)
{
    for (unsigned i = 0; i < variables.size(); ++i) {
        const auto* variable = dynamic_cast<const KelChartVariable*>(variables[i]);
        if (variable == nullptr || variable->enabled.get() || !variable->legend.get())
            continue;
        const auto after = std::find_if(entries.begin(), entries.end(), [variable](const LegendEntry& entry) {
            return entry.variable->order.get() > variable->order.get();
        });
        entries.insert(after, {ChartLayout::npos, variable});
    }
    return entries;
}

} // namespace

namespace {

LegendLook withHidden(LegendLook look, bool listsHidden)
{
    look.listsHidden = listsHidden;
    return look;
}

} // namespace

ChartLayout::ChartLayout(const Plot& pipeline, QSize size, bool listsHidden)
    : ChartLayout(pipeline.run(), size, withHidden(legendLookOf(pipeline.chart()), listsHidden),
                  &pipeline.chart().variables)
{
}

ChartLayout::ChartLayout(const KelChartPipeline& pipeline, QSize size, const LegendLook& legend,
                         const KelChartVariableList* variables)
    : m_size(size)
    , m_legend(legend)
{
    std::vector<LegendEntry> entries = drawnEntries(pipeline);
    if (legend.listsHidden && variables != nullptr)
        entries = withHiddenEntries(std::move(entries), *variables);
    for (const LegendEntry& entry : entries) {
        m_legendEntries.push_back(entry.cache);
        m_legendVariables.push_back(entry.variable);
    }
    Margins margins{hasAxis(pipeline, AxisSide::Left) ? verticalAxisWidth : emptySide,
                    hasAxis(pipeline, AxisSide::Right) ? verticalAxisWidth : emptySide,
                    titleHeight + (hasAxis(pipeline, AxisSide::Top) ? horizontalAxisHeight : emptySide / 2),
                    hasAxis(pipeline, AxisSide::Bottom) ? horizontalAxisHeight : emptySide};
    if (m_legend.shown && !m_legendEntries.empty()) {
        if (m_legend.band == LegendBand::Left || m_legend.band == LegendBand::Right)
            placeLegendBeside(margins);
        else
            placeLegendAcross(margins);
    }
    m_title = QRectF(0, 0, size.width(), titleHeight);
    m_plot = QRectF(margins.left, margins.top, std::max(1.0, size.width() - margins.left - margins.right),
                    std::max(1.0, size.height() - margins.top - margins.bottom));
    if (m_legend.band == LegendBand::Left || m_legend.band == LegendBand::Right) {
        // Beside the plot, the block's vertical place follows the plot.
        const double room = m_plot.height() - m_legendBox.height();
        const double offset = (m_legend.alignment & Qt::AlignBottom)    ? room
                              : (m_legend.alignment & Qt::AlignVCenter) ? room / 2
                                                                          : 0.0;
        m_legendBox.moveTop(m_plot.top() + std::max(0.0, offset));
    }
}

QSizeF ChartLayout::legendBlockSize() const
{
    if (m_grid.columns == 0)
        return {};
    return {m_grid.columns * m_legendCellWidth + 2 * legendPadding,
            m_grid.rows * legendRowHeight + 2 * legendPadding};
}

// A band above or below the plot, as wide as the plot.
void ChartLayout::placeLegendAcross(Margins& margins)
{
    const double width = std::max(1.0, m_size.width() - margins.left - margins.right) - 2 * legendPadding;
    m_legendCellWidth = std::min(legendCellWidth, width);
    const int maxColumns = static_cast<int>(width / m_legendCellWidth);
    const int maxRows = static_cast<int>((m_size.height() * legendBandShare - 2 * legendPadding) / legendRowHeight);
    m_grid = LegendGrid::fit(m_legendEntries.size(), maxColumns, maxRows, m_legend.vertical);
    const QSizeF block = legendBlockSize();
    if (block.isEmpty())
        return;
    const double left = margins.left + ((m_legend.alignment & Qt::AlignHCenter) ? (width - block.width()) / 2 : 0.0);
    if (m_legend.band == LegendBand::Top) {
        m_legendBox = QRectF(QPointF(left, titleHeight), block);
        margins.top += block.height() + emptySide / 2;
    } else {
        m_legendBox = QRectF(QPointF(left, m_size.height() - emptySide / 2 - block.height()), block);
        margins.bottom += block.height() + emptySide / 2;
    }
}

// A band at the left or right edge of the image, as tall as the plot; its
// vertical place is set once the plot is known.
void ChartLayout::placeLegendBeside(Margins& margins)
{
    const double width = std::max(1.0, m_size.width() * legendSideShare - 2 * legendPadding);
    const double height = std::max(1.0, m_size.height() - margins.top - margins.bottom) - 2 * legendPadding;
    m_legendCellWidth = std::min(legendCellWidth, width);
    const int maxColumns = static_cast<int>(width / m_legendCellWidth);
    const int maxRows = static_cast<int>(height / legendRowHeight);
    m_grid = LegendGrid::fit(m_legendEntries.size(), maxColumns, maxRows, m_legend.vertical);
    const QSizeF block = legendBlockSize();
    if (block.isEmpty())
        return;
    if (m_legend.band == LegendBand::Left) {
        m_legendBox = QRectF(QPointF(emptySide / 2, 0), block);
        margins.left += block.width() + emptySide / 2;
    } else {
        m_legendBox = QRectF(QPointF(m_size.width() - emptySide / 2 - block.width(), 0), block);
        margins.right += block.width() + emptySide / 2;
    }
}

QRectF ChartLayout::axisBand(AxisSide side) const
{
    switch (side) {
    case AxisSide::Bottom:
        return {m_plot.left(), m_plot.bottom(), m_plot.width(), horizontalAxisHeight};
    case AxisSide::Top:
        return {m_plot.left(), m_plot.top() - horizontalAxisHeight, m_plot.width(), horizontalAxisHeight};
    case AxisSide::Left:
        return {m_plot.left() - verticalAxisWidth, m_plot.top(), verticalAxisWidth, m_plot.height()};
    case AxisSide::Right:
        break;
    }
    return {m_plot.right(), m_plot.top(), verticalAxisWidth, m_plot.height()};
}

QRectF ChartLayout::legendCell(std::size_t entry) const
{
    const QPointF slot = m_grid.slot(entry);
    return {m_legendBox.left() + legendPadding + slot.x() * m_legendCellWidth,
                  m_legendBox.top() + legendPadding + slot.y() * legendRowHeight, m_legendCellWidth, legendRowHeight};
}

QPointF ChartLayout::toPixel(const Orv::Math::Vector3& cube) const
{
    return toPixel(cube.x(), cube.y());
}

QPointF ChartLayout::toPixel(double cubeX, double cubeY) const
{
    return {m_plot.left() + (cubeX + 1.0) / 2.0 * m_plot.width(), m_plot.bottom() - (cubeY + 1.0) / 2.0 * m_plot.height()};
}

QPointF ChartLayout::alongAxis(AxisSide side, double position) const
{
    switch (side) {
    case AxisSide::Bottom:
        return {m_plot.left() + position * m_plot.width(), m_plot.bottom()};
    case AxisSide::Top:
        return {m_plot.left() + position * m_plot.width(), m_plot.top()};
    case AxisSide::Left:
        return {m_plot.left(), m_plot.bottom() - position * m_plot.height()};
    case AxisSide::Right:
        break;
    }
    return {m_plot.right(), m_plot.bottom() - position * m_plot.height()};
}

} // namespace Orv::Chart
