#pragma once
// The chart told in words, for those who cannot see it: what a screen reader
// says about the chart, each drawn axis and each drawn series.
//   - axis: "time axis, bottom"; its kind (continuous, logarithmic, time or
//     categories) and the range shown in axis units: real values on a
//     logarithmic axis, dates in the axis's zone on a time axis, the category
//     labels on a discrete one;
//   - series: "25 points, 1 without a reading, from -4 to 9 degC, last 2.5 degC",
//     over all its points, in the units of its y axis.
// Numbers carry the digits that a hundredth of their span tells apart.

#include "ChartFrames.h"

#include <QLocale>
#include <QString>

#include <cstddef>
#include <vector>

namespace Orv::Chart::ChartDescription {

// "4 axes, 4 series"; without frames, that there is nothing to draw.
QString summary(const ChartFrames* frames);
// "time axis, bottom": its title (or x, y) and its side.
QString axisName(const PlotAxis& axis);
// "continuous", "logarithmic", "time" or "categories".
QString axisKind(const PlotAxis& axis);
// "from 0 to 24 h", "from 2012-03-01 00:00 UTC to ...", "night, morning, afternoon".
QString axisRange(const PlotAxis& axis, const QLocale& locale);
// The cache positions of the series drawn, in order.
std::vector<std::size_t> drawnSeries(const ChartFrames& frames);
// Count, smallest, largest and last y of the series at that cache position.
QString seriesSummary(const ChartFrames& frames, std::size_t series, const QLocale& locale);

} // namespace Orv::Chart::ChartDescription
