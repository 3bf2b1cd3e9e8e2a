// Frame time of the Qt Quick chart item while it pans, beside the widget's
// frames (ViewBench.cpp): a random walk drawn as a line in an item of
// 1000 x 600 in a window drawn by the software scene graph, offscreen. A pan
// frame is a mouse drag's step (press once, then moves: interactive frames
// from the ranges at the press); a settled frame is the picture drawn once
// the drag ends. Each step writes the ranges, the item paints its picture
// again, and the window renders a whole frame (polish, sync into the item's
// texture, render), forced by grabWindow().

#include "ChartItem.h"
#include "WalkChart.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QQuickWindow>

#include <memory>

namespace {

constexpr QSize itemSize(1000, 600);

void ensureQuickApplication()
{
    static int argc = 1;
    static char name[] = "orv-benchmarks";
    static char* argv[] = {name, nullptr};
    // The offscreen platform has no OpenGL: Qt Quick draws in software.
    if (qEnvironmentVariableIsEmpty("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    if (QCoreApplication::instance() == nullptr)
        new QApplication(argc, argv);
}

// The walk in a chart item in a window, showing a fifth of it.
struct QuickView {
    explicit QuickView(std::size_t count)
        : walk(count)
    {
        item = new Orv::Chart::ChartItem(window.contentItem());
        item->setSize(itemSize);
        window.resize(itemSize);
        item->setChart(&walk.chart, Orv::Chart::axisPairsOf(walk.chart));
        window.show();
        // A fifth of the walk, the y axis over all of it, as the widget's cases show.
        item->xAxis()->setMin(0);
        item->xAxis()->setMax(static_cast<double>(count) / 5);
        // The first frame builds the summaries, as the first paint does.
        frame();
    }
    ~QuickView() { item->setChart(nullptr, {}); }

    void frame() { benchmark::DoNotOptimize(window.grabWindow()); }

    WalkChart walk;
    QQuickWindow window;
    Orv::Chart::ChartItem* item;
};

// Back and forth by this many pixels per step.
constexpr double stepPixels = 8;
constexpr int stepsEachWay = 20;

void QuickPanFrame(benchmark::State& state)
{
    ensureQuickApplication();
    QuickView view(static_cast<std::size_t>(state.range(0)));
    Orv::Chart::ChartNavigator& navigator = view.item->navigator();
    const QPointF pressed = view.item->frames()->layout().plot().center();
    navigator.press(pressed, Qt::LeftButton, Qt::NoModifier);
    int step = 0;
    for (auto _ : state) {
        const int offset = step < stepsEachWay ? step : 2 * stepsEachWay - step;
        step = (step + 1) % (2 * stepsEachWay);
        navigator.move(pressed + QPointF(offset * stepPixels, 0));
        view.frame();
    }
    navigator.release(pressed);
}

void QuickSettledFrame(benchmark::State& state)
{
    ensureQuickApplication();
    QuickView view(static_cast<std::size_t>(state.range(0)));
    Orv::Chart::ChartNavigator& navigator = view.item->navigator();
    const QPointF centre = view.item->frames()->layout().plot().center();
    double direction = 1;
    int step = 0;
    for (auto _ : state) {
        if (++step % stepsEachWay == 0)
            direction = -direction;
        navigator.pan(centre, centre + QPointF(direction * stepPixels, 0));
        view.frame();
    }
}

} // namespace

BENCHMARK(QuickPanFrame)->Arg(1000)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(QuickSettledFrame)->Arg(1000)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
