#include "CsvImport.h"

#include "QtPrinters.h"

#include <QTemporaryDir>

#include <QFile>

#include <gtest/gtest.h>

#include <cmath>

using Orv::Chart::CsvImport;
using Orv::Chart::DataSet;

namespace {

class CsvReaderTest : public ::testing::Test {
protected:
    QString write(const QByteArray& text)
    {
        const QString path = m_dir.filePath(QStringLiteral("data.csv"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(text) == text.size());
        return path;
    }

    DataSet read(const QByteArray& text)
    {
        const CsvImport::Result result = CsvImport::read(write(text));
        EXPECT_TRUE(result.ok()) << result.error.message.toStdString();
        return result.data;
    }

    // The message of the fault that stops reading; empty when it reads.
    QString failure(const QByteArray& text)
    {
        const CsvImport::Result result = CsvImport::read(write(text));
        EXPECT_NE(result.error.kind, Orv::Chart::IoError::BadRequest);
        EXPECT_TRUE(result.ok() || result.data.series.empty());
        return result.error.message;
    }

    QTemporaryDir m_dir;
};

} // namespace

TEST_F(CsvReaderTest, NumericXGivesOneSeriesPerColumnWithUnits)
{
    const DataSet data = read("time [s], T1 [degC],p\n0,20.5,101\n1,21,102\n");
    ASSERT_EQ(data.series.size(), 2u);
    EXPECT_FALSE(data.discreteX);
    const Orv::Chart::DataSeries& t1 = data.series[0];
    EXPECT_EQ(t1.x.name, QStringLiteral("time"));
    EXPECT_EQ(t1.x.unit, QStringLiteral("s"));
    EXPECT_EQ(t1.y.name, QStringLiteral("T1"));
    EXPECT_EQ(t1.y.unit, QStringLiteral("degC"));
    EXPECT_EQ(t1.x.values, (std::vector<float>{0.0f, 1.0f}));
    EXPECT_EQ(t1.y.values, (std::vector<float>{20.5f, 21.0f}));
    EXPECT_EQ(data.series[1].y.name, QStringLiteral("p"));
    EXPECT_TRUE(data.series[1].y.unit.isEmpty());
    EXPECT_EQ(data.series[1].x.values, t1.x.values);
}

// Quoted separators, quotes and line breaks stay in the category; rows without x before the first text
// become empty categories.
TEST_F(CsvReaderTest, TextXGivesCategoriesAtTheirIndices)
{
    const DataSet data = read("fruit,count\napple,3\n\"pear, green\",5\n\"say \"\"hi\"\"\",1\n\"two\r\nlines\",1\n");
    EXPECT_TRUE(data.discreteX);
    EXPECT_EQ(data.categories, (QStringList{"apple", "pear, green", "say \"hi\"", "two\r\nlines"}));
    EXPECT_EQ(data.series[0].x.values, (std::vector<float>{0.0f, 1.0f, 2.0f, 3.0f}));

    const DataSet leadingEmpty = read("x,y\n,1\nred,2\n");
    EXPECT_TRUE(leadingEmpty.discreteX);
    EXPECT_EQ(leadingEmpty.categories, (QStringList{QString(), "red"}));
    EXPECT_EQ(leadingEmpty.series[0].x.undefined, (std::vector<bool>{false, false}));
}

// Dates in the x column are kept as instants for binding; a year column stays numeric; a user format
// wins over numbers.
TEST_F(CsvReaderTest, DateXIsKeptAsInstants)
{
    const DataSet data = read("day,y\n2012-03-14,1\n,2\n2012-03-15T06:00+05:45,3\n");
    EXPECT_TRUE(data.timeX);
    EXPECT_FALSE(data.discreteX);
    ASSERT_EQ(data.xTimes.size(), 3u);
    EXPECT_EQ(data.xTimes[0].microseconds, 1331683200LL * 1000000);
    EXPECT_FALSE(data.xTimes[0].utc);
    EXPECT_EQ(data.series[0].x.undefined, (std::vector<bool>{false, true, false}));
    EXPECT_EQ(data.xTimes[2].microseconds, (1331683200LL + 86400 + 15 * 60) * 1000000);
    EXPECT_TRUE(data.xTimes[2].utc);

    EXPECT_FALSE(read("year,y\n1958,1\n1959,2\n").timeX);
    Orv::Chart::CsvOptions options;
    options.timeFormat = QStringLiteral("%Y%m%d");
    const DataSet formatted = CsvImport::read(write("day,y\n20120314,1\n"), options).data;
    EXPECT_TRUE(formatted.timeX);
    EXPECT_EQ(formatted.xTimes[0].microseconds, 1331683200LL * 1000000);
}

TEST_F(CsvReaderTest, EmptyAndNanCellsAreUndefinedPoints)
{
    const DataSet data = read("x,y\n0,1\n1,\n,3\n3,NaN\r\n\n4,5\n");
    const Orv::Chart::DataSeries& series = data.series[0];
    EXPECT_EQ(series.y.undefined, (std::vector<bool>{false, true, false, true, false}));
    EXPECT_EQ(series.x.undefined, (std::vector<bool>{false, false, true, false, false}));
    EXPECT_TRUE(std::isnan(series.y.values[3]));
    EXPECT_FALSE(data.discreteX);
}

TEST_F(CsvReaderTest, FaultsNameFileAndLine)
{
    struct Case {
        QByteArray text;
        const char* message;
    };
    const Case cases[] = {
        {"", "data.csv: empty file, expected a header row"},
        {"\n  \n", "data.csv: empty file, expected a header row"},
        {"x,y\n", "data.csv:1: no data rows after the header"},
        {"x,y,z\n1,2,3\n4,5\n", "data.csv:3: expected 3 fields as in the header, found 2"},
        {"x,y\n1,2\n3,4,5\n", "data.csv:3: expected 2 fields as in the header, found 3 (a separator inside"},
        {"x,y\n1,2,3,4\n", "data.csv:2: expected 2 fields as in the header, found 4"},
        {"x,y\nred,abc\n", "data.csv:1: no numeric column: every column besides x holds text"},
        {"x,y\n1,2\n3,4\"5\"\n", "data.csv:3: misplaced quote"},
        {"x,\"y\n1,2\n", "data.csv:1: unterminated quoted field"},
        {"x;y\r\n1;2\r\n\"3\r\n", "data.csv:3: unterminated quoted field"},
        {"x,y\n\"a\nb\",1\n3\n", "data.csv:4: expected 2 fields"}, // a quoted line break counts as a line
        {"x,y,y\n1,2,3\n", "data.csv:1: two columns are named \"y\""},
        {"x,[m]\n1,2\n", "data.csv:1: column 2 of the header has no name"},
    };
    for (const Case& c : cases) {
        const QString message = failure(c.text);
        EXPECT_TRUE(message.contains(QLatin1String(c.message)))
            << "for " << c.text.toStdString() << " got: " << message.toStdString();
    }
}

namespace {

struct Dialect {
    const char* name;
    QByteArray text;
};

void PrintTo(const Dialect& dialect, std::ostream* os)
{
    *os << dialect.name;
}

class CsvDialectTest : public CsvReaderTest, public ::testing::WithParamInterface<Dialect> {};

} // namespace

// Every way of writing the same table reads to the same columns.
TEST_P(CsvDialectTest, ReadsTheSameTable)
{
    const DataSet data = read(GetParam().text);
    ASSERT_EQ(data.series.size(), 2u);
    EXPECT_EQ(data.series[0].x.name, QStringLiteral("time"));
    EXPECT_EQ(data.series[0].y.unit, QStringLiteral("m"));
    EXPECT_EQ(data.series[0].x.values, (std::vector<float>{1.0f, 2.0f}));
    EXPECT_EQ(data.series[0].y.values, (std::vector<float>{1.5f, -2.0f}));
    EXPECT_EQ(data.series[1].y.name, QStringLiteral("b, c"));
    EXPECT_EQ(data.series[1].y.undefined, (std::vector<bool>{true, false}));
}

INSTANTIATE_TEST_SUITE_P(
    Separators, CsvDialectTest,
    ::testing::Values(Dialect{"Comma", "time,a [m],\"b, c\"\n1,1.5,\n2,-2,3\n"},
                      Dialect{"BomAndCrLf", "\xEF\xBB\xBFtime,a [m],\"b, c\"\r\n1,1.5,\r\n\r\n2,-2,3\r\n"},
                      Dialect{"Semicolon", "time;a [m];b, c\n1;+1.5;nan\n2;-2;3\n"},
                      Dialect{"Tab", "time\ta [m]\tb, c\n1\t1.5\t\n2\t -2 \t3\n"},
                      Dialect{"QuotedEverywhere", "\n\"time\";\"a [m]\";\"b, c\"\n\"1\";\"1.5\";\"\"\n2;-2;3"}),
    [](const ::testing::TestParamInfo<Dialect>& info) { return std::string(info.param.name); });

// Long-format data: x repeats, and a repeating text column splits the rows into series.
TEST_F(CsvReaderTest, GroupColumnGivesOneSeriesPerValue)
{
    const DataSet one = read("t,city,T\n0,Oslo,1\n0,Rome,10\n1,Oslo,2\n1,Rome,11\n2,Oslo,3\n");
    ASSERT_EQ(one.series.size(), 2u);
    EXPECT_EQ(one.series[0].y.name, QStringLiteral("Oslo"));
    EXPECT_EQ(one.series[0].x.values, (std::vector<float>{0.0f, 1.0f, 2.0f}));
    EXPECT_EQ(one.series[0].y.values, (std::vector<float>{1.0f, 2.0f, 3.0f}));
    EXPECT_EQ(one.series[1].y.name, QStringLiteral("Rome"));
    EXPECT_EQ(one.series[1].y.values, (std::vector<float>{10.0f, 11.0f}));
    EXPECT_EQ(one.shape, Orv::Chart::SeriesShape::Lines);
    EXPECT_TRUE(one.notes.isEmpty());

    const DataSet two = read("t,T,city,p\n0,1,Oslo,5\n0,10,Rome,6\n1,2,Oslo,7\n");
    QStringList names;
    for (const Orv::Chart::DataSeries& series : two.series)
        names << series.y.name;
    EXPECT_EQ(names, (QStringList{"Oslo T", "Oslo p", "Rome T", "Rome p"}));

    // Groups over times keep the rows of their instants.
    const DataSet times = read("day,site,v\n2012-01-01,A,1\n2012-01-01,B,2\n2012-01-02,A,3\n");
    ASSERT_EQ(times.series.size(), 2u);
    EXPECT_EQ(times.series[0].rows, (std::vector<std::size_t>{0, 2}));
    EXPECT_EQ(times.series[1].rows, (std::vector<std::size_t>{1}));
    EXPECT_EQ(times.xTimes.size(), 3u);
}

// Without repeating x there are no groups; a text column, even one that starts with numbers, is left out
// with one note, however many text cells it has.
TEST_F(CsvReaderTest, TextColumnsAreSkippedWithOneNoteEach)
{
    const DataSet data = read("t,weather,T,code\n0,sun,1,7\n1,rain,2,x1\n2,sun,3,x2\n");
    ASSERT_EQ(data.series.size(), 1u);
    EXPECT_EQ(data.series[0].y.name, QStringLiteral("T"));
    EXPECT_EQ(data.notes,
              (QStringList{"column \"weather\" holds text; skipped", "column \"code\" holds text; skipped"}));
}

TEST_F(CsvReaderTest, ShapeFollowsTheOrderOfX)
{
    using Orv::Chart::SeriesShape;
    const std::pair<QByteArray, SeriesShape> cases[] = {
        {"x,y\n3,1\n1,2\n3,3\n", SeriesShape::Points}, // unordered, repeating
        {"x,y\n1,1\n1,2\n2,3\n", SeriesShape::Lines},  // ascending with repeats: steps
        {"x,y\n3,1\n1,2\n2,3\n", SeriesShape::Lines},  // unordered, unique: a path
        {"x,y\nb,1\na,2\nb,3\n", SeriesShape::Bars},   // categories repeat: aggregated
        {"x,y\na,1\nb,2\n", SeriesShape::Bars},
        {"x,g,y\n0,A,1\n1,A,2\n0,B,1\n1,B,2\n", SeriesShape::Lines}, // ordered within each group
    };
    for (const auto& [text, shape] : cases)
        EXPECT_EQ(read(text).shape, shape) << text.toStdString();
}

TEST_F(CsvReaderTest, RoleOptionsChooseColumnsAndShape)
{
    Orv::Chart::CsvOptions options;
    options.x = QStringLiteral("t");
    options.y = QStringList{QStringLiteral("b [m]"), QStringLiteral("a")};
    options.group = QStringLiteral("id");
    options.shape = Orv::Chart::SeriesShape::Bars;
    const DataSet data = CsvImport::read(write("a,t,id,b [m]\n1,0,7,2\n3,1,7,4\n5,0,8,6\n"), options).data;
    ASSERT_EQ(data.series.size(), 4u);
    EXPECT_EQ(data.series[0].y.name, QStringLiteral("7 b"));
    EXPECT_EQ(data.series[0].y.values, (std::vector<float>{2.0f, 4.0f}));
    EXPECT_EQ(data.series[1].y.name, QStringLiteral("7 a"));
    EXPECT_EQ(data.series[3].y.values, (std::vector<float>{5.0f}));
    EXPECT_EQ(data.series[3].x.values, (std::vector<float>{0.0f}));
    EXPECT_EQ(data.shape, Orv::Chart::SeriesShape::Bars);
}

TEST_F(CsvReaderTest, BadRoleOptionsAreUsageFaults)
{
    const QString path = write("t,a,id\n0,1,x\n");
    const auto fault = [&path](const char* x, const char* y, const char* group) {
        Orv::Chart::CsvOptions options;
        options.x = QLatin1String(x);
        options.y = QString::fromLatin1(y).split(QLatin1Char(','), Qt::SkipEmptyParts);
        options.group = QLatin1String(group);
        const Orv::Chart::IoError error = CsvImport::read(path, options).error;
        EXPECT_EQ(error.kind, Orv::Chart::IoError::BadRequest);
        return error.message;
    };
    EXPECT_TRUE(fault("nope", "", "").startsWith(QStringLiteral("x column \"nope\": ") + path + " has no such column"));
    EXPECT_TRUE(fault("", "a,t", "").startsWith(QStringLiteral("y column \"t\": that column is x")));
    EXPECT_TRUE(fault("a", "a", "").startsWith(QStringLiteral("y column \"a\": that column is x")));
    EXPECT_TRUE(fault("", "id", "id").startsWith(QStringLiteral("y column \"id\": that column is the group")));
    EXPECT_TRUE(fault("", "", "t").startsWith(QStringLiteral("group column \"t\": that column is x")));
}

namespace {

struct CellReading {
    const char* cell;
    float value; // NaN: the cell is a missing value
};

void PrintTo(const CellReading& reading, std::ostream* os)
{
    *os << '"' << reading.cell << '"';
}

class CsvCellTest : public CsvReaderTest, public ::testing::WithParamInterface<CellReading> {};

} // namespace

// Each cell stands in a column of numbers between two plain ones; a marker of no value leaves the column numeric.
TEST_P(CsvCellTest, ReadsTheValueOrNone)
{
    const CellReading& reading = GetParam();
    const DataSet data = read(QByteArray("x,v\n0,1\n1,\"") + reading.cell + "\"\n2,3\n");
    ASSERT_EQ(data.series.size(), 1u);
    const Orv::Chart::DataColumn& v = data.series[0].y;
    EXPECT_EQ(v.undefined[1], std::isnan(reading.value));
    if (!std::isnan(reading.value)) {
        EXPECT_FLOAT_EQ(v.values[1], reading.value);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Missing, CsvCellTest,
    ::testing::Values(CellReading{"NA", NAN}, CellReading{"n/a", NAN}, CellReading{"N/A", NAN},
                      CellReading{"NaN", NAN}, CellReading{"null", NAN}, CellReading{"None", NAN},
                      CellReading{"#N/A", NAN}, CellReading{"-", NAN}, CellReading{".", NAN},
                      CellReading{"?", NAN}, CellReading{" ", NAN}));

INSTANTIATE_TEST_SUITE_P(
    Decorated, CsvCellTest,
    ::testing::Values(CellReading{"100,000", 100000.0f}, CellReading{"-1,234,567.5", -1234567.5f},
                      CellReading{"$1,250.00", 1250.0f}, CellReading{"-$3.50", -3.5f}, CellReading{"$-3.50", -3.5f},
                      CellReading{"\xE2\x82\xAC 12", 12.0f}, CellReading{"\xC2\xA3" "7", 7.0f},
                      CellReading{"12.5%", 12.5f}, CellReading{"+4", 4.0f}, CellReading{"1e3", 1000.0f}));

// Commas that do not group digits by three, and signs in the wrong place, are text: the column is skipped.
TEST_F(CsvReaderTest, BadlyGroupedNumbersAreText)
{
    for (const char* cell : {"1,00", "12,3456", ",100", "1,,000", "5$", "%5", "1.000,5"}) {
        const DataSet data = read(QByteArray("x,v,w\n0,1,1\n1,\"") + cell + "\",2\n");
        ASSERT_EQ(data.series.size(), 1u) << cell;
        EXPECT_EQ(data.series[0].y.name, QStringLiteral("w")) << cell;
    }
}

// The layouts of R and spreadsheets: row names with and without a header cell, a separator at every line end.
TEST_F(CsvReaderTest, RowNamesAndTrailingSeparatorsAddNoSeries)
{
    const QByteArray layouts[] = {
        "\"\",\"a\",\"b\"\n\"r1\",1,2\n\"r2\",3,4\n",
        "\"a\",\"b\"\n\"r1\",1,2\n\"r2\",3,4\n",
        "name,a,b,\nr1,1,2,\nr2,3,4,\n",
        "name,a,b\nr1,1,2,\nr2,3,4,\n",
    };
    for (const QByteArray& text : layouts) {
        const DataSet data = read(text);
        ASSERT_EQ(data.series.size(), 2u) << text.toStdString();
        EXPECT_EQ(data.categories, (QStringList{"r1", "r2"})) << text.toStdString();
        EXPECT_EQ(data.series[1].y.values, (std::vector<float>{2.0f, 4.0f})) << text.toStdString();
    }
}

// Every guess yields to its option: separator, header, date order, aggregation, row-number x.
TEST_F(CsvReaderTest, OptionsOverrideEachGuess)
{
    Orv::Chart::CsvOptions options;
    options.separator = QStringLiteral(";");
    options.header = false;
    const DataSet semicolons = CsvImport::read(write("1;2\n2;3\n"), options).data;
    ASSERT_EQ(semicolons.series.size(), 1u);
    EXPECT_EQ(semicolons.series[0].x.name, QStringLiteral("column 1"));

    options = {};
    options.dateOrder = Orv::Chart::DateOrder::DayFirst;
    const DataSet dates = CsvImport::read(write("d,v\n1/2/2020,1\n3/2/2020,2\n"), options).data;
    ASSERT_TRUE(dates.timeX);
    EXPECT_EQ(dates.xTimes[1].microseconds - dates.xTimes[0].microseconds, 2LL * 86400 * 1000000);

    options = {};
    options.aggregate = Orv::Chart::CsvAggregate::Sum;
    const DataSet sums = CsvImport::read(write("k,v\na,1\nb,2\na,3\n"), options).data;
    EXPECT_EQ(sums.series[0].y.values, (std::vector<float>{4.0f, 2.0f}));
    options.aggregate = Orv::Chart::CsvAggregate::None;
    EXPECT_EQ(CsvImport::read(write("k,v\na,1\nb,2\na,3\n"), options).data.series[0].y.size(), 3u);

    options = {};
    options.rowNumberX = true;
    const DataSet rows = CsvImport::read(write("t,v\n5,1\n6,2\n"), options).data;
    ASSERT_EQ(rows.series.size(), 2u);
    EXPECT_EQ(rows.series[0].x.values, (std::vector<float>{1.0f, 2.0f}));
}

// Slash dates are month first until a first number above 12 shows day first; a mix leaves the odd ones out.
TEST_F(CsvReaderTest, SlashDatesTakeTheOrderTheColumnShows)
{
    const DataSet monthFirst = read("d,v\n1/2/2020,1\n1/13/2020,2\n");
    EXPECT_EQ(monthFirst.xTimes[1].microseconds - monthFirst.xTimes[0].microseconds, 11LL * 86400 * 1000000);
    const DataSet dayFirst = read("d,v\n1/2/2020,1\n13/2/2020,2\n");
    EXPECT_EQ(dayFirst.xTimes[1].microseconds - dayFirst.xTimes[0].microseconds, 12LL * 86400 * 1000000);
    const DataSet mixed = read("d,v\n1/13/2020,1\n13/1/2020,2\n1/2/2020,3\n");
    EXPECT_EQ(mixed.series[0].x.undefined, (std::vector<bool>{false, true, false}));
    EXPECT_TRUE(mixed.notes.join('\n').contains(QLatin1String("mix day-first and month-first")));
}

// A date that does not read leaves its row without x and says so once, naming the first.
TEST_F(CsvReaderTest, UnreadableDatesAreNotedNotFatal)
{
    const DataSet data = read("d,v\n2012-01-01,1\nsoon,2\n2012-01-03,3\nlater,4\n");
    EXPECT_EQ(data.series[0].x.undefined, (std::vector<bool>{false, true, false, true}));
    EXPECT_EQ(data.notes, QStringList{"column \"d\": 2 cell(s) are not dates and have no value (the first, \"soon\", "
                                      "on line 3)"});
}

// European exports: semicolons between fields, a decimal comma, points grouping digits. Never with comma fields.
TEST_F(CsvReaderTest, DecimalCommasAreGuessedWhereCommasDoNotSeparate)
{
    const DataSet european = read("Datum;Wert [kWh];Preis\n01.02.2020;1,5;\"1.234,50\"\n02.02.2020;-2,25;12\n");
    ASSERT_EQ(european.series.size(), 2u);
    EXPECT_TRUE(european.timeX);
    EXPECT_EQ(european.series[0].y.values, (std::vector<float>{1.5f, -2.25f}));
    EXPECT_EQ(european.series[1].y.values, (std::vector<float>{1234.5f, 12.0f}));
    EXPECT_TRUE(european.notes.join('\n').contains(QLatin1String("decimal comma")));

    // A decimal point anywhere settles it the other way: "1,234" groups digits.
    const DataSet points = read("a;b\n1;\"1,234\"\n2;3.5\n");
    EXPECT_EQ(points.series[0].y.values, (std::vector<float>{1234.0f, 3.5f}));

    Orv::Chart::CsvOptions options;
    options.decimalComma = false;
    const DataSet refused = CsvImport::read(write("a;b;c\n1;1,5;1\n2;2,5;2\n"), options).data;
    ASSERT_EQ(refused.series.size(), 1u);
    EXPECT_EQ(refused.series[0].y.name, QStringLiteral("c"));
}
