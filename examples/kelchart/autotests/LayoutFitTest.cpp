// Charts of awkward shapes drawn by the kelchart executable: no two texts of
// the drawing overlap and none leaves the image. Text boxes come from the SVG,
// measured with the metrics of the font each text is drawn in.

#include "LegendLayout.h"
#include "TestSupport.h"

#include <QFontMetricsF>
#include <QGuiApplication>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTransform>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <vector>

namespace {

struct DrawnText {
    QString text;
    QRectF box;
};

// Font metrics need a GUI application; the tests share one.
void ensureGuiApplication()
{
    static int argc = 1;
    static char name[] = "LayoutFitTest";
    static char* argv[] = {name, nullptr};
    if (!QCoreApplication::instance())
        new QGuiApplication(argc, argv);
}

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
    ensureGuiApplication();
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

class AwkwardChartTest : public ::testing::TestWithParam<AwkwardChart> {
protected:
    QTemporaryDir m_dir;
};

TEST_P(AwkwardChartTest, NoTextsOverlapAndAllStayInTheImage)
{
    const AwkwardChart& chart = GetParam();
    writeText(m_dir.filePath(QStringLiteral("awkward.csv")), longSeriesCsv(chart.series, chart.categories));
    QStringList arguments{QStringLiteral("awkward.csv"), QStringLiteral("--size"), QStringLiteral("640x400")};
    for (const QString& setting : chart.settings)
        arguments << QStringLiteral("--set") << setting;
    const KelchartRun run = runKelchart(arguments, m_dir.path());
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();
    const std::vector<DrawnText> texts = textsOf(readAll(m_dir.filePath(QStringLiteral("kelchart.svg"))));
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
    SampleDrawing draw(QStringList arguments)
    {
        arguments << QStringLiteral("--report") << QStringLiteral("--svg") << QStringLiteral("s.svg")
                  << QStringLiteral("--png") << QStringLiteral("s.png");
        const KelchartRun run = runKelchart(arguments, m_dir.path());
        EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
        SampleDrawing drawing;
        drawing.plot = reportedPlotArea(QString::fromUtf8(run.out));
        for (const DrawnText& text : textsOf(readAll(m_dir.filePath(QStringLiteral("s.svg")))))
            if (text.text == QStringLiteral("air temperature")) {
                drawing.entry = text.box;
                drawing.hasEntry = true;
            }
        return drawing;
    }

    QTemporaryDir m_dir;
};

TEST_F(LegendElementTest, PropertiesMoveOrHideTheLegendAndSurviveSaving)
{
    const SampleDrawing right = draw({});
    ASSERT_TRUE(right.hasEntry);
    EXPECT_GT(right.entry.left(), right.plot.right());

    const SampleDrawing below =
        draw({QStringLiteral("--set"), QStringLiteral("legend.1/viewport/alignment=64"), QStringLiteral("--set"),
              QStringLiteral("legend.1/style=horizontal"), QStringLiteral("--save"), QStringLiteral("below.json")});
    ASSERT_TRUE(below.hasEntry);
    EXPECT_GT(below.entry.top(), below.plot.bottom());
    EXPECT_GT(below.plot.width(), right.plot.width());

    const SampleDrawing loaded = draw({QStringLiteral("--load"), QStringLiteral("below.json")});
    EXPECT_EQ(loaded.entry, below.entry);
    EXPECT_EQ(loaded.plot, below.plot);

    const SampleDrawing hidden = draw({QStringLiteral("--set"), QStringLiteral("legend.1/enabled=false")});
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
    const kelchart::LegendGrid grid = kelchart::LegendGrid::fit(c.entries, c.maxColumns, c.maxRows, c.vertical);
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
