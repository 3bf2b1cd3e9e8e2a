#include "KelChart2D.h"
#include "KelChart3D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartCorrelation.h"
#include "KelChartMultiAxis.h"
#include "KelChartPie.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <tuple>

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
const QStringList pairChildren = baseChildren + QStringList{"axis.x", "axis.y", "axis.z"};

class KelChartTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
};

} // namespace

TEST_F(KelChartTest, EveryKindHasItsTypeNameChildrenAndDefaults)
{
    const KelChart chart(group);
    const KelChart2D flat(group);
    const KelChart3D cube(group);
    const KelChartCorrelation correlation(group);
    const KelChartPie pie(group);
    const KelChartMultiAxis multi(group);
    const std::tuple<const KelChart*, QString, QString, QStringList> kinds[] = {
        {&chart, "chart", "chart.1", baseChildren},
        {&flat, "chart.2d", "chart.1", pairChildren},
        {&cube, "chart.3d", "chart.1", pairChildren},
        {&correlation, "chart.correlation", "chart.correlation", baseChildren},
        {&pie, "chart.pie", "chart.pie", baseChildren + QStringList{"labels"}},
        {&multi, "chart.multi.axis", "chart.multi.axis", baseChildren + QStringList{"labels"}}};
    for (const auto& [kind, type, name, children] : kinds) {
        EXPECT_EQ(kind->type(), type);
        EXPECT_EQ(kind->name(), name);
        EXPECT_EQ(childNames(*kind), children) << type.toStdString();
        EXPECT_TRUE(kind->string().defined("title"));
    }
    EXPECT_EQ(chart.variables.type(), "chart.variable_list");
    EXPECT_EQ(chart.variables.defaultChildName(), "variable.1");
    EXPECT_EQ(chart.style.type(), "chart.variable.style");
    EXPECT_EQ(flat.axisY.type(), "chart.axis_pair");
    EXPECT_EQ(byName(flat, "draw3d"), "false");
    EXPECT_EQ(byName(cube, "cube"), "true");
    EXPECT_EQ(correlation.legendLabel.get(), (std::vector<double>{-1.0, -0.5, 0.0, 0.5, 1.0}));
    EXPECT_TRUE(pie.showPercentages.get());
}

TEST_F(KelChartTest, CopyIsRenamedInTheSameGroupAndKeepsItsValues)
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
    KelChartPie pie(group);
    pie.labels.setLabels({"a", "b"});
    EXPECT_EQ(KelChartPie(pie).labels.labels(), (QStringList{"a", "b"}));
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
