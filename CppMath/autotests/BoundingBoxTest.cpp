#include "BoundingBox.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace Orv::Math;

TEST(BoundingBox, GrowsToHoldInsertedPointsUntilReset)
{
    BoundingBox box;
    EXPECT_FALSE(box.defined());
    box.insert(1, 2, 3);
    EXPECT_TRUE(box.defined());
    EXPECT_EQ(box.max(), Vector3(1, 2, 3));
    box.insert(Vector3(-1, 5, 3));
    EXPECT_EQ(box.min(), Vector3(-1, 2, 3));
    EXPECT_EQ(box.max(), Vector3(1, 5, 3));

    box.reset();
    EXPECT_EQ(box, BoundingBox());
    box.insert(7, 7, 7);
    box.defined() = false; // the next point starts afresh
    box.insert(1, 1, 1);
    EXPECT_EQ(box.min(), Vector1);
}

TEST(BoundingBox, UnionIgnoresAnUndefinedBox)
{
    BoundingBox a;
    a.insert(0, 0, 0);
    BoundingBox b;
    a += b;
    EXPECT_EQ(a.max(), Vector0);

    b.insert(2, -1, 4);
    a += b;
    EXPECT_EQ(a.min(), Vector3(0, -1, 0));
    EXPECT_EQ(a.max(), Vector3(2, 0, 4));

    BoundingBox empty;
    empty += a;
    EXPECT_EQ(empty, a);
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
