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

TEST_F(KelPropertyAdaptorTest, WriteByNameIsSeenAtTheNextGet)
{
    KelPropertyAdaptor<int> count(node, "count", 3, QString());
    EXPECT_EQ(count.get(), 3);
    node.setValue("count", "42");
    EXPECT_EQ(count.get(), 42);
    KelPropertyAdaptor<QColor> colour(node, "colour", QColor(Qt::red), QString());
    node.string().setValue("colour", QColor(Qt::blue));
    EXPECT_EQ(colour.get(), QColor(Qt::blue));
}

TEST_F(KelPropertyAdaptorTest, LockedGroupReadsTheStoreEveryTime)
{
    KelPropertyAdaptor<bool> flag(node, "flag", false, QString());
    group.setLocked(true);
    node.string().setValue("flag", true);
    EXPECT_TRUE(flag.get());
    node.string().setValue("flag", "false");
    EXPECT_FALSE(flag.get());
}

TEST_F(KelPropertyAdaptorTest, AssignmentCopiesValueAndOnlyNonEmptyUnits)
{
    Node other(group);
    KelPropertyAdaptor<double> mine(node, "length", 1.0, "m");
    KelPropertyAdaptor<double> noUnit(other, "length", 5.0, QString());
    mine = noUnit;
    EXPECT_EQ(mine.get(), 5.0);
    EXPECT_EQ(mine.getUnit(), "m");
    other.string().setUnit("length", "km");
    mine = noUnit;
    EXPECT_EQ(mine.getUnit(), "km");
    mine = mine;
    EXPECT_EQ(mine.get(), 5.0);
}

TEST_F(KelPropertyAdaptorTest, CopyConstructionTakesTheOtherValueUnlessDefined)
{
    KelPropertyAdaptor<QStringList> source(node, "names", QStringList{"a", "b"}, "unit");
    Node fresh(group);
    KelPropertyAdaptor<QStringList> copy(fresh, source);
    EXPECT_EQ(copy.get(), (QStringList{"a", "b"}));
    EXPECT_EQ(copy.getUnit(), "unit");

    Node prefilled(group);
    prefilled.string().setValue("names", QStringList{"kept"});
    KelPropertyAdaptor<QStringList> keep(prefilled, source);
    EXPECT_EQ(keep.get(), QStringList{"kept"});
}

TEST_F(KelPropertyAdaptorTest, WithoutOwnerAnswersFromCacheAndIgnoresSet)
{
    auto owner = std::make_unique<Node>(group);
    KelPropertyAdaptor<std::vector<double>> values(*owner, "values", {1.0, 2.0}, QString());
    EXPECT_EQ(values.get(), (std::vector<double>{1.0, 2.0}));
    owner.reset();
    values.set({9.0});
    EXPECT_EQ(values.get(), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(values.getUnit(), QString());
}
