#include "CsvReader.h"
#include "Failure.h"

#include "TestSupport.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>

using kelchart::CsvReader;
using kelchart::DataSet;
using kelchart::Failure;

namespace {

class CsvReaderTest : public ::testing::Test {
protected:
    QString write(const QByteArray& text)
    {
        const QString path = m_dir.filePath(QStringLiteral("data.csv"));
        writeText(path, text);
        return path;
    }

    DataSet read(const QByteArray& text) { return CsvReader::read(write(text)); }

    // The message of the Failure that reading throws; empty when it reads.
    QString failure(const QByteArray& text)
    {
        try {
            CsvReader::read(write(text));
        } catch (const Failure& failure) {
            return failure.message();
        }
        return QString();
    }

    QTemporaryDir m_dir;
};

} // namespace

TEST_F(CsvReaderTest, NumericXGivesOneSeriesPerColumnWithUnits)
{
    const DataSet data = read("time [s], T1 [degC],p\n0,20.5,101\n1,21,102\n");
    ASSERT_EQ(data.series.size(), 2u);
    EXPECT_FALSE(data.discreteX);
    const kelchart::DataSeries& t1 = data.series[0];
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

TEST_F(CsvReaderTest, TextXGivesCategoriesAtTheirIndices)
{
    const DataSet data = read("fruit,count\napple,3\n\"pear, green\",5\n\"say \"\"hi\"\"\",1\n");
    EXPECT_TRUE(data.discreteX);
    EXPECT_EQ(data.categories,
              (QStringList{QStringLiteral("apple"), QStringLiteral("pear, green"), QStringLiteral("say \"hi\"")}));
    EXPECT_EQ(data.series[0].x.values, (std::vector<float>{0.0f, 1.0f, 2.0f}));
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
    kelchart::CsvOptions options;
    options.timeFormat = QStringLiteral("%Y%m%d");
    const DataSet formatted = CsvReader::read(write("day,y\n20120314,1\n"), options);
    EXPECT_TRUE(formatted.timeX);
    EXPECT_EQ(formatted.xTimes[0].microseconds, 1331683200LL * 1000000);
}

TEST_F(CsvReaderTest, EmptyAndNanCellsAreUndefinedPoints)
{
    const DataSet data = read("x,y\n0,1\n1,\n,3\n3,NaN\r\n\n4,5\n");
    const kelchart::DataSeries& series = data.series[0];
    EXPECT_EQ(series.y.undefined, (std::vector<bool>{false, true, false, true, false}));
    EXPECT_EQ(series.x.undefined, (std::vector<bool>{false, false, true, false, false}));
    EXPECT_TRUE(std::isnan(series.y.values[3]));
    EXPECT_FALSE(data.discreteX);
}

TEST_F(CsvReaderTest, RowsWithoutXBeforeTheFirstTextBecomeEmptyCategories)
{
    const DataSet data = read("x,y\n,1\nred,2\n");
    EXPECT_TRUE(data.discreteX);
    EXPECT_EQ(data.categories, (QStringList{QString(), QStringLiteral("red")}));
    EXPECT_EQ(data.series[0].x.undefined, (std::vector<bool>{false, false}));
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
        {"x\n1\n", "data.csv:1: no numeric column"},
        {"x,y,z\n1,2,3\n4,5\n", "data.csv:3: expected 3 fields as in the header, found 2"},
        {"x,y\n1,2,3\n", "data.csv:2: expected 2 fields as in the header, found 3"},
        {"x,y\n1,abc\n", "data.csv:1: no numeric column: every column besides x holds text"},
        {"x,y\n1,2\n3,4\"5\"\n", "data.csv:3: misplaced quote"},
        {"x,y\n1,2\nred,3\n", "data.csv:3: x value \"red\" is not a number, though x is numeric from line 2 on"},
        {"x,y\n2012-01-01,2\n5,3\n",
         "data.csv:3: x value \"5\" is not a date or time, though x is dates and times from line 2 on"},
        {"x,\"y\n1,2\n", "data.csv:1: unterminated quoted field"},
        {"x;y\r\n1;2\r\n\"3\r\n", "data.csv:3: unterminated quoted field"},
        {"x,y,y\n1,2,3\n", "data.csv:1: two columns are named \"y\""},
        {"x,[m]\n1,2\n", "data.csv:1: column 2 of the header has no name"},
    };
    for (const Case& c : cases) {
        const QString message = failure(c.text);
        EXPECT_TRUE(message.contains(QLatin1String(c.message)))
            << "for " << c.text.toStdString() << " got: " << message.toStdString();
    }
}
