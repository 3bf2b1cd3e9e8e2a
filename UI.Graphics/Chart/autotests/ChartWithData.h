#pragma once
// A two-dimensional chart whose variables hold data, drawn against axes of its pairs: the common ground
// of the tests of what scales, caches and converts a chart's data. The logger's messages are captured.

#include "KelChart2D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartVariableListCache.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

class ChartWithData : public ::testing::Test {
protected:
    // The chart's pair "axis.<direction>", direction 'x', 'y' or 'z'.
    KelChartAxisPair& pair(char direction)
    {
        return direction == 'x' ? chart.axisX : direction == 'y' ? chart.axisY : chart.axisZ;
    }
    // A new axis "axis.<direction>.<name>" of the class `Axis`, the first or the second of its pair.
    template <class Axis = KelChartAxisContinuous>
    Axis& axis(char direction, const QString& name, bool first = true)
    {
        KelChartAxisPair& p = pair(direction);
        const QString& type = Axis::typeString;
        return dynamic_cast<Axis&>(first ? p.createFirst(name, type) : p.createSecond(name, type));
    }
    // The range is fixed to [min, max], or found from the data when min == max.
    template <class Axis>
    static Axis& fixed(Axis& axis, double min, double max)
    {
        axis.autoScale.set(min == max);
        axis.min.set(min);
        axis.max.set(max);
        return axis;
    }

    // A new variable appended to the chart's list (names may repeat) with the points (x[i], y[i]) in
    // the units given, drawn against `axes` (x, y, z; missing ones stay empty).
    KelChartVariable& addVariable(const QString& name, std::vector<float> x, std::vector<float> y,
                                  const QStringList& axes = {}, int order = 0, const QString& xUnit = {},
                                  const QString& yUnit = {})
    {
        auto* variable = new KelChartVariable(group);
        variable->rename(name);
        chart.variables.insert(variable, false);
        variable->xAxis.set(axes.value(0));
        variable->yAxis.set(axes.value(1));
        variable->zAxis.set(axes.value(2));
        variable->order.set(order);
        variable->variableiter.setVector2Data(std::move(x), std::move(y), {}, {}, xUnit, yUnit);
        return *variable;
    }
    void removeVariables()
    {
        for (KelProperties& list = chart.variables; list.size() > 0;)
            list.remove(list.back());
    }
    // Caches the chart's variables, in their order.
    const KelChartVariableListCache& cacheVariables() { return cache = KelChartVariableListCache(chart.variables); }

    std::vector<std::string> ensures() const { return capture.texts(orvdebug::Stream::Ensure); }
    std::vector<std::string> errors() const { return capture.texts(orvdebug::Stream::Err); }

    KelModifiedGroup group;
    KelChart2D chart{group};
    KelChartVariableListCache cache;
    orvdebug::ScopedCapture capture{kel::debug_logger::debuglogger()};
};
