#include "ChartWithData.h"
#include "KelChartAxisScale.h"

#include <climits>
#include <cmath>
#include <limits>
#include <tuple>
#include <utility>

namespace {

using Orv::Math::NiceIntervals;
using Orv::Math::NumberFormat;

constexpr double largestFloat = 3.4028234663852886e38;
constexpr unsigned int tickCount = 5;

struct ExpandCase {
    double min, max, fraction;
    double expectedMin, expectedMax;
};

class KelChartAxisScaleExpandRangeTest : public ::testing::TestWithParam<ExpandCase> {};

// The pair "axis.x" with a continuous first axis "bottom" and a discrete second axis "top" labelled
// red, green, blue, and variables drawn against them.
class KelChartAxisScaleTest : public ChartWithData {
protected:
    KelChartAxisContinuous& continuousAxis() { return axis('x', "bottom"); }
    KelChartAxisDiscrete& discreteAxis()
    {
        auto& top = axis<KelChartAxisDiscrete>('x', "top", false);
        top.labels.setLabels({"red", "green", "blue"});
        return top;
    }
    // A variable whose two points span [lo, hi] along `axis`, drawn against it as x, y or both ('b').
    KelChartVariable& addOn(const KelChartAxis& axis, char on, float lo, float hi)
    {
        const QString other = on == 'b' ? axis.name() : QString("other");
        return on == 'y' ? addVariable("v", {0, 0}, {lo, hi}, {other, axis.name()})
                         : addVariable("v", {lo, hi}, {500, 600}, {axis.name(), other});
    }
    // The axis's scale for the chart's variables, updated when asked.
    KelChartAxisScale scaleOf(const KelChartAxis& axis, bool update = false)
    {
        KelChartAxisScale scale(axis, cacheVariables());
        if (update)
            scale.update(tickCount, format);
        return scale;
    }

    const NumberFormat format{NumberFormat::Notation::Fixed};
};

void expectInvalidAndEmpty(const KelChartAxisScale& scale)
{
    EXPECT_FALSE(scale.valid());
    EXPECT_EQ(std::vector<double>({scale.min(), scale.max(), scale.factor()}), std::vector<double>({0, 0, 1}));
    EXPECT_EQ(scale.size(), 0u);
}

struct ContinuousCase {
    std::vector<std::tuple<char, float, float>> series; // each drawn on addOn's terms
    double lo, hi;                                      // the range the ticks are chosen for
    double fixedMin = 0, fixedMax = 0;                  // a fixed range, when they differ; set on an inverted axis
};
class KelChartAxisScaleContinuousTest : public KelChartAxisScaleTest,
                                        public ::testing::WithParamInterface<ContinuousCase> {};

struct DiscreteCase {
    float dataEnd;          // the data's x run from 0 to this
    int fixedMin, fixedMax; // a fixed range, when they differ
    double min, max;
    std::vector<std::tuple<double, const char*, double>> entries; // value, label, percentage
};
class KelChartAxisScaleDiscreteTest : public KelChartAxisScaleTest,
                                      public ::testing::WithParamInterface<DiscreteCase> {};

} // namespace

TEST_P(KelChartAxisScaleExpandRangeTest, DoubleAndFloatAgree)
{
    const ExpandCase c = GetParam();
    double dmin = c.min, dmax = c.max;
    KelChartAxisScale::ExpandRange<double>(dmin, dmax, c.fraction);
    EXPECT_DOUBLE_EQ(dmin, c.expectedMin);
    EXPECT_DOUBLE_EQ(dmax, c.expectedMax);
    float fmin = float(c.min), fmax = float(c.max);
    KelChartAxisScale::ExpandRange<float>(fmin, fmax, float(c.fraction));
    EXPECT_FLOAT_EQ(fmin, float(c.expectedMin));
    EXPECT_FLOAT_EQ(fmax, float(c.expectedMax));
}

INSTANTIATE_TEST_SUITE_P(Ranges, KelChartAxisScaleExpandRangeTest, ::testing::Values(
    ExpandCase{0, 10, 0.1, -1, 11},
    ExpandCase{5, 5, 0.3, 2.5, 7.5}, // no width: half of max at each end
    ExpandCase{1, 3, 0, -0.5, 4.5},  // fraction 0 behaves the same
    ExpandCase{0, 0, 0.1, -1, 1},
    ExpandCase{0.5, 0.5, 0.1, -1, 1},
    ExpandCase{-0.5, -0.5, 0.1, -1, 1},
    ExpandCase{largestFloat, largestFloat, 0.1, 0, largestFloat},
    // Negative ranges widen by half of |max| too, and the largest negative float mirrors the positive case.
    ExpandCase{-4, -4, 0.1, -6, -2},
    ExpandCase{-3, -1, 0, -3.5, -0.5},
    ExpandCase{-largestFloat, -largestFloat, 0.1, -largestFloat, 0}));

// The width times the fraction is taken as it comes: an infinite width times 0 is NaN, which is neither 0 nor
// replaced, so both bounds become NaN.
TEST(KelChartAxisScaleExpandRange, InfiniteWidthTimesZeroIsNaN)
{
    double min = -std::numeric_limits<double>::max(), max = std::numeric_limits<double>::max();
    KelChartAxisScale::ExpandRange<double>(min, max, 0.0);
    EXPECT_TRUE(std::isnan(min) && std::isnan(max));
}

// An axis is in use when it is enabled and a variable with data names it (as z too). One only named as z
// loses its scale at the update, which finds no data on x or y, and never gets it back.
TEST_F(KelChartAxisScaleTest, ScalesOfAxesNotInUseAreInvalidEmptyAndStaySo)
{
    KelChartAxisContinuous& axis = continuousAxis();
    axis.inverted.set(true);
    addOn(axis, 'x', 0, 1).enabled.set(false);
    addVariable("empty", {}, {}, {axis.name(), axis.name()});
    expectInvalidAndEmpty(scaleOf(axis, true));
    addVariable("z", {0, 100}, {0, 100}, {"other", "other", axis.name()});
    KelChartAxisScale scale = scaleOf(axis);
    ASSERT_TRUE(scale.valid());
    EXPECT_EQ(scale.axisName(), "axis.x.bottom");
    EXPECT_TRUE(scale.inverted());
    scale.update(tickCount, format);
    expectInvalidAndEmpty(scale);
    addOn(axis, 'x', 0, 100);
    fixed(axis, 0, 10);
    scale.update(tickCount, format);
    expectInvalidAndEmpty(scale);
    axis.enabled.set(false);
    expectInvalidAndEmpty(scaleOf(axis, true));

    // Neither a default scale, a discrete axis only on y nor a plain axis get a scale.
    KelChartAxisScale unbound;
    unbound.update(tickCount, format);
    expectInvalidAndEmpty(unbound);
    KelChartAxisDiscrete& discrete = discreteAxis();
    addOn(discrete, 'y', 0, 4);
    expectInvalidAndEmpty(scaleOf(discrete, true));
    KelChartAxis plain(group);
    plain.enabled.set(true);
    addOn(plain, 'x', 0, 4);
    expectInvalidAndEmpty(scaleOf(plain, true));
}

// Loose, the ticks are rounded out around the data with its margin (or the fixed range). Tight, the same
// range is shown as chosen, not rounded, with the nice ticks inside it placed along it.
TEST_P(KelChartAxisScaleContinuousTest, TicksCoverTheRangeLooseOrTight)
{
    const ContinuousCase& c = GetParam();
    KelChartAxisContinuous& axis = fixed(continuousAxis(), c.fixedMin, c.fixedMax);
    const bool inverted = c.fixedMin != c.fixedMax;
    axis.inverted.set(inverted);
    for (const auto& [on, lo, hi] : c.series)
        addOn(axis, on, lo, hi);
    for (const bool tight : {false, true}) {
        SCOPED_TRACE(tight ? "tight" : "loose");
        axis.tightRange.set(tight);
        const KelChartAxisScale scale = scaleOf(axis, true);
        const NiceIntervals expected(c.lo, c.hi, int(tickCount), !tight, true, format);
        ASSERT_GT(expected.size(), 1);
        EXPECT_TRUE(scale.valid());
        if (tight) { // the case's bounds are the margins' decimal results; the scale's are computed
            EXPECT_DOUBLE_EQ(scale.min(), c.lo);
            EXPECT_DOUBLE_EQ(scale.max(), c.hi);
        } else {
            EXPECT_EQ(std::make_pair(scale.min(), scale.max()), std::make_pair(expected.min(), expected.max()));
        }
        EXPECT_EQ(scale.factor(), expected.factor);
        EXPECT_FALSE(scale.logarithmic());
        EXPECT_EQ(scale.minorTickCount(), 0u); // a linear axis has no minor ticks
        ASSERT_EQ(scale.size(), unsigned(expected.size()));
        for (int i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(scale.value(i), expected.value(i));
            EXPECT_EQ(scale.realValue(i), scale.value(i));
            EXPECT_EQ(scale.label(i).toStdString(), expected.label(i));
            const double along = (expected.value(i) - scale.min()) / (scale.max() - scale.min());
            if (tight)
                EXPECT_DOUBLE_EQ(scale.percentage(i), inverted ? 1 - along : along);
            else
                EXPECT_EQ(scale.percentage(i), expected.fraction(i, inverted));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Margins, KelChartAxisScaleContinuousTest, ::testing::Values(
    ContinuousCase{{{'x', 0, 100}}, -2, 102},                  // 2% on x
    ContinuousCase{{{'y', 0, 100}}, -5, 105},                  // 1/20 on y
    ContinuousCase{{{'b', 0, 100}}, -2, 102},                  // on x and y counts as x
    ContinuousCase{{{'y', 5, 5}}, 2.5, 7.5},                   // flat y: 5% of nothing is half its value
    ContinuousCase{{{'y', 0, 20}, {'y', 10, 30}}, -1, 31},     // y widens each variable, not the union
    ContinuousCase{{{'x', 0, 10}, {'y', 20, 40}}, -0.82, 41.82}, // union [0, 41] widened by 2%
    ContinuousCase{{{'x', -10, -10}}, -15, -5},
    ContinuousCase{{{'x', 0, 100}}, 0, 10, 0, 10},             // a fixed range wins over the data
    ContinuousCase{{{'x', 0, 100}}, -2, 102, 10, 0})); // but not an empty one

TEST_P(KelChartAxisScaleDiscreteTest, LabelsThenFillersAtSlotCentres)
{
    const DiscreteCase& c = GetParam();
    KelChartAxisDiscrete& axis = fixed(discreteAxis(), c.fixedMin, c.fixedMax);
    addOn(axis, 'x', 0, c.dataEnd);
    KelChartAxisScale scale = scaleOf(axis, true);
    EXPECT_TRUE(scale.discrete());
    EXPECT_EQ(std::vector<double>({scale.min(), scale.max(), scale.factor()}), std::vector<double>({c.min, c.max, 1}));
    ASSERT_EQ(scale.size(), unsigned(c.max - c.min));
    for (unsigned int i = 0; i < c.entries.size(); ++i) {
        const auto& [value, label, percentage] = c.entries[i];
        EXPECT_TRUE(scale.value(i) == value && scale.label(i) == label) << i;
        EXPECT_NEAR(scale.percentage(i), percentage, 1e-6) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Ranges, KelChartAxisScaleDiscreteTest, ::testing::Values(
    DiscreteCase{4, 0, 0, 0, 5, {{0, "red", 0.1}, {1, "green", 0.3}, {2, "blue", 0.5}, {3, "", 0.7}, {4, "", 0.9}}},
    DiscreteCase{4, 1, 3, 1, 3, {{1, "green", 0.25}, {2, "blue", 0.75}}}, // "red" skipped, no filler
    DiscreteCase{4, 7, 9, 0, 5, {{0, "red", 0.1}}},                       // beyond the data: ignored
    DiscreteCase{1, 0, 0, 0, 2, {{0, "red", 0.25}, {1, "green", 0.75}, {2, "blue", 1.25}}}, // every label is taken
    // All labels lie before the fixed min: the fillers start where the labels ran out, below the range.
    DiscreteCase{9, 5, 9, 5, 9,
                 {{3, "", -0.375}, {4, "", -0.125}, {5, "", 0.125}, {6, "", 0.375}, {7, "", 0.625}, {8, "", 0.875}}}));

// A view window shows fractional category positions exactly: the categories whose slot centres lie in
// it, placed relative to it, past the data and the labels on either side.
TEST_F(KelChartAxisScaleTest, AViewWindowShowsTheCategoriesInsideIt)
{
    struct Case {
        double lo, hi;
        std::vector<std::tuple<double, const char*, double>> entries;
    };
    KelChartAxisDiscrete& axis = discreteAxis();
    addOn(axis, 'x', 0, 3);
    for (const Case& c : {Case{0.25, 2.25, {{0, "red", 0.125}, {1, "green", 0.625}}}, Case{-1, 1, {{0, "red", 0.75}}},
                          Case{2.6, 4.6, {{3, "", 0.45}, {4, "", 0.95}}}}) {
        axis.viewMin.set(c.lo);
        axis.viewMax.set(c.hi);
        const KelChartAxisScale scale = scaleOf(axis, true);
        EXPECT_TRUE(scale.valid());
        EXPECT_EQ(scale.min(), c.lo);
        EXPECT_EQ(scale.max(), c.hi);
        ASSERT_EQ(scale.size(), c.entries.size()) << c.lo;
        for (unsigned int i = 0; i < c.entries.size(); ++i) {
            const auto& [value, label, percentage] = c.entries[i];
            EXPECT_TRUE(scale.value(i) == value && scale.label(i) == label) << c.lo << " " << i;
            EXPECT_NEAR(scale.percentage(i), percentage, 1e-6) << c.lo << " " << i;
        }
    }
    // An empty window leaves the range to the data.
    axis.viewMax.set(axis.viewMin.get());
    EXPECT_EQ(scaleOf(axis, true).max(), 4);
}

// Data x near the largest float, or a fixed max near the largest int, would ask for billions of fillers.
// The size stays the width of the range, saturated; reads past the stored entries give 0 and no text.
TEST_F(KelChartAxisScaleTest, DiscreteEntriesStopAtTheLimitWithOneWarning)
{
    const unsigned int limit = KelChartAxisScale::MaxDiscreteEntries;
    for (const auto& [dataEnd, fixedMax, size] :
         {std::tuple(1e38f, 0, UINT_MAX), std::tuple(3e9f, INT_MAX, 2147483647u)}) {
        KelChartAxisDiscrete& axis = fixed(discreteAxis(), 0, fixedMax);
        removeVariables();
        addOn(axis, 'x', 0, dataEnd);
        orvdebug::ScopedCapture capture(kel::debug_logger::debuglogger());
        KelChartAxisScale scale = scaleOf(axis, true);
        ASSERT_TRUE(scale.valid());
        ASSERT_EQ(scale.entryCount(), limit);
        EXPECT_EQ(scale.size(), size);
        EXPECT_EQ(scale.label(0), "red");
        EXPECT_EQ(scale.value(limit - 1), limit - 1);
        EXPECT_EQ(scale.value(limit), 0);
        EXPECT_EQ(scale.label(limit), "");
        EXPECT_FLOAT_EQ(scale.percentage(limit - 1), (limit - 0.5f) / float(scale.max()));
        EXPECT_EQ(capture.texts(orvdebug::Stream::Err),
                  std::vector<std::string>{"WARNING: discrete axis \"axis.x.top\" needs more than 1000000 entries; "
                                           "its scale keeps only the first 1000000"});
    }
}

// A logarithmic "bottom" and variables whose iterators deliver log10 along x, as the unit update
// sets them up.
class KelChartAxisScaleLogarithmicTest : public KelChartAxisScaleTest {
protected:
    KelChartAxisContinuous& logAxis()
    {
        KelChartAxisContinuous& bottom = continuousAxis();
        bottom.logarithmic.set(true);
        return bottom;
    }
    void addLogOn(const KelChartAxis& axis, std::vector<float> x)
    {
        const auto size = x.size();
        addVariable("v", std::move(x), std::vector<float>(size, 1.0f), {axis.name(), "other"})
            .variableiter.setLogarithmic(true, false, false);
    }
    static std::vector<std::string> labels(const KelChartAxisScale& scale)
    {
        std::vector<std::string> texts;
        for (unsigned int i = 0; i < scale.size(); ++i)
            texts.push_back(scale.label(i).toStdString());
        return texts;
    }
};

TEST_F(KelChartAxisScaleLogarithmicTest, SixDecadesGetPowersOfTenWithMinorsBetween)
{
    KelChartAxisContinuous& axis = logAxis();
    addLogOn(axis, {0.002f, 0.3f, 1500.0f});
    KelChartAxisScale scale = scaleOf(axis);
    scale.update(7, format);
    ASSERT_TRUE(scale.valid() && scale.logarithmic());
    EXPECT_EQ(labels(scale), (std::vector<std::string>{"0.001", "0.01", "0.1", "1", "10", "100", "1000"}));
    for (unsigned int i = 0; i < scale.size(); ++i) {
        EXPECT_EQ(scale.value(i), -3.0 + i);
        EXPECT_EQ(scale.realValue(i), std::pow(10.0, -3.0 + i));
    }
    // The 2% margin is taken in log space, then rounded out to the minor ticks around it.
    EXPECT_EQ(scale.minorTick(0).label, "0.002");
    ASSERT_GT(scale.minorTickCount(), 40u);
    const KelChartAxisScale::MinorTick& last = scale.minorTick(scale.minorTickCount() - 1);
    EXPECT_EQ(last.label, "2000");
    EXPECT_EQ(scale.max(), last.value);
    EXPECT_EQ(last.percentage, 1.0);
    EXPECT_EQ(scale.baseLine(), 0.0); // the value 1

    // Fewer ticks wanted: every other decade, the skipped ones as minors.
    scale.update(tickCount, format);
    EXPECT_EQ(labels(scale), (std::vector<std::string>{"0.0001", "0.01", "1", "100", "10000"}));
    EXPECT_EQ(scale.minorTickCount(), 4u);
    EXPECT_EQ(scale.minorTick(0).label, "0.001");
}

TEST_F(KelChartAxisScaleLogarithmicTest, UnderADecadeGetsLinearTicksOfTheRealValues)
{
    KelChartAxisContinuous& axis = logAxis();
    addLogOn(axis, {101.1f, 101.9f});
    const KelChartAxisScale scale = scaleOf(axis, true);
    ASSERT_GE(scale.size(), 2u);
    EXPECT_EQ(scale.label(0).left(4), "101.");
    EXPECT_DOUBLE_EQ(scale.value(0), std::log10(scale.realValue(0)));
    EXPECT_EQ(scale.minorTickCount(), 0u);
}

TEST_F(KelChartAxisScaleLogarithmicTest, FixedRangeIsGivenInRealValues)
{
    KelChartAxisContinuous& axis = fixed(logAxis(), 0.01, 1000);
    addLogOn(axis, {5.0f, 6.0f});
    const KelChartAxisScale scale = scaleOf(axis, true);
    EXPECT_EQ(std::make_pair(scale.min(), scale.max()), std::make_pair(-2.0, 3.0));
    EXPECT_EQ(labels(scale).front(), "0.01");

    // Zero has no logarithm: the data decide, and the host hears why.
    fixed(axis, 0, 1000);
    const KelChartAxisScale fromData = scaleOf(axis, true);
    EXPECT_LT(fromData.max(), 1.0);
    EXPECT_EQ(errors().size(), 1u);
}

// A tight logarithmic range keeps its exponents: the data's with the 2% margin, or the fixed range's, and
// only the ticks inside. A coarse stride that would skip the one power of ten inside gives way.
TEST_F(KelChartAxisScaleLogarithmicTest, TightRangeKeepsItsDecadesAndTheTicksInside)
{
    KelChartAxisContinuous& axis = logAxis();
    axis.tightRange.set(true);
    addLogOn(axis, {0.002f, 0.3f, 1500.0f});
    KelChartAxisScale scale = scaleOf(axis);
    scale.update(7, format);
    const double lo = std::log10(0.002), hi = std::log10(1500.0), margin = 0.02 * (hi - lo);
    EXPECT_NEAR(scale.min(), lo - margin, 1e-6);
    EXPECT_NEAR(scale.max(), hi + margin, 1e-6);
    EXPECT_EQ(labels(scale), (std::vector<std::string>{"0.01", "0.1", "1", "10", "100", "1000"}));
    EXPECT_DOUBLE_EQ(scale.percentage(2), -scale.min() / (scale.max() - scale.min()));
    ASSERT_GT(scale.minorTickCount(), 0u);
    EXPECT_EQ(scale.minorTick(0).label, "0.002");
    for (unsigned int i = 0; i < scale.minorTickCount(); ++i)
        EXPECT_TRUE(scale.minorTick(i).percentage >= 0 && scale.minorTick(i).percentage <= 1) << i;

    fixed(axis, 3, 50);
    scale = scaleOf(axis);
    scale.update(1, format);
    EXPECT_EQ(std::make_pair(scale.min(), scale.max()), std::make_pair(std::log10(3.0), std::log10(50.0)));
    EXPECT_EQ(labels(scale), std::vector<std::string>{"10"});
}

TEST_F(KelChartAxisScaleLogarithmicTest, NoPositiveValueLeavesTheAxisAtOneToTen)
{
    KelChartAxisContinuous& axis = logAxis();
    addLogOn(axis, {0.0f, -3.0f});
    const KelChartAxisScale scale = scaleOf(axis, true);
    ASSERT_TRUE(scale.valid());
    EXPECT_EQ(std::make_pair(scale.min(), scale.max()), std::make_pair(0.0, 1.0));
    EXPECT_EQ(labels(scale), (std::vector<std::string>{"1", "10"}));
}
