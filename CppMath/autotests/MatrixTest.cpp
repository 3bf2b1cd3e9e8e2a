#include "Matrix.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

using namespace Orv::Math;

namespace {

void expectNear(const Vector3& actual, const Vector3& expected)
{
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], 1e-5f) << "component " << i;
}

using Box = std::array<float, 6>; // x0, x1, y0, y1, z0, z1

class Ortho : public testing::TestWithParam<Box> {};

} // namespace

TEST_P(Ortho, MapsBoxCornersOntoCubeCorners)
{
    const Box b = GetParam();
    const Matrix m = Matrix::ortho(b[0], b[1], b[2], b[3], b[4], b[5]);
    for (int corner = 0; corner < 8; ++corner) {
        const int ix = corner & 1, iy = (corner >> 1) & 1, iz = (corner >> 2) & 1;
        const Vector3 point(b[ix], b[2 + iy], b[4 + iz]);
        expectNear(m.map(point), Vector3(2.0f * ix - 1, 2.0f * iy - 1, 2.0f * iz - 1));
    }
}

INSTANTIATE_TEST_SUITE_P(Matrix, Ortho,
                         testing::Values(Box{-1, 1, -1, 1, -1, 1}, Box{0, 10, 100, 300, -5, -1},
                                         Box{2e6f, 3e6f, 1e-3f, 2e-3f, 0, 1},
                                         Box{10, 0, 0, 1, 1, 0})); // reversed bounds mirror

TEST(Matrix, OrthoMapsADegenerateAxisToZero)
{
    const Matrix m = Matrix::ortho(3, 3, 0, std::numeric_limits<float>::infinity(), 0, 2);
    expectNear(m.map(Vector3(3, 7, 2)), Vector3(0, 0, 1));
    expectNear(m.map(Vector3(-8, 1, 0)), Vector3(0, 0, -1));
}

TEST(Matrix, OrientTurnsAxesIntoTheGivenDirections)
{
    const Matrix m = Matrix::orient(-Vector3::Y, Vector3::Z, -Vector3::X);
    EXPECT_EQ(m.map(Vector3(1, 2, 3)), Vector3(-3, -1, 2));
    EXPECT_EQ(m.map(Vector3::Y)[Vector3::Comp::Z], 1.0f);
}

TEST(Matrix, ProductAppliesTheLeftFactorFirst)
{
    const Matrix projection = Matrix::ortho(0, 4, 0, 2, 0, 1);
    const Matrix orientation = Matrix::orient(Vector3::Y, Vector3::X, Vector3::Z);
    const Vector3 point(1.5f, 3.0f, 0.25f);
    expectNear((projection * orientation).map(point), orientation.map(projection.map(point)));
    // Data mapped into the cube and then turned stays inside it, inverted axes included.
    const Matrix inverted = Matrix::ortho(0, 10, 1, 5, -1, 1) * Matrix::orient(Vector3::X, -Vector3::Y, Vector3::Z);
    expectNear(inverted.map(Vector3(0, 1, 0)), Vector3(-1, 1, 0));
    expectNear(inverted.map(Vector3(10, 5, 0)), Vector3(1, -1, 0));
    EXPECT_EQ(projection * Matrix::Identity, projection);
}
