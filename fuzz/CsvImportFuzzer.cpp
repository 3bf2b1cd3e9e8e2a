// CSV import on arbitrary bytes. Every input ends in data or in an error
// result with a message naming the source, never in anything else. Data that
// come back are whole: each series has one undefined flag per value and as
// many x as y values, and a time or discrete x has what it needs. The first
// byte chooses the options, so role, dialect and date options and time formats
// are fuzzed too.

#include "FuzzInput.h"
#include "FuzzTargets.h"
#include "QuietLogger.h"

#include "CsvImport.h"

#include <QBuffer>

namespace {

namespace Chart = Orv::Chart;

Chart::CsvOptions optionsOf(std::uint8_t choice)
{
    Chart::CsvOptions options;
    if (choice & 1)
        options.timeFormat = QStringLiteral("%d.%m.%Y %H:%M");
    if (choice & 2)
        options.x = QStringLiteral("b");
    if (choice & 4)
        options.group = QStringLiteral("c");
    if (choice & 8)
        options.y = QStringList{QStringLiteral("a"), QStringLiteral("d")};
    if (choice & 16)
        options.shape = Chart::SeriesShape::Points;
    if (choice & 32)
        options.dateOrder = Chart::DateOrder::DayFirst;
    if (choice & 64) {
        options.aggregate = Chart::CsvAggregate::Sum;
        options.rowNumberX = true;
    }
    if (choice & 128) {
        options.header = false;
        options.separator = QStringLiteral(";");
    }
    return options;
}

void checkColumn(const Chart::DataColumn& column)
{
    FUZZ_CHECK(column.values.size() == column.undefined.size());
}

void checkData(const Chart::DataSet& data)
{
    FUZZ_CHECK(!data.series.empty());
    FUZZ_CHECK(!(data.timeX && data.discreteX));
    for (const Chart::DataSeries& series : data.series) {
        checkColumn(series.x);
        checkColumn(series.y);
        FUZZ_CHECK(series.x.size() == series.y.size());
        for (std::size_t row : series.rows)
            FUZZ_CHECK(!data.timeX || row < data.xTimes.size());
    }
}

} // namespace

int fuzzCsvImport(const std::uint8_t* data, std::size_t size)
{
    const QuietLogger quiet;
    const std::uint8_t choice = size > 0 ? data[0] : 0;
    QBuffer device;
    device.setData(reinterpret_cast<const char*>(data) + (size > 0 ? 1 : 0), static_cast<int>(size > 0 ? size - 1 : 0));
    const Chart::CsvImport::Result result = Chart::CsvImport::read(device, QStringLiteral("fuzz.csv"), optionsOf(choice));
    if (result.ok())
        checkData(result.data);
    else
        FUZZ_CHECK(result.error.message.startsWith(QStringLiteral("fuzz.csv")) ||
                   result.error.kind == Chart::IoError::BadRequest);
    return 0;
}

#ifndef ORV_FUZZ_REPLAY
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return fuzzCsvImport(data, size);
}
#endif
