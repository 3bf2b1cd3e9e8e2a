#pragma once
// 4x4 float matrices that place chart data in the unit cube.

#include "OrvCppMathExport.h"
#include "Vector.h"

namespace Orv::Math {

// A 4x4 float matrix acting on row vectors (a point is mapped as p * M), stored row by row, so
// (A * B) applied to a point applies A first: ortho(...) * orient(...) maps data into the cube and
// then turns the cube, which keeps inverted axes inside it. Row by row storage of a row-vector
// matrix is the memory layout OpenGL expects.
class ORV_CPPMATH_EXPORT Matrix {
public:
    // The identity.
    constexpr Matrix() = default;

    static const Matrix Identity;

    // The rotation (or any linear map) that turns the x, y and z axes into the directions a, b
    // and c: the rows are a, b, c.
    static Matrix orient(const Vector3& a, const Vector3& b, const Vector3& c);

    // Maps the box [x0,x1] x [y0,y1] x [z0,z1] linearly onto the cube [-1,1]^3: x0 to -1, x1 to +1,
    // likewise y and z (an OpenGL glOrtho(x0, x1, y0, y1, -z0, -z1)). Reversed bounds mirror
    // the axis. An axis whose extent is zero, not finite, or so small that its scale overflows a
    // float maps everything to 0 rather than dividing by zero.
    static Matrix ortho(float x0, float x1, float y0, float y1, float z0, float z1);

    float operator()(int row, int column) const { return m_m[row][column]; }
    float& operator()(int row, int column) { return m_m[row][column]; }

    Matrix operator*(const Matrix& o) const;
    bool operator==(const Matrix& o) const;
    bool operator!=(const Matrix& o) const { return !(*this == o); }

    // The point (as a row, with w = 1) transformed as an affine map: the last column is not
    // used, so there is no perspective division.
    Vector3 map(const Vector3& point) const;

private:
    float m_m[4][4] = {{1.0f, 0.0f, 0.0f, 0.0f},
                       {0.0f, 1.0f, 0.0f, 0.0f},
                       {0.0f, 0.0f, 1.0f, 0.0f},
                       {0.0f, 0.0f, 0.0f, 1.0f}};
};

} // namespace Orv::Math
