#include "SampleChart.h"

#include "ChartSetUp.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"

#include <cmath>
#include <limits>

namespace Orv::Chart {

namespace {

constexpr double pi = 3.14159265358979323846;
constexpr int hours = 24;
constexpr int periodLength = 6;

const QString timeAxis = QStringLiteral("axis.x.bottom");
const QString periodAxis = QStringLiteral("axis.x.top");
const QString temperatureAxis = QStringLiteral("axis.y.left");
const QString pressureAxis = QStringLiteral("axis.y.right");

void addAxes(KelChart2D& chart)
{
    const QString& continuous = KelChartAxisContinuous::typeString;
    // The day, fixed, so that the four periods of the top axis line up with it.
    auto& time = static_cast<KelChartAxisContinuous&>(chart.axisX.createFirst(QStringLiteral("bottom"), continuous));
    time.title.set(QStringLiteral("time"));
    time.autoScale.set(false);
    time.min.set(0.0);
    time.max.set(hours);
    // Shown as it is, not rounded out to 25 h, so that the periods sit on their hours.
    time.tightRange.set(true);
    auto& periods = static_cast<KelChartAxisDiscrete&>(
        chart.axisX.createSecond(QStringLiteral("top"), KelChartAxisDiscrete::typeString));
    periods.title.set(QStringLiteral("period"));
    periods.labels.setLabels({QStringLiteral("night"), QStringLiteral("morning"), QStringLiteral("afternoon"),
                              QStringLiteral("evening")});
    chart.axisY.createFirst(QStringLiteral("left"), continuous).title.set(QStringLiteral("temperature"));
    chart.axisY.createSecond(QStringLiteral("right"), continuous).title.set(QStringLiteral("pressure"));
}

KelChartVariable& addVariable(KelChart2D& chart, const QString& name, const QString& title, const QString& xAxis,
                              const QString& yAxis)
{
    KelChartVariable& variable = chart.variables.child(name, KelChartVariable::typeString);
    variable.title.set(title);
    variable.xAxis.set(xAxis);
    variable.yAxis.set(yAxis);
    variable.order.set(static_cast<int>(chart.variables.size()) - 1);
    return variable;
}

void setLine(KelChartVariableStyle& style, const QString& plotStyle, const QColor& colour, double width)
{
    style.style.set(plotStyle);
    style.lineColor.set({colour});
    style.lineWidth.set({width});
}

void setSymbol(KelChartVariableStyle& style, const QString& symbol, const QColor& colour, int size)
{
    style.symbol.set({symbol});
    style.symbolSize.set({size});
    style.symbolFillColor.set({colour});
    style.symbolOutlineColor.set({Qt::white});
}

void addVariables(KelChart2D& chart)
{
    KelChartVariableStyle& means =
        addVariable(chart, QStringLiteral("Tmean"), QStringLiteral("mean temperature"), periodAxis, temperatureAxis)
            .style;
    setLine(means, KelChart::styleBar, QColor(0xb0, 0x7a, 0xa1), 1.0);
    means.fill.set({KelChart::fillSolid});
    means.fillColor.set({QColor(0xb0, 0x7a, 0xa1, 0x60)});
    means.barWidth.set({0.7});

    KelChartVariableStyle& air =
        addVariable(chart, QStringLiteral("T1"), QStringLiteral("air temperature"), timeAxis, temperatureAxis).style;
    setLine(air, KelChart::styleLine, QColor(0xe1, 0x57, 0x59), 2.0);
    setSymbol(air, KelChart::symbolEllipse, QColor(0xe1, 0x57, 0x59), 7);

    KelChartVariableStyle& shade =
        addVariable(chart, QStringLiteral("T2"), QStringLiteral("shade temperature (degF)"), timeAxis,
                    temperatureAxis)
            .style;
    setLine(shade, KelChart::styleLine, QColor(0x4e, 0x79, 0xa7), 2.0);
    shade.line.set({KelChart::lineDashMedium});
    setSymbol(shade, KelChart::symbolRect, QColor(0x4e, 0x79, 0xa7), 6);

    KelChartVariableStyle& pressure =
        addVariable(chart, QStringLiteral("p"), QStringLiteral("air pressure"), timeAxis, pressureAxis).style;
    setLine(pressure, KelChart::styleSpline, QColor(0x59, 0xa1, 0x4f), 2.0);
    setSymbol(pressure, KelChart::symbolDiamond, QColor(0x59, 0xa1, 0x4f), 8);
}

double airTemperature(int hour)
{
    return 2.5 + 6.5 * std::sin(2.0 * pi * (hour - 9) / hours);
}

// The shade sensor reads about 1.5 degC below the air, in degF.
double shadeTemperatureF(int hour)
{
    return (airTemperature(hour) - 1.5 + 0.4 * std::sin(hour)) * 1.8 + 32.0;
}

double pressure(int hour)
{
    return 101.5 + 0.3 * std::cos(2.0 * pi * hour / hours) - 0.01 * hour;
}

DataSeries hourly(const QString& name, const QString& unit)
{
    DataSeries series;
    series.x = DataColumn{QStringLiteral("time"), QStringLiteral("h"), {}, {}};
    series.y = DataColumn{name, unit, {}, {}};
    return series;
}

DataSeries periodMeans()
{
    DataSeries series;
    series.x = DataColumn{QStringLiteral("period"), QString(), {}, {}};
    series.y = DataColumn{QStringLiteral("Tmean"), QStringLiteral("degC"), {}, {}};
    for (int period = 0; period < hours / periodLength; ++period) {
        double sum = 0.0;
        for (int hour = period * periodLength; hour < (period + 1) * periodLength; ++hour)
            sum += airTemperature(hour);
        series.x.append(static_cast<float>(period), false);
        series.y.append(static_cast<float>(sum / periodLength), false);
    }
    return series;
}

} // namespace

std::unique_ptr<KelChart2D> SampleChart::build(KelModifiedGroup& group)
{
    auto chart = std::make_unique<KelChart2D>(group);
    chart->title.set(QStringLiteral("Weather station, one day"));
    addAxes(*chart);
    addVariables(*chart);
    addLegend(*chart);
    return chart;
}

DataSet SampleChart::data()
{
    DataSeries air = hourly(QStringLiteral("T1"), QStringLiteral("degC"));
    DataSeries shade = hourly(QStringLiteral("T2"), QStringLiteral("degF"));
    DataSeries pressureSeries = hourly(QStringLiteral("p"), QStringLiteral("kPa"));
    for (int hour = 0; hour <= hours; ++hour) {
        for (DataSeries* series : {&air, &shade, &pressureSeries})
            series->x.append(static_cast<float>(hour), false);
        air.y.append(static_cast<float>(airTemperature(hour)), false);
        shade.y.append(static_cast<float>(shadeTemperatureF(hour)), false);
        const bool missing = hour == 7 || hour == 8;
        const float value = hour == 15 ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(pressure(hour));
        pressureSeries.y.append(value, missing);
    }
    DataSet data;
    data.series = {periodMeans(), std::move(air), std::move(shade), std::move(pressureSeries)};
    return data;
}

} // namespace Orv::Chart
