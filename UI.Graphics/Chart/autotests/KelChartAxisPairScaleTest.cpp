#include "KelChartAxisContinuous.h"
#include "KelChartAxisPair.h"
#include "KelChartAxisPairScale.h"
#include "KelChartVariableListCache.h"

#include <gtest/gtest.h>

#include <deque>

namespace {

class KelChartAxisPairScaleTest : public ::testing::Test {
protected:
    KelChartAxisPairScaleTest() { pair.rename("axis.y"); }

    // A variable drawn against `xAxis` and `yAxis`, with points (0, 0) and (10, 10).
    void addVariable(const QString& xAxis, const QString& yAxis, const QString& zAxis = QString())
    {
        KelChartVariable& variable = variables.emplace_back(group);
        variable.xAxis.set(xAxis);
        variable.yAxis.set(yAxis);
        variable.zAxis.set(zAxis);
        variable.variableiter.setVector2Data({0, 10}, {0, 10});
    }
    KelChartAxisPairScale pairScale()
    {
        std::vector<const KelChartVariable*> pointers;
        for (const KelChartVariable& variable : variables)
            pointers.push_back(&variable);
        cache = KelChartVariableListCache(pointers, {});
        return KelChartAxisPairScale(pair, cache);
    }
    KelChartAxis& create(bool first, const char* name)
    {
        return first ? pair.createFirst(name, KelChartAxisContinuous::typeString)
                     : pair.createSecond(name, KelChartAxisContinuous::typeString);
    }

    KelModifiedGroup group;
    KelChartAxisPair pair{group};
    std::deque<KelChartVariable> variables;
    KelChartVariableListCache cache;
    const Orv::Math::NumberFormat format;
};

} // namespace

TEST_F(KelChartAxisPairScaleTest, PairWithoutAxesFindsNothing)
{
    addVariable("", "");
    KelChartAxisPairScale scale = pairScale();
    scale.update(5, format);
    EXPECT_FALSE(scale.first().valid());
    EXPECT_FALSE(scale.second().valid());
    EXPECT_EQ(scale.first().size(), 0u);
    EXPECT_EQ(scale.find(""), nullptr);
}

TEST_F(KelChartAxisPairScaleTest, UpdateScalesBothAxes)
{
    KelChartAxis& left = create(true, "left");
    KelChartAxis& right = create(false, "right");
    addVariable(left.name(), right.name());
    KelChartAxisPairScale scale = pairScale();
    scale.update(5, format);
    EXPECT_TRUE(scale.first().valid());
    EXPECT_TRUE(scale.second().valid());
    EXPECT_GT(scale.first().size(), 1u);
    EXPECT_GT(scale.second().size(), 1u);
    EXPECT_EQ(scale.find("axis.y.left"), &scale.first());
    EXPECT_EQ(scale.find("axis.y.right"), &scale.second());
    EXPECT_EQ(scale.find("left"), nullptr);
}

TEST_F(KelChartAxisPairScaleTest, SameNameFindsTheFirst)
{
    KelChartAxis& left = create(true, "left");
    create(false, "right").rename(left.name());
    addVariable(left.name(), "");
    const KelChartAxisPairScale scale = pairScale();
    ASSERT_TRUE(scale.second().valid());
    EXPECT_EQ(scale.find(left.name()), &scale.first());
}

TEST_F(KelChartAxisPairScaleTest, InvalidScalesAreNeverFound)
{
    KelChartAxis& left = create(true, "left");
    KelChartAxis& right = create(false, "right");
    left.enabled.set(false);
    addVariable(left.name(), right.name());
    KelChartAxisPairScale scale = pairScale();
    EXPECT_EQ(scale.find(left.name()), nullptr);
    EXPECT_EQ(scale.find(right.name()), &scale.second());

    // Named only as z: valid until an update finds no data for it.
    left.enabled.set(true);
    variables.clear();
    addVariable("", right.name(), left.name());
    scale = pairScale();
    EXPECT_EQ(scale.find(left.name()), &scale.first());
    scale.update(5, format);
    EXPECT_EQ(scale.find(left.name()), nullptr);
    EXPECT_EQ(scale.find(right.name()), &scale.second());
}
