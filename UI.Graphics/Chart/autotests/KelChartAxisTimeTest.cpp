#include "ChartWithData.h"

#include "KelChartAxisScale.h"
#include "KelChartAxisTime.h"
#include "KelChartUpdateVariableUnits.h"

#include "CalendarTicks.h"

#include <cmath>

using Orv::Math::CalendarTicks;
using Orv::Math::TimeZone;

namespace {

constexpr double day = 86400;
// 2012-03-14 00:00:00 UTC in seconds since 1970.
constexpr double march14 = 1331683200;
const QString sinceMarch14 = "s since 2012-03-14 00:00:00 UTC";

class KelChartAxisTimeTest : public ChartWithData {
protected:
    KelChartAxisTime& time = axis<KelChartAxisTime>('x', "bottom");
    KelChartAxisContinuous& left = axis('y', "left");

    KelChartVariable& addSeries(std::vector<float> x, const QString& unit)
    {
        std::vector<float> y(x.size(), 1.0f);
        return addVariable("v", std::move(x), std::move(y), {time.name(), left.name()}, 0, unit);
    }
    // Runs the unit update, caches the variables and updates the time axis's scale.
    KelChartAxisScale updatedScale(unsigned tickCount = 6)
    {
        KelChartUpdateVariableUnits(chart.unitSystem, chart.axisX, chart.axisY, chart.axisZ, chart.variables);
        KelChartAxisScale scale(time, cacheVariables());
        scale.update(tickCount, {});
        return scale;
    }
};

struct ZoneCase {
    const char* zone;
    const char* format;
    bool inverted;
};

class KelChartAxisTimeZoneTest : public KelChartAxisTimeTest, public ::testing::WithParamInterface<ZoneCase> {};

} // namespace

// The scale holds the calendar ticks of its range in its zone, as values of the axis's own unit, with
// their positions along the fixed range, and the offset text; the factor stays 1.
TEST_P(KelChartAxisTimeZoneTest, TicksAreTheCalendarTicksOfTheRangeInTheAxisUnit)
{
    const ZoneCase& c = GetParam();
    time.timeZone.set(c.zone);
    time.labelFormat.set(c.format);
    time.inverted.set(c.inverted);
    fixed(time, 0.25 * day, 3 * day);
    addSeries({0, float(day)}, sinceMarch14);
    const KelChartAxisScale scale = updatedScale();
    const CalendarTicks expected(march14 + 0.25 * day, march14 + 3 * day, 6, TimeZone(c.zone), c.format);

    ASSERT_TRUE(scale.valid());
    EXPECT_EQ(time.unitLabel.get(), sinceMarch14);
    EXPECT_EQ(std::vector<double>({scale.min(), scale.max(), scale.factor()}),
              std::vector<double>({0.25 * day, 3 * day, 1}));
    ASSERT_GE(expected.size(), 2);
    ASSERT_EQ(scale.size(), unsigned(expected.size()));
    for (int i = 0; i < expected.size(); ++i) {
        EXPECT_NEAR(scale.value(i), expected.value(i) - march14, 1e-6) << i;
        EXPECT_EQ(scale.label(i).toStdString(), expected.label(i));
        const double along = (scale.value(i) - 0.25 * day) / (2.75 * day);
        EXPECT_NEAR(scale.percentage(i), c.inverted ? 1 - along : along, 1e-12);
    }
    EXPECT_EQ(scale.offsetText().toStdString(), expected.offsetText());
    EXPECT_TRUE(errors().empty());
}

INSTANTIATE_TEST_SUITE_P(Zones, KelChartAxisTimeZoneTest, ::testing::Values(
    ZoneCase{"UTC", "", false},
    ZoneCase{"Asia/Kathmandu", "", true},
    ZoneCase{"America/Sao_Paulo", "%d.%m. %H:%M", false}));

// Ticks sit inside the data's range with its 2% margin, which is not rounded out to them; calendar ticks
// already lie inside the range, so a tight range changes nothing.
TEST_F(KelChartAxisTimeTest, AutomaticRangeIsTheDataWithItsMarginTightOrNot)
{
    addSeries({0, float(10 * day)}, sinceMarch14);
    const KelChartAxisScale scale = updatedScale();
    EXPECT_DOUBLE_EQ(scale.min(), -0.2 * day);
    EXPECT_DOUBLE_EQ(scale.max(), 10.2 * day);
    ASSERT_GE(scale.size(), 2u);
    EXPECT_GE(scale.value(0), scale.min());
    EXPECT_LE(scale.value(scale.size() - 1), scale.max());
    EXPECT_EQ(scale.offsetText(), "2012-03");

    time.tightRange.set(true);
    const KelChartAxisScale tight = updatedScale();
    EXPECT_EQ(std::make_pair(tight.min(), tight.max()), std::make_pair(scale.min(), scale.max()));
    ASSERT_EQ(tight.size(), scale.size());
    for (unsigned i = 0; i < scale.size(); ++i)
        EXPECT_EQ(tight.percentage(i), scale.percentage(i));
}

// One origin for the axis: the first variable's unit; later ones are converted into it.
TEST_F(KelChartAxisTimeTest, VariablesAgreeOneTimestampUnit)
{
    addSeries({0, float(day)}, sinceMarch14);
    addSeries({1, 3}, "days since 2012-03-13").order.set(1);
    updatedScale();
    EXPECT_EQ(time.unitLabel.get(), sinceMarch14);
    EXPECT_FLOAT_EQ(cache.cache(1).bounds().min().x(), 0.0f);
    EXPECT_FLOAT_EQ(cache.cache(1).bounds().max().x(), float(2 * day));
}

// Without a unit the values are seconds since 1970 in UTC; a logarithmic setting is ignored.
TEST_F(KelChartAxisTimeTest, WithoutAUnitValuesAreUnixTime)
{
    time.logarithmic.set(true);
    addSeries({float(march14), float(march14 + 2 * day)}, QString());
    const KelChartAxisScale scale = updatedScale();
    ASSERT_GE(scale.size(), 2u);
    EXPECT_EQ(std::fmod(scale.value(0), day), 0.0);
    EXPECT_GT(scale.value(0), march14 - day);
    EXPECT_TRUE(errors().empty());
}

// An unknown zone is reported and UTC used; a unit that is no timestamp gives the numeric ticks, which a
// tight range keeps at the data's range rather than rounding it out.
TEST_F(KelChartAxisTimeTest, BadSettingsAreReportedAndFallBack)
{
    addSeries({0, float(day)}, sinceMarch14);
    const KelChartAxisScale utc = updatedScale();
    time.timeZone.set("Mars/Olympus_Mons");
    const KelChartAxisScale unknown = updatedScale();
    ASSERT_EQ(errors().size(), 1u);
    EXPECT_NE(errors()[0].find("unknown time zone \"Mars/Olympus_Mons\""), std::string::npos);
    ASSERT_EQ(unknown.size(), utc.size());
    for (unsigned i = 0; i < utc.size(); ++i)
        EXPECT_EQ(unknown.label(i), utc.label(i));

    removeVariables();
    addSeries({0, 100}, "degC");
    const KelChartAxisScale numbers = updatedScale();
    EXPECT_NE(errors().back().find("\"degC\" is not a timestamp unit"), std::string::npos);
    const Orv::Math::NiceIntervals expected(-2, 102, 6, true, true, {});
    EXPECT_EQ(numbers.label(0).toStdString(), expected.label(0));
    EXPECT_TRUE(numbers.offsetText().isEmpty());
    time.tightRange.set(true);
    const KelChartAxisScale tight = updatedScale();
    EXPECT_EQ(std::make_pair(tight.min(), tight.max()), std::make_pair(-2.0, 102.0));
    EXPECT_EQ(tight.label(0), "0");
}
