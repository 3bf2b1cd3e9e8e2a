// The list cache of many variables against the sum of their own caches, and
// the aggregates a chart asks of the caches.

#include "BenchData.h"

#include "KelChartVariableListCache.h"

#include <chrono>

namespace {

constexpr std::size_t listVariables = 100;

const QStringList noPositionAxes;

std::size_t pointsOf(const benchmark::State& state) { return static_cast<std::size_t>(state.range(0)); }

// Each variable cached on its own, as the list cache decides (sorted by x).
void ListCacheFloor(benchmark::State& state)
{
    const auto& variables = bench::variableList(listVariables, pointsOf(state));
    for (auto _ : state) {
        for (const KelChartVariable* var : variables) {
            KelChartVariableCache cache(*var, true, noPositionAxes);
            benchmark::DoNotOptimize(cache.x().data());
        }
    }
    bench::reportItems(state, state.range(0), 0);
}

void ListCache(benchmark::State& state)
{
    const auto& variables = bench::variableList(listVariables, pointsOf(state));
    std::size_t bytes = 0;
    for (auto _ : state) {
        KelChartVariableListCache list(variables, noPositionAxes);
        bytes = 0;
        for (std::size_t i = 0; i < list.size(); ++i)
            bytes += bench::heldBytes(list.cache(i));
        benchmark::DoNotOptimize(list.size());
    }
    bench::reportItems(state, state.range(0), bytes);
}

// The aggregates are kept once computed, so every measurement asks a fresh
// copy, made outside the measured time; the copies set the iteration counts.
template <class Cache, class Ask>
void firstRequest(benchmark::State& state, const Cache& built, Ask ask)
{
    for (auto _ : state) {
        const Cache fresh = built;
        const auto start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(ask(fresh));
        state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    bench::reportItems(state, state.range(0), 0);
}

void MinXDelta(benchmark::State& state)
{
    const KelChartVariableCache built(bench::variable(bench::Kind::Ascending, pointsOf(state)), true, noPositionAxes);
    firstRequest(state, built, [](const KelChartVariableCache& cache) { return cache.minXDelta(); });
}

void ListBounds(benchmark::State& state)
{
    const KelChartVariableListCache built(bench::variableList(listVariables, pointsOf(state)), noPositionAxes);
    firstRequest(state, built, [](const KelChartVariableListCache& list) { return list.bounds().max().y(); });
}

void FillBaseLine(benchmark::State& state)
{
    const KelChartVariableCache cache(bench::variable(bench::Kind::Ascending, pointsOf(state)), true, noPositionAxes);
    for (auto _ : state)
        benchmark::DoNotOptimize(cache.fillBaseLine());
    bench::reportItems(state, state.range(0), 0);
}

void smallAndLarge(benchmark::internal::Benchmark* b)
{
    b->Arg(bench::Small)->Arg(bench::Large)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(ListCacheFloor)->Apply(smallAndLarge);
BENCHMARK(ListCache)->Apply(smallAndLarge);
BENCHMARK(MinXDelta)->Arg(bench::Small)->Iterations(200)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(MinXDelta)->Arg(bench::Large)->Iterations(10)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(ListBounds)->Arg(bench::Small)->Iterations(200)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(ListBounds)->Arg(bench::Large)->Iterations(10)->UseManualTime()->Unit(benchmark::kMicrosecond);
BENCHMARK(FillBaseLine)->Arg(bench::Small)->Arg(bench::Large)->Unit(benchmark::kNanosecond);
