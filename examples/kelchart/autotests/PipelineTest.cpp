#include "DataBinding.h"
#include "Pipeline.h"
#include "SampleChart.h"

#include "KelChartAxisContinuous.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <cmath>

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

TEST_F(PipelineTest, UnitUpdateBringsTheDegFSensorToDegC)
{
    bindSample();
    const Pipeline pipeline(*m_chart, kelchart::axisPairsOf(*m_chart), 8);
    ASSERT_EQ(pipeline.cache().size(), 4u);
    const KelChartVariableCache& air = pipeline.cache().cache(1);
    const KelChartVariableCache& shade = pipeline.cache().cache(2);
    ASSERT_EQ(shade.variable().name(), QStringLiteral("T2"));
    ASSERT_EQ(air.y().size(), shade.y().size());
    // The shade sensor reads 1.5 degC below the air, give or take 0.4.
    for (std::size_t k = 0; k < air.y().size(); ++k)
        EXPECT_NEAR(shade.y()[k], air.y()[k] - 1.5, 0.41) << "hour " << k;
    EXPECT_EQ(axis(pipeline, "axis.y.left").unitLabel, QStringLiteral("degC"));
    EXPECT_EQ(axis(pipeline, "axis.y.right").unitLabel, QStringLiteral("kPa"));
    EXPECT_EQ(axis(pipeline, "axis.x.bottom").unitLabel, QStringLiteral("h"));
}

TEST_F(PipelineTest, AxesComeWithTheirSidesTicksAndLabels)
{
    bindSample();
    const Pipeline pipeline(*m_chart, kelchart::axisPairsOf(*m_chart), 8);
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

TEST_F(PipelineTest, MatrixMapsTheAxisRangesOntoTheCube)
{
    bindSample();
    const Pipeline pipeline(*m_chart, kelchart::axisPairsOf(*m_chart), 8);
    const AxisResult& left = axis(pipeline, "axis.y.left");
    const Orv::Math::Matrix& matrix = pipeline.scaling().matrix(1);
    const Orv::Math::Vector3 low = matrix.map({0.0f, static_cast<float>(left.min), 0.0f});
    const Orv::Math::Vector3 high = matrix.map({24.0f, static_cast<float>(left.max), 0.0f});
    EXPECT_FLOAT_EQ(low.x(), -1.0f);
    EXPECT_FLOAT_EQ(low.y(), -1.0f);
    EXPECT_FLOAT_EQ(high.x(), 1.0f);
    EXPECT_FLOAT_EQ(high.y(), 1.0f);
}

TEST_F(PipelineTest, VariableWhoseUnitsTheAxisRefusesIsLeftOut)
{
    KelChartVariable& odd = m_chart->variables.child(QStringLiteral("depth"), KelChartVariable::typeString);
    odd.xAxis.set(QStringLiteral("axis.x.bottom"));
    odd.yAxis.set(QStringLiteral("axis.y.left"));
    odd.order.set(9);
    bindSample();
    odd.variableiter.setVector2Data({1.0f}, {2.0f}, {}, {}, QStringLiteral("h"), QStringLiteral("m"));
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    const Pipeline pipeline(*m_chart, kelchart::axisPairsOf(*m_chart), 8);
    EXPECT_EQ(pipeline.unitsAccepted().size(), 4u);
    EXPECT_EQ(pipeline.cache().size(), 4u);
    EXPECT_EQ(pipeline.validVariables().findIndexByName(QStringLiteral("depth")), -1);
    EXPECT_EQ(capture.texts(orvdebug::Stream::Err).size(), 1u);
}

TEST_F(PipelineTest, ChartWithoutDataHasNoAxesToShow)
{
    const Pipeline pipeline(*m_chart, kelchart::axisPairsOf(*m_chart), 8);
    EXPECT_EQ(pipeline.cache().size(), 0u);
    EXPECT_TRUE(pipeline.axes().empty());
    EXPECT_EQ(pipeline.validVariables().size(), 0u);
}
