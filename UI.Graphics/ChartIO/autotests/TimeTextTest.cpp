#include "TimeText.h"

#include <date/date.h>

#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <ostream>

using Orv::Chart::DateOrder;
using Orv::Chart::SlashReading;
using Orv::Chart::TimeText;

namespace {

using namespace date::literals;
using namespace std::chrono_literals;

// Microseconds from 1970-01-01 00:00 to `sinceMidnight` into `day`, by calendar arithmetic.
std::int64_t at(date::year_month_day day, std::chrono::microseconds sinceMidnight = {})
{
    return (date::sys_days(day).time_since_epoch() + sinceMidnight).count();
}

struct Reading {
    const char* text;
    std::optional<std::int64_t> microseconds; // nothing when the text is not a time
    bool utc = false;
    const char* format = "";
    DateOrder order = DateOrder::MonthFirst;
};

void PrintTo(const Reading& reading, std::ostream* os)
{
    *os << '"' << reading.text << "\" with format \"" << reading.format << '"'
        << (reading.order == DateOrder::DayFirst ? ", day first" : "");
}

class TimeTextTest : public ::testing::TestWithParam<Reading> {};

TEST_P(TimeTextTest, ReadsTheInstantOrRefuses)
{
    const Reading& reading = GetParam();
    const std::optional<Orv::Chart::ParsedTime> time =
        TimeText(QString::fromUtf8(reading.format), reading.order).parse(QString::fromUtf8(reading.text));
    ASSERT_EQ(time.has_value(), reading.microseconds.has_value());
    if (time) {
        EXPECT_EQ(time->microseconds, *reading.microseconds);
        EXPECT_EQ(time->utc, reading.utc);
    }
}

const std::int64_t newYear2012 = at(2012_y / 1 / 1);
const std::int64_t newYear2012At1405 = at(2012_y / 1 / 1, 14h + 5min);

INSTANTIATE_TEST_SUITE_P(Accepted, TimeTextTest, ::testing::Values(
    Reading{"2012-01-01", newYear2012},
    Reading{" \t2012-01-01  ", newYear2012},
    Reading{"2012-01-01T14:05", newYear2012At1405},
    Reading{"2012-01-01 9:05:30", at(2012_y / 1 / 1, 9h + 5min + 30s)},
    Reading{"2012-01-01t14:05:30.25", newYear2012At1405 + 30'250'000},
    Reading{"2012-01-01T14:05:30,1234565", newYear2012At1405 + 30'123'457},
    Reading{"2012-01-01T14:05:59.9999996", newYear2012At1405 + 60'000'000},
    Reading{"2012-01-01T14:05Z", newYear2012At1405, true},
    Reading{"2012-01-01T14:05+05:45", at(2012_y / 1 / 1, 8h + 20min), true},
    Reading{"2012-01-01T14:05-0300", at(2012_y / 1 / 1, 17h + 5min), true},
    Reading{"2012-01-01 14:05 +05", at(2012_y / 1 / 1, 9h + 5min), true},
    Reading{"2012-01-01T00:30+01:00", at(2011_y / 12 / 31, 23h + 30min), true},
    Reading{"2012-12-31T24:00", at(2013_y / 1 / 1)},
    Reading{"1969-12-31T23:59:59.5", -500'000},
    Reading{"2000-02-29", at(2000_y / 2 / 29)},
    Reading{"2012-03", at(2012_y / 3 / 1)},
    Reading{"Jan 1 2000", at(2000_y / 1 / 1)},
    Reading{"jan 1, 2000", at(2000_y / 1 / 1)},
    Reading{"JANUARY 1 2000", at(2000_y / 1 / 1)},
    Reading{"Sep-30-1995", at(1995_y / 9 / 30)},
    Reading{"Sept 30 1995", at(1995_y / 9 / 30)},
    Reading{"1 Dec 2000", at(2000_y / 12 / 1)},
    Reading{"31-Dec-2000", at(2000_y / 12 / 31)},
    Reading{"Feb 2000", at(2000_y / 2 / 1)},
    Reading{"Jan 1 2000 14:05", at(2000_y / 1 / 1, 14h + 5min)},
    Reading{"1 Jan 2000 14:05:30Z", at(2000_y / 1 / 1, 14h + 5min + 30s), true},
    Reading{"1974Q1", at(1974_y / 1 / 1)},
    Reading{"1974 Q2", at(1974_y / 4 / 1)},
    Reading{"1974-q3", at(1974_y / 7 / 1)},
    Reading{"1974Q4", at(1974_y / 10 / 1)},
    Reading{"19-Sep-03", at(2003_y / 9 / 19)},
    Reading{"19 sep 03 14:05", at(2003_y / 9 / 19, 14h + 5min)},
    Reading{"1-Jan-69", at(1969_y / 1 / 1)},
    Reading{"2013/08/29", at(2013_y / 8 / 29)},
    Reading{"2013/8/29 12:06:01", at(2013_y / 8 / 29, 12h + 6min + 1s)},
    Reading{"31.01.1985", at(1985_y / 1 / 31)},
    Reading{"31.1.1985 14:05", at(1985_y / 1 / 31, 14h + 5min)},
    Reading{"Jan 1 2000 12:05 AM", at(2000_y / 1 / 1, 5min)},
    Reading{"2012-01-01 12:05pm", at(2012_y / 1 / 1, 12h + 5min)},
    Reading{"2012-01-01 2:05 PM +05", at(2012_y / 1 / 1, 9h + 5min), true}));

// Month first unless the TimeText is built day first; forms that are not ambiguous read the same either way.
INSTANTIATE_TEST_SUITE_P(SlashDates, TimeTextTest, ::testing::Values(
    Reading{"12/01/2000", at(2000_y / 12 / 1)},
    Reading{"12/01/2000", at(2000_y / 1 / 12), false, "", DateOrder::DayFirst},
    Reading{"7/29/2016 14:05:30", at(2016_y / 7 / 29, 14h + 5min + 30s)},
    Reading{"29/7/2016 2:05 PM", at(2016_y / 7 / 29, 14h + 5min), false, "", DateOrder::DayFirst},
    Reading{"1/31/85", at(1985_y / 1 / 31)},
    Reading{"1/1/00", at(2000_y / 1 / 1)},
    Reading{"1/1/68", at(2068_y / 1 / 1)},
    Reading{"2/29/2016", at(2016_y / 2 / 29)},
    Reading{"2013/08/29", at(2013_y / 8 / 29), false, "", DateOrder::DayFirst},
    Reading{"31.01.1985", at(1985_y / 1 / 31), false, "", DateOrder::DayFirst},
    Reading{"19-Sep-03", at(2003_y / 9 / 19), false, "", DateOrder::DayFirst},
    Reading{"2/30/2016", {}}, Reading{"13/13/2016", {}}, Reading{"13/1/2016", {}},
    Reading{"1/13/2016", {}, false, "", DateOrder::DayFirst},
    Reading{"1/31/985", {}}, Reading{"1/31/19850", {}}, Reading{"123/1/2016", {}}, Reading{"1/2/3/2016", {}},
    Reading{"1/31/2016 14", {}}, Reading{"1/31/2016T14:05", {}}, Reading{"1/31", {}}));

// Numbers, impossible days and times, ambiguous or unfinished texts.
INSTANTIATE_TEST_SUITE_P(Refused, TimeTextTest, ::testing::Values(
    Reading{"", {}}, Reading{"  ", {}}, Reading{"rain", {}}, Reading{"May", {}},
    Reading{"1958", {}}, Reading{"2012", {}}, Reading{"20120101", {}}, Reading{"-5", {}},
    Reading{"3.25", {}}, Reading{"1e6", {}}, Reading{"1.2.12", {}}, Reading{"32.01.1985", {}},
    Reading{"19-Sep-3", {}}, Reading{"19-Sep-003", {}}, Reading{"2013/13/01", {}}, Reading{"2013/08", {}},
    Reading{"2012-13-01", {}}, Reading{"2012-00-10", {}}, Reading{"2011-02-29", {}},
    Reading{"1900-02-29", {}}, Reading{"2012-04-31", {}}, Reading{"2012-1-5", {}},
    Reading{"Jan 32 2000", {}}, Reading{"Feb 30 2000", {}}, Reading{"Jan 1 00", {}},
    Reading{"Jan-1 2000", {}}, Reading{"1 Jan", {}}, Reading{"Janu 1 2000", {}},
    Reading{"2012-01-01T25:00", {}}, Reading{"2012-01-01T24:00:01", {}},
    Reading{"2012-01-01T14:60", {}}, Reading{"2012-01-01T14:05:60", {}},
    Reading{"2012-01-01T14:05:30.", {}}, Reading{"2012-01-01T", {}}, Reading{"2012-01-01 14", {}},
    Reading{"2012-01-01Z", {}}, Reading{"2012-01-01T14:05+24:00", {}},
    Reading{"2012-01-01T14:05+5", {}}, Reading{"2012-01-01 14:05 later", {}},
    Reading{"2012-01-01T14:05\xC5\xBA", {}}, // a non-ASCII letter whose low byte is "z"
    Reading{"2012-03 14:05", {}}, Reading{"1974Q5", {}}, Reading{"1974Q0", {}},
    Reading{"2012-01-01 13:05 PM", {}}, Reading{"2012-01-01 0:05 AM", {}}, Reading{"2012-01-01 2:05 PMZ", {}},
    Reading{"2012-01-01 2:05 P", {}}));

INSTANTIATE_TEST_SUITE_P(WithFormat, TimeTextTest, ::testing::Values(
    Reading{"01.02.2012 14:05", at(2012_y / 2 / 1, 14h + 5min), false, "%d.%m.%Y %H:%M"},
    Reading{" 01.02.2012 14:05 ", at(2012_y / 2 / 1, 14h + 5min), false, "%d.%m.%Y %H:%M"},
    Reading{"12/01/2000", at(2000_y / 12 / 1), false, "%m/%d/%Y"},
    Reading{"12/01/2000", at(2000_y / 1 / 12), false, "%d/%m/%Y"},
    Reading{"20120101", newYear2012, false, "%Y%m%d"},
    Reading{"2012-01-01 14:05:30.25", newYear2012At1405 + 30'250'000, false, "%Y-%m-%d %H:%M:%S"},
    Reading{"2012-01-01T14:05+0530", at(2012_y / 1 / 1, 8h + 35min), true, "%Y-%m-%dT%H:%M%z"},
    // Composite fields are spelled out as the C locale writes them, whatever the locale.
    Reading{"07/29/16 14:05", at(2016_y / 7 / 29, 14h + 5min), false, "%D %R"},
    Reading{"2016-07-29 14:05:09", at(2016_y / 7 / 29, 14h + 5min + 9s), false, "%F %T"},
    Reading{"25.+3.2020", {}, false, "%d.%m.%c %H:%M"},
    Reading{"01.02.2012", {}, false, "%d.%m.%Y %H:%M"},
    Reading{"01.02.2012 14:05 x", {}, false, "%d.%m.%Y %H:%M"},
    Reading{"30.02.2012", {}, false, "%d.%m.%Y"},
    Reading{"2012-01-01", {}, false, "%d.%m.%Y"},
    Reading{"", {}, false, "%d.%m.%Y"}));

struct SlashCase {
    const char* text;
    SlashReading reading;
};

void PrintTo(const SlashCase& slashCase, std::ostream* os)
{
    *os << '"' << slashCase.text << '"';
}

class SlashReadingTest : public ::testing::TestWithParam<SlashCase> {};

// The reading says which orders parse the text, so that a caller may rely on it to pick a column's order.
TEST_P(SlashReadingTest, NamesTheOrdersThatParse)
{
    const QString text = QString::fromUtf8(GetParam().text);
    const SlashReading reading = TimeText::slashReading(text);
    EXPECT_EQ(reading, GetParam().reading);
    if (reading == SlashReading::NotSlashDate)
        return;
    EXPECT_EQ(TimeText().parse(text).has_value(), reading != SlashReading::DayFirstOnly);
    EXPECT_EQ(TimeText({}, DateOrder::DayFirst).parse(text).has_value(), reading != SlashReading::MonthFirstOnly);
}

INSTANTIATE_TEST_SUITE_P(Texts, SlashReadingTest, ::testing::Values(
    SlashCase{"1/2/2016", SlashReading::Both}, SlashCase{" 12/12/16 ", SlashReading::Both},
    SlashCase{"1/31/2016", SlashReading::MonthFirstOnly}, SlashCase{"2/29/2016 14:05", SlashReading::MonthFirstOnly},
    SlashCase{"31/1/85", SlashReading::DayFirstOnly}, SlashCase{"13/12/2016 1:05 PM", SlashReading::DayFirstOnly},
    SlashCase{"13/13/2016", SlashReading::NotSlashDate}, SlashCase{"1/2/2016 25:00", SlashReading::NotSlashDate},
    SlashCase{"2013/08/29", SlashReading::NotSlashDate}, SlashCase{"31.01.1985", SlashReading::NotSlashDate},
    SlashCase{"2012-01-01", SlashReading::NotSlashDate}, SlashCase{"1/2", SlashReading::NotSlashDate},
    SlashCase{"", SlashReading::NotSlashDate}));

// Two-digit years read as "%y" reads them in a format, so both ways of reading a file agree.
TEST(TimeTextTwoDigitYearTest, ReadsAsTheFormatDoes)
{
    const TimeText automatic;
    const TimeText formatted(QStringLiteral("%m/%d/%y"));
    for (int year = 0; year < 100; ++year) {
        const QString text = QStringLiteral("01/15/%1").arg(year, 2, 10, QLatin1Char('0'));
        const std::optional<Orv::Chart::ParsedTime> expected = formatted.parse(text);
        ASSERT_TRUE(expected) << text.toStdString();
        EXPECT_EQ(automatic.parse(text)->microseconds, expected->microseconds) << text.toStdString();
    }
}

TEST(TimeTextColumnTest, EveryFilledCellMustBeATime)
{
    const TimeText automatic;
    EXPECT_TRUE(automatic.isTimeColumn({"2012-01-01", "", "nan", " NaN ", "Jan 3 2012"}));
    EXPECT_FALSE(automatic.isTimeColumn({"2012-01-01", "rain"}));
    EXPECT_FALSE(automatic.isTimeColumn({"", "nan"}));
    EXPECT_FALSE(automatic.isTimeColumn({}));
    EXPECT_FALSE(automatic.isTimeColumn({"1958", "2012"}));
    EXPECT_TRUE(automatic.isTimeColumn({"1/31/2016", "2/1/2016"}));
    EXPECT_FALSE(automatic.isTimeColumn({"1/31/2016", "31/1/2016"}));
    EXPECT_TRUE(TimeText({}, DateOrder::DayFirst).isTimeColumn({"31/1/2016", "1/2/2016"}));
    // Plain numbers stay numbers even when the format reads them.
    EXPECT_FALSE(TimeText(QStringLiteral("%Y%m%d")).isTimeColumn({"20120101", "20120102"}));
    EXPECT_TRUE(TimeText(QStringLiteral("%d.%m.%Y")).isTimeColumn({"01.02.2012", "nan", "02.02.2012"}));
}

} // namespace
