#pragma once
// Sets a new 2-D chart up for data read from a CSV file:
//   - the x column's axis is the first of the x pair, "axis.x.bottom":
//     continuous for numeric x, time for dates and times, discrete for text x;
//   - continuous and time axes show a tight range ("tightRange"): the data
//     with their margin fill the plot, ticks only where they fall inside.
//     The y axes of bars keep the range rounded out to ticks, often down to
//     zero, so that the lowest bar is not a sliver above the axis;
//   - the series go on the first y axis, "axis.y.left", while their units are
//     of its first series' dimension; a series of another dimension opens the
//     second y axis, "axis.y.right", for its dimension. A third dimension stays
//     on the left axis, where the unit update refuses it with a warning;
//   - one variable per series, named after its column, in column order, with
//     palette colours, drawn as the data set's shape says: lines, grouped
//     bars, or points (symbols without a line). The palette's ten colours are
//     followed by a lighter or darker companion of each, then by hues a
//     golden angle apart, so no two series share a colour;
//   - the chart's own legend element ("legend.1"), saved with it.

#include "OrvChartIOExport.h"
#include "DataSet.h"

#include "KelChart2D.h"

class KelChartLegend;

namespace Orv::Chart {

ORV_CHARTIO_EXPORT void setUpChartForData(KelChart2D& chart, const DataSet& data, const QString& title);

// The chart's first legend element, or null.
ORV_CHARTIO_EXPORT const KelChartLegend* legendOf(const KelChart& chart);
// Adds a legend element with the library's defaults unless the chart has one.
ORV_CHARTIO_EXPORT void addLegend(KelChart& chart);

} // namespace Orv::Chart
