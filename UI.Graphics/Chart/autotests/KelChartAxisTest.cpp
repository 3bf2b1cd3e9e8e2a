#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"

#include <gtest/gtest.h>

namespace {

QString byName(const KelProperties& node, const QString& name)
{
    QString value;
    node.getValue(name, value, QString());
    return value;
}

class KelChartAxisTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
};

template <class Axis>
void expectCommonDefaults(const Axis& axis)
{
    EXPECT_EQ(axis.name(), "axis.1");
    EXPECT_FALSE(axis.enabled.get());
    EXPECT_FALSE(axis.inverted.get());
    EXPECT_EQ(axis.title.get(), QString());
    EXPECT_EQ(axis.tickColor.get(), QColor(Qt::black));
    EXPECT_EQ(axis.gridColor.get(), QColor(Qt::lightGray));
    EXPECT_EQ(axis.labelColor.get(), QColor(Qt::black));
    EXPECT_EQ(axis.labelShadowColor.get(), QColor(Qt::transparent));
    EXPECT_EQ(byName(axis, "enabled"), "false");
}

} // namespace

TEST_F(KelChartAxisTest, DefaultsOfAllThreeClasses)
{
    KelChartAxis plain(group);
    KelChartAxisContinuous continuous(group);
    KelChartAxisDiscrete discrete(group);
    expectCommonDefaults(plain);
    expectCommonDefaults(continuous);
    expectCommonDefaults(discrete);
    EXPECT_EQ(plain.type(), "chart.axis");
    EXPECT_EQ(plain.size(), 0u);

    EXPECT_EQ(continuous.type(), "chart.axis.continuous");
    EXPECT_TRUE(continuous.autoScale.get());
    EXPECT_EQ(continuous.min.get(), 0.0);
    EXPECT_EQ(continuous.max.get(), 0.0);
    EXPECT_EQ(continuous.unitLabel.get(), QString());
    EXPECT_FALSE(continuous.symmetric.get() || continuous.logarithmic.get() || continuous.usability.get());

    EXPECT_EQ(discrete.type(), "chart.axis.discrete");
    EXPECT_TRUE(discrete.autoScale.get());
    EXPECT_EQ(discrete.min.get(), 0);
    EXPECT_EQ(discrete.max.get(), 0);
    EXPECT_EQ(discrete.labelOffset.get(), std::vector<double>{0.5});
    EXPECT_FALSE(discrete.stacked.get());
    ASSERT_EQ(discrete.size(), 1u);
    EXPECT_EQ(discrete[0u], &discrete.labels);
    EXPECT_EQ(discrete.labels.name(), "labels");
}

TEST_F(KelChartAxisTest, CopyIsRenamedKeepsValuesAndIsIndependent)
{
    KelChartAxisContinuous source(group);
    source.rename("axis.x.left");
    source.setValue("max", "12.5");
    source.setValue("title", "Temperature");
    source.enabled.set(true);
    KelChartAxisContinuous copy(source);
    EXPECT_EQ(copy.name(), "axis.1");
    EXPECT_EQ(copy.type(), "chart.axis.continuous");
    EXPECT_EQ(copy.max.get(), 12.5);
    EXPECT_EQ(copy.title.get(), "Temperature");
    EXPECT_TRUE(copy.enabled.get());
    copy.max.set(3.0);
    EXPECT_EQ(source.max.get(), 12.5);
}

TEST_F(KelChartAxisTest, DiscreteCopyAndAssignmentCarryTheLabels)
{
    KelChartAxisDiscrete source(group);
    source.labels.setLabels({"red", "green", "blue"});
    source.min.set(1);
    KelChartAxisDiscrete copy(source);
    EXPECT_EQ(copy.labels.labels(), (QStringList{"red", "green", "blue"}));
    ASSERT_EQ(copy.size(), 1u);
    EXPECT_EQ(copy[0u], &copy.labels);
    EXPECT_EQ(copy.labels.name(), "labels");

    KelChartAxisDiscrete assigned(group);
    assigned.rename("mine");
    assigned = source;
    EXPECT_EQ(assigned.name(), "mine");
    EXPECT_EQ(assigned.min.get(), 1);
    EXPECT_EQ(assigned.labels.labels().size(), 3);
    EXPECT_EQ(assigned.size(), 1u);
}

TEST_F(KelChartAxisTest, DeletingThroughTheBaseRunsTheWholeDestructor)
{
    KelProperties* axis = new KelChartAxisDiscrete(group);
    delete axis;
    SUCCEED();
}
