// Charts of awkward shapes painted as SVG drawings: no two texts of the
// drawing overlap and none leaves the image. Text boxes come from the SVG,
// measured with the metrics of the font each text is drawn in.

#include "ChartFile.h"
#include "ChartPainter.h"
#include "PaintedChart.h"
#include "ChartSetUp.h"
#include "CsvImport.h"
#include "DataBinding.h"
#include "LegendLayout.h"
#include "Plot.h"
#include "SampleChart.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QRegularExpression>
#include <QTransform>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <vector>

namespace {

namespace Chart = Orv::Chart;

struct DrawnText {
    QString text;
    QRectF box;
};

QTransform transformOf(const QXmlStreamAttributes& attributes, const QTransform& outer)
{
    static const QRegularExpression matrix(QStringLiteral("matrix\\(([^,]+),([^,]+),([^,]+),([^,]+),([^,]+),([^)]+)\\)"));
    const QRegularExpressionMatch m = matrix.match(attributes.value(QStringLiteral("transform")));
    if (!m.hasMatch())
        return outer;
    return QTransform(m.captured(1).toDouble(), m.captured(2).toDouble(), m.captured(3).toDouble(),
                      m.captured(4).toDouble(), m.captured(5).toDouble(), m.captured(6).toDouble());
}

DrawnText drawnText(QXmlStreamReader& xml, const QTransform& transform)
{
    const QXmlStreamAttributes attributes = xml.attributes();
    QFont font(attributes.value(QStringLiteral("font-family")).toString());
    font.setPixelSize(attributes.value(QStringLiteral("font-size")).toInt());
    font.setWeight(attributes.value(QStringLiteral("font-weight")).toInt() >= 600 ? QFont::Bold : QFont::Normal);
    const QFontMetricsF metrics(font);
    const QPointF at(attributes.value(QStringLiteral("x")).toDouble(), attributes.value(QStringLiteral("y")).toDouble());
    const QString text = xml.readElementText();
    const QRectF box(at.x(), at.y() - metrics.ascent(), metrics.horizontalAdvance(text), metrics.height());
    return {text, transform.mapRect(box)};
}

std::vector<DrawnText> textsOf(const QByteArray& svg)
{
    std::vector<DrawnText> texts;
    std::vector<QTransform> transforms{QTransform()};
    QXmlStreamReader xml(svg);
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::StartElement && xml.name() == QLatin1String("g"))
            transforms.push_back(transformOf(xml.attributes(), transforms.back()));
        else if (token == QXmlStreamReader::EndElement && xml.name() == QLatin1String("g"))
            transforms.pop_back();
        else if (token == QXmlStreamReader::StartElement && xml.name() == QLatin1String("text"))
            if (DrawnText text = drawnText(xml, transforms.back()); !text.text.trimmed().isEmpty())
                texts.push_back(text);
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return texts;
}

// Boxes may touch by a pixel's rounding, not more.
bool overlap(const QRectF& a, const QRectF& b)
{
    return a.adjusted(0.5, 0.5, -0.5, -0.5).intersects(b.adjusted(0.5, 0.5, -0.5, -0.5));
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

TEST_P(AwkwardChartTest, NoTextsOverlapAndAllStayInTheImage)
{
    const AwkwardChart& chart = GetParam();
    const std::vector<DrawnText> texts =
        textsOf(paintCsv(longSeriesCsv(chart.series, chart.categories), chart.settings, QSize(640, 400)));
    const QRectF image(0, 0, 640, 400);
    bool found = false;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        found = found || texts[i].text.contains(QRegularExpression(QString::fromUtf8(chart.expected)));
        EXPECT_TRUE(image.contains(texts[i].box)) << texts[i].text.toStdString() << " leaves the image";
        for (std::size_t j = i + 1; j < texts.size(); ++j)
            EXPECT_FALSE(overlap(texts[i].box, texts[j].box))
                << texts[i].text.toStdString() << " overlaps " << texts[j].text.toStdString();
    }
    EXPECT_TRUE(found) << "no text matches " << chart.expected;
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

class LegendElementTest : public ::testing::Test {
protected:
    SampleDrawing draw(KelChart& chart, const QStringList& settings)
    {
        PaintedChart::assignAll(chart, settings);
        SampleDrawing drawing;
        for (const DrawnText& text : textsOf(paintSvg(chart, QSize(800, 500), &drawing.plot)))
            if (text.text == QStringLiteral("air temperature")) {
                drawing.entry = text.box;
                drawing.hasEntry = true;
            }
        return drawing;
    }

    SampleDrawing drawSample(const QStringList& settings)
    {
        const std::unique_ptr<KelChart2D> sample = Chart::SampleChart::build(m_group);
        Chart::bindData(sample->variables, Chart::axisPairsOf(*sample), Chart::SampleChart::data());
        return draw(*sample, settings);
    }

    KelModifiedGroup m_group;
};

TEST_F(LegendElementTest, PropertiesMoveOrHideTheLegendAndSurviveSaving)
{
    const SampleDrawing right = drawSample({});
    ASSERT_TRUE(right.hasEntry);
    EXPECT_GT(right.entry.left(), right.plot.right());

    const std::unique_ptr<KelChart2D> sample = Chart::SampleChart::build(m_group);
    Chart::bindData(sample->variables, Chart::axisPairsOf(*sample), Chart::SampleChart::data());
    const SampleDrawing below =
        draw(*sample, {QStringLiteral("legend.1/viewport/alignment=64"), QStringLiteral("legend.1/style=horizontal")});
    ASSERT_TRUE(below.hasEntry);
    EXPECT_GT(below.entry.top(), below.plot.bottom());
    EXPECT_GT(below.plot.width(), right.plot.width());

    const std::unique_ptr<KelProperties> loaded =
        Chart::ChartFile::fromJson(Chart::ChartFile::toJson(*sample), QStringLiteral("below.json"), m_group);
    auto& chart = dynamic_cast<KelChart2D&>(*loaded);
    Chart::bindData(chart.variables, Chart::axisPairsOf(chart), Chart::SampleChart::data());
    const SampleDrawing reloaded = draw(chart, {});
    EXPECT_EQ(reloaded.entry, below.entry);
    EXPECT_EQ(reloaded.plot, below.plot);

    const SampleDrawing hidden = drawSample({QStringLiteral("legend.1/enabled=false")});
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
