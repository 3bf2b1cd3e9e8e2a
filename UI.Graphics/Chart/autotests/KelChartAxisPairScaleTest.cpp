#include "KelChartAxisContinuous.h"
#include "KelChartAxisPair.h"
#include "KelChartAxisPairScale.h"
#include "KelChartVariableListCache.h"

#include <gtest/gtest.h>

#include <array>
#include <deque>

namespace {

class KelChartAxisPairScaleTest : public ::testing::Test {
protected:
    KelChartAxisPairScaleTest() { pair.rename("axis.y"); }

    // Variables drawn against the given axes, with points (0, 0) and (10, 10), and the pair's scale for them.
    KelChartAxisPairScale scaleFor(const std::vector<std::array<QString, 3>>& axesOfVariables)
    {
        variables.clear();
        std::vector<const KelChartVariable*> pointers;
        for (const auto& [x, y, z] : axesOfVariables) {
            KelChartVariable& variable = variables.emplace_back(group);
            variable.xAxis.set(x);
            variable.yAxis.set(y);
            variable.zAxis.set(z);
            variable.variableiter.setVector2Data({0, 10}, {0, 10});
            pointers.push_back(&variable);
        }
        cache = KelChartVariableListCache(pointers, {});
        return KelChartAxisPairScale(pair, cache);
    }

    KelModifiedGroup group;
    KelChartAxisPair pair{group};
    std::deque<KelChartVariable> variables;
    KelChartVariableListCache cache;
    const Orv::Math::NumberFormat format;
};

} // namespace

TEST_F(KelChartAxisPairScaleTest, FindGivesValidScalesByFullNameFirstOneFirst)
{
    EXPECT_EQ(scaleFor({{"", "", ""}}).find(""), nullptr);
    KelChartAxis& left = pair.createFirst("left", KelChartAxisContinuous::typeString);
    KelChartAxis& right = pair.createSecond("right", KelChartAxisContinuous::typeString);
    KelChartAxisPairScale scale = scaleFor({{left.name(), right.name(), ""}});
    scale.update(5, format);
    EXPECT_GT(scale.first().size(), 1u);
    EXPECT_GT(scale.second().size(), 1u);
    EXPECT_EQ(scale.find("axis.y.left"), &scale.first());
    EXPECT_EQ(scale.find("axis.y.right"), &scale.second());
    EXPECT_EQ(scale.find("left"), nullptr);

    right.rename(left.name());
    const KelChartAxisPairScale twins = scaleFor({{left.name(), "", ""}});
    ASSERT_TRUE(twins.second().valid());
    EXPECT_EQ(twins.find(left.name()), &twins.first());
}

TEST_F(KelChartAxisPairScaleTest, InvalidScalesAreNeverFound)
{
    KelChartAxis& left = pair.createFirst("left", KelChartAxisContinuous::typeString);
    KelChartAxis& right = pair.createSecond("right", KelChartAxisContinuous::typeString);
    left.enabled.set(false);
    KelChartAxisPairScale scale = scaleFor({{left.name(), right.name(), ""}});
    EXPECT_EQ(scale.find(left.name()), nullptr);
    EXPECT_EQ(scale.find(right.name()), &scale.second());

    // Named only as z: valid until an update finds no data for it.
    left.enabled.set(true);
    scale = scaleFor({{"", right.name(), left.name()}});
    EXPECT_EQ(scale.find(left.name()), &scale.first());
    scale.update(5, format);
    EXPECT_EQ(scale.find(left.name()), nullptr);
    EXPECT_EQ(scale.find(right.name()), &scale.second());
}
