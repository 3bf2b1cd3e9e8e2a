#include "KelPropertyAdaptor.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

struct Node : KelProperties {
    explicit Node(KelModifiedGroup& group) : KelProperties(group) {}
};

class KelPropertyAdaptorTest : public ::testing::Test {
protected:
    KelModifiedGroup group;
    Node node{group};
};

} // namespace

TEST_F(KelPropertyAdaptorTest, WritesDefaultAndUnitOnlyWhenTheStoreLacksThem)
{
    node.string().setValue("width", 7.5);
    node.string().setUnit("width", "mm");
    KelPropertyAdaptor<double> width(node, "width", 1.0, "cm");
    KelPropertyAdaptor<double> height(node, "height", 2.0, "cm");
    EXPECT_EQ(width.get(), 7.5);
    EXPECT_EQ(width.getUnit(), "mm");
    EXPECT_EQ(height.get(), 2.0);
    EXPECT_EQ(height.getUnit(), "cm");
    EXPECT_TRUE(node.string().defined("height"));
}

TEST_F(KelPropertyAdaptorTest, WritesByNameAreSeenAndALockedGroupRereadsTheStore)
{
    KelPropertyAdaptor<int> count(node, "count", 3, QString());
    node.setValue("count", "42");
    EXPECT_EQ(count.get(), 42);

    KelPropertyAdaptor<bool> flag(node, "flag", false, QString());
    group.setLocked(true);
    node.string().setValue("flag", true);
    EXPECT_TRUE(flag.get());
    node.string().setValue("flag", "false");
    EXPECT_FALSE(flag.get());
}

TEST_F(KelPropertyAdaptorTest, WithoutOwnerAnswersFromCacheAndIgnoresSet)
{
    auto owner = std::make_unique<Node>(group);
    KelPropertyAdaptor<std::vector<double>> values(*owner, "values", {1.0, 2.0}, QString());
    owner.reset();
    values.set({9.0});
    EXPECT_EQ(values.get(), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(values.getUnit(), QString());
}
