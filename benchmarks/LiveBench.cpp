// Live data: appending to a rolling series against pushing the same points
// into two plain vectors, and what a rolling window holds over a long run.
#include "KelChartLiveSeries.h"
#include "KelChartVariable.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

namespace {

constexpr std::size_t seriesSize = 10000000;

// A block of a sampled signal starting at item `first`.
struct Block {
    std::vector<double> x;
    std::vector<double> y;

    explicit Block(std::size_t size)
        : x(size)
        , y(size)
    {
    }
    void fill(std::size_t first)
    {
        for (std::size_t k = 0; k < x.size(); ++k) {
            x[k] = double(first + k) * 1e-3;
            y[k] = std::sin(x[k]) + 0.1 * std::sin(x[k] * 37.0);
        }
    }
};

// A series already holding `seriesSize` items, rolling.
struct FullSeries {
    KelModifiedGroup group;
    KelChartVariable variable{group};
    KelChartLiveSeries live{variable, seriesSize};
    std::size_t next = 0;

    FullSeries()
    {
        Block block(100000);
        while (next < seriesSize) {
            block.fill(next);
            live.append(block.x.data(), block.y.data(), block.x.size());
            next += block.x.size();
        }
    }
};

// Blocks of B items appended into a rolling series of 1e7: the cost per item
// includes dropping the oldest and keeping the summary.
void LiveAppend(benchmark::State& state)
{
    static FullSeries full;
    const auto size = static_cast<std::size_t>(state.range(0));
    Block block(size);
    block.fill(full.next);
    for (auto _ : state) {
        full.live.append(block.x.data(), block.y.data(), size);
        full.next += size;
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * size));
    benchmark::DoNotOptimize(full.live.data().x);
}

// The floor: the same blocks pushed into two vectors, emptied (capacity kept)
// whenever they reach the series' size.
void LiveAppendFloor(benchmark::State& state)
{
    const auto size = static_cast<std::size_t>(state.range(0));
    Block block(size);
    block.fill(0);
    std::vector<double> x, y;
    x.reserve(seriesSize + size);
    y.reserve(seriesSize + size);
    for (auto _ : state) {
        if (x.size() >= seriesSize) {
            x.clear();
            y.clear();
        }
        for (std::size_t k = 0; k < size; ++k) {
            x.push_back(block.x[k]);
            y.push_back(block.y[k]);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations() * size));
    benchmark::DoNotOptimize(x.data());
}

// A window of 1e6 fed 1e8 items in blocks of 1e4: the most memory it held,
// against what a cache of 1e6 points holds (x, y, the items' positions).
void LiveMemory(benchmark::State& state)
{
    constexpr std::size_t window = 1000000;
    const auto fed = static_cast<std::size_t>(state.range(0));
    Block block(10000);
    std::size_t most = 0;
    for (auto _ : state) {
        KelModifiedGroup group;
        KelChartVariable variable{group};
        KelChartLiveSeries live(variable, window);
        for (std::size_t next = 0; next < fed; next += block.x.size()) {
            block.fill(next);
            live.append(block.x.data(), block.y.data(), block.x.size());
            most = std::max(most, live.memoryBytes());
        }
        benchmark::DoNotOptimize(live.data().x);
    }
    const double cacheBytes = double(window) * (2 * sizeof(double) + sizeof(std::size_t));
    state.counters["most_bytes"] = double(most);
    state.counters["most_per_cache"] = double(most) / cacheBytes;
    state.counters["bytes_per_kept_point"] = double(most) / double(window);
}

} // namespace

BENCHMARK(LiveAppend)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(LiveAppendFloor)->Arg(1)->Arg(100)->Arg(10000);
BENCHMARK(LiveMemory)->Arg(100000000)->Iterations(1)->Unit(benchmark::kMillisecond);
