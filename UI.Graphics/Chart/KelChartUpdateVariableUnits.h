#pragma once
// Prepares a chart's variables for drawing in the units of a unit system.
//
// Given only the variable list, every variable takes the unit system's
// conversion. Given also the chart's three axis pairs, every continuous axis
// agrees one unit label: that of the first variable in "order" (stable) with a
// unit on it; labels set before are cleared first, so the result depends only
// on the current variables. Each variable's iterator is then asked to deliver
// its values in its axes' units and logarithmic settings. Discrete axes take
// no part: their components get an empty unit and no logarithm. Time axes are
// continuous axes whose units are timestamps ("s since 2012-01-01"); they agree
// one origin and scale the same way, and never take a logarithm.
//
// All the work happens in the constructor; the call hands over the variables
// whose iterators accepted their units, in order. A refusal is written as a
// warning and leaves the variable out.

#include "OrvChartExport.h"
#include "KelChartAxisPair.h"
#include "KelChartVariable.h"
#include "KelChartVariableList.h"
#include "KelUnitSystem.h"

#include <vector>

class ORV_CHART_EXPORT KelChartUpdateVariableUnits {
public:
    KelChartUpdateVariableUnits(const KelUnitSystem& units, KelChartVariableList& list);
    KelChartUpdateVariableUnits(const KelUnitSystem& units, const KelChartAxisPair& xPair,
                                const KelChartAxisPair& yPair, const KelChartAxisPair& zPair,
                                KelChartVariableList& list);
    KelChartUpdateVariableUnits(const KelChartUpdateVariableUnits& other) = default;
    KelChartUpdateVariableUnits(KelChartUpdateVariableUnits&& other) noexcept = default;
    KelChartUpdateVariableUnits& operator=(const KelChartUpdateVariableUnits& other) = default;
    KelChartUpdateVariableUnits& operator=(KelChartUpdateVariableUnits&& other) noexcept = default;
    ~KelChartUpdateVariableUnits() = default;

    // The variables whose units were accepted; empty for the list-only form.
    std::vector<const KelChartVariable*> operator()();

private:
    std::vector<const KelChartVariable*> _updated;
};
