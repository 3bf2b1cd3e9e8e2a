#include "KelChart.h"

#include <gtest/gtest.h>

TEST(KelChartVocabulary, ListsKeepTheirPublishedSizesOrderAndMismatches)
{
    EXPECT_EQ(KelChart::fills.size(), 12);
    EXPECT_EQ(KelChart::lines.size(), 10);
    EXPECT_EQ(KelChart::styles.size(), 7);
    EXPECT_EQ(KelChart::symbols.size(), 14);
    EXPECT_EQ(KelChart::legends, (QStringList{"vertical", "horizontal"}));
    EXPECT_EQ(KelChart::fills.back(), KelChart::fillGradient);
    EXPECT_EQ(KelChart::lines.back(), KelChart::lineDashDotDot);
    // Words and lists disagree in these places.
    EXPECT_EQ(KelChart::symbols.at(6), "dTriangle");
    EXPECT_EQ(KelChart::symbolDTriangle, "dtriangle");
    EXPECT_EQ(KelChart::symbols.back(), "normal");
    EXPECT_FALSE(KelChart::lines.contains(KelChart::lineGradient));
    EXPECT_FALSE(KelChart::lines.contains(KelChart::lineDashDashDot));
    EXPECT_EQ(KelChart::styles.at(4), "stick");
    EXPECT_EQ(KelChart::styles.at(1), "dot");
}
