#include "Vector.h"

namespace Orv::Math {

const Vector3 Vector3::X(1.0f, 0.0f, 0.0f);
const Vector3 Vector3::Y(0.0f, 1.0f, 0.0f);
const Vector3 Vector3::Z(0.0f, 0.0f, 1.0f);
const Vector3 Vector0(0.0f, 0.0f, 0.0f);
const Vector3 Vector1(1.0f, 1.0f, 1.0f);

} // namespace Orv::Math
