#pragma once
// Hands data to a chart: each series goes to the variable of its name through
// the variable's iterator, with its units and undefined flags. For a data set
// with discrete x, the categories become the labels of the discrete axes that
// those variables use along x. Times without a zone of their own are read in
// the time zone of the variable's x axis, and all become seconds since the
// first row's day ("s since 2012-01-01 00:00:00 UTC").

#include "OrvChartIOExport.h"
#include "DataSet.h"
#include "ElementClasses.h"

#include "KelChartVariableList.h"

#include <QStringList>

namespace Orv::Chart {

// Returns the names of the series that found no variable.
ORV_CHARTIO_EXPORT QStringList bindData(KelChartVariableList& variables, const AxisPairs& pairs, DataSet data);

} // namespace Orv::Chart
