// Qwt on the benchmark data and tick cases: the data range of a point series,
// and its linear scale engine's ticks.

#include "PeerData.h"
#include "TickCases.h"

#include <qwt_scale_engine.h>
#include <qwt_series_data.h>

#include <map>

namespace bench {

const PeerSeries& peerSeries(Kind kind, std::size_t count)
{
    static std::map<std::pair<Kind, std::size_t>, PeerSeries> kept;
    PeerSeries& peer = kept[{kind, count}];
    if (peer.keys.isEmpty()) {
        const Series series = makeSeries(count, kind == Kind::Shuffled ? XOrder::Shuffled : XOrder::Ascending);
        for (std::size_t i = 0; i < count; ++i) {
            peer.keys.append(series.x[i]);
            peer.values.append(series.y[i]);
            peer.points.append(QPointF(series.x[i], series.y[i]));
        }
    }
    return peer;
}

} // namespace bench

namespace {

void QwtBoundingRect(benchmark::State& state)
{
    const bench::PeerSeries& peer = bench::peerSeries(bench::Kind::Ascending, static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        const QwtPointSeriesData data(peer.points);
        benchmark::DoNotOptimize(data.boundingRect());
    }
    bench::reportItems(state, state.range(0), 0);
}

// Major ticks only, as NiceIntervals makes; Qwt writes no labels here.
template <bench::TickOrder order>
void TicksQwtRun(benchmark::State& state)
{
    const QwtLinearScaleEngine engine;
    std::size_t next = 0;
    for (auto _ : state) {
        const bench::TickCase& c = bench::tickCase(next++, order);
        double x1 = c.min;
        double x2 = c.max;
        double step = 0.0;
        engine.autoScale(c.count, x1, x2, step);
        const QwtScaleDiv division = engine.divideScale(x1, x2, c.count, 0, step);
        benchmark::DoNotOptimize(division.ticks(QwtScaleDiv::MajorTick).size());
    }
    bench::reportItems(state, 1, 0);
}

void TicksQwt(benchmark::State& state) { TicksQwtRun<bench::TickOrder::Cycled>(state); }
void TicksQwtShuffled(benchmark::State& state) { TicksQwtRun<bench::TickOrder::Shuffled>(state); }

} // namespace

BENCHMARK(QwtBoundingRect)->Arg(bench::Small)->Arg(bench::Medium)->Arg(bench::Large)->Unit(benchmark::kMillisecond);
BENCHMARK(TicksQwt);
BENCHMARK(TicksQwtShuffled);
