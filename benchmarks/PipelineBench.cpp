// What a 2-D view does after its caches were built: update the pair scales,
// scale every variable with its matrix, list the valid variables with their
// ranges, as the pipeline runs over existing caches while a user pans or
// zooms. None of it should grow with the point count.

#include "BenchData.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisPair.h"
#include "KelChartPipeline.h"
#include "KelChartUpdateVariableUnits.h"
#include "KelChartVariableList.h"
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
    const KelChartPipeline::Settings settings{KelChartPipeline::everyAxis(10), false, {}};
    for (auto _ : state) {
        const KelChartPipeline pipeline(c.xPair, c.yPair, c.zPair, *c.cache, settings);
        for (std::size_t i = 0; i < pipeline.scaling().size(); ++i)
            benchmark::DoNotOptimize(&pipeline.scaling().matrix(i));
        benchmark::DoNotOptimize(pipeline.validVariables().size());
    }
    bench::reportItems(state, chartVariables, 0);
}

} // namespace

BENCHMARK(Pipeline2D)->Arg(bench::Small)->Arg(bench::Large)->Unit(benchmark::kMicrosecond);
