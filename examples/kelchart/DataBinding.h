#pragma once
// Hands data to a chart: each series goes to the variable of its name through
// the variable's iterator, with its units and undefined flags. For a data set
// with discrete x, the categories become the labels of the discrete axes that
// those variables use along x.

#include "DataSet.h"
#include "ElementClasses.h"

#include "KelChartVariableList.h"

#include <QStringList>

namespace kelchart {

// Returns the names of the series that found no variable.
QStringList bindData(KelChartVariableList& variables, const AxisPairs& pairs, DataSet data);

} // namespace kelchart
