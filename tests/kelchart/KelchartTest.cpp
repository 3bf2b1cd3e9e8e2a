// Runs the built kelchart executable as a user would.

#include "TestSupport.h"

#include "SvgChecks.h"
#include "TextPlacement.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QLocale>
#include <QSet>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

class KelchartTest : public ::testing::Test {
protected:
    KelchartRun run(const QStringList& arguments) { return runKelchart(arguments, m_dir.path()); }
    QString path(const QString& name) const { return m_dir.filePath(name); }
    QStringList files() const { return QDir(m_dir.path()).entryList(QDir::Files, QDir::Name); }

    QTemporaryDir m_dir;
};

bool near(QRgb a, QRgb b, int tolerance)
{
    return std::abs(qRed(a) - qRed(b)) <= tolerance && std::abs(qGreen(a) - qGreen(b)) <= tolerance
           && std::abs(qBlue(a) - qBlue(b)) <= tolerance;
}

// Whether the colour is found within a pixel of the point.
bool colourAt(const QImage& image, QPointF at, QRgb colour)
{
    for (int dy = -1; dy <= 1; ++dy)
        for (int dx = -1; dx <= 1; ++dx)
            if (near(image.pixel(static_cast<int>(at.x()) + dx, static_cast<int>(at.y()) + dy), colour, 8))
                return true;
    return false;
}

// The contents of the <text> elements of an SVG file, in document order.
QStringList svgTexts(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader xml(&file);
    QStringList texts;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("text"))
            texts << xml.readElementText(QXmlStreamReader::IncludeChildElements);
    return texts;
}

} // namespace

TEST_F(KelchartTest, NoArgumentDrawsTheSampleAndSummarises)
{
    const KelchartRun result = run({});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(files(), (QStringList{QStringLiteral("kelchart.png"), QStringLiteral("kelchart.svg")}));
    EXPECT_TRUE(result.out.contains("4 of 4 variables drawn"));
    EXPECT_TRUE(result.out.contains("wrote kelchart.png and kelchart.svg"));
    EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
    const QImage image(path(QStringLiteral("kelchart.png")));
    EXPECT_EQ(image.size(), QSize(800, 500));
}

// The expected text was checked by hand against the sample's data (the day shown
// exactly, 0 to 24 h, ticks every 4 h): ranges,
// ticks, unit labels, the degF sensor's bounds in degC, and the matrices.
TEST_F(KelchartTest, SampleReportIsTheCheckedOne)
{
    const KelchartRun result = run({QStringLiteral("--report"), QStringLiteral("--no-images")});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(QString::fromUtf8(result.out), QString::fromUtf8(readAll(testDataPath(QStringLiteral("sample-report.txt")))));
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(KelchartTest, SavedSampleLoadsToTheSameReportAndFile)
{
    const QString saved = path(QStringLiteral("sample.json"));
    const QString again = path(QStringLiteral("again.json"));
    const KelchartRun first = run({QStringLiteral("--report"), QStringLiteral("--no-images"), QStringLiteral("--save"), saved});
    const KelchartRun second = run({QStringLiteral("--report"), QStringLiteral("--no-images"), QStringLiteral("--load"),
                                    saved, QStringLiteral("--save"), again});
    EXPECT_EQ(second.exitCode, 0) << second.err.toStdString();
    EXPECT_EQ(first.out, second.out);
    EXPECT_EQ(readAll(saved), readAll(again));
}

TEST_F(KelchartTest, SetChangesWhatIsDrawnAndSaved)
{
    const KelchartRun result =
        run({QStringLiteral("--report"), QStringLiteral("--no-images"), QStringLiteral("--set"),
             QStringLiteral("axis.y/axis.y.left/autoScale=false"), QStringLiteral("--set"),
             QStringLiteral("axis.y/axis.y.left/min=-20"), QStringLiteral("--set"),
             QStringLiteral("axis.y/axis.y.left/max=20"), QStringLiteral("--set"), QStringLiteral("variable/T2/enabled=false"),
             QStringLiteral("--save"), path(QStringLiteral("set.json"))});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    const QString report = QString::fromUtf8(result.out);
    EXPECT_TRUE(report.contains(QStringLiteral("axis \"axis.y.left\" at the left, continuous\n  range: -20 .. 20\n")));
    EXPECT_TRUE(report.contains(QStringLiteral("4 in the chart, 4 with accepted units, 3 cached")));
    EXPECT_FALSE(report.contains(QStringLiteral("variable \"T2\"")));
    EXPECT_TRUE(readAll(path(QStringLiteral("set.json"))).contains("\"value\": \"-20\""));
}

TEST_F(KelchartTest, CsvWithContinuousXPutsEachDimensionOnItsOwnAxis)
{
    writeText(path(QStringLiteral("weather.csv")),
              "time [min],T [degC],T out [degF],p [kPa]\n0,20,50,101\n30,21,,101.2\n60,22,59,nan\n");
    const KelchartRun result = run({QStringLiteral("weather.csv"), QStringLiteral("--report"), QStringLiteral("--no-images")});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    const QString report = QString::fromUtf8(result.out);
    EXPECT_TRUE(report.contains(QStringLiteral("title \"weather\"")));
    EXPECT_TRUE(report.contains(QStringLiteral("3 in the chart, 3 with accepted units, 3 cached")));
    EXPECT_TRUE(report.contains(QStringLiteral("axis \"axis.x.bottom\" at the bottom, continuous")));
    EXPECT_TRUE(report.contains(QStringLiteral("unit label: \"min\"")));
    EXPECT_TRUE(report.contains(QStringLiteral("variable \"T out\" on \"axis.x.bottom\" and \"axis.y.left\"")));
    EXPECT_TRUE(report.contains(QStringLiteral("variable \"p\" on \"axis.x.bottom\" and \"axis.y.right\"")));
    // 50 degF and 59 degF are 10 and 15 degC; the empty cell is a point without y.
    EXPECT_TRUE(report.contains(QStringLiteral("cache: 3 items, 2 points, 1 without y, 0 without x\n"
                                               "  bounds: (0, 10) .. (60, 15)")));
}

TEST_F(KelchartTest, CsvWithTextXDrawsCategories)
{
    writeText(path(QStringLiteral("fruit.csv")), "fruit,sold,kept\napple,3,1\npear,5,\nplum,2,4\n");
    const KelchartRun result = run({QStringLiteral("fruit.csv"), QStringLiteral("--report")});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    const QString report = QString::fromUtf8(result.out);
    EXPECT_TRUE(report.contains(QStringLiteral("axis \"axis.x.bottom\" at the bottom, discrete\n  range: 0 .. 3\n")));
    EXPECT_TRUE(report.contains(QStringLiteral("0 \"apple\" at ")));
    EXPECT_TRUE(report.contains(QStringLiteral("2 \"plum\" at ")));
    EXPECT_TRUE(QFile::exists(path(QStringLiteral("kelchart.png"))));
}

// Dates give a time axis with calendar labels; times without a zone are on the axis zone's clock, so a
// zone set on the command line moves the data and re-places the ticks on that zone's hours.
TEST_F(KelchartTest, CsvWithDateXDrawsATimeAxisInItsZone)
{
    writeText(path(QStringLiteral("hourly.csv")),
              "time,T [degC]\n2012-03-14 00:00,1\n2012-03-14 06:00,2\n2012-03-14 12:00,3\n");
    const QStringList common = {QStringLiteral("hourly.csv"), QStringLiteral("--report"), QStringLiteral("--no-images")};
    const KelchartRun utc = run(common);
    EXPECT_EQ(utc.exitCode, 0) << utc.err.toStdString();
    const QString report = QString::fromUtf8(utc.out);
    EXPECT_TRUE(report.contains(QStringLiteral("axis \"axis.x.bottom\" at the bottom, time\n  range: -864 .. 44064")))
        << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("offset text: \"2012-03-14\"")));
    EXPECT_TRUE(report.contains(QStringLiteral("21600 \"06:00\" at")));

    const KelchartRun kathmandu =
        run(common + QStringList{QStringLiteral("--set"), QStringLiteral("axis.x/axis.x.bottom/timeZone=Asia/Kathmandu")});
    const QString moved = QString::fromUtf8(kathmandu.out);
    // Midnight in Kathmandu is 18:15 UTC the day before, so the values count from 2012-03-13 UTC, and
    // 06:00 there is 00:15 UTC: a day and 900 s on.
    EXPECT_TRUE(moved.contains(QStringLiteral("range: 64836 .. 109764"))) << moved.toStdString();
    EXPECT_TRUE(moved.contains(QStringLiteral("87300 \"06:00\" at"))) << moved.toStdString();
}

TEST_F(KelchartTest, LargeValuesAreLabelledWithAFactor)
{
    writeText(path(QStringLiteral("big.csv")), "x,count\n0,1000000\n1,5000000\n");
    const KelchartRun result = run({QStringLiteral("big.csv"), QStringLiteral("--report"), QStringLiteral("--no-images")});
    const QString report = QString::fromUtf8(result.out);
    EXPECT_TRUE(report.contains(QStringLiteral("axis \"axis.y.left\" at the left, continuous\n"
                                               "  range: 800000 .. 5200000\n  factor: 1000000\n")))
        << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("    5000000 \"5.0\" at 0.954545")));
}

// Each series' colour is found where its matrix maps a known data point.
TEST_F(KelchartTest, SeriesColoursLieWhereTheMatricesMapTheirPoints)
{
    writeText(path(QStringLiteral("lines.csv")), "x,up [m],down [m]\n0,1,9\n1,3,7\n2,5,5.5\n3,7,3\n4,9,1\n");
    const QStringList arguments = {
        QStringLiteral("lines.csv"), QStringLiteral("--report"), QStringLiteral("--size"), QStringLiteral("640x400"),
        QStringLiteral("--set"), QStringLiteral("variable/up/style/lineColor=#ff0000"),
        QStringLiteral("--set"), QStringLiteral("variable/up/style/lineWidth=5"),
        QStringLiteral("--set"), QStringLiteral("variable/down/style/lineColor=#0000ff"),
        QStringLiteral("--set"), QStringLiteral("variable/down/style/lineWidth=5")};
    const KelchartRun result = run(arguments);
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    const QString report = QString::fromUtf8(result.out);
    const QImage image(path(QStringLiteral("kelchart.png")));
    ASSERT_EQ(image.size(), QSize(640, 400));
    const double xs[] = {0, 1, 3, 4};
    for (const double x : xs) {
        EXPECT_TRUE(colourAt(image, pixelOf(report, QStringLiteral("up"), x, 1 + 2 * x), qRgb(255, 0, 0))) << x;
        EXPECT_TRUE(colourAt(image, pixelOf(report, QStringLiteral("down"), x, 9 - 2 * x), qRgb(0, 0, 255))) << x;
    }
    // Away from the lines there is only the background.
    EXPECT_TRUE(colourAt(image, pixelOf(report, QStringLiteral("up"), 1, 8), qRgb(255, 255, 255)));
}

TEST_F(KelchartTest, SampleSvgStrokesEverySeriesColour)
{
    ASSERT_EQ(run({}).exitCode, 0);
    QFile svg(path(QStringLiteral("kelchart.svg")));
    ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&svg);
    QSet<QString> strokes;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement)
            strokes << xml.attributes().value(QStringLiteral("stroke")).toString();
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    for (const char* colour : {"#e15759", "#4e79a7", "#59a14f", "#b07aa1"})
        EXPECT_TRUE(strokes.contains(QString::fromLatin1(colour))) << colour;
}

TEST_F(KelchartTest, OtherChartKindsLoadAndSaveWithoutDrawing)
{
    writeText(path(QStringLiteral("pie.json")),
              "{\"format\": \"kelchart chart\", \"version\": 1, \"root\": {\"type\": \"chart.pie\", \"name\": \"pie\","
              " \"properties\": [{\"name\": \"showPercentages\", \"value\": \"false\", \"unit\": \"\"}],"
              " \"children\": []}}");
    const KelchartRun result = run({QStringLiteral("--load"), QStringLiteral("pie.json"), QStringLiteral("--save"),
                                    QStringLiteral("out.json"), QStringLiteral("--set"), QStringLiteral("title=Shares")});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.err.contains("a \"chart.pie\" has no axes to draw"));
    EXPECT_EQ(files(), (QStringList{QStringLiteral("out.json"), QStringLiteral("pie.json")}));
    const QByteArray saved = readAll(path(QStringLiteral("out.json")));
    EXPECT_TRUE(saved.contains("\"value\": \"Shares\""));
    EXPECT_TRUE(saved.contains("\"name\": \"labels\""));
}

TEST_F(KelchartTest, HugeCsvStreamsThrough)
{
    const int rows = 200000;
    QFile csv(path(QStringLiteral("huge.csv")));
    ASSERT_TRUE(csv.open(QIODevice::WriteOnly));
    csv.write("t [s],a [m],b [m]\n");
    for (int i = 0; i < rows; ++i)
        csv.write(QStringLiteral("%1,%2,%3\n").arg(i).arg(std::sin(i * 0.001)).arg(i % 100 == 0 ? QString() : QStringLiteral("1.5")).toLatin1());
    csv.close();
    const KelchartRun result = run({QStringLiteral("huge.csv"), QStringLiteral("--report"), QStringLiteral("--no-images")});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("cache: 200000 items, 198000 points, 2000 without y, 0 without x"));
}

// A long-format file: one variable per city, the text column noted once, times placed per group.
TEST_F(KelchartTest, LongFormatCsvDrawsOneVariablePerGroup)
{
    writeText(path(QStringLiteral("cities.csv")), "day;city;sky;T [degC]\n2012-01-01;Oslo;sun;1\n2012-01-01;Rome;sun;10\n"
                                                  "2012-01-02;Oslo;rain;2\n2012-01-02;Rome;sun;11\n");
    const KelchartRun result = run({QStringLiteral("cities.csv"), QStringLiteral("--report"), QStringLiteral("--no-images"),
                                    QStringLiteral("--y"), QStringLiteral("T,sky")});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.err, QByteArray("kelchart: note: column \"sky\" holds text; skipped\n"));
    const QString report = QString::fromUtf8(result.out);
    EXPECT_TRUE(report.contains(QStringLiteral("axis \"axis.x.bottom\" at the bottom, time")));
    EXPECT_TRUE(report.contains(QStringLiteral("variable \"Oslo\" on \"axis.x.bottom\" and \"axis.y.left\"\n"
                                               "  cache: 2 items, 2 points, 0 without y, 0 without x\n"
                                               "  bounds: (0, 1) .. (86400, 2)")));
    EXPECT_TRUE(report.contains(QStringLiteral("variable \"Rome\"")));
    EXPECT_TRUE(report.startsWith(QStringLiteral("note: column \"sky\" holds text; skipped\n")));
}

// The options that override the import's guesses reach it; a bad value is a usage fault.
TEST_F(KelchartTest, ImportOptionsOverrideTheGuesses)
{
    writeText(path(QStringLiteral("sales.csv")), "# made up\nregion,sales\nNorth,1\nSouth,2\nNorth,3\n");
    const KelchartRun sums = run({QStringLiteral("sales.csv"), QStringLiteral("--no-images"), QStringLiteral("--aggregate"),
                                  QStringLiteral("sum"), QStringLiteral("--separator"), QStringLiteral(",")});
    EXPECT_EQ(sums.exitCode, 0) << sums.err.toStdString();
    EXPECT_TRUE(sums.err.contains("skipped 1 comment line(s) above the table"));
    EXPECT_TRUE(sums.err.contains("each bar shows the sum of its category's rows"));
    // North 1 + 3, South 2: the sums span 2 to 4.
    EXPECT_TRUE(sums.out.contains("variable sales: 1.8 .. 4.2")) << sums.out.toStdString();
    const KelchartRun bad = run({QStringLiteral("sales.csv"), QStringLiteral("--aggregate"), QStringLiteral("median")});
    EXPECT_EQ(bad.exitCode, 2);
    EXPECT_TRUE(bad.err.contains("--aggregate median: expected mean, sum or none")) << bad.err.toStdString();
}

// German labels: decimal commas, and month and weekday names of the locale; the report keeps the model's texts.
TEST_F(KelchartTest, LocaleWritesTheLabels)
{
    QByteArray csv = "time,level [m]\n";
    for (int hour = 0; hour <= 60; hour += 3)
        csv += QStringLiteral("2012-03-%1 %2:00,%3\n")
                   .arg(30 + hour / 24)
                   .arg(hour % 24, 2, 10, QLatin1Char('0'))
                   .arg(1 + hour % 12 / 24.0)
                   .toLatin1();
    writeText(path(QStringLiteral("days.csv")), csv.replace("2012-03-32", "2012-04-01"));
    const KelchartRun result = run({QStringLiteral("days.csv"), QStringLiteral("--locale"), QStringLiteral("de_DE"),
                                    QStringLiteral("--report")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("\"Sat 31\" at")) << result.out.toStdString();
    const QLocale german(QLocale::German, QLocale::Germany);
    const QStringList texts = svgTexts(path(QStringLiteral("kelchart.svg")));
    EXPECT_TRUE(texts.contains(german.monthName(3, QLocale::ShortFormat) + QStringLiteral(" 30 00:00")))
        << texts.join(QLatin1Char('|')).toStdString();
    EXPECT_TRUE(texts.contains(german.dayName(6, QLocale::ShortFormat) + QStringLiteral(" 31")));
    EXPECT_TRUE(texts.contains(QStringLiteral("1,25")));
    EXPECT_FALSE(texts.contains(QStringLiteral("1.25")));
}

TEST_F(KelchartTest, CLocaleDrawsAsWithoutOne)
{
    ASSERT_EQ(run({}).exitCode, 0);
    const KelchartRun c = run({QStringLiteral("--locale"), QStringLiteral("C"), QStringLiteral("--png"),
                               QStringLiteral("c.png"), QStringLiteral("--svg"), QStringLiteral("c.svg")});
    ASSERT_EQ(c.exitCode, 0) << c.err.toStdString();
    EXPECT_EQ(readAll(path(QStringLiteral("c.svg"))), readAll(path(QStringLiteral("kelchart.svg"))));
    EXPECT_EQ(QImage(path(QStringLiteral("c.png"))), QImage(path(QStringLiteral("kelchart.png"))));
}

// --png, --svg and --pdf say the format, --output and -o the suffix; every one is written, in order, and the
// defaults are not. --scale multiplies the PNG files' pixels alone.
TEST_F(KelchartTest, OutputsAreWrittenInTheFormatsTheyName)
{
    const KelchartRun result = run({QStringLiteral("-o"), QStringLiteral("a.png"), QStringLiteral("--output"),
                                    QStringLiteral("b.SVG"), QStringLiteral("--pdf"), QStringLiteral("c.data"),
                                    QStringLiteral("--png"), QStringLiteral("d.data"), QStringLiteral("-o"),
                                    QStringLiteral("e.pdf"), QStringLiteral("--scale"), QStringLiteral("1.5"),
                                    QStringLiteral("--size"), QStringLiteral("401x300")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("wrote a.png, b.SVG, c.data, d.data and e.pdf\n")) << result.out.toStdString();
    EXPECT_EQ(files(), (QStringList{QStringLiteral("a.png"), QStringLiteral("b.SVG"), QStringLiteral("c.data"),
                                    QStringLiteral("d.data"), QStringLiteral("e.pdf")}));
    // 401 x 1.5 = 601.5 rounds up.
    EXPECT_EQ(QImage(path(QStringLiteral("a.png"))).size(), QSize(602, 450));
    EXPECT_EQ(QImage(path(QStringLiteral("d.data")), "PNG").size(), QSize(602, 450));
    EXPECT_TRUE(readAll(path(QStringLiteral("b.SVG"))).contains("viewBox=\"0 0 401 300\""));
    EXPECT_TRUE(readAll(path(QStringLiteral("c.data"))).startsWith("%PDF-"));
    EXPECT_EQ(readAll(path(QStringLiteral("c.data"))).size(), readAll(path(QStringLiteral("e.pdf"))).size());
}

// The PDF file's texts are text, where the SVG file of the same run puts them (within 2 pixels; its points
// are 96/72 of the chart's pixels).
TEST_F(KelchartTest, PdfTextsLieWhereTheSvgPutsThem)
{
    if (!OrvTest::pdftotextFound())
        GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
    const KelchartRun result = run({QStringLiteral("--pdf"), QStringLiteral("chart.pdf"), QStringLiteral("--svg"),
                                    QStringLiteral("chart.svg"), QStringLiteral("--locale"), QStringLiteral("de_DE")});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    QString error;
    const QList<OrvTest::PdfPageText> pages = OrvTest::pdfWords(path(QStringLiteral("chart.pdf")), &error);
    ASSERT_EQ(pages.size(), 1) << error.toStdString();
    EXPECT_EQ(pages[0].size, QSizeF(600, 375));
    const QList<OrvTest::PlacedText> expected =
        OrvTest::svgTextBoxes(OrvTest::parseSvg(readAll(path(QStringLiteral("chart.svg")))));
    EXPECT_TRUE(std::any_of(expected.begin(), expected.end(),
                            [](const OrvTest::PlacedText& text) { return text.text == QLatin1String("101,9"); }));
    const QStringList faults =
        OrvTest::placementFaults(expected, OrvTest::mapped(pages[0].words, QTransform::fromScale(4.0 / 3, 4.0 / 3)), 2.0);
    EXPECT_TRUE(faults.isEmpty()) << faults.join(QLatin1Char('\n')).toStdString();
}

TEST_F(KelchartTest, UnorderedRepeatingXIsSavedAsPoints)
{
    writeText(path(QStringLiteral("scatter.csv")), "h\tw\n1.8\t80\n1.6\t60\n1.8\t75\n");
    const KelchartRun points = run({QStringLiteral("scatter.csv"), QStringLiteral("--no-images"), QStringLiteral("--save"),
                                    QStringLiteral("points.json")});
    EXPECT_EQ(points.exitCode, 0) << points.err.toStdString();
    const QByteArray saved = readAll(path(QStringLiteral("points.json")));
    EXPECT_TRUE(saved.contains("\"value\": \"none\"")) << saved.toStdString();
    EXPECT_TRUE(saved.contains("ellipse"));
    const KelchartRun lines = run({QStringLiteral("scatter.csv"), QStringLiteral("--no-images"), QStringLiteral("--lines"),
                                   QStringLiteral("--save"), QStringLiteral("lines.json")});
    EXPECT_EQ(lines.exitCode, 0) << lines.err.toStdString();
    EXPECT_TRUE(readAll(path(QStringLiteral("lines.json"))).contains("\"value\": \"line\""));
}

namespace {

struct BadInput {
    const char* name;
    QStringList arguments;
    const char* message;
    int exitCode;
};

void PrintTo(const BadInput& input, std::ostream* os)
{
    *os << input.name;
}

class KelchartBadInput : public KelchartTest, public ::testing::WithParamInterface<BadInput> {
protected:
    void SetUp() override
    {
        writeText(path(QStringLiteral("ragged.csv")), "x,a,b\n1,2,3\n4,5\n");
        writeText(path(QStringLiteral("truncated.json")), "{\"format\": \"kelchart chart\",\n \"version\": 1,\n \"root\": {\"t");
        writeText(path(QStringLiteral("unknown.json")),
                  "{\"format\": \"kelchart chart\", \"version\": 1, \"root\": {\"type\": \"chart.4d\", \"name\": \"c\","
                  " \"properties\": [], \"children\": []}}");
        writeText(path(QStringLiteral("badvalue.json")),
                  "{\"format\": \"kelchart chart\", \"version\": 1, \"root\": {\"type\": \"chart.2d\", \"name\": \"c\","
                  " \"properties\": [{\"name\": \"draw3d\", \"value\": \"perhaps\", \"unit\": \"\"}], \"children\": []}}");
        QDir(m_dir.path()).mkdir(QStringLiteral("folder"));
        m_inputs = QDir(m_dir.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    }

    QStringList m_inputs;
};

const QStringList outputs = {QStringLiteral("--save"), QStringLiteral("saved.json"), QStringLiteral("--png"),
                             QStringLiteral("out.png"), QStringLiteral("--svg"), QStringLiteral("out.svg")};

} // namespace

// One clear line on stderr, a non-zero status, and no output file at all. (Each fault of the CSV reader and
// the chart file loader is checked with its message beside them; here one of each kind of input.)
TEST_P(KelchartBadInput, FailsWithOneMessageAndNoOutput)
{
    const BadInput& input = GetParam();
    const KelchartRun result = run(input.arguments + outputs);
    EXPECT_FALSE(result.crashed);
    EXPECT_EQ(result.exitCode, input.exitCode);
    EXPECT_EQ(result.err.count('\n'), 1) << result.err.toStdString();
    EXPECT_TRUE(result.err.startsWith("kelchart: "));
    EXPECT_TRUE(result.err.contains(input.message)) << result.err.toStdString();
    EXPECT_EQ(QDir(m_dir.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name), m_inputs);
}

INSTANTIATE_TEST_SUITE_P(
    EveryKind, KelchartBadInput,
    ::testing::Values(
        BadInput{"MissingCsv", {QStringLiteral("missing.csv")}, "missing.csv: cannot read", 1},
        BadInput{"DirectoryAsCsv", {QStringLiteral("folder")}, "folder: is a directory", 1},
        BadInput{"RaggedCsv", {QStringLiteral("ragged.csv")}, "ragged.csv:3: expected 3 fields", 1},
        BadInput{"UnknownColumn", {QStringLiteral("ragged.csv"), QStringLiteral("--y"), QStringLiteral("c")},
                 "y column \"c\": ragged.csv has no such column (see kelchart --help)", 2},
        BadInput{"TwoShapes", {QStringLiteral("--bars"), QStringLiteral("--points")}, "exclude each other", 2},
        BadInput{"MissingChartFile", {QStringLiteral("--load"), QStringLiteral("missing.json")}, "missing.json: cannot read", 1},
        BadInput{"TruncatedChartFile", {QStringLiteral("--load"), QStringLiteral("truncated.json")},
                 "truncated.json:3: malformed chart file", 1},
        BadInput{"UnknownTypeString", {QStringLiteral("--load"), QStringLiteral("unknown.json")},
                 "unknown.json: root: unknown type string \"chart.4d\"", 1},
        BadInput{"ValueInFileDoesNotParse", {QStringLiteral("--load"), QStringLiteral("badvalue.json")},
                 "badvalue.json: node \"c\": property \"draw3d\": cannot read \"perhaps\" as bool", 1},
        BadInput{"PathDoesNotExist", {QStringLiteral("--set"), QStringLiteral("variable/T9/title=x")},
                 "--set variable/T9/title: \"variable\" has no child \"T9\"", 1},
        BadInput{"PropertyDoesNotExist", {QStringLiteral("--set"), QStringLiteral("variable/T1/thickness=2")},
                 "--set variable/T1/thickness: chart.variable \"T1\" has no property \"thickness\"", 1},
        BadInput{"ValueDoesNotParse", {QStringLiteral("--set"), QStringLiteral("variable/T1/style/symbolSize=big")},
                 "--set variable/T1/style/symbolSize: cannot read \"big\" as intlist", 1},
        BadInput{"UnknownOption", {QStringLiteral("--colour")}, "Unknown option 'colour'", 2},
        BadInput{"BadSize", {QStringLiteral("--size"), QStringLiteral("10x10")}, "--size 10x10: expected WIDTHxHEIGHT", 2},
        BadInput{"BadTicks", {QStringLiteral("--ticks"), QStringLiteral("0")}, "--ticks 0: expected a whole number", 2},
        BadInput{"UnknownLocale", {QStringLiteral("--locale"), QStringLiteral("xx_YY")},
                 "--locale xx_YY: not a locale name", 2},
        BadInput{"TwoCsvFiles", {QStringLiteral("a.csv"), QStringLiteral("b.csv")}, "at most one CSV file", 2},
        BadInput{"UnknownSuffix", {QStringLiteral("-o"), QStringLiteral("chart.bmp")},
                 "--output chart.bmp: expected a file name ending in .png, .svg or .pdf", 2},
        BadInput{"NoSuffix", {QStringLiteral("--output"), QStringLiteral("chart")},
                 "--output chart: expected a file name ending in .png, .svg or .pdf", 2},
        BadInput{"ScaleZero", {QStringLiteral("--scale"), QStringLiteral("0")},
                 "--scale 0: expected a number above 0 and at most 8", 2},
        BadInput{"ScaleNotANumber", {QStringLiteral("--scale"), QStringLiteral("2x")},
                 "--scale 2x: expected a number above 0 and at most 8", 2},
        BadInput{"ScaleTooLargeForTheSize",
                 {QStringLiteral("--scale"), QStringLiteral("4"), QStringLiteral("--size"), QStringLiteral("5000x500")},
                 "--scale 4 makes a PNG file of 20000x2000 pixels", 2}),
    [](const ::testing::TestParamInfo<BadInput>& info) { return std::string(info.param.name); });

TEST_F(KelchartTest, UnwritableImageLeavesNoPartialFile)
{
    const KelchartRun result = run({QStringLiteral("--png"), path(QStringLiteral("no/such/dir/x.png")), QStringLiteral("--svg"),
                                    QStringLiteral("out.svg")});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains("x.png: cannot write")) << result.err.toStdString();
    EXPECT_TRUE(files().isEmpty());
}
