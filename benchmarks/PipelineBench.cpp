// What a 2-D chart does after its caches were built: agree the units, update
// the pair scales, scale every variable with its matrix, list the valid
// variables with their ranges. None of it should grow with the point count.

#include "BenchData.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisPair.h"
#include "KelChartAxisPairScale.h"
#include "KelChartPerVariableScaling.h"
#include "KelChartUpdateVariableUnits.h"
#include "KelChartValidVariableList.h"
#include "KelChartVariableList.h"
#include "KelChartVariableListCache.h"
#include "KelUnitSystem.h"

#include <map>
#include <memory>
#include <optional>

namespace {

constexpr int chartVariables = 10;

// Ten variables of seconds against metres on one axis pair each way.
struct Chart2D {
    explicit Chart2D(std::size_t totalCount)
    {
        xPair.rename(QStringLiteral("axis.x"));
        yPair.rename(QStringLiteral("axis.y"));
        zPair.rename(QStringLiteral("axis.z"));
        xPair.createFirst(QStringLiteral("bottom"), KelChartAxisContinuous::typeString);
        yPair.createFirst(QStringLiteral("left"), KelChartAxisContinuous::typeString);
        for (int i = 0; i < chartVariables; ++i) {
            KelChartVariable& var = list.child(QStringLiteral("v%1").arg(i), KelChartVariable::typeString);
            var.xAxis.set(QStringLiteral("axis.x.bottom"));
            var.yAxis.set(QStringLiteral("axis.y.left"));
            var.style.componentSortAxis.set(0);
            bench::Series series = bench::makeSeries(totalCount / chartVariables, bench::XOrder::Ascending, 200 + i);
            var.variableiter.setVector2Data(std::move(series.x), std::move(series.y), std::move(series.xUndefined),
                                            std::move(series.yUndefined), QStringLiteral("s"), QStringLiteral("m"));
        }
        cache.emplace(KelChartUpdateVariableUnits(units, xPair, yPair, zPair, list)(), QStringList());
    }

    KelModifiedGroup group;
    KelUnitSystem units{group};
    KelChartAxisPair xPair{group};
    KelChartAxisPair yPair{group};
    KelChartAxisPair zPair{group};
    KelChartVariableList list{group, QStringLiteral("variable.1")};
    std::optional<KelChartVariableListCache> cache;
};

Chart2D& chart(std::size_t totalCount)
{
    static std::map<std::size_t, std::unique_ptr<Chart2D>> kept;
    auto& slot = kept[totalCount];
    if (!slot)
        slot = std::make_unique<Chart2D>(totalCount);
    return *slot;
}

void Pipeline2D(benchmark::State& state)
{
    Chart2D& c = chart(static_cast<std::size_t>(state.range(0)));
    const Orv::Math::NumberFormat format;
    for (auto _ : state) {
        benchmark::DoNotOptimize(KelChartUpdateVariableUnits(c.units, c.xPair, c.yPair, c.zPair, c.list)());
        KelChartAxisPairScale xScale(c.xPair, *c.cache);
        KelChartAxisPairScale yScale(c.yPair, *c.cache);
        xScale.update(10, format);
        yScale.update(10, format);
        const KelChartPerVariableScaling scaling(xScale, yScale, *c.cache);
        for (std::size_t i = 0; i < scaling.size(); ++i)
            benchmark::DoNotOptimize(&scaling.matrix(i));
        KelChartValidVariableList valid;
        for (std::size_t i = 0; i < c.cache->size(); ++i)
            valid.push_back(c.cache->cache(i));
        benchmark::DoNotOptimize(valid.size());
    }
    bench::reportItems(state, chartVariables, 0);
}

} // namespace

BENCHMARK(Pipeline2D)->Arg(bench::Small)->Arg(bench::Large)->Unit(benchmark::kMicrosecond);
