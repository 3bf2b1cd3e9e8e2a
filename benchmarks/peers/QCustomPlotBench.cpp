// QCustomPlot on the benchmark data and tick cases: a graph's data added
// sorted or not, then its key and value ranges; its axis ticker with labels;
// the heap its data container holds per point.

#include "PeerData.h"
#include "TickCases.h"

#include <QApplication>
#include <QLocale>
#include <qcustomplot.h>

namespace {

void ensureApplication()
{
    static int argc = 1;
    static char name[] = "orv-benchmarks";
    static char* argv[] = {name, nullptr};
    static QApplication application(argc, argv);
}

void addData(benchmark::State& state, bench::Kind kind)
{
    ensureApplication();
    const bench::PeerSeries& peer = bench::peerSeries(kind, static_cast<std::size_t>(state.range(0)));
    QCustomPlot plot;
    QCPGraph* graph = plot.addGraph();
    const bool sorted = kind == bench::Kind::Ascending;
    for (auto _ : state) {
        graph->data()->clear();
        graph->addData(peer.keys, peer.values, sorted);
        bool found = false;
        benchmark::DoNotOptimize(graph->data()->keyRange(found));
        benchmark::DoNotOptimize(graph->data()->valueRange(found));
    }
    bench::reportItems(state, state.range(0), static_cast<std::size_t>(graph->data()->size()) * sizeof(QCPGraphData));
}

void QCustomPlotAddSorted(benchmark::State& state) { addData(state, bench::Kind::Ascending); }
void QCustomPlotAddUnsorted(benchmark::State& state) { addData(state, bench::Kind::Shuffled); }

void TicksQCustomPlot(benchmark::State& state)
{
    QCPAxisTicker ticker;
    const QLocale locale = QLocale::c();
    QVector<double> ticks;
    QVector<QString> labels;
    std::size_t next = 0;
    for (auto _ : state) {
        const bench::TickCase& c = bench::tickCase(next++, bench::TickOrder::Cycled);
        ticker.setTickCount(c.count);
        ticker.generate(QCPRange(c.min, c.max), locale, QLatin1Char('g'), 6, ticks, nullptr, &labels);
        benchmark::DoNotOptimize(labels.size());
    }
    bench::reportItems(state, 1, 0);
}

void MemoryQCustomPlot(benchmark::State& state)
{
    ensureApplication();
    const bench::PeerSeries& peer = bench::peerSeries(bench::Kind::Shuffled, static_cast<std::size_t>(state.range(0)));
    double held = 0;
    for (auto _ : state) {
        QCustomPlot plot;
        QCPGraph* graph = plot.addGraph();
        const std::int64_t before = bench::heapInUse();
        graph->addData(peer.keys, peer.values, false);
        held = static_cast<double>(bench::heapInUse() - before);
    }
    state.counters["held_bytes_per_point"] = held / static_cast<double>(state.range(0));
}

} // namespace

BENCHMARK(QCustomPlotAddSorted)->Arg(bench::Small)->Arg(bench::Medium)->Arg(bench::Large)->Unit(benchmark::kMillisecond);
BENCHMARK(QCustomPlotAddUnsorted)->Arg(bench::Small)->Arg(bench::Medium)->Arg(bench::Large)->Unit(benchmark::kMillisecond);
BENCHMARK(TicksQCustomPlot);
BENCHMARK(MemoryQCustomPlot)->Arg(bench::Small)->Arg(bench::Medium)->Iterations(1)->Unit(benchmark::kMillisecond);
