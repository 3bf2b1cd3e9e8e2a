#pragma once
// The pipeline's results as text, the same bytes for the same input.
//
// The full report gives the plot area, per axis its range, factor, base line,
// unit label and every tick (value, label, relative position), per cached
// variable its point counts, bounds and matrix, and the valid variable list
// with its ranges. The summary gives one line per axis and variable.

#include "ChartLayout.h"
#include "Plot.h"

#include <QString>

namespace kelchart {

using namespace Orv::Chart;

namespace Report {

QString full(const Plot& pipeline, const ChartLayout& layout);
QString summary(const Plot& pipeline);

} // namespace Report

} // namespace kelchart
