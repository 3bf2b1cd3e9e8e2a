#include "ChartSetUp.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"

#include <gtest/gtest.h>

#include <set>

namespace {

using Orv::Chart::DataSet;

// A data set of `count` series with the units given in turn, over numeric, time or text x.
DataSet dataSet(char xKind, std::size_t count, const QStringList& units = {QString()},
                Orv::Chart::SeriesShape shape = Orv::Chart::SeriesShape::Lines)
{
    DataSet data;
    data.discreteX = xKind == 'd';
    data.timeX = xKind == 't';
    data.shape = shape;
    for (std::size_t i = 0; i < count; ++i) {
        Orv::Chart::DataSeries series;
        series.x.name = QStringLiteral("x");
        series.y.name = QStringLiteral("series %1").arg(i);
        series.y.unit = units.at(static_cast<int>(i % static_cast<std::size_t>(units.size())));
        data.series.push_back(series);
    }
    return data;
}

struct AxesCase {
    char xKind; // numeric, time or discrete
    Orv::Chart::SeriesShape shape;
    bool tightY;
};

class ChartSetUp : public ::testing::Test {
protected:
    KelModifiedGroup group;
    KelChart2D chart{group};
};

class ChartSetUpTest : public ChartSetUp, public ::testing::WithParamInterface<AxesCase> {};

} // namespace

// Continuous and time axes of a file's data show its range tight, except the y axes of bars; a discrete x has
// no such setting.
TEST_P(ChartSetUpTest, ContinuousAndTimeAxesShowATightRange)
{
    const AxesCase& c = GetParam();
    Orv::Chart::setUpChartForData(chart, dataSet(c.xKind, 2, {QStringLiteral("m"), QStringLiteral("s")}, c.shape), "t");
    const KelChartAxis* x = chart.axisX.first();
    ASSERT_NE(x, nullptr);
    const auto* continuousX = dynamic_cast<const KelChartAxisContinuous*>(x);
    EXPECT_EQ(continuousX != nullptr, c.xKind != 'd');
    if (continuousX) {
        EXPECT_TRUE(continuousX->tightRange.get());
    }
    for (const KelChartAxis* y : {chart.axisY.first(), chart.axisY.second()}) {
        const auto* continuousY = dynamic_cast<const KelChartAxisContinuous*>(y);
        ASSERT_NE(continuousY, nullptr);
        EXPECT_EQ(continuousY->tightRange.get(), c.tightY) << continuousY->name().toStdString();
    }
}

using Shape = Orv::Chart::SeriesShape;
INSTANTIATE_TEST_SUITE_P(Kinds, ChartSetUpTest,
                         ::testing::Values(AxesCase{'n', Shape::Lines, true}, AxesCase{'t', Shape::Points, true},
                                           AxesCase{'d', Shape::Lines, true}, AxesCase{'d', Shape::Bars, false}));

// The first ten series keep the palette; every later one gets an opaque colour no earlier series has.
TEST_F(ChartSetUp, SeriesColoursNeverRepeat)
{
    const std::size_t count = 400;
    Orv::Chart::setUpChartForData(chart, dataSet('n', count), "many");
    const char* const firstTen[] = {"#4e79a7", "#f28e2b", "#e15759", "#76b7b2", "#59a14f",
                                    "#edc948", "#b07aa1", "#ff9da7", "#9c755f", "#bab0ac"};
    std::set<QRgb> seen;
    for (std::size_t i = 0; i < count; ++i) {
        const auto* variable = dynamic_cast<const KelChartVariable*>(chart.variables[static_cast<unsigned>(i)]);
        ASSERT_NE(variable, nullptr);
        const QColor colour = variable->style.lineColor.get().front();
        if (i < std::size(firstTen)) {
            EXPECT_EQ(colour.name().toStdString(), firstTen[i]);
        }
        EXPECT_TRUE(colour.isValid() && colour.alpha() == 255) << i;
        EXPECT_TRUE(seen.insert(colour.rgb()).second) << "series " << i << " repeats " << colour.name().toStdString();
    }
}

// Series named after their groups share the title of the column their values come from.
TEST_F(ChartSetUp, GroupsOfOneColumnNameTheAxisOnce)
{
    DataSet data = dataSet('t', 3);
    for (Orv::Chart::DataSeries& series : data.series)
        series.valueName = QStringLiteral("price");
    Orv::Chart::setUpChartForData(chart, data, QStringLiteral("prices"));
    ASSERT_NE(chart.axisY.first(), nullptr);
    EXPECT_EQ(chart.axisY.first()->title.get(), QStringLiteral("price"));
}

// Values a hundred times larger than the left axis's would flatten it: they open the right axis while it is free.
TEST_F(ChartSetUp, FarApartMagnitudesGetTheirOwnAxis)
{
    DataSet data = dataSet('t', 4);
    const float magnitudes[] = {100.0f, 104.0f, 3.0e6f, 98.0f};
    for (std::size_t i = 0; i < data.series.size(); ++i)
        data.series[i].y.append(magnitudes[i], false);
    Orv::Chart::setUpChartForData(chart, data, QStringLiteral("prices and volume"));
    ASSERT_NE(chart.axisY.second(), nullptr);
    EXPECT_EQ(chart.axisY.first()->title.get(), QStringLiteral("series 0, series 1, series 3"));
    EXPECT_EQ(chart.axisY.second()->title.get(), QStringLiteral("series 2"));
}
