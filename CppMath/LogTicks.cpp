#include "LogTicks.h"

#include "NiceIntervals.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <iterator>
#include <utility>
#include <limits>

namespace Orv::Math {

namespace {

constexpr int MaxCount = 1000;
// Positions this close count as equal: far below any visible distance, far above the rounding
// of a logarithm.
constexpr double Tolerance = 1e-9;
// Decade strides: 1, 2, 5 × 10^n, enough for the 631 decades of the doubles.
constexpr int Strides[] = {1, 2, 5, 10, 20, 50, 100, 200, 500, 1000};
// Strides up to this show the skipped decades as minors; wider ones would crowd them.
constexpr int WidestStrideWithMinors = 10;
// Powers of ten written in fixed notation at most: "0.0001" and "100000".
constexpr int ShortestFixedExponent = -4;
constexpr int LongestFixedExponent = 5;

// m × 10^k as people write it where exponents are needed: "10⁶", "10⁻¹²", "2×10⁶" (UTF-8).
std::string powerText(int m, int k)
{
    static const char* const superscripts[] = {"⁰", "¹", "²", "³", "⁴", "⁵", "⁶", "⁷", "⁸", "⁹"};
    std::string text = m == 1 ? "10" : std::to_string(m) + "×10";
    if (k < 0)
        text += "⁻";
    const std::string digits = std::to_string(k < 0 ? -k : k);
    for (const char digit : digits)
        text += superscripts[digit - '0'];
    return text;
}

// m × 10^k as a tick, or nothing when the double cannot hold it. `powers`: labelled as a power of
// ten rather than in the format.
bool makeTick(int m, int k, const NumberFormat& format, bool powers, LogTicks::Tick& tick)
{
    tick.value = Decimal{m, k}.toDouble();
    if (!(tick.value > 0.0) || !std::isfinite(tick.value))
        return false;
    tick.position = k + std::log10(static_cast<double>(m));
    tick.label = powers ? powerText(m, k) : format.format(Decimal{m, k});
    return true;
}

// A position as a decade exponent a double can hold, for loops over decades.
int clampedExponent(double position)
{
    return static_cast<int>(std::clamp<double>(position, LogTicks::MinExponent, LogTicks::MaxExponent));
}

// Intervals between majors for a stride, the range rounded out to multiples of it.
double intervalsFor(double lo, double hi, int stride)
{
    return std::ceil(hi / stride) - std::floor(lo / stride);
}

// The stride whose number of intervals comes closest, as a ratio, to `count`.
int strideFor(double lo, double hi, int count)
{
    int best = Strides[0];
    double bestMisfit = std::numeric_limits<double>::infinity();
    for (const int stride : Strides) {
        const double n = std::max(1.0, intervalsFor(lo, hi, stride));
        const double misfit = std::max(n / count, count / n);
        if (misfit < bestMisfit) {
            best = stride;
            bestMisfit = misfit;
        }
    }
    return best;
}

// The largest m × 10^k (m in 1..9) at or below the position, as (m, k): exactly, so that the
// range always encloses the data.
std::pair<int, int> minorAtOrBelow(double position)
{
    const int k = static_cast<int>(std::floor(position));
    int m = 9;
    while (m > 1 && k + std::log10(static_cast<double>(m)) > position)
        --m;
    return {m, k};
}

// The smallest m × 10^k (m in 1..9) at or above the position.
std::pair<int, int> minorAtOrAbove(double position)
{
    const int k = static_cast<int>(std::floor(position));
    for (int m = 1; m <= 9; ++m) {
        if (k + std::log10(static_cast<double>(m)) >= position)
            return {m, k};
    }
    return {1, k + 1};
}

} // namespace

LogTicks::LogTicks(double lo, double hi, int count, const NumberFormat& format)
    : m_format(format)
    , m_automaticNotation(format.notation == NumberFormat::Notation::Automatic)
{
    if (!(std::isfinite(lo) && std::isfinite(hi) && lo < hi))
        return;
    count = std::clamp(count, 1, MaxCount);
    if (hi - lo < 1.0)
        placeLinear(lo, hi, count);
    if (m_regime == Regime::Empty)
        placeDecades(lo, hi, count);
}

void LogTicks::placeLinear(double lo, double hi, int count)
{
    const NiceIntervals intervals(std::pow(10.0, lo), std::pow(10.0, hi), count, true, true, m_format);
    for (int i = 0; i < intervals.size(); ++i) {
        if (intervals.value(i) > 0.0)
            m_majors.push_back(Tick{std::log10(intervals.value(i)), intervals.value(i), intervals.label(i)});
    }
    if (m_majors.size() < 2) {
        m_majors.clear();
        return;
    }
    m_regime = Regime::Linear;
    // A first tick at or below zero has no position: the range then starts at the data.
    m_min = intervals.value(0) > 0.0 ? m_majors.front().position : lo;
    m_max = m_majors.back().position;
    // Powers of the exponents round: a range narrower than their precision still encloses the data.
    m_min = std::min(m_min, lo);
    m_max = std::max(m_max, hi);
    m_factor = intervals.factor;
}

void LogTicks::placeDecades(double lo, double hi, int count)
{
    // Strides are chosen for the decades a double can show; a wider stride that leaves fewer
    // than two of them inside gives way to the next narrower one.
    const double shownLo = std::max(lo, static_cast<double>(MinExponent));
    const double shownHi = std::min(hi, static_cast<double>(MaxExponent));
    const int* stride = std::find(std::begin(Strides), std::end(Strides), strideFor(shownLo, shownHi, count));
    for (; m_majors.size() < 2; --stride) {
        placeMajors(lo, hi, *stride);
        if (stride == std::begin(Strides))
            break;
    }
    if (m_majors.size() < 2) {
        // Only at the very ends of the doubles: nothing to tick.
        *this = LogTicks();
        return;
    }
    m_regime = Regime::Decades;
    if (m_stride == 1)
        roundToMinors(lo, hi);
    if (m_stride <= WidestStrideWithMinors)
        addMinors(clampedExponent(std::floor(m_min)), clampedExponent(std::ceil(m_max)));
}

// The range rounded out to multiples of the stride, and the powers of ten at them.
void LogTicks::placeMajors(double lo, double hi, int stride)
{
    m_stride = stride;
    m_majors.clear();
    m_min = std::floor(lo / stride) * stride;
    m_max = std::ceil(hi / stride) * stride;
    // A quotient that underflowed (a subnormal exponent over the stride) rounds the wrong way.
    if (m_min > lo)
        m_min -= stride;
    if (m_max < hi)
        m_max += stride;
    // Beyond the doubles a major has no value; the range then ends at the data's decades.
    if (m_min < MinExponent)
        m_min = std::floor(lo);
    if (m_max > MaxExponent)
        m_max = std::ceil(hi);
    if (m_automaticNotation)
        resolveNotation();
    const int first = clampedExponent(std::ceil(m_min));
    const int last = clampedExponent(std::floor(m_max));
    for (int k = first; k <= last; ++k) {
        Tick tick;
        if (k % stride == 0 && makeTick(1, k, m_format, powerLabels(), tick))
            m_majors.push_back(tick);
    }
}

// Narrows the decade range to the minor ticks around the data, while two majors stay inside.
void LogTicks::roundToMinors(double lo, double hi)
{
    // Data beyond the doubles' decades keep the decade range.
    if (lo < MinExponent || hi > MaxExponent)
        return;
    const auto [m0, k0] = minorAtOrBelow(lo);
    const auto [m1, k1] = minorAtOrAbove(hi);
    const double low = k0 + std::log10(static_cast<double>(m0));
    const double high = k1 + std::log10(static_cast<double>(m1));
    const auto inside = std::count_if(m_majors.begin(), m_majors.end(), [&](const Tick& t) {
        return t.position >= low - Tolerance && t.position <= high + Tolerance;
    });
    if (inside < 2)
        return;
    m_min = low;
    m_max = high;
    m_majors.erase(std::remove_if(m_majors.begin(), m_majors.end(),
                                  [&](const Tick& t) {
                                      return t.position < low - Tolerance || t.position > high + Tolerance;
                                  }),
                   m_majors.end());
}

void LogTicks::addMinors(int firstExponent, int lastExponent)
{
    for (int k = firstExponent; k <= lastExponent; ++k) {
        const int firstMantissa = m_stride == 1 ? 2 : 1;
        const int lastMantissa = m_stride == 1 ? 9 : 1;
        for (int m = firstMantissa; m <= lastMantissa; ++m) {
            Tick tick;
            if (m == 1 && k % m_stride == 0)
                continue;
            if (makeTick(m, k, m_format, powerLabels(), tick) && tick.position >= m_min - Tolerance
                && tick.position <= m_max + Tolerance)
                m_minors.push_back(tick);
        }
    }
}

// One notation for every label of the axis: fixed while its powers of ten are written short
// ("0.0001" to "100000"), else powers of ten ("10⁻⁷" to "10⁰", not "0.0000001" beside "1").
void LogTicks::resolveNotation()
{
    const bool shortFixed = m_min >= ShortestFixedExponent && m_max <= LongestFixedExponent;
    m_format.notation = shortFixed ? NumberFormat::Notation::Fixed : NumberFormat::Notation::Scientific;
}

// An automatic notation that needs exponents writes powers of ten; one the caller chose is kept.
bool LogTicks::powerLabels() const
{
    return m_automaticNotation && m_format.notation == NumberFormat::Notation::Scientific;
}

double LogTicks::fraction(double position, bool inverted) const
{
    if (!(m_max > m_min))
        return 0.0;
    const double f = (position - m_min) / (m_max - m_min);
    return inverted ? 1.0 - f : f;
}

} // namespace Orv::Math
