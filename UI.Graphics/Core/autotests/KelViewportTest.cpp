#include "KelViewport.h"

#include <gtest/gtest.h>

TEST(Viewport, StartsAsTheWholeViewAlignedTopLeft)
{
    KelModifiedGroup group;
    const KelViewport viewport(group);
    EXPECT_EQ(viewport.type(), "viewport");
    EXPECT_EQ(viewport.name(), "viewport.1");
    EXPECT_EQ(viewport.alignment.get(), int(Qt::AlignLeft | Qt::AlignTop));
    EXPECT_EQ(viewport.x.get(), 0.0);
    EXPECT_EQ(viewport.width.get(), 1.0);
    EXPECT_EQ(viewport.string().names(), (QStringList{"alignment", "x", "y", "width", "height"}));
}

TEST(Viewport, CopiesAndAssignmentCarryTheValues)
{
    KelModifiedGroup group;
    KelViewport viewport(group);
    viewport.alignment.set(Qt::AlignCenter);
    EXPECT_EQ(viewport.setValue("width", "0.25"), QString());
    EXPECT_FALSE(viewport.setValue("alignment", "left").isEmpty());

    const KelViewport copy(viewport);
    EXPECT_EQ(copy.alignment.get(), int(Qt::AlignCenter));
    EXPECT_EQ(copy.width.get(), 0.25);

    KelViewport target(group);
    target = viewport;
    EXPECT_EQ(target.width.get(), 0.25);
    viewport.width.set(0.5);
    EXPECT_EQ(target.width.get(), 0.25);
}
