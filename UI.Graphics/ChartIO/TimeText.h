#pragma once
// Dates and times as they appear in CSV cells.
//
// Without a format, only texts that are clearly dates are times:
//   "2012-01-01", "2012-01-01T14:05", "2012-01-01 14:05:30.25", each with "Z"
//   or an offset ("+05:45", "-0300", "+05") for a UTC instant;
//   "2012-03" (the 1st of the month);
//   "Jan 1 2000", "Jan 1, 2000", "January 1 2000", "Jan-1-1995", "1 Jan 2000",
//   "1-Jan-2000", each optionally followed by a time ("Jan 1 2000 14:05");
//   "Jan 2000" (the 1st of the month);
//   "1974Q1", "1974 Q1", "1974-Q3" (the first day of the quarter).
// Month names are English, in full or abbreviated to three letters, in any
// case. Plain numbers ("1958", "20120101") and slash dates, which read
// differently in the US and in Europe, are not times: a format settles those.
// "24:00" is the next day's midnight; fractions of seconds are rounded to
// microseconds.

#include "OrvChartIOExport.h"
#include <QString>
#include <QStringList>

#include <cstdint>
#include <optional>
#include <string>

namespace Orv::Chart {

// A time read from a text: microseconds since 1970-01-01 00:00, either a UTC instant (the text had "Z" or an
// offset such as "+05:30") or a wall-clock time to be placed in the chart's time zone by the caller.
struct ParsedTime {
    std::int64_t microseconds = 0;
    bool utc = false;
};

class ORV_CHARTIO_EXPORT TimeText {
public:
    // `format` empty: the automatic forms above; otherwise a strftime-like format ("%d.%m.%Y %H:%M"),
    // and only texts that match it whole are times. "%z" in the format makes the times UTC instants.
    explicit TimeText(const QString& format = QString());

    // The time of a text (blanks around it ignored), or nothing when it is not one of the accepted forms.
    std::optional<ParsedTime> parse(const QString& text) const;

    // Whether a column of texts is a time column: every cell that is neither empty nor "nan" parses,
    // there is at least one such cell, and not all of them are plain numbers ("1958" and "2012" are
    // years on a continuous axis, even when a format such as "%Y" would read them).
    bool isTimeColumn(const QStringList& cells) const;

private:
    std::string m_format;
};

} // namespace Orv::Chart
