#pragma once
// The chart the view benchmarks draw: a random walk at x = 0, 1, ..., as a
// line, in a chart set up as for a CSV file.

#include "ChartSetUp.h"
#include "DataBinding.h"

#include "KelChart2D.h"

#include <random>

struct WalkChart {
    KelModifiedGroup group;
    KelChart2D chart{group};

    explicit WalkChart(std::size_t count)
    {
        Orv::Chart::DataSeries series;
        series.x = {QStringLiteral("t"), QStringLiteral("s"), {}, {}};
        series.y = {QStringLiteral("walk"), QStringLiteral("m"), {}, {}};
        std::mt19937_64 random(1);
        std::normal_distribution<float> step;
        float y = 0;
        for (std::size_t i = 0; i < count; ++i) {
            series.x.append(static_cast<float>(i), false);
            series.y.append(y += step(random), false);
        }
        Orv::Chart::DataSet data;
        data.series.push_back(std::move(series));
        Orv::Chart::setUpChartForData(chart, data, QStringLiteral("walk"));
        Orv::Chart::bindData(chart.variables, Orv::Chart::axisPairsOf(chart), std::move(data));
    }
};
