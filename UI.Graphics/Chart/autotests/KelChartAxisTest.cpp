#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

QString byName(const KelProperties& node, const QString& name)
{
    QString value;
    node.getValue(name, value, QString());
    return value;
}

} // namespace

TEST(KelChartAxis, TypesNamesAndDefaultsOfAllThreeClasses)
{
    KelModifiedGroup group;
    const KelChartAxis plain(group);
    const KelChartAxisContinuous continuous(group);
    const KelChartAxisDiscrete discrete(group);
    for (const KelChartAxis* axis : std::initializer_list<const KelChartAxis*>{&plain, &continuous, &discrete}) {
        EXPECT_EQ(axis->name(), "axis.1");
        EXPECT_EQ(byName(*axis, "enabled"), "false");
        EXPECT_EQ(axis->gridColor.get(), QColor(Qt::lightGray));
    }
    EXPECT_EQ(plain.type(), "chart.axis");
    EXPECT_EQ(continuous.type(), "chart.axis.continuous");
    EXPECT_EQ(discrete.type(), "chart.axis.discrete");
    EXPECT_EQ(byName(continuous, "autoScale"), "true");
    EXPECT_EQ(byName(discrete, "labelOffset"), "0.5");
    EXPECT_EQ(plain.size(), 0u);
    ASSERT_EQ(discrete.size(), 1u);
    EXPECT_EQ(discrete[0u], &discrete.labels);
    EXPECT_EQ(discrete.labels.name(), "labels");
}

TEST(KelChartAxis, CopiesAreRenamedAssignmentKeepsTheNameBothCarryValuesAndLabels)
{
    KelModifiedGroup group;
    KelChartAxisDiscrete source(group);
    source.rename("axis.x.left");
    source.setValue("title", "Temperature");
    source.labels.setLabels({"red", "green", "blue"});
    std::unique_ptr<KelProperties> owned(new KelChartAxisDiscrete(source));
    auto& copy = static_cast<KelChartAxisDiscrete&>(*owned);
    KelChartAxisDiscrete assigned(group);
    assigned.rename("mine");
    assigned = source;
    EXPECT_EQ(copy.name(), "axis.1");
    EXPECT_EQ(assigned.name(), "mine");
    for (const KelChartAxisDiscrete* axis : {&copy, &assigned}) {
        EXPECT_EQ(axis->title.get(), "Temperature");
        EXPECT_EQ(axis->labels.labels(), (QStringList{"red", "green", "blue"}));
        ASSERT_EQ(axis->size(), 1u);
        EXPECT_EQ((*axis)[0u], &axis->labels);
    }
    copy.title.set("changed");
    EXPECT_EQ(source.title.get(), "Temperature");
}

TEST(KelChartAxis, ContinuousCopyAndAssignmentCarryTheRangeSettingsWithTheirUnits)
{
    KelModifiedGroup group;
    KelChartAxisContinuous source(group);
    source.autoScale.set(false);
    source.min.set(-5.0);
    source.max.set(40.0);
    source.max.setUnit("degC");
    source.logarithmic.set(true);
    source.unitLabel.set("T");
    const KelChartAxisContinuous copy(source);
    KelChartAxisContinuous assigned(group);
    assigned = source;
    for (const KelChartAxisContinuous* axis : {&copy, static_cast<const KelChartAxisContinuous*>(&assigned)}) {
        EXPECT_EQ(axis->type(), KelChartAxisContinuous::typeString);
        EXPECT_FALSE(axis->autoScale.get());
        EXPECT_EQ(axis->min.get(), -5.0);
        EXPECT_EQ(axis->max.get(), 40.0);
        EXPECT_EQ(axis->max.getUnit(), "degC");
        EXPECT_TRUE(axis->logarithmic.get());
        EXPECT_EQ(axis->unitLabel.get(), "T");
    }
    source.max.set(1.0);
    EXPECT_EQ(copy.max.get(), 40.0);
}
