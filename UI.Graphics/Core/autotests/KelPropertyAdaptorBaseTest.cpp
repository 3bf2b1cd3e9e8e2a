#include "KelPropertyAdaptorBase.h"
#include "KelViewport.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

// Opens the bookkeeping that typed accessors use.
class Probe : public KelPropertyAdaptorBase {
public:
    using KelPropertyAdaptorBase::KelPropertyAdaptorBase;
    using KelPropertyAdaptorBase::modified;
    using KelPropertyAdaptorBase::reset;
};

class AdaptorBase : public testing::Test {
protected:
    KelModifiedGroup group;
    std::unique_ptr<KelProperties> node = std::make_unique<KelProperties>(group);
    Probe probe{*node, "width"};
};

} // namespace

TEST_F(AdaptorBase, SeesEveryChangeOfTheStoreAfterItsLastReadAndNothingWithoutOwner)
{
    EXPECT_TRUE(probe.modified());
    probe.reset();
    EXPECT_FALSE(probe.modified());
    node->string() = KelPropertiesString();
    EXPECT_TRUE(probe.modified());
    probe.reset();
    node->setValue("width", "2");
    EXPECT_TRUE(probe.modified());
    probe.reset();
    group.setModified(false);
    probe.setUnit("mm");
    EXPECT_EQ(node->string().getUnit("width", QString()), "mm");
    EXPECT_TRUE(probe.modified() && group.modified());

    node.reset();
    EXPECT_TRUE(probe.getUnit().isEmpty() && probe.getString().isEmpty());
    EXPECT_FALSE(probe.modified());
    probe.setUnit("cm"); // ignored
}

// Typed stored values, as the framework's nodes declare them: defaults are
// written once, text writes are checked against the type, and a copy's values
// attach to the copy's own store.
TEST(StoredValue, WritesDefaultsRefusesBadTextAndFollowsCopies)
{
    KelModifiedGroup group;
    KelViewport viewport(group);
    EXPECT_EQ(viewport.string().names(), (QStringList{"alignment", "x", "y", "width", "height"}));
    EXPECT_EQ(viewport.alignment.get(), int(Qt::AlignLeft | Qt::AlignTop));
    EXPECT_EQ(viewport.width.get(), 1.0);
    EXPECT_FALSE(viewport.setValue("alignment", "left").isEmpty());
    EXPECT_EQ(viewport.setValue("width", "0.25"), QString());

    const KelViewport copy(viewport);
    KelViewport target(group);
    target = viewport;
    viewport.width.set(0.5);
    EXPECT_EQ(copy.width.get(), 0.25);
    EXPECT_EQ(target.width.get(), 0.25);
}
