#pragma once
// Dates and times as they appear in CSV cells.
//
// Without a format, only texts that are clearly dates are times:
//   "2012-01-01", "2012-01-01T14:05", "2012-01-01 14:05:30.25", each with "Z"
//   or an offset ("+05:45", "-0300", "+05") for a UTC instant;
//   "2012-03" (the 1st of the month);
//   "2013/08/29", "2013/8/29 12:06" (year, month, day);
//   "Jan 1 2000", "Jan 1, 2000", "January 1 2000", "Jan-1-1995", "1 Jan 2000",
//   "1-Jan-2000", "19-Sep-03", "19 Sep 03";
//   "7/29/2016", "01/31/85": month first, or day first for a TimeText built
//   with DateOrder::DayFirst; a reading that is no calendar day is refused;
//   "31.01.1985", "31.1.1985": always day first, as written in Europe;
//   "Jan 2000" (the 1st of the month);
//   "1974Q1", "1974 Q1", "1974-Q3" (the first day of the quarter).
// Every form with a day may be followed by a time ("7/29/2016 14:05",
// "Jan 1 2000 2:05 PM"). Month names are English, in full or abbreviated to
// three letters, in any case. A two-digit year is 1969-1999 from 69 to 99 and
// 2000-2068 from 00 to 68, as "%y" reads it in a format; it is read only after
// a slash or after a month name that follows the day, where it cannot be a day
// ("Jan 1 00" is not a time). Plain numbers ("1958", "20120101") are not times.
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

// How the automatic forms read a date such as "1/2/2016": January 2nd month first, February 1st day first.
enum class DateOrder { MonthFirst, DayFirst };

// Which orders read a text of the form number/number/year (perhaps with a time) as a valid date.
enum class SlashReading { NotSlashDate, Both, MonthFirstOnly, DayFirstOnly };

class ORV_CHARTIO_EXPORT TimeText {
public:
    // Also named here, next to slashReading() that gives it.
    using SlashReading = ::Orv::Chart::SlashReading;

    // `format` empty: the automatic forms above, with slash dates read in `order`; otherwise a
    // strftime-like format ("%d.%m.%Y %H:%M"), and only texts that match it whole are times. "%z" at
    // the end of the format ("+0530", "-03:00") makes the times UTC instants; elsewhere it matches
    // nothing. Composite fields (%c, %x, %X, %D, %T, %R, %r) read as the C locale writes them.
    explicit TimeText(const QString& format = QString(), DateOrder order = DateOrder::MonthFirst);

    // The time of a text (blanks around it ignored), or nothing when it is not one of the accepted forms.
    std::optional<ParsedTime> parse(const QString& text) const;

    // Whether a column of texts is a time column: every cell that is neither empty nor "nan" parses,
    // there is at least one such cell, and not all of them are plain numbers ("1958" and "2012" are
    // years on a continuous axis, even when a format such as "%Y" would read them).
    bool isTimeColumn(const QStringList& cells) const;

    // For "1/2/2016", "13/1/16 14:05" and the like: whether month first, day first or both read it as a
    // time, so that a caller can settle a column's order from all its cells. NotSlashDate for every
    // other text, year-first "2013/08/29" included, and for one that neither order reads.
    static SlashReading slashReading(const QString& text);

private:
    std::string m_format;
    DateOrder m_order;
};

} // namespace Orv::Chart
