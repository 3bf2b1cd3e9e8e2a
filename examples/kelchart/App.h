#pragma once
// One run of the example host, as its command line asks:
//   1. the chart: loaded from a file, or built for the CSV data, or the sample;
//   2. the data, from the CSV file or the sample, handed to the variables;
//   3. the --set assignments, in order;
//   4. --save;
//   5. for a 2-D or 3-D chart: the pipeline, the images and the report.
// Charts of other kinds have no axes to draw; they are loaded, edited and
// saved only.

#include "CommandLine.h"

#include <QTextStream>

namespace kelchart {

using namespace Orv::Chart;

// Writes the report to `out` and notes to `err`. Faults throw a Failure.
void run(const Options& options, QTextStream& out, QTextStream& err);

} // namespace kelchart
