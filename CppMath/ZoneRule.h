#pragma once
// The rule a zone follows after the last transition its zone file lists: the
// POSIX TZ string at the end of the file ("CET-1CEST,M3.5.0,M10.5.0/3"),
// which gives the standard and daylight offsets and the days and times the
// clocks change, year after year. Zone files list transitions up to 2037; the
// rule carries daylight saving on for every later year.
//
// Understood: names plain or in angle brackets, offsets as [+-]hh[:mm[:ss]]
// (west of Greenwich positive, as POSIX writes them), dates as Mm.w.d,
// Jn (1..365, no leap day) and n (0..365), and transition times from -167 to
// +167 hours. A string without a daylight part is a fixed offset.

#include "OrvCppMathExport.h"

#include <cstdint>
#include <optional>
#include <string>

namespace Orv::Math {

class ORV_CPPMATH_EXPORT ZoneRule {
public:
    // The seconds [begin, end) since 1970 UTC around an instant during which the
    // offset (east of Greenwich, seconds) and abbreviation hold.
    struct Period {
        std::int64_t begin = 0;
        std::int64_t end = 0;
        std::int64_t offset = 0;
        std::string abbreviation;
    };

    // The rule a TZ string describes; none when it does not parse.
    static std::optional<ZoneRule> parse(const std::string& text);
    // The rule at the end of a zone file (TZif version 2 or later); none without one.
    static std::optional<ZoneRule> ofFile(const std::string& path);

    bool hasDaylightSaving() const { return m_daylight; }
    std::int64_t standardOffset() const { return m_standard.offset; }
    std::int64_t daylightOffset() const { return m_daylight ? m_summer.offset : m_standard.offset; }
    Period at(std::int64_t utcSeconds) const;

private:
    struct Zone {
        std::string name;
        std::int64_t offset = 0;
    };
    // A day of a year and the time of day (seconds, local time before the change).
    struct Change {
        enum class Kind { Month, Julian, Zero } kind = Kind::Month;
        int month = 0, week = 0, weekday = 0, day = 0;
        std::int64_t time = std::int64_t{2} * 3600;
    };

    class Reader;
    // The instant of a change in a year, given the offset in force before it.
    std::int64_t instant(const Change& change, std::int64_t year, std::int64_t offsetBefore) const;

    Zone m_standard;
    Zone m_summer;
    bool m_daylight = false;
    Change m_start;
    Change m_end;
};

} // namespace Orv::Math
