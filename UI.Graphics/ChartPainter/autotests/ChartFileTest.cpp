// The sample chart written to files: each format comes out readable and in the
// chart's size, a name without a known suffix or a path that cannot be written
// fails with a message naming the file, and the views a host hands in draw the
// same picture as the painter's own.

#include "ChartPainter.h"
#include "PaintedChart.h"
#include "Plot.h"

#include "OrvDebug.h"

#include "ImageChecks.h"
#include "SvgChecks.h"
#include "TempFolder.h"

#include <QFile>
#include <QImage>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {

namespace Chart = Orv::Chart;

// The sample's air temperature line.
const QColor airColour(0xe1, 0x57, 0x59);

class ChartFileTest : public ::testing::Test {
protected:
    static constexpr QSize size{480, 360};

    static QImage imageOf(const Chart::ChartPainter& painter) { return PaintedChart::image(painter, size); }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart = PaintedChart::sample(group);
    std::unique_ptr<Chart::Plot> plot =
        std::make_unique<Chart::Plot>(*chart, Chart::axisPairsOf(*chart), Chart::TickRoom{size, 100, {}});
    OrvTest::TempFolder folder;
};

struct FileCase {
    const char* name;
    const char* fileName;
    Chart::ChartPainter::Format format;
};
void PrintTo(const FileCase& c, std::ostream* os)
{
    *os << c.name;
}

class WrittenFileTest : public ChartFileTest, public ::testing::WithParamInterface<FileCase> {
protected:
    // What a reader of the format makes of the file: its size in pixels (PDF points are at 96 per inch)
    // and whether the sample's air temperature line can be seen in it.
    void expectReadable(const QString& path) const
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
        const QByteArray bytes = file.readAll();
        switch (GetParam().format) {
        case Chart::ChartPainter::Format::Png: {
            const QImage image = QImage::fromData(bytes, "PNG");
            ASSERT_FALSE(image.isNull());
            EXPECT_EQ(image.size(), size);
            EXPECT_GT(OrvTest::countPixels(image, airColour, 40), 50) << OrvTest::saveImage(image, "png");
            break;
        }
        case Chart::ChartPainter::Format::Svg: {
            const OrvTest::SvgDocument svg = OrvTest::parseSvg(bytes);
            ASSERT_TRUE(svg.isValid()) << svg.error.toStdString();
            EXPECT_TRUE(bytes.contains("viewBox=\"0 0 480 360\"")) << bytes.left(600).toStdString();
            EXPECT_FALSE(OrvTest::elementsStrokedWith(svg, airColour).isEmpty());
            EXPECT_TRUE(OrvTest::hasText(svg, chart->title.get()));
            break;
        }
        case Chart::ChartPainter::Format::Pdf: {
            EXPECT_TRUE(bytes.startsWith("%PDF-"));
            EXPECT_TRUE(bytes.trimmed().endsWith("%%EOF"));
            // 480 x 360 pixels at 96 per inch are 5 x 3.75 inches, 360 x 270 points.
            const QRegularExpression mediaBox(QStringLiteral("/MediaBox \\[0 0 360(\\.0+)? 270(\\.0+)?\\]"));
            const QString text = QString::fromLatin1(bytes.constData(), bytes.size()); // past any NUL of a stream
            EXPECT_TRUE(mediaBox.match(text).hasMatch()) << bytes.mid(bytes.indexOf("/MediaBox"), 40).toStdString();
            break;
        }
        }
    }
};

// The suffix chooses the format; an explicit format wins over whatever the name says.
TEST_P(WrittenFileTest, SuffixOrExplicitFormatWritesAReadableFileOfTheChartsSize)
{
    const Chart::ChartPainter painter(*plot, size);
    const QString path = folder.path(QString::fromLatin1(GetParam().fileName));
    ASSERT_EQ(Chart::ChartPainter::formatOf(path), GetParam().format);
    QString error;
    ASSERT_TRUE(painter.write(path, &error)) << error.toStdString();
    EXPECT_TRUE(error.isEmpty());
    expectReadable(path);

    const QString misnamed = folder.path(QStringLiteral("chart.data"));
    ASSERT_TRUE(painter.write(misnamed, GetParam().format, &error)) << error.toStdString();
    expectReadable(misnamed);
}

// A file that cannot be created fails in every format, names the file and leaves nothing behind.
TEST_P(WrittenFileTest, UnwritablePathFailsNamingIt)
{
    const Chart::ChartPainter painter(*plot, size);
    const QString path = folder.path(QStringLiteral("missing/folder/") + QString::fromLatin1(GetParam().fileName));
    QString error;
    EXPECT_FALSE(painter.write(path, &error));
    EXPECT_TRUE(error.startsWith(path + QStringLiteral(": cannot write"))) << error.toStdString();
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_FALSE(painter.write(path, GetParam().format)); // no message wanted, none written
}

INSTANTIATE_TEST_SUITE_P(
    Formats, WrittenFileTest,
    ::testing::Values(FileCase{"png", "chart.png", Chart::ChartPainter::Format::Png},
                      FileCase{"svg", "chart.svg", Chart::ChartPainter::Format::Svg},
                      FileCase{"pdf", "chart.pdf", Chart::ChartPainter::Format::Pdf},
                      FileCase{"upperCaseSuffix", "CHART.Png", Chart::ChartPainter::Format::Png}),
    [](const ::testing::TestParamInfo<FileCase>& info) { return std::string(info.param.name); });

TEST_F(ChartFileTest, UnknownSuffixFailsNamingTheFileAndWritesNothing)
{
    const Chart::ChartPainter painter(*plot, size);
    for (const char* name : {"chart.bmp", "chart", "chart.png.txt"}) {
        const QString path = folder.path(QString::fromLatin1(name));
        EXPECT_FALSE(Chart::ChartPainter::formatOf(path).has_value()) << name;
        QString error;
        EXPECT_FALSE(painter.write(path, &error)) << name;
        EXPECT_TRUE(error.startsWith(path + QStringLiteral(": unknown image format"))) << error.toStdString();
        EXPECT_FALSE(QFile::exists(path)) << name;
    }
}

// The host's views, one per variable, draw what the painter's own draw; a wrong count is warned about once and
// replaced by the painter's own.
TEST_F(ChartFileTest, HostViewsOrAWrongCountOfThemDrawTheSamePicture)
{
    orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
    const QImage own = imageOf(Chart::ChartPainter(*plot, size));
    ASSERT_GT(OrvTest::countPixels(own, airColour, 40), 50);

    std::vector<std::unique_ptr<KelChartDecimatedView>> views;
    std::vector<const KelChartDecimatedView*> handed;
    for (std::size_t i = 0; i < plot->scaling().size(); ++i) {
        views.push_back(std::make_unique<KelChartDecimatedView>(plot->scaling().variable(i)));
        handed.push_back(views.back().get());
    }
    EXPECT_EQ(OrvTest::differingFraction(own, imageOf(Chart::ChartPainter(*plot, size, handed))), 0.0);
    EXPECT_TRUE(capture.texts(orvdebug::Stream::Err).empty());

    std::vector<const KelChartDecimatedView*> tooFew(handed.begin(), handed.end() - 1);
    const QImage replaced = imageOf(Chart::ChartPainter(*plot, size, tooFew));
    EXPECT_EQ(OrvTest::differingFraction(own, replaced), 0.0) << OrvTest::saveImage(replaced, "tooFew");
    const std::vector<std::string> warnings = capture.texts(orvdebug::Stream::Err);
    ASSERT_EQ(warnings.size(), 1u);
    EXPECT_NE(warnings.front().find("WARNING"), std::string::npos) << warnings.front();
    EXPECT_NE(warnings.front().find(std::to_string(tooFew.size()) + " decimated views for "
                                    + std::to_string(handed.size()) + " variables"),
              std::string::npos)
        << warnings.front();
    EXPECT_EQ(OrvTest::differingFraction(own, imageOf(Chart::ChartPainter(*plot, size, {}))), 0.0);
}

} // namespace
