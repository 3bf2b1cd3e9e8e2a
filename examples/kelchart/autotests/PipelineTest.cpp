#include "DataBinding.h"
#include "Pipeline.h"
#include "SampleChart.h"

#include <gtest/gtest.h>

using kelchart::AxisResult;
using kelchart::AxisSide;
using kelchart::Pipeline;

namespace {

class PipelineTest : public ::testing::Test {
protected:
    PipelineTest()
        : m_chart(kelchart::SampleChart::build(m_group))
    {
    }

    void bindSample()
    {
        const QStringList unbound = kelchart::bindData(m_chart->variables, kelchart::axisPairsOf(*m_chart),
                                                       kelchart::SampleChart::data());
        EXPECT_TRUE(unbound.isEmpty());
    }

    static const kelchart::AxisResult& axis(const Pipeline& pipeline, const char* name)
    {
        const AxisResult* result = pipeline.axis(QString::fromLatin1(name));
        EXPECT_TRUE(result) << name;
        return *result;
    }

    KelModifiedGroup m_group;
    std::unique_ptr<KelChart2D> m_chart;
};

} // namespace

// What the view adds to the library's pipeline: each valid axis with its side and ticks. (The library's own
// results are tested with the library.)
TEST_F(PipelineTest, AxesComeWithTheirSidesTicksAndLabels)
{
    bindSample();
    const Pipeline pipeline(*m_chart, kelchart::axisPairsOf(*m_chart), {QSize(800, 500), 8, {}});
    ASSERT_EQ(pipeline.axes().size(), 4u);
    const AxisResult& periods = axis(pipeline, "axis.x.top");
    EXPECT_EQ(periods.side, AxisSide::Top);
    EXPECT_TRUE(periods.discrete);
    ASSERT_EQ(periods.ticks.size(), 4u);
    EXPECT_EQ(periods.ticks[2].label, QStringLiteral("afternoon"));
    const AxisResult& time = axis(pipeline, "axis.x.bottom");
    const KelChartAxisScale& scale = pipeline.run().xScales().first();
    EXPECT_EQ(time.min, 0.0);
    EXPECT_EQ(time.max, scale.max());
    EXPECT_EQ(time.ticks.size(), scale.size());
    EXPECT_EQ(time.ticks.front().position, 0.0);
    EXPECT_EQ(time.ticks.back().position, 1.0);
}

TEST_F(PipelineTest, ChartWithoutDataHasNoAxesToShow)
{
    const Pipeline pipeline(*m_chart, kelchart::axisPairsOf(*m_chart), {QSize(800, 500), 8, {}});
    EXPECT_EQ(pipeline.cache().size(), 0u);
    EXPECT_TRUE(pipeline.axes().empty());
    EXPECT_EQ(pipeline.validVariables().size(), 0u);
}

// Each axis asks for as many intervals as its labels have room for: a wider image, more of them.
TEST_F(PipelineTest, TickCountsFollowTheRoomForLabels)
{
    bindSample();
    const kelchart::AxisPairs pairs = kelchart::axisPairsOf(*m_chart);
    const Pipeline narrow(*m_chart, pairs, {QSize(400, 300), 100, {}});
    const Pipeline wide(*m_chart, pairs, {QSize(1600, 1000), 100, {}});
    const Pipeline capped(*m_chart, pairs, {QSize(1600, 1000), 3, {}});
    for (const char* name : {"axis.x.bottom", "axis.y.left", "axis.y.right"}) {
        EXPECT_LT(axis(narrow, name).wanted, axis(wide, name).wanted) << name;
        EXPECT_LE(axis(capped, name).wanted, 3u) << name;
    }
}
