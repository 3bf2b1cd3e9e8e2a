#pragma once
// Rows of a table that arrive a line at a time (standard input, a named pipe,
// a socket), read by the rules of CSV files (see CsvImport.h).
//
// The first lines, the head (a header and a first block of rows), are read as
// CsvImport reads a file: they settle the separator, the decimal mark, the
// columns with their kinds and units, and which column is x and which are
// series. Their data set sets a chart up as for a file (setUpChartForData),
// and `bind` hands it to the variables. Every later line is read as a row of
// that table, without guessing again: each series gets its x and y as the
// numbers the variables got for the head (float values, times as seconds in
// the x axis's zone since the day of the first time), +infinity where a value
// is missing. A line that does not fit (too few or too many fields, text
// where a number or date belongs) is skipped, with one note per kind of
// fault and column, not one per line: a stream may never end.
//
// Not live: text x (categories, which every new label would reorder), x made
// of year, month and day columns, and rows split into groups by a column;
// `start` refuses such a head. A quoted field may hold separators but no line
// break: each row is one line.
//
// Not thread safe: call from one thread at a time.

#include "CsvImport.h"
#include "DataSet.h"
#include "ElementClasses.h"
#include "OrvChartIOExport.h"

#include "KelChartVariableList.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <vector>

namespace Orv::Chart {

class ORV_CHARTIO_EXPORT CsvLines {
public:
    // The rows of one series.
    struct Items {
        std::vector<double> x;
        std::vector<double> y;
    };
    struct Bound {
        // The head's rows, as the variables got them.
        std::vector<Items> head;
        // The names of the series that found no variable.
        QStringList unbound;
    };

    // `source` names the stream in notes ("standard input").
    explicit CsvLines(const QString& source, const CsvOptions& options = {});
    ~CsvLines();
    CsvLines(const CsvLines&) = delete;
    CsvLines& operator=(const CsvLines&) = delete;

    // Reads the head's whole lines as CsvImport reads a file; text after its
    // last line break waits for the next `read`. The data set's series are
    // those that later calls give items for, in its order.
    CsvImport::Result start(const QByteArray& head);
    // Hands the head's data to the variables as bindData does, and places
    // later times as it placed the head's. Until then times are placed in UTC.
    Bound bind(KelChartVariableList& variables, const AxisPairs& pairs);
    // The rows of the lines that `text` completes, one Items per series.
    std::vector<Items> read(const QByteArray& text);
    // At the end of the stream: the row of a last line without a line break.
    std::vector<Items> finish();

    // Notes on lines skipped since the last call.
    QStringList takeNotes();
    std::uint64_t rowsRead() const;
    std::uint64_t linesSkipped() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace Orv::Chart
