// Heap held by a finished cache per point, as the allocator counts it (as for
// the peers), and the peak while building it, counted through operator new.

#include "BenchData.h"

namespace {

void memoryOf(benchmark::State& state, bench::Kind kind)
{
    if (!bench::HeapProbe::available()) {
        state.SkipWithError("the heap is not counted under AddressSanitizer");
        return;
    }
    const KelChartVariable& var = bench::variable(kind, static_cast<std::size_t>(state.range(0)));
    double held = 0;
    double peak = 0;
    for (auto _ : state) {
        const std::int64_t before = bench::heapInUse();
        const bench::HeapProbe probe;
        const KelChartVariableCache cache(var, true, QStringList());
        held = static_cast<double>(bench::heapInUse() - before);
        peak = static_cast<double>(probe.peak());
    }
    const double points = static_cast<double>(state.range(0));
    state.counters["held_bytes_per_point"] = held / points;
    state.counters["peak_bytes_per_point"] = peak / points;
    state.counters["peak_over_held"] = peak / held;
}

void MemoryCacheAscending(benchmark::State& state) { memoryOf(state, bench::Kind::Ascending); }
void MemoryCacheShuffled(benchmark::State& state) { memoryOf(state, bench::Kind::Shuffled); }

} // namespace

BENCHMARK(MemoryCacheAscending)->Arg(bench::Small)->Arg(bench::Medium)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(MemoryCacheShuffled)->Arg(bench::Small)->Arg(bench::Medium)->Iterations(1)->Unit(benchmark::kMillisecond);
