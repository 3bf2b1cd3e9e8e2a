#pragma once
// The sample chart (or data a CSV file could hold) behind a navigator of a
// host of 800 x 600 pixels, as a widget or a Qt Quick item sets it up.
#include "AxisRanges.h"
#include "ChartNavigator.h"
#include "ChartSetUp.h"
#include "DataBinding.h"
#include "SampleChart.h"

#include "KelChartAxisContinuous.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <vector>

namespace viewtest {

class ViewFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        chart = Orv::Chart::SampleChart::build(group);
        Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), Orv::Chart::SampleChart::data());
        navigator.setChart(chart.get(), Orv::Chart::axisPairsOf(*chart));
        ASSERT_NE(navigator.frames(), nullptr);
    }

    // A chart set up for the data as a host sets it up for a CSV file.
    void showData(const Orv::Chart::DataSet& data)
    {
        chart = std::make_unique<KelChart2D>(group);
        Orv::Chart::setUpChartForData(*chart, data, QStringLiteral("data"));
        Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), data);
        navigator.setChart(chart.get(), Orv::Chart::axisPairsOf(*chart));
        ASSERT_NE(navigator.frames(), nullptr);
    }

    const Orv::Chart::ChartFrames& frames() const { return *navigator.frames(); }
    QRectF plot() const { return frames().layout().plot(); }
    Orv::Chart::AxisRanges ranges() const
    {
        return Orv::Chart::AxisRanges(frames().pipeline(), frames().pairs(), frames().layout());
    }
    std::vector<Orv::Chart::AxisSpan> spans() const { return ranges().spans(); }
    KelChartAxisContinuous& axis(const QString& name) const
    {
        return dynamic_cast<KelChartAxisContinuous&>(*frames().pairs().find(name));
    }
    // Each continuous axis's autoScale, min and max, in the order of the spans.
    std::vector<double> settings() const
    {
        std::vector<double> all;
        for (const Orv::Chart::AxisSpan& span : spans())
            all.insert(all.end(), {span.axis->autoScale.get() ? 1.0 : 0.0, span.axis->min.get(), span.axis->max.get()});
        return all;
    }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    QSize size{800, 600};
    Orv::Chart::ChartNavigator navigator{[this] { return size; }};
};

// One series of points, NaN for a missing value.
inline Orv::Chart::DataSet dataOf(const std::vector<float>& xs, const std::vector<float>& ys)
{
    Orv::Chart::DataSet data;
    Orv::Chart::DataSeries series;
    series.x = {QStringLiteral("x"), QString(), {}, {}};
    series.y = {QStringLiteral("y"), QString(), {}, {}};
    for (std::size_t i = 0; i < xs.size(); ++i) {
        series.x.append(xs[i], std::isnan(xs[i]));
        series.y.append(ys[i], std::isnan(ys[i]));
    }
    data.series.push_back(series);
    return data;
}

} // namespace viewtest
