#include "KelChartPerVariableScaling.h"

#include "ChartWithData.h"
#include "KelChartAxisPairScale.h"

#include <optional>
#include <tuple>

namespace {

using Orv::Math::Matrix;
using Orv::Math::Vector2;
using Orv::Math::Vector3;
using Comp = Orv::Math::Vector3::Comp;

// Axes with fixed ranges, so that every scale's range is known:
//   axis.x.bottom [0, 10], axis.x.category (discrete),
//   axis.y.left [1, 5] inverted, axis.y.right [0, 100], axis.z.depth [1, 3].
// Every variable has the points (2, 2) and (8, 8).
class KelChartPerVariableScalingTest : public ChartWithData {
protected:
    KelChartPerVariableScalingTest()
    {
        fixed(axis('x', "bottom"), 0, 10);
        axis<KelChartAxisDiscrete>('x', "category", false);
        fixed(axis('y', "left"), 1, 5).inverted.set(true);
        fixed(axis('y', "right", false), 0, 100);
        fixed(axis('z', "depth"), 1, 3);
    }

    void addVariable(const QString& x, const QString& y, const QString& z = QString())
    {
        ChartWithData::addVariable("v", {2, 8}, {2, 8}, {x, y, z});
    }

    // Caches the variables and scales the axes for them.
    void scaleAxes()
    {
        cacheVariables();
        xScale.emplace(chart.axisX, cache);
        yScale.emplace(chart.axisY, cache);
        zScale.emplace(chart.axisZ, cache);
        for (auto* scale : {&xScale, &yScale, &zScale})
            (*scale)->update(5, Orv::Math::NumberFormat());
    }

    KelChartPerVariableScaling twoPairs() const { return {*xScale, *yScale, cache}; }
    KelChartPerVariableScaling threePairs() const { return {*xScale, *yScale, *zScale, cache}; }

    std::optional<KelChartAxisPairScale> xScale;
    std::optional<KelChartAxisPairScale> yScale;
    std::optional<KelChartAxisPairScale> zScale;
};

TEST_F(KelChartPerVariableScalingTest, VariablesNeedAllTheirAxesAndMapTheirRangesOntoTheCube)
{
    addVariable("axis.x.bottom", "axis.y.right");
    addVariable("axis.x.bottom", "axis.y.nowhere");
    addVariable("axis.x.bottom", "axis.y.right", "axis.z.depth");
    addVariable("axis.x.bottom", "axis.y.left", "axis.z.depth");
    scaleAxes();
    const KelChartPerVariableScaling flat = twoPairs();
    ASSERT_EQ(flat.size(), 4u);
    EXPECT_EQ(std::vector<bool>({flat.valid(0), flat.valid(1), flat.valid(2)}), std::vector<bool>({1, 0, 1}));
    EXPECT_EQ(&flat.matrix(1), &Matrix::Identity);
    // With a z pair, the variable without a z axis drops out too.
    const KelChartPerVariableScaling deep = threePairs();
    EXPECT_EQ(std::vector<bool>({deep.valid(0), deep.valid(1), deep.valid(2)}), std::vector<bool>({0, 0, 1}));

    // x [0, 10], y [0, 100] and z [1, 3] go to [-1, 1].
    EXPECT_EQ(deep.matrix(2).map(Vector3(0, 0, 1)), Vector3(-1, -1, -1));
    EXPECT_EQ(deep.matrix(2).map(Vector3(5, 100, 3)), Vector3(0, 1, 1));
    // Without a z pair, z keeps its range [-1, 1]; the inverted y axis adds its turned-round direction.
    EXPECT_EQ(flat.matrix(3), Matrix::ortho(0, 10, 1, 5, -1, 1) * Matrix::orient(Vector3::X, -Vector3::Y, Vector3::Z));
    EXPECT_TRUE(ensures().empty());
}

TEST_F(KelChartPerVariableScalingTest, MatricesAreBuiltOnceAndSharedWithCopies)
{
    addVariable("axis.x.bottom", "axis.y.right");
    addVariable("axis.x.bottom", "axis.y.left");
    scaleAxes();
    KelChartPerVariableScaling scaling = twoPairs();
    const KelChartPerVariableScaling earlyCopy = scaling;
    const Matrix* first = &scaling.matrix(0);
    const KelChartPerVariableScaling lateCopy = scaling;
    EXPECT_EQ(&lateCopy.matrix(0), first);
    // A copy made before the matrix was built builds its own; so do matrices built after copying.
    EXPECT_NE(&earlyCopy.matrix(0), first);
    EXPECT_EQ(earlyCopy.matrix(0), *first);
    EXPECT_NE(&lateCopy.matrix(1), &scaling.matrix(1));
    // The cached points are shared, not copied, with the list cache and between copies.
    EXPECT_EQ(&scaling.variable(1).x(), &cache.cache(1).x());
    EXPECT_EQ(&earlyCopy.variable(0).y(), &cache.cache(0).y());
}

// The data's extent [2, 8] is widened to reach the axis's base line.
TEST_F(KelChartPerVariableScalingTest, GradientExtentsReachTheBaseLine)
{
    addVariable("axis.x.bottom", "axis.y.left", "axis.z.depth");
    Vector2 extents;
    double baseLine = -99;
    for (const auto& [min, max, expectedBaseLine, expected] :
         {std::tuple(-10, 10, 0, Vector2(0, 8)), std::tuple(10, 20, 10, Vector2(2, 10)),
          std::tuple(-20, -10, -10, Vector2(-10, 8))}) {
        fixed(dynamic_cast<KelChartAxisContinuous&>(*chart.axisY.first()), min, max);
        scaleAxes();
        twoPairs().gradientExtents(0, Comp::Y, extents, baseLine);
        EXPECT_EQ(baseLine, expectedBaseLine);
        EXPECT_EQ(extents, expected);
    }
    // Without a z pair there is nothing to reach along z; with one, the data's z (always 0) reaches 1.
    twoPairs().gradientExtents(0, Comp::Z, extents, baseLine);
    EXPECT_EQ(extents, Vector2(0, 0));
    EXPECT_EQ(baseLine, 0.0);
    threePairs().gradientExtents(0, Comp::Z, extents, baseLine);
    EXPECT_EQ(extents, Vector2(0, 1));
    EXPECT_EQ(baseLine, 1.0);
}

// Missing pairs and axes, also those replaced after construction, are reported and answered safely.
TEST_F(KelChartPerVariableScalingTest, IsAxisDiscreteAsksTheVariablesAxisAndMissingAxesAreReported)
{
    addVariable("axis.x.category", "axis.y.right", "axis.z.depth");
    addVariable("axis.x.bottom", "axis.y.nowhere");
    scaleAxes();
    const KelChartPerVariableScaling flat = twoPairs();
    const KelChartPerVariableScaling deep = threePairs();
    EXPECT_TRUE(flat.isAxisDiscrete(Comp::X, 0));
    EXPECT_FALSE(flat.isAxisDiscrete(Comp::Y, 0));
    EXPECT_FALSE(flat.isAxisDiscrete(Comp::X, 1));
    EXPECT_TRUE(ensures().empty());
    EXPECT_FALSE(flat.isAxisDiscrete(Comp::Z, 0));
    EXPECT_FALSE(flat.isAxisDiscrete(static_cast<Comp>(3), 0));
    EXPECT_FALSE(flat.isAxisDiscrete(Comp::Y, 1));
    KelChartAxisPair empty(group);
    yScale.emplace(empty, cache);
    zScale.emplace(empty, cache);
    ASSERT_TRUE(deep.valid(0));
    EXPECT_EQ(deep.matrix(0), Matrix::Identity);
    const std::string discrete =
        " - bool KelChartPerVariableScaling::isAxisDiscrete(Orv::Math::Vector3::Comp, size_t) const";
    const std::string matrix = " - const Orv::Math::Matrix& KelChartPerVariableScaling::matrix(size_t) const";
    EXPECT_EQ(ensures(), (std::vector<std::string>{"\"axisPair != 0\"" + discrete, "\"axisPair != 0\"" + discrete,
                                                   "\"axis != 0\"" + discrete, "\"xAxis && yAxis\"" + matrix,
                                                   "\"zAxis\"" + matrix}));
}

} // namespace
