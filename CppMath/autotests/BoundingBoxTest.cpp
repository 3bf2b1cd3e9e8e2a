#include "BoundingBox.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Orv::Math;

TEST(BoundingBox, GrowsToHoldPointsAndOtherBoxes)
{
    BoundingBox box;
    EXPECT_FALSE(box.defined());
    box.insert(1, 2, 3);
    box.insert(Vector3(-1, 5, 3));
    EXPECT_EQ(box.min(), Vector3(-1, 2, 3));
    EXPECT_EQ(box.max(), Vector3(1, 5, 3));

    BoundingBox other;
    box += other; // an undefined box adds nothing, not even its zero corners
    EXPECT_EQ(box.max(), Vector3(1, 5, 3));
    other.insert(2, 0, 4);
    box += other;
    EXPECT_EQ(box.max(), Vector3(2, 5, 4));
    other.reset();
    other += box;
    EXPECT_EQ(other, box);

    box.defined() = false; // the next point starts afresh
    box.insert(1, 1, 1);
    EXPECT_EQ(box.min(), Vector1);
}

TEST(BoundingBox, NanComponentsAreIgnoredOnTheirAxis)
{
    const float nan = std::nanf("");
    BoundingBox box;
    box.insert(nan, nan, nan);
    EXPECT_FALSE(box.defined());

    box.insert(nan, 1, 2);
    box.insert(3, nan, -2);
    box.insert(4, 0, nan);
    EXPECT_EQ(box.min(), Vector3(3, 0, -2));
    EXPECT_EQ(box.max(), Vector3(4, 1, 2));
}
