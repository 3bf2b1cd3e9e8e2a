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

// The stroke colours of an SVG file's elements.
QSet<QString> svgStrokes(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    QXmlStreamReader xml(&file);
    QSet<QString> strokes;
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement)
            strokes << xml.attributes().value(QStringLiteral("stroke")).toString();
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return strokes;
}

} // namespace

// With no argument: the sample chart drawn to both default files, the same with the C locale, and
// every series' colour stroked.
TEST_F(KelchartTest, NoArgumentDrawsTheSampleAndSummarises)
{
    const KelchartRun result = run({});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(files(), (QStringList{"kelchart.png", "kelchart.svg"}));
    EXPECT_TRUE(result.out.contains("4 of 4 variables drawn"));
    EXPECT_TRUE(result.out.contains("wrote kelchart.png and kelchart.svg"));
    EXPECT_TRUE(result.err.isEmpty()) << result.err.toStdString();
    EXPECT_EQ(QImage(path("kelchart.png")).size(), QSize(800, 500));
    const QSet<QString> strokes = svgStrokes(path("kelchart.svg"));
    for (const char* colour : {"#e15759", "#4e79a7", "#59a14f", "#b07aa1"})
        EXPECT_TRUE(strokes.contains(QString::fromLatin1(colour))) << colour;

    const KelchartRun c = run({"--locale", "C", "--png", "c.png", "--svg", "c.svg"});
    ASSERT_EQ(c.exitCode, 0) << c.err.toStdString();
    EXPECT_EQ(readAll(path("c.svg")), readAll(path("kelchart.svg")));
    EXPECT_EQ(QImage(path("c.png")), QImage(path("kelchart.png")));
}

// The expected text was checked by hand against the sample's data (the day shown exactly, 0 to 24 h,
// ticks every 4 h): ranges, ticks, unit labels, the degF sensor's bounds in degC, and the matrices. The
// sample saved and loaded again reports and saves the same.
TEST_F(KelchartTest, SampleReportIsTheCheckedOneAndSurvivesSaving)
{
    const KelchartRun first = run({"--report", "--no-images", "--save", path("sample.json")});
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(QString::fromUtf8(first.out), QString::fromUtf8(readAll(testDataPath("sample-report.txt"))));
    EXPECT_EQ(files(), QStringList{"sample.json"});
    const KelchartRun second =
        run({"--report", "--no-images", "--load", path("sample.json"), "--save", path("again.json")});
    EXPECT_EQ(second.exitCode, 0) << second.err.toStdString();
    EXPECT_EQ(first.out, second.out);
    EXPECT_EQ(readAll(path("sample.json")), readAll(path("again.json")));
}

TEST_F(KelchartTest, SetChangesWhatIsDrawnAndSaved)
{
    const KelchartRun result = run({"--report", "--no-images", "--set", "axis.y/axis.y.left/autoScale=false", "--set",
                                    "axis.y/axis.y.left/min=-20", "--set", "axis.y/axis.y.left/max=20", "--set",
                                    "variable/T2/enabled=false", "--save", path("set.json")});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("axis \"axis.y.left\" at the left, continuous\n  range: -20 .. 20\n"));
    EXPECT_TRUE(result.out.contains("4 in the chart, 4 with accepted units, 3 cached"));
    EXPECT_FALSE(result.out.contains("variable \"T2\""));
    EXPECT_TRUE(readAll(path("set.json")).contains("\"value\": \"-20\""));
}

namespace {

// A CSV file run with options: what the report must hold, and the whole of stderr.
struct CsvRun {
    const char* name; // of the file too, with ".csv"
    QByteArray text;
    QStringList options;
    QByteArrayList out;
    QByteArray err = {};
    QByteArray outStart = {};
};

void PrintTo(const CsvRun& c, std::ostream* os)
{
    *os << c.name;
}

class KelchartCsv : public KelchartTest, public ::testing::WithParamInterface<CsvRun> {};

const QByteArray hourly = "time,T [degC]\n2012-03-14 00:00,1\n2012-03-14 06:00,2\n2012-03-14 12:00,3\n";

} // namespace

TEST_P(KelchartCsv, ReportShowsHowTheDataIsDrawn)
{
    const CsvRun& c = GetParam();
    const QString file = QString::fromLatin1(c.name) + ".csv";
    writeText(path(file), c.text);
    const KelchartRun result = run(QStringList{file, "--no-images"} + c.options);
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_EQ(result.err, c.err);
    EXPECT_TRUE(result.out.startsWith(c.outStart));
    for (const QByteArray& text : c.out)
        EXPECT_TRUE(result.out.contains(text)) << text.toStdString() << "\nin\n" << result.out.toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Files, KelchartCsv,
    ::testing::Values(
        // Each dimension on its own axis; 50 degF and 59 degF are 10 and 15 degC; the empty cell is a
        // point without y.
        CsvRun{"weather", "time [min],T [degC],T out [degF],p [kPa]\n0,20,50,101\n30,21,,101.2\n60,22,59,nan\n",
               {"--report"},
               {"title \"weather\"", "3 in the chart, 3 with accepted units, 3 cached",
                "axis \"axis.x.bottom\" at the bottom, continuous", "unit label: \"min\"",
                "variable \"T out\" on \"axis.x.bottom\" and \"axis.y.left\"",
                "variable \"p\" on \"axis.x.bottom\" and \"axis.y.right\"",
                "cache: 3 items, 2 points, 1 without y, 0 without x\n  bounds: (0, 10) .. (60, 15)"}},
        CsvRun{"fruit", "fruit,sold,kept\napple,3,1\npear,5,\nplum,2,4\n", {"--report"},
               {"axis \"axis.x.bottom\" at the bottom, discrete\n  range: 0 .. 3\n", "0 \"apple\" at ",
                "2 \"plum\" at "}},
        // Dates give a time axis with calendar labels.
        CsvRun{"hourly", hourly, {"--report"},
               {"axis \"axis.x.bottom\" at the bottom, time\n  range: -864 .. 44064", "offset text: \"2012-03-14\"",
                "21600 \"06:00\" at"}},
        // Times without a zone are on the axis zone's clock: midnight in Kathmandu is 18:15 UTC the day
        // before, so the values count from 2012-03-13 UTC, and 06:00 there is 00:15 UTC, a day and 900 s on.
        CsvRun{"hourlyInKathmandu", hourly, {"--report", "--set", "axis.x/axis.x.bottom/timeZone=Asia/Kathmandu"},
               {"range: 64836 .. 109764", "87300 \"06:00\" at"}},
        CsvRun{"big", "x,count\n0,1000000\n1,5000000\n", {"--report"},
               {"axis \"axis.y.left\" at the left, continuous\n  range: 800000 .. 5200000\n  factor: 1000000\n",
                "    5000000 \"5.0\" at 0.954545"}},
        // Long format: one variable per city, the text column noted once, times placed per group.
        CsvRun{"cities",
               "day;city;sky;T [degC]\n2012-01-01;Oslo;sun;1\n2012-01-01;Rome;sun;10\n2012-01-02;Oslo;rain;2\n"
               "2012-01-02;Rome;sun;11\n",
               {"--report", "--y", "T,sky"},
               {"axis \"axis.x.bottom\" at the bottom, time",
                "variable \"Oslo\" on \"axis.x.bottom\" and \"axis.y.left\"\n"
                "  cache: 2 items, 2 points, 0 without y, 0 without x\n  bounds: (0, 1) .. (86400, 2)",
                "variable \"Rome\""},
               "kelchart: note: column \"sky\" holds text; skipped\n", "note: column \"sky\" holds text; skipped\n"},
        // Options that override the import's guesses reach it: North 1 + 3, South 2, so the sums span 2 to 4.
        CsvRun{"sales", "# made up\nregion,sales\nNorth,1\nSouth,2\nNorth,3\n",
               {"--aggregate", "sum", "--separator", ","},
               {"variable sales: 1.8 .. 4.2"},
               "kelchart: note: skipped 1 comment line(s) above the table\nkelchart: note: \"region\" repeats within a "
               "series: each bar shows the sum of its category's rows\n"}),
    [](const ::testing::TestParamInfo<CsvRun>& info) { return std::string(info.param.name); });

// Each series' colour is found where its matrix maps a known data point.
TEST_F(KelchartTest, SeriesColoursLieWhereTheMatricesMapTheirPoints)
{
    writeText(path("lines.csv"), "x,up [m],down [m]\n0,1,9\n1,3,7\n2,5,5.5\n3,7,3\n4,9,1\n");
    const KelchartRun result =
        run({"lines.csv", "--report", "--size", "640x400", "--set", "variable/up/style/lineColor=#ff0000", "--set",
             "variable/up/style/lineWidth=5", "--set", "variable/down/style/lineColor=#0000ff", "--set",
             "variable/down/style/lineWidth=5"});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    const QString report = QString::fromUtf8(result.out);
    const QImage image(path("kelchart.png"));
    ASSERT_EQ(image.size(), QSize(640, 400));
    for (const double x : {0, 1, 3, 4}) {
        EXPECT_TRUE(colourAt(image, pixelOf(report, "up", x, 1 + 2 * x), qRgb(255, 0, 0))) << x;
        EXPECT_TRUE(colourAt(image, pixelOf(report, "down", x, 9 - 2 * x), qRgb(0, 0, 255))) << x;
    }
    // Away from the lines there is only the background.
    EXPECT_TRUE(colourAt(image, pixelOf(report, "up", 1, 8), qRgb(255, 255, 255)));
}

TEST_F(KelchartTest, OtherChartKindsLoadAndSaveWithoutDrawing)
{
    writeText(path("pie.json"),
              "{\"format\": \"kelchart chart\", \"version\": 1, \"root\": {\"type\": \"chart.pie\", \"name\": \"pie\","
              " \"properties\": [{\"name\": \"showPercentages\", \"value\": \"false\", \"unit\": \"\"}],"
              " \"children\": []}}");
    const KelchartRun result = run({"--load", "pie.json", "--save", "out.json", "--set", "title=Shares"});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.err.contains("a \"chart.pie\" has no axes to draw"));
    EXPECT_EQ(files(), (QStringList{"out.json", "pie.json"}));
    const QByteArray saved = readAll(path("out.json"));
    EXPECT_TRUE(saved.contains("\"value\": \"Shares\""));
    EXPECT_TRUE(saved.contains("\"name\": \"labels\""));
}

TEST_F(KelchartTest, HugeCsvStreamsThrough)
{
    QFile csv(path("huge.csv"));
    ASSERT_TRUE(csv.open(QIODevice::WriteOnly));
    csv.write("t [s],a [m],b [m]\n");
    for (int i = 0; i < 200000; ++i)
        csv.write(QStringLiteral("%1,%2,%3\n")
                      .arg(i)
                      .arg(std::sin(i * 0.001))
                      .arg(i % 100 == 0 ? QString() : QStringLiteral("1.5"))
                      .toLatin1());
    csv.close();
    const KelchartRun result = run({"huge.csv", "--report", "--no-images"});
    EXPECT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("cache: 200000 items, 198000 points, 2000 without y, 0 without x"));
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
    writeText(path("days.csv"), csv.replace("2012-03-32", "2012-04-01"));
    const KelchartRun result = run({"days.csv", "--locale", "de_DE", "--report"});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("\"Sat 31\" at")) << result.out.toStdString();
    const QLocale german(QLocale::German, QLocale::Germany);
    const QStringList texts = svgTexts(path("kelchart.svg"));
    EXPECT_TRUE(texts.contains(german.monthName(3, QLocale::ShortFormat) + " 30 00:00"))
        << texts.join(QLatin1Char('|')).toStdString();
    EXPECT_TRUE(texts.contains(german.dayName(6, QLocale::ShortFormat) + " 31"));
    EXPECT_TRUE(texts.contains("1,25"));
    EXPECT_FALSE(texts.contains("1.25"));
}

// --png, --svg and --pdf say the format, --output and -o the suffix; every one is written, in order, and the
// defaults are not. --scale multiplies the PNG files' pixels alone.
TEST_F(KelchartTest, OutputsAreWrittenInTheFormatsTheyName)
{
    const KelchartRun result = run({"-o", "a.png", "--output", "b.SVG", "--pdf", "c.data", "--png", "d.data", "-o",
                                    "e.pdf", "--scale", "1.5", "--size", "401x300"});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    EXPECT_TRUE(result.out.contains("wrote a.png, b.SVG, c.data, d.data and e.pdf\n")) << result.out.toStdString();
    EXPECT_EQ(files(), (QStringList{"a.png", "b.SVG", "c.data", "d.data", "e.pdf"}));
    // 401 x 1.5 = 601.5 rounds up.
    EXPECT_EQ(QImage(path("a.png")).size(), QSize(602, 450));
    EXPECT_EQ(QImage(path("d.data"), "PNG").size(), QSize(602, 450));
    EXPECT_TRUE(readAll(path("b.SVG")).contains("viewBox=\"0 0 401 300\""));
    EXPECT_TRUE(readAll(path("c.data")).startsWith("%PDF-"));
    EXPECT_EQ(readAll(path("c.data")).size(), readAll(path("e.pdf")).size());
}

// The PDF file's texts are text, where the SVG file of the same run puts them (within 2 pixels; its points
// are 96/72 of the chart's pixels).
TEST_F(KelchartTest, PdfTextsLieWhereTheSvgPutsThem)
{
    if (!OrvTest::pdftotextFound())
        GTEST_SKIP() << "pdftotext (poppler-utils) is not installed";
    const KelchartRun result = run({"--pdf", "chart.pdf", "--svg", "chart.svg", "--locale", "de_DE"});
    ASSERT_EQ(result.exitCode, 0) << result.err.toStdString();
    QString error;
    const QList<OrvTest::PdfPageText> pages = OrvTest::pdfWords(path("chart.pdf"), &error);
    ASSERT_EQ(pages.size(), 1) << error.toStdString();
    EXPECT_EQ(pages[0].size, QSizeF(600, 375));
    const QList<OrvTest::PlacedText> expected = OrvTest::svgTextBoxes(OrvTest::parseSvg(readAll(path("chart.svg"))));
    EXPECT_TRUE(std::any_of(expected.begin(), expected.end(),
                            [](const OrvTest::PlacedText& text) { return text.text == QLatin1String("101,9"); }));
    const QStringList faults = OrvTest::placementFaults(
        expected, OrvTest::mapped(pages[0].words, QTransform::fromScale(4.0 / 3, 4.0 / 3)), 2.0);
    EXPECT_TRUE(faults.isEmpty()) << faults.join(QLatin1Char('\n')).toStdString();
}

TEST_F(KelchartTest, UnorderedRepeatingXIsSavedAsPoints)
{
    writeText(path("scatter.csv"), "h\tw\n1.8\t80\n1.6\t60\n1.8\t75\n");
    const KelchartRun points = run({"scatter.csv", "--no-images", "--save", "points.json"});
    EXPECT_EQ(points.exitCode, 0) << points.err.toStdString();
    const QByteArray saved = readAll(path("points.json"));
    EXPECT_TRUE(saved.contains("\"value\": \"none\"")) << saved.toStdString();
    EXPECT_TRUE(saved.contains("ellipse"));
    const KelchartRun lines = run({"scatter.csv", "--no-images", "--lines", "--save", "lines.json"});
    EXPECT_EQ(lines.exitCode, 0) << lines.err.toStdString();
    EXPECT_TRUE(readAll(path("lines.json")).contains("\"value\": \"line\""));
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
        writeText(path("ragged.csv"), "x,a,b\n1,2,3\n4,5\n");
        writeText(path("truncated.json"), "{\"format\": \"kelchart chart\",\n \"version\": 1,\n \"root\": {\"t");
        const QByteArray head = "{\"format\": \"kelchart chart\", \"version\": 1, \"root\": {";
        writeText(path("unknown.json"),
                  head + "\"type\": \"chart.4d\", \"name\": \"c\", \"properties\": [], \"children\": []}}");
        writeText(path("badvalue.json"),
                  head
                      + "\"type\": \"chart.2d\", \"name\": \"c\", \"properties\": [{\"name\": "
                        "\"draw3d\", \"value\": \"perhaps\", \"unit\": \"\"}], \"children\": []}}");
        QDir(m_dir.path()).mkdir("folder");
        m_inputs = entries();
    }

    QStringList entries() const
    {
        return QDir(m_dir.path()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    }

    QStringList m_inputs;
};

} // namespace

// One clear line on stderr, a non-zero status, and no output file at all. (Each fault of the CSV reader and
// the chart file loader is checked with its message beside them; here one of each kind of input.)
TEST_P(KelchartBadInput, FailsWithOneMessageAndNoOutput)
{
    const BadInput& input = GetParam();
    const KelchartRun result =
        run(input.arguments + QStringList{"--save", "saved.json", "--png", "out.png", "--svg", "out.svg"});
    EXPECT_FALSE(result.crashed);
    EXPECT_EQ(result.exitCode, input.exitCode);
    EXPECT_EQ(result.err.count('\n'), 1) << result.err.toStdString();
    EXPECT_TRUE(result.err.startsWith("kelchart: "));
    EXPECT_TRUE(result.err.contains(input.message)) << result.err.toStdString();
    EXPECT_EQ(entries(), m_inputs);
}

INSTANTIATE_TEST_SUITE_P(
    EveryKind, KelchartBadInput,
    ::testing::Values(
        BadInput{"MissingCsv", {"missing.csv"}, "missing.csv: cannot read", 1},
        BadInput{"DirectoryAsCsv", {"folder"}, "folder: is a directory", 1},
        BadInput{"RaggedCsv", {"ragged.csv"}, "ragged.csv:3: expected 3 fields", 1},
        BadInput{"UnknownColumn", {"ragged.csv", "--y", "c"},
                 "y column \"c\": ragged.csv has no such column (see kelchart --help)", 2},
        BadInput{"TwoShapes", {"--bars", "--points"}, "exclude each other", 2},
        BadInput{"BadAggregate", {"ragged.csv", "--aggregate", "median"},
                 "--aggregate median: expected mean, sum or none", 2},
        BadInput{"MissingChartFile", {"--load", "missing.json"}, "missing.json: cannot read", 1},
        BadInput{"TruncatedChartFile", {"--load", "truncated.json"}, "truncated.json:3: malformed chart file", 1},
        BadInput{"UnknownTypeString", {"--load", "unknown.json"},
                 "unknown.json: root: unknown type string \"chart.4d\"", 1},
        BadInput{"ValueInFileDoesNotParse", {"--load", "badvalue.json"},
                 "badvalue.json: node \"c\": property \"draw3d\": cannot read \"perhaps\" as bool", 1},
        BadInput{"PathDoesNotExist", {"--set", "variable/T9/title=x"},
                 "--set variable/T9/title: \"variable\" has no child \"T9\"", 1},
        BadInput{"PropertyDoesNotExist", {"--set", "variable/T1/thickness=2"},
                 "--set variable/T1/thickness: chart.variable \"T1\" has no property \"thickness\"", 1},
        BadInput{"ValueDoesNotParse", {"--set", "variable/T1/style/symbolSize=big"},
                 "--set variable/T1/style/symbolSize: cannot read \"big\" as intlist", 1},
        BadInput{"UnknownOption", {"--colour"}, "Unknown option 'colour'", 2},
        BadInput{"BadSize", {"--size", "10x10"}, "--size 10x10: expected WIDTHxHEIGHT", 2},
        BadInput{"BadTicks", {"--ticks", "0"}, "--ticks 0: expected a whole number", 2},
        BadInput{"UnknownLocale", {"--locale", "xx_YY"}, "--locale xx_YY: not a locale name", 2},
        BadInput{"TwoCsvFiles", {"a.csv", "b.csv"}, "at most one CSV file", 2},
        BadInput{"UnknownSuffix", {"-o", "chart.bmp"},
                 "--output chart.bmp: expected a file name ending in .png, .svg or .pdf", 2},
        BadInput{"NoSuffix", {"--output", "chart"},
                 "--output chart: expected a file name ending in .png, .svg or .pdf", 2},
        BadInput{"ScaleZero", {"--scale", "0"}, "--scale 0: expected a number above 0 and at most 8", 2},
        BadInput{"ScaleNotANumber", {"--scale", "2x"}, "--scale 2x: expected a number above 0 and at most 8", 2},
        BadInput{"ScaleTooLargeForTheSize", {"--scale", "4", "--size", "5000x500"},
                 "--scale 4 makes a PNG file of 20000x2000 pixels", 2}),
    [](const ::testing::TestParamInfo<BadInput>& info) { return std::string(info.param.name); });

TEST_F(KelchartTest, UnwritableImageLeavesNoPartialFile)
{
    const KelchartRun result = run({"--png", path("no/such/dir/x.png"), "--svg", "out.svg"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.err.contains("x.png: cannot write")) << result.err.toStdString();
    EXPECT_TRUE(files().isEmpty());
}
