#include "TimeZone.h"
#include "ZoneRule.h"

#include "CivilTime.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

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
    // After the transitions the zone files list (up to 2037), their closing rule goes on.
    {"Europe/Berlin", at(2100, 10, 31, 2, 30), Kind::Ambiguous, at(2100, 10, 31, 0, 30), at(2100, 10, 31, 1, 30)},
    {"Europe/Berlin", at(2100, 3, 28, 2, 30), Kind::Nonexistent, at(2100, 3, 28, 1), at(2100, 3, 28, 1)},
    {"Australia/Lord_Howe", at(2047, 4, 7, 1, 45), Kind::Ambiguous, at(2047, 4, 6, 14, 45), at(2047, 4, 6, 15, 15)},
    // Daylight saving below standard time: Irish winter time is the daylight part of the rule.
    {"Europe/Dublin", at(2060, 3, 28, 1, 30), Kind::Nonexistent, at(2060, 3, 28, 1), at(2060, 3, 28, 1)},
};

// Instants after 2037 with their offsets and texts as Python's zoneinfo gives them: random
// ones, and the second before and the second of one year's transitions per zone (the instants of
// every change to 2200 are checked against zoneinfo below).
struct FutureCase {
    const char* zone;
    std::int64_t utcSeconds;
    std::int64_t offset;
    const char* text;
};

const FutureCase futureCases[] = {
    {"Europe/Berlin", 4821259205, 7200, "2122-10-12 16:40:05 CEST +0200"},
    {"Europe/Berlin", 5331867673, 3600, "2138-12-17 11:21:13 CET +0100"},
    {"Europe/Berlin", 6565460591, 3600, "2178-01-19 04:03:11 CET +0100"},
    {"Australia/Lord_Howe", 6197603060, 37800, "2166-05-24 22:54:20 +1030 +1030"},
    {"Australia/Lord_Howe", 4933241301, 37800, "2126-05-01 03:18:21 +1030 +1030"},
    {"Australia/Lord_Howe", 6015254971, 37800, "2160-08-13 10:39:31 +1030 +1030"},
    {"Europe/Dublin", 2632132726, 3600, "2053-05-29 12:58:46 IST +0100"},
    {"Europe/Dublin", 3204939048, 3600, "2071-07-24 05:50:48 IST +0100"},
    {"Europe/Dublin", 4481351912, 0, "2112-01-04 11:58:32 GMT +0000"},
    {"America/St_Johns", 4610975429, -12600, "2116-02-12 15:00:29 NST -0330"},
    {"America/St_Johns", 6497209113, -12600, "2175-11-21 00:48:33 NST -0330"},
    {"America/St_Johns", 3076764194, -9000, "2067-07-01 14:13:14 NDT -0230"},
    {"Pacific/Chatham", 3346284445, 49500, "2076-01-15 17:12:25 +1345 +1345"},
    {"Pacific/Chatham", 5434682565, 49500, "2142-03-21 23:47:45 +1345 +1345"},
    {"Pacific/Chatham", 7126378974, 49500, "2195-10-29 19:27:54 +1345 +1345"},
    {"America/New_York", 5569637079, -14400, "2146-06-30 05:24:39 EDT -0400"},
    {"America/New_York", 7036885610, -18000, "2192-12-27 05:26:50 EST -0500"},
    {"America/New_York", 4797855179, -18000, "2122-01-14 12:32:59 EST -0500"},
    {"America/Sao_Paulo", 2690085862, -10800, "2055-03-31 03:04:22 -03 -0300"},
    {"America/Sao_Paulo", 6448507056, -10800, "2174-05-06 08:57:36 -03 -0300"},
    {"America/Sao_Paulo", 5888571690, -10800, "2156-08-07 15:21:30 -03 -0300"},
    {"Africa/Casablanca", 6365383351, 3600, "2171-09-17 11:02:31 +01 +0100"},
    {"Africa/Casablanca", 5892879616, 3600, "2156-09-26 16:00:16 +01 +0100"},
    {"Africa/Casablanca", 3388473053, 3600, "2077-05-17 11:30:53 +01 +0100"},
    {"Asia/Kathmandu", 6275433330, 20700, "2168-11-10 13:40:30 +0545 +0545"},
    {"Asia/Kathmandu", 3025438123, 20700, "2065-11-14 21:13:43 +0545 +0545"},
    {"Asia/Kathmandu", 5112201367, 20700, "2132-01-01 05:41:07 +0545 +0545"},
    {"Europe/Berlin", 5877104399, 3600, "2156-03-28 01:59:59 CET +0100"},
    {"Europe/Berlin", 5877104400, 7200, "2156-03-28 03:00:00 CEST +0200"},
    {"Europe/Berlin", 5895853199, 7200, "2156-10-31 02:59:59 CEST +0200"},
    {"Europe/Berlin", 5895853200, 3600, "2156-10-31 02:00:00 CET +0100"},
    {"Australia/Lord_Howe", 4299749999, 39600, "2106-04-04 01:59:59 +11 +1100"},
    {"Australia/Lord_Howe", 4299750000, 37800, "2106-04-04 01:30:00 +1030 +1030"},
    {"Australia/Lord_Howe", 4315476599, 37800, "2106-10-03 01:59:59 +1030 +1030"},
    {"Australia/Lord_Howe", 4315476600, 39600, "2106-10-03 02:30:00 +11 +1100"},
    {"Europe/Dublin", 2184800399, 0, "2039-03-27 00:59:59 GMT +0000"},
    {"Europe/Dublin", 2184800400, 3600, "2039-03-27 02:00:00 IST +0100"},
    {"Europe/Dublin", 2203549199, 3600, "2039-10-30 01:59:59 IST +0100"},
    {"Europe/Dublin", 2203549200, 0, "2039-10-30 01:00:00 GMT +0000"},
    {"America/St_Johns", 5875910999, -12600, "2156-03-14 01:59:59 NST -0330"},
    {"America/St_Johns", 5875911000, -9000, "2156-03-14 03:00:00 NDT -0230"},
    {"America/St_Johns", 5896470599, -9000, "2156-11-07 01:59:59 NDT -0230"},
    {"America/St_Johns", 5896470600, -12600, "2156-11-07 01:00:00 NST -0330"},
    {"Pacific/Chatham", 4836203999, 49500, "2123-04-04 03:44:59 +1345 +1345"},
    {"Pacific/Chatham", 4836204000, 45900, "2123-04-04 02:45:00 +1245 +1245"},
    {"Pacific/Chatham", 4851323999, 45900, "2123-09-26 02:44:59 +1245 +1245"},
    {"Pacific/Chatham", 4851324000, 49500, "2123-09-26 03:45:00 +1345 +1345"},
    {"America/New_York", 2467263599, -18000, "2048-03-08 01:59:59 EST -0500"},
    {"America/New_York", 2467263600, -14400, "2048-03-08 03:00:00 EDT -0400"},
    {"America/New_York", 2487823199, -14400, "2048-11-01 01:59:59 EDT -0400"},
    {"America/New_York", 2487823200, -18000, "2048-11-01 01:00:00 EST -0500"},
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

TEST(TimeZone, OffsetsAndTextsFollowTheZonesRulesPast2037)
{
    for (const FutureCase& c : futureCases) {
        SCOPED_TRACE(testing::Message() << c.zone << " " << c.text);
        const TimeZone zone(c.zone);
        const std::int64_t instant = c.utcSeconds * Second;
        const TimeZone::Period period = zone.period(instant);
        EXPECT_EQ(period.offset, c.offset * Second);
        EXPECT_LE(period.begin, instant);
        EXPECT_GT(period.end, instant);
        EXPECT_EQ(zone.format(instant, "%Y-%m-%d %H:%M:%S %Z %z"), c.text);
        const std::int64_t local = zone.toLocal(instant);
        EXPECT_TRUE(zone.toUtc(local, TimeZone::Choose::Earliest) == instant
                    || zone.toUtc(local, TimeZone::Choose::Latest) == instant);
    }
}

namespace {

using Changes = std::map<std::string, std::vector<std::pair<std::int64_t, std::int64_t>>>;

// Every change of offset from 1900 to 2200 as Python's zoneinfo, a reader of the zone files of
// its own, gives it (data/make-transitions.py): per zone, the offset in 1900 and then each change.
Changes readChanges()
{
    std::ifstream file(ORV_MATH_TEST_DATA "/transitions.txt");
    Changes changes;
    std::string zone;
    std::int64_t instant = 0, offset = 0;
    while (file >> zone >> instant >> offset)
        changes[zone].emplace_back(instant, offset);
    return changes;
}

// The same walk through this zone reader's periods, in seconds.
std::vector<std::pair<std::int64_t, std::int64_t>> changesOf(const TimeZone& zone, std::int64_t from, std::int64_t to)
{
    std::vector<std::pair<std::int64_t, std::int64_t>> changes{{from, zone.period(from * Second).offset / Second}};
    for (TimeZone::Period p = zone.period(from * Second); p.end < to * Second; p = zone.period(p.end)) {
        const std::int64_t offset = zone.period(p.end).offset / Second;
        if (offset != changes.back().second)
            changes.emplace_back(p.end / Second, offset);
    }
    return changes;
}

} // namespace

// The calendar sweep checks ticks and labels through this zone reader; this ties the reader to an
// independent one over the whole sweep, change by change.
TEST(TimeZone, EveryChangeFrom1900To2200MatchesZoneinfo)
{
    const Changes expected = readChanges();
    ASSERT_EQ(expected.size(), 9u);
    for (const auto& [name, changes] : expected) {
        const std::int64_t to = at(2200, 1, 1) / Second;
        EXPECT_EQ(changesOf(TimeZone(name), changes.front().first, to), changes) << name;
    }
}

TEST(ZoneRule, ReadsTheTzStringsOfZoneFiles)
{
    const auto berlin = ZoneRule::parse("CET-1CEST,M3.5.0,M10.5.0/3");
    ASSERT_TRUE(berlin && berlin->hasDaylightSaving());
    EXPECT_EQ(berlin->standardOffset(), 3600);
    EXPECT_EQ(berlin->daylightOffset(), 7200);
    const auto lordHowe = ZoneRule::parse("<+1030>-10:30<+11>-11,M10.1.0,M4.1.0");
    ASSERT_TRUE(lordHowe);
    EXPECT_EQ(lordHowe->at(at(2047, 1, 1) / Second).abbreviation, "+11");
    EXPECT_EQ(ZoneRule::parse("<+0545>-5:45")->at(0).offset, 5 * 3600 + 45 * 60);
    EXPECT_FALSE(ZoneRule::parse("<+0545>-5:45")->hasDaylightSaving());
    // Julian days without and with the leap day, times past midnight.
    const auto julian = ZoneRule::parse("AAA3BBB,J60/26,300/-1");
    ASSERT_TRUE(julian);
    EXPECT_EQ(julian->at(at(2048, 3, 2, 4) / Second).abbreviation, "AAA");
    EXPECT_EQ(julian->at(at(2048, 3, 2, 6) / Second).abbreviation, "BBB");
    for (const char* broken : {"", "CE-1", "CET", "CET-1CEST,M13.1.0,M10.5.0", "CET-1CEST,M3.5.0", "<CET-1", "CET-25"})
        EXPECT_FALSE(ZoneRule::parse(broken)) << broken;
    EXPECT_FALSE(ZoneRule::ofFile("/nonexistent/zone"));
}
