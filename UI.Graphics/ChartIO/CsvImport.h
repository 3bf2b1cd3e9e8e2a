#pragma once
// Reads chart data from a CSV file, guessing what a user would see in it;
// every guess that drops or changes data leaves a note, and every guess can
// be overridden (CsvOptions).
//
// The table:
//   - Fields are separated by commas, semicolons, tabs, bars or runs of
//     blanks: the one that splits the first lines into the same number of
//     fields. A field in double quotes may hold separators, line breaks and
//     doubled quotes. A UTF-8 byte-order mark, CRLF line ends, blanks around
//     fields and blank lines are ignored, as are lines starting with '#'
//     above the table.
//   - The first line names the columns, unless it holds numbers and dates
//     only: then the columns are "column 1", "column 2", ... A unit in square
//     brackets ("time [s]", "T [degC]") becomes the column's unit.
//   - Row names as R writes them (an empty first name, or rows one field
//     longer than the header) become a column "row"; a separator at the end
//     of every line adds no column.
// Cells:
//   - Missing values: empty, NA, N/A, NaN, null, None, #N/A, -, --, ., ?.
//   - Numbers may have grouped digits ("100,000"), a currency sign ("$5",
//     "-€3.50") or a percent sign ("12%": the column's unit becomes "%").
//     Where fields are not separated by commas and the first lines write
//     decimal commas ("3,5") but no decimal points, a comma is the decimal
//     mark and points group digits ("1.234,5").
//   - Dates and times are those TimeText reads; slash dates are month first
//     unless a first number above 12 shows that the column is day first.
//   - A column is numbers, dates or text as its first value says; a number
//     column that meets text becomes text, a date that does not read leaves
//     its row without a value (with a note).
// Roles:
//   - x is the first date column wherever it stands, or one made of columns
//     named year, month and day (day_of_month, date_of_month); otherwise the
//     first column: text gives categories, numbers in order (or the x of an
//     x/y pair) give a continuous axis, and numbers in no order are a series
//     of their own, drawn with the rest against the row number.
//   - Every other column of numbers is a y column; columns without any value,
//     columns of text and further date columns are skipped with a note.
//   - When x repeats, the first other text column whose values repeat (at most
//     `mostGroups` distinct ones) is the group column: one series per group
//     value, in order of first appearance, named after the value (one y
//     column) or "value column" (several), holding that group's rows.
//   - Categories that still repeat within a series are aggregated: one bar
//     per category with the mean of its rows (or their sum, or no
//     aggregation, by option).
// Series are points (symbols only) where x within a series is neither
// ascending nor free of repeats; otherwise lines, or bars over categories.
//
// The file is read in blocks and streamed through the parser, so only the
// columns' values are held, never the text (text columns hold one code per
// row and their distinct values). A fault names the file, the line and what a
// user can fix; role options naming no column or clashing are faults of the
// request.

#include "DataSet.h"
#include "IoError.h"
#include "OrvChartIOExport.h"

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <optional>

namespace Orv::Chart {

// How rows of one category are made into one bar.
enum class CsvAggregate { Mean, Sum, None };

struct CsvOptions {
    // The field separator, one character ("\\t" for a tab), or " " for runs of blanks; empty: guessed.
    QString separator;
    // Whether numbers write a decimal comma ("3,5"), points grouping digits ("1.234,5"); unset: guessed,
    // never where commas separate fields.
    std::optional<bool> decimalComma;
    // Whether the first line names the columns; unset: guessed.
    std::optional<bool> header;
    // How slash dates ("3/4/2020") are read; unset: month first unless the data show day first.
    std::optional<DateOrder> dateOrder;
    std::optional<CsvAggregate> aggregate;
    // x is the row number 1, 2, 3, ...; every column is a series.
    bool rowNumberX = false;
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
