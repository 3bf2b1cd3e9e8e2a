#pragma once
// The axis-aligned box around a set of points.

#include "OrvCppMathExport.h"
#include "Vector.h"

namespace Orv::Math {

// Grows to hold every point inserted; empty (undefined) until the first one.
//
// NaN components are ignored on their axis, as std::fmin and std::fmax do: a NaN never replaces
// a number, so a missing value never shrinks, inverts or poisons the range of the other points.
// An axis that has seen nothing but NaN has NaN corners; a point that is NaN on every axis is
// not held at all. Infinite components are held like any other.
class ORV_CPPMATH_EXPORT BoundingBox {
public:
    BoundingBox() = default;

    void insert(float x, float y, float z);
    void insert(const Vector3& point) { insert(point.x(), point.y(), point.z()); }
    // Grows to hold `other` too; an undefined `other` changes nothing.
    BoundingBox& operator+=(const BoundingBox& other);
    // Empties the box.
    void reset() { *this = BoundingBox(); }

    // True once the box holds a point. Writable, so that a user can invalidate the box or declare
    // min() and max() set by hand.
    bool& defined() { return m_defined; }
    bool defined() const { return m_defined; }

    // The corners; both 0 while the box is undefined.
    const Vector3& min() const { return m_min; }
    const Vector3& max() const { return m_max; }

    // Undefined boxes are equal whatever their corners.
    bool operator==(const BoundingBox& o) const;
    bool operator!=(const BoundingBox& o) const { return !(*this == o); }

private:
    void grow(const Vector3& low, const Vector3& high);

    Vector3 m_min;
    Vector3 m_max;
    bool m_defined = false;
};

} // namespace Orv::Math
