#pragma once
// The ticks of a time axis: calendar steps on the wall clock of a time zone, with concise labels.

#include "OrvCppMathExport.h"
#include "TimeZone.h"

#include <cstdint>
#include <string>
#include <vector>

namespace Orv::Math {

// Ticks for a time range [start, end], in seconds since 1970-01-01 00:00:00 UTC, at round
// calendar steps of a time zone's wall clock, ascending, with their labels.
//
// The step is one of 1, 2, 5 × 10^k µs (1 µs .. 500 ms); 1, 2, 5, 10, 15, 30 s; 1, 2, 5, 10, 15,
// 30 min; 1, 2, 3, 6, 12 h; 1, 2 days; 1 week; 1, 2, 3, 6 months; 1, 2, 5 × 10^k years (1 .. 5000).
// It depends on the span and `count` alone, never on where the range lies, so panning by less than
// a step neither changes the step nor moves a tick: the step whose nominal length is nearest
// span / count in log ratio, among those whose longest length fits twice into the span (the
// longest hour to week is an hour more, for daylight saving; a month 31 days, a year 366). In the
// rare zone history that still leaves fewer than two ticks, the next smaller step is taken.
//
// Where ticks fall, on the zone's wall clock:
//   - below a day: every wall-clock time whose time of day is a multiple of the step. A time the
//     clocks skipped gives no tick; one they repeated gives a tick at both of its instants.
//   - days: the start of each local date whose day number since 1970-01-01 is a multiple of the
//     count (a 2-day step does not restart at each month); weeks: the start of each Monday;
//     months: the 1st of months whose index year × 12 + month - 1 is a multiple of the count;
//     years: January 1 of years that are multiples of the count. The start of a date is its
//     midnight, or the instant the clocks were set forward past a midnight that never happened.
// Only ticks inside [start, end] are kept. All arithmetic is in integer microseconds, so ticks do
// not drift. The range must lie within the years 0001..9999 in UTC; there is then either no tick
// or at least two.
//
// Concise labels (when no label format is given) show the finest field of the step: the year
// "2013", the month "Mar", the day of the month "14" (days and weeks), the time "14:05" (hours and
// minutes), "14:05:30" (seconds) or the seconds "30.25" (below a second, with the decimals the
// step needs). What the finest field leaves out is said once:
//   - offsetText() is the context all ticks share ("2012", "2012-03", "2012-03-14",
//     "2012-03-14 14:05"), no more than the finest field needs: none for years, the year for
//     months, the year and month for days, the date for times and seconds, the date and minute
//     below a second.
//   - Where a field of that context changes from one tick to the next, the coarsest changed field
//     is shown: alone if the tick starts that year, month, day or minute ("2013", "Mar", "Tue 14",
//     "14:06"), otherwise with everything finer: "2013-01-02 06:00", "Mar 2 06:00",
//     "Tue 14 06:00:30", "14:06:30.25". The first tick does so for the first field of the
//     context the offset text leaves out.
//   - A date starts only once: the second of a repeated midnight shows its time ("Sun 25 00:00"
//     after "Sun 25"). A first tick at the later instant of a repeated wall-clock time adds its
//     offset from UTC ("02:00 +0100"), as no tick before it tells which instant it is.
// So each label names exactly its tick when the labels are read in order: the offset text, and
// then the wall-clock time of the tick before, supply the fields it leaves out; a date names its
// start, a time its first instant after the tick before. Years have four digits, so they never read as
// days. A label format instead writes each tick's wall-clock time through TimeZone::format, and
// offsetText() is empty.
//
// Degenerate input gives no ticks: a NaN or infinite bound, start >= end, a range beyond the years
// 0001..9999, or a span shorter than twice the smallest step.
class ORV_CPPMATH_EXPORT CalendarTicks {
public:
    enum class Unit { Microsecond, Second, Minute, Hour, Day, Week, Month, Year };
    struct Step {
        Unit unit = Unit::Second;
        std::int64_t count = 1;
        // A month counts as 1/12 of the average Gregorian year of 365.2425 days.
        double nominalSeconds() const;
    };
    // Wanted intervals outside [1, MaxCount] are clamped into it.
    static constexpr int MaxCount = 1000;

    CalendarTicks() = default;
    // `count`: wanted number of intervals. `labelFormat`: empty for concise labels, otherwise a
    // strftime-style pattern as TimeZone::format takes it.
    CalendarTicks(double start, double end, int count, const TimeZone& zone, const std::string& labelFormat = {});

    int size() const { return static_cast<int>(m_instants.size()); }
    // Tick i, 0 <= i < size(), in seconds since the epoch: the double nearest microseconds(i) / 10^6
    // or next to it, never outside [start, end], and never falling as i grows.
    double value(int i) const;
    // Tick i exactly, in microseconds since the epoch.
    std::int64_t microseconds(int i) const { return m_instants[static_cast<std::size_t>(i)]; }
    std::string label(int i) const;
    const std::string& offsetText() const { return m_offsetText; }
    // The step taken; {Second, 1} when there are no ticks.
    Step step() const { return m_step; }

private:
    std::string conciseLabel(int i) const;

    std::vector<std::int64_t> m_instants;   // UTC
    std::vector<std::int64_t> m_wallTimes;  // the same ticks on the zone's clock
    std::vector<std::int64_t> m_jumps;      // ticks where the zone's offset changes
    Step m_step;
    TimeZone m_zone;
    std::string m_labelFormat;
    std::string m_offsetText;
    int m_offsetLevel = -1; // the finest label field the offset text covers, -1 for none
};

} // namespace Orv::Math
