#include "KelVariableIter.h"

#include "OrvDiagnostics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace {

using Comp = Orv::Math::Vector3::Comp;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr float notANumberF = std::numeric_limits<float>::quiet_NaN();

template <class T>
void release(std::vector<T>& values)
{
    std::vector<T>().swap(values);
}

// Values <= 0 become NaN and undefined; NaN stays an ordinary NaN. Gives how many
// values the host had defined lost theirs.
template <class T>
std::size_t takeLog10(std::vector<T>& values, std::vector<bool>& undefined)
{
    std::size_t lost = 0;
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (values[i] <= 0) {
            values[i] = std::numeric_limits<T>::quiet_NaN();
            lost += undefined[i] ? 0 : 1;
            undefined[i] = true;
        } else {
            values[i] = std::log10(values[i]);
        }
    }
    return lost;
}

// Flags shorter than the data leave the remaining items defined.
std::vector<bool> fitted(std::vector<bool> flags, std::size_t size)
{
    flags.resize(size, false);
    return flags;
}

} // namespace

KelVariableIter::KelVariableIter(KelModifiedGroup& group)
    : KelProperties(group)
{
    setType(QStringLiteral("variable.iter"));
    rename(QStringLiteral("variableiter.1"));
}

KelVariableIter::KelVariableIter(const KelVariableIter& other)
    : KelProperties(other)
    , KelVariableIterInterface(other)
    , m_dimension(other.m_dimension)
    , m_size(other.m_size)
    , m_scalars(other.m_scalars)
    , m_xs(other.m_xs)
    , m_ys(other.m_ys)
    , m_exactXs(other.m_exactXs)
    , m_undefined(other.m_undefined)
    , m_components(other.m_components)
    , m_converter(other.m_converter)
    , m_unitSystem(other.m_unitSystem)
{
}

KelVariableIter& KelVariableIter::operator=(const KelVariableIter& other)
{
    if (this == &other)
        return *this;
    KelProperties::operator=(other);
    m_dimension = other.m_dimension;
    m_size = other.m_size;
    m_scalars = other.m_scalars;
    m_xs = other.m_xs;
    m_ys = other.m_ys;
    m_exactXs = other.m_exactXs;
    m_undefined = other.m_undefined;
    m_components = other.m_components;
    m_converter = other.m_converter;
    m_unitSystem = other.m_unitSystem;
    invalidate();
    return *this;
}

KelVariableIter::~KelVariableIter() = default;

void KelVariableIter::setScalarData(std::vector<double> values, std::vector<bool> undefined, const QString& unit)
{
    m_dimension = 1;
    m_size = values.size();
    m_scalars = std::move(values);
    release(m_xs);
    release(m_ys);
    m_undefined = {fitted(std::move(undefined), m_size), {}};
    m_components[0].nativeUnit = unit;
    m_components[1].nativeUnit.clear();
    m_components[2].nativeUnit.clear();
    invalidate();
}

void KelVariableIter::setVector2Data(std::vector<float> x, std::vector<float> y, std::vector<bool> xUndefined,
                                     std::vector<bool> yUndefined, const QString& xUnit, const QString& yUnit)
{
    ORV_ENSURE(x.size() == y.size());
    m_dimension = 2;
    m_size = std::min(x.size(), y.size());
    m_xs = std::move(x);
    m_ys = std::move(y);
    m_xs.resize(m_size);
    m_ys.resize(m_size);
    release(m_scalars);
    release(m_exactXs);
    m_undefined = {fitted(std::move(xUndefined), m_size), fitted(std::move(yUndefined), m_size)};
    m_components[0].nativeUnit = xUnit;
    m_components[1].nativeUnit = yUnit;
    m_components[2].nativeUnit.clear();
    invalidate();
}

void KelVariableIter::setPreciseVector2Data(std::vector<double> x, std::vector<float> y, std::vector<bool> xUndefined,
                                            std::vector<bool> yUndefined, const QString& xUnit, const QString& yUnit)
{
    std::vector<float> rounded(x.begin(), x.end());
    setVector2Data(std::move(rounded), std::move(y), std::move(xUndefined), std::move(yUndefined), xUnit, yUnit);
    m_exactXs = std::move(x);
    m_exactXs.resize(m_size);
}

void KelVariableIter::clear()
{
    m_dimension = 0;
    m_size = 0;
    release(m_scalars);
    release(m_xs);
    release(m_ys);
    release(m_exactXs);
    m_undefined = {};
    for (Component& component : m_components)
        component.nativeUnit.clear();
    invalidate();
}

QString KelVariableIter::nativeUnit(Comp c) const
{
    return m_components[static_cast<std::size_t>(c)].nativeUnit;
}

bool KelVariableIter::next()
{
    if (m_next >= m_count)
        return false;
    m_current = m_next++;
    return true;
}

std::size_t KelVariableIter::valuesWithoutLogarithm()
{
    prepare();
    return m_withoutLogarithm;
}

void KelVariableIter::reset()
{
    prepare();
    m_next = 0;
    m_current = noItem;
}

KelVariableIter::Delivered KelVariableIter::delivered()
{
    prepare();
    Delivered items;
    items.size = m_count;
    if (m_dimension == 1) {
        items.scalars = m_scalarView;
        items.xUndefined = m_undefinedView[0];
    } else if (m_dimension == 2) {
        items.x = m_xView;
        items.y = m_yView;
        items.exactX = m_exactXView;
        items.xUndefined = m_undefinedView[0];
        items.yUndefined = m_undefinedView[1];
    }
    return items;
}

double KelVariableIter::scalarValue()
{
    if (m_current >= m_count)
        return notANumber;
    return m_dimension == 1 ? m_scalarView[m_current] : m_xView[m_current];
}

void KelVariableIter::vector2Value(Orv::Math::Vector2& value)
{
    if (m_current >= m_count)
        value = Orv::Math::Vector2(notANumberF, notANumberF);
    else if (m_dimension == 1)
        value = Orv::Math::Vector2(static_cast<float>(m_scalarView[m_current]), 0.0f);
    else
        value = Orv::Math::Vector2(m_xView[m_current], m_yView[m_current]);
}

void KelVariableIter::vector3Value(Orv::Math::Vector3& value)
{
    Orv::Math::Vector2 planar;
    vector2Value(planar);
    value = Orv::Math::Vector3(planar.x(), planar.y(), 0.0f);
}

void KelVariableIter::undefinedFlags(bool& x, bool& y, bool&)
{
    const std::size_t i = m_current;
    if (i >= m_count) {
        x = true;
        y = y || m_dimension == 2;
    } else {
        x = x || (*m_undefinedView[0])[i];
        y = y || (m_dimension == 2 && (*m_undefinedView[1])[i]);
    }
}

bool KelVariableIter::hasDimension(int n)
{
    return m_dimension != 0 && n == m_dimension;
}

void KelVariableIter::setConverter(const boost::shared_ptr<IUnitsConverter>& converter)
{
    if (converter == m_converter)
        return;
    m_converter = converter;
    invalidate();
}

void KelVariableIter::setUnitSystemFlag(bool on)
{
    if (on == m_unitSystem)
        return;
    m_unitSystem = on;
    invalidate();
}

void KelVariableIter::units(QString& x, QString& y, QString& z)
{
    x = systemUnit(m_components[0]);
    y = systemUnit(m_components[1]);
    z = systemUnit(m_components[2]);
}

bool KelVariableIter::setUnits(const QString& x, const QString& y, const QString& z)
{
    const std::array<QString, 3> chosen = {x, y, z};
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        if (!accepts(m_components[i], chosen[i]))
            return false;
    }
    for (std::size_t i = 0; i < chosen.size(); ++i) {
        if (m_components[i].chosenUnit != chosen[i]) {
            m_components[i].chosenUnit = chosen[i];
            invalidate();
        }
    }
    return true;
}

void KelVariableIter::logarithmic(bool& x, bool& y, bool& z) const
{
    x = m_components[0].logarithmic;
    y = m_components[1].logarithmic;
    z = m_components[2].logarithmic;
}

void KelVariableIter::setLogarithmic(bool x, bool y, bool z)
{
    const std::array<bool, 3> flags = {x, y, z};
    for (std::size_t i = 0; i < flags.size(); ++i) {
        if (m_components[i].logarithmic != flags[i]) {
            m_components[i].logarithmic = flags[i];
            invalidate();
        }
    }
}

bool KelVariableIter::accepts(const Component& component, const QString& unit) const
{
    if (unit.isEmpty() || unit == component.nativeUnit)
        return true;
    return !component.nativeUnit.isEmpty() && m_converter && m_converter->convertible(component.nativeUnit, unit);
}

// The preferred unit when the unit system is on and can convert to it, else the native one.
QString KelVariableIter::systemUnit(const Component& component) const
{
    if (component.nativeUnit.isEmpty() || !m_converter || !m_unitSystem)
        return component.nativeUnit;
    const QString preferred = m_converter->preferredUnit(component.nativeUnit);
    return m_converter->convertible(component.nativeUnit, preferred) ? preferred : component.nativeUnit;
}

QString KelVariableIter::targetUnit(const Component& component) const
{
    if (component.nativeUnit.isEmpty() || !m_converter || component.chosenUnit.isEmpty())
        return systemUnit(component);
    return component.chosenUnit;
}

void KelVariableIter::invalidate()
{
    m_prepared = false;
    m_count = 0;
    m_next = 0;
    m_current = noItem;
}

void KelVariableIter::prepare()
{
    if (m_prepared)
        return;
    // The converted copies keep their memory from one preparation to the
    // next: units change often on the same data, and allocating is slow.
    m_scalarView = nullptr;
    m_xView = nullptr;
    m_yView = nullptr;
    m_exactXView = nullptr;
    m_undefinedView = {&m_undefined[0], &m_undefined[1]};
    m_withoutLogarithm = 0;
    if (m_dimension != 1)
        release(m_convertedScalars);
    if (m_dimension != 2) {
        release(m_convertedXs);
        release(m_convertedYs);
        release(m_convertedExactXs);
        release(m_logUndefined[1]);
    }
    if (m_dimension == 0)
        release(m_logUndefined[0]);

    if (m_dimension == 1) {
        m_scalarView = deliver(m_scalars, m_convertedScalars, 0);
    } else if (m_dimension == 2) {
        m_xView = deliver(m_xs, m_convertedXs, 0);
        m_yView = deliver(m_ys, m_convertedYs, 1);
        m_exactXView = deliverExactX();
    }
    m_count = m_size;
    m_prepared = true;
}

// Gives the array to deliver for one component: the native array when nothing
// is to be done, else a converted copy.
template <class T>
const T* KelVariableIter::deliver(const std::vector<T>& native, std::vector<T>& converted, std::size_t index)
{
    const Component& component = m_components[index];
    const QString target = targetUnit(component);
    bool isConverted = false;
    if (target != component.nativeUnit) {
        converted = native;
        isConverted = m_converter->convert(converted.data(), converted.size(), component.nativeUnit, target);
    }
    if (!component.logarithmic) {
        if (!isConverted)
            release(converted);
        release(m_logUndefined[index]);
        return isConverted ? converted.data() : native.data();
    }
    if (!isConverted)
        converted = native;
    m_logUndefined[index] = m_undefined[index];
    m_withoutLogarithm += takeLog10(converted, m_logUndefined[index]);
    m_undefinedView[index] = &m_logUndefined[index];
    return converted.data();
}

// The exact x values converted and logged as `deliver` does the rounded ones; their undefined
// flags and the count of values without logarithm come from the rounded ones.
const double* KelVariableIter::deliverExactX()
{
    if (m_exactXs.empty()) {
        release(m_convertedExactXs);
        return nullptr;
    }
    const Component& component = m_components[0];
    const QString target = targetUnit(component);
    bool isConverted = false;
    if (target != component.nativeUnit) {
        m_convertedExactXs = m_exactXs;
        isConverted = m_converter->convert(m_convertedExactXs.data(), m_convertedExactXs.size(), component.nativeUnit,
                                           target);
    }
    if (!component.logarithmic)
        return isConverted ? m_convertedExactXs.data() : m_exactXs.data();
    if (!isConverted)
        m_convertedExactXs = m_exactXs;
    std::vector<bool> undefined = m_undefined[0];
    takeLog10(m_convertedExactXs, undefined);
    return m_convertedExactXs.data();
}
