#pragma once
// Small float vectors of the math module.

#include "OrvCppMathExport.h"

namespace Orv::Math {

class ORV_CPPMATH_EXPORT Vector2 {
public:
    Vector2() = default;
    Vector2(float x, float y) : m_v{x, y} {}

    float x() const { return m_v[0]; }
    float y() const { return m_v[1]; }
    float operator[](int i) const { return m_v[i]; }
    float& operator[](int i) { return m_v[i]; }

    bool operator==(const Vector2& o) const { return m_v[0] == o.m_v[0] && m_v[1] == o.m_v[1]; }
    bool operator!=(const Vector2& o) const { return !(*this == o); }

private:
    float m_v[2] = {0.0f, 0.0f};
};

class ORV_CPPMATH_EXPORT Vector3 {
public:
    // Names a component. Scoped, so that `Vector3::X` can be the unit axis.
    enum class Comp { X = 0, Y = 1, Z = 2 };

    Vector3() = default;
    Vector3(float x, float y, float z) : m_v{x, y, z} {}

    float x() const { return m_v[0]; }
    float y() const { return m_v[1]; }
    float z() const { return m_v[2]; }
    float operator[](int i) const { return m_v[i]; }
    float& operator[](int i) { return m_v[i]; }

    Vector3 operator-() const { return {-m_v[0], -m_v[1], -m_v[2]}; }
    bool operator==(const Vector3& o) const
    {
        return m_v[0] == o.m_v[0] && m_v[1] == o.m_v[1] && m_v[2] == o.m_v[2];
    }
    bool operator!=(const Vector3& o) const { return !(*this == o); }

    float operator[](Comp c) const { return m_v[static_cast<int>(c)]; }
    float& operator[](Comp c) { return m_v[static_cast<int>(c)]; }

    // The unit axes.
    static const Vector3 X, Y, Z;

private:
    float m_v[3] = {0.0f, 0.0f, 0.0f};
};

// All components 0, and all components 1.
ORV_CPPMATH_EXPORT extern const Vector3 Vector0;
ORV_CPPMATH_EXPORT extern const Vector3 Vector1;

} // namespace Orv::Math
