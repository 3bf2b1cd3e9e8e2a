#include "Vector.h"

#include <gtest/gtest.h>

using namespace Orv::Math;

TEST(Vector3, ComponentsByIndexAndByName)
{
    Vector3 v(1.0f, 2.0f, 3.0f);
    v[Vector3::Comp::Y] = 5.0f;
    EXPECT_EQ(v[1], 5.0f);
    EXPECT_EQ(v.y(), 5.0f);
    EXPECT_EQ(-v, Vector3(-1.0f, -5.0f, -3.0f));
}

TEST(Vector3, UnitAxesAndConstants)
{
    EXPECT_EQ(Vector3::X[Vector3::Comp::X], 1.0f);
    EXPECT_EQ(Vector3::X.y() + Vector3::X.z(), 0.0f);
    EXPECT_EQ(Vector3::Z, Vector3(0.0f, 0.0f, 1.0f));
    EXPECT_NE(Vector0, Vector1);
    EXPECT_EQ(Vector3(), Vector0);
}
