#include "KelChart.h"
#include "KelChartLegend.h"

#include <gtest/gtest.h>

TEST(KelChartLegend, DefaultsViewportAndCopies)
{
    KelModifiedGroup group;
    KelChartLegend legend(group);
    EXPECT_EQ(legend.type(), "chart.legend");
    EXPECT_EQ(legend.name(), "legend.1");
    ASSERT_EQ(legend.size(), 1u);
    EXPECT_EQ(legend[0u]->name(), "viewport");
    EXPECT_TRUE(legend.enabled.get());
    EXPECT_EQ(legend.style.get(), KelChart::legendVertical);
    EXPECT_EQ(legend.border.get(), QColor(Qt::transparent));
    QString expand;
    legend.getValue("expandVariable", expand, QString());
    EXPECT_EQ(expand, "chart.legend.expandTheFirstEntryByDefault");
    EXPECT_EQ(legend.viewport.alignment.get(), 34);

    legend.rename("legend.main");
    legend.viewport.alignment.set(129);
    KelChartLegend copy(legend);
    EXPECT_EQ(copy.name(), "legend.1");
    EXPECT_EQ(copy.viewport.alignment.get(), 129);
    EXPECT_EQ(copy.size(), 1u);
    KelChartLegend assigned(group);
    assigned = legend;
    EXPECT_EQ(assigned.viewport.alignment.get(), 129);
}
