// The live mode as a user starts and drives it: the command line, a generator
// feeding the window, and rows written into a pipe arriving in the chart.
#include "Failure.h"
#include "LineSource.h"
#include "LiveView.h"
#include "MessageBar.h"
#include "SignalGenerator.h"
#include "ViewOptions.h"
#include "ViewWindow.h"

#include "ChartWidget.h"
#include "LiveFeed.h"

#include "KelChartLiveSeries.h"

#include "TempFolder.h"

#include <QAction>
#include <QFile>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <ostream>

namespace {

using kelview::LiveOptions;
using Source = LiveOptions::Source;

struct LiveLine {
    const char* arguments;
    Source source;
    double rate;
    std::size_t limit;
    double follow;
};

void PrintTo(const LiveLine& line, std::ostream* out)
{
    *out << line.arguments;
}

LiveOptions parse(const char* arguments)
{
    const QStringList words = QString::fromUtf8(arguments).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return kelview::ViewOptions::parse(QStringList(QStringLiteral("kelview")) + words).live;
}

class LiveCommandLine : public ::testing::TestWithParam<LiveLine> {};

TEST_P(LiveCommandLine, NamesTheSourceAndItsSettings)
{
    const LiveOptions live = parse(GetParam().arguments);
    EXPECT_EQ(live.source, GetParam().source);
    EXPECT_EQ(live.rate, GetParam().rate);
    EXPECT_EQ(live.limit, GetParam().limit);
    EXPECT_EQ(live.follow, GetParam().follow);
}

INSTANTIATE_TEST_SUITE_P(
    Lines, LiveCommandLine,
    ::testing::Values(LiveLine{"", Source::None, 1000, 1000000, 0},
                      LiveLine{"--live generator", Source::Generator, 1000, 1000000, 10},
                      LiveLine{"--live generator:1e6 --limit 5000 --follow 2.5", Source::Generator, 1e6, 5000, 2.5},
                      LiveLine{"--live generator --follow 0 --limit 0", Source::Generator, 1000, 0, 0},
                      LiveLine{"--live -", Source::StandardInput, 1000, 1000000, 0},
                      LiveLine{"--follow 30 --live /tmp/rows.fifo", Source::Path, 1000, 1000000, 30}));

class LiveCommandLineFault : public ::testing::TestWithParam<const char*> {};

TEST_P(LiveCommandLineFault, IsBadUsage)
{
    try {
        parse(GetParam());
        FAIL() << "accepted";
    } catch (const kelchart::Failure& failure) {
        EXPECT_EQ(failure.status(), kelchart::Failure::BadUsage);
    }
}

INSTANTIATE_TEST_SUITE_P(Lines, LiveCommandLineFault,
                         ::testing::Values("--live generator:0", "--live generator:fast", "--limit 10",
                                           "--live - data.csv", "--live - --limit 1.5", "--live - --follow -1"));

// A window in live mode, as main() makes it.
class LiveWindow : public ::testing::Test {
protected:
    void open(std::unique_ptr<kelview::LiveSource> source, const LiveOptions& options)
    {
        window = std::make_unique<kelview::ViewWindow>(kelview::LiveView::waiting(source->name()));
        window->setAttribute(Qt::WA_QuitOnClose, false);
        window->setSavePrompt([] { return kelview::SaveAnswer::Discard; });
        window->resize(900, 500);
        window->show();
        live = new kelview::LiveView(*window, std::move(source), options);
        ASSERT_TRUE(QTest::qWaitFor([this] { return live->feed() != nullptr; }, 5000)) << "no table arrived";
    }

    // What one series holds now.
    std::vector<double> ys(std::size_t series) const
    {
        const KelChartDecimatedView::Data data = live->feed()->series(series).data();
        return std::vector<double>(data.y, data.y + data.size);
    }

    std::unique_ptr<kelview::ViewWindow> window;
    kelview::LiveView* live = nullptr;
};

// Writes `text` into a named pipe and closes it again, as one writer of several.
void writeOnce(const QString& fifo, const QByteArray& text)
{
    const int fd = ::open(QFile::encodeName(fifo).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(fd, 0);
    EXPECT_EQ(::write(fd, text.constData(), static_cast<std::size_t>(text.size())), text.size());
    ::close(fd);
}

} // namespace

TEST_F(LiveWindow, AGeneratorGrowsItsSeriesUpToTheLimit)
{
    LiveOptions options;
    options.limit = 2000;
    options.follow = 1;
    open(std::make_unique<kelview::SignalGenerator>(20000), options);
    Orv::Chart::LiveFeed& feed = *live->feed();
    ASSERT_EQ(feed.seriesCount(), 4u);
    QTest::qWait(500);
    for (std::size_t s = 0; s < feed.seriesCount(); ++s) {
        EXPECT_GT(feed.series(s).appended(), 4000u) << "a fifth of the rate in half a second";
        EXPECT_LE(feed.series(s).items(), 2000u);
    }
    EXPECT_EQ(live->limitField()->value(), 2000);
    live->limitField()->setValue(500);
    EXPECT_EQ(feed.limit(), 500u);
    EXPECT_LE(feed.series(0).items(), 500u);
    EXPECT_TRUE(QTest::qWaitFor([this] { return live->statusText().contains(QStringLiteral("items/s")); }, 3000));
}

TEST_F(LiveWindow, SpacePausesTheViewWhileItemsKeepComing)
{
    open(std::make_unique<kelview::SignalGenerator>(5000), {});
    Orv::Chart::LiveFeed& feed = *live->feed();
    window->chartView()->setFocus();
    QTest::keyClick(window->chartView(), Qt::Key_Space);
    ASSERT_TRUE(feed.paused());
    EXPECT_EQ(live->pauseAction()->text(), QStringLiteral("&Resume"));
    const std::uint64_t shown = feed.series(0).appended();
    QTest::qWait(200);
    EXPECT_EQ(feed.series(0).appended(), shown) << "a paused view holds still";
    live->pauseAction()->trigger();
    EXPECT_FALSE(feed.paused());
    EXPECT_GT(feed.series(0).appended(), shown + 500) << "what arrived while paused is drawn on resuming";
}

TEST_F(LiveWindow, RowsWrittenIntoAPipeArriveInTheChart)
{
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    const QByteArray head = "time [s],level [m]\n0,1.5\n1,2.5\n";
    ASSERT_EQ(::write(ends[1], head.constData(), static_cast<std::size_t>(head.size())), head.size());
    open(std::make_unique<kelview::LineSource>(ends[0], true, QStringLiteral("pipe"), kelview::LineSource::AtEnd::Stop),
         {});
    QByteArray rows = "2,3.5\n3,oops\n";
    for (int i = 4; i < 40; ++i)
        rows += QByteArray::number(i) + ',' + QByteArray::number(i + 0.5) + '\n';
    ASSERT_EQ(::write(ends[1], rows.constData(), static_cast<std::size_t>(rows.size())), rows.size());
    ::close(ends[1]);
    const auto messages = [this] { return window->messageBar()->lines().join(QLatin1Char('\n')); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return messages().contains(QStringLiteral("pipe ended")); }, 5000))
        << messages().toStdString();
    EXPECT_TRUE(messages().contains(QStringLiteral("pipe:5: column \"level\" holds \"oops\"")))
        << messages().toStdString();
    const KelChartLiveSeries& level = live->feed()->series(0);
    const KelChartDecimatedView::Data data = level.data();
    ASSERT_EQ(data.size, 39u) << "the head's rows, then every good row";
    EXPECT_EQ(data.x[0], 0.0);
    EXPECT_EQ(data.y[2], 3.5);
    EXPECT_EQ(data.x[38], 39.0);
    EXPECT_EQ(data.y[38], 39.5);
    EXPECT_EQ(window->windowTitle(), QStringLiteral("pipe[*] - kelview"));
}

// A named pipe outlives its writers: each may leave a last line without a line break, which ends with it.
TEST_F(LiveWindow, ANamedPipeTakesWriterAfterWriter)
{
    const OrvTest::TempFolder folder;
    const QString fifo = folder.path(QStringLiteral("rows"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    std::unique_ptr<kelview::LineSource> source = kelview::LineSource::open(fifo);
    writeOnce(fifo, "n,v\n1,10\n2,20\n3,30");
    open(std::move(source), {});
    ASSERT_TRUE(QTest::qWaitFor([this] { return ys(0).size() == 3; }, 5000));
    writeOnce(fifo, "4,40\n");
    ASSERT_TRUE(QTest::qWaitFor([this] { return ys(0).size() == 4; }, 5000));
    EXPECT_EQ(ys(0), (std::vector<double>{10, 20, 30, 40}));
    EXPECT_TRUE(window->messageBar()->lines().isEmpty()) << "a pipe without writers has not ended";
}
