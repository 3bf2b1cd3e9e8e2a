#include "NiceIntervals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>

namespace Orv::Math {

namespace {

constexpr int MinStepExponent = -300;
constexpr int MaxStepExponent = 308;
// Multiples beyond this are not all distinct doubles.
constexpr double MaxMultiple = 1125899906842624.0; // 2^50
// Below this every integer is exact in a double, so k × digits is too.
constexpr double MaxExactInteger = 9007199254740992.0; // 2^53
// The step bases q in order of preference, which is also their rank in the simplicity score,
// as digits × 10^shift: 2.5 is 25 × 10^-1.
constexpr int BaseDigits[] = {1, 5, 2, 25, 4, 3};
constexpr int BaseShift[] = {0, 0, 0, -1, 0, 0};
constexpr double BaseValue[] = {1, 5, 2, 2.5, 4, 3};
constexpr int BaseCount = 6;
// Every j-th multiple of q: skipping costs 1 in simplicity per j, so large j never win; the cap
// only bounds the search when nothing fits at all.
constexpr int MaxSkip = 10;
// Decades of 10^z tried around that of span / count. Steps further out score far below a step
// near the wanted density; the lower limit keeps the tick count bounded (at most about 1000 ×
// count) when coarse steps overflow near the largest doubles.
constexpr int DecadesBelow = 2;
constexpr int DecadesAbove = 3;
// Legibility parts, see the header.
constexpr double DecimalLegibility = 1.0;
constexpr double FactoredLegibility = 0.5;
constexpr double ScientificLegibility = 0.3;
constexpr double ConstantLegibilityParts = 3.0; // font size, orientation, overlap
// Slack for rounding in the score bounds.
constexpr double BoundSlack = 1e-9;

constexpr double ExactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int LastExactPower = 22;

// 10^z for 0 <= z <= MaxStepExponent, the double nearest it. Beyond 10^22 powers of ten are not
// exact; those are parsed once, like the compiler's own literals.
double powerOfTen(int z)
{
    if (z <= LastExactPower)
        return ExactPowersOfTen[z];
    static const auto inexact = [] {
        std::array<double, MaxStepExponent - LastExactPower> powers{};
        char text[8] = {'1', 'e'};
        for (int e = LastExactPower + 1; e <= MaxStepExponent; ++e) {
            char* end = std::to_chars(text + 2, text + sizeof text, e).ptr;
            std::from_chars(text, end, powers[static_cast<std::size_t>(e - LastExactPower - 1)]);
        }
        return powers;
    }();
    return inexact[static_cast<std::size_t>(z - LastExactPower - 1)];
}

// n × 10^z for |z| <= MaxStepExponent, in a single rounding while 10^|z| is exact.
double scaled(double n, int z)
{
    return z >= 0 ? n * powerOfTen(z) : n / powerOfTen(-z);
}

// floor and ceil for |x| < 2^50, without a library call.
std::int64_t floorToInteger(double x)
{
    const auto k = static_cast<std::int64_t>(x);
    return static_cast<double>(k) > x ? k - 1 : k;
}

std::int64_t ceilToInteger(double x)
{
    const auto k = static_cast<std::int64_t>(x);
    return static_cast<double>(k) < x ? k + 1 : k;
}

int digitCount(std::int64_t magnitude)
{
    int count = 1;
    for (; magnitude >= 10; magnitude /= 10)
        ++count;
    return count;
}

// The largest multiple of 3 not above e.
int engineeringExponent(int e)
{
    return 3 * static_cast<int>(std::floor(e / 3.0));
}

// The power of ten the labels are divided by, for ticks whose largest magnitude lies in
// [10^largestExponent, 10^(largestExponent + 1)) and whose step's last digit is at 10^stepExponent.
int labelFactorExponent(int largestExponent, int stepExponent)
{
    // Labels need at most two decimals when the step's last digit stays at 10^-2 or above.
    const int fewDecimals = engineeringExponent(stepExponent + 2);
    if (largestExponent >= NiceIntervals::LargeExponent)
        return std::max(0, std::min(engineeringExponent(largestExponent), fewDecimals));
    if (largestExponent < NiceIntervals::SmallExponent)
        return std::min(engineeringExponent(largestExponent), fewDecimals);
    return 0;
}


// A step j × q × 10^z, kept as the integer digits × 10^exponent so that ticks are exact.
struct Step {
    int rank = 0; // of q
    int skip = 1; // j
    std::int64_t digits = 1;
    int exponent = 0;
    double size = 1.0;

    double tick(std::int64_t k) const { return scaled(static_cast<double>(k * digits), exponent); }
};

std::optional<Step> makeStep(int rank, int skip, int z)
{
    Step s{rank, skip, static_cast<std::int64_t>(BaseDigits[rank]) * skip, z + BaseShift[rank], 0.0};
    // A skipped step such as 2 × 5 is 10: its labels get the precision of 10, not of 1.0.
    while (s.digits % 10 == 0) {
        s.digits /= 10;
        ++s.exponent;
    }
    if (s.exponent < MinStepExponent || s.exponent > MaxStepExponent)
        return std::nullopt;
    s.size = scaled(static_cast<double>(s.digits), s.exponent);
    if (!std::isfinite(s.size))
        return std::nullopt;
    return s;
}

// How the labels of ticks from..to of a step are written.
struct LabelStyle {
    int factorExponent = 0;
    int largestExponent = 0;
    NumberFormat::Notation notation = NumberFormat::Notation::Fixed;
};

LabelStyle labelStyle(const Step& s, std::int64_t first, std::int64_t last, bool factorLabels,
                      NumberFormat::Notation notation)
{
    LabelStyle style;
    const std::int64_t largestDigits = std::max(std::abs(first), std::abs(last)) * s.digits;
    style.largestExponent = digitCount(largestDigits) - 1 + s.exponent;
    if (factorLabels && largestDigits != 0)
        style.factorExponent = labelFactorExponent(style.largestExponent, s.exponent);
    style.notation = notation;
    if (notation == NumberFormat::Notation::Automatic)
        style.notation = NumberFormat::automaticNotation(s.exponent - style.factorExponent,
                                                         style.largestExponent - style.factorExponent);
    return style;
}

// The data range and what is wanted of its ticks.
struct Request {
    double min;
    double max;
    double span;
    int count;
    bool loose;
    bool factorLabels;
    NumberFormat::Notation notation;
    // For the bounds: 1 / count, and the largest span in steps for which zero can be a tick.
    double inverseCount;
    double zeroReachableUpTo;
};

Request makeRequest(double min, double max, int count, bool loose, bool factorLabels, NumberFormat::Notation notation)
{
    Request r{min, max, max - min, count, loose, factorLabels, notation, 1.0 / count, 0.0};
    if (min <= 0.0 && max >= 0.0)
        r.zeroReachableUpTo = std::numeric_limits<double>::infinity();
    else if (loose) // the step must reach from zero past the nearer end
        r.zeroReachableUpTo = r.span / std::min(std::fabs(min), std::fabs(max)) * (1.0 + BoundSlack);
    else
        r.zeroReachableUpTo = -1.0;
    return r;
}

// One candidate: the ticks first..last of a step.
struct Labeling {
    Step step;
    std::int64_t first = 0;
    std::int64_t last = -1;
    double score = -std::numeric_limits<double>::infinity();
};

// Whether a quotient below 2^50 may be an integer up to its rounding errors (a few units in
// the last place).
bool nearInteger(double x)
{
    const double fraction = x - static_cast<double>(floorToInteger(x));
    const double tolerance = 1e-9 * std::max(1.0, std::fabs(x));
    return fraction <= tolerance || fraction >= 1.0 - tolerance;
}

// The multiple tightest at or below x, given quotient = x / step. Away from an integer the
// quotient decides alone; near one, the exact tick values do.
std::int64_t multipleAtOrBelow(const Step& s, double quotient, double x)
{
    auto k = floorToInteger(quotient);
    if (!nearInteger(quotient))
        return k;
    if (s.tick(k + 1) <= x)
        ++k;
    else if (s.tick(k) > x)
        --k;
    return k;
}

std::int64_t multipleAtOrAbove(const Step& s, double quotient, double x)
{
    auto k = ceilToInteger(quotient);
    if (!nearInteger(quotient))
        return k;
    if (s.tick(k - 1) >= x)
        --k;
    else if (s.tick(k) < x)
        ++k;
    return k;
}

double square(double x)
{
    return x * x;
}

double simplicity(const Step& s, bool zeroIsTick)
{
    return 1.0 - s.rank / (BaseCount - 1.0) - s.skip + (zeroIsTick ? 1.0 : 0.0);
}

// 2 - max(ratio, 1 / ratio), ratio = the extent of data and ticks, in steps, over the wanted intervals.
double density(double extentInSteps, int count)
{
    const double ratio = extentInSteps / count;
    return 2.0 - std::max(ratio, 1.0 / ratio);
}

// The coverage when the ticks leave `gap` in all between them and the data ends, split evenly,
// which is the most it can be: 1 - 25 (gap / span)^2.
double coverageBound(double gapInSpans)
{
    return 1.0 - 25.0 * square(gapInSpans);
}

double weighted(double simplicity, double coverage, double density, double legibility)
{
    return 0.25 * simplicity + 0.2 * coverage + 0.5 * density + 0.05 * legibility;
}

double legibility(const LabelStyle& style)
{
    const double format = style.notation == NumberFormat::Notation::Scientific ? ScientificLegibility
                          : style.factorExponent != 0                          ? FactoredLegibility
                                                                               : DecimalLegibility;
    return (format + ConstantLegibilityParts) / (ConstantLegibilityParts + 1.0);
}

// 2 - max(n / count, count / n) for n > 0 steps.
double densityOfSteps(const Request& r, double n)
{
    return 2.0 - std::max(n * r.inverseCount, r.count / n);
}

// The best coverage and density a step can reach, known before laying it out, from the span in
// steps u alone. Enclosing ticks span n = ceil(u) or n + 1 steps, the data inside; inner ones
// floor(u) or one less, inside the data, whose extent sets the density.
double spreadBound(const Request& r, double u)
{
    const double inverseU = 1.0 / u;
    if (r.loose) {
        const double n = std::max(1.0, std::ceil(u * (1.0 - BoundSlack)));
        const auto part = [&](double steps) {
            return 0.2 * coverageBound(std::max(0.0, steps - u) * inverseU) + 0.5 * densityOfSteps(r, steps);
        };
        return std::max(part(n), part(n + 1.0));
    }
    const double n = std::floor(u * (1.0 + BoundSlack));
    if (n < 1.0)
        return -std::numeric_limits<double>::infinity(); // at most one tick
    return 0.2 * coverageBound(std::max(0.0, u - n) * inverseU) + 0.5 * densityOfSteps(r, u);
}

// A looser bound than spreadBound, but one that only grows towards u = count from either side,
// so that once it falls below the best score, steps further out need not be tried.
double spreadEnvelope(const Request& r, double u)
{
    if (!r.loose)
        return u >= 1.0 ? 0.2 + 0.5 * densityOfSteps(r, u) : -std::numeric_limits<double>::infinity();
    if (u >= r.count) // more steps than wanted: density falls with u
        return 0.2 + 0.5 * std::min(1.0, 2.0 - u * r.inverseCount);
    const double coverage = u < 1.0 ? coverageBound(1.0 / u - 1.0) : 1.0;
    return 0.2 * coverage + 0.5 * std::min(1.0, 2.0 - r.count / (u + 2.0));
}

std::optional<Labeling> layOut(const Request& r, const Step& s)
{
    const double low = r.min / s.size;
    const double high = r.max / s.size;
    const double limit = std::min(MaxMultiple, MaxExactInteger / static_cast<double>(s.digits));
    if (!(std::fabs(low) < limit && std::fabs(high) < limit))
        return std::nullopt;

    Labeling l;
    l.step = s;
    l.first = r.loose ? multipleAtOrBelow(s, low, r.min) : multipleAtOrAbove(s, low, r.min);
    l.last = r.loose ? multipleAtOrAbove(s, high, r.max) : multipleAtOrBelow(s, high, r.max);
    if (l.last < l.first || !std::isfinite(s.tick(l.first)) || !std::isfinite(s.tick(l.last)))
        return std::nullopt;
    return l;
}

// The score with legibility taken as 1, its most.
double scoreBeforeLegibility(const Labeling& l, const Request& r)
{
    const double lmin = l.step.tick(l.first);
    const double lmax = l.step.tick(l.last);
    const double coverage =
        1.0 - 0.5 * (square((r.max - lmax) / (0.1 * r.span)) + square((r.min - lmin) / (0.1 * r.span)));
    // Counted in steps, the extent cannot overflow however large the values.
    const double extent = static_cast<double>(l.last - l.first) + std::max(0.0, (r.max - lmax) / l.step.size)
                          + std::max(0.0, (lmin - r.min) / l.step.size);
    const double spread = l.last > l.first ? density(extent, r.count) : -std::numeric_limits<double>::infinity();
    return weighted(simplicity(l.step, l.first <= 0 && l.last >= 0), coverage, spread, 1.0);
}

// Lays out the step and keeps it when it beats the best so far.
void consider(const Request& r, const Step& s, std::optional<Labeling>& best)
{
    auto candidate = layOut(r, s);
    if (!candidate)
        return;
    const double upper = scoreBeforeLegibility(*candidate, r);
    if (best && !(upper > best->score))
        return;
    const LabelStyle style = labelStyle(s, candidate->first, candidate->last, r.factorLabels, r.notation);
    candidate->score = upper - 0.05 * (1.0 - legibility(style));
    if (!best || candidate->score > best->score)
        best = candidate;
}

// Tries the steps j × q × 10^z over z, outwards from span / count, while their bounds can still
// beat the best. unitsInSpan is span / 10^centre.
void searchDecades(const Request& r, int rank, int skip, int centre, double unitsInSpan,
                   std::optional<Labeling>& best)
{
    const double bestSimplicity = 2.0 - rank / (BaseCount - 1.0) - skip;
    // u is the span in steps, r.count where the density is best.
    const auto visit = [&](int z, double u, bool downwards) {
        const double floor = best ? best->score - BoundSlack : -std::numeric_limits<double>::infinity();
        if (0.25 * bestSimplicity + spreadEnvelope(r, u) + 0.05 < floor)
            return downwards ? u < r.count : u > r.count; // still before the peak: go on
        const double zeroPart = u <= r.zeroReachableUpTo ? 0.0 : 0.25;
        if (0.25 * bestSimplicity - zeroPart + spreadBound(r, u) + 0.05 < floor)
            return true;
        if (const auto s = makeStep(rank, skip, z))
            consider(r, *s, best);
        return true;
    };
    // The largest z whose step is at most span / count, roughly; the walks check both sides.
    const double q = BaseValue[rank] * skip;
    const int start = centre - (q >= 10.0 ? 1 : 0);
    const double startU = unitsInSpan / q * (q >= 10.0 ? 10.0 : 1.0);
    double u = startU;
    for (int z = start; z >= centre - DecadesBelow && visit(z, u, true); --z)
        u *= 10.0;
    u = startU * 0.1;
    for (int z = start + 1; z <= centre + DecadesAbove && visit(z, u, false); ++z)
        u *= 0.1;
}

// The decimal exponent of x > 0: floor(log10(x)), up to rounding at exact powers of ten.
int decimalExponent(double x)
{
    return static_cast<int>(std::floor(std::log10(x)));
}

std::optional<Labeling> bestLabeling(const Request& r)
{
    const double roughStep = r.span / r.count;
    if (!(roughStep > 0.0))
        return std::nullopt;
    const int centre = decimalExponent(roughStep);
    const double unitsInSpan = scaled(r.span, -std::clamp(centre, -MaxStepExponent, MaxStepExponent));

    std::optional<Labeling> best;
    for (int skip = 1; skip <= MaxSkip; ++skip) {
        for (int rank = 0; rank < BaseCount; ++rank) {
            // Simplicity only falls from here on: once even a perfect rest cannot win, stop.
            const double bestSimplicity = 2.0 - rank / (BaseCount - 1.0) - skip;
            if (best && weighted(bestSimplicity, 1.0, 1.0, 1.0) < best->score - BoundSlack)
                return best;
            searchDecades(r, rank, skip, centre, unitsInSpan, best);
        }
    }
    return best;
}

} // namespace

NiceIntervals::NiceIntervals(double min, double max, int count, bool loose, bool factorLabels,
                             const NumberFormat& format)
    : m_format(format)
{
    if (!(std::isfinite(min) && std::isfinite(max) && min < max))
        return;
    const double span = max - min;
    if (!std::isfinite(span))
        return;
    const Request request = makeRequest(min, max, std::clamp(count, 1, MaxCount), loose, factorLabels, format.notation);
    const auto best = bestLabeling(request);
    if (!best)
        return;

    const Step& step = best->step;
    m_first = best->first;
    m_size = static_cast<int>(best->last - best->first + 1);
    m_stepDigits = step.digits;
    m_stepExponent = step.exponent;
    m_min = value(0);
    m_max = value(m_size - 1);

    const LabelStyle style = labelStyle(step, best->first, best->last, factorLabels, format.notation);
    m_factorExponent = style.factorExponent;
    factor = scaled(1.0, m_factorExponent);
    m_format.notation = style.notation;
}

double NiceIntervals::value(int i) const
{
    return scaled(static_cast<double>((m_first + i) * m_stepDigits), m_stepExponent);
}

std::string NiceIntervals::label(int i) const
{
    return m_format.format(Decimal{(m_first + i) * m_stepDigits, m_stepExponent - m_factorExponent});
}

double NiceIntervals::fraction(int i, bool inverted) const
{
    if (m_size < 2)
        return 0.0;
    const double f = static_cast<double>(i) / (m_size - 1);
    return inverted ? 1.0 - f : f;
}

double NiceIntervals::step() const
{
    return m_size > 0 ? scaled(static_cast<double>(m_stepDigits), m_stepExponent) : 0.0;
}

} // namespace Orv::Math
