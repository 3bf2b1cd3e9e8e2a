// Builds a small two-axis chart through the installed headers and libraries,
// runs the pipeline from the data to the matrices and checks the results.
// Exits non-zero when a result is not what the chart's data call for.

#include <KelChart2D.h>
#include <KelChartAxisContinuous.h>
#include <KelChartPipeline.h>

#include <cstdio>

namespace {

int check(bool ok, const char* what)
{
    std::printf("%s: %s\n", ok ? "ok" : "FAILED", what);
    return ok ? 0 : 1;
}

} // namespace

int main()
{
    KelModifiedGroup group;
    KelChart2D chart(group);
    chart.axisX.createFirst("time", KelChartAxisContinuous::typeString);
    auto& left = dynamic_cast<KelChartAxisContinuous&>(
        chart.axisY.createFirst("temperature", KelChartAxisContinuous::typeString));

    KelChartVariable& celsius = chart.variables.child("outdoor", KelChartVariable::typeString);
    celsius.xAxis.set("axis.x.time");
    celsius.yAxis.set("axis.y.temperature");
    celsius.variableiter.setVector2Data({0, 1, 2, 3}, {3, 20, 15, 47}, {}, {}, "s", "degC");

    KelChartVariable& kelvin = chart.variables.child("indoor", KelChartVariable::typeString);
    kelvin.order.set(1);
    kelvin.xAxis.set("axis.x.time");
    kelvin.yAxis.set("axis.y.temperature");
    kelvin.variableiter.setVector2Data({0, 1, 2, 3}, {283.15f, 293.15f, 303.15f, 313.15f}, {}, {}, "s", "K");

    const KelChartPipeline pipeline(chart, {KelChartPipeline::everyAxis(5), false, {}});
    const KelChartAxisScale& yScale = pipeline.yScales().first();
    const KelChartPerVariableScaling& scaling = pipeline.scaling();

    int failures = 0;
    failures += check(pipeline.unitsAccepted().size() == 2, "both variables are shown");
    failures += check(left.unitLabel.get() == "degC", "the axis takes the first variable's unit");
    const KelChartVariableListCache& cache = pipeline.cache();
    failures += check(cache.size() == 2 && cache.cache(1).bounds().max().y() < 41, "kelvin converted to degC");
    failures += check(yScale.valid() && yScale.min() <= 0 && yScale.max() >= 47,
                      "the y scale holds every value");
    failures += check(scaling.size() == 2 && scaling.valid(0) && scaling.valid(1), "both variables have matrices");
    return failures == 0 ? 0 : 1;
}
