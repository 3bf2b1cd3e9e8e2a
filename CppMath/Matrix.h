#pragma once
// 4x4 float matrices that place chart data in the unit cube.

#include "Vector.h"

namespace Orv::Math {

// A 4x4 float matrix acting on column vectors, stored row by row. (A * B) applied to a point
// applies B first.
class Matrix {
public:
    // The identity.
    constexpr Matrix() = default;

    static const Matrix Identity;

    // The rotation (or any linear map) that turns the x, y and z axes into the directions a, b
    // and c: the columns are a, b, c.
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

    // The point transformed with w = 1, as an affine map: the bottom row is not used, so there is
    // no perspective division.
    Vector3 map(const Vector3& point) const;

private:
    float m_m[4][4] = {{1.0f, 0.0f, 0.0f, 0.0f},
                       {0.0f, 1.0f, 0.0f, 0.0f},
                       {0.0f, 0.0f, 1.0f, 0.0f},
                       {0.0f, 0.0f, 0.0f, 1.0f}};
};

} // namespace Orv::Math
