#include "DoubleMatrix.h"

#include <gtest/gtest.h>

#include <cmath>

using Orv::Math::DoubleMatrix;
using Orv::Math::Matrix;
using Orv::Math::Vector3;

TEST(DoubleMatrix, MapsAsTheFloatMatrixDoes)
{
    const Matrix orientation = Matrix::orient(-Vector3::X, Vector3::Y, Vector3::Z);
    // Ranges whose scales are exact in a float, so that the coefficients agree bit for bit.
    const Matrix single = Matrix::ortho(0, 8, -4, 4, -1, 1) * orientation;
    const DoubleMatrix precise = DoubleMatrix::ortho(0, 8, -4, 4, -1, 1) * DoubleMatrix(orientation);
    EXPECT_EQ(DoubleMatrix(single), precise);
    for (const Vector3& p : {Vector3(0, -4, 0), Vector3(8, 4, 1), Vector3(2.5f, 1.25f, -1)}) {
        const Vector3 expected = single.map(p);
        const DoubleMatrix::Point mapped = precise.map(p.x(), p.y(), p.z());
        EXPECT_FLOAT_EQ(mapped.x, expected.x());
        EXPECT_FLOAT_EQ(mapped.y, expected.y());
        EXPECT_FLOAT_EQ(mapped.z, expected.z());
    }
}

// A minute of data a century from zero: the float matrix lumps the samples of seconds together,
// the double one keeps 0.1 s steps a hundredth of the range apart.
TEST(DoubleMatrix, PlacesValuesFarFromZero)
{
    const double start = 3155760000.0;
    const DoubleMatrix precise = DoubleMatrix::ortho(start, start + 60, 0, 1, -1, 1);
    EXPECT_NEAR(precise.map(start + 0.1, 0, 0).x - precise.map(start, 0, 0).x, 2.0 / 600, 1e-6);
    EXPECT_NEAR(precise.map(start + 30, 0, 0).x, 0.0, 1e-6);
    const Matrix single = Matrix::ortho(float(start), float(start + 60), 0, 1, -1, 1);
    EXPECT_EQ(single.map(Vector3(float(start + 0.1), 0, 0)).x(), single.map(Vector3(float(start), 0, 0)).x());
}

TEST(DoubleMatrix, DegenerateAxesMapToZero)
{
    const DoubleMatrix flat = DoubleMatrix::ortho(3, 3, 0, HUGE_VAL, -1, 1);
    const DoubleMatrix::Point p = flat.map(7, 2, 0.5);
    EXPECT_EQ(p.x, 0.0);
    EXPECT_EQ(p.y, 0.0);
    EXPECT_EQ(p.z, 0.5);
}
