// Decimated line views of one ordered cache (a random walk) to 2,000 pixel columns: the
// first request, which builds the block summary, against a plain min/max scan
// of y (the floor), and views once the summary exists, at several zooms.

#include "BenchData.h"

#include "KelChartDecimatedView.h"

#include <algorithm>
#include <map>
#include <memory>
#include <random>

namespace {

constexpr long columns = 2000;

// A random walk at x = 0, 1, ..., every point defined, and its sorted cache.
struct Walk {
    explicit Walk(std::size_t count)
    {
        std::mt19937_64 random(1);
        std::normal_distribution<float> step;
        std::vector<float> x(count), y(count);
        for (std::size_t k = 1; k < count; ++k) {
            x[k] = float(k);
            y[k] = y[k - 1] + step(random);
        }
        variable.variableiter.setVector2Data(std::move(x), std::move(y));
        cache = KelChartVariableCache(variable, true, QStringList());
    }
    KelModifiedGroup group;
    KelChartVariable variable{group};
    KelChartVariableCache cache;
};

// Built once per count and kept: building takes longer than measuring.
const KelChartVariableCache& orderedCache(std::size_t count)
{
    static std::map<std::size_t, std::unique_ptr<Walk>> walks;
    std::unique_ptr<Walk>& walk = walks[count];
    if (!walk)
        walk = std::make_unique<Walk>(count);
    return walk->cache;
}

void DecimationFloor(benchmark::State& state)
{
    const std::vector<double>& y = orderedCache(static_cast<std::size_t>(state.range(0))).y();
    for (auto _ : state) {
        const auto extremes = std::minmax_element(y.begin(), y.end());
        benchmark::DoNotOptimize(extremes);
    }
    bench::reportItems(state, static_cast<std::int64_t>(y.size()), 0);
}

void DecimationFirstRequest(benchmark::State& state)
{
    const KelChartVariableCache& cache = orderedCache(static_cast<std::size_t>(state.range(0)));
    const double x0 = cache.x().front();
    const double x1 = cache.x().back();
    std::size_t kept = 0;
    for (auto _ : state) {
        const KelChartDecimatedView view(cache);
        kept = view.lines(x0, x1, columns).size();
        benchmark::DoNotOptimize(kept);
    }
    state.counters["kept"] = double(kept);
    state.counters["summary_B_per_pt"] = double(KelChartDecimatedView(cache).summaryBytes()) / double(cache.x().size());
    bench::reportItems(state, static_cast<std::int64_t>(cache.x().size()), 0);
}

// Views of the whole data (0), a tenth (1), a thousandth (2) and one half past the end (3).
void DecimationView(benchmark::State& state)
{
    const KelChartVariableCache& cache = orderedCache(static_cast<std::size_t>(state.range(0)));
    const KelChartDecimatedView view(cache);
    const double x0 = cache.x().front();
    const double span = cache.x().back() - x0;
    const double ranges[4][2] = {{0.0, 1.0}, {0.45, 0.55}, {0.3, 0.301}, {0.75, 1.25}};
    const double* range = ranges[state.range(1)];
    view.ordered();
    std::size_t kept = 0;
    for (auto _ : state) {
        kept = view.lines(x0 + range[0] * span, x0 + range[1] * span, columns).size();
        benchmark::DoNotOptimize(kept);
    }
    state.counters["kept"] = double(kept);
}

void pointCounts(benchmark::internal::Benchmark* b)
{
    b->Arg(bench::Small)->Arg(bench::Medium)->Arg(bench::Large);
}

} // namespace

BENCHMARK(DecimationFloor)->Apply(pointCounts)->Unit(benchmark::kMillisecond);
BENCHMARK(DecimationFirstRequest)->Apply(pointCounts)->Unit(benchmark::kMillisecond);
BENCHMARK(DecimationView)
    ->ArgsProduct({{bench::Small, bench::Medium, bench::Large}, {0, 1, 2, 3}})
    ->Unit(benchmark::kMicrosecond);
