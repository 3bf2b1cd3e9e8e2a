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
// Multiples beyond this are not all distinct doubles; with q <= 5, k·q stays an exact integer.
constexpr double MaxMultiple = 1125899906842624.0; // 2^50
// The nice digits in order of preference, which is also their rank in the quality score.
constexpr int StepDigits[] = {1, 5, 2};
constexpr int StepDigitCount = 3;
constexpr double PreferenceListLength = 6; // 1, 5, 2, 2.5, 4, 3
// Step exponents, as offsets from that of span / count: nearest first, so that the likely best
// comes early and bounds rule out the rest. Steps further away score far below the best one.
constexpr int SearchOrder[] = {0, 1, -1, 2, -2};
constexpr double SearchOrderPowers[] = {1.0, 10.0, 0.1, 100.0, 0.01};

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

// The data range and what is wanted of its ticks.
struct Request {
    double min;
    double max;
    double span;
    int count;
    bool loose;
};

// One candidate: the ticks first..last of the step StepDigits[rank] × 10^exponent.
struct Labeling {
    int rank = 0;
    int exponent = 0;
    std::int64_t first = 0;
    std::int64_t last = -1;
    double score = -std::numeric_limits<double>::infinity();

    int digit() const { return StepDigits[rank]; }
    double tick(std::int64_t k) const { return scaled(static_cast<double>(k * digit()), exponent); }
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
std::int64_t multipleAtOrBelow(const Labeling& l, double quotient, double x)
{
    auto k = floorToInteger(quotient);
    if (!nearInteger(quotient))
        return k;
    if (l.tick(k + 1) <= x)
        ++k;
    else if (l.tick(k) > x)
        --k;
    return k;
}

std::int64_t multipleAtOrAbove(const Labeling& l, double quotient, double x)
{
    auto k = ceilToInteger(quotient);
    if (!nearInteger(quotient))
        return k;
    if (l.tick(k - 1) >= x)
        --k;
    else if (l.tick(k) < x)
        ++k;
    return k;
}

double square(double x)
{
    return x * x;
}

double simplicity(int rank, bool zeroIsTick)
{
    return (zeroIsTick ? 1.0 : 0.0) - rank / (PreferenceListLength - 1);
}

// 2 - max(ratio, 1 / ratio), ratio = the extent of data and ticks, in steps, over the wanted intervals.
double density(double extentInSteps, int count)
{
    const double ratio = extentInSteps / count;
    return 2.0 - std::max(ratio, 1.0 / ratio);
}

double weighted(double simplicity, double coverage, double density)
{
    return 0.25 * simplicity + 0.2 * coverage + 0.5 * density + 0.05;
}

// The best score any labeling with this step can reach, known before laying it out: enclosing
// ticks span the data plus less than two steps, inner ones (with the data beyond them) exactly
// the data. Lets most candidates be skipped.
double scoreBound(const Request& r, int rank, double narrowest)
{
    const double widest = r.loose ? narrowest + 2.0 : narrowest;
    const double bestDensity = 2.0 - std::max(narrowest / r.count, r.count / widest);
    return weighted(simplicity(rank, true), 1.0, bestDensity);
}

double quality(const Labeling& l, const Request& r, double step)
{
    const double lmin = l.tick(l.first);
    const double lmax = l.tick(l.last);
    const double coverage =
        1.0 - 0.5 * (square((r.max - lmax) / (0.1 * r.span)) + square((r.min - lmin) / (0.1 * r.span)));
    // Counted in steps, the extent cannot overflow however large the values.
    const double extent = static_cast<double>(l.last - l.first) + std::max(0.0, (r.max - lmax) / step)
                          + std::max(0.0, (lmin - r.min) / step);
    const double spread = l.last > l.first ? density(extent, r.count) : -std::numeric_limits<double>::infinity();
    return weighted(simplicity(l.rank, l.first <= 0 && l.last >= 0), coverage, spread);
}

std::optional<Labeling> layOut(const Request& r, int rank, int exponent, double step)
{
    Labeling l;
    l.rank = rank;
    l.exponent = exponent;
    const double low = r.min / step;
    const double high = r.max / step;
    if (!std::isfinite(step) || !(std::fabs(low) < MaxMultiple && std::fabs(high) < MaxMultiple))
        return std::nullopt;

    l.first = r.loose ? multipleAtOrBelow(l, low, r.min) : multipleAtOrAbove(l, low, r.min);
    l.last = r.loose ? multipleAtOrAbove(l, high, r.max) : multipleAtOrBelow(l, high, r.max);
    if (l.last < l.first || !std::isfinite(l.tick(l.first)) || !std::isfinite(l.tick(l.last)))
        return std::nullopt;
    l.score = quality(l, r, step);
    return l;
}

std::optional<Labeling> bestLabeling(const Request& r)
{
    const double roughStep = r.span / r.count;
    if (!(roughStep > 0.0))
        return std::nullopt;
    const int centre = static_cast<int>(std::floor(std::log10(roughStep)));
    // Approximate, for the bounds only: the span in steps of 10^centre.
    const double spanInUnits = r.span / std::pow(10.0, centre);

    std::optional<Labeling> best;
    for (int i = 0; i < static_cast<int>(std::size(SearchOrder)); ++i) {
        const int exponent = centre + SearchOrder[i];
        if (exponent < MinStepExponent || exponent > MaxStepExponent)
            continue;
        for (int rank = 0; rank < StepDigitCount; ++rank) {
            const double stepsInSpan = spanInUnits / (StepDigits[rank] * SearchOrderPowers[i]);
            if (best && scoreBound(r, rank, stepsInSpan) + 1e-9 <= best->score)
                continue;
            const auto candidate = layOut(r, rank, exponent, scaled(StepDigits[rank], exponent));
            if (candidate && (!best || candidate->score > best->score))
                best = candidate;
        }
    }
    return best;
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
    const Request request{min, max, span, std::clamp(count, 1, MaxCount), loose};
    const auto best = bestLabeling(request);
    if (!best)
        return;

    m_first = best->first;
    m_size = static_cast<int>(best->last - best->first + 1);
    m_stepDigit = best->digit();
    m_stepExponent = best->exponent;
    m_min = value(0);
    m_max = value(m_size - 1);

    const std::int64_t largestDigits = std::max(std::abs(best->first), std::abs(best->last)) * m_stepDigit;
    const int largestExponent = digitCount(largestDigits) - 1 + m_stepExponent;
    if (factorLabels && largestDigits != 0) {
        m_factorExponent = labelFactorExponent(largestExponent, m_stepExponent);
        factor = scaled(1.0, m_factorExponent);
    }
    if (m_format.notation == NumberFormat::Notation::Automatic) {
        m_format.notation = NumberFormat::automaticNotation(m_stepExponent - m_factorExponent,
                                                            largestExponent - m_factorExponent);
    }
}

double NiceIntervals::value(int i) const
{
    return scaled(static_cast<double>((m_first + i) * m_stepDigit), m_stepExponent);
}

std::string NiceIntervals::label(int i) const
{
    return m_format.format(Decimal{(m_first + i) * m_stepDigit, m_stepExponent - m_factorExponent});
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
    return m_size > 0 ? scaled(m_stepDigit, m_stepExponent) : 0.0;
}

} // namespace Orv::Math
