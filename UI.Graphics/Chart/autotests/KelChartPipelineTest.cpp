// The drawing pipeline from the model to the matrices, run on one small chart:
// unit update, variable list cache, axis pair scales, per-variable scaling and
// the valid variable list, checked against values worked out by hand.

#include "ChartWithData.h"

#include "KelChartPipeline.h"

#include <vector>

namespace {

using Orv::Math::Vector2;
using Orv::Math::Vector3;
using Comp = Orv::Math::Vector3::Comp;
using Values = std::vector<double>;

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
class KelChartPipelineTest : public ChartWithData {
protected:
    KelChartPipelineTest()
    {
        axis<KelChartAxisDiscrete>('x', "days").labels.setLabels({"Mon", "Tue", "Wed", "Thu"});
        left->unitLabel.set("K");
        add("indoor", 1, "axis.y.left", {50, 68, 86, 104}, "degF");
        add("outdoor", 0, "axis.y.left", {3, 20, 15, 47}, "degC");
        add("pressure", 2, "axis.y.right", {98250, 101000, 100500, 102750}, "Pa");
    }

    void add(const QString& name, int order, const QString& yAxis, std::vector<float> ys, const QString& unit)
    {
        addVariable(name, {0, 1, 2, 3}, std::move(ys), {"axis.x.days", yAxis}, order, QString(), unit);
    }

    KelChartVariable& variable(const char* name) { return *chart.variables[QString(name)]; }

    KelChartAxisContinuous* left = &axis('y', "left");
    KelChartAxisContinuous* right = &axis('y', "right", false);
};

// The scale's range, factor and base line.
Values rangeOf(const KelChartAxisScale& scale)
{
    return {scale.min(), scale.max(), scale.factor(), scale.baseLine()};
}

void expectMapsTo(const Orv::Math::Matrix& matrix, const Vector3& point, const Vector3& expected)
{
    const Vector3 mapped = matrix.map(point);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(mapped[c], expected[c], 1e-5) << "component " << c;
}

TEST_F(KelChartPipelineTest, FromModelToMatrices)
{
    // The manual range of "pressure" is given in its own unit, Pa.
    variable("pressure").autoRange.set(false);
    variable("pressure").min.reset(Vector3(95000, 0, 0), "", "", "");
    variable("pressure").max.reset(Vector3(105000, 0, 0), "", "", "");
    const KelChartPipeline pipeline(chart, {KelChartPipeline::everyAxis(5), false, {}});

    // 1. Units: "outdoor" comes first in order, so the left axis is in degC and
    // "indoor" is delivered in degC; the days axis is discrete and has no unit.
    EXPECT_EQ(pipeline.unitsAccepted(),
              (std::vector<const KelChartVariable*>{&variable("outdoor"), &variable("indoor"), &variable("pressure")}));
    EXPECT_EQ(left->unitLabel.get(), "degC");
    EXPECT_EQ(right->unitLabel.get(), "Pa");

    // 2. Caches in order: outdoor, indoor, pressure. indoor's y is 10 .. 40 degC.
    const KelChartVariableListCache& cache = pipeline.cache();
    ASSERT_EQ(cache.size(), 3u);
    EXPECT_NEAR(cache.cache(1).bounds().max().y(), 40, 1e-4);

    // 3. Scales, each from its own data: the days' four slots [0, 4); left: each y range widened by 1/20 of
    // its width (outdoor 3 .. 47 to 0.8 .. 49.2), rounded out to 0 .. 50; right: 98250 .. 102750 widened by
    // 225, rounded out to 98000 .. 103000 in steps of 1000 labelled in thousands, base line at its low end.
    EXPECT_EQ(rangeOf(pipeline.xScales().first()), Values({0, 4, 1, 0}));
    EXPECT_EQ(pipeline.xScales().first().label(3), "Thu");
    EXPECT_EQ(rangeOf(pipeline.yScales().first()), Values({0, 50, 1, 0}));
    EXPECT_EQ(rangeOf(pipeline.yScales().second()), Values({98000, 103000, 1000, 98000}));
    EXPECT_EQ(pipeline.yScales().second().label(5), "103");
    EXPECT_EQ(pipeline.findScale("axis.y.right"), &pipeline.yScales().second());
    EXPECT_EQ(pipeline.findScale("axis.z.none"), nullptr);

    // 4. Matrices: x [0, 4] and y [0, 50] or [98000, 103000] onto [-1, 1]. outdoor's
    // (1, 20) lies at x 2 * 1/4 - 1 = -0.5, y 2 * 20/50 - 1 = -0.2; pressure's
    // (3, 102000) at x 0.5, y 2 * 4000/5000 - 1 = 0.6.
    const KelChartPerVariableScaling& scaling = pipeline.scaling();
    ASSERT_EQ(scaling.size(), 3u);
    EXPECT_TRUE(scaling.valid(0) && scaling.valid(1) && scaling.valid(2));
    expectMapsTo(scaling.matrix(0), Vector3(1, 20, 0), Vector3(-0.5f, -0.2f, 0));
    EXPECT_EQ(scaling.matrix(1), scaling.matrix(0));
    expectMapsTo(scaling.matrix(2), Vector3(3, 102000, 0), Vector3(0.5f, 0.6f, 0));
    EXPECT_TRUE(scaling.isAxisDiscrete(Comp::X, 2));

    // 5. Each variable's own rounded range, 11 intervals wanted: outdoor's
    // 2.99997 .. 47.00047 holds 5 .. 45 in steps of 5, and one step beyond each
    // end gives 0 .. 50; indoor's 9.9999 .. 40.0004 holds 10 .. 40 in steps of 2.5
    // (12 intervals, closer to 11 than the 15 of steps of 2), so 7.5 .. 42.5.
    // pressure has a manual range.
    const KelChartValidVariableList& ranges = pipeline.validVariables();
    EXPECT_EQ(ranges.minmax(0), Vector2(0, 50));
    EXPECT_EQ(ranges.minmax(1), Vector2(7.5f, 42.5f));
    EXPECT_EQ(ranges.minmax(2), Vector2(95000, 105000));

    EXPECT_TRUE(ensures().empty());
    EXPECT_TRUE(errors().empty());
}

// Each axis gets the tick count asked for it, and running over the caches of
// an earlier run rescales without caching again.
TEST_F(KelChartPipelineTest, TickRequestsPerAxisAndRescalingOverExistingCaches)
{
    const KelChartPipeline::TickRequests ticks = [this](const KelChartAxis& axis) {
        return KelChartPipeline::TickRequest{&axis == right ? 2u : 10u, {}};
    };
    const KelChartPipeline pipeline(chart, {ticks, false, {}});
    EXPECT_EQ(pipeline.yScales().first().size(), 11u); // 0 .. 50 in steps of 5
    KelChartAxisScale two(*right, pipeline.cache());
    two.update(2, {});
    EXPECT_EQ(pipeline.yScales().second().size(), two.size());
    EXPECT_EQ(pipeline.yScales().second().max(), two.max());

    left->autoScale.set(false);
    left->min.set(-10);
    left->max.set(10);
    const KelChartPipeline rescaled(chart.axisX, chart.axisY, chart.axisZ, pipeline.cache(), {ticks, false, {}});
    EXPECT_EQ(&rescaled.cache(), &pipeline.cache());
    EXPECT_TRUE(rescaled.unitsAccepted().empty());
    EXPECT_EQ(rescaled.yScales().first().min(), -10);
    EXPECT_EQ(rescaled.yScales().first().max(), 10);
    expectMapsTo(rescaled.scaling().matrix(0), Vector3(1, 5, 0), Vector3(-0.5f, 0.5f, 0));
}

// A run depends only on the variables and axes as they are: after the orders
// change, the new first variable names the axis unit and every variable is
// delivered in it, whatever an earlier run chose.
TEST_F(KelChartPipelineTest, RerunAfterReorderingTakesTheNewFirstUnit)
{
    { const KelChartPipeline first(chart); }
    EXPECT_EQ(left->unitLabel.get(), "degC");
    variable("indoor").order.set(-1);
    const KelChartPipeline second(chart);
    EXPECT_EQ(left->unitLabel.get(), "degF");
    // outdoor's 3 .. 47 degC is 37.4 .. 116.6 degF; indoor stays 50 .. 104 degF.
    const KelChartVariableListCache& cache = second.cache();
    ASSERT_EQ(cache.size(), 3u);
    EXPECT_EQ(&cache.cache(0).variable(), &variable("indoor"));
    EXPECT_NEAR(cache.cache(0).bounds().max().y(), 104, 1e-3);
    EXPECT_NEAR(cache.cache(1).bounds().min().y(), 37.4, 1e-3);
    EXPECT_NEAR(cache.cache(1).bounds().max().y(), 116.6, 1e-3);
}

} // namespace
