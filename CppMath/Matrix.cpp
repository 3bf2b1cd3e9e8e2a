#include "Matrix.h"

#include <cmath>

namespace Orv::Math {

// Constant-initialised (the default constructor is constexpr), so it is usable from any other
// static initialiser.
const Matrix Matrix::Identity;

namespace {

// Sets the scale and offset of one axis so that lo goes to -1 and hi to +1. Computed in double
// so that float bounds of any magnitude give the nearest float coefficients.
void mapAxisOntoUnitRange(Matrix& m, int axis, float lo, float hi)
{
    const double width = static_cast<double>(hi) - static_cast<double>(lo);
    const auto scale = static_cast<float>(2.0 / width);
    const auto offset = static_cast<float>(-(static_cast<double>(hi) + static_cast<double>(lo)) / width);
    const bool degenerate = !std::isfinite(scale) || !std::isfinite(offset);
    m(axis, axis) = degenerate ? 0.0f : scale;
    m(3, axis) = degenerate ? 0.0f : offset;
}

} // namespace

Matrix Matrix::orient(const Vector3& a, const Vector3& b, const Vector3& c)
{
    Matrix m;
    for (int column = 0; column < 3; ++column) {
        m(0, column) = a[column];
        m(1, column) = b[column];
        m(2, column) = c[column];
    }
    return m;
}

Matrix Matrix::ortho(float x0, float x1, float y0, float y1, float z0, float z1)
{
    Matrix m;
    mapAxisOntoUnitRange(m, 0, x0, x1);
    mapAxisOntoUnitRange(m, 1, y0, y1);
    mapAxisOntoUnitRange(m, 2, z0, z1);
    return m;
}

Matrix Matrix::operator*(const Matrix& o) const
{
    Matrix product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            float sum = 0.0f;
            for (int k = 0; k < 4; ++k)
                sum += m_m[row][k] * o.m_m[k][column];
            product.m_m[row][column] = sum;
        }
    }
    return product;
}

bool Matrix::operator==(const Matrix& o) const
{
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            if (m_m[row][column] != o.m_m[row][column])
                return false;
        }
    }
    return true;
}

Vector3 Matrix::map(const Vector3& point) const
{
    Vector3 mapped;
    for (int column = 0; column < 3; ++column) {
        mapped[column] = point.x() * m_m[0][column] + point.y() * m_m[1][column] + point.z() * m_m[2][column]
                         + m_m[3][column];
    }
    return mapped;
}

} // namespace Orv::Math
