// Tick intervals and range widening on arbitrary doubles and counts, edge
// values included. Properties checked:
//   - the ticks are finite, strictly ascending, bounded in number and label
//     length, and enclose the data (loose) or lie inside it (not loose);
//   - an empty result has no range;
//   - logarithmic ticks of any range of exponents that holds two decades a
//     double can show have at least two majors, finite and ascending, with
//     finite positive values, and minors inside the range;
//   - widening a finite range within float range gives a finite, non-empty,
//     ordered range; widening finite numbers makes NaN only where the width
//     overflows to infinity and the fraction is 0 (infinity times 0).

#include "FuzzInput.h"
#include "FuzzTargets.h"

#include "KelChartAxisScale.h"

#include "LogTicks.h"
#include "NiceIntervals.h"
#include "NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Orv::Math::LogTicks;
using Orv::Math::NiceIntervals;
using Orv::Math::NumberFormat;

constexpr int maxRounds = 16;
// Steps are never finer than a thousandth of span / count (two decades below
// the wanted step), which bounds the ticks. Away from the largest doubles a
// step near the wanted density always fits, and a labeling ten times denser
// scores below it; near them the enclosing ticks of coarse steps overflow,
// and only fine steps are left.
constexpr int finestStepDivisor = 1000;
constexpr int tickSurplus = 10;
constexpr double overflowZone = 1e300;
// Fixed notation of the largest doubles with the most decimals stays below this.
constexpr std::size_t maxLabelLength = 1024;

NumberFormat formatFrom(FuzzInput& in)
{
    static constexpr NumberFormat::Notation notations[] = {
        NumberFormat::Notation::Automatic, NumberFormat::Notation::Fixed, NumberFormat::Notation::Scientific};
    const NumberFormat::Notation notation = notations[in.index(3)];
    const int decimals = static_cast<int>(in.integer(-2, NumberFormat::MaxDecimals + 5));
    return NumberFormat(notation, decimals);
}

void checkIntervals(double min, double max, int count, bool loose, bool factorLabels, const NumberFormat& format)
{
    const NiceIntervals ticks(min, max, count, loose, factorLabels, format);
    const int size = ticks.size();
    FUZZ_CHECK(size >= 0);
    if (size == 0) {
        FUZZ_CHECK(!(ticks.max() > ticks.min()));
        FUZZ_CHECK(ticks.step() == 0.0);
        return;
    }
    const int wanted = std::clamp(count, 1, NiceIntervals::MaxCount);
    FUZZ_CHECK(size <= finestStepDivisor * wanted + 2);
    if (std::fabs(min) < overflowZone && std::fabs(max) < overflowZone)
        FUZZ_CHECK(size <= tickSurplus * wanted + 2);
    FUZZ_CHECK(ticks.min() == ticks.value(0) && ticks.max() == ticks.value(size - 1));
    FUZZ_CHECK(std::isfinite(ticks.step()) && ticks.step() > 0.0);
    FUZZ_CHECK(std::isfinite(ticks.factor) && ticks.factor > 0.0);
    if (loose)
        FUZZ_CHECK(ticks.min() <= min && ticks.max() >= max);
    else
        FUZZ_CHECK(ticks.min() >= min && ticks.max() <= max);
    for (int i = 0; i < size; ++i) {
        FUZZ_CHECK(std::isfinite(ticks.value(i)));
        FUZZ_CHECK(i == 0 || ticks.value(i - 1) < ticks.value(i));
        const std::string label = ticks.label(i);
        FUZZ_CHECK(!label.empty() && label.size() <= maxLabelLength);
        for (const bool inverted : {false, true}) {
            const double fraction = ticks.fraction(i, inverted);
            FUZZ_CHECK(fraction >= 0.0 && fraction <= 1.0);
        }
    }
}

void checkTick(const LogTicks& ticks, const LogTicks::Tick& tick)
{
    FUZZ_CHECK(std::isfinite(tick.position) && std::isfinite(tick.value) && tick.value > 0.0);
    FUZZ_CHECK(tick.position >= ticks.min() - 1e-9 && tick.position <= ticks.max() + 1e-9);
    FUZZ_CHECK(!tick.label.empty() && tick.label.size() <= maxLabelLength);
}

void checkLogTicks(double lo, double hi, int count, const NumberFormat& format)
{
    const LogTicks ticks(lo, hi, count, format);
    const bool usable = std::isfinite(lo) && std::isfinite(hi) && lo < hi;
    const bool holdsTwoDecades = usable
        && std::min<double>(LogTicks::MaxExponent, std::ceil(hi)) - std::max<double>(LogTicks::MinExponent, std::floor(lo)) >= 1;
    if (ticks.regime() == LogTicks::Regime::Empty) {
        FUZZ_CHECK(!holdsTwoDecades && ticks.size() == 0 && ticks.minorCount() == 0);
        return;
    }
    FUZZ_CHECK(usable && ticks.size() >= 2);
    FUZZ_CHECK(ticks.min() <= lo && ticks.max() >= hi);
    for (int i = 0; i < ticks.size(); ++i) {
        checkTick(ticks, ticks.major(i));
        FUZZ_CHECK(i == 0 || ticks.major(i - 1).position < ticks.major(i).position);
    }
    FUZZ_CHECK(ticks.minorCount() <= 9 * (LogTicks::MaxExponent - LogTicks::MinExponent + 1));
    for (int i = 0; i < ticks.minorCount(); ++i)
        checkTick(ticks, ticks.minor(i));
}

bool withinFloatRange(double value)
{
    return std::fabs(value) <= static_cast<double>(std::numeric_limits<float>::max());
}

void checkExpandRange(double min, double max, double fraction)
{
    double lo = min;
    double hi = max;
    KelChartAxisScale::ExpandRange<double>(lo, hi, fraction);
    const bool widthTimesZero = fraction == 0 && !std::isfinite(max - min);
    if (std::isfinite(min) && std::isfinite(max) && std::isfinite(fraction) && !widthTimesZero)
        FUZZ_CHECK(!std::isnan(lo) && !std::isnan(hi));
    const bool usual = withinFloatRange(min) && withinFloatRange(max) && min <= max && fraction >= 0.0
                       && fraction <= 1.0;
    if (!usual || widthTimesZero)
        return;
    FUZZ_CHECK(std::isfinite(lo) && std::isfinite(hi) && lo < hi);

    float flo = static_cast<float>(min);
    float fhi = static_cast<float>(max);
    const auto ffraction = static_cast<float>(fraction);
    KelChartAxisScale::ExpandRange<float>(flo, fhi, ffraction);
    // Widening in float may overflow to infinity, but stays ordered; a float
    // width may overflow where the double one did not.
    if (ffraction == 0 && !std::isfinite(static_cast<float>(max) - static_cast<float>(min)))
        return;
    FUZZ_CHECK(!std::isnan(flo) && !std::isnan(fhi) && flo <= fhi);
}

} // namespace

int fuzzNiceIntervals(const std::uint8_t* data, std::size_t size)
{
    FuzzInput in(data, size);
    for (int round = 0; round < maxRounds && !in.empty(); ++round) {
        const double min = in.anyDouble();
        const double max = in.anyDouble();
        const int count = in.anyInt();
        const bool loose = in.flag();
        const bool factorLabels = in.flag();
        const NumberFormat format = formatFrom(in);
        checkIntervals(min, max, count, loose, factorLabels, format);
        checkExpandRange(min, max, in.anyDouble());
        // The same doubles as exponents, mostly huge; scaled down they reach every regime.
        checkLogTicks(min, max, count, format);
        checkLogTicks(min / 1e300, max / 1e300, count, format);
    }
    return 0;
}

#ifndef ORV_FUZZ_REPLAY
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return fuzzNiceIntervals(data, size);
}
#endif
