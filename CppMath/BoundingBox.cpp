#include "BoundingBox.h"

#include <cmath>

namespace Orv::Math {

void BoundingBox::insert(float x, float y, float z)
{
    if (std::isnan(x) && std::isnan(y) && std::isnan(z))
        return;
    grow(Vector3(x, y, z), Vector3(x, y, z));
}

BoundingBox& BoundingBox::operator+=(const BoundingBox& other)
{
    if (other.m_defined)
        grow(other.m_min, other.m_max);
    return *this;
}

bool BoundingBox::operator==(const BoundingBox& o) const
{
    if (!m_defined || !o.m_defined)
        return m_defined == o.m_defined;
    return m_min == o.m_min && m_max == o.m_max;
}

void BoundingBox::grow(const Vector3& low, const Vector3& high)
{
    if (!m_defined) {
        m_min = low;
        m_max = high;
        m_defined = true;
        return;
    }
    for (int axis = 0; axis < 3; ++axis) {
        m_min[axis] = std::fmin(m_min[axis], low[axis]);
        m_max[axis] = std::fmax(m_max[axis], high[axis]);
    }
}

} // namespace Orv::Math
