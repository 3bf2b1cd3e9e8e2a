// Charts of awkward shapes painted as SVG drawings: no two texts of the
// drawing overlap and none leaves the image. Text boxes come from the SVG,
// measured with the metrics of the font each text is drawn in.

#include "ChartFile.h"
#include "PaintedChart.h"
#include "ChartSetUp.h"
#include "CsvImport.h"
#include "DataBinding.h"
#include "LegendLayout.h"
#include "SampleChart.h"

#include "TextBoxes.h"
#include "TextPlacement.h"

#include <QBuffer>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

namespace Chart = Orv::Chart;

// The texts of an SVG drawing, each with the box its font covers.
QList<OrvTest::DrawnText> textsOf(const QByteArray& svg)
{
    const OrvTest::SvgDocument document = OrvTest::parseSvg(svg);
    EXPECT_TRUE(document.isValid()) << document.error.toStdString();
    QList<OrvTest::DrawnText> texts;
    for (const OrvTest::PlacedText& text : OrvTest::svgTextBoxes(document))
        texts.append({text.text, text.box});
    return texts;
}

// The chart as SVG, painted as a host paints it, with the plot area it has.
QByteArray paintSvg(KelChart& chart, QSize size, QRectF* plot = nullptr)
{
    const Chart::AxisPairs pairs = Chart::axisPairsOf(chart);
    const Chart::Plot pipeline(chart, pairs, {size, 100, {}});
    const Chart::ChartPainter painter(pipeline, size);
    if (plot)
        *plot = painter.layout().plot();
    return PaintedChart::svg(painter, size);
}

// A chart set up for CSV data with the settings applied, as SVG.
QByteArray paintCsv(const QByteArray& csv, const QStringList& settings, QSize size)
{
    QBuffer file;
    file.setData(csv);
    const Chart::CsvImport::Result read = Chart::CsvImport::read(file, QStringLiteral("awkward.csv"));
    EXPECT_TRUE(read.ok()) << read.error.message.toStdString();
    KelModifiedGroup group;
    KelChart2D chart(group);
    Chart::setUpChartForData(chart, read.data, QStringLiteral("awkward"));
    PaintedChart::assignAll(chart, settings);
    Chart::bindData(chart.variables, Chart::axisPairsOf(chart), read.data);
    PaintedChart::assignAll(chart, settings);
    return paintSvg(chart, size);
}

QByteArray longSeriesCsv(int series, int categories)
{
    QByteArray csv = "category";
    for (int i = 0; i < series; ++i)
        csv += ",a rather long series name number " + QByteArray::number(i) + " with more words";
    csv += '\n';
    for (int row = 0; row < categories; ++row) {
        csv += "category " + QByteArray::number(row);
        for (int i = 0; i < series; ++i)
            csv += ',' + QByteArray::number((row * i) % 17);
        csv += '\n';
    }
    return csv;
}

struct AwkwardChart {
    const char* name;
    int series;
    int categories;
    QStringList settings;
    // A text the drawing must contain, as a pattern.
    const char* expected;
};

void PrintTo(const AwkwardChart& chart, std::ostream* os)
{
    *os << chart.name;
}

class AwkwardChartTest : public ::testing::TestWithParam<AwkwardChart> {};

// Boxes may touch by a pixel's rounding, not more.
TEST_P(AwkwardChartTest, NoTextsOverlapAndAllStayInTheImage)
{
    const AwkwardChart& chart = GetParam();
    const QSize size(640, 400);
    const QList<OrvTest::DrawnText> texts =
        textsOf(paintCsv(longSeriesCsv(chart.series, chart.categories), chart.settings, size));
    EXPECT_EQ(OrvTest::overlappingTexts(texts), QStringList());
    EXPECT_EQ(OrvTest::textsOutside(texts, size, 0), QStringList());
    const QRegularExpression expected(QString::fromUtf8(chart.expected));
    EXPECT_TRUE(std::any_of(texts.begin(), texts.end(),
                            [&](const OrvTest::DrawnText& text) { return text.text.contains(expected); }))
        << "no text matches " << chart.expected;
}

const QString longTitle = QStringLiteral(
    "title=A title far too long for any image, about the many series of a test that crowds every part of the chart");

INSTANTIATE_TEST_SUITE_P(
    Shapes, AwkwardChartTest,
    ::testing::Values(
        AwkwardChart{"manySeriesAtTheRight", 23, 12, {}, "^and \\d+ more$"},
        AwkwardChart{"manySeriesBelow",
                     23,
                     12,
                     {QStringLiteral("legend.1/style=horizontal"), QStringLiteral("legend.1/viewport/alignment=64")},
                     "^and \\d+ more$"},
        AwkwardChart{"manySeriesAtTheLeftOnTop",
                     23,
                     12,
                     {QStringLiteral("legend.1/viewport/alignment=1"), longTitle},
                     "^A title far too long.*\u2026$"},
        AwkwardChart{"threeHundredCategories", 2, 300, {}, "^category 0$"},
        AwkwardChart{"noLegend", 23, 300, {QStringLiteral("legend.1/enabled=false"), longTitle}, "\u2026$"}),
    [](const ::testing::TestParamInfo<AwkwardChart>& info) { return std::string(info.param.name); });

// Where the legend's entry "air temperature" is drawn in the sample, and the plot area.
struct SampleDrawing {
    QRectF entry;
    QRectF plot;
    bool hasEntry = false;
};

SampleDrawing drawn(KelChart& chart, const QStringList& settings)
{
    PaintedChart::assignAll(chart, settings);
    SampleDrawing drawing;
    for (const OrvTest::DrawnText& text : textsOf(paintSvg(chart, QSize(800, 500), &drawing.plot)))
        if (text.text == QStringLiteral("air temperature")) {
            drawing.entry = text.box;
            drawing.hasEntry = true;
        }
    return drawing;
}

TEST(LegendElementTest, PropertiesMoveOrHideTheLegendAndSurviveSaving)
{
    KelModifiedGroup group;
    const SampleDrawing right = drawn(*PaintedChart::sample(group), {});
    ASSERT_TRUE(right.hasEntry);
    EXPECT_GT(right.entry.left(), right.plot.right());

    const std::unique_ptr<KelChart2D> sample = PaintedChart::sample(group);
    const SampleDrawing below =
        drawn(*sample, {QStringLiteral("legend.1/viewport/alignment=64"), QStringLiteral("legend.1/style=horizontal")});
    ASSERT_TRUE(below.hasEntry);
    EXPECT_GT(below.entry.top(), below.plot.bottom());
    EXPECT_GT(below.plot.width(), right.plot.width());

    const std::unique_ptr<KelProperties> loaded =
        Chart::ChartFile::fromJson(Chart::ChartFile::toJson(*sample), QStringLiteral("below.json"), group);
    auto& chart = dynamic_cast<KelChart2D&>(*loaded);
    Chart::bindData(chart.variables, Chart::axisPairsOf(chart), Chart::SampleChart::data());
    const SampleDrawing reloaded = drawn(chart, {});
    EXPECT_EQ(reloaded.entry, below.entry);
    EXPECT_EQ(reloaded.plot, below.plot);

    const SampleDrawing hidden = drawn(*PaintedChart::sample(group), {QStringLiteral("legend.1/enabled=false")});
    EXPECT_FALSE(hidden.hasEntry);
    EXPECT_GT(hidden.plot.width(), right.plot.width());
}

struct GridCase {
    std::size_t entries;
    int maxColumns;
    int maxRows;
    bool vertical;
    int columns;
    int rows;
    std::size_t shown;
};

class LegendGridTest : public ::testing::TestWithParam<GridCase> {};

TEST_P(LegendGridTest, FillsWhatFitsAndCountsTheRest)
{
    const GridCase& c = GetParam();
    const Orv::Chart::LegendGrid grid = Orv::Chart::LegendGrid::fit(c.entries, c.maxColumns, c.maxRows, c.vertical);
    EXPECT_EQ(grid.columns, c.columns);
    EXPECT_EQ(grid.rows, c.rows);
    EXPECT_EQ(grid.shown, c.shown);
    EXPECT_EQ(grid.shown + grid.more, c.entries);
    // The "and N more" cell, when there is one, is the last in the grid.
    if (grid.more > 0 && grid.columns > 0) {
        EXPECT_EQ(grid.shown + 1, static_cast<std::size_t>(grid.columns * grid.rows));
    }
}

INSTANTIATE_TEST_SUITE_P(Cases, LegendGridTest,
                         ::testing::Values(GridCase{4, 3, 5, false, 3, 2, 4}, GridCase{4, 3, 5, true, 1, 4, 4},
                                           GridCase{23, 3, 5, false, 3, 5, 14}, GridCase{23, 2, 20, true, 2, 20, 23},
                                           GridCase{23, 1, 20, true, 1, 20, 19}, GridCase{3, 0, 5, false, 0, 0, 0},
                                           GridCase{1, 1, 1, false, 1, 1, 1}, GridCase{2, 1, 1, true, 1, 1, 0}));

} // namespace
