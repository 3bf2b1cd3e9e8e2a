// One variable's cache (vector x ascending, x shuffled, scalar, positional),
// against the reading floor and the sort floor.

#include "BenchData.h"

#include <algorithm>
#include <cstdint>

namespace {

using bench::Kind;

void ReadingFloor(benchmark::State& state)
{
    KelChartVariable& var = bench::variable(Kind::Ascending, static_cast<std::size_t>(state.range(0)));
    bench::ReadArrays out(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::readVectors(var.variableiter, out));
        benchmark::ClobberMemory();
    }
    bench::reportItems(state, state.range(0), out.x.size() * (2 * sizeof(double) + 1));
}

void ScalarReadingFloor(benchmark::State& state)
{
    KelChartVariable& var = bench::variable(Kind::Scalar, static_cast<std::size_t>(state.range(0)));
    bench::ReadArrays out(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        benchmark::DoNotOptimize(bench::readScalars(var.variableiter, out));
        benchmark::ClobberMemory();
    }
    bench::reportItems(state, state.range(0), out.y.size() * (sizeof(double) + 1));
}

// A point as a cache sorting whole records by comparison would hold it.
struct PointRecord {
    double x;
    double y;
    double z;
    std::size_t index;
    std::uint32_t undefined;
};
static_assert(sizeof(PointRecord) == 40);

void SortFloor(benchmark::State& state)
{
    const bench::Series series = bench::makeSeries(static_cast<std::size_t>(state.range(0)), bench::XOrder::Shuffled);
    std::vector<PointRecord> input(series.x.size());
    for (std::size_t i = 0; i < input.size(); ++i)
        input[i] = {series.x[i], series.y[i], 0.0, i,
                    static_cast<std::uint32_t>(series.xUndefined[i] | (series.yUndefined[i] << 1))};
    std::vector<PointRecord> records;
    for (auto _ : state) {
        state.PauseTiming();
        records = input;
        state.ResumeTiming();
        std::stable_sort(records.begin(), records.end(),
                         [](const PointRecord& a, const PointRecord& b) { return a.x < b.x; });
        benchmark::ClobberMemory();
    }
    bench::reportItems(state, state.range(0), records.size() * sizeof(PointRecord));
}

void cacheOf(benchmark::State& state, Kind kind, bool positional)
{
    const KelChartVariable& var = bench::variable(kind, static_cast<std::size_t>(state.range(0)));
    const QStringList positionAxes = positional ? QStringList{var.xAxis.get()} : QStringList();
    std::size_t bytes = 0;
    for (auto _ : state) {
        KelChartVariableCache cache(var, true, positionAxes);
        bytes = bench::heldBytes(cache);
        benchmark::DoNotOptimize(cache.x().data());
    }
    bench::reportItems(state, state.range(0), bytes);
}

void CacheAscending(benchmark::State& state) { cacheOf(state, Kind::Ascending, false); }
void CacheShuffled(benchmark::State& state) { cacheOf(state, Kind::Shuffled, false); }
void CacheScalar(benchmark::State& state) { cacheOf(state, Kind::Scalar, false); }
// x shuffled on a position axis: sorted by x, then drawn at positions 0, 1, ...
void CachePositional(benchmark::State& state) { cacheOf(state, Kind::Shuffled, true); }

void pointCounts(benchmark::internal::Benchmark* b)
{
    b->Arg(bench::Small)->Arg(bench::Medium)->Arg(bench::Large)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK(ReadingFloor)->Apply(pointCounts);
BENCHMARK(ScalarReadingFloor)->Apply(pointCounts);
BENCHMARK(SortFloor)->Apply(pointCounts);
BENCHMARK(CacheAscending)->Apply(pointCounts);
BENCHMARK(CacheShuffled)->Apply(pointCounts);
BENCHMARK(CacheScalar)->Apply(pointCounts);
BENCHMARK(CachePositional)->Apply(pointCounts);
