#include "KelChart2D.h"
#include "KelChart3D.h"
#include "KelChartAxisContinuous.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// Charts with axis pairs: the switch that differs between them, and the line texts of their traces.
template <class Chart>
struct PairChart;
template <>
struct PairChart<KelChart2D> {
    static KelPropertyAdaptor<bool>& flag(KelChart2D& chart) { return chart.draw3d; }
    static constexpr const char* scope = "KelChart2D::";
    static std::vector<std::string> traceLines() { return {" @line 25", " @line 47", " @line 63", " @line 63"}; }
};
template <>
struct PairChart<KelChart3D> {
    static KelPropertyAdaptor<bool>& flag(KelChart3D& chart) { return chart.cube; }
    static constexpr const char* scope = "KelChart3D::";
    static std::vector<std::string> traceLines() { return {" @line 30", " @line 52", " @line 68", " @line 68"}; }
};

template <class Chart>
class KelChartWithPairsTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
};
using ChartsWithPairs = ::testing::Types<KelChart2D, KelChart3D>;
TYPED_TEST_SUITE(KelChartWithPairsTest, ChartsWithPairs);

} // namespace

// The pairs are members inserted after the base's children; a copy gets them empty, an assignment mirrors
// the source's axes into its own pairs.
TYPED_TEST(KelChartWithPairsTest, CopyHasEmptyPairsAssignmentMirrorsThem)
{
    using Traits = PairChart<TypeParam>;
    TypeParam chart(this->group);
    chart.axisX.createFirst("bottom", KelChartAxisContinuous::typeString);
    Traits::flag(chart).set(!Traits::flag(chart).get());
    const bool flagged = Traits::flag(chart).get();
    TypeParam copy(chart);
    EXPECT_EQ(Traits::flag(copy).get(), flagged);
    EXPECT_EQ(copy.axisX.first(), nullptr);
    EXPECT_EQ(copy.axisX.second(), nullptr);
    ASSERT_EQ(copy.size(), 6u);
    EXPECT_EQ(copy[3u], &copy.axisX);
    EXPECT_EQ(copy[5u], &copy.axisZ);

    TypeParam assigned(this->group);
    assigned = chart;
    EXPECT_EQ(Traits::flag(assigned).get(), flagged);
    ASSERT_NE(assigned.axisX.first(), nullptr);
    EXPECT_EQ(assigned.axisX.first()->name(), "axis.x.bottom");
    EXPECT_EQ(assigned.axisX.first()->parent(), &assigned.axisX);
    EXPECT_EQ(chart.axisX.first()->parent(), &chart.axisX);
}

TYPED_TEST(KelChartWithPairsTest, ScopedTracesCarryTheirLineTexts)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    {
        TypeParam chart(this->group);
        TypeParam copy(chart);
    }
    std::vector<std::string> wheres;
    for (const std::string& text : capture.texts(orvdebug::Stream::Log))
        if (text.rfind("enter ", 0) == 0 && text.find(PairChart<TypeParam>::scope) != std::string::npos)
            wheres.push_back(text.substr(text.find(" @line")));
    EXPECT_EQ(wheres, PairChart<TypeParam>::traceLines());
}
