#pragma once
// What assistive technology (screen readers, magnifiers) learns about a chart
// widget. The widget is a chart named by the chart's title and summed up as
// "4 axes, 4 series"; its children are, in order,
//   - each drawn axis ("time axis, bottom"; kind and range shown),
//   - each drawn series (its title; count, smallest, largest and last value),
//   - while the keyboard's point cursor is on a point, that point (named as
//     `ChartWidget::pointCursorText` tells it), focused with the widget.
// Children are looked up through the widget whenever asked, so replacing the
// chart never leaves one pointing at a chart that is gone.
//
// Moves of the point cursor are announced as a name change of the point (and
// a focus change to it while the widget has focus), new ranges as description
// changes of the axes, a new set of children as a reorder of the chart.

#include "OrvChartWidgetsExport.h"

namespace Orv::Chart {

// Lets QAccessible describe every ChartWidget this way. Done on its own when
// the application object is created; calling it again does nothing.
ORV_CHARTWIDGETS_EXPORT void installChartAccessibility();

} // namespace Orv::Chart
