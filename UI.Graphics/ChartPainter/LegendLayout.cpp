#include "LegendLayout.h"

#include "ChartSetUp.h"

#include "KelChartLegend.h"

#include <algorithm>

namespace Orv::Chart {

namespace {

LegendBand bandOf(Qt::Alignment alignment)
{
    if (alignment & Qt::AlignLeft)
        return LegendBand::Left;
    if (alignment & Qt::AlignRight)
        return LegendBand::Right;
    return (alignment & Qt::AlignTop) ? LegendBand::Top : LegendBand::Bottom;
}

Qt::Alignment placeInBand(LegendBand band, Qt::Alignment alignment)
{
    if (band == LegendBand::Left || band == LegendBand::Right)
        return alignment & (Qt::AlignTop | Qt::AlignBottom | Qt::AlignVCenter);
    return (alignment & Qt::AlignHCenter) ? Qt::AlignHCenter : Qt::AlignLeft;
}

int ceilDiv(std::size_t a, int b)
{
    return static_cast<int>((a + static_cast<std::size_t>(b) - 1) / static_cast<std::size_t>(b));
}

} // namespace

LegendLook legendLookOf(const KelChart& chart)
{
    LegendLook look;
    const KelChartLegend* legend = legendOf(chart);
    if (!legend) {
        look.text = chart.textColor.get();
        look.shadow = chart.textShadowColor.get();
        return look;
    }
    const auto alignment = static_cast<Qt::Alignment>(legend->viewport.alignment.get());
    look.shown = legend->enabled.get();
    look.vertical = legend->style.get() != KelChart::legendHorizontal;
    look.band = bandOf(alignment);
    look.alignment = placeInBand(look.band, alignment);
    look.background = legend->background.get();
    look.border = legend->border.get();
    look.text = legend->textColor.get();
    look.shadow = legend->textShadowColor.get();
    return look;
}

LegendGrid LegendGrid::fit(std::size_t entries, int maxColumns, int maxRows, bool vertical)
{
    LegendGrid grid;
    grid.vertical = vertical;
    if (entries == 0 || maxColumns < 1 || maxRows < 1) {
        grid.more = entries;
        return grid;
    }
    if (vertical) {
        grid.rows = static_cast<int>(std::min<std::size_t>(entries, static_cast<std::size_t>(maxRows)));
        grid.columns = std::min(maxColumns, ceilDiv(entries, grid.rows));
    } else {
        grid.columns = static_cast<int>(std::min<std::size_t>(entries, static_cast<std::size_t>(maxColumns)));
        grid.rows = std::min(maxRows, ceilDiv(entries, grid.columns));
    }
    const auto cells = static_cast<std::size_t>(grid.columns) * static_cast<std::size_t>(grid.rows);
    // The last cell gives way to "and N more" when entries are left out.
    grid.shown = entries <= cells ? entries : cells - 1;
    grid.more = entries - grid.shown;
    return grid;
}

QPointF LegendGrid::slot(std::size_t index) const
{
    const auto rowCount = static_cast<std::size_t>(std::max(rows, 1));
    const auto columnCount = static_cast<std::size_t>(std::max(columns, 1));
    // Whole cells: the quotient is the column (filling by columns) or the row.
    const std::size_t across = vertical ? index / rowCount : index % columnCount;
    const std::size_t down = vertical ? index % rowCount : index / columnCount;
    return {static_cast<double>(across), static_cast<double>(down)};
}

} // namespace Orv::Chart
