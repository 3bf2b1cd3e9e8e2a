#include "KelChart2D.h"
#include "KelChart3D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartCorrelation.h"
#include "KelChartMultiAxis.h"
#include "KelChartPie.h"
#include "OrvDebug.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

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
class KelChartWithPairsTest : public KelChartTest {};
using ChartsWithPairs = ::testing::Types<KelChart2D, KelChart3D>;
TYPED_TEST_SUITE(KelChartWithPairsTest, ChartsWithPairs);

} // namespace

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
    EXPECT_EQ(copy.axisX.parent(), &copy);
    EXPECT_EQ(childNames(copy), pairChildren);

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

// The kinds without axis pairs copy and assign their own properties and keep their label
// iterators as their own children.
TEST_F(KelChartTest, KindsWithoutPairsCopyAndAssignTheirOwnValues)
{
    KelChartCorrelation correlation(group);
    correlation.legendLabel.set({0.0, 1.0});
    correlation.displayValues.set(true);
    KelChartPie pie(group);
    pie.showPercentages.set(false);
    pie.labels.setLabels({"a", "b"});
    KelChartMultiAxis multi(group);
    multi.firstAxis.set("axis.y.left");
    multi.labels.setLabels({"p", "q"});

    const KelChartCorrelation correlationCopy(correlation);
    KelChartCorrelation correlationAssigned(group);
    correlationAssigned = correlation;
    for (const KelChartCorrelation* c : {&correlationCopy, static_cast<const KelChartCorrelation*>(&correlationAssigned)}) {
        EXPECT_EQ(c->legendLabel.get(), (std::vector<double>{0.0, 1.0}));
        EXPECT_TRUE(c->displayValues.get());
        EXPECT_EQ(c->name(), "chart.correlation");
    }

    const KelChartPie pieCopy(pie);
    KelChartPie pieAssigned(group);
    pieAssigned = pie;
    for (const KelChartPie* p : {&pieCopy, static_cast<const KelChartPie*>(&pieAssigned)}) {
        EXPECT_FALSE(p->showPercentages.get());
        EXPECT_EQ(p->labels.labels(), (QStringList{"a", "b"}));
        EXPECT_EQ(p->labels.parent(), p);
        EXPECT_EQ(childNames(*p), baseChildren + QStringList{"labels"});
    }

    const KelChartMultiAxis multiCopy(multi);
    KelChartMultiAxis multiAssigned(group);
    multiAssigned = multi;
    for (const KelChartMultiAxis* m : {&multiCopy, static_cast<const KelChartMultiAxis*>(&multiAssigned)}) {
        EXPECT_EQ(m->firstAxis.get(), "axis.y.left");
        EXPECT_EQ(m->labels.labels(), (QStringList{"p", "q"}));
        EXPECT_EQ(m->labels.parent(), m);
        EXPECT_EQ(childNames(*m), baseChildren + QStringList{"labels"});
    }
}
