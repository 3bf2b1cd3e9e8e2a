#pragma once
// Proleptic Gregorian dates for the tests, written apart from the code under test.

#include <cstdint>

namespace CivilTime {

constexpr std::int64_t Second = 1000000;
constexpr std::int64_t Minute = 60 * Second;
constexpr std::int64_t Hour = 60 * Minute;
constexpr std::int64_t Day = 24 * Hour;

struct Date {
    std::int64_t year;
    int month;
    int day;
};

constexpr std::int64_t floorDiv(std::int64_t a, std::int64_t b)
{
    return a / b - (a % b < 0 ? 1 : 0);
}

constexpr std::int64_t floorMod(std::int64_t a, std::int64_t b)
{
    return a - floorDiv(a, b) * b;
}

// Days since 1970-01-01, counted in 400-year eras that start on March 1.
constexpr std::int64_t daysFromCivil(std::int64_t year, int month, int day)
{
    const std::int64_t y = year - (month <= 2 ? 1 : 0);
    const std::int64_t era = floorDiv(y, 400);
    const std::int64_t yearOfEra = y - era * 400;
    const std::int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    return era * 146097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719468;
}

constexpr Date civilFromDays(std::int64_t days)
{
    const std::int64_t z = days + 719468;
    const std::int64_t era = floorDiv(z, 146097);
    const std::int64_t dayOfEra = z - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shiftedMonth = (5 * dayOfYear + 2) / 153;
    const int month = static_cast<int>(shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9);
    return {yearOfEra + era * 400 + (month <= 2 ? 1 : 0), month,
            static_cast<int>(dayOfYear - (153 * shiftedMonth + 2) / 5 + 1)};
}

// 0 for Sunday; 1970-01-01 was a Thursday.
constexpr int weekday(std::int64_t days)
{
    return static_cast<int>(floorMod(days + 4, 7));
}

// Microseconds since 1970-01-01 00:00 of a date and time.
constexpr std::int64_t at(std::int64_t year, int month, int day, int hour = 0, int minute = 0, int second = 0)
{
    return daysFromCivil(year, month, day) * Day + hour * Hour + minute * Minute + second * Second;
}

static_assert(daysFromCivil(2000, 3, 1) == 11017 && civilFromDays(11016).day == 29 && weekday(0) == 4);

} // namespace CivilTime
