#include "DoubleMatrix.h"

#include <cmath>

namespace Orv::Math {

namespace {

void mapAxisOntoUnitRange(DoubleMatrix& m, int axis, double lo, double hi)
{
    const double width = hi - lo;
    const double scale = 2.0 / width;
    const double offset = -(hi + lo) / width;
    const bool degenerate = !std::isfinite(scale) || !std::isfinite(offset);
    m(axis, axis) = degenerate ? 0.0 : scale;
    m(3, axis) = degenerate ? 0.0 : offset;
}

} // namespace

DoubleMatrix::DoubleMatrix(const Matrix& m)
{
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column)
            m_m[row][column] = m(row, column);
    }
}

DoubleMatrix DoubleMatrix::ortho(double x0, double x1, double y0, double y1, double z0, double z1)
{
    DoubleMatrix m;
    mapAxisOntoUnitRange(m, 0, x0, x1);
    mapAxisOntoUnitRange(m, 1, y0, y1);
    mapAxisOntoUnitRange(m, 2, z0, z1);
    return m;
}

DoubleMatrix DoubleMatrix::operator*(const DoubleMatrix& o) const
{
    DoubleMatrix product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += m_m[row][k] * o.m_m[k][column];
            product.m_m[row][column] = sum;
        }
    }
    return product;
}

bool DoubleMatrix::operator==(const DoubleMatrix& o) const
{
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            if (m_m[row][column] != o.m_m[row][column])
                return false;
        }
    }
    return true;
}

DoubleMatrix::Point DoubleMatrix::map(double x, double y, double z) const
{
    double mapped[3];
    for (int column = 0; column < 3; ++column)
        mapped[column] = x * m_m[0][column] + y * m_m[1][column] + z * m_m[2][column] + m_m[3][column];
    return {mapped[0], mapped[1], mapped[2]};
}

} // namespace Orv::Math
