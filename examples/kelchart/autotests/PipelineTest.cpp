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
    EXPECT_EQ(time.min, 0.0);
    EXPECT_EQ(time.max, 24.0);
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
