#include "ChartPainter.h"
#include "ChartSetUp.h"
#include "CsvImport.h"
#include "DataBinding.h"
#include "ElementClasses.h"
#include "Plot.h"

#include "KelChart2D.h"

#include "QtPrinters.h"
#include "TextBoxes.h"

#include <QDateTime>

#include <gtest/gtest.h>

#include <cmath>

using namespace Orv::Chart;

namespace {

enum class XKind { Numbers, Times, Categories };

struct Shape {
    const char* file;
    XKind x;
    const char* xName;
    QStringList series; // the first series' names, in order
    int seriesCount;
    SeriesShape shape;
    const char* note; // part of a note the read must give; empty: no note
};

void PrintTo(const Shape& shape, std::ostream* os)
{
    *os << shape.file;
}

DataSet readShape(const char* file)
{
    const CsvImport::Result read = CsvImport::read(QStringLiteral(CSV_SHAPES_DATA "/") + QLatin1String(file));
    EXPECT_TRUE(read.ok()) << read.error.message.toStdString();
    return read.data;
}

// The texts of the file's chart, made as the viewer makes it and painted at that size.
QList<OrvTest::DrawnText> paintedTexts(const char* file, QSize size)
{
    KelModifiedGroup group;
    KelChart2D chart(group);
    DataSet data = readShape(file);
    setUpChartForData(chart, data, QString::fromLatin1(file));
    EXPECT_TRUE(bindData(chart.variables, axisPairsOf(chart), std::move(data)).isEmpty());
    const Plot plot(chart, axisPairsOf(chart), {size, 0, {}});
    const ChartPainter painter(plot, size);
    return OrvTest::drawnTexts(size, [&](QPainter& p) { painter.paint(p); });
}

std::int64_t microsecondsOf(int year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC).toMSecsSinceEpoch() * 1000;
}

class CsvShapesTest : public ::testing::TestWithParam<Shape> {};

} // namespace

TEST_P(CsvShapesTest, ReadsWithNoOption)
{
    const Shape& shape = GetParam();
    const DataSet data = readShape(shape.file);
    ASSERT_EQ(static_cast<int>(data.series.size()), shape.seriesCount);
    EXPECT_EQ(data.timeX, shape.x == XKind::Times);
    EXPECT_EQ(data.discreteX, shape.x == XKind::Categories);
    EXPECT_EQ(data.series.front().x.name, QLatin1String(shape.xName));
    for (int i = 0; i < shape.series.size(); ++i)
        EXPECT_EQ(data.series[static_cast<std::size_t>(i)].y.name, shape.series[i]);
    EXPECT_EQ(data.shape, shape.shape);
    if (*shape.note)
        EXPECT_TRUE(data.notes.join('\n').contains(QLatin1String(shape.note))) << data.notes.join('\n').toStdString();
    else
        EXPECT_TRUE(data.notes.isEmpty()) << data.notes.join('\n').toStdString();
}

// Painted at two sizes, no text covers another or leaves the picture.
TEST_P(CsvShapesTest, PaintsReadableText)
{
    for (const QSize size : {QSize(800, 500), QSize(480, 320)}) {
        const QList<OrvTest::DrawnText> texts = paintedTexts(GetParam().file, size);
        EXPECT_FALSE(texts.isEmpty());
        EXPECT_EQ(OrvTest::overlappingTexts(texts), QStringList()) << size.width() << "x" << size.height();
        EXPECT_EQ(OrvTest::textsOutside(texts, size), QStringList()) << size.width() << "x" << size.height();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Files, CsvShapesTest,
    ::testing::Values(
        Shape{"r-write-csv.csv", XKind::Numbers, "row", {"Ozone", "Solar.R", "Wind"}, 6, SeriesShape::Lines, ""},
        Shape{"r-write-table.txt", XKind::Categories, "row", {"mpg", "cyl", "disp"}, 3, SeriesShape::Bars,
              "first is taken as row names"},
        Shape{"spreadsheet-export.csv", XKind::Times, "Month", {"Revenue", "Units", "Margin", "Returns"}, 4,
              SeriesShape::Lines, "the unit is %"},
        Shape{"commented.csv", XKind::Numbers, "t", {"T", "p"}, 2, SeriesShape::Lines, "2 comment line(s)"},
        Shape{"blank-separated.dat", XKind::Numbers, "column 1", {"column 2", "column 3"}, 2, SeriesShape::Lines,
              "holds data, not names"},
        Shape{"us-dates-newest-first.csv", XKind::Times, "Date", {"Open", "High", "Low", "Close", "Volume"}, 5,
              SeriesShape::Lines, ""},
        Shape{"day-first.csv", XKind::Times, "date", {"rainfall"}, 1, SeriesShape::Lines, "read day first"},
        Shape{"two-digit-years.csv", XKind::Times, "Date", {"Close"}, 1, SeriesShape::Lines, ""},
        Shape{"lab-log.csv", XKind::Times, "logged", {"reading"}, 1, SeriesShape::Lines, ""},
        Shape{"split-date.csv", XKind::Times, "date", {"day_of_week", "births"}, 2, SeriesShape::Lines,
              "make the dates of x"},
        Shape{"long-symbols.csv", XKind::Times, "date", {"ALFA", "BRVO", "CHRL", "DLTA", "ECHO"}, 5,
              SeriesShape::Lines, ""},
        Shape{"unordered-first.csv", XKind::Numbers, "row", {"height", "weight", "age"}, 3, SeriesShape::Lines,
              "in no order"},
        Shape{"repeated-categories.csv", XKind::Categories, "region", {"sales"}, 1, SeriesShape::Bars,
              "the mean of its category's rows"},
        Shape{"sparse-columns.csv", XKind::Numbers, "day", {"early", "late", "middle"}, 3, SeriesShape::Lines,
              "column \"empty\" has no values"},
        Shape{"fourteen-series.csv", XKind::Numbers, "x", {"s01", "s02"}, 14, SeriesShape::Lines, ""},
        Shape{"large-values.csv", XKind::Numbers, "year",
              {"Population of the metropolitan region in inhabitants"}, 1, SeriesShape::Lines, ""}),
    [](const ::testing::TestParamInfo<Shape>& info) {
        std::string name = info.param.file;
        for (char& c : name)
            c = std::isalnum(static_cast<unsigned char>(c)) ? c : '_';
        return name;
    });

// The values themselves, where a guess decides them: dates in either order, two-digit years, split dates,
// decorated numbers, missing markers, and the means of repeated categories.
TEST(CsvShapesValues, GuessesGiveTheRightValues)
{
    const DataSet us = readShape("us-dates-newest-first.csv");
    EXPECT_EQ(us.xTimes.front().microseconds, microsecondsOf(2016, 7, 29));
    const DataSet dayFirst = readShape("day-first.csv");
    EXPECT_EQ(dayFirst.xTimes[1].microseconds, microsecondsOf(2020, 1, 2));
    EXPECT_EQ(readShape("two-digit-years.csv").xTimes.front().microseconds, microsecondsOf(2003, 9, 19));
    EXPECT_EQ(readShape("lab-log.csv").xTimes.front().microseconds, microsecondsOf(2013, 8, 29, 12, 6, 1));
    EXPECT_EQ(readShape("split-date.csv").xTimes[31].microseconds, microsecondsOf(1994, 2, 1));

    const DataSet sheet = readShape("spreadsheet-export.csv");
    EXPECT_EQ(sheet.series[0].y.values.front(), 120000.0f);
    EXPECT_EQ(sheet.series[1].y.values[1], 19234.0f);
    EXPECT_EQ(sheet.series[2].y.unit, QStringLiteral("%"));
    EXPECT_FLOAT_EQ(sheet.series[2].y.values.front(), 12.5f);
    EXPECT_EQ(sheet.series[3].y.undefined, (std::vector<bool>{false, false, true, false, false, true, false, false}));

    const DataSet regions = readShape("repeated-categories.csv");
    EXPECT_EQ(regions.series[0].x.values, (std::vector<float>{0, 1, 2, 3}));
}

TEST(CsvShapesChart, TheAxisFactorShowsEvenWhenTheTitleIsElided)
{
    QStringList all;
    for (const OrvTest::DrawnText& text : paintedTexts("large-values.csv", QSize(400, 300)))
        all << text.text;
    EXPECT_TRUE(all.join('|').contains(QChar(u'\u00d7'))) << all.join('|').toStdString();
}
