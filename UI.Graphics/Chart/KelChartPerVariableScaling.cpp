#include "KelChartPerVariableScaling.h"

#include "KelChartAxisPairScale.h"
#include "KelChartAxisScale.h"
#include "OrvDiagnostics.h"

#include <boost/make_shared.hpp>

using Orv::Math::Matrix;
using Orv::Math::Vector2;
using Orv::Math::Vector3;

namespace {

bool usable(const KelChartAxisScale* axis)
{
    return axis && axis->valid();
}

// The unit axis, turned round when the scale runs inverted.
Vector3 direction(const Vector3& unitAxis, const KelChartAxisScale& scale)
{
    return scale.inverted() ? -unitAxis : unitAxis;
}

float narrow(double value)
{
    return static_cast<float>(value);
}

} // namespace

KelChartPerVariableScaling::KelChartPerVariableScaling(const KelChartAxisPairScale& xPair,
                                                       const KelChartAxisPairScale& yPair,
                                                       const KelChartVariableListCache& cache)
    : _listCache(cache)
    , _xPair(&xPair)
    , _yPair(&yPair)
    , _zPair(nullptr)
{
    flagVariables();
}

KelChartPerVariableScaling::KelChartPerVariableScaling(const KelChartAxisPairScale& xPair,
                                                       const KelChartAxisPairScale& yPair,
                                                       const KelChartAxisPairScale& zPair,
                                                       const KelChartVariableListCache& cache)
    : _listCache(cache)
    , _xPair(&xPair)
    , _yPair(&yPair)
    , _zPair(&zPair)
{
    flagVariables();
}

KelChartPerVariableScaling::KelChartPerVariableScaling(const KelChartPerVariableScaling& other) = default;
KelChartPerVariableScaling::KelChartPerVariableScaling(KelChartPerVariableScaling&& other) noexcept = default;
KelChartPerVariableScaling& KelChartPerVariableScaling::operator=(const KelChartPerVariableScaling& other) = default;
KelChartPerVariableScaling& KelChartPerVariableScaling::operator=(KelChartPerVariableScaling&& other) noexcept = default;
KelChartPerVariableScaling::~KelChartPerVariableScaling() = default;

const Matrix& KelChartPerVariableScaling::matrix(size_t i) const
{
    if (!_validFlags[i])
        return Matrix::Identity;
    boost::shared_ptr<Matrix>& slot = _matrices[i];
    if (slot)
        return *slot;
    slot = boost::make_shared<Matrix>();

    // The axes were found at construction; they can only be missing when the
    // pair scales were changed since, and then the matrix stays the identity.
    const KelChartAxisScale* xAxis = findAxis(Vector3::Comp::X, i);
    const KelChartAxisScale* yAxis = findAxis(Vector3::Comp::Y, i);
    ORV_ENSURE(xAxis && yAxis);
    if (_zPair) {
        const KelChartAxisScale* zAxis = findAxis(Vector3::Comp::Z, i);
        ORV_ENSURE(zAxis);
        if (xAxis && yAxis && zAxis)
            processAxes(*xAxis, *yAxis, *zAxis, *slot);
    } else if (xAxis && yAxis) {
        processAxes(*xAxis, *yAxis, *slot);
    }
    return *slot;
}

Orv::Math::DoubleMatrix KelChartPerVariableScaling::preciseMatrix(size_t i) const
{
    using Orv::Math::DoubleMatrix;
    const KelChartAxisScale* x = _validFlags[i] ? findAxis(Vector3::Comp::X, i) : nullptr;
    const KelChartAxisScale* y = _validFlags[i] ? findAxis(Vector3::Comp::Y, i) : nullptr;
    const KelChartAxisScale* z = _zPair && _validFlags[i] ? findAxis(Vector3::Comp::Z, i) : nullptr;
    if (!x || !y || !x->valid() || !y->valid() || (_zPair && (!z || !z->valid())))
        return {};
    // The orientation holds only 0 and ±1, exact in either precision.
    const Matrix orientation =
        Matrix::orient(direction(Vector3::X, *x), direction(Vector3::Y, *y), z ? direction(Vector3::Z, *z) : Vector3::Z);
    return DoubleMatrix::ortho(x->min(), x->max(), y->min(), y->max(), z ? z->min() : -1.0, z ? z->max() : 1.0)
        * DoubleMatrix(orientation);
}

double KelChartPerVariableScaling::baseLine(size_t i, Orv::Math::Vector3::Comp comp) const
{
    if (!variable(i).valid())
        return 0.0;
    const KelChartAxisScale* axis = findAxis(comp, i);
    return axis ? axis->baseLine() : 0.0;
}

void KelChartPerVariableScaling::gradientExtents(size_t i, Orv::Math::Vector3::Comp comp, Vector2& extents,
                                                 double& baseLine) const
{
    baseLine = this->baseLine(i, comp);
    extents = Vector2(0.0f, 0.0f);
    if (!variable(i).valid())
        return;
    const bool scaled =
        comp == Vector3::Comp::X || comp == Vector3::Comp::Y || (comp == Vector3::Comp::Z && _zPair);
    if (scaled) {
        const Orv::Math::BoundingBox& box = variable(i).bounds();
        extents = Vector2(box.min()[comp], box.max()[comp]);
    }
    // A gradient runs from the base line, so it must reach that too.
    if (extents[0] > baseLine)
        extents[0] = narrow(baseLine);
    if (baseLine > extents[1])
        extents[1] = narrow(baseLine);
}

bool KelChartPerVariableScaling::isAxisDiscrete(Orv::Math::Vector3::Comp comp, size_t i) const
{
    const AxisLookup found = lookup(comp, i);
    const KelChartAxisPairScale* axisPair = found.pair;
    // The report quotes the condition as written: keep `!= 0`.
    ORV_ENSURE(axisPair != 0); // NOLINT(modernize-use-nullptr)
    if (!axisPair)
        return false;
    const KelChartAxisScale* axis = axisPair->find(found.name);
    ORV_ENSURE(axis != 0); // NOLINT(modernize-use-nullptr)
    return axis && axis->discrete();
}

void KelChartPerVariableScaling::flagVariables()
{
    const size_t count = _listCache.size();
    _validFlags.reserve(count);
    _matrices.resize(count);
    for (size_t i = 0; i < count; ++i)
        _validFlags.push_back(axesFoundAndValid(i));
}

KelChartPerVariableScaling::AxisLookup KelChartPerVariableScaling::lookup(Vector3::Comp comp, size_t i) const
{
    const KelChartVariable& var = variable(i).variable();
    switch (comp) {
    case Vector3::Comp::X:
        return {_xPair, var.xAxis.get()};
    case Vector3::Comp::Y:
        return {_yPair, var.yAxis.get()};
    case Vector3::Comp::Z:
        return {_zPair, var.zAxis.get()};
    }
    return {nullptr, QString()};
}

const KelChartAxisScale* KelChartPerVariableScaling::findAxis(Vector3::Comp comp, size_t i) const
{
    const AxisLookup found = lookup(comp, i);
    return found.pair ? found.pair->find(found.name) : nullptr;
}

bool KelChartPerVariableScaling::axesFoundAndValid(size_t i) const
{
    if (!variable(i).valid())
        return false;
    return usable(findAxis(Vector3::Comp::X, i)) && usable(findAxis(Vector3::Comp::Y, i))
        && (!_zPair || usable(findAxis(Vector3::Comp::Z, i)));
}

// The axis ranges mapped onto the cube, after the data were turned round
// along the inverted axes.
bool KelChartPerVariableScaling::processAxes(const KelChartAxisScale& x, const KelChartAxisScale& y,
                                             const KelChartAxisScale& z, Matrix& out)
{
    if (!x.valid() || !y.valid() || !z.valid())
        return false;
    const Matrix orientation =
        Matrix::orient(direction(Vector3::X, x), direction(Vector3::Y, y), direction(Vector3::Z, z));
    out = Matrix::ortho(narrow(x.min()), narrow(x.max()), narrow(y.min()), narrow(y.max()), narrow(z.min()),
                        narrow(z.max()))
        * orientation;
    return true;
}

// As above, with z left as it is: never inverted, from -1 to 1.
bool KelChartPerVariableScaling::processAxes(const KelChartAxisScale& x, const KelChartAxisScale& y, Matrix& out)
{
    if (!x.valid() || !y.valid())
        return false;
    const Matrix orientation = Matrix::orient(direction(Vector3::X, x), direction(Vector3::Y, y), Vector3::Z);
    out = Matrix::ortho(narrow(x.min()), narrow(x.max()), narrow(y.min()), narrow(y.max()), -1.0f, 1.0f)
        * orientation;
    return true;
}
