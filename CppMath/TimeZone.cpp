#include "TimeZone.h"

#include <date/tz.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace Orv::Math {

namespace {

using Microseconds = std::chrono::microseconds;
using Seconds = std::chrono::seconds;

constexpr std::int64_t MicrosecondsPerSecond = 1000000;
// Far inside both the int64 microsecond range and the years the database can represent.
constexpr std::int64_t Limit = 1000000000000000000;

std::int64_t clamped(std::int64_t microseconds)
{
    return std::clamp(microseconds, -Limit, Limit);
}

// Transitions fall on whole seconds, so the second a time lies in decides which side it is on.
Seconds floorSeconds(std::int64_t microseconds)
{
    std::int64_t seconds = microseconds / MicrosecondsPerSecond;
    if (seconds * MicrosecondsPerSecond > microseconds)
        --seconds;
    return Seconds(seconds);
}

std::int64_t microsecondsOf(Seconds seconds)
{
    constexpr std::int64_t limitSeconds = Limit / MicrosecondsPerSecond;
    return std::clamp(seconds.count(), -limitSeconds, limitSeconds) * MicrosecondsPerSecond;
}

std::int64_t microsecondsOf(date::sys_seconds instant)
{
    return microsecondsOf(instant.time_since_epoch());
}

const date::time_zone* lookUp(const std::string& name)
{
    try {
        return date::locate_zone(name);
    } catch (const std::runtime_error&) {
        return nullptr;
    }
}

int subsecondDigits(int secondDecimals)
{
    return secondDecimals <= 0 ? 0 : secondDecimals <= 3 ? 3 : 6;
}

template <typename Duration>
std::string formatAt(const date::time_zone* zone, std::int64_t utcMicroseconds, const std::string& pattern)
{
    const auto instant = date::floor<Duration>(date::sys_time<Microseconds>(Microseconds(utcMicroseconds)));
    if (!zone)
        return date::format(pattern, instant);
    return date::format(pattern, date::make_zoned(zone, instant));
}

} // namespace

TimeZone::TimeZone()
    : m_name("UTC")
{
}

TimeZone::TimeZone(const std::string& ianaName)
    : m_name(ianaName)
    , m_zone(lookUp(ianaName))
    , m_valid(m_zone != nullptr)
{
}

bool TimeZone::known(const std::string& ianaName)
{
    return lookUp(ianaName) != nullptr;
}

TimeZone::Period TimeZone::period(std::int64_t utcMicroseconds) const
{
    if (!m_zone)
        return {-Limit, Limit, 0};
    const auto info = m_zone->get_info(date::sys_seconds(floorSeconds(clamped(utcMicroseconds))));
    return {microsecondsOf(info.begin), microsecondsOf(info.end), microsecondsOf(info.offset)};
}

std::int64_t TimeZone::toLocal(std::int64_t utcMicroseconds) const
{
    return clamped(utcMicroseconds) + period(utcMicroseconds).offset;
}

std::int64_t TimeZone::toUtc(std::int64_t localMicroseconds, Choose choose) const
{
    const std::int64_t local = clamped(localMicroseconds);
    if (!m_zone)
        return local;
    const auto info = m_zone->get_info(date::local_seconds(floorSeconds(local)));
    switch (info.result) {
    case date::local_info::nonexistent:
        return microsecondsOf(info.second.begin);
    case date::local_info::ambiguous:
        // The period before the transition holds the earlier instant.
        return local - microsecondsOf((choose == Choose::Earliest ? info.first : info.second).offset);
    default:
        return local - microsecondsOf(info.first.offset);
    }
}

TimeZone::Kind TimeZone::kind(std::int64_t localMicroseconds) const
{
    if (!m_zone)
        return Kind::Unique;
    const auto info = m_zone->get_info(date::local_seconds(floorSeconds(clamped(localMicroseconds))));
    switch (info.result) {
    case date::local_info::nonexistent:
        return Kind::Nonexistent;
    case date::local_info::ambiguous:
        return Kind::Ambiguous;
    default:
        return Kind::Unique;
    }
}

std::string TimeZone::format(std::int64_t utcMicroseconds, const std::string& pattern, int secondDecimals) const
{
    const std::int64_t instant = clamped(utcMicroseconds);
    switch (subsecondDigits(secondDecimals)) {
    case 0:
        return formatAt<Seconds>(m_zone, instant, pattern);
    case 3:
        return formatAt<std::chrono::milliseconds>(m_zone, instant, pattern);
    default:
        return formatAt<Microseconds>(m_zone, instant, pattern);
    }
}

} // namespace Orv::Math
