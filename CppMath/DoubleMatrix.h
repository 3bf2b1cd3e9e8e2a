#pragma once
// The maps of Matrix in double precision, for data a float cannot place: seconds since a file's
// first row over years of 0.1 s samples, or far from zero on any axis.

#include "Matrix.h"
#include "OrvCppMathExport.h"

namespace Orv::Math {

// A 4x4 double matrix with Matrix's conventions: row vectors (p * M), stored row by row, the
// last column unused. Built from the same axis ranges and orientation as a Matrix, it maps a
// point to where that Matrix would if floats had the precision: a value 1e-9 of the range from
// its neighbour keeps its place at any distance from zero.
class ORV_CPPMATH_EXPORT DoubleMatrix {
public:
    struct Point {
        double x = 0.0;
        double y = 0.0;
        double z = 0.0;
    };

    // The identity.
    constexpr DoubleMatrix() = default;
    // The same map, its coefficients widened.
    explicit DoubleMatrix(const Matrix& m);
    // As Matrix::ortho, with the bounds as given: x0 to -1 and x1 to +1, likewise y and z; an
    // axis whose extent is zero or not finite maps everything to 0.
    static DoubleMatrix ortho(double x0, double x1, double y0, double y1, double z0, double z1);

    double operator()(int row, int column) const { return m_m[row][column]; }
    double& operator()(int row, int column) { return m_m[row][column]; }
    DoubleMatrix operator*(const DoubleMatrix& o) const;
    bool operator==(const DoubleMatrix& o) const;
    bool operator!=(const DoubleMatrix& o) const { return !(*this == o); }
    Point map(double x, double y, double z) const;

private:
    double m_m[4][4] = {{1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}, {0.0, 0.0, 0.0, 1.0}};
};

} // namespace Orv::Math
