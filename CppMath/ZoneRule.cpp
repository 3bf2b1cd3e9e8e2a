#include "ZoneRule.h"

#include <algorithm>
#include <cctype>
#include <fstream>
#include <iterator>
#include <limits>
#include <vector>

namespace Orv::Math {

namespace {

constexpr std::int64_t secondsPerDay = 86400;
constexpr std::int64_t secondsPerHour = 3600;

std::int64_t floorDiv(std::int64_t a, std::int64_t b)
{
    return a / b - ((a % b != 0) && ((a < 0) != (b < 0)));
}

// Days since 1970-01-01 of a date of the proleptic Gregorian calendar.
std::int64_t daysFromCivil(std::int64_t year, int month, int day)
{
    year -= month <= 2;
    const std::int64_t era = floorDiv(year, 400);
    const std::int64_t yearOfEra = year - era * 400;
    const std::int64_t dayOfYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468;
}

// The year a day since 1970-01-01 falls in.
std::int64_t yearOfDays(std::int64_t days)
{
    days += 719468;
    const std::int64_t era = floorDiv(days, 146097);
    const std::int64_t dayOfEra = days - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shiftedMonth = (5 * dayOfYear + 2) / 153;
    return yearOfEra + era * 400 + (shiftedMonth >= 10);
}

bool leap(std::int64_t year)
{
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysInMonth(std::int64_t year, int month)
{
    static const int lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return month == 2 && leap(year) ? 29 : lengths[month - 1];
}

// 0 for Sunday.
int weekdayOf(std::int64_t days)
{
    return static_cast<int>(days + 4 - floorDiv(days + 4, 7) * 7);
}

} // namespace

// Reads a TZ string from left to right; every step fails softly.
class ZoneRule::Reader {
public:
    explicit Reader(const std::string& text)
        : m_text(text)
    {
    }

    bool done() const { return m_at == m_text.size(); }
    bool take(char c)
    {
        if (m_at < m_text.size() && m_text[m_at] == c) {
            ++m_at;
            return true;
        }
        return false;
    }
    bool startsOffset() const
    {
        return m_at < m_text.size()
               && (std::isdigit(static_cast<unsigned char>(m_text[m_at])) || m_text[m_at] == '+'
                   || m_text[m_at] == '-');
    }
    std::optional<std::string> name()
    {
        const std::size_t from = m_at;
        if (take('<')) {
            const std::size_t close = m_text.find('>', m_at);
            if (close == std::string::npos)
                return std::nullopt;
            m_at = close + 1;
            return m_text.substr(from + 1, close - from - 1);
        }
        while (m_at < m_text.size() && std::isalpha(static_cast<unsigned char>(m_text[m_at])))
            ++m_at;
        if (m_at - from < 3)
            return std::nullopt;
        return m_text.substr(from, m_at - from);
    }
    // [+-]hh[:mm[:ss]] in seconds, hours up to `maxHours`.
    std::optional<std::int64_t> duration(int maxHours)
    {
        const bool negative = take('-');
        if (!negative)
            take('+');
        std::int64_t seconds = 0;
        std::int64_t unit = secondsPerHour;
        for (int part = 0; part < 3; ++part) {
            const std::optional<int> value = number();
            if (!value || (part == 0 && *value > maxHours) || (part > 0 && *value > 59))
                return std::nullopt;
            seconds += *value * unit;
            unit /= 60;
            if (part == 2 || !take(':'))
                break;
        }
        return negative ? -seconds : seconds;
    }
    std::optional<int> number()
    {
        const std::size_t from = m_at;
        int value = 0;
        while (m_at < m_text.size() && std::isdigit(static_cast<unsigned char>(m_text[m_at])) && m_at - from < 4)
            value = value * 10 + (m_text[m_at++] - '0');
        if (m_at == from)
            return std::nullopt;
        return value;
    }

private:
    const std::string& m_text;
    std::size_t m_at = 0;
};

namespace {

// Mm.w.d, Jn or n, then an optional /time.
template <class Reader, class Change>
bool readChange(Reader& reader, Change& change)
{
    using Kind = typename Change::Kind;
    if (reader.take('M')) {
        const auto month = reader.number();
        const bool dot1 = reader.take('.');
        const auto week = reader.number();
        const bool dot2 = reader.take('.');
        const auto weekday = reader.number();
        if (!month || !week || !weekday || !dot1 || !dot2 || *month < 1 || *month > 12 || *week < 1 || *week > 5
            || *weekday > 6)
            return false;
        change.kind = Kind::Month;
        change.month = *month;
        change.week = *week;
        change.weekday = *weekday;
    } else {
        change.kind = reader.take('J') ? Kind::Julian : Kind::Zero;
        const auto day = reader.number();
        if (!day || *day > 365 || (change.kind == Kind::Julian && *day < 1))
            return false;
        change.day = *day;
    }
    if (reader.take('/')) {
        const auto time = reader.duration(167);
        if (!time)
            return false;
        change.time = *time;
    }
    return true;
}

} // namespace

std::optional<ZoneRule> ZoneRule::parse(const std::string& text)
{
    Reader reader(text);
    ZoneRule rule;
    const auto standardName = reader.name();
    const auto standardOffset = standardName ? reader.duration(24) : std::nullopt;
    if (!standardOffset)
        return std::nullopt;
    rule.m_standard = {*standardName, -*standardOffset};
    if (reader.done())
        return rule;
    const auto summerName = reader.name();
    if (!summerName)
        return std::nullopt;
    std::int64_t summerOffset = rule.m_standard.offset + secondsPerHour;
    if (reader.startsOffset()) {
        const auto offset = reader.duration(24);
        if (!offset)
            return std::nullopt;
        summerOffset = -*offset;
    }
    rule.m_summer = {*summerName, summerOffset};
    rule.m_daylight = true;
    if (reader.done()) {
        // The rules POSIX leaves to the system; those of the United States, as tzcode assumes.
        rule.m_start = {Change::Kind::Month, 3, 2, 0, 0, 2 * secondsPerHour};
        rule.m_end = {Change::Kind::Month, 11, 1, 0, 0, 2 * secondsPerHour};
        return rule;
    }
    if (!reader.take(',') || !readChange(reader, rule.m_start) || !reader.take(',') || !readChange(reader, rule.m_end)
        || !reader.done())
        return std::nullopt;
    return rule;
}

// The text between the last two line breaks of a version 2+ zone file.
std::optional<ZoneRule> ZoneRule::ofFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    const std::string bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    if (bytes.size() < 6 || bytes.compare(0, 4, "TZif") != 0 || bytes[4] < '2' || bytes.back() != '\n')
        return std::nullopt;
    const std::size_t open = bytes.rfind('\n', bytes.size() - 2);
    if (open == std::string::npos)
        return std::nullopt;
    return parse(bytes.substr(open + 1, bytes.size() - open - 2));
}

std::int64_t ZoneRule::instant(const Change& change, std::int64_t year, std::int64_t offsetBefore) const
{
    std::int64_t days = 0;
    switch (change.kind) {
    case Change::Kind::Month: {
        const std::int64_t first = daysFromCivil(year, change.month, 1);
        int day = 1 + (change.weekday - weekdayOf(first) + 7) % 7 + 7 * (change.week - 1);
        while (day > daysInMonth(year, change.month))
            day -= 7;
        days = first + day - 1;
        break;
    }
    case Change::Kind::Julian:
        days = daysFromCivil(year, 1, 1) + change.day - 1 + (leap(year) && change.day >= 60);
        break;
    case Change::Kind::Zero:
        days = daysFromCivil(year, 1, 1) + change.day;
        break;
    }
    return days * secondsPerDay + change.time - offsetBefore;
}

// The changes of the year before, the year of and the year after the instant
// enclose it, whichever hemisphere the rule is for.
ZoneRule::Period ZoneRule::at(std::int64_t utcSeconds) const
{
    constexpr std::int64_t forever = std::numeric_limits<std::int64_t>::max();
    if (!m_daylight)
        return {-forever, forever, m_standard.offset, m_standard.name};
    struct Transition {
        std::int64_t at;
        bool toSummer;
    };
    std::vector<Transition> transitions;
    const std::int64_t year = yearOfDays(floorDiv(utcSeconds + m_standard.offset, secondsPerDay));
    for (std::int64_t y = year - 1; y <= year + 1; ++y) {
        transitions.push_back({instant(m_start, y, m_standard.offset), true});
        transitions.push_back({instant(m_end, y, m_summer.offset), false});
    }
    std::sort(transitions.begin(), transitions.end(),
              [](const Transition& a, const Transition& b) { return a.at < b.at; });
    const auto after = std::upper_bound(transitions.begin(), transitions.end(), utcSeconds,
                                        [](std::int64_t t, const Transition& x) { return t < x.at; });
    const bool summer = after != transitions.begin() && std::prev(after)->toSummer;
    const Zone& zone = summer ? m_summer : m_standard;
    return {after != transitions.begin() ? std::prev(after)->at : -forever,
            after != transitions.end() ? after->at : forever, zone.offset, zone.name};
}

} // namespace Orv::Math
