// The chart as a PDF file: one vector page of the chart's size whose texts are
// text, each where the SVG file of the same chart puts it. Read back with
// poppler's pdftotext; without it the tests are skipped.

#include "ChartPainter.h"
#include "PaintedChart.h"
#include "Plot.h"

#include "SvgChecks.h"
#include "TempFolder.h"
#include "TextPlacement.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

namespace Chart = Orv::Chart;

// Points are 1/72 inch; the page has 96 of the chart's pixels per inch.
constexpr double pixelsPerPoint = 96.0 / 72.0;
// How far a text may lie from its place in the SVG file, in pixels: the two
// writers round glyph positions and font metrics each their own way.
constexpr double tolerance = 2.0;

struct PdfCase {
    const char* name;
    QSize size;
    QStringList settings;
    const char* locale;
};
void PrintTo(const PdfCase& c, std::ostream* os)
{
    *os << c.name;
}

class PdfTextTest : public ::testing::TestWithParam<PdfCase> {
protected:
    void SetUp() override
    {
        if (!OrvTest::pdftotextFound())
            GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
        chart = PaintedChart::sample(group);
        PaintedChart::assignAll(*chart, GetParam().settings);
        const QLocale locale(QLatin1String(GetParam().locale));
        plot = std::make_unique<Chart::Plot>(*chart, Chart::axisPairsOf(*chart),
                                             Chart::TickRoom{GetParam().size, 100, {}, locale});
        painter = std::make_unique<Chart::ChartPainter>(*plot, GetParam().size);
        painter->setLocale(locale);
    }

    KelModifiedGroup group;
    std::unique_ptr<KelChart2D> chart;
    std::unique_ptr<Chart::Plot> plot;
    std::unique_ptr<Chart::ChartPainter> painter;
    OrvTest::TempFolder folder;
};

// Text is text and lines are lines: fonts are embedded, nothing is a picture.
TEST_P(PdfTextTest, VectorPageWithTextsWhereTheSvgPutsThem)
{
    const QString pdf = folder.path(QStringLiteral("chart.pdf"));
    ASSERT_TRUE(painter->write(pdf));
    const QByteArray bytes = folder.read(QStringLiteral("chart.pdf"));
    EXPECT_TRUE(bytes.contains("/FontFile2") || bytes.contains("/FontFile3"));
    EXPECT_FALSE(bytes.contains("/Subtype /Image"));
    EXPECT_FALSE(bytes.contains("/Subtype/Image"));

    ASSERT_TRUE(painter->write(folder.path(QStringLiteral("chart.svg"))));
    const OrvTest::SvgDocument svg = OrvTest::parseSvg(folder.read(QStringLiteral("chart.svg")));
    ASSERT_TRUE(svg.isValid()) << svg.error.toStdString();
    const QList<OrvTest::PlacedText> expected = OrvTest::svgTextBoxes(svg);
    ASSERT_GT(expected.size(), 20);

    QString error;
    const QList<OrvTest::PdfPageText> pages = OrvTest::pdfWords(pdf, &error);
    ASSERT_EQ(pages.size(), 1) << error.toStdString();
    EXPECT_EQ((pages[0].size * pixelsPerPoint).toSize(), GetParam().size);
    const QList<OrvTest::PlacedText> words =
        OrvTest::mapped(pages[0].words, QTransform::fromScale(pixelsPerPoint, pixelsPerPoint));
    const QStringList faults = OrvTest::placementFaults(expected, words, tolerance);
    EXPECT_TRUE(faults.isEmpty()) << faults.join(QLatin1Char('\n')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Charts, PdfTextTest,
    ::testing::Values(
        PdfCase{"sample", {800, 500}, {}, "C"},
        // Decimal commas and elided texts; the legend across the top.
        PdfCase{"smallGerman", {420, 300}, {QStringLiteral("legend.1/style=horizontal")}, "de_DE"},
        // A factor with superscript digits on the left axis.
        PdfCase{"factor",
                {640, 480},
                {QStringLiteral("axis.y/axis.y.left/autoScale=false"), QStringLiteral("axis.y/axis.y.left/min=0"),
                 QStringLiteral("axis.y/axis.y.left/max=2e7")},
                "C"}),
    [](const ::testing::TestParamInfo<PdfCase>& info) { return std::string(info.param.name); });

} // namespace
