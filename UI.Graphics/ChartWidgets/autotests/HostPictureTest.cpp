// One chart, the same pixels from every host: the painter's headless image
// (what kelchart writes) and the chart widget's picture, shown at the same
// size, its kept frame, its image() and a grab() of it. At one device pixel
// per logical pixel in this process; at two in a child process of this test
// whose screen Qt scales by two (QT_SCALE_FACTOR=2), which writes the widget's
// pictures to files for the parent to compare.

#include "ChartPainter.h"
#include "ChartWidget.h"
#include "DataBinding.h"
#include "Plot.h"
#include "SampleChart.h"

#include "ImageChecks.h"
#include "TempFolder.h"

#include <QCoreApplication>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

namespace Chart = Orv::Chart;

// Where the child process writes the widget's pictures; set for the child alone.
const char* const childFolderVariable = "ORV_HOST_PICTURE_FOLDER";

constexpr QSize size{760, 480};

// The sample chart, as both hosts show it.
class SampleChart {
public:
    SampleChart()
        : chart(Chart::SampleChart::build(group))
    {
        Chart::bindData(chart->variables, Chart::axisPairsOf(*chart), Chart::SampleChart::data());
    }

    // What kelchart draws: a pipeline and a painter of its own, in the C locale.
    QImage headless(qreal ratio) const
    {
        const Chart::Plot plot(*chart, Chart::axisPairsOf(*chart), Chart::TickRoom{size, 100, {}});
        return Chart::ChartPainter(plot, size).image(ratio);
    }

    // The chart in a widget of `size`, shown and painted, without the focus
    // frame that it draws over the chart while it has the keyboard.
    std::unique_ptr<Chart::ChartWidget> shown() const
    {
        auto widget = std::make_unique<Chart::ChartWidget>();
        widget->setLocale(QLocale::c());
        widget->setChart(chart.get(), Chart::axisPairsOf(*chart));
        widget->resize(size);
        widget->show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(widget.get()));
        widget->clearFocus();
        widget->repaint();
        return widget;
    }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
};

// Not a pixel may differ.
void expectSamePixels(const QImage& painted, const QImage& host, const char* what)
{
    ASSERT_EQ(host.size(), painted.size()) << what;
    const double differing = OrvTest::differingFraction(painted.convertToFormat(QImage::Format_ARGB32),
                                                        host.convertToFormat(QImage::Format_ARGB32));
    EXPECT_EQ(differing, 0.0) << what << ": " << differing * painted.width() * painted.height() << " pixels differ; "
                              << OrvTest::saveImage(host, what) << " against "
                              << OrvTest::saveImage(painted, "painter");
}

// Printing and exporting render the widget into images of their own ratio, here two.
TEST(HostPictureTest, WidgetShowsAndRendersThePaintersPixels)
{
    const SampleChart sample;
    const QImage painted = sample.headless(1.0);
    const std::unique_ptr<Chart::ChartWidget> widget = sample.shown();
    ASSERT_EQ(widget->devicePixelRatioF(), 1.0);
    expectSamePixels(painted, widget->keptFrame(), "keptFrame");
    expectSamePixels(painted, widget->image(), "image");
    expectSamePixels(painted, widget->grab().toImage(), "grab");

    const QImage painted2x = sample.headless(2.0);
    QImage rendered(painted2x.size(), painted2x.format());
    rendered.setDevicePixelRatio(2.0);
    widget->render(&rendered);
    expectSamePixels(painted2x, rendered, "render");
}

// Runs as the child of the next test, in an application whose screen has two
// device pixels per logical pixel; skipped when run by itself.
TEST(HostPictureChild, WritesTheWidgetsPicturesAtTheScreensRatio)
{
    const QString folder = qEnvironmentVariable(childFolderVariable);
    if (folder.isEmpty())
        GTEST_SKIP() << "runs in a child process of HostPictureTest.WidgetAtRatioTwoShowsThePaintersPixels";
    const SampleChart sample;
    const std::unique_ptr<Chart::ChartWidget> widget = sample.shown();
    ASSERT_EQ(widget->devicePixelRatioF(), 2.0);
    EXPECT_TRUE(widget->keptFrame().save(folder + QStringLiteral("/keptFrame.png")));
    EXPECT_TRUE(widget->grab().toImage().save(folder + QStringLiteral("/grab.png")));
}

TEST(HostPictureTest, WidgetAtRatioTwoShowsThePaintersPixels)
{
    const OrvTest::TempFolder folder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QLatin1String(childFolderVariable), folder.path());
    QProcess child;
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("--gtest_filter=HostPictureChild.WritesTheWidgetsPicturesAtTheScreensRatio")});
    ASSERT_TRUE(child.waitForFinished(60000));
    ASSERT_EQ(child.exitCode(), 0) << child.readAllStandardOutput().toStdString()
                                   << child.readAllStandardError().toStdString();

    const QImage painted = SampleChart().headless(2.0);
    ASSERT_EQ(painted.size(), size * 2);
    expectSamePixels(painted, QImage(folder.path(QStringLiteral("keptFrame.png"))), "keptFrame");
    expectSamePixels(painted, QImage(folder.path(QStringLiteral("grab.png"))), "grab");
}

} // namespace
