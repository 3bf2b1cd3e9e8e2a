#pragma once
// What the view shows under the cursor: for every drawn series the point
// nearest to it, with x and y in their axes' units. Sorted series are
// searched along x alone (binary search), others by screen distance. Values
// on a logarithmic axis are shown as real values, on a time axis as dates.

#include "OrvChartWidgetsExport.h"
#include "ChartFrames.h"

#include <QPointF>
#include <QString>
#include <QStringList>

namespace Orv::Chart::HoverText {

// One line per series with a point; empty outside the plot.
ORV_CHARTWIDGETS_EXPORT QStringList lines(const ChartFrames& frames, QPointF pixel);

} // namespace Orv::Chart
