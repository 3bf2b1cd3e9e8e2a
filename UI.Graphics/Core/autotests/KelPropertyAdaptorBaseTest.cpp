#include "KelPropertyAdaptorBase.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

// Opens the bookkeeping that typed accessors use.
class Probe : public KelPropertyAdaptorBase {
public:
    using KelPropertyAdaptorBase::KelPropertyAdaptorBase;
    using KelPropertyAdaptorBase::cachable;
    using KelPropertyAdaptorBase::modified;
    using KelPropertyAdaptorBase::owner;
    using KelPropertyAdaptorBase::reset;
};

class AdaptorBase : public testing::Test {
protected:
    KelModifiedGroup group;
    std::unique_ptr<KelProperties> node = std::make_unique<KelProperties>(group);
    Probe probe{*node, "width"};
};

} // namespace

TEST_F(AdaptorBase, IsModifiedUntilFirstResetAndAfterEveryWrite)
{
    EXPECT_TRUE(probe.cachable());
    EXPECT_TRUE(probe.modified());
    probe.reset();
    EXPECT_FALSE(probe.modified());
    node->setValue("width", "2");
    EXPECT_TRUE(probe.modified());
    probe.reset();
    node->string().setUnit("other", "mm");
    EXPECT_TRUE(probe.modified());
    probe.reset();
    node->string() = KelPropertiesString();
    EXPECT_TRUE(probe.modified());
}

TEST_F(AdaptorBase, ReadsAndWritesTheUnitAndTextOfItsName)
{
    node->string().setValue("width", 1.5);
    EXPECT_EQ(probe.getString(), "1.5");
    EXPECT_TRUE(probe.getUnit().isEmpty());
    group.setModified(false);
    probe.setUnit("mm");
    EXPECT_EQ(node->string().getUnit("width", QString()), "mm");
    EXPECT_EQ(probe.getUnit(), "mm");
    EXPECT_TRUE(group.modified());
    EXPECT_EQ(probe.name(), "width");
}

TEST_F(AdaptorBase, WithoutOwnerReadsEmptyAndIgnoresWrites)
{
    node->string().setValue("width", 1.5);
    node->string().setUnit("width", "mm");
    EXPECT_EQ(probe.owner().get(), node.get());
    node.reset();
    EXPECT_EQ(probe.owner().get(), nullptr);
    EXPECT_TRUE(probe.getUnit().isEmpty());
    EXPECT_TRUE(probe.getString().isEmpty());
    EXPECT_FALSE(probe.modified());
    probe.setUnit("cm");
    probe.reset();
    EXPECT_FALSE(probe.modified());
}
