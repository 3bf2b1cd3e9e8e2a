#include "KelChart.h"
#include "KelChartLegend.h"

#include <gtest/gtest.h>

namespace {

QString byName(const KelProperties& node, const QString& name)
{
    QString value;
    node.getValue(name, value, QString());
    return value;
}

} // namespace

TEST(KelChartLegend, DefaultsChildAndViewport)
{
    KelModifiedGroup group;
    KelChartLegend legend(group);
    EXPECT_EQ(legend.type(), "chart.legend");
    EXPECT_EQ(legend.name(), "legend.1");
    ASSERT_EQ(legend.size(), 1u);
    EXPECT_EQ(legend[0u]->name(), "viewport");
    EXPECT_TRUE(legend.enabled.get());
    EXPECT_EQ(legend.style.get(), KelChart::legendVertical);
    EXPECT_TRUE(legend.background.get().isEmpty());
    EXPECT_EQ(legend.border.get(), QColor(Qt::transparent));
    EXPECT_EQ(legend.textColor.get(), QColor(Qt::black));
    EXPECT_EQ(legend.textShadowColor.get(), QColor(Qt::transparent));
    EXPECT_EQ(legend.chart.get(), QString());
    EXPECT_EQ(byName(legend, "expandVariable"), "chart.legend.expandTheFirstEntryByDefault");
    EXPECT_EQ(legend.viewport.alignment.get(), 34);
}

TEST(KelChartLegend, CopyKeepsAChangedViewportAndIsRenamed)
{
    KelModifiedGroup group;
    KelChartLegend legend(group);
    legend.rename("legend.main");
    legend.viewport.alignment.set(129);
    legend.background.set({QColor(Qt::white), QColor(10, 20, 30, 40)});
    KelChartLegend copy(legend);
    EXPECT_EQ(copy.name(), "legend.1");
    EXPECT_EQ(copy.viewport.alignment.get(), 129);
    EXPECT_EQ(copy.background.get().size(), 2);
    EXPECT_EQ(copy.size(), 1u);

    KelChartLegend assigned(group);
    assigned = legend;
    EXPECT_EQ(assigned.viewport.alignment.get(), 129);
    EXPECT_EQ(assigned.name(), "legend.1");
}
