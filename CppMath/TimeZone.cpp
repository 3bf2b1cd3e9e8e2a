#include "TimeZone.h"
#include "ZoneRule.h"

#include <date/tz.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
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

// Local times this far after the last listed transition are read by the rule alone.
constexpr std::int64_t RuleMargin = std::int64_t{2} * 86400;

// The rule of a zone whose listed transitions end, when it changes the clocks, and where the
// listed ones end. Each zone is looked at once: zones are made on every scale update.
std::shared_ptr<const ZoneRule> ruleOf(const std::string& name, const date::time_zone* zone, std::int64_t& from)
{
    struct Found {
        std::shared_ptr<const ZoneRule> rule;
        std::int64_t from = 0;
    };
    if (!zone)
        return nullptr;
    static std::mutex mutex;
    static std::map<std::string, Found> found;
    const std::lock_guard<std::mutex> lock(mutex);
    auto known = found.find(name);
    if (known == found.end()) {
        using namespace date;
        Found rule;
        const sys_info last = zone->get_info(sys_days(year(2500) / January / 1));
        std::optional<ZoneRule> read;
        if (last.end >= sys_days(year(2600) / January / 1))
            read = ZoneRule::ofFile("/usr/share/zoneinfo/" + name);
        if (read && read->hasDaylightSaving()) {
            rule.rule = std::make_shared<const ZoneRule>(std::move(*read));
            rule.from = last.begin.time_since_epoch().count();
        }
        known = found.emplace(name, rule).first;
    }
    from = known->second.from;
    return known->second.rule;
}

// "%Z" and "%z" written out, so that a wall-clock time without a zone can be formatted.
std::string withZone(const std::string& pattern, const std::string& abbreviation, std::int64_t offset)
{
    std::string out;
    for (std::size_t k = 0; k < pattern.size(); ++k) {
        if (pattern[k] != '%' || k + 1 == pattern.size()) {
            out += pattern[k];
            continue;
        }
        const char what = pattern[++k];
        if (what == 'Z') {
            out += abbreviation;
        } else if (what == 'z') {
            const std::int64_t minutes = (offset < 0 ? -offset : offset) / 60;
            const char digits[] = {char('0' + minutes / 600), char('0' + minutes / 60 % 10),
                                   char('0' + minutes % 60 / 10), char('0' + minutes % 10), '\0'};
            out += (offset < 0 ? "-" : "+") + std::string(digits);
        } else {
            out += '%';
            out += what;
        }
    }
    return out;
}

template <typename Duration>
std::string formatLocal(std::int64_t localMicroseconds, const std::string& pattern)
{
    return date::format(pattern, date::floor<Duration>(date::local_time<Microseconds>(Microseconds(localMicroseconds))));
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
    m_rule = ruleOf(ianaName, m_zone, m_ruleFrom);
}

bool TimeZone::ruled(std::int64_t utcSeconds) const
{
    return m_rule && utcSeconds >= m_ruleFrom;
}

bool TimeZone::known(const std::string& ianaName)
{
    return lookUp(ianaName) != nullptr;
}

TimeZone::Period TimeZone::period(std::int64_t utcMicroseconds) const
{
    if (!m_zone)
        return {-Limit, Limit, 0};
    const std::int64_t seconds = floorSeconds(clamped(utcMicroseconds)).count();
    if (ruled(seconds)) {
        const ZoneRule::Period rule = m_rule->at(seconds);
        return {microsecondsOf(Seconds(std::max(rule.begin, m_ruleFrom))), microsecondsOf(Seconds(rule.end)),
                rule.offset * MicrosecondsPerSecond};
    }
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
    if (m_rule && floorSeconds(local).count() >= m_ruleFrom + RuleMargin) {
        const RuleReading reading = readByRule(floorSeconds(local).count());
        if (reading.offsets == 0)
            return reading.gapEnd * MicrosecondsPerSecond;
        return local - (choose == Choose::Earliest ? reading.earlierOffset : reading.laterOffset) * MicrosecondsPerSecond;
    }
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
    if (m_rule && floorSeconds(clamped(localMicroseconds)).count() >= m_ruleFrom + RuleMargin) {
        const int offsets = readByRule(floorSeconds(clamped(localMicroseconds)).count()).offsets;
        return offsets == 0 ? Kind::Nonexistent : offsets == 2 ? Kind::Ambiguous : Kind::Unique;
    }
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

// The offsets under which a wall-clock time (seconds) reads back as itself: none in a gap (then
// the gap's end), two where the clocks were set back (the earlier instant has the larger offset).
TimeZone::RuleReading TimeZone::readByRule(std::int64_t localSeconds) const
{
    RuleReading reading;
    const std::int64_t offsets[] = {std::max(m_rule->standardOffset(), m_rule->daylightOffset()),
                                    std::min(m_rule->standardOffset(), m_rule->daylightOffset())};
    for (const std::int64_t offset : offsets) {
        if (m_rule->at(localSeconds - offset).offset != offset || (reading.offsets == 1 && offset == offsets[0]))
            continue;
        (reading.offsets == 0 ? reading.earlierOffset : reading.laterOffset) = offset;
        ++reading.offsets;
    }
    if (reading.offsets == 1)
        reading.laterOffset = reading.earlierOffset;
    if (reading.offsets == 0)
        reading.gapEnd = m_rule->at(localSeconds - offsets[0]).end;
    return reading;
}

std::string TimeZone::formatByRule(std::int64_t utcMicroseconds, const std::string& pattern, int digits) const
{
    const ZoneRule::Period rule = m_rule->at(floorSeconds(utcMicroseconds).count());
    const std::string expanded = withZone(pattern, rule.abbreviation, rule.offset);
    const std::int64_t local = utcMicroseconds + rule.offset * MicrosecondsPerSecond;
    switch (digits) {
    case 0:
        return formatLocal<Seconds>(local, expanded);
    case 3:
        return formatLocal<std::chrono::milliseconds>(local, expanded);
    default:
        return formatLocal<Microseconds>(local, expanded);
    }
}

std::string TimeZone::format(std::int64_t utcMicroseconds, const std::string& pattern, int secondDecimals) const
{
    const std::int64_t instant = clamped(utcMicroseconds);
    if (ruled(floorSeconds(instant).count()))
        return formatByRule(instant, pattern, subsecondDigits(secondDecimals));
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
