// Live data through a chart widget: items posted from other threads arrive
// in the series, frames follow, and a live frame looks like the frame of a
// chart holding the same data.
#include "ChartSetUp.h"
#include "ChartWidget.h"
#include "DataBinding.h"
#include "ImageChecks.h"
#include "LiveFeed.h"

#include "KelChart2D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartLiveSeries.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <thread>

namespace {

constexpr std::size_t seriesCount = 2;

// Two signals sampled every millisecond from `first` on.
struct Samples {
    std::vector<double> x;
    std::vector<std::vector<double>> y{seriesCount};

    Samples(std::size_t first, std::size_t count)
    {
        for (std::size_t k = first; k < first + count; ++k) {
            x.push_back(double(k) * 1e-3);
            y[0].push_back(std::sin(x.back() * 3.0) + 0.3 * std::sin(x.back() * 41.0));
            y[1].push_back(std::fmod(x.back(), 1.7) - 0.85);
        }
    }
};

class LiveFeedTest : public ::testing::Test {
protected:
    // A chart set up for the two series as for a file holding `rows` samples.
    void build(std::size_t rows)
    {
        const Samples samples(0, rows);
        Orv::Chart::DataSet data;
        for (std::size_t i = 0; i < seriesCount; ++i) {
            Orv::Chart::DataSeries series;
            series.x = {QStringLiteral("time"), QStringLiteral("s"), {}, {}};
            series.y = {QStringLiteral("signal %1").arg(i + 1), QStringLiteral("V"), {}, {}};
            for (std::size_t k = 0; k < rows; ++k) {
                series.x.append(float(samples.x[k]), false);
                series.y.append(float(samples.y[i][k]), false);
            }
            data.series.push_back(std::move(series));
        }
        Orv::Chart::setUpChartForData(chart, data, QStringLiteral("live"));
        Orv::Chart::bindData(chart.variables, Orv::Chart::axisPairsOf(chart), std::move(data));
        widget = std::make_unique<Orv::Chart::ChartWidget>();
        widget->resize(700, 450);
        widget->setChart(&chart, Orv::Chart::axisPairsOf(chart));
        widget->show();
        QCoreApplication::processEvents();
    }
    // Posts the samples as floats, as the chart's own items hold them.
    void post(Orv::Chart::LiveFeed& feed, const Samples& samples)
    {
        std::vector<double> x;
        for (const double value : samples.x)
            x.push_back(float(value));
        for (std::size_t i = 0; i < seriesCount; ++i) {
            std::vector<double> y;
            for (const double value : samples.y[i])
                y.push_back(float(value));
            feed.post(i, x, std::move(y));
        }
    }

    KelModifiedGroup group;
    KelChart2D chart{group};
    std::unique_ptr<Orv::Chart::ChartWidget> widget;
};

TEST_F(LiveFeedTest, ALiveFrameLooksLikeTheFrameOfTheSameData)
{
    build(20000);
    const QImage cached = widget->image();
    Orv::Chart::LiveFeed feed(*widget);
    post(feed, Samples(0, 20000));
    feed.drain();
    EXPECT_EQ(feed.series(0).items(), 20000u);
    EXPECT_EQ(feed.framesDrawn(), 1u);
    // Frames are plain while items arrive; the settled one follows when they stop.
    EXPECT_TRUE(widget->frames()->interactive());
    QElapsedTimer waited;
    waited.start();
    while (widget->frames()->interactive() && waited.elapsed() < 5000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    const QImage live = widget->image();
    EXPECT_EQ(OrvTest::differingFraction(cached, live), 0.0) << OrvTest::saveImage(live, "live");
}

TEST_F(LiveFeedTest, ItemsFromOtherThreadsArriveWithinTheLimit)
{
    build(10);
    Orv::Chart::LiveFeed feed(*widget, 5000);
    std::vector<std::thread> writers;
    for (std::size_t t = 0; t < 4; ++t)
        writers.emplace_back([&, t] {
            for (std::size_t block = 0; block < 50; ++block)
                post(feed, Samples((t * 50 + block) * 100, 100));
        });
    for (std::thread& writer : writers)
        writer.join();
    feed.drain();
    // Queued items beyond what the limit keeps may be dropped before they are appended.
    EXPECT_GE(feed.itemsAppended(), 5000u * seriesCount);
    EXPECT_LE(feed.itemsAppended(), 4u * 50 * 100 * seriesCount);
    for (std::size_t i = 0; i < seriesCount; ++i)
        EXPECT_EQ(feed.series(i).items(), 5000u);
    EXPECT_FALSE(widget->frames()->pipeline().axes().empty());
}

TEST_F(LiveFeedTest, TheXAxisFollowsTheNewestItemsAndPausingHoldsTheView)
{
    build(10);
    Orv::Chart::LiveFeed feed(*widget, 100000);
    feed.setFollowWidth(2.0);
    post(feed, Samples(0, 5000));
    feed.drain();
    auto& x = dynamic_cast<KelChartAxisContinuous&>(*widget->frames()->pairs().x->first());
    EXPECT_FLOAT_EQ(float(x.max.get()), float(4.999));
    EXPECT_FLOAT_EQ(float(x.min.get()), float(2.999));

    feed.setPaused(true);
    post(feed, Samples(5000, 1000));
    feed.drain();
    EXPECT_EQ(feed.series(0).items(), 5000u);
    EXPECT_FLOAT_EQ(float(x.max.get()), float(4.999));
    feed.setPaused(false);
    EXPECT_EQ(feed.series(0).items(), 6000u);
    EXPECT_FLOAT_EQ(float(x.max.get()), float(5.999));
}

TEST_F(LiveFeedTest, TheHoverAndFitYReadTheLiveSeries)
{
    build(10);
    Orv::Chart::LiveFeed feed(*widget);
    post(feed, Samples(0, 3000));
    feed.drain();
    const QRectF plot = widget->frames()->layout().plot();
    const Orv::Chart::HoverText::Hover hover =
        Orv::Chart::HoverText::at(*widget->frames(), plot.center(), QLocale::c());
    ASSERT_EQ(hover.hits.size(), seriesCount);
    EXPECT_NEAR(double(hover.hits[0].index), 1500.0, 30.0);

    // Fit y finds the live points inside the x range shown.
    auto& y = dynamic_cast<KelChartAxisContinuous&>(*widget->frames()->pairs().y->first());
    widget->fitY();
    EXPECT_FALSE(y.autoScale.get());
    EXPECT_LT(y.min.get(), -1.0);
    EXPECT_GT(y.max.get(), 1.0);
}

} // namespace
