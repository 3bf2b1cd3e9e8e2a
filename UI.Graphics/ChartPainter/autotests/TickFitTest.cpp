#include "TickFit.h"

#include "KelChart2D.h"
#include "KelChartAxisTime.h"
#include "KelChartVariableListCache.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using Orv::Chart::LabelRoom;
using Orv::Chart::TickFit;

namespace {

constexpr double secondsPerYear = 365.2425 * 86400;

// One axis of each kind with a variable on it; each case fixes a range and fits the tick count.
class TickFitTest : public ::testing::Test {
protected:
    TickFitTest()
    {
        for (KelChartAxisContinuous* axis : {&continuous, static_cast<KelChartAxisContinuous*>(&time)}) {
            axis->enabled.set(true);
            axis->autoScale.set(false);
            auto& variable = chart.variables.child(axis->name(), KelChartVariable::typeString);
            variable.xAxis.set(axis->name());
            variable.variableiter.setVector2Data({0, 1}, {0, 1}, {}, {}, QString(), QString());
        }
        time.unitLabel.set("s since 2000-01-01 00:00:00 UTC");
        cache = KelChartVariableListCache(chart.variables);
    }

    // The scale of `axis` over [min, max] with the count fitted to `room`.
    KelChartAxisScale fitted(KelChartAxisContinuous& axis, double min, double max, const LabelRoom& room)
    {
        axis.min.set(min);
        axis.max.set(max);
        KelChartAxisScale scale(axis, cache);
        scale.update(8, {});
        scale.update(TickFit::count(scale, room, 100), {});
        return scale;
    }

    // Whether the scale's labels are shown relative to an offset; each of
    // them then gives back its tick's value.
    static bool exactOffset(const KelChartAxisScale& scale, const LabelRoom& room)
    {
        const Orv::Chart::LabelOffset offset = TickFit::offset(scale, room);
        for (unsigned i = 0; i < offset.labels.size(); ++i) {
            const double value = offset.labels[i].toDouble() * std::pow(10.0, offset.exponent) + offset.value;
            // Within a millionth of the range, or the doubles' resolution at the value.
            const double tolerance = std::max(1e-6 * (scale.max() - scale.min()), 4e-16 * std::abs(scale.value(i)));
            EXPECT_NEAR(value, scale.value(i), tolerance) << offset.labels[i].toStdString();
        }
        return offset.applies();
    }

    KelModifiedGroup group;
    KelChart2D chart{group};
    KelChartAxisContinuous& continuous =
        dynamic_cast<KelChartAxisContinuous&>(chart.axisY.createFirst("left", KelChartAxisContinuous::typeString));
    KelChartAxisTime& time =
        dynamic_cast<KelChartAxisTime&>(chart.axisX.createFirst("bottom", KelChartAxisTime::typeString));
    KelChartVariableListCache cache;
};

} // namespace

// Over random ranges, zones, axis lengths and character widths, the fitted request with its label stride
// never gives labels that overlap, on time and continuous axes, along and across.
TEST_F(TickFitTest, FittedRequestsNeverOverlap)
{
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> logSpan(std::log(0.01), std::log(2000 * secondsPerYear));
    std::uniform_real_distribution<double> start(-300 * secondsPerYear, 300 * secondsPerYear);
    std::uniform_real_distribution<double> length(200, 1600);
    std::uniform_real_distribution<double> character(5, 9);
    const char* zones[] = {"UTC", "Europe/Berlin", "America/Sao_Paulo", "Australia/Lord_Howe", "Asia/Kathmandu"};
    int overlaps = 0;
    int crowded = 0;
    int offsets = 0;
    for (int i = 0; i < 2000; ++i) {
        LabelRoom room;
        room.length = length(random);
        room.horizontal = i % 4 != 0;
        room.width = TickFit::perCharacter(character(random));
        time.timeZone.set(zones[i % 5]);
        const double min = start(random);
        const double max = min + std::exp(logSpan(random));
        for (KelChartAxisContinuous* axis : {&continuous, static_cast<KelChartAxisContinuous*>(&time)}) {
            // Numeric labels may be shown relative to an offset, and are fitted so.
            room.offsetRoom = axis == &continuous && i % 2 == 0 ? 48 : 0;
            const KelChartAxisScale scale = fitted(*axis, min, max, room);
            offsets += exactOffset(scale, room);
            if (!TickFit::fits(scale, room, TickFit::stride(scale, room)) && ++overlaps < 5) {
                ADD_FAILURE() << axis->type().toStdString() << " " << min << ".." << max << " length " << room.length
                              << (room.horizontal ? " along" : " across") << ": " << scale.size() << " ticks, "
                              << scale.label(0).toStdString() << " | " << scale.label(1).toStdString();
            }
            crowded += scale.size() > 1 && room.length / (scale.size() - 1) < room.gap;
        }
    }
    EXPECT_EQ(overlaps, 0);
    EXPECT_EQ(crowded, 0);
    EXPECT_GT(offsets, 100);
}

// A long axis asks for more intervals than a short one; a cap holds.
TEST_F(TickFitTest, RoomDecidesTheCountUpToTheCap)
{
    LabelRoom room;
    room.width = TickFit::perCharacter(7);
    time.min.set(0);
    time.max.set(30 * 86400);
    KelChartAxisScale scale(time, cache);
    scale.update(8, {});
    room.length = 300;
    const unsigned shortAxis = TickFit::count(scale, room, 100);
    room.length = 1500;
    const unsigned longAxis = TickFit::count(scale, room, 100);
    EXPECT_LT(shortAxis, longAxis);
    EXPECT_LE(TickFit::count(scale, room, 3), 3u);
    EXPECT_GE(shortAxis, 2u);
}
