#include "CalendarTicks.h"

#include <date/date.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Orv::Math {

namespace {

using Unit = CalendarTicks::Unit;
using Step = CalendarTicks::Step;

constexpr std::int64_t Second = 1000000;
constexpr std::int64_t Minute = 60 * Second;
constexpr std::int64_t Hour = 60 * Minute;
constexpr std::int64_t Day = 24 * Hour;
constexpr double SecondsPerDay = 86400.0;
constexpr double DaysPerYear = 365.2425;
// 1970-01-05, the first Monday after the epoch, is day 4.
constexpr std::int64_t MondayRemainder = 4;

// 0001-01-01 and 10000-01-01 00:00 UTC, in seconds since the epoch.
constexpr double FirstSupported = -62135596800.0;
constexpr double EndSupported = 253402300800.0;

constexpr double nominalSecondsOf(Unit unit, std::int64_t count)
{
    const auto n = static_cast<double>(count);
    switch (unit) {
    case Unit::Microsecond:
        return n / 1e6;
    case Unit::Second:
        return n;
    case Unit::Minute:
        return n * 60.0;
    case Unit::Hour:
        return n * 3600.0;
    case Unit::Day:
        return n * SecondsPerDay;
    case Unit::Week:
        return n * 7.0 * SecondsPerDay;
    case Unit::Month:
        return n * DaysPerYear / 12.0 * SecondsPerDay;
    default:
        return n * DaysPerYear * SecondsPerDay;
    }
}

// The longest a step can last on the zone's clock: daylight saving lengthens a day by an hour,
// months and years vary in days.
constexpr double longestSecondsOf(Unit unit, std::int64_t count)
{
    const auto n = static_cast<double>(count);
    switch (unit) {
    case Unit::Hour:
    case Unit::Day:
    case Unit::Week:
        return nominalSecondsOf(unit, count) + 3600.0;
    case Unit::Month:
        return n * 31.0 * SecondsPerDay;
    case Unit::Year:
        return n * 366.0 * SecondsPerDay;
    default:
        return nominalSecondsOf(unit, count);
    }
}

struct Candidate {
    Step step;
    double nominalSeconds;
    double longestSeconds;
};

constexpr Candidate candidate(Unit unit, std::int64_t count)
{
    return {{unit, count}, nominalSecondsOf(unit, count), longestSecondsOf(unit, count)};
}

// Ascending in nominal and in longest length.
constexpr Candidate Candidates[] = {
    candidate(Unit::Microsecond, 1),      candidate(Unit::Microsecond, 2),
    candidate(Unit::Microsecond, 5),      candidate(Unit::Microsecond, 10),
    candidate(Unit::Microsecond, 20),     candidate(Unit::Microsecond, 50),
    candidate(Unit::Microsecond, 100),    candidate(Unit::Microsecond, 200),
    candidate(Unit::Microsecond, 500),    candidate(Unit::Microsecond, 1000),
    candidate(Unit::Microsecond, 2000),   candidate(Unit::Microsecond, 5000),
    candidate(Unit::Microsecond, 10000),  candidate(Unit::Microsecond, 20000),
    candidate(Unit::Microsecond, 50000),  candidate(Unit::Microsecond, 100000),
    candidate(Unit::Microsecond, 200000), candidate(Unit::Microsecond, 500000),
    candidate(Unit::Second, 1),           candidate(Unit::Second, 2),
    candidate(Unit::Second, 5),           candidate(Unit::Second, 10),
    candidate(Unit::Second, 15),          candidate(Unit::Second, 30),
    candidate(Unit::Minute, 1),           candidate(Unit::Minute, 2),
    candidate(Unit::Minute, 5),           candidate(Unit::Minute, 10),
    candidate(Unit::Minute, 15),          candidate(Unit::Minute, 30),
    candidate(Unit::Hour, 1),             candidate(Unit::Hour, 2),
    candidate(Unit::Hour, 3),             candidate(Unit::Hour, 6),
    candidate(Unit::Hour, 12),            candidate(Unit::Day, 1),
    candidate(Unit::Day, 2),              candidate(Unit::Week, 1),
    candidate(Unit::Month, 1),            candidate(Unit::Month, 2),
    candidate(Unit::Month, 3),            candidate(Unit::Month, 6),
    candidate(Unit::Year, 1),             candidate(Unit::Year, 2),
    candidate(Unit::Year, 5),             candidate(Unit::Year, 10),
    candidate(Unit::Year, 20),            candidate(Unit::Year, 50),
    candidate(Unit::Year, 100),           candidate(Unit::Year, 200),
    candidate(Unit::Year, 500),           candidate(Unit::Year, 1000),
    candidate(Unit::Year, 2000),          candidate(Unit::Year, 5000),
};
constexpr int CandidateCount = static_cast<int>(std::size(Candidates));

std::int64_t floorDiv(std::int64_t a, std::int64_t b)
{
    const std::int64_t q = a / b;
    return q * b > a ? q - 1 : q;
}

// The smallest multiple of m at or above a.
std::int64_t ceilMultiple(std::int64_t a, std::int64_t m)
{
    return -floorDiv(-a, m) * m;
}

// The candidate nearest span / count in log ratio among those fitting twice into the span;
// -1 when none does.
int chooseStep(double span, int count)
{
    const double wanted = span / count;
    int fitting = 0;
    while (fitting < CandidateCount && 2.0 * Candidates[fitting].longestSeconds <= span)
        ++fitting;
    int above = 0;
    while (above < fitting && Candidates[above].nominalSeconds < wanted)
        ++above;
    if (above == fitting)
        return fitting - 1;
    if (above == 0)
        return 0;
    // Nominal lengths ascend, so the nearest is the first at or above `wanted` or the one before.
    const double ratioAbove = Candidates[above].nominalSeconds / wanted;
    const double ratioBelow = wanted / Candidates[above - 1].nominalSeconds;
    return ratioAbove < ratioBelow ? above : above - 1;
}

double secondsOf(std::int64_t microseconds)
{
    const std::int64_t whole = floorDiv(microseconds, Second);
    return static_cast<double>(whole) + static_cast<double>(microseconds - whole * Second) / 1e6;
}

// The first microsecond whose secondsOf is at or above t: the double rounding of large instants
// is taken into account, so no tick's value falls outside the range.
std::int64_t firstInstantAtOrAfter(double t)
{
    const double whole = std::floor(t);
    auto instant = static_cast<std::int64_t>(whole) * Second
                   + static_cast<std::int64_t>(std::ceil((t - whole) * 1e6));
    while (secondsOf(instant - 1) >= t)
        --instant;
    while (secondsOf(instant) < t)
        ++instant;
    return instant;
}

std::int64_t lastInstantAtOrBefore(double t)
{
    const double whole = std::floor(t);
    auto instant = static_cast<std::int64_t>(whole) * Second
                   + static_cast<std::int64_t>(std::floor((t - whole) * 1e6));
    while (secondsOf(instant + 1) <= t)
        ++instant;
    while (secondsOf(instant) > t)
        --instant;
    return instant;
}

struct TickList {
    std::vector<std::int64_t>& instants;
    std::vector<std::int64_t>& wallTimes;
    // The ticks at which the zone's offset changes, so that the instant before shows another one.
    std::vector<std::int64_t>& jumps;

    void reserve(std::size_t count)
    {
        instants.reserve(count);
        wallTimes.reserve(count);
    }
    void clear()
    {
        instants.clear();
        wallTimes.clear();
        jumps.clear();
    }
    void add(std::int64_t instant, std::int64_t wallTime, const TimeZone::Period& period)
    {
        instants.push_back(instant);
        wallTimes.push_back(wallTime);
        if (instant == period.begin)
            jumps.push_back(instant);
    }
};

// Walks the stretches of constant offset: within one, wall-clock time is the instant plus the
// offset, so its ticks are the step's multiples there. Skipped wall-clock times fall between
// stretches and give nothing; repeated ones lie in two and give both instants.
void placeWithinDays(std::int64_t step, std::int64_t low, std::int64_t high, const TimeZone& zone, TickList& ticks)
{
    for (std::int64_t from = low; from <= high;) {
        const TimeZone::Period period = zone.period(from);
        const std::int64_t last = std::min(high, period.end - 1) + period.offset;
        for (std::int64_t wall = ceilMultiple(from + period.offset, step); wall <= last; wall += step)
            ticks.add(wall - period.offset, wall, period);
        if (period.end <= from)
            break;
        from = period.end;
    }
}

std::int64_t dayNumberOf(std::int64_t year, unsigned month)
{
    const date::year_month_day ymd{date::year(static_cast<int>(year)), date::month(month), date::day(1)};
    return date::sys_days(ymd).time_since_epoch().count();
}

date::year_month_day dateOf(std::int64_t dayNumber)
{
    return {date::sys_days(date::days(dayNumber))};
}

// Calls visit(day number) for the dates from firstDay on that start a step, while it returns true.
template <typename Visit>
void forEachStepDate(const Step& step, std::int64_t firstDay, Visit visit)
{
    if (step.unit == Unit::Day || step.unit == Unit::Week) {
        const std::int64_t stride = step.unit == Unit::Day ? step.count : 7;
        const std::int64_t remainder = step.unit == Unit::Day ? 0 : MondayRemainder;
        for (std::int64_t day = ceilMultiple(firstDay - remainder, stride) + remainder; visit(day); day += stride) {
        }
        return;
    }
    const std::int64_t monthsPerStep = step.unit == Unit::Month ? step.count : 12 * step.count;
    const date::year_month_day first = dateOf(firstDay);
    const std::int64_t firstMonth = int(first.year()) * std::int64_t(12) + unsigned(first.month()) - 1;
    for (std::int64_t month = ceilMultiple(firstMonth, monthsPerStep);; month += monthsPerStep) {
        const std::int64_t year = floorDiv(month, 12);
        const std::int64_t day = dayNumberOf(year, static_cast<unsigned>(month - 12 * year) + 1);
        if (day >= firstDay && !visit(day))
            return;
    }
}

// The starts of dates in ascending order. Deep inside a stretch of constant offset a midnight is
// just that offset away from its instant; only near a change is the database asked.
class DateStarts {
public:
    DateStarts(const TimeZone& zone, std::int64_t instant)
        : m_zone(zone)
        , m_period(zone.period(instant))
    {
    }

    const TimeZone::Period& period() const { return m_period; }

    // The instant of the date's midnight, or the end of a gap that swallowed the midnight.
    std::int64_t instantOf(std::int64_t dayNumber)
    {
        // Offsets change by less than this, so a midnight this far inside the stretch occurs
        // only there.
        constexpr std::int64_t margin = 2 * Day;
        const std::int64_t midnight = dayNumber * Day;
        const std::int64_t inside = midnight - m_period.offset;
        if (inside >= m_period.begin + margin && inside < m_period.end - margin)
            return inside;
        const std::int64_t instant = m_zone.toUtc(midnight);
        m_period = m_zone.period(instant);
        return instant;
    }

private:
    const TimeZone& m_zone;
    TimeZone::Period m_period;
};

void placeOnDates(const Step& step, std::int64_t low, std::int64_t high, const TimeZone& zone, TickList& ticks)
{
    DateStarts starts(zone, low);
    // From the day before on the clock of `low`: the clocks may have been set back across midnight.
    const std::int64_t firstDay = floorDiv(low + starts.period().offset, Day) - 1;
    forEachStepDate(step, firstDay, [&](std::int64_t day) {
        const std::int64_t instant = starts.instantOf(day);
        // A gap that swallowed a whole date gives it the next date's start: keep that once.
        if (instant >= low && instant <= high && (ticks.instants.empty() || ticks.instants.back() != instant))
            ticks.add(instant, instant + starts.period().offset, starts.period());
        return instant <= high;
    });
}

std::int64_t stepMicroseconds(const Step& step)
{
    switch (step.unit) {
    case Unit::Second:
        return step.count * Second;
    case Unit::Minute:
        return step.count * Minute;
    case Unit::Hour:
        return step.count * Hour;
    default:
        return step.count;
    }
}

void placeTicks(const Step& step, std::int64_t low, std::int64_t high, const TimeZone& zone, TickList& ticks)
{
    ticks.clear();
    if (step.unit >= Unit::Day)
        placeOnDates(step, low, high, zone, ticks);
    else
        placeWithinDays(stepMicroseconds(step), low, high, zone, ticks);
}

// Places the ticks of the candidate, or of the next smaller one while fewer than two come out;
// returns the candidate taken, -1 (and no ticks) when none gives two.
int placeTwoOrMore(int candidate, std::int64_t low, std::int64_t high, const TimeZone& zone, TickList& ticks)
{
    if (candidate >= 0)
        ticks.reserve(static_cast<std::size_t>(secondsOf(high - low) / Candidates[candidate].nominalSeconds) + 3);
    for (; candidate >= 0; --candidate) {
        placeTicks(Candidates[candidate].step, low, high, zone, ticks);
        if (ticks.instants.size() >= 2)
            return candidate;
    }
    ticks.clear();
    return -1;
}

// The fields labels are made of, coarse to fine. Time is the hour and minute.
enum Level : int { YearLevel, MonthLevel, DayLevel, TimeLevel, SecondLevel, SubsecondLevel };

Level fineLevel(Unit unit)
{
    switch (unit) {
    case Unit::Microsecond:
        return SubsecondLevel;
    case Unit::Second:
        return SecondLevel;
    case Unit::Minute:
    case Unit::Hour:
        return TimeLevel;
    case Unit::Day:
    case Unit::Week:
        return DayLevel;
    case Unit::Month:
        return MonthLevel;
    default:
        return YearLevel;
    }
}

// The finest level a fine label needs to be read; -1 for none. Seconds show their hour and minute
// themselves ("14:05:30"), sub-seconds only the seconds ("30.25").
int contextLevel(Level fine)
{
    switch (fine) {
    case SecondLevel:
        return DayLevel;
    case SubsecondLevel:
        return TimeLevel;
    default:
        return fine - 1;
    }
}

// Decimals of a sub-second step of `count` microseconds: 250 ms needs 2, 200 ms 1, 1 µs 6.
int decimalsOf(const Step& step)
{
    if (step.unit != Unit::Microsecond)
        return 0;
    int decimals = 6;
    for (std::int64_t c = step.count; c % 10 == 0 && decimals > 0; c /= 10)
        --decimals;
    return decimals;
}

struct WallFields {
    std::int64_t dayNumber;
    std::int64_t timeOfDay; // µs since midnight
    int year;
    unsigned month;
    unsigned day;
    unsigned weekday; // 0 Sunday
};

WallFields fieldsOf(std::int64_t wallTime)
{
    const std::int64_t dayNumber = floorDiv(wallTime, Day);
    const date::year_month_day ymd = dateOf(dayNumber);
    const unsigned weekday = date::weekday(date::sys_days(date::days(dayNumber))).c_encoding();
    return {dayNumber, wallTime - dayNumber * Day, int(ymd.year()), unsigned(ymd.month()), unsigned(ymd.day()),
            weekday};
}

// A number that grows with wall-clock time and changes exactly when the field at `level` does.
std::int64_t unitIndex(int level, const WallFields& f)
{
    switch (level) {
    case YearLevel:
        return f.year;
    case MonthLevel:
        return f.year * std::int64_t(12) + f.month - 1;
    case DayLevel:
        return f.dayNumber;
    default:
        return f.dayNumber * 1440 + f.timeOfDay / Minute;
    }
}

// The coarsest level up to `context` whose field differs; context + 1 when none does.
int coarsestChange(const WallFields& before, const WallFields& after, int context)
{
    int level = YearLevel;
    while (level <= context && unitIndex(level, before) == unitIndex(level, after))
        ++level;
    return level;
}

constexpr const char* MonthNames[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                      "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
constexpr const char* WeekdayNames[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};

// Builds a short text in place, without streams or allocations until the end.
class LabelWriter {
public:
    void number(std::int64_t value, int width)
    {
        if (value < 0) {
            character('-');
            value = -value;
        }
        char digits[20];
        int count = 0;
        do {
            digits[count++] = static_cast<char>('0' + value % 10);
            value /= 10;
        } while (value > 0 || count < width);
        while (count > 0)
            character(digits[--count]);
    }
    void text(const char* s)
    {
        while (*s)
            character(*s++);
    }
    void character(char c)
    {
        if (m_size < static_cast<int>(sizeof m_buffer))
            m_buffer[m_size++] = c;
    }
    std::string str() const { return {m_buffer, static_cast<std::size_t>(m_size)}; }

private:
    char m_buffer[64];
    int m_size = 0;
};

void writeSeconds(LabelWriter& w, const WallFields& f, int decimals)
{
    w.number(f.timeOfDay / Second % 60, 2);
    if (decimals == 0)
        return;
    std::int64_t fraction = f.timeOfDay % Second;
    for (int d = decimals; d < 6; ++d)
        fraction /= 10;
    w.character('.');
    w.number(fraction, decimals);
}

// "14:05", "14:05:30" or "14:05:30.25", down to the fine level.
void writeTime(LabelWriter& w, const WallFields& f, Level fine, int decimals)
{
    w.number(f.timeOfDay / Hour, 2);
    w.character(':');
    w.number(f.timeOfDay / Minute % 60, 2);
    if (fine >= SecondLevel) {
        w.character(':');
        writeSeconds(w, f, fine == SubsecondLevel ? decimals : 0);
    }
}

void writeWeekdayAndDay(LabelWriter& w, const WallFields& f)
{
    w.text(WeekdayNames[f.weekday]);
    w.character(' ');
    w.number(f.day, 1);
}

// The field of `level` alone, for a tick that starts that unit.
void writeAlone(LabelWriter& w, const WallFields& f, int level)
{
    switch (level) {
    case YearLevel:
        w.number(f.year, 4);
        break;
    case MonthLevel:
        w.text(MonthNames[f.month - 1]);
        break;
    case DayLevel:
        writeWeekdayAndDay(w, f);
        break;
    default:
        writeTime(w, f, TimeLevel, 0);
    }
}

// Every field from `level` down to the fine one.
void writeFrom(LabelWriter& w, const WallFields& f, int level, Level fine, int decimals)
{
    if (level == YearLevel) {
        w.number(f.year, 4);
        w.character('-');
        w.number(f.month, 2);
        if (fine >= DayLevel) {
            w.character('-');
            w.number(f.day, 2);
        }
    } else if (level == MonthLevel) {
        w.text(MonthNames[f.month - 1]);
        w.character(' ');
        w.number(f.day, 1);
    } else if (level == DayLevel) {
        writeWeekdayAndDay(w, f);
    }
    if (fine >= TimeLevel) {
        if (level <= DayLevel)
            w.character(' ');
        writeTime(w, f, fine, decimals);
    }
}

void writeFine(LabelWriter& w, const WallFields& f, Level fine, int decimals)
{
    switch (fine) {
    case YearLevel:
        w.number(f.year, 4);
        break;
    case MonthLevel:
        w.text(MonthNames[f.month - 1]);
        break;
    case DayLevel:
        w.number(f.day, 1);
        break;
    case SubsecondLevel:
        writeSeconds(w, f, decimals);
        break;
    default:
        writeTime(w, f, fine, decimals);
    }
}

// "+0100", "-0330", or with seconds "+054116" for the local mean times of old zones.
void writeOffset(LabelWriter& w, std::int64_t offsetSeconds)
{
    const std::int64_t magnitude = offsetSeconds < 0 ? -offsetSeconds : offsetSeconds;
    w.character(offsetSeconds < 0 ? '-' : '+');
    w.number(magnitude / 3600, 2);
    w.number(magnitude / 60 % 60, 2);
    if (magnitude % 60 != 0)
        w.number(magnitude % 60, 2);
}

// Whether a tick starts its unit at `level`: the instant just before it lies in an earlier one
// (`jump`: the zone's offset changes at the tick). A year, month or day starts only at the first
// instant of its date, so the second of a repeated midnight is written with its time
// ("Sun 25 00:00" after "Sun 25").
bool startsUnit(const TimeZone& zone, std::int64_t instant, std::int64_t wallTime, bool jump, int level)
{
    const WallFields here = fieldsOf(wallTime);
    const WallFields justBefore = fieldsOf(jump ? zone.toLocal(instant - 1) : wallTime - 1);
    if (unitIndex(level, justBefore) >= unitIndex(level, here))
        return false;
    return level > DayLevel || zone.toUtc(here.dayNumber * Day) == instant;
}

// The finest level up to `context` at which all ticks agree, -1 when even their years differ.
// Each level's index grows with wall-clock time, so the earliest and latest decide.
int sharedLevel(const std::vector<std::int64_t>& wallTimes, int context)
{
    const auto [earliest, latest] = std::minmax_element(wallTimes.begin(), wallTimes.end());
    return coarsestChange(fieldsOf(*earliest), fieldsOf(*latest), context) - 1;
}

// "2012", "2012-03", "2012-03-14" or "2012-03-14 14:05", down to `level`.
std::string contextText(std::int64_t wallTime, int level)
{
    if (level < YearLevel)
        return {};
    const WallFields f = fieldsOf(wallTime);
    LabelWriter w;
    if (level == YearLevel)
        w.number(f.year, 4);
    else
        writeFrom(w, f, YearLevel, static_cast<Level>(level), 0);
    return w.str();
}

} // namespace

double CalendarTicks::Step::nominalSeconds() const
{
    return nominalSecondsOf(unit, count);
}

CalendarTicks::CalendarTicks(double start, double end, int count, const TimeZone& zone, const std::string& labelFormat)
    : m_zone(zone)
    , m_labelFormat(labelFormat)
{
    // Also false for NaN.
    if (!(start >= FirstSupported && end < EndSupported && start < end))
        return;
    const std::int64_t low = firstInstantAtOrAfter(start);
    const std::int64_t high = lastInstantAtOrBefore(end);
    TickList ticks{m_instants, m_wallTimes, m_jumps};
    const int candidate = placeTwoOrMore(chooseStep(end - start, std::clamp(count, 1, MaxCount)), low, high,
                                         m_zone, ticks);
    if (candidate < 0)
        return;
    m_step = Candidates[candidate].step;
    if (m_labelFormat.empty()) {
        m_offsetLevel = sharedLevel(m_wallTimes, contextLevel(fineLevel(m_step.unit)));
        m_offsetText = contextText(m_wallTimes.front(), m_offsetLevel);
    }
}

double CalendarTicks::value(int i) const
{
    return secondsOf(microseconds(i));
}

std::string CalendarTicks::label(int i) const
{
    if (m_labelFormat.empty())
        return conciseLabel(i);
    return m_zone.format(microseconds(i), m_labelFormat, decimalsOf(m_step));
}

std::string CalendarTicks::conciseLabel(int i) const
{
    const Level fine = fineLevel(m_step.unit);
    const int context = contextLevel(fine);
    const int decimals = decimalsOf(m_step);
    const auto index = static_cast<std::size_t>(i);
    const std::int64_t instant = m_instants[index];
    const WallFields here = fieldsOf(m_wallTimes[index]);
    const int changed = i == 0 ? m_offsetLevel + 1 : coarsestChange(fieldsOf(m_wallTimes[index - 1]), here, context);
    const bool jump = std::binary_search(m_jumps.begin(), m_jumps.end(), instant);

    LabelWriter w;
    if (changed > context)
        writeFine(w, here, fine, decimals);
    else if (startsUnit(m_zone, instant, m_wallTimes[index], jump, changed))
        writeAlone(w, here, changed);
    else
        writeFrom(w, here, changed, fine, decimals);
    // The first tick has no tick before it to tell which instant of a repeated wall-clock time it
    // is; the later one says its offset.
    if (i == 0 && m_zone.toUtc(m_wallTimes[index]) != instant) {
        w.character(' ');
        writeOffset(w, (m_wallTimes[index] - instant) / Second);
    }
    return w.str();
}

} // namespace Orv::Math
