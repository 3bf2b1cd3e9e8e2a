#pragma once
// How a chart's legend element ("chart.legend", a child of the chart) decides
// the legend the view draws:
//   - "enabled" false: no legend; the plot takes its room.
//   - "style": "horizontal" fills the entries row by row, "vertical" column by
//     column; either wraps into as many rows and columns as the band has room
//     for, and where entries still do not fit, the last cell says "and N more".
//   - the viewport's "alignment" (a Qt::Alignment) picks the band: left or
//     right flags put the legend in a band at that side of the image, top to
//     bottom beside the plot, with the vertical flag placing it in that band;
//     otherwise a top flag puts it in a band above the plot, anything else
//     below it, centred when the horizontal centre flag is set, else at the
//     plot's left edge.
//   - "background" (one colour fills, several make a top-to-bottom gradient)
//     and "border" draw a box around the entries; "textColor" and
//     "textShadowColor" colour the entry texts.
// A chart without a legend element draws the entries row by row below the
// plot in the chart's text colours, as charts saved before it had one expect.
//
// Cell sizes are fixed pixel sizes, like the layout's margins, so that the
// plot area does not depend on the fonts of a machine; texts that do not fit
// their cell are elided when drawn.

#include "OrvChartPainterExport.h"
#include "KelChart.h"

#include <QColor>
#include <QList>
#include <QPointF>

#include <cstddef>

class KelChartLegend;

namespace Orv::Chart {

enum class LegendBand { Bottom, Top, Left, Right };

struct LegendLook {
    bool shown = true;
    bool vertical = false;
    LegendBand band = LegendBand::Bottom;
    // The block's place inside its band: along it for the top and bottom
    // bands, across the plot's height for the side bands.
    Qt::Alignment alignment = Qt::AlignLeft;
    QList<QColor> background;
    QColor border = Qt::transparent;
    QColor text = Qt::black;
    QColor shadow = Qt::transparent;
    // Whether series hidden by their "enabled" keep an entry, drawn faded, so
    // that an interactive view can show them again with a click on it.
    bool listsHidden = false;

    bool boxed() const { return !background.isEmpty() || border.alpha() > 0; }
};

// The legend the chart's legend element describes, or the one of a chart without it.
ORV_CHARTPAINTER_EXPORT LegendLook legendLookOf(const KelChart& chart);

// Entries in a grid of at most `maxColumns` x `maxRows` cells.
struct ORV_CHARTPAINTER_EXPORT LegendGrid {
    int columns = 0;
    int rows = 0;
    bool vertical = false;
    // Entries drawn; when some are left out, `more` of them, the cell after
    // the drawn ones says so.
    std::size_t shown = 0;
    std::size_t more = 0;

    static LegendGrid fit(std::size_t entries, int maxColumns, int maxRows, bool vertical);
    // Column (x) and row (y) of the cell at that position of the filling order.
    QPointF slot(std::size_t index) const;
};

} // namespace Orv::Chart
