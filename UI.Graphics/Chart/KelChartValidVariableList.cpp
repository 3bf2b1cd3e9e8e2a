#include "KelChartValidVariableList.h"

#include "KelChartBaseLine.h"
#include "NiceIntervals.h"
#include "NumberFormat.h"
#include "OrvDiagnostics.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace {

Orv::Math::Vector2 range(double low, double high)
{
    return {static_cast<float>(low), static_cast<float>(high)};
}

// A range around a single value: from 0 to twice the value, or -1 to 1 around 0.
Orv::Math::Vector2 rangeAround(double value)
{
    if (value < 0)
        return range(2 * value, 0);
    if (value > 0)
        return range(0, 2 * value);
    return range(-1, 1);
}

// The single tick v widened to the neighbouring multiples of the power of ten
// that covers the distance from v to the farther end of [lo, hi].
Orv::Math::Vector2 rangeAroundTick(double v, double lo, double hi)
{
    const double distance = std::max(std::fabs(v - lo), std::fabs(v - hi));
    const double exponent = std::log10(distance);
    const double step = std::pow(10.0, exponent < 0 ? std::floor(exponent) : std::ceil(exponent));
    return range(std::ceil((v - step) / step) * step, std::floor((v + step) / step) * step);
}

} // namespace

void KelChartValidVariableList::push_back(const KelChartVariable& p_variable, const Orv::Math::Vector2& minmax)
{
    if (!p_variable.enabled.get())
        orvdebug::ensureFailed("p_variable.enabled()", ORV_FUNCTION_SIGNATURE);
    _variables.push_back(&p_variable);
    _minmax.push_back(minmax);
}

void KelChartValidVariableList::push_back(const KelChartVariableCache& cache)
{
    const KelChartVariable& var = cache.variable();
    if (!var.enabled.get())
        orvdebug::ensureFailed("var.enabled()", ORV_FUNCTION_SIGNATURE);
    _variables.push_back(&var);
    _minmax.push_back(manualOrDataRange(cache));
}

size_t KelChartValidVariableList::size() const
{
    ORV_ENSURE(_variables.size() == _minmax.size());
    return _variables.size();
}

int KelChartValidVariableList::findIndexByName(const QString& name) const
{
    const auto found = std::find_if(_variables.begin(), _variables.end(),
                                    [&name](const KelChartVariable* var) { return var->name() == name; });
    return found == _variables.end() ? -1 : static_cast<int>(found - _variables.begin());
}

const KelChartVariable& KelChartValidVariableList::variable(size_t i) const
{
    return *_variables.at(i);
}

const Orv::Math::Vector2& KelChartValidVariableList::minmax(size_t i) const
{
    return _minmax.at(i);
}

double KelChartValidVariableList::fillBaseLine(size_t i) const
{
    return KelChartBaseLine(_minmax.at(i)[0], _minmax.at(i)[1]);
}

void KelChartValidVariableList::clear()
{
    _variables.clear();
    _minmax.clear();
}

// A manual range counts only when it is not empty; otherwise the data decide.
Orv::Math::Vector2 KelChartValidVariableList::manualOrDataRange(const KelChartVariableCache& cache)
{
    const KelChartVariable& var = cache.variable();
    if (!var.autoRange.get()) {
        const double low = var.min.x.value.get();
        const double high = var.max.x.value.get();
        if (high > low)
            return range(low, high);
    }
    return dataRange(cache);
}

Orv::Math::Vector2 KelChartValidVariableList::dataRange(const KelChartVariableCache& cache)
{
    if (cache.y().empty())
        return range(0, 1);
    const double lo = cache.bounds().min().y();
    const double hi = cache.bounds().max().y();
    if (lo == hi)
        return rangeAround(lo);
    // Widened a little, so that an end lying on a nice value counts as inside it
    // despite the rounding of the float bounds.
    return niceRange(lo < 0 ? lo * 1.00001 : lo * 0.99999, hi < 0 ? hi * 0.99999 : hi * 1.00001);
}

// [lo, hi] rounded outward to the nice values that lie in it, one interval
// further where a value does not already lie beyond the end.
Orv::Math::Vector2 KelChartValidVariableList::niceRange(double lo, double hi)
{
    const Orv::Math::NiceIntervals ticks(lo, hi, 11, false, true, Orv::Math::NumberFormat());
    const int n = ticks.size();
    if (n > 1) {
        const double first = ticks.value(0);
        const double last = ticks.value(n - 1);
        return range(lo > first ? first : 2 * first - ticks.value(1),
                     last > hi ? last : 2 * last - ticks.value(n - 2));
    }
    if (n == 1)
        return rangeAroundTick(ticks.value(0), lo, hi);
    return lo < 0 ? range(2 * lo, 0) : range(0, 2 * hi);
}
