#include "KelChartUpdateVariableUnits.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisTime.h"
#include "OrvDiagnostics.h"

#include <algorithm>
#include <array>
#include <string>

namespace {

using Pairs = std::array<const KelChartAxisPair*, 3>;
// The continuous x, y and z axes of one variable; null where it has none.
using Axes = std::array<KelChartAxisContinuous*, 3>;

KelChartAxisContinuous* continuous(KelChartAxis* axis)
{
    return dynamic_cast<KelChartAxisContinuous*>(axis);
}

void clearUnitLabels(const Pairs& pairs)
{
    for (const KelChartAxisPair* pair : pairs) {
        for (KelChartAxis* axis : {pair->first(), pair->second()}) {
            if (KelChartAxisContinuous* found = continuous(axis))
                found->unitLabel.set(QString());
        }
    }
}

// The list's variables, stable-sorted by "order".
std::vector<KelChartVariable*> inDrawingOrder(KelChartVariableList& list)
{
    std::vector<KelChartVariable*> variables;
    for (unsigned i = 0; i < list.size(); ++i) {
        if (KelChartVariable* var = list[i])
            variables.push_back(var);
    }
    std::stable_sort(variables.begin(), variables.end(), [](const KelChartVariable* a, const KelChartVariable* b) {
        return a->order.get() < b->order.get();
    });
    return variables;
}

Axes axesOf(const KelChartVariable& var, const Pairs& pairs)
{
    return {continuous(pairs[0]->find(var.xAxis.get())), continuous(pairs[1]->find(var.yAxis.get())),
            continuous(pairs[2]->find(var.zAxis.get()))};
}

// Gives every axis of the variable that has no unit label yet the variable's unit.
void offerUnits(KelChartVariable& var, const Pairs& pairs)
{
    std::array<QString, 3> units;
    var.variableiter.units(units[0], units[1], units[2]);
    const Axes axes = axesOf(var, pairs);
    for (size_t c = 0; c < axes.size(); ++c) {
        if (axes[c] && !units[c].isEmpty() && axes[c]->unitLabel.get().isEmpty())
            axes[c]->unitLabel.set(units[c]);
    }
}

// Asks the variable's iterator for its axes' units and logarithmic settings.
bool applyAxisUnits(KelChartVariable& var, const Pairs& pairs)
{
    std::array<QString, 3> units;
    std::array<bool, 3> logarithmic = {false, false, false};
    const Axes axes = axesOf(var, pairs);
    for (size_t c = 0; c < axes.size(); ++c) {
        if (axes[c]) {
            units[c] = axes[c]->unitLabel.get();
            // Instants have no logarithm: a time axis ignores the setting.
            logarithmic[c] = axes[c]->logarithmic.get() && axes[c]->type() != KelChartAxisTime::typeString;
        }
    }
    var.variableiter.setLogarithmic(logarithmic[0], logarithmic[1], logarithmic[2]);
    return var.variableiter.setUnits(units[0], units[1], units[2]);
}

// Values at or below zero have no position on a logarithmic axis; the host hears once per
// variable how many were left out, not once per point.
void reportValuesWithoutLogarithm(KelChartVariable& var)
{
    const std::size_t lost = var.variableiter.valuesWithoutLogarithm();
    if (lost > 0) {
        const bool one = lost == 1;
        orvdebug::warning("variable \"", var.name(), "\": ", lost, one ? " value" : " values",
                          " at or below zero ", one ? "has" : "have", " no logarithm on a logarithmic axis and ",
                          one ? "is" : "are", " not drawn");
    }
}

} // namespace

KelChartUpdateVariableUnits::KelChartUpdateVariableUnits(const KelUnitSystem& units, KelChartVariableList& list)
{
    for (unsigned i = 0; i < list.size(); ++i) {
        KelChartVariable* var = list[i];
        ORV_ENSURE(var);
        if (var)
            var->SetUnitsConversion(units);
    }
}

KelChartUpdateVariableUnits::KelChartUpdateVariableUnits(const KelUnitSystem& units, const KelChartAxisPair& xPair,
                                                         const KelChartAxisPair& yPair, const KelChartAxisPair& zPair,
                                                         KelChartVariableList& list)
{
    const Pairs pairs = {&xPair, &yPair, &zPair};
    clearUnitLabels(pairs);
    const std::vector<KelChartVariable*> variables = inDrawingOrder(list);
    for (KelChartVariable* var : variables) {
        var->SetUnitsConversion(units);
        var->variableiter.setLogarithmic(false, false, false);
    }
    for (KelChartVariable* var : variables)
        offerUnits(*var, pairs);
    for (KelChartVariable* var : variables) {
        if (applyAxisUnits(*var, pairs))
            _updated.push_back(var);
        else
            orvdebug::warnFailed(R"(false && "setting preferred units on a variable iter failed!")",
                                 ORV_FUNCTION_SIGNATURE);
        var->SetUnitsConversion(units);
    }
    for (KelChartVariable* var : variables)
        reportValuesWithoutLogarithm(*var);
}

std::vector<const KelChartVariable*> KelChartUpdateVariableUnits::operator()()
{
    return _updated;
}
