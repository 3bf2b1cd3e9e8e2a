#pragma once
// Where the parts of a chart go in an image: title band, plot area, axis
// bands and the legend's band (see LegendLayout). Margins and legend cells are
// fixed pixel sizes, independent of fonts, so that the report can tell where
// the plot lies on any machine.
//
// The plot area shows the normalised cube's x and y from -1 to 1; an axis's
// relative positions run from its start (left, bottom) to its end.

#include "OrvChartPainterExport.h"
#include "LegendLayout.h"
#include "Plot.h"

#include "Vector.h"

#include <QPointF>
#include <QRectF>
#include <QSize>

#include <cstddef>
#include <vector>

namespace Orv::Chart {

class ORV_CHARTPAINTER_EXPORT ChartLayout {
public:
    // Smallest image size that leaves a usable plot area.
    static constexpr int minimumWidth = 240;
    static constexpr int minimumHeight = 180;

    // `listsHidden`: see LegendLook.
    ChartLayout(const Plot& pipeline, QSize size, bool listsHidden = false);
    // Hidden series get legend entries when the look lists them and the
    // chart's variables are given.
    ChartLayout(const KelChartPipeline& run, QSize size, const LegendLook& legend,
                const KelChartVariableList* variables = nullptr);

    QSize size() const { return m_size; }
    QRectF titleArea() const { return m_title; }
    QRectF plot() const { return m_plot; }
    // The band beside the plot where an axis's ticks, labels and caption go.
    QRectF axisBand(AxisSide side) const;

    // The cache positions of the variables with a legend entry, in order;
    // the grid tells how many of them are drawn. Hidden series, which have no
    // cache, are at npos when the legend lists them.
    const std::vector<std::size_t>& legendEntries() const { return m_legendEntries; }
    // The variable of each entry.
    const std::vector<const KelChartVariable*>& legendVariables() const { return m_legendVariables; }
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    const LegendLook& legend() const { return m_legend; }
    const LegendGrid& legendGrid() const { return m_grid; }
    // The box around the drawn cells; empty when no legend is drawn.
    QRectF legendBox() const { return m_legendBox; }
    // The cell at that position of the filling order; the one after the
    // drawn entries holds "and N more".
    QRectF legendCell(std::size_t entry) const;

    // The pixel of a point of the normalised cube (z is ignored).
    QPointF toPixel(const Orv::Math::Vector3& cube) const;
    QPointF toPixel(double cubeX, double cubeY) const;
    // The pixel at a relative position along the plot edge of that side.
    QPointF alongAxis(AxisSide side, double position) const;

private:
    static constexpr double titleHeight = 32;
    static constexpr double horizontalAxisHeight = 46;
    static constexpr double verticalAxisWidth = 74;
    static constexpr double emptySide = 16;
    static constexpr double legendCellWidth = 190;
    static constexpr double legendRowHeight = 20;
    static constexpr double legendPadding = 4;
    // The most of the image a legend band takes: of its width at a side, of
    // its height above or below the plot.
    static constexpr double legendSideShare = 0.3;
    static constexpr double legendBandShare = 0.3;

    struct Margins {
        double left;
        double right;
        double top;
        double bottom;
    };

    void placeLegendAcross(Margins& margins);
    void placeLegendBeside(Margins& margins);
    QSizeF legendBlockSize() const;

    QSize m_size;
    QRectF m_title;
    QRectF m_plot;
    std::vector<std::size_t> m_legendEntries;
    std::vector<const KelChartVariable*> m_legendVariables;
    LegendLook m_legend;
    LegendGrid m_grid;
    QRectF m_legendBox;
    double m_legendCellWidth = legendCellWidth;
};

} // namespace Orv::Chart
