#include "ChartWithData.h"
#include "KelChartAxisPairScale.h"

namespace {

// The pair "axis.y" with a continuous axis "left" first and "right" second.
class KelChartAxisPairScaleTest : public ChartWithData {
protected:
    // The pair's scale for one variable with points (0, 0) and (10, 10) drawn against the axes named.
    KelChartAxisPairScale scaleFor(const QStringList& axes)
    {
        removeVariables();
        addVariable("v", {0, 10}, {0, 10}, axes);
        return KelChartAxisPairScale(chart.axisY, cacheVariables());
    }

    KelChartAxis& left = axis('y', "left");
    KelChartAxis& right = axis('y', "right", false);
    const Orv::Math::NumberFormat format;
};

} // namespace

// Invalid scales (here of a disabled axis) are never found.
TEST_F(KelChartAxisPairScaleTest, FindGivesValidScalesByFullNameFirstOneFirst)
{
    KelChartAxisPairScale scale = scaleFor({left.name(), right.name()});
    scale.update(5, format);
    EXPECT_GT(scale.first().size(), 1u);
    EXPECT_GT(scale.second().size(), 1u);
    EXPECT_EQ(scale.find("axis.y.left"), &scale.first());
    EXPECT_EQ(scale.find("axis.y.right"), &scale.second());
    EXPECT_EQ(scale.find("left"), nullptr);
    EXPECT_EQ(scale.find(""), nullptr);

    left.enabled.set(false);
    const KelChartAxisPairScale disabled = scaleFor({left.name(), right.name()});
    EXPECT_EQ(disabled.find(left.name()), nullptr);
    EXPECT_EQ(disabled.find(right.name()), &disabled.second());
    left.enabled.set(true);

    right.rename(left.name());
    const KelChartAxisPairScale twins = scaleFor({left.name()});
    ASSERT_TRUE(twins.second().valid());
    EXPECT_EQ(twins.find(left.name()), &twins.first());
}
