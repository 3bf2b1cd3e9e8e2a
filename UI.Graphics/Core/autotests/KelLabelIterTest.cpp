#include "KelLabelIter.h"

#include <gtest/gtest.h>

namespace {

QStringList walk(KelLabelIterInterface& iter)
{
    QStringList seen;
    iter.reset();
    while (iter.next())
        seen << iter.currentLabel();
    return seen;
}

class LabelIter : public testing::Test {
protected:
    KelModifiedGroup group;
    KelLabelIter iter{group};
};

} // namespace

TEST_F(LabelIter, IsANamedNodeWithNoLabels)
{
    EXPECT_EQ(iter.type(), "labels");
    EXPECT_EQ(iter.name(), "labels.1");
    EXPECT_TRUE(iter.labels().isEmpty());
    EXPECT_FALSE(iter.next());
    EXPECT_TRUE(iter.currentLabel().isEmpty());
}

TEST_F(LabelIter, WalksTheLabelsInOrderAndStopsAtTheEnd)
{
    iter.setLabels({"a", "", "c, d"});
    EXPECT_TRUE(iter.currentLabel().isEmpty());
    EXPECT_EQ(walk(iter), (QStringList{"a", "", "c, d"}));
    EXPECT_FALSE(iter.next());
    EXPECT_TRUE(iter.currentLabel().isEmpty());
    EXPECT_EQ(walk(iter), (QStringList{"a", "", "c, d"}));
}

TEST_F(LabelIter, LabelsLiveInTheStore)
{
    iter.setLabels({"x", "y"});
    EXPECT_EQ(iter.string().valueType("labels"), "stringlist");
    EXPECT_EQ(iter.setValue("labels", "p, \"q\", r"), QString());
    EXPECT_EQ(walk(iter), (QStringList{"p", "q", "r"}));
    EXPECT_FALSE(iter.setValue("labels", "\"open").isEmpty());
    EXPECT_EQ(iter.labels(), (QStringList{"p", "q", "r"}));
}

TEST_F(LabelIter, CopiesCarryTheLabelsButNotThePosition)
{
    iter.setLabels({"a", "b"});
    iter.next();
    KelLabelIter copy(iter);
    EXPECT_EQ(copy.name(), "labels.1");
    EXPECT_TRUE(copy.currentLabel().isEmpty());
    ASSERT_TRUE(copy.next());
    EXPECT_EQ(copy.currentLabel(), "a");

    KelLabelIter other(group);
    other.setLabels({"z"});
    other.next();
    other = iter;
    EXPECT_TRUE(other.currentLabel().isEmpty());
    EXPECT_EQ(walk(other), (QStringList{"a", "b"}));
    iter.setLabels({"changed"});
    EXPECT_EQ(walk(other), (QStringList{"a", "b"}));
}
