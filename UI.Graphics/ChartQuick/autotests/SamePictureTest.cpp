// The chart item draws, pixel for pixel, the picture the headless painter
// makes of the same chart at the same size: at the screen's pixel ratio, and
// at ratio 2 in a child process started with QT_SCALE_FACTOR=2.
#include "QuickWindow.h"

#include "ChartPainter.h"
#include "DataBinding.h"
#include "Plot.h"
#include "SampleChart.h"

#include "ImageChecks.h"

#include <QProcess>

#include <memory>

namespace {

// Set in the child process that runs the ratio-2 case.
const char scaledRun[] = "ORV_QUICK_SCALED_RUN";

struct Sample {
    Sample()
    {
        chart = Orv::Chart::SampleChart::build(group);
        pairs = Orv::Chart::axisPairsOf(*chart);
        Orv::Chart::bindData(chart->variables, pairs, Orv::Chart::SampleChart::data());
    }
    // The headless picture: what kelchart writes to PNG.
    QImage painted(QSize size, qreal ratio) const
    {
        const Orv::Chart::Plot plot(*chart, pairs, {size, 100, {}});
        return Orv::Chart::ChartPainter(plot, size).image(ratio);
    }
    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    Orv::Chart::AxisPairs pairs;
};

// Grabs the item showing the sample at `size` and compares it with the headless picture.
void expectSamePicture(QSize size)
{
    Sample sample;
    quicktest::QuickChart quick(size);
    quick.item->setChart(sample.chart.get(), sample.pairs);
    const QImage grabbed = quick.grab();
    const qreal ratio = quick.window->effectiveDevicePixelRatio();
    const QImage painted = sample.painted(size, ratio);
    ASSERT_EQ(grabbed.size(), painted.size()) << "ratio " << ratio;
    EXPECT_EQ(OrvTest::differingFraction(grabbed.convertToFormat(QImage::Format_RGB32),
                                         painted.convertToFormat(QImage::Format_RGB32)),
              0.0)
        << "ratio " << ratio;
    EXPECT_EQ(quick.item->keptFrame().size(), painted.size());
    quick.item->setChart(nullptr, {});
}

class SamePicture : public ::testing::TestWithParam<QSize> {};

TEST_P(SamePicture, TheItemShowsTheHeadlessPicture)
{
    expectSamePicture(GetParam());
}

INSTANTIATE_TEST_SUITE_P(Sizes, SamePicture, ::testing::Values(QSize(800, 500), QSize(1037, 611)));

// Disabled in the test run itself: the child process of the next test runs it.
TEST(SamePictureScaled, DISABLED_AtRatioTwo)
{
    ASSERT_FALSE(qEnvironmentVariableIsEmpty(scaledRun)) << "run by SamePictureRatio.AtRatioTwoInAProcessOfItsOwn";
    quicktest::QuickChart probe(QSize(200, 200));
    ASSERT_EQ(probe.window->effectiveDevicePixelRatio(), 2.0);
    expectSamePicture(QSize(800, 500));
}

TEST(SamePictureRatio, AtRatioTwoInAProcessOfItsOwn)
{
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    environment.insert(QString::fromLatin1(scaledRun), QStringLiteral("1"));
    child.setProcessEnvironment(environment);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--gtest_filter=SamePictureScaled.*"),
                                                          QStringLiteral("--gtest_also_run_disabled_tests")});
    ASSERT_TRUE(child.waitForFinished(120000));
    const QString output = QString::fromLocal8Bit(child.readAll());
    EXPECT_EQ(child.exitCode(), 0) << output.toStdString();
    EXPECT_TRUE(output.contains(QStringLiteral("[  PASSED  ] 1 test"))) << output.toStdString();
}

} // namespace
