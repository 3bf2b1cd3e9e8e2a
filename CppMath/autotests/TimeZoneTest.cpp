#include "TimeZone.h"

#include "CivilTime.h"

#include <gtest/gtest.h>

using namespace Orv::Math;
using CivilTime::at;
using CivilTime::Hour;
using CivilTime::Minute;
using CivilTime::Second;

namespace {

// A wall-clock time and the instants it stands for, from the zones' published rules.
struct WallClockCase {
    const char* zone;
    std::int64_t local;
    TimeZone::Kind kind;
    std::int64_t earliest;
    std::int64_t latest;
};

using Kind = TimeZone::Kind;

const WallClockCase wallClockCases[] = {
    // Clocks set back from 03:00 CEST to 02:00 CET.
    {"Europe/Berlin", at(2020, 10, 25, 2, 30), Kind::Ambiguous, at(2020, 10, 25, 0, 30), at(2020, 10, 25, 1, 30)},
    // Set forward from 02:00 CET to 03:00 CEST: the gap maps to the transition.
    {"Europe/Berlin", at(2021, 3, 28, 2, 30), Kind::Nonexistent, at(2021, 3, 28, 1), at(2021, 3, 28, 1)},
    // Local mean time before standard time, +0:53:28.
    {"Europe/Berlin", at(1700, 6, 1), Kind::Unique, at(1700, 5, 31, 23, 6, 32), at(1700, 5, 31, 23, 6, 32)},
    // Daylight saving started at midnight, so that day had no midnight.
    {"America/Sao_Paulo", at(2018, 11, 4), Kind::Nonexistent, at(2018, 11, 4, 3), at(2018, 11, 4, 3)},
    {"Asia/Kathmandu", at(2020, 1, 1), Kind::Unique, at(2019, 12, 31, 18, 15), at(2019, 12, 31, 18, 15)},
    // A half-hour shift, from +11 back to +10:30.
    {"Australia/Lord_Howe", at(2021, 4, 4, 1, 45), Kind::Ambiguous, at(2021, 4, 3, 14, 45), at(2021, 4, 3, 15, 15)},
};

} // namespace

TEST(TimeZone, WallClockTimesMapToTheirInstants)
{
    for (const WallClockCase& c : wallClockCases) {
        SCOPED_TRACE(testing::Message() << c.zone << " " << c.local);
        const TimeZone zone(c.zone);
        ASSERT_TRUE(zone.valid() && TimeZone::known(c.zone));
        EXPECT_EQ(zone.kind(c.local), c.kind);
        EXPECT_EQ(zone.toUtc(c.local, TimeZone::Choose::Earliest), c.earliest);
        EXPECT_EQ(zone.toUtc(c.local, TimeZone::Choose::Latest), c.latest);
        // Microseconds within the second keep their place.
        EXPECT_EQ(zone.toUtc(c.local + 7, TimeZone::Choose::Latest), c.latest + (c.kind == Kind::Nonexistent ? 0 : 7));
        if (c.kind != Kind::Nonexistent) {
            EXPECT_EQ(zone.toLocal(c.latest), c.local);
        }
    }
}

TEST(TimeZone, UnknownNamesBehaveAsUtc)
{
    const TimeZone unknown("Mars/Olympus_Mons");
    EXPECT_FALSE(unknown.valid() || TimeZone::known("Mars/Olympus_Mons"));
    EXPECT_EQ(unknown.name(), "Mars/Olympus_Mons");
    EXPECT_EQ(TimeZone().name(), "UTC");
    for (const TimeZone& zone : {unknown, TimeZone()}) {
        EXPECT_EQ(zone.toLocal(at(2020, 7, 1, 12)), at(2020, 7, 1, 12));
        EXPECT_EQ(zone.toUtc(at(2020, 7, 1, 12), TimeZone::Choose::Latest), at(2020, 7, 1, 12));
        EXPECT_EQ(zone.kind(at(2020, 7, 1, 12)), Kind::Unique);
    }
}

TEST(TimeZone, PeriodsAndFormatsShowTheOffsetInForce)
{
    const TimeZone berlin("Europe/Berlin");
    const TimeZone::Period summer = berlin.period(at(2020, 7, 1));
    EXPECT_EQ(summer.begin, at(2020, 3, 29, 1));
    EXPECT_EQ(summer.end, at(2020, 10, 25, 1));
    EXPECT_EQ(summer.offset, 2 * Hour);
    EXPECT_EQ(berlin.format(at(2020, 10, 25, 0, 30), "%d %H:%M %Z %z"), "25 02:30 CEST +0200");
    EXPECT_EQ(berlin.format(at(2020, 10, 25, 1, 30), "%d %H:%M %Z %z"), "25 02:30 CET +0100");
    EXPECT_EQ(berlin.format(at(2020, 1, 1) + 1500 * Minute / 1000 + 250, "%M:%S", 4), "01:30.000250");
    EXPECT_EQ(TimeZone().format(at(2020, 1, 1) + 30 * Second + 1250, "%S %Z", 2), "30.001 UTC");
}
