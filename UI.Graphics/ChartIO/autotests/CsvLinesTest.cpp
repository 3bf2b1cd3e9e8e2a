// Rows read live must be the rows a file read would give: the same doubles,
// bit for bit, whether the lines come one at a time or in arbitrary pieces.
#include "CsvLines.h"

#include "ChartSetUp.h"
#include "DataBinding.h"

#include "KelChart2D.h"
#include "KelChartAxisTime.h"

#include <QBuffer>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <ostream>

using Orv::Chart::CsvImport;
using Orv::Chart::CsvLines;
using Orv::Chart::CsvOptions;
using Orv::Chart::DataSet;

namespace {

constexpr int headLines = 20;
constexpr double missing = INFINITY;

// Each series' x and y as bit patterns, so that equal means bit for bit.
struct Rows {
    std::vector<std::vector<std::uint64_t>> x;
    std::vector<std::vector<std::uint64_t>> y;

    void add(const std::vector<CsvLines::Items>& items)
    {
        x.resize(items.size());
        y.resize(items.size());
        for (std::size_t s = 0; s < items.size(); ++s) {
            for (std::size_t i = 0; i < items[s].x.size(); ++i) {
                x[s].push_back(bitsOf(items[s].x[i]));
                y[s].push_back(bitsOf(items[s].y[i]));
            }
        }
    }
    static std::uint64_t bitsOf(double value)
    {
        std::uint64_t bits = 0;
        std::memcpy(&bits, &value, sizeof bits);
        return bits;
    }
};

// The chart set up for the data as for a file, its x axis in `zone` when it shows times.
struct Chart {
    KelModifiedGroup group;
    KelChart2D chart{group};
    Orv::Chart::AxisPairs pairs;

    Chart(const DataSet& data, const QString& zone)
    {
        Orv::Chart::setUpChartForData(chart, data, QStringLiteral("live"));
        if (auto* time = dynamic_cast<KelChartAxisTime*>(chart.axisX.first()))
            time->timeZone.set(zone);
        pairs = Orv::Chart::axisPairsOf(chart);
    }
};

// What the variables got from the whole text read as a file: +infinity where undefined.
Rows readAsFile(QByteArray text, const QString& zone, const CsvOptions& options)
{
    QBuffer buffer(&text);
    CsvImport::Result read = CsvImport::read(buffer, QStringLiteral("file"), options);
    EXPECT_TRUE(read.ok()) << read.error.message.toStdString();
    Chart chart(read.data, zone);
    const DataSet data = read.data;
    Orv::Chart::bindData(chart.chart.variables, chart.pairs, std::move(read.data));
    std::vector<CsvLines::Items> items;
    for (const Orv::Chart::DataSeries& series : data.series) {
        const KelVariableIter::Delivered bound = chart.chart.variables[series.y.name]->variableiter.delivered();
        CsvLines::Items& one = items.emplace_back();
        for (std::size_t i = 0; i < bound.size; ++i) {
            one.x.push_back((*bound.xUndefined)[i] ? missing : static_cast<double>(bound.x[i]));
            one.y.push_back((*bound.yUndefined)[i] ? missing : static_cast<double>(bound.y[i]));
        }
    }
    Rows rows;
    rows.add(items);
    return rows;
}

struct LiveCase {
    const char* name;
    QByteArray text;
    QString zone = QStringLiteral("UTC");
    CsvOptions options = {};
};

void PrintTo(const LiveCase& c, std::ostream* out)
{
    *out << c.name;
}

class LiveRows : public ::testing::TestWithParam<LiveCase> {
protected:
    // The first `headLines` lines start the table, the rest come in pieces of `piece` bytes (0: line by line).
    Rows readLive(const QByteArray& text, int piece)
    {
        int headEnd = 0;
        for (int n = 0; n < headLines; ++n)
            headEnd = text.indexOf('\n', headEnd) + 1;
        lines = std::make_unique<CsvLines>(QStringLiteral("stream"), GetParam().options);
        CsvImport::Result started = lines->start(text.left(headEnd));
        EXPECT_TRUE(started.ok()) << started.error.message.toStdString();
        Chart chart(started.data, GetParam().zone);
        Rows rows;
        rows.add(lines->bind(chart.chart.variables, chart.pairs).head);
        for (const QByteArray& part : pieces(text.mid(headEnd), piece))
            rows.add(lines->read(part));
        rows.add(lines->finish());
        return rows;
    }

    static QList<QByteArray> pieces(const QByteArray& text, int size)
    {
        QList<QByteArray> parts;
        for (int at = 0; at < text.size();) {
            const int end = size > 0 ? at + size : text.indexOf('\n', at) + 1;
            parts << text.mid(at, end > at ? end - at : -1);
            at = end > at ? end : text.size();
        }
        return parts;
    }

    std::unique_ptr<CsvLines> lines;
};

} // namespace

// Line by line or in pieces cut anywhere, the live rows are those of the whole file.
TEST_P(LiveRows, GiveTheRowsOfTheWholeFile)
{
    const Rows file = readAsFile(GetParam().text, GetParam().zone, GetParam().options);
    for (int piece : {0, 1, 7, 4096}) {
        SCOPED_TRACE(testing::Message() << piece << "-byte pieces");
        const Rows live = readLive(GetParam().text, piece);
        EXPECT_EQ(live.x, file.x);
        EXPECT_EQ(live.y, file.y);
        EXPECT_EQ(lines->linesSkipped(), 0u);
        EXPECT_TRUE(lines->takeNotes().isEmpty());
    }
}

namespace {

// `count` rows after `header`, each written by `row` from its index.
QByteArray table(const char* header, int count, const std::function<QString(int)>& row)
{
    QByteArray text = header;
    for (int i = 0; i < count; ++i)
        text += row(i).toUtf8() + '\n';
    return text;
}

QString number(double value)
{
    return QString::number(value, 'g', 9);
}

LiveCase numbers()
{
    return {"numbers", table("t,a,b\n", 60, [](int i) {
                return QStringLiteral("%1,%2,%3").arg(number(i * 0.1), number(std::sin(i * 0.3)), number(i * i));
            })};
}

LiveCase unitsInTheHeader()
{
    return {"units", table("time [s]; T [degC] ;p [hPa]\r\n", 50, [](int i) {
                return QStringLiteral("%1;%2;%3\r").arg(i).arg(number(20.0 + i * 0.01)).arg(1013 - i);
            })};
}

// Across the night the clocks in Berlin went forward, with one row written as a UTC instant.
LiveCase datesInAZone()
{
    LiveCase c{"dates", table("when,load [MW]\n", 48, [](int i) {
                   const QString when = i == 30 ? QStringLiteral("2024-03-31T09:00:00Z")
                                                : QStringLiteral("2024-03-31 %1:%2")
                                                      .arg(i / 2, 2, 10, QLatin1Char('0'))
                                                      .arg(i % 2 * 30, 2, 10, QLatin1Char('0'));
                   return QStringLiteral("%1,%2").arg(when).arg(400 + i);
               })};
    c.zone = QStringLiteral("Europe/Berlin");
    return c;
}

LiveCase missingValues()
{
    return {"missing", table("x,y,z\n", 40, [](int i) {
                const QString x = i == 25 ? QStringLiteral("NA") : QString::number(i);
                const QString y = i % 7 == 3 ? QString() : number(i * 0.5);
                const QString z = i % 5 == 1 ? QStringLiteral("-") : number(-i);
                return QStringLiteral("%1,%2,%3").arg(x, y, z);
            })};
}

LiveCase decimalCommas()
{
    return {"decimalCommas", table("Zeit;Wert;Anteil\n", 40, [](int i) {
                return QStringLiteral("%1;%2,%3;\"1.%4,5\"").arg(i).arg(i / 4).arg(i % 4 * 25).arg(i + 100);
            })};
}

LiveCase dayFirstDates()
{
    return {"dayFirst",
            table("date,v\n", 40, [](int i) { return QStringLiteral("%1/01/2023,%2").arg(i % 28 + 1).arg(i); })};
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Tables, LiveRows,
                         ::testing::Values(numbers(), unitsInTheHeader(), datesInAZone(), missingValues(),
                                           decimalCommas(), dayFirstDates()),
                         [](const auto& info) { return std::string(info.param.name); });

// A bad line costs itself only, and each kind of fault is told once, however often it comes.
TEST(LiveLines, SkipBadLinesWithOneNotePerKindOfFault)
{
    QByteArray text = table("t,a,b\n", 40, [](int i) { return QStringLiteral("%1,%2,%3").arg(i).arg(i * 2).arg(-i); });
    const QByteArray bad = "41,1\n42,x,3\n43,\"4,5\n44,5,?y\n45,1,2,3,4\n";
    text.insert(text.indexOf("\n30,") + 1, bad + bad);
    const int headEnd = text.indexOf("\n10,") + 1;
    CsvLines lines(QStringLiteral("pipe"));
    ASSERT_TRUE(lines.start(text.left(headEnd)).ok());
    const std::vector<CsvLines::Items> rows = lines.read(text.mid(headEnd));
    ASSERT_EQ(rows.size(), 2u);
    std::vector<double> t;
    std::vector<double> b;
    for (int i = 10; i < 40; ++i) {
        t.push_back(i);
        b.push_back(-i);
    }
    EXPECT_EQ(rows[1].x, t);
    EXPECT_EQ(rows[1].y, b);
    EXPECT_EQ(lines.linesSkipped(), 10u);
    const QStringList notes = lines.takeNotes();
    ASSERT_EQ(notes.size(), 4) << notes.join('\n').toStdString();
    EXPECT_TRUE(notes[0].startsWith(QStringLiteral("pipe:32: expected 3 fields as in the header, found 2")))
        << notes[0].toStdString();
    EXPECT_TRUE(notes[1].startsWith(QStringLiteral("pipe:33: column \"a\" holds \"x\" where a number belongs")));
    EXPECT_TRUE(notes[2].contains(QStringLiteral("quote")));
    EXPECT_TRUE(notes[3].contains(QStringLiteral("column \"b\" holds \"?y\"")));
    EXPECT_TRUE(lines.takeNotes().isEmpty()) << "notes are handed out once";
}

// Live rows must not change what the head settled: the axis of categories or the groups would change.
TEST(LiveLines, RefuseTextXAndGroups)
{
    CsvLines categories(QStringLiteral("stdin"));
    const CsvImport::Result text = categories.start("city,rain [mm]\nOslo,3\nBergen,9\n");
    EXPECT_FALSE(text.ok());
    EXPECT_TRUE(text.error.message.contains(QStringLiteral("categories"))) << text.error.message.toStdString();
    EXPECT_TRUE(text.data.series.empty());

    CsvLines groups(QStringLiteral("stdin"));
    const CsvImport::Result grouped = groups.start("t,sensor,v\n1,a,3\n1,b,4\n2,a,5\n2,b,6\n");
    EXPECT_FALSE(grouped.ok());
    EXPECT_TRUE(grouped.error.message.contains(QStringLiteral("groups"))) << grouped.error.message.toStdString();
}
