#pragma once
// Reads chart data from a CSV file.
//
// Fields are separated by commas, semicolons or tabs: whichever of them the
// header line holds most often outside quotes. A field in double quotes may
// hold separators, line breaks and doubled quotes. A UTF-8 byte-order mark,
// CRLF line ends, blanks around fields and blank lines are ignored.
//
// The first non-blank line is the header: it names the columns, and a unit in
// square brackets ("time [s]", "T [degC]") becomes the column's unit.
//
// Roles of the columns, each overridable (CsvOptions):
//   - x is the first column. Numeric x gives a continuous axis; dates and
//     times (see TimeText: ISO 8601, "Jan 1 2000", "2012-03", "1974Q1", or the
//     user's format) give a time axis; other text gives a discrete axis whose
//     categories are the distinct texts in order of first appearance.
//   - Every other column of numbers is a y column. Empty and "nan" cells are
//     undefined points.
//   - When x repeats, the first other text column whose values repeat (at most
//     `mostGroups` distinct ones) is the group column: one series per group
//     value, in order of first appearance, named after the value (one y
//     column) or "value column" (several), holding that group's rows.
//   - Every other column holding text is skipped with a note.
// Series are points (symbols only) where x within a series is neither
// ascending nor free of repeats; otherwise lines, or bars over categories.
//
// The file is read in blocks and streamed through the parser, so only the
// columns' values are held, never the text (text columns hold one code per
// row and their distinct values). A fault names the file and line; role
// options naming no column or clashing are faults of the request.

#include "DataSet.h"
#include "IoError.h"
#include "OrvChartIOExport.h"

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <optional>

namespace Orv::Chart {

struct CsvOptions {
    // How x writes dates and times; empty: the automatic forms.
    QString timeFormat;
    // Column names (without unit, or the whole header text); empty: automatic.
    QString x;
    QStringList y;
    QString group;
    std::optional<SeriesShape> shape;
};

class ORV_CHARTIO_EXPORT CsvImport {
public:
    // The most distinct values a text column may hold to be found the group column.
    static constexpr int mostGroups = 100;

    // What a read gave: the data and the notes for the user (`data.notes`), or
    // the fault that stopped it, with empty data.
    struct Result {
        DataSet data;
        IoError error;

        bool ok() const noexcept { return !error; }
    };

    static Result read(const QString& path, const CsvOptions& options = {});
    // Reads from the device's current position to its end, opening it for
    // reading first when it is closed; `source` names it in messages.
    static Result read(QIODevice& device, const QString& source, const CsvOptions& options = {});
};

} // namespace Orv::Chart
