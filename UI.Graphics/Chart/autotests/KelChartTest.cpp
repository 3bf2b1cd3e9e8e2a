#include "KelChart2D.h"
#include "KelChart3D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartCorrelation.h"
#include "KelChartMultiAxis.h"
#include "KelChartPie.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

QStringList childNames(const KelProperties& node)
{
    QStringList names;
    for (unsigned i = 0; i < node.size(); ++i)
        names << node[i]->name();
    return names;
}

QString byName(const KelProperties& node, const QString& name)
{
    QString value;
    node.getValue(name, value, QString());
    return value;
}

const QStringList baseChildren{"unitsystem", "variable", "style"};

class KelChartTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
};

} // namespace

TEST_F(KelChartTest, BaseChartDefaultsAndChildren)
{
    KelChart chart(group);
    EXPECT_EQ(chart.type(), "chart");
    EXPECT_EQ(chart.name(), "chart.1");
    EXPECT_EQ(childNames(chart), baseChildren);
    EXPECT_TRUE(chart.string().defined("title"));
    EXPECT_EQ(byName(chart, "title"), QString());
    EXPECT_EQ(chart.textColor.get(), QColor(Qt::black));
    EXPECT_EQ(chart.textShadowColor.get(), QColor(Qt::transparent));
    EXPECT_EQ(chart.variables.type(), "chart.variable_list");
    EXPECT_EQ(chart.variables.defaultChildName(), "variable.1");
    EXPECT_EQ(chart.style.type(), "chart.variable.style");
}

TEST_F(KelChartTest, CopyIsRenamedInTheSameGroupAndKeepsTheTitle)
{
    KelChart chart(group);
    chart.rename("mine");
    chart.setValue("title", "Line chart");
    chart.style.setValue("style", "line");
    KelChart copy(chart);
    EXPECT_EQ(copy.name(), "chart.1");
    EXPECT_EQ(&copy.group(), &group);
    EXPECT_EQ(copy.title.get(), "Line chart");
    EXPECT_EQ(childNames(copy), baseChildren);
    EXPECT_EQ(byName(copy.style, "style"), "line");
    copy.title.set("changed");
    EXPECT_EQ(chart.title.get(), "Line chart");
}

TEST_F(KelChartTest, SelfAssignmentKeepsValues)
{
    KelChart chart(group);
    chart.title.set("same");
    chart = chart;
    EXPECT_EQ(chart.title.get(), "same");
    EXPECT_EQ(chart.size(), 3u);
}

TEST_F(KelChartTest, TwoAndThreeDimensionalChartsHoldThreeAxisPairs)
{
    KelChart2D flat(group);
    KelChart3D cube(group);
    const QStringList expected = baseChildren + QStringList{"axis.x", "axis.y", "axis.z"};
    EXPECT_EQ(childNames(flat), expected);
    EXPECT_EQ(childNames(cube), expected);
    EXPECT_EQ(flat.type(), "chart.2d");
    EXPECT_EQ(cube.type(), "chart.3d");
    EXPECT_EQ(flat.name(), "chart.1");
    EXPECT_EQ(cube.name(), "chart.1");
    EXPECT_EQ(byName(flat, "draw3d"), "false");
    EXPECT_EQ(byName(cube, "cube"), "true");
    EXPECT_EQ(flat.axisY.type(), "chart.axis_pair");
}

TEST_F(KelChartTest, CopyOf2DHasEmptyPairsAssignmentMirrorsThem)
{
    KelChart2D chart(group);
    chart.axisX.createFirst("bottom", KelChartAxisContinuous::typeString);
    chart.draw3d.set(true);
    KelChart2D copy(chart);
    EXPECT_TRUE(copy.draw3d.get());
    EXPECT_EQ(copy.axisX.first(), nullptr);
    EXPECT_EQ(copy.axisX.second(), nullptr);
    EXPECT_EQ(copy.axisX.name(), "axis.x");

    KelChart2D assigned(group);
    assigned = chart;
    ASSERT_NE(assigned.axisX.first(), nullptr);
    EXPECT_EQ(assigned.axisX.first()->name(), "axis.x.bottom");
    EXPECT_EQ(assigned.axisX.first()->parent(), &assigned.axisX);
}

TEST_F(KelChartTest, ScopedTracesOf2DCarryTheirLineTexts)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    {
        KelChart2D chart(group);
        KelChart2D copy(chart);
    }
    std::vector<std::string> wheres;
    for (const std::string& text : capture.texts(orvdebug::Stream::Log))
        if (text.rfind("enter ", 0) == 0 && text.find("KelChart2D::") != std::string::npos)
            wheres.push_back(text.substr(text.find(" @line")));
    EXPECT_EQ(wheres, (std::vector<std::string>{" @line 25", " @line 47", " @line 63", " @line 63"}));
}

TEST_F(KelChartTest, CorrelationChart)
{
    KelChartCorrelation chart(group);
    EXPECT_EQ(chart.name(), "chart.correlation");
    EXPECT_EQ(chart.type(), "chart.correlation");
    EXPECT_EQ(childNames(chart), baseChildren);
    EXPECT_EQ(chart.legendLabel.get(), (std::vector<double>{-1.0, -0.5, 0.0, 0.5, 1.0}));
    EXPECT_FALSE(chart.displayValues.get());
    chart.displayValues.set(true);
    KelChartCorrelation copy(chart);
    EXPECT_EQ(copy.name(), "chart.correlation");
    EXPECT_TRUE(copy.displayValues.get());
}

TEST_F(KelChartTest, PieAndMultiAxisChartsHoldLabels)
{
    KelChartPie pie(group);
    KelChartMultiAxis multi(group);
    EXPECT_EQ(pie.name(), "chart.pie");
    EXPECT_EQ(multi.name(), "chart.multi.axis");
    EXPECT_EQ(childNames(pie), baseChildren + QStringList{"labels"});
    EXPECT_EQ(childNames(multi), baseChildren + QStringList{"labels"});
    EXPECT_TRUE(pie.showPercentages.get());
    EXPECT_EQ(multi.firstAxis.get(), QString());

    pie.showPercentages.set(false);
    pie.labels.setLabels({"a", "b"});
    KelChartPie copy(pie);
    EXPECT_FALSE(copy.showPercentages.get());
    EXPECT_EQ(copy.labels.labels(), (QStringList{"a", "b"}));
    EXPECT_EQ(childNames(copy), baseChildren + QStringList{"labels"});
}

TEST_F(KelChartTest, EveryKindDiesCleanlyThroughTheBase)
{
    std::vector<std::unique_ptr<KelProperties>> charts;
    charts.emplace_back(new KelChart(group));
    charts.emplace_back(new KelChart2D(group));
    charts.emplace_back(new KelChart3D(group));
    charts.emplace_back(new KelChartCorrelation(group));
    charts.emplace_back(new KelChartMultiAxis(group));
    charts.emplace_back(new KelChartPie(group));
    auto* twoD = static_cast<KelChart2D*>(charts[1].get());
    twoD->axisY.createFirst("left", KelChartAxisContinuous::typeString);
    twoD->variables.child("T1", "chart.variable");
    charts.clear();
    SUCCEED();
}
