#include "KelChart.h"

#include <gtest/gtest.h>

TEST(KelChartVocabulary, ListsKeepTheirPublishedSizesAndOrder)
{
    EXPECT_EQ(KelChart::fills.size(), 12);
    EXPECT_EQ(KelChart::lines.size(), 10);
    EXPECT_EQ(KelChart::styles.size(), 7);
    EXPECT_EQ(KelChart::symbols.size(), 14);
    EXPECT_EQ(KelChart::legends, (QStringList{"vertical", "horizontal"}));
    EXPECT_EQ(KelChart::fills.front(), KelChart::fillNone);
    EXPECT_EQ(KelChart::fills.back(), KelChart::fillGradient);
    EXPECT_EQ(KelChart::lines.back(), KelChart::lineDashDotDot);
}

TEST(KelChartVocabulary, PublishedMismatchesBetweenListsAndWords)
{
    EXPECT_EQ(KelChart::symbols.at(6), "dTriangle");
    EXPECT_EQ(KelChart::symbols.back(), "normal");
    EXPECT_EQ(KelChart::symbolDTriangle, "dtriangle");
    EXPECT_NE(KelChart::symbolDTriangle, KelChart::symbols.at(6));
    EXPECT_FALSE(KelChart::lines.contains(KelChart::lineGradient));
    EXPECT_FALSE(KelChart::lines.contains(KelChart::lineDashDashDot));
    EXPECT_EQ(KelChart::styles.at(4), "stick");
    EXPECT_EQ(KelChart::styles.at(1), "dot");
}

TEST(KelChartVocabulary, EverySingleWordOutsideTheMismatchesIsListed)
{
    for (const QString& word : {KelChart::fillCrossDiagonal, KelChart::fillBDiagonal, KelChart::fillSparse})
        EXPECT_TRUE(KelChart::fills.contains(word)) << word.toStdString();
    for (const QString& word : {KelChart::styleNone, KelChart::styleLine, KelChart::styleSpline,
                                KelChart::styleBar, KelChart::styleStep})
        EXPECT_TRUE(KelChart::styles.contains(word)) << word.toStdString();
    for (const QString& word : {KelChart::symbolEllipse, KelChart::symbolXCross, KelChart::symbolStar,
                                KelChart::symbolHexagon, KelChart::symbolTriangle})
        EXPECT_TRUE(KelChart::symbols.contains(word)) << word.toStdString();
}
