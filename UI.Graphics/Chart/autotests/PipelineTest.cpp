// The drawing pipeline from the model to the matrices, run on one small chart:
// unit update, variable list cache, axis pair scales, per-variable scaling and
// the valid variable list, checked against values worked out by hand.

#include "KelChart2D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisPairScale.h"
#include "KelChartPerVariableScaling.h"
#include "KelChartUpdateVariableUnits.h"
#include "KelChartValidVariableList.h"
#include "KelChartVariableListCache.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using Orv::Math::Matrix;
using Orv::Math::Vector2;
using Orv::Math::Vector3;
using Comp = Orv::Math::Vector3::Comp;

constexpr unsigned int tickCount = 5;

// Four days on a discrete x axis; two temperatures on the left y axis, one of
// them in degF, and a pressure on the right one.
//
//   list position  name      order  y data                          unit
//   0              indoor    1      50, 68, 86, 104                 degF (10 .. 40 degC)
//   1              outdoor   0      3, 20, 15, 47                   degC
//   2              pressure  2      98250, 101000, 100500, 102750   Pa
//
// Every variable has x = 0, 1, 2, 3, the days' indices. The left axis carries a
// stale unit label, which the unit update replaces.
class PipelineTest : public ::testing::Test {
protected:
    PipelineTest()
    {
        auto& days = dynamic_cast<KelChartAxisDiscrete&>(chart.axisX.createFirst("days", KelChartAxisDiscrete::typeString));
        days.labels.setLabels({"Mon", "Tue", "Wed", "Thu"});
        left = &dynamic_cast<KelChartAxisContinuous&>(chart.axisY.createFirst("left", KelChartAxisContinuous::typeString));
        right = &dynamic_cast<KelChartAxisContinuous&>(chart.axisY.createSecond("right", KelChartAxisContinuous::typeString));
        left->unitLabel.set("K");
        addVariable("indoor", 1, "axis.y.left", {50, 68, 86, 104}, "degF");
        addVariable("outdoor", 0, "axis.y.left", {3, 20, 15, 47}, "degC");
        addVariable("pressure", 2, "axis.y.right", {98250, 101000, 100500, 102750}, "Pa");
    }

    void addVariable(const QString& name, int order, const QString& yAxis, std::vector<float> ys, const QString& unit)
    {
        KelChartVariable& var = chart.variables.child(name, KelChartVariable::typeString);
        var.order.set(order);
        var.xAxis.set("axis.x.days");
        var.yAxis.set(yAxis);
        var.variableiter.setVector2Data({0, 1, 2, 3}, std::move(ys), {}, {}, QString(), unit);
    }

    const KelChartVariable& variable(const char* name) const { return *chart.variables[QString(name)]; }

    KelModifiedGroup group;
    KelChart2D chart{group};
    KelChartAxisContinuous* left = nullptr;
    KelChartAxisContinuous* right = nullptr;
    orvdebug::ScopedCapture capture{kel::debug_logger::debuglogger()};
};

struct Ticks {
    std::vector<double> values;
    std::vector<QString> labels;
    std::vector<double> percentages;
};

Ticks ticksOf(KelChartAxisScale scale)
{
    Ticks ticks;
    for (unsigned int i = 0; i < scale.size(); ++i) {
        ticks.values.push_back(scale.value(i));
        ticks.labels.push_back(scale.label(i));
        ticks.percentages.push_back(scale.percentage(i));
    }
    return ticks;
}

void expectMapsTo(const Matrix& matrix, const Vector3& point, const Vector3& expected)
{
    const Vector3 mapped = matrix.map(point);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(mapped[c], expected[c], 1e-5) << "component " << c;
}

TEST_F(PipelineTest, FromModelToMatrices)
{
    // 1. Units: "outdoor" comes first in order, so the left axis is in degC and
    // "indoor" is delivered in degC; the days axis is discrete and has no unit.
    const std::vector<const KelChartVariable*> updated =
        KelChartUpdateVariableUnits(chart.unitSystem, chart.axisX, chart.axisY, chart.axisZ, chart.variables)();
    EXPECT_EQ(updated, (std::vector<const KelChartVariable*>{&variable("outdoor"), &variable("indoor"),
                                                             &variable("pressure")}));
    EXPECT_EQ(left->unitLabel.get(), "degC");
    EXPECT_EQ(right->unitLabel.get(), "Pa");

    // 2. Caches in order: outdoor, indoor, pressure. indoor's y is 10 .. 40 degC.
    const KelChartVariableListCache cache(chart.variables);
    ASSERT_EQ(cache.size(), 3u);
    EXPECT_EQ(&cache.cache(0).variable(), &variable("outdoor"));
    EXPECT_EQ(&cache.cache(1).variable(), &variable("indoor"));
    EXPECT_NEAR(cache.cache(1).bounds().min().y(), 10, 1e-4);
    EXPECT_NEAR(cache.cache(1).bounds().max().y(), 40, 1e-4);

    // 3. Scales.
    KelChartAxisPairScale xScale(chart.axisX, cache);
    KelChartAxisPairScale yScale(chart.axisY, cache);
    xScale.update(tickCount, Orv::Math::NumberFormat());
    yScale.update(tickCount, Orv::Math::NumberFormat());

    // Days: categories 0 .. 3, so [0, 4) in four slots, each tick at its slot's centre.
    const KelChartAxisScale& days = xScale.first();
    ASSERT_TRUE(days.valid());
    EXPECT_TRUE(days.discrete());
    EXPECT_EQ(days.min(), 0.0);
    EXPECT_EQ(days.max(), 4.0);
    EXPECT_EQ(days.factor(), 1.0);
    EXPECT_EQ(days.baseLine(), 0.0);
    const Ticks dayTicks = ticksOf(days);
    EXPECT_EQ(dayTicks.values, (std::vector<double>{0, 1, 2, 3}));
    EXPECT_EQ(dayTicks.labels, (std::vector<QString>{"Mon", "Tue", "Wed", "Thu"}));
    EXPECT_EQ(dayTicks.percentages, (std::vector<double>{0.125, 0.375, 0.625, 0.875}));

    // Left: each y range widened by 1/20 of its width: outdoor 3 .. 47 to
    // 0.8 .. 49.2, indoor 10 .. 40 to 8.5 .. 41.5; the union 0.8 .. 49.2 rounds
    // out to 0 .. 50 in steps of 10, five intervals as asked. The base line is
    // 0, the range's low end.
    const KelChartAxisScale& temperature = yScale.first();
    ASSERT_TRUE(temperature.valid());
    EXPECT_FALSE(temperature.discrete());
    EXPECT_EQ(temperature.min(), 0.0);
    EXPECT_EQ(temperature.max(), 50.0);
    EXPECT_EQ(temperature.factor(), 1.0);
    EXPECT_EQ(temperature.baseLine(), 0.0);
    const Ticks temperatureTicks = ticksOf(temperature);
    EXPECT_EQ(temperatureTicks.values, (std::vector<double>{0, 10, 20, 30, 40, 50}));
    EXPECT_EQ(temperatureTicks.labels, (std::vector<QString>{"0", "10", "20", "30", "40", "50"}));
    EXPECT_EQ(temperatureTicks.percentages, (std::vector<double>{0, 0.2, 0.4, 0.6, 0.8, 1}));

    // Right: 98250 .. 102750 widened by 225 to 98025 .. 102975, rounded out to
    // 98000 .. 103000 in steps of 1000. Ticks that large are labelled in
    // thousands. The whole range is positive, so the base line is its low end.
    const KelChartAxisScale& pressure = yScale.second();
    ASSERT_TRUE(pressure.valid());
    EXPECT_EQ(pressure.min(), 98000.0);
    EXPECT_EQ(pressure.max(), 103000.0);
    EXPECT_EQ(pressure.factor(), 1000.0);
    EXPECT_EQ(pressure.baseLine(), 98000.0);
    const Ticks pressureTicks = ticksOf(pressure);
    EXPECT_EQ(pressureTicks.values, (std::vector<double>{98000, 99000, 100000, 101000, 102000, 103000}));
    EXPECT_EQ(pressureTicks.labels, (std::vector<QString>{"98", "99", "100", "101", "102", "103"}));

    // 4. Matrices: x [0, 4] and y [0, 50] (temperatures) or [98000, 103000]
    // (pressure) onto [-1, 1]. outdoor's (1, 20) lies at x 2 * 1/4 - 1 = -0.5,
    // y 2 * 20/50 - 1 = -0.2; pressure's (3, 102000) at x 0.5, y 2 * 4000/5000 - 1 = 0.6.
    const KelChartPerVariableScaling scaling(xScale, yScale, cache);
    ASSERT_EQ(scaling.size(), 3u);
    for (size_t i = 0; i < scaling.size(); ++i)
        EXPECT_TRUE(scaling.valid(i)) << i;
    expectMapsTo(scaling.matrix(0), Vector3(0, 0, 0), Vector3(-1, -1, 0));
    expectMapsTo(scaling.matrix(0), Vector3(4, 50, 0), Vector3(1, 1, 0));
    expectMapsTo(scaling.matrix(0), Vector3(1, 20, 0), Vector3(-0.5f, -0.2f, 0));
    EXPECT_EQ(scaling.matrix(1), scaling.matrix(0));
    expectMapsTo(scaling.matrix(2), Vector3(0, 98000, 0), Vector3(-1, -1, 0));
    expectMapsTo(scaling.matrix(2), Vector3(4, 103000, 0), Vector3(1, 1, 0));
    expectMapsTo(scaling.matrix(2), Vector3(3, 102000, 0), Vector3(0.5f, 0.6f, 0));

    EXPECT_TRUE(scaling.isAxisDiscrete(Comp::X, 2));
    EXPECT_FALSE(scaling.isAxisDiscrete(Comp::Y, 2));
    EXPECT_EQ(scaling.baseLine(2, Comp::Y), 98000.0);
    Vector2 extents;
    double baseLine = -1;
    // indoor's 10 .. 40 reaches down to the base line 0; pressure starts at its own.
    scaling.gradientExtents(1, Comp::Y, extents, baseLine);
    EXPECT_EQ(extents[0], 0.0f);
    EXPECT_NEAR(extents[1], 40, 1e-4);
    scaling.gradientExtents(2, Comp::Y, extents, baseLine);
    EXPECT_EQ(extents, Vector2(98000, 102750));
    EXPECT_EQ(baseLine, 98000.0);

    // 5. Each variable's own rounded range, 11 intervals wanted: outdoor's
    // 2.99997 .. 47.00047 holds 5 .. 45 in steps of 5, and one step beyond each
    // end gives 0 .. 50; indoor's 9.9999 .. 40.0004 holds 10 .. 40 in steps of 2,
    // so 8 .. 42. pressure has a manual range.
    auto& pressureVariable = const_cast<KelChartVariable&>(variable("pressure"));
    pressureVariable.autoRange.set(false);
    pressureVariable.min.reset(Vector3(95000, 0, 0), "", "", "");
    pressureVariable.max.reset(Vector3(105000, 0, 0), "", "", "");
    KelChartValidVariableList ranges;
    for (size_t i = 0; i < cache.size(); ++i)
        ranges.push_back(cache.cache(i));
    ASSERT_EQ(ranges.size(), 3u);
    EXPECT_EQ(ranges.minmax(0), Vector2(0, 50));
    EXPECT_EQ(ranges.minmax(1), Vector2(8, 42));
    EXPECT_EQ(ranges.minmax(2), Vector2(95000, 105000));
    EXPECT_EQ(ranges.findIndexByName("pressure"), 2);
    EXPECT_EQ(ranges.fillBaseLine(2), 95000.0);

    EXPECT_TRUE(capture.texts(orvdebug::Stream::Ensure).empty());
    EXPECT_TRUE(capture.texts(orvdebug::Stream::Err).empty());
}

} // namespace
