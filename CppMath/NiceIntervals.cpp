#include "NiceIntervals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace Orv::Math {

namespace {

constexpr int MinStepExponent = -300;
constexpr int MaxStepExponent = 308;
// Multiples beyond this are not all distinct doubles; with q <= 5, k·q stays an exact integer.
constexpr double MaxMultiple = 1125899906842624.0; // 2^50
// Steps this many powers of ten from span / count score far below the best one.
constexpr int ExponentWindow = 2;
// The nice digits in order of preference, which is also their rank in the quality score.
constexpr int StepDigits[] = {1, 5, 2};
constexpr double PreferenceListLength = 6; // 1, 5, 2, 2.5, 4, 3

// 10^z for MinStepExponent <= z <= MaxStepExponent, each the double nearest the power.
double powerOfTen(int z)
{
    static const auto table = [] {
        std::array<double, MaxStepExponent - MinStepExponent + 1> powers{};
        char text[8] = {'1', 'e'};
        for (int z = MinStepExponent; z <= MaxStepExponent; ++z) {
            char* end = std::to_chars(text + 2, text + sizeof text, z).ptr;
            std::from_chars(text, end, powers[static_cast<std::size_t>(z - MinStepExponent)]);
        }
        return powers;
    }();
    return table[static_cast<std::size_t>(z - MinStepExponent)];
}

// n × 10^z in a single rounding while the power of ten is exact (|z| <= 22).
double scaled(double n, int z)
{
    return z >= 0 ? n * powerOfTen(z) : n / powerOfTen(-z);
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

// One candidate: the ticks first..last of the step digit × 10^exponent.
struct Labeling {
    int digit = 1;
    int exponent = 0;
    std::int64_t first = 0;
    std::int64_t last = -1;
    double score = -std::numeric_limits<double>::infinity();

    double tick(std::int64_t k) const { return scaled(static_cast<double>(k * digit), exponent); }
};

// The data range and what is wanted of its ticks.
struct Request {
    double min;
    double max;
    int count;
    bool loose;
};

// The multiple tightest at or below x. The quotient is within one of it; the ticks decide.
std::int64_t multipleAtOrBelow(const Labeling& l, double quotient, double x)
{
    auto k = static_cast<std::int64_t>(std::floor(quotient));
    if (l.tick(k + 1) <= x)
        ++k;
    else if (l.tick(k) > x)
        --k;
    return k;
}

std::int64_t multipleAtOrAbove(const Labeling& l, double quotient, double x)
{
    auto k = static_cast<std::int64_t>(std::ceil(quotient));
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

double quality(const Labeling& l, const Request& r, double step)
{
    const double lmin = l.tick(l.first);
    const double lmax = l.tick(l.last);
    const double span = r.max - r.min;

    const double zeroIsTick = l.first <= 0 && l.last >= 0 ? 1.0 : 0.0;
    const int rank = static_cast<int>(std::find(std::begin(StepDigits), std::end(StepDigits), l.digit)
                                      - std::begin(StepDigits));
    const double simplicity = zeroIsTick - rank / (PreferenceListLength - 1);

    const double coverage =
        1.0 - 0.5 * (square((r.max - lmax) / (0.1 * span)) + square((r.min - lmin) / (0.1 * span)));

    // r / t is the union of data and labels, in steps, over the wanted intervals. Counted in
    // steps it cannot overflow, however large the values.
    double density = -std::numeric_limits<double>::infinity();
    if (l.last > l.first) {
        const double extent = static_cast<double>(l.last - l.first) + std::max(0.0, (r.max - lmax) / step)
                              + std::max(0.0, (lmin - r.min) / step);
        const double ratio = extent / r.count;
        density = 2.0 - std::max(ratio, 1.0 / ratio);
    }
    return 0.25 * simplicity + 0.2 * coverage + 0.5 * density + 0.05;
}

std::optional<Labeling> layOut(const Request& r, int digit, int exponent)
{
    Labeling l;
    l.digit = digit;
    l.exponent = exponent;
    const double step = scaled(digit, exponent);
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
    const double roughStep = (r.max - r.min) / r.count;
    if (!(roughStep > 0.0) || !std::isfinite(roughStep))
        return std::nullopt;
    const int centre = static_cast<int>(std::floor(std::log10(roughStep)));
    const int lowest = std::max(centre - ExponentWindow, MinStepExponent);
    const int highest = std::min(centre + ExponentWindow, MaxStepExponent);

    std::optional<Labeling> best;
    for (int exponent = highest; exponent >= lowest; --exponent) {
        for (int digit : StepDigits) {
            const auto candidate = layOut(r, digit, exponent);
            if (candidate && (!best || candidate->score > best->score))
                best = candidate;
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
    const Request request{min, max, std::clamp(count, 1, MaxCount), loose};
    const auto best = bestLabeling(request);
    if (!best)
        return;

    m_first = best->first;
    m_size = static_cast<int>(best->last - best->first + 1);
    m_stepDigit = best->digit;
    m_stepExponent = best->exponent;
    m_min = value(0);
    m_max = value(m_size - 1);

    const std::int64_t largestDigits =
        std::max(std::abs(best->first), std::abs(best->last)) * best->digit;
    const int largestExponent = digitCount(largestDigits) - 1 + m_stepExponent;
    if (factorLabels && largestDigits != 0) {
        // At most two decimals: the step's last digit at 10^-2 or above.
        const int fewDecimals = engineeringExponent(m_stepExponent + 2);
        if (largestExponent >= 5)
            m_factorExponent = std::max(0, std::min(engineeringExponent(largestExponent), fewDecimals));
        else if (largestExponent <= -4)
            m_factorExponent = std::min(engineeringExponent(largestExponent), fewDecimals);
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
