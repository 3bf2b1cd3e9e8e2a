#pragma once
// Reads chart data from a CSV file.
//
// The first non-blank line is the header: it names the columns, and a unit in
// square brackets ("time [s]", "T [degC]") becomes the column's unit. The first
// column is x: numeric x gives a continuous axis; dates and times (see
// TimeText: ISO 8601, "Jan 1 2000", "2012-03", "1974Q1", or the user's format)
// give a time axis; other text gives a discrete axis whose categories are the
// texts in row order. Every other column is one series of numbers. Empty and
// "nan" cells are undefined points.
//
// Fields are separated by commas; a field in double quotes may hold commas and
// doubled quotes. Blanks around fields and blank lines are ignored.
//
// The file is read line by line, so only the columns' values are held, never
// the text. Any fault throws a Failure naming the file and line.

#include "DataSet.h"

#include <QString>

namespace kelchart {

class CsvReader {
public:
    // `timeFormat`: how x writes dates and times; empty: the automatic forms.
    static DataSet read(const QString& path, const QString& timeFormat = QString());
};

} // namespace kelchart
