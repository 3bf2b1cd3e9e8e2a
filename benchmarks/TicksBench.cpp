// NiceIntervals with all its labels, over a spread of ranges and counts.

#include "BenchData.h"
#include "TickCases.h"

#include "NiceIntervals.h"

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace bench {

namespace {

const std::vector<TickCase>& tickCases()
{
    static const std::vector<TickCase> cases = [] {
        std::mt19937_64 random(42);
        std::uniform_real_distribution<double> decade(-6.0, 9.0);
        std::uniform_real_distribution<double> offset(-3.0, 3.0);
        std::uniform_int_distribution<int> count(2, 12);
        std::vector<TickCase> made(1024);
        for (TickCase& c : made) {
            const double span = std::pow(10.0, decade(random));
            c.min = offset(random) * span;
            c.max = c.min + span;
            c.count = count(random);
        }
        return made;
    }();
    return cases;
}

} // namespace

const TickCase& tickCase(std::size_t call, TickOrder order)
{
    static const std::vector<std::uint16_t> shuffled = [] {
        std::mt19937_64 random(7);
        std::uniform_int_distribution<std::uint16_t> pick(0, static_cast<std::uint16_t>(tickCases().size() - 1));
        std::vector<std::uint16_t> made(std::size_t{1} << 16);
        for (std::uint16_t& index : made)
            index = pick(random);
        return made;
    }();
    const auto& cases = tickCases();
    if (order == TickOrder::Cycled)
        return cases[call % cases.size()];
    return cases[shuffled[call % shuffled.size()]];
}

} // namespace bench

namespace {

// Builds the intervals of one case after another and reads every tick, with
// its label or, as Qwt's scale engine is measured, its value only.
template <bool withLabels, bench::TickOrder order = bench::TickOrder::Cycled>
void TicksNiceIntervalsRun(benchmark::State& state)
{
    const Orv::Math::NumberFormat format;
    std::size_t next = 0;
    for (auto _ : state) {
        const bench::TickCase& c = bench::tickCase(next++, order);
        const Orv::Math::NiceIntervals intervals(c.min, c.max, c.count, true, true, format);
        for (int i = 0; i < intervals.size(); ++i) {
            if constexpr (withLabels)
                benchmark::DoNotOptimize(intervals.label(i));
            else
                benchmark::DoNotOptimize(intervals.value(i));
        }
    }
    bench::reportItems(state, 1, 0);
}

void TicksNiceIntervals(benchmark::State& state) { TicksNiceIntervalsRun<true>(state); }
void TicksNiceIntervalsNoLabels(benchmark::State& state) { TicksNiceIntervalsRun<false>(state); }
void TicksNiceIntervalsShuffled(benchmark::State& state)
{
    TicksNiceIntervalsRun<true, bench::TickOrder::Shuffled>(state);
}

} // namespace

BENCHMARK(TicksNiceIntervals);
BENCHMARK(TicksNiceIntervalsNoLabels);
BENCHMARK(TicksNiceIntervalsShuffled);
