#include "KelLabelIter.h"

#include <gtest/gtest.h>

namespace {

QStringList walk(KelLabelIterInterface& iter)
{
    QStringList seen;
    iter.reset();
    while (iter.next())
        seen << iter.currentLabel();
    EXPECT_TRUE(iter.currentLabel().isEmpty()) << "past the end";
    return seen;
}

class LabelIter : public testing::Test {
protected:
    KelModifiedGroup group;
    KelLabelIter iter{group};
};

} // namespace

// The labels are a typed store entry, so a text write by name is checked and
// seen at the next read.
TEST_F(LabelIter, WalksTheLabelsOfTheStoreInOrderAgainAfterReset)
{
    EXPECT_EQ(walk(iter), QStringList());
    iter.setLabels({"a", "", "c, d"});
    EXPECT_TRUE(iter.currentLabel().isEmpty());
    EXPECT_EQ(walk(iter), (QStringList{"a", "", "c, d"}));
    EXPECT_FALSE(iter.next());
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
    EXPECT_TRUE(copy.currentLabel().isEmpty());
    EXPECT_EQ(walk(copy), (QStringList{"a", "b"}));

    KelLabelIter other(group);
    other.setLabels({"z"});
    other.next();
    other = iter;
    EXPECT_TRUE(other.currentLabel().isEmpty());
    iter.setLabels({"changed"});
    EXPECT_EQ(walk(other), (QStringList{"a", "b"}));
}
