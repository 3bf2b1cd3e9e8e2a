// Frame time of the interactive view while it pans: each step writes the
// x axis's range into the chart, reruns the scales over the kept caches and
// draws the whole frame (title, grid, series, axes, legend) into an image,
// as the view's paint event does. A pan draws interactive frames; the settled
// frame is the one drawn once the user lets go. The floor is what Qt takes
// to draw as many vertices as the frame's line has, laid out as a smooth
// curve that never turns back, with the series' pen.
//
// A hover frame is what the chart widget does when the mouse moves: the
// read-out and nearest points found, the kept picture of the chart drawn
// with the crosshair and hover box over it. A live frame appends the items
// that arrived since the last frame (1e5 per second at 60 frames per second)
// to a rolling window of 1e7 points and draws it, beside a frame of the same
// window without appends.

#include "ChartFrames.h"
#include "ChartSetUp.h"
#include "ChartWidget.h"
#include "DataBinding.h"

#include "KelChart2D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartLiveSeries.h"
#include "WalkChart.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QMouseEvent>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>

namespace {

constexpr QSize frameSize(1000, 600);
constexpr QSize largeFrameSize(1600, 1000);

void ensureGuiApplication()
{
    static int argc = 1;
    static char name[] = "orv-benchmarks";
    static char* argv[] = {name, nullptr};
    // Lives until the process ends: fonts need it for every case.
    if (QCoreApplication::instance() == nullptr)
        new QApplication(argc, argv);
}

// The view of a fifth of the walk, moved by a hundredth of it per step, back and forth.
class PanningView {
public:
    PanningView(std::size_t count, QSize size, bool interactive)
        : m_walk(count)
        , m_frames(m_walk.chart, Orv::Chart::axisPairsOf(m_walk.chart))
        , m_x(dynamic_cast<KelChartAxisContinuous&>(*m_frames.pairs().find(QStringLiteral("axis.x.bottom"))))
        , m_count(static_cast<double>(count))
        , m_width(m_count / 5)
        , m_step(m_count / 100)
        , m_image(size, QImage::Format_ARGB32_Premultiplied)
    {
        m_frames.setInteractive(interactive);
        m_x.autoScale.set(false);
        showFrom(0);
        // The first frame builds the summaries, as the view's first paint does.
        paint();
    }

    void step()
    {
        if (m_start + m_step < 0 || m_start + m_step + m_width > m_count)
            m_step = -m_step;
        showFrom(m_start + m_step);
    }

    void paint()
    {
        QPainter painter(&m_image);
        m_frames.paint(painter);
    }

    const QImage& image() const { return m_image; }
    QRectF plot() const { return m_frames.layout().plot(); }

    // The points the frame's line joins, breaks not counted.
    std::size_t lineVertices() const
    {
        const QRectF area = plot();
        const KelChartDecimatedView::Placement placement{
            m_frames.pipeline().scaling().preciseMatrix(0), 0.0, area.left(), area.bottom(), area.width(),
            area.height()};
        const std::vector<std::size_t> lines = m_frames.view(0).lines(placement);
        return static_cast<std::size_t>(std::count_if(
            lines.begin(), lines.end(), [](std::size_t k) { return k != KelChartDecimatedView::breakMark; }));
    }

private:
    void showFrom(double start)
    {
        m_start = start;
        m_x.min.set(m_start);
        m_x.max.set(m_start + m_width);
        m_frames.rescale(m_image.size());
    }

    WalkChart m_walk;
    Orv::Chart::ChartFrames m_frames;
    KelChartAxisContinuous& m_x;
    double m_count;
    double m_width;
    double m_step;
    double m_start = 0;
    QImage m_image;
};

void panFrames(benchmark::State& state, QSize size, bool interactive)
{
    ensureGuiApplication();
    PanningView view(static_cast<std::size_t>(state.range(0)), size, interactive);
    for (auto _ : state) {
        view.step();
        view.paint();
        benchmark::DoNotOptimize(view.image().constBits());
    }
}

void ViewPanFrame(benchmark::State& state)
{
    panFrames(state, frameSize, true);
}

void ViewPanFrameLarge(benchmark::State& state)
{
    panFrames(state, largeFrameSize, true);
}

void ViewSettledFrame(benchmark::State& state)
{
    panFrames(state, frameSize, false);
}

// A few waves across the plot, one vertex every so often.
QPolygonF smoothCurve(const QRectF& plot, std::size_t vertices)
{
    constexpr double waves = 3;
    constexpr double twoPi = 6.283185307179586;
    QPolygonF curve;
    const double last = static_cast<double>(std::max<std::size_t>(vertices, 2) - 1);
    for (std::size_t i = 0; i < vertices; ++i) {
        const double t = static_cast<double>(i) / last;
        curve << QPointF(plot.left() + t * plot.width(),
                         plot.center().y() + 0.4 * plot.height() * std::sin(twoPi * waves * t));
    }
    return curve;
}

void ViewFrameFloor(benchmark::State& state)
{
    ensureGuiApplication();
    const PanningView view(static_cast<std::size_t>(state.range(0)), frameSize, true);
    const QPolygonF curve = smoothCurve(view.plot(), view.lineVertices());
    QPen pen(Qt::blue, 1.5, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    QImage image(frameSize, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : state) {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(pen);
        painter.drawPolyline(curve);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.counters["vertices"] = static_cast<double>(curve.size());
}

// The widget's paint after a mouse move across the plot, back and forth.
void ViewHoverFrame(benchmark::State& state)
{
    ensureGuiApplication();
    WalkChart walk(static_cast<std::size_t>(state.range(0)));
    Orv::Chart::ChartWidget widget;
    widget.resize(frameSize);
    widget.setChart(&walk.chart, Orv::Chart::axisPairsOf(walk.chart));
    widget.show();
    QImage image(frameSize, QImage::Format_ARGB32_Premultiplied);
    widget.render(&image);
    const QRectF plot = widget.frames()->layout().plot();
    double t = 0.1;
    for (auto _ : state) {
        t = t > 0.9 ? 0.1 : t + 0.013;
        const QPointF at(plot.left() + t * plot.width(), plot.center().y());
        QMouseEvent move(QEvent::MouseMove, at, widget.mapToGlobal(at.toPoint()), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &move);
        widget.render(&image);
        benchmark::DoNotOptimize(image.constBits());
    }
    state.counters["hover_lines"] = double(widget.hoverLines().size());
}

// A rolling window of 1e7 points of a walk, shown by frames of a chart set up for it.
class LiveWindow {
public:
    static constexpr std::size_t window = 10000000;

    LiveWindow()
        : m_walk(10)
        , m_live(*m_walk.chart.variables.at(0u), window)
        , m_frames(m_walk.chart, Orv::Chart::axisPairsOf(m_walk.chart))
        , m_image(frameSize, QImage::Format_ARGB32_Premultiplied)
    {
        append(window);
        m_frames.showLive({&m_live});
        m_frames.rescale(frameSize);
        paint();
    }
    void append(std::size_t count)
    {
        std::vector<double> x(count), y(count);
        for (std::size_t k = 0; k < count; ++k) {
            x[k] = double(m_next++);
            y[k] = m_y += m_step(m_random);
        }
        m_live.append(x.data(), y.data(), count);
    }
    void paint()
    {
        m_frames.liveAppended();
        QPainter painter(&m_image);
        m_frames.paint(painter);
        benchmark::DoNotOptimize(m_image.constBits());
    }

private:
    WalkChart m_walk;
    KelChartLiveSeries m_live;
    Orv::Chart::ChartFrames m_frames;
    QImage m_image;
    std::size_t m_next = 0;
    double m_y = 0;
    std::mt19937_64 m_random{3};
    std::normal_distribution<double> m_step;
};

void LiveFrame(benchmark::State& state)
{
    ensureGuiApplication();
    static LiveWindow live;
    // 1e5 items a second at 60 frames a second.
    const auto perFrame = static_cast<std::size_t>(state.range(0));
    for (auto _ : state) {
        live.append(perFrame);
        live.paint();
    }
    state.counters["items_per_frame"] = double(perFrame);
}

} // namespace

BENCHMARK(ViewPanFrame)->Arg(1000)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
// A hundred million points: 3.6 GB at the peak (the chart's float items, then the cache).
BENCHMARK(ViewPanFrame)->Name("ViewPanFrame")->Arg(100000000)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(ViewHoverFrame)->Arg(1000)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(LiveFrame)->Arg(0)->Arg(1667)->Unit(benchmark::kMillisecond);
BENCHMARK(ViewPanFrameLarge)->Arg(1000)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(ViewSettledFrame)->Arg(1000)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
BENCHMARK(ViewFrameFloor)->Arg(1000)->Arg(10000)->Arg(1000000)->Arg(10000000)->Unit(benchmark::kMillisecond);
