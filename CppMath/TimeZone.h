#pragma once
// Wall-clock time in a named time zone of the system's zone database.

#include "OrvCppMathExport.h"

#include <cstdint>
#include <memory>
#include <string>

namespace date {
class time_zone;
}

namespace Orv::Math {

class ZoneRule;

// A time zone by its database name ("Europe/Berlin"), converting between UTC instants and the
// zone's wall-clock time. Both are counted in microseconds since 1970-01-01 00:00: instants
// since that moment in UTC, wall-clock times since that date and time on the zone's clocks.
//
// The offsets come from the system's zone database, including the local mean time before a zone's
// first transition. Beyond the last transition the database lists (zone files list them up to
// 2037), the rule at the end of the zone's file carries daylight saving on (see ZoneRule).
//
// A value class: the zone is looked up once, when constructed; copies are cheap and share the
// database entry, which lives as long as the program. An unknown name gives an invalid zone that
// behaves as UTC, so a stale name in saved settings degrades instead of failing.
//
// Inputs beyond ±10^18 µs (about ±31,000 years) are clamped to that range.
class ORV_CPPMATH_EXPORT TimeZone {
public:
    // Which instant a wall-clock time that occurs twice (clocks set back) stands for.
    enum class Choose { Earliest, Latest };
    // Whether a wall-clock time occurs once, twice (clocks set back) or never (clocks set forward).
    enum class Kind { Unique, Ambiguous, Nonexistent };

    // The instants [begin, end) around one instant during which the zone's offset from UTC stays
    // the same; wall-clock time = instant + offset there. Bounds are clamped to ±10^18 µs.
    struct Period {
        std::int64_t begin = 0;
        std::int64_t end = 0;
        std::int64_t offset = 0;
    };

    // UTC.
    TimeZone();
    explicit TimeZone(const std::string& ianaName);

    // False for a name the database does not know.
    bool valid() const { return m_valid; }
    // The name as given; "UTC" for the default zone.
    const std::string& name() const { return m_name; }
    static bool known(const std::string& ianaName);

    // The wall-clock time at a UTC instant.
    std::int64_t toLocal(std::int64_t utcMicroseconds) const;
    // The instant of a wall-clock time. One that occurs twice gives its earlier or later instant
    // as chosen; one that does not occur gives, for both choices, the first instant after the gap,
    // which is the instant the clocks were set forward.
    std::int64_t toUtc(std::int64_t localMicroseconds, Choose choose = Choose::Earliest) const;
    Kind kind(std::int64_t localMicroseconds) const;
    Period period(std::int64_t utcMicroseconds) const;

    // The wall-clock time of an instant written by a strftime-style pattern ("%Y-%m-%d %H:%M",
    // C locale), where %Z is the zone's abbreviation and %z its offset. %S shows the seconds with
    // 0, 3 or 6 decimals: the fewest that hold `secondDecimals`.
    std::string format(std::int64_t utcMicroseconds, const std::string& pattern, int secondDecimals = 0) const;

private:
    // Whether the zone's rule, rather than its listed transitions, gives the
    // offsets at that many seconds since 1970 UTC.
    bool ruled(std::int64_t utcSeconds) const;
    struct RuleReading {
        int offsets = 0;
        std::int64_t earlierOffset = 0;
        std::int64_t laterOffset = 0;
        std::int64_t gapEnd = 0;
    };
    RuleReading readByRule(std::int64_t localSeconds) const;
    std::string formatByRule(std::int64_t utcMicroseconds, const std::string& pattern, int digits) const;

    std::string m_name;
    const date::time_zone* m_zone = nullptr; // nullptr: UTC, without a database lookup
    bool m_valid = true;
    // The rule after the last listed transition, when it changes the clocks; from m_ruleFrom on.
    std::shared_ptr<const ZoneRule> m_rule;
    std::int64_t m_ruleFrom = 0;
};

} // namespace Orv::Math
