// kelquick as a user starts it: --screenshot writes the window with its chart.
#include "ImageChecks.h"
#include "TempFolder.h"

#include <QImage>
#include <QProcess>
#include <QSet>

#include <gtest/gtest.h>

namespace {

struct Outcome {
    int exitCode;
    QString output;
    QImage image;
};

Outcome kelquick(const QStringList& arguments, const QString& screenshot)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    // Qt 5.15's offscreen platform never frees its screen once a Qt Quick window has been
    // on it (a cycle of screen and platform screen): the program's leak check would report Qt.
    environment.insert(QStringLiteral("ASAN_OPTIONS"),
                       environment.value(QStringLiteral("ASAN_OPTIONS")) + QStringLiteral(":detect_leaks=0"));
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(KELQUICK_PATH), arguments + QStringList{QStringLiteral("--screenshot"), screenshot});
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), QString::fromLocal8Bit(process.readAll()), QImage(screenshot)};
}

// Colours far from grey: the series, not the text, grid or toolbar.
int seriesColours(const QImage& image)
{
    QSet<QRgb> hues;
    for (int y = 0; y < image.height(); y += 2)
        for (int x = 0; x < image.width(); x += 2) {
            const QColor colour = image.pixelColor(x, y);
            if (colour.hsvSaturation() > 120 && colour.value() > 60)
                hues.insert(qRgb(colour.hue() / 30, 0, 0));
        }
    return hues.size();
}

class KelquickTest : public ::testing::Test {
protected:
    OrvTest::TempFolder folder;
};

TEST_F(KelquickTest, TheScreenshotShowsTheSampleChartUnderTheToolbar)
{
    const Outcome run = kelquick({QStringLiteral("--size"), QStringLiteral("900x600")}, folder.path("sample.png"));
    ASSERT_EQ(run.exitCode, 0) << run.output.toStdString();
    ASSERT_EQ(run.image.size(), QSize(900, 600));
    EXPECT_GE(seriesColours(run.image), 3) << "the sample's series in their colours";
    // The chart's white paper fills the middle; the toolbar above it is not white.
    EXPECT_GT(OrvTest::countPixels(run.image, QRect(0, 100, 900, 400), Qt::white), 900 * 400 / 3);
    EXPECT_LT(OrvTest::countPixels(run.image, QRect(0, 0, 900, 8), Qt::white), 900 * 8 / 2);
}

TEST_F(KelquickTest, AFileGivesItsChartAndABrokenOneStillAWindow)
{
    const QString csv = folder.write("line.csv", "x,y\n1,1\n2,4\n3,9\n4,16\n");
    const Outcome data = kelquick({csv}, folder.path("data.png"));
    ASSERT_EQ(data.exitCode, 0) << data.output.toStdString();
    const Outcome sample = kelquick({}, folder.path("sample.png"));
    ASSERT_EQ(sample.image.size(), data.image.size());
    EXPECT_GT(OrvTest::differingFraction(data.image, sample.image), 0.01);

    const QString broken = folder.write("broken.csv", "a,b\n1,2\n3,4,5,6\n\"open\n");
    const Outcome faulty = kelquick({broken}, folder.path("broken.png"));
    EXPECT_EQ(faulty.exitCode, 0) << faulty.output.toStdString();
    EXPECT_FALSE(faulty.image.isNull());
}

} // namespace
