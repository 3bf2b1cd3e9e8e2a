// Navigation as a user meets it, in a window laid out as the viewer lays it
// out (the chart beside the property editor's dock) at the viewer's default
// size and at a large one: ranges that hold, zoom and pan that undo each
// other to the pixel, the hover after every change of the frame, history,
// keyboard and legend clicks.
#include "AxisRanges.h"
#include "ChartWidget.h"
#include "DataBinding.h"
#include "HoverText.h"
#include "PropertyEditor.h"
#include "SampleChart.h"
#include "ViewState.h"

#include "KelChartPropertyModel.h"
#include "KelChartVariable.h"

#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QMainWindow>
#include <QMouseEvent>
#include <QTest>
#include <QWheelEvent>

#include "ImageChecks.h"

#include <gtest/gtest.h>

#include <cmath>
#include <memory>

namespace {

using Orv::Chart::AxisSpan;
using Orv::Chart::ChartWidget;
using Orv::Chart::ViewState;

class Navigation : public ::testing::TestWithParam<QSize> {
protected:
    void SetUp() override
    {
        chart = Orv::Chart::SampleChart::build(group);
        Orv::Chart::bindData(chart->variables, Orv::Chart::axisPairsOf(*chart), Orv::Chart::SampleChart::data());
        model = std::make_unique<KelChartPropertyModel>(chart.get());
        view = new ChartWidget;
        view->setChart(chart.get(), Orv::Chart::axisPairsOf(*chart));
        auto* editor = new Orv::Chart::PropertyEditor;
        editor->setModel(model.get());
        editor->attach(view);
        window.setCentralWidget(view);
        auto* dock = new QDockWidget;
        dock->setWidget(editor);
        window.addDockWidget(Qt::RightDockWidgetArea, dock);
        window.resizeDocks({dock}, {460}, Qt::Horizontal);
        window.resize(GetParam());
        window.show();
        QCoreApplication::processEvents();
        ASSERT_NE(view->frames(), nullptr);
    }
    void TearDown() override { view->setChart(nullptr, {}); }

    QRectF plot() const { return view->frames()->layout().plot(); }
    std::vector<AxisSpan> spans() const
    {
        const Orv::Chart::ChartFrames& frames = *view->frames();
        return Orv::Chart::AxisRanges(frames.pipeline(), frames.pairs(), frames.layout()).spans();
    }
    void wheel(QPointF at, int eighths)
    {
        QWheelEvent event(at, view->mapToGlobal(at.toPoint()), QPoint(), QPoint(0, eighths), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(view, &event);
    }
    void move(QPointF at, Qt::MouseButtons held = Qt::NoButton)
    {
        QMouseEvent event(QEvent::MouseMove, at, view->mapToGlobal(at.toPoint()), Qt::NoButton, held, {});
        QApplication::sendEvent(view, &event);
    }
    void dragBy(QPointF from, const std::vector<QPointF>& steps)
    {
        QTest::mousePress(view, Qt::LeftButton, {}, from.toPoint());
        QPointF at = from;
        for (const QPointF& step : steps)
            move(at += step, Qt::LeftButton);
        QTest::mouseRelease(view, Qt::LeftButton, {}, at.toPoint());
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::keyClick(view, static_cast<Qt::Key>(key), modifiers);
    }
    double pixelOf(const AxisSpan& span, double value) const
    {
        const double t = (value - span.min) / (span.max - span.min);
        return span.horizontal ? span.plot.left() + t * span.plot.width() : span.plot.bottom() - t * span.plot.height();
    }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    std::unique_ptr<KelChartPropertyModel> model;
    QMainWindow window;
    ChartWidget* view = nullptr;
};

void expectSameRanges(const std::vector<AxisSpan>& actual, const std::vector<AxisSpan>& expected, const char* what)
{
    ASSERT_EQ(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        const double tolerance = 1e-9 * (expected[i].max - expected[i].min);
        EXPECT_NEAR(actual[i].min, expected[i].min, tolerance) << what << ": " << expected[i].name.toStdString();
        EXPECT_NEAR(actual[i].max, expected[i].max, tolerance) << what << ": " << expected[i].name.toStdString();
    }
}

TEST_P(Navigation, EveryWheelNotchZoomsAboutTheCursorAndAsManyBackReturnExactly)
{
    const QPointF cursor = plot().topLeft() + QPointF(plot().width() * 0.52, plot().height() * 0.4);
    const auto start = spans();
    ASSERT_EQ(start.size(), 3u) << "time, temperature and pressure; the period axis is discrete";
    auto before = start;
    for (int notch = 0; notch < 13; ++notch) {
        wheel(cursor, 120);
        const auto now = spans();
        for (std::size_t i = 0; i < now.size(); ++i) {
            EXPECT_FALSE(now[i].axis->autoScale.get());
            const double was = before[i].max - before[i].min;
            EXPECT_NEAR(now[i].max - now[i].min, 0.8 * was, 1e-9 * was) << "notch " << notch;
            EXPECT_NEAR(now[i].valueAt(cursor), before[i].valueAt(cursor), 1e-9 * was) << "the value under the cursor";
        }
        before = now;
    }
    for (int notch = 0; notch < 13; ++notch)
        wheel(cursor, -120);
    expectSameRanges(spans(), start, "13 in, 13 out");
    for (int round = 0; round < 5; ++round) {
        wheel(cursor, 120);
        wheel(cursor, -120);
    }
    expectSameRanges(spans(), start, "in and out five times");
}

TEST_P(Navigation, ADragMovesTheContentByTheDraggedPixelsAndKeepsTheScale)
{
    const auto start = spans();
    // Mouse events carry whole pixels.
    const QPointF from = plot().center().toPoint();
    dragBy(from, std::vector<QPointF>(9, QPointF(12, -4)));
    const auto after = spans();
    for (std::size_t i = 0; i < after.size(); ++i) {
        const double width = start[i].max - start[i].min;
        EXPECT_NEAR(after[i].max - after[i].min, width, 1e-9 * width) << "the span stays";
        // What was under the press is now under the release, 108 px right and 36 px up.
        EXPECT_NEAR(after[i].valueAt(from + QPointF(108, -36)), start[i].valueAt(from), 1e-9 * width);
    }
    // A 100 px drag moves a data point 100 px.
    const AxisSpan bottom = spans()[0];
    const double x = bottom.valueAt(from);
    dragBy(from, {QPointF(100, 0)});
    EXPECT_NEAR(pixelOf(spans()[0], x) - pixelOf(bottom, x), 100.0, 1e-6);
}

TEST_P(Navigation, TheHoverDescribesWhatIsUnderTheStillCursorAfterEveryChange)
{
    const QPointF cursor = plot().topLeft() + QPointF(plot().width() * 0.3, plot().height() * 0.5);
    move(cursor);
    const auto describesCursor = [&](const char* after) {
        const Orv::Chart::HoverText::Hover fresh = Orv::Chart::HoverText::at(*view->frames(), cursor);
        EXPECT_EQ(view->readOut(), fresh.readOut) << after;
        EXPECT_FALSE(view->readOut().isEmpty()) << after;
        QStringList lines;
        for (const auto& hit : fresh.hits)
            lines << hit.line;
        EXPECT_EQ(view->hoverLines(), lines) << after;
    };
    wheel(cursor, 120);
    describesCursor("a zoom");
    dragBy(plot().center(), {QPointF(30, 10)});
    move(cursor);
    key(Qt::Key_Left);
    describesCursor("a pan by key");
    QTest::mouseDClick(view, Qt::LeftButton, {}, plot().center().toPoint());
    move(cursor);
    view->zoomIn();
    describesCursor("a zoom by action");
    window.resize(GetParam() - QSize(80, 40));
    QCoreApplication::processEvents();
    describesCursor("a resize");
}

// The period axis at the top shares the bottom edge's direction: "afternoon"
// (12 to 18 h) stays centred on 15 h however the hours zoom and pan.
TEST_P(Navigation, TheCategoriesOnTopMoveWithTheHoursBelow)
{
    const auto afternoonAt15h = [&](const char* after) {
        const Orv::Chart::PlotAxis* top = view->frames()->pipeline().axis(QStringLiteral("axis.x.top"));
        ASSERT_NE(top, nullptr) << after;
        const auto& ticks = top->ticks.major();
        const auto afternoon = std::find_if(ticks.begin(), ticks.end(), [](const Orv::Chart::Tick& tick) {
            return tick.label == QStringLiteral("afternoon");
        });
        ASSERT_NE(afternoon, ticks.end()) << after;
        const double x = view->frames()->layout().alongAxis(Orv::Chart::AxisSide::Top, afternoon->position).x();
        EXPECT_NEAR(x, pixelOf(spans()[0], 15.0), 0.01) << after;
    };
    afternoonAt15h("home");
    wheel(plot().topLeft() + QPointF(plot().width() * 0.55, 20), 240);
    afternoonAt15h("a zoom");
    dragBy(plot().center().toPoint(), {QPointF(-37, 0)});
    afternoonAt15h("a pan");
    view->back();
    afternoonAt15h("back");
    view->home();
    afternoonAt15h("home again");
}

TEST_P(Navigation, HomeBackAndForwardWalkThroughTheViews)
{
    const ViewState home = ViewState::of(view->frames()->pairs());
    EXPECT_FALSE(view->canGoBack());
    wheel(plot().center(), 120);
    wheel(plot().center(), 120); // the same gesture: one step
    const ViewState zoomed = ViewState::of(view->frames()->pairs());
    dragBy(plot().center(), {QPointF(40, 0)});
    const ViewState panned = ViewState::of(view->frames()->pairs());
    EXPECT_EQ(view->history().size(), 3u);
    view->back();
    EXPECT_TRUE(ViewState::of(view->frames()->pairs()) == zoomed);
    view->back();
    EXPECT_TRUE(ViewState::of(view->frames()->pairs()) == home);
    EXPECT_FALSE(view->canGoBack());
    view->forward();
    view->forward();
    EXPECT_TRUE(ViewState::of(view->frames()->pairs()) == panned);
    EXPECT_FALSE(view->canGoForward());
    key(Qt::Key_Home);
    EXPECT_TRUE(ViewState::of(view->frames()->pairs()) == home);
    view->back();
    EXPECT_TRUE(ViewState::of(view->frames()->pairs()) == panned) << "Home is a step of its own";
}

TEST_P(Navigation, TheWheelOverAnAxisZoomsThatAxisAloneAndOverTheLegendNothing)
{
    const auto start = spans();
    const QRectF band = view->frames()->layout().axisBand(Orv::Chart::AxisSide::Left);
    wheel(band.center(), 120);
    const auto after = spans();
    for (std::size_t i = 0; i < after.size(); ++i) {
        const bool left = start[i].side == Orv::Chart::AxisSide::Left;
        const double width = start[i].max - start[i].min;
        EXPECT_NEAR(after[i].max - after[i].min, left ? 0.8 * width : width, 1e-9 * width) << i;
    }
    wheel(view->frames()->layout().legendBox().center(), 120);
    expectSameRanges(spans(), after, "the legend");
}

TEST_P(Navigation, KeysPanZoomAndCancel)
{
    const auto start = spans();
    key(Qt::Key_Right);
    EXPECT_NEAR(spans()[0].min - start[0].min, 0.1 * (start[0].max - start[0].min), 1e-9);
    key(Qt::Key_Left);
    expectSameRanges(spans(), start, "right and left");
    key(Qt::Key_Plus);
    key(Qt::Key_Minus);
    expectSameRanges(spans(), start, "plus and minus");
    // Escape drops a rubber band half drawn.
    QTest::mousePress(view, Qt::RightButton, {}, plot().center().toPoint());
    move(plot().center() + QPointF(80, 60), Qt::RightButton);
    key(Qt::Key_Escape);
    QTest::mouseRelease(view, Qt::RightButton, {}, (plot().center() + QPointF(80, 60)).toPoint());
    expectSameRanges(spans(), start, "a cancelled band");
}

TEST_P(Navigation, TabAndArrowsWalkAPointCursorThroughTheSeries)
{
    view->setFocus();
    EXPECT_FALSE(view->pointCursor().valid());
    key(Qt::Key_Tab);
    const Orv::Chart::PointCursor first = view->pointCursor();
    ASSERT_TRUE(first.valid());
    EXPECT_FALSE(view->pointCursorText().isEmpty());
    key(Qt::Key_Right);
    key(Qt::Key_Right);
    EXPECT_EQ(view->pointCursor().index, first.index + 2);
    key(Qt::Key_Left);
    EXPECT_EQ(view->pointCursor().index, first.index + 1);
    key(Qt::Key_Tab);
    EXPECT_NE(view->pointCursor().series, first.series);
    key(Qt::Key_Escape);
    EXPECT_FALSE(view->pointCursor().valid());
}

TEST_P(Navigation, ALegendClickHidesASeriesAndASecondShowsIt)
{
    const Orv::Chart::ChartLayout& layout = view->frames()->layout();
    const std::size_t entries = layout.legendEntries().size();
    ASSERT_GT(entries, 1u);
    const QPointF entry = layout.legendCell(1).center();
    auto& air = dynamic_cast<KelChartVariable&>(*chart->variables.at(QStringLiteral("T1")));
    const QImage shown = view->grab().toImage();
    QTest::mouseClick(view, Qt::LeftButton, {}, entry.toPoint());
    EXPECT_FALSE(air.enabled.get());
    EXPECT_EQ(view->frames()->layout().legendEntries().size(), entries) << "still listed";
    const QImage hidden = view->grab().toImage();
    EXPECT_GT(OrvTest::differingFraction(shown, hidden), 0.0);
    // Slower than a double click, which toggles once.
    QTest::mouseClick(view, Qt::LeftButton, {}, entry.toPoint(), QApplication::doubleClickInterval() + 50);
    EXPECT_TRUE(air.enabled.get());
}

// Fit y narrows the vertical axes to the data inside the hours shown.
TEST_P(Navigation, FitYTakesTheDataInViewAndCopiesTellWhatIsShown)
{
    view->zoomIn();
    view->zoomIn();
    view->panBy({-plot().width() / 4, 0});
    const auto before = spans();
    view->fitY();
    const auto fitted = spans();
    // The data drawn inside the hours shown fill the fitted ranges but for a 5% margin at each end.
    const KelChartPerVariableScaling& scaling = view->frames()->pipeline().scaling();
    for (std::size_t i = 0; i < fitted.size(); ++i) {
        if (fitted[i].horizontal) {
            EXPECT_EQ(fitted[i].min, before[i].min);
            continue;
        }
        double lo = HUGE_VAL, hi = -HUGE_VAL;
        for (std::size_t k = 0; k < scaling.size(); ++k) {
            const KelChartVariableCache& cache = scaling.variable(k);
            if (!scaling.valid(k) || cache.variable().yAxis.get() != fitted[i].name
                || cache.variable().xAxis.get() != fitted[0].name)
                continue;
            for (std::size_t p = 0; p < cache.x().size(); ++p)
                if (cache.x()[p] >= fitted[0].min && cache.x()[p] <= fitted[0].max && std::isfinite(cache.y()[p])) {
                    lo = std::min(lo, cache.y()[p]);
                    hi = std::max(hi, cache.y()[p]);
                }
        }
        EXPECT_NEAR(fitted[i].min, lo - 0.05 * (hi - lo), 1e-9) << fitted[i].name.toStdString();
        EXPECT_NEAR(fitted[i].max, hi + 0.05 * (hi - lo), 1e-9) << fitted[i].name.toStdString();
    }
    view->zoomOut();
    EXPECT_NEAR(spans()[0].max - spans()[0].min, (fitted[0].max - fitted[0].min) / 0.8, 1e-9);

    move(plot().center());
    view->copyValues();
    EXPECT_TRUE(QApplication::clipboard()->text().startsWith(QStringLiteral("time = "))) << "the read-out first";
    view->copyImage();
    EXPECT_EQ(QApplication::clipboard()->image().size(), view->size());
    EXPECT_TRUE(OrvTest::anythingDrawn(view->image(), plot().toRect(), Qt::white));
}

INSTANTIATE_TEST_SUITE_P(WindowSizes, Navigation, ::testing::Values(QSize(1100, 640), QSize(1560, 940)),
                         [](const ::testing::TestParamInfo<QSize>& info) { return std::to_string(info.param.width()) + "x" + std::to_string(info.param.height());
                         });

} // namespace
