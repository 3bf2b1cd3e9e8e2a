#include "KelChartAxisScale.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"
#include "KelChartBaseLine.h"
#include "KelChartEpochConversion.h"
#include "KelChartVariableListCache.h"

#include "CalendarTicks.h"
#include "LogTicks.h"
#include "OrvDiagnostics.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <limits>
#include <utility>

namespace {

// Marks a discrete range that no data has started yet.
constexpr double noCategory = 2147483647.0;

// Widens [min, max] as `ExpandRange` documents. The widening d is computed in
// T and held as a double; the new bounds are computed in double and rounded to T.
template <class T>
void expandRange(T& min, T& max, T fraction)
{
    const T largest = std::numeric_limits<float>::max();
    // NOLINTNEXTLINE(modernize-use-auto): double for every T
    double d = static_cast<T>((max - min) * fraction);
    if (d == 0)
        d = static_cast<T>(std::abs(max) * T(0.5));
    if (min == max || d == 0) {
        if (min > T(-1) && max < T(1)) {
            min = T(-1);
            max = T(1);
            d = 0;
        } else if (max >= largest) {
            min = 0;
            d = 0;
        } else if (max <= -largest) {
            max = 0;
            d = 0;
        }
    }
    min = static_cast<T>(min - d);
    max = static_cast<T>(max + d);
    if (min == max)
        min = 0;
}

// Whether a valid cache's variable names `axisName` as one of its axes.
bool namesAxis(const KelChartVariableCache& cache, const QString& axisName)
{
    const KelChartVariable& variable = cache.variable();
    return variable.xAxis.get() == axisName || variable.yAxis.get() == axisName
        || variable.zAxis.get() == axisName;
}

// A width truncated toward zero as an unsigned int; past the unsigned range
// (an infinite width among them) it saturates. NaN gives 0, and so would a
// negative width, which a discrete range never has.
unsigned int truncatedWidth(double width)
{
    constexpr double largest = std::numeric_limits<unsigned int>::max();
    if (!(width > 0))
        return 0;
    return width >= largest ? std::numeric_limits<unsigned int>::max() : static_cast<unsigned int>(width);
}

// 1 / slots in float, for a whole number of slots; an empty range has no finite step.
double categoryStep(double slots)
{
    if (!(slots > 0))
        return std::numeric_limits<double>::infinity();
    return 1.0f / static_cast<float>(slots);
}

void warnEntryLimit(const QString& axisName)
{
    orvdebug::warning("discrete axis \"", axisName, "\" needs more than ", KelChartAxisScale::MaxDiscreteEntries,
                      " entries; its scale keeps only the first ", KelChartAxisScale::MaxDiscreteEntries);
}

// The axis's zone; an unknown name is reported and UTC used.
Orv::Math::TimeZone timeZoneOf(const KelChartAxisTime& axis)
{
    const QString name = axis.timeZone.get().trimmed();
    Orv::Math::TimeZone zone(name.toStdString());
    if (!zone.valid()) {
        orvdebug::warning("time axis \"", axis.name(), "\": unknown time zone \"", name, "\"; ticks are placed in UTC");
        zone = Orv::Math::TimeZone();
    }
    return zone;
}

// Whether a logarithmic tick lies in [lo, hi]; one off by the rounding of a logarithm still does.
bool inside(double position, double lo, double hi)
{
    constexpr double tolerance = 1e-9;
    return position >= lo - tolerance && position <= hi + tolerance;
}

// The ticks of the exponent range [lo, hi] with at least one major inside where any can be: a coarse
// decade stride or linear step, chosen for the range rounded outward, may skip every tick inside, and
// more wanted intervals give finer ones.
Orv::Math::LogTicks tightLogTicks(double lo, double hi, int count, const Orv::Math::NumberFormat& format)
{
    // LogTicks takes no more wanted intervals than this.
    constexpr int mostIntervals = 1000;
    Orv::Math::LogTicks ticks(lo, hi, count, format);
    while (count < mostIntervals) {
        for (int i = 0; i < ticks.size(); ++i)
            if (inside(ticks.major(i).position, lo, hi))
                return ticks;
        count = std::min(2 * std::max(count, 1), mostIntervals);
        ticks = Orv::Math::LogTicks(lo, hi, count, format);
    }
    return ticks;
}

} // namespace

template <>
void KelChartAxisScale::ExpandRange<float>(float& min, float& max, float fraction)
{
    expandRange(min, max, fraction);
}

template <>
void KelChartAxisScale::ExpandRange<double>(double& min, double& max, double fraction)
{
    expandRange(min, max, fraction);
}

KelChartAxisScale::KelChartAxisScale()
    : m_min(0.0)
    , m_max(0.0)
    , m_factor(1.0)
    , m_size(0)
    , m_valid(false)
    , m_discrete(false)
    , m_inverted(false)
    , m_baseLine(0.0)
    , m_logarithmic(false)
    , m_axis(nullptr)
    , m_cache(nullptr)
{
}

KelChartAxisScale::KelChartAxisScale(const KelChartAxis& axis, const KelChartVariableListCache& cache)
    : KelChartAxisScale()
{
    m_axis = &axis;
    m_cache = &cache;
    if (!axis.enabled.get())
        return;
    const QString name = axis.name();
    for (size_t i = 0; i < cache.size() && !m_valid; ++i)
        m_valid = cache.cache(i).valid() && namesAxis(cache.cache(i), name);
    if (m_valid) {
        m_axisName = name;
        m_inverted = axis.inverted.get();
    }
}

KelChartAxisScale::KelChartAxisScale(const KelChartAxisScale& other) = default;
KelChartAxisScale::KelChartAxisScale(KelChartAxisScale&& other) noexcept = default;
KelChartAxisScale& KelChartAxisScale::operator=(const KelChartAxisScale& other) = default;
KelChartAxisScale& KelChartAxisScale::operator=(KelChartAxisScale&& other) noexcept = default;
KelChartAxisScale::~KelChartAxisScale() = default;

void KelChartAxisScale::reset()
{
    m_min = 0.0;
    m_max = 0.0;
    m_size = 0;
    m_discrete = false;
    m_inverted = false;
    m_factor = 1.0;
    m_values.clear();
    m_percentages.clear();
    m_labels.clear();
    m_axisName.clear();
    m_baseLine = 0.0;
    m_offsetText.clear();
    m_logarithmic = false;
    m_realValues.clear();
    m_minorTicks.clear();
}

void KelChartAxisScale::update(unsigned int tickCount, const Orv::Math::NumberFormat& format)
{
    if (!m_valid || m_axis == nullptr || m_cache == nullptr)
        return;
    reset();
    m_axisName = m_axis->name();
    m_inverted = m_axis->inverted.get();
    const QString type = m_axis->type();
    const auto* continuous = dynamic_cast<const KelChartAxisContinuous*>(m_axis);
    const auto* time = dynamic_cast<const KelChartAxisTime*>(m_axis);
    if (type == KelChartAxisContinuous::typeString && continuous && continuous->logarithmic.get()) {
        updateLogarithmic(*continuous, tickCount, format);
    } else if (type == KelChartAxisContinuous::typeString && continuous) {
        updateContinuous(*continuous, tickCount, format);
    } else if (type == KelChartAxisTime::typeString && time) {
        updateTime(*time, tickCount, format);
    } else if (const auto* discrete = dynamic_cast<const KelChartAxisDiscrete*>(m_axis)) {
        m_discrete = true;
        updateDiscrete(*discrete);
    } else {
        // A plain "chart.axis" has neither a range nor categories.
        m_valid = false;
    }
    updateBaseLine();
}

void KelChartAxisScale::updateContinuous(const KelChartAxisContinuous& axis, unsigned int tickCount,
                                         const Orv::Math::NumberFormat& format)
{
    // A request beyond int stays the largest request rather than wrapping negative.
    const int count = static_cast<int>(std::min<unsigned int>(tickCount, INT_MAX));
    Orv::Math::NiceIntervals intervals;
    const bool tight = axis.tightRange.get();
    double lo = 0.0;
    double hi = 0.0;
    if (continuousRange(axis, lo, hi))
        intervals = Orv::Math::NiceIntervals(lo, hi, count, !tight, true, format);
    takeTicks(intervals);
    // Ranges the intervals cannot tick (too narrow for distinct values) stay empty and invalid.
    if (tight && intervals.size() > 0)
        keepRange(lo, hi);
    m_valid = m_max > m_min;
}

bool KelChartAxisScale::continuousRange(const KelChartAxisContinuous& axis, double& lo, double& hi) const
{
    if (!axis.autoScale.get() && axis.min.get() < axis.max.get()) {
        lo = axis.min.get();
        hi = axis.max.get();
        return true;
    }
    return continuousDataRange(lo, hi);
}

void KelChartAxisScale::updateLogarithmic(const KelChartAxisContinuous& axis, unsigned int tickCount,
                                          const Orv::Math::NumberFormat& format)
{
    m_logarithmic = true;
    double lo = 0.0;
    double hi = 1.0;
    if (!logarithmicRange(axis, lo, hi)) {
        // Nothing positive to show: one decade, 1 to 10.
        lo = 0.0;
        hi = 1.0;
    }
    const int count = static_cast<int>(std::min<unsigned int>(tickCount, INT_MAX));
    if (axis.tightRange.get()) {
        takeLogTicks(tightLogTicks(lo, hi, count, format), lo, hi);
    } else {
        const Orv::Math::LogTicks ticks(lo, hi, count, format);
        takeLogTicks(ticks, ticks.min(), ticks.max());
    }
    m_valid = m_max > m_min;
}

bool KelChartAxisScale::logarithmicRange(const KelChartAxisContinuous& axis, double& lo, double& hi) const
{
    const double fixedMin = axis.min.get();
    const double fixedMax = axis.max.get();
    if (!axis.autoScale.get() && fixedMin < fixedMax) {
        if (fixedMin > 0) {
            lo = std::log10(fixedMin);
            hi = std::log10(fixedMax);
            return true;
        }
        orvdebug::warning("logarithmic axis \"", m_axisName, "\": its fixed range ", fixedMin, " to ", fixedMax,
                          " reaches zero or below; it is scaled to the data");
    }
    return continuousDataRange(lo, hi, true);
}

void KelChartAxisScale::takeLogTicks(const Orv::Math::LogTicks& ticks, double lo, double hi)
{
    m_min = lo;
    m_max = hi;
    m_factor = ticks.factor();
    for (int i = 0; i < ticks.size(); ++i) {
        const Orv::Math::LogTicks::Tick& tick = ticks.major(i);
        if (!inside(tick.position, lo, hi))
            continue;
        m_values.push_back(tick.position);
        m_realValues.push_back(tick.value);
        m_labels.push_back(QString::fromStdString(tick.label));
        m_percentages.push_back(relativePosition(tick.position));
    }
    m_size = static_cast<unsigned int>(m_values.size());
    for (int i = 0; i < ticks.minorCount(); ++i) {
        const Orv::Math::LogTicks::Tick& tick = ticks.minor(i);
        if (inside(tick.position, lo, hi))
            m_minorTicks.push_back(MinorTick{tick.position, tick.value, relativePosition(tick.position),
                                             QString::fromStdString(tick.label)});
    }
}

void KelChartAxisScale::updateTime(const KelChartAxisTime& axis, unsigned int tickCount,
                                   const Orv::Math::NumberFormat& format)
{
    const KelChartEpochConversion epoch(axis.unitLabel.get());
    if (!epoch.valid()) {
        orvdebug::warning("time axis \"", m_axisName, "\": \"", axis.unitLabel.get(),
                          "\" is not a timestamp unit; its ticks are plain numbers");
        updateContinuous(axis, tickCount, format);
        return;
    }
    double lo = 0.0;
    double hi = 0.0;
    if (!continuousRange(axis, lo, hi)) {
        // No data along the axis and no fixed range: nothing to show, as for a continuous axis.
        m_valid = false;
        return;
    }
    const int count = static_cast<int>(std::min<unsigned int>(tickCount, INT_MAX));
    const Orv::Math::CalendarTicks ticks(epoch.toEpoch(lo), epoch.toEpoch(hi), count, timeZoneOf(axis),
                                         axis.labelFormat.get().toStdString());
    // Beyond the calendar (years 1 to 9999, spans of microseconds) numbers are all there is to show.
    if (ticks.size() < 2 || !std::isfinite(lo) || !std::isfinite(hi)) {
        updateContinuous(axis, tickCount, format);
        return;
    }
    m_min = lo;
    m_max = hi;
    m_valid = m_max > m_min;
    takeCalendarTicks(ticks, epoch);
}

void KelChartAxisScale::takeCalendarTicks(const Orv::Math::CalendarTicks& ticks, const KelChartEpochConversion& epoch)
{
    m_size = static_cast<unsigned int>(ticks.size());
    m_values.resize(m_size);
    for (unsigned int i = 0; i < m_size; ++i)
        m_values[i] = ticks.value(static_cast<int>(i));
    epoch.fromEpoch(m_values);
    m_labels.reserve(m_size);
    m_percentages.reserve(m_size);
    for (unsigned int i = 0; i < m_size; ++i) {
        m_labels.push_back(QString::fromStdString(ticks.label(static_cast<int>(i))));
        const double fraction = (m_values[i] - m_min) / (m_max - m_min);
        m_percentages.push_back(m_inverted ? 1.0 - fraction : fraction);
    }
    m_offsetText = QString::fromStdString(ticks.offsetText());
}

namespace {

// Whether the cache holds a defined value along x, or along y: the points with
// both defined, or those with only this component defined.
bool hasDefinedX(const KelChartVariableCache& cache)
{
    return !cache.x().empty() || !cache.yUndef().empty();
}

bool hasDefinedY(const KelChartVariableCache& cache)
{
    return !cache.y().empty() || !cache.xUndef().empty();
}

} // namespace

bool KelChartAxisScale::continuousDataRange(double& lo, double& hi, bool definedOnly) const
{
    bool found = false;
    double margin = 0.0;
    lo = 0.0;
    hi = 1.0;
    for (size_t i = 0; i < m_cache->size(); ++i) {
        const KelChartVariableCache& cache = m_cache->cache(i);
        if (!cache.valid())
            continue;
        const KelChartVariable& variable = cache.variable();
        double low;
        double high;
        if (variable.xAxis.get() == m_axisName) {
            if (definedOnly && !hasDefinedX(cache))
                continue;
            low = cache.bounds().min().x();
            high = cache.bounds().max().x();
            margin = std::max(margin, 0.02);
        } else if (variable.yAxis.get() == m_axisName) {
            if (definedOnly && !hasDefinedY(cache))
                continue;
            low = cache.bounds().min().y();
            high = cache.bounds().max().y();
            // A flat range has no width to widen by; it gets a margin of the union instead.
            if (low == high) {
                margin = std::max(margin, 0.05);
            } else {
                const double d = (high - low) / 20;
                low -= d;
                high += d;
            }
        } else {
            continue;
        }
        lo = found ? std::min(lo, low) : low;
        hi = found ? std::max(hi, high) : high;
        found = true;
    }
    if (margin > 0)
        ExpandRange<double>(lo, hi, margin);
    return found;
}

void KelChartAxisScale::takeTicks(const Orv::Math::NiceIntervals& intervals)
{
    m_min = intervals.min();
    m_max = intervals.max();
    m_factor = intervals.factor;
    m_size = static_cast<unsigned int>(intervals.size());
    m_values.reserve(m_size);
    m_labels.reserve(m_size);
    m_percentages.reserve(m_size);
    for (int i = 0; i < intervals.size(); ++i) {
        m_values.push_back(intervals.value(i));
        m_labels.push_back(QString::fromStdString(intervals.label(i)));
        m_percentages.push_back(intervals.fraction(i, m_inverted));
    }
}

void KelChartAxisScale::keepRange(double lo, double hi)
{
    m_min = lo;
    m_max = hi;
    for (size_t i = 0; i < m_values.size(); ++i)
        m_percentages[i] = relativePosition(m_values[i]);
}

double KelChartAxisScale::relativePosition(double value) const
{
    if (!(m_max > m_min))
        return 0.0;
    const double fraction = (value - m_min) / (m_max - m_min);
    return m_inverted ? 1.0 - fraction : fraction;
}

void KelChartAxisScale::updateDiscrete(const KelChartAxisDiscrete& axis)
{
    discreteDataRange();
    const double lo = axis.viewMin.get();
    const double hi = axis.viewMax.get();
    if (m_max > m_min && lo < hi && std::isfinite(lo) && std::isfinite(hi)) {
        takeCategoryWindow(axis, lo, hi);
        return;
    }
    if (!axis.autoScale.get())
        narrowToFixedRange(axis);
    // Whole slots, as a double: a range may hold more of them than any unsigned counts.
    const double slots = m_max > m_min ? std::floor(m_max - m_min) : 0.0;
    takeCategories(axis, slots);
    m_size = truncatedWidth(m_max - m_min);
    m_valid = m_max > m_min && m_min >= 0;
}

void KelChartAxisScale::discreteDataRange()
{
    m_min = noCategory;
    m_max = 0.0;
    for (size_t i = 0; i < m_cache->size(); ++i) {
        const KelChartVariableCache& cache = m_cache->cache(i);
        if (!cache.valid() || cache.variable().xAxis.get() != m_axisName)
            continue;
        m_min = std::min(m_min, static_cast<double>(cache.bounds().min().x()));
        m_max = std::max(m_max, static_cast<double>(cache.bounds().max().x() + 1.0f));
    }
    if (m_cache->size() == 0 || m_min == noCategory || m_max == 0.0) {
        m_min = 0.0;
        m_max = 0.0;
    }
}

// A fixed range can only narrow the data's range: bounds outside it are ignored.
void KelChartAxisScale::narrowToFixedRange(const KelChartAxisDiscrete& axis)
{
    const double first = axis.min.get();
    const double end = axis.max.get();
    if (first >= 0 && first < m_max && first >= m_min)
        m_min = first;
    if (end > m_min && end <= m_max)
        m_max = end;
}

// Labels from the first shown category on, all of them, then empty fillers up
// to the end of the range while the scale holds fewer than MaxDiscreteEntries.
void KelChartAxisScale::takeCategories(const KelChartAxisDiscrete& axis, double slots)
{
    // Walking the labels moves only the iterator's position, none of the axis's settings.
    KelLabelIterInterface& labels = const_cast<KelLabelIter&>(axis.labels);
    const double step = categoryStep(slots);
    // Reserved up front: regrowing arrays of up to a million entries costs more than filling them.
    const auto expected = static_cast<size_t>(std::min(slots, static_cast<double>(MaxDiscreteEntries)));
    m_values.reserve(expected);
    m_labels.reserve(expected);
    m_percentages.reserve(expected);
    labels.reset();
    // Category indices as doubles: a range may reach beyond every int.
    double n = 0;
    if (m_min > 0) {
        while (labels.next() && ++n < m_min) {
        }
    }
    for (; labels.next(); ++n)
        appendCategory(labels.currentLabel(), n, step);
    // Labels that ran out before the first shown category leave fillers from where they ended, below
    // the range; the limit below bounds them too.
    for (; n < m_max; ++n) {
        if (m_values.size() >= MaxDiscreteEntries) {
            warnEntryLimit(m_axisName);
            break;
        }
        appendCategory(QString(), n, step);
    }
}

// The categories whose slot centres lie in the window [lo, hi], placed
// relative to it; the window may reach past the data on either side.
void KelChartAxisScale::takeCategoryWindow(const KelChartAxisDiscrete& axis, double lo, double hi)
{
    KelLabelIterInterface& labels = const_cast<KelLabelIter&>(axis.labels);
    m_min = lo;
    m_max = hi;
    const double first = std::max(0.0, std::ceil(lo - 0.5));
    const double last = std::floor(hi - 0.5);
    const auto add = [this, lo, hi](const QString& label, double n) {
        m_labels.push_back(label);
        m_values.push_back(n);
        m_percentages.push_back(static_cast<float>((n + 0.5 - lo) / (hi - lo)));
    };
    labels.reset();
    double n = 0;
    for (; n <= last && labels.next(); ++n)
        if (n >= first)
            add(labels.currentLabel(), n);
    for (n = std::max(n, first); n <= last && m_values.size() < MaxDiscreteEntries; ++n)
        add(QString(), n);
    m_size = static_cast<unsigned int>(m_values.size());
    m_valid = true;
}

void KelChartAxisScale::appendCategory(const QString& label, double value, double step)
{
    m_labels.push_back(label);
    m_values.push_back(value);
    const auto slotCentre = static_cast<float>(value - m_min + 0.5);
    m_percentages.push_back(slotCentre * step);
}

void KelChartAxisScale::updateBaseLine()
{
    m_baseLine = KelChartBaseLine(m_min, m_max);
}
