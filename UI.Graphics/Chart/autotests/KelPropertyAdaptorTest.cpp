#include "KelPropertyAdaptor.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

struct Node : KelProperties {
    explicit Node(KelModifiedGroup& group) : KelProperties(group) {}
};

} // namespace

// The default and unit are written only where the store lacks them; writes by name are seen, and a locked
// group makes the adaptor read the store again.
TEST(KelPropertyAdaptor, StoreWinsOverDefaultsAndWritesByNameAreSeen)
{
    KelModifiedGroup group;
    Node node(group);
    node.string().setValue("width", 7.5);
    node.string().setUnit("width", "mm");
    KelPropertyAdaptor<double> width(node, "width", 1.0, "cm");
    KelPropertyAdaptor<double> height(node, "height", 2.0, "cm");
    EXPECT_TRUE(width.get() == 7.5 && width.getUnit() == "mm");
    EXPECT_TRUE(height.get() == 2.0 && height.getUnit() == "cm" && node.string().defined("height"));
    node.setValue("height", "42");
    EXPECT_EQ(height.get(), 42);

    KelPropertyAdaptor<bool> flag(node, "flag", false, QString());
    group.setLocked(true);
    for (const bool value : {true, false}) {
        node.string().setValue("flag", value ? "true" : "false");
        EXPECT_EQ(flag.get(), value);
    }
}

TEST(KelPropertyAdaptor, WithoutOwnerAnswersFromCacheAndIgnoresSet)
{
    KelModifiedGroup group;
    auto owner = std::make_unique<Node>(group);
    KelPropertyAdaptor<std::vector<double>> values(*owner, "values", {1.0, 2.0}, QString());
    owner.reset();
    values.set({9.0});
    EXPECT_EQ(values.get(), (std::vector<double>{1.0, 2.0}));
    EXPECT_EQ(values.getUnit(), QString());
}
