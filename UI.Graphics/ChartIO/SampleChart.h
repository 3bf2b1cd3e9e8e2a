#pragma once
// A sample chart with its data, for a host to show before the user opens a
// file of their own, and for tests: one day of a weather station on a 2-D chart.
//   - axis.x: "bottom", continuous time in hours, fixed to the day; "top",
//     discrete day periods;
//   - axis.y: "left", continuous temperature; "right", continuous pressure;
//   - "Tmean": mean temperature per period, bars on the period axis, degC;
//   - "T1": air temperature, degC, and "T2": a second sensor in the shade
//     that reports degF; the unit update brings both to degC on one axis;
//   - "p": air pressure in kPa on the right axis, with two undefined readings
//     and one NaN.
// The model is built here; the data are handed to the variables by name, so
// a loaded chart file with these variable names draws the same data.

#include "DataSet.h"
#include "OrvChartIOExport.h"

#include "KelChart2D.h"

#include <memory>

namespace Orv::Chart::SampleChart {

ORV_CHARTIO_EXPORT std::unique_ptr<KelChart2D> build(KelModifiedGroup& group);
ORV_CHARTIO_EXPORT DataSet data();

} // namespace Orv::Chart
