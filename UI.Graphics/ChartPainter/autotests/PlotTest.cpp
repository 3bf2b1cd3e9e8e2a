#include "DataBinding.h"
#include "Plot.h"
#include "SampleChart.h"

#include "KelChartAxisScale.h"

#include <gtest/gtest.h>

using Orv::Chart::PlotAxis;
using Orv::Chart::AxisSide;
using Orv::Chart::Plot;

namespace {

class PipelineTest : public ::testing::Test {
protected:
    PipelineTest()
        : m_chart(Orv::Chart::SampleChart::build(m_group))
    {
    }

    void bindSample()
    {
        const QStringList unbound = Orv::Chart::bindData(m_chart->variables, Orv::Chart::axisPairsOf(*m_chart),
                                                       Orv::Chart::SampleChart::data());
        EXPECT_TRUE(unbound.isEmpty());
    }

    static const Orv::Chart::PlotAxis& axis(const Plot& pipeline, const char* name)
    {
        const PlotAxis* result = pipeline.axis(QString::fromLatin1(name));
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
    const Plot pipeline(*m_chart, Orv::Chart::axisPairsOf(*m_chart), {QSize(800, 500), 8, {}});
    ASSERT_EQ(pipeline.axes().size(), 4u);
    const PlotAxis& periods = axis(pipeline, "axis.x.top");
    EXPECT_EQ(periods.side, AxisSide::Top);
    EXPECT_TRUE(periods.discrete);
    ASSERT_EQ(periods.ticks.major().size(), 4u);
    EXPECT_EQ(periods.ticks.major()[2].label, QStringLiteral("afternoon"));
    const PlotAxis& time = axis(pipeline, "axis.x.bottom");
    const KelChartAxisScale& scale = pipeline.run().xScales().first();
    EXPECT_EQ(time.min, 0.0);
    EXPECT_EQ(time.max, scale.max());
    EXPECT_EQ(time.ticks.major().size(), scale.size());
    EXPECT_EQ(time.ticks.major().front().position, 0.0);
    EXPECT_EQ(time.ticks.major().back().position, 1.0);
}

TEST_F(PipelineTest, ChartWithoutDataHasNoAxesToShow)
{
    const Plot pipeline(*m_chart, Orv::Chart::axisPairsOf(*m_chart), {QSize(800, 500), 8, {}});
    EXPECT_EQ(pipeline.cache().size(), 0u);
    EXPECT_TRUE(pipeline.axes().empty());
    EXPECT_EQ(pipeline.validVariables().size(), 0u);
}

// Each axis asks for as many intervals as its labels have room for: a wider image, more of them.
TEST_F(PipelineTest, TickCountsFollowTheRoomForLabels)
{
    bindSample();
    const Orv::Chart::AxisPairs pairs = Orv::Chart::axisPairsOf(*m_chart);
    const Plot narrow(*m_chart, pairs, {QSize(400, 300), 100, {}});
    const Plot wide(*m_chart, pairs, {QSize(1600, 1000), 100, {}});
    const Plot capped(*m_chart, pairs, {QSize(1600, 1000), 3, {}});
    for (const char* name : {"axis.x.bottom", "axis.y.left", "axis.y.right"}) {
        EXPECT_LT(axis(narrow, name).wanted, axis(wide, name).wanted) << name;
        EXPECT_LE(axis(capped, name).wanted, 3u) << name;
    }
}
