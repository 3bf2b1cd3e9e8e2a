// Frame time of the interactive view while it pans: each step writes the
// x axis's range into the chart, reruns the scales over the kept caches and
// draws the whole frame (title, grid, series, axes, legend) into an image,
// as the view's paint event does. The floor is the same frame of a thousand
// points, where axes and text are all the cost there is.

#include "ChartFrames.h"
#include "ChartSetUp.h"
#include "DataBinding.h"

#include "KelChart2D.h"
#include "KelChartAxisContinuous.h"

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <QImage>
#include <QPainter>

#include <cmath>
#include <memory>
#include <random>

namespace {

constexpr int frameWidth = 1000;
constexpr int frameHeight = 600;

void ensureGuiApplication()
{
    static int argc = 1;
    static char name[] = "orv-benchmarks";
    static char* argv[] = {name, nullptr};
    // Lives until the process ends: fonts need it for every case.
    if (QCoreApplication::instance() == nullptr)
        new QGuiApplication(argc, argv);
}

// A random walk at x = 0, 1, ..., drawn as a line, in a chart set up as for a CSV file.
struct WalkChart {
    KelModifiedGroup group;
    KelChart2D chart{group};

    explicit WalkChart(std::size_t count)
    {
        Orv::Chart::DataSeries series;
        series.x = {QStringLiteral("t"), QStringLiteral("s"), {}, {}};
        series.y = {QStringLiteral("walk"), QStringLiteral("m"), {}, {}};
        std::mt19937_64 random(1);
        std::normal_distribution<float> step;
        float y = 0;
        for (std::size_t i = 0; i < count; ++i) {
            series.x.append(static_cast<float>(i), false);
            series.y.append(y += step(random), false);
        }
        Orv::Chart::DataSet data;
        data.series.push_back(std::move(series));
        Orv::Chart::setUpChartForData(chart, data, QStringLiteral("walk"));
        Orv::Chart::bindData(chart.variables, Orv::Chart::axisPairsOf(chart), std::move(data));
    }
};

void ViewPanFrame(benchmark::State& state)
{
    ensureGuiApplication();
    const auto count = static_cast<std::size_t>(state.range(0));
    WalkChart walk(count);
    Orv::Chart::ChartFrames frames(walk.chart, Orv::Chart::axisPairsOf(walk.chart));
    frames.rescale(QSize(frameWidth, frameHeight));
    auto& x = dynamic_cast<KelChartAxisContinuous&>(*frames.pairs().find(QStringLiteral("axis.x.bottom")));
    x.autoScale.set(false);
    // A view of a fifth of the data, moved by a hundredth of it per step, back and forth.
    const double width = static_cast<double>(count) / 5;
    double start = 0;
    double step = static_cast<double>(count) / 100;
    QImage image(frameWidth, frameHeight, QImage::Format_ARGB32_Premultiplied);
    // The first frame builds the summaries, as the view's first paint does.
    {
        QPainter painter(&image);
        frames.paint(painter);
    }
    for (auto _ : state) {
        if (start + step < 0 || start + step + width > static_cast<double>(count))
            step = -step;
        start += step;
        x.min.set(start);
        x.max.set(start + width);
        frames.rescale(QSize(frameWidth, frameHeight));
        QPainter painter(&image);
        frames.paint(painter);
        benchmark::DoNotOptimize(image.constBits());
    }
}

} // namespace

BENCHMARK(ViewPanFrame)->Arg(1000)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
