#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisPair.h"
#include "KelChartAxisScale.h"
#include "KelChartVariableListCache.h"

#include <gtest/gtest.h>

#include <cmath>
#include <deque>
#include <limits>
#include <ostream>

namespace {

using Orv::Math::NiceIntervals;
using Orv::Math::NumberFormat;

constexpr double largestFloat = 3.4028234663852886e38;
constexpr unsigned int tickCount = 5;

// ---- ExpandRange -----------------------------------------------------------

struct ExpandCase {
    double min, max, fraction;
    double expectedMin, expectedMax;
};
void PrintTo(const ExpandCase& c, std::ostream* os)
{
    *os << "[" << c.min << ", " << c.max << "] by " << c.fraction;
}

class KelChartAxisScaleExpandRangeTest : public ::testing::TestWithParam<ExpandCase> {};

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
    ExpandCase{5, 5, 0.3, 2.5, 7.5},                   // no width: half of max at each end
    ExpandCase{1, 3, 0, -0.5, 4.5},                    // fraction 0 behaves the same
    ExpandCase{0, 0, 0.1, -1, 1},
    ExpandCase{0.5, 0.5, 0.1, -1, 1},
    ExpandCase{-0.5, -0.5, 0.1, -1, 1},
    ExpandCase{largestFloat, largestFloat, 0.1, 0, largestFloat},
    // Negative ranges widen by half of |max| too, and the largest negative float mirrors the positive case.
    ExpandCase{-4, -4, 0.1, -6, -2},
    ExpandCase{-3, -1, 0, -3.5, -0.5},
    ExpandCase{-largestFloat, -largestFloat, 0.1, -largestFloat, 0}));

TEST(KelChartAxisScaleExpandRange, NaNPassesThrough)
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    double min = 0, max = nan;
    KelChartAxisScale::ExpandRange(min, max, 0.1);
    EXPECT_TRUE(std::isnan(min) && std::isnan(max));
    min = 0, max = 10;
    KelChartAxisScale::ExpandRange(min, max, nan);
    EXPECT_TRUE(std::isnan(min) && std::isnan(max));
}

TEST(KelChartAxisScaleExpandRange, FloatWidensInFloat)
{
    // The width of [-FLT_MAX, FLT_MAX] overflows in float but not in double.
    float fmin = -float(largestFloat), fmax = float(largestFloat);
    KelChartAxisScale::ExpandRange(fmin, fmax, 0.1f);
    EXPECT_EQ(fmin, -std::numeric_limits<float>::infinity());
    EXPECT_EQ(fmax, std::numeric_limits<float>::infinity());

    double dmin = -largestFloat, dmax = largestFloat;
    KelChartAxisScale::ExpandRange(dmin, dmax, 0.1);
    EXPECT_DOUBLE_EQ(dmax, 1.2 * largestFloat);
}

// ---- A small chart ---------------------------------------------------------

class KelChartAxisScaleTest : public ::testing::Test {
protected:
    KelChartAxisScaleTest() { pair.rename("axis.x"); }

    KelChartVariable& addVariable(const QString& xAxis, const QString& yAxis, std::vector<float> x,
                                  std::vector<float> y)
    {
        KelChartVariable& variable = variables.emplace_back(group);
        variable.xAxis.set(xAxis);
        variable.yAxis.set(yAxis);
        variable.variableiter.setVector2Data(std::move(x), std::move(y));
        return variable;
    }
    // A variable whose two points span [lo, hi] along the axis given by `onX`.
    KelChartVariable& addOn(const KelChartAxis& axis, bool onX, float lo, float hi)
    {
        return onX ? addVariable(axis.name(), "other", {lo, hi}, {0, 0})
                   : addVariable("other", axis.name(), {0, 0}, {lo, hi});
    }

    KelChartAxisScale scaleOf(const KelChartAxis& axis)
    {
        std::vector<const KelChartVariable*> pointers;
        for (const KelChartVariable& variable : variables)
            pointers.push_back(&variable);
        cache = KelChartVariableListCache(pointers, {});
        return KelChartAxisScale(axis, cache);
    }
    KelChartAxisScale updated(const KelChartAxis& axis, bool expectValid = true)
    {
        KelChartAxisScale scale = scaleOf(axis);
        scale.update(tickCount, format);
        EXPECT_EQ(scale.valid(), expectValid);
        return scale;
    }

    KelChartAxisContinuous& continuousAxis()
    {
        return dynamic_cast<KelChartAxisContinuous&>(pair.createFirst("bottom", KelChartAxisContinuous::typeString));
    }
    KelChartAxisDiscrete& discreteAxis()
    {
        auto& axis = dynamic_cast<KelChartAxisDiscrete&>(pair.createSecond("top", KelChartAxisDiscrete::typeString));
        axis.labels.setLabels({"red", "green", "blue"});
        return axis;
    }

    KelModifiedGroup group;
    KelChartAxisPair pair{group};
    std::deque<KelChartVariable> variables;
    KelChartVariableListCache cache;
    const NumberFormat format{NumberFormat::Notation::Fixed};
};

// The scale holds exactly the ticks of the nice intervals over [lo, hi].
void expectTicksOver(KelChartAxisScale& scale, double lo, double hi, bool inverted = false)
{
    const NiceIntervals expected(lo, hi, int(tickCount), true, true, NumberFormat(NumberFormat::Notation::Fixed));
    ASSERT_GT(expected.size(), 1);
    EXPECT_EQ(scale.min(), expected.min());
    EXPECT_EQ(scale.max(), expected.max());
    EXPECT_EQ(scale.factor(), expected.factor);
    ASSERT_EQ(scale.size(), unsigned(expected.size()));
    for (int i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(scale.value(i), expected.value(i));
        EXPECT_EQ(scale.label(i).toStdString(), expected.label(i));
        EXPECT_EQ(scale.percentage(i), expected.fraction(i, inverted));
    }
}

void expectEmpty(KelChartAxisScale& scale)
{
    EXPECT_EQ(scale.min(), 0.0);
    EXPECT_EQ(scale.max(), 0.0);
    EXPECT_EQ(scale.factor(), 1.0);
    EXPECT_EQ(scale.size(), 0u);
}

} // namespace

// ---- Construction ----------------------------------------------------------

TEST_F(KelChartAxisScaleTest, DefaultScaleIsInvalidAndStaysSo)
{
    KelChartAxisScale scale;
    scale.update(tickCount, format);
    EXPECT_FALSE(scale.valid());
    EXPECT_FALSE(scale.discrete());
    EXPECT_EQ(scale.axisName(), QString());
    expectEmpty(scale);
}

TEST_F(KelChartAxisScaleTest, AxisIsInUseWhenEnabledAndNamedByAValidVariable)
{
    KelChartAxisContinuous& axis = continuousAxis();
    axis.inverted.set(true);
    KelChartVariable& variable = addVariable("other", "other", {0, 1}, {0, 1});
    variable.zAxis.set(axis.name());
    KelChartAxisScale scale = scaleOf(axis);
    EXPECT_TRUE(scale.valid());
    EXPECT_EQ(scale.axisName(), "axis.x.bottom");
    EXPECT_TRUE(scale.inverted());
    EXPECT_FALSE(scale.discrete());

    axis.enabled.set(false);
    EXPECT_FALSE(scaleOf(axis).valid());
}

TEST_F(KelChartAxisScaleTest, VariablesWithoutDataDoNotCount)
{
    KelChartAxisContinuous& axis = continuousAxis();
    addOn(axis, true, 0, 1).enabled.set(false);
    addVariable(axis.name(), axis.name(), {}, {});
    addVariable("other", "other", {0, 1}, {0, 1});
    KelChartAxisScale scale = scaleOf(axis);
    EXPECT_FALSE(scale.valid());
    EXPECT_EQ(scale.axisName(), QString());
}

// ---- Continuous axes -------------------------------------------------------

namespace {

struct Series {
    bool onX;
    float lo, hi;
};
struct DataRangeCase {
    std::vector<Series> series;
    double lo, hi; // the range the ticks are chosen for
};
void PrintTo(const DataRangeCase& c, std::ostream* os)
{
    for (const Series& s : c.series)
        *os << (s.onX ? "x[" : "y[") << s.lo << ", " << s.hi << "] ";
    *os << "gives [" << c.lo << ", " << c.hi << "]";
}

class KelChartAxisScaleDataRangeTest : public KelChartAxisScaleTest,
                                       public ::testing::WithParamInterface<DataRangeCase> {};

} // namespace

TEST_P(KelChartAxisScaleDataRangeTest, TicksCoverTheDataWithItsMargin)
{
    KelChartAxisContinuous& axis = continuousAxis();
    for (const Series& s : GetParam().series)
        addOn(axis, s.onX, s.lo, s.hi);
    KelChartAxisScale scale = updated(axis);
    expectTicksOver(scale, GetParam().lo, GetParam().hi);
}

INSTANTIATE_TEST_SUITE_P(Margins, KelChartAxisScaleDataRangeTest, ::testing::Values(
    DataRangeCase{{{true, 0, 100}}, -2, 102},                  // 2% on x
    DataRangeCase{{{false, 0, 100}}, -5, 105},                 // 1/20 on y
    DataRangeCase{{{false, 5, 5}}, 2.5, 7.5},                  // flat y: 5% of nothing is half its value
    DataRangeCase{{{false, 0, 20}, {false, 10, 30}}, -1, 31},  // y widens each variable, not the union
    DataRangeCase{{{true, 0, 10}, {false, 20, 40}}, -0.82, 41.82}, // union [0, 41] widened by 2%
    DataRangeCase{{{true, -10, -10}}, -15, -5}));

TEST_F(KelChartAxisScaleTest, VariableOnXAndYCountsAsX)
{
    KelChartAxisContinuous& axis = continuousAxis();
    addVariable(axis.name(), axis.name(), {0, 100}, {500, 600});
    KelChartAxisScale scale = updated(axis);
    expectTicksOver(scale, -2, 102);
}

TEST_F(KelChartAxisScaleTest, FixedRangeWinsOverData)
{
    KelChartAxisContinuous& axis = continuousAxis();
    axis.inverted.set(true);
    addOn(axis, true, 0, 100);
    axis.autoScale.set(false);
    axis.min.set(0);
    axis.max.set(10);
    KelChartAxisScale scale = updated(axis);
    expectTicksOver(scale, 0, 10, true);

    axis.min.set(10);
    axis.max.set(0);
    scale = updated(axis);
    expectTicksOver(scale, -2, 102, true);
}

TEST_F(KelChartAxisScaleTest, NoDataOnXOrYLeavesAnInvalidEmptyScale)
{
    KelChartAxisContinuous& axis = continuousAxis();
    addVariable("other", "other", {0, 100}, {0, 100}).zAxis.set(axis.name());
    KelChartAxisScale scale = scaleOf(axis);
    ASSERT_TRUE(scale.valid());
    scale.update(tickCount, format);
    EXPECT_FALSE(scale.valid());
    expectEmpty(scale);

    // Invalid for good: neither new data nor a fixed range bring it back.
    addOn(axis, true, 0, 100);
    axis.autoScale.set(false);
    axis.max.set(10);
    scale.update(tickCount, format);
    EXPECT_FALSE(scale.valid());
    EXPECT_EQ(scale.size(), 0u);
}

// ---- Discrete axes ---------------------------------------------------------

namespace {

struct Category {
    double value;
    const char* label;
    double percentage;
};
struct DiscreteCase {
    float dataEnd;       // the data's x run from 0 to this
    int fixedMin, fixedMax; // a fixed range, when they differ
    double min, max;
    std::vector<Category> entries;
};
void PrintTo(const DiscreteCase& c, std::ostream* os)
{
    *os << "x[0, " << c.dataEnd << "] fixed [" << c.fixedMin << ", " << c.fixedMax << ")";
}

class KelChartAxisScaleDiscreteTest : public KelChartAxisScaleTest,
                                      public ::testing::WithParamInterface<DiscreteCase> {};

} // namespace

TEST_P(KelChartAxisScaleDiscreteTest, LabelsThenFillersAtSlotCentres)
{
    const DiscreteCase& c = GetParam();
    KelChartAxisDiscrete& axis = discreteAxis();
    addOn(axis, true, 0, c.dataEnd);
    axis.autoScale.set(c.fixedMin == c.fixedMax);
    axis.min.set(c.fixedMin);
    axis.max.set(c.fixedMax);
    KelChartAxisScale scale = updated(axis);
    EXPECT_TRUE(scale.discrete());
    EXPECT_EQ(scale.factor(), 1.0);
    EXPECT_EQ(scale.min(), c.min);
    EXPECT_EQ(scale.max(), c.max);
    ASSERT_EQ(scale.size(), unsigned(c.max - c.min));
    for (unsigned int i = 0; i < c.entries.size(); ++i) {
        EXPECT_EQ(scale.value(i), c.entries[i].value) << i;
        EXPECT_EQ(scale.label(i), c.entries[i].label) << i;
        EXPECT_NEAR(scale.percentage(i), c.entries[i].percentage, 1e-6) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Ranges, KelChartAxisScaleDiscreteTest, ::testing::Values(
    DiscreteCase{4, 0, 0, 0, 5, {{0, "red", 0.1}, {1, "green", 0.3}, {2, "blue", 0.5}, {3, "", 0.7}, {4, "", 0.9}}},
    DiscreteCase{4, 1, 3, 1, 3, {{1, "green", 0.25}, {2, "blue", 0.75}}}, // "red" skipped, no filler
    DiscreteCase{4, 7, 9, 0, 5, {{0, "red", 0.1}}},                       // beyond the data: ignored
    DiscreteCase{1, 0, 0, 0, 2, {{0, "red", 0.25}, {1, "green", 0.75}, {2, "blue", 1.25}}})); // every label is taken

TEST_F(KelChartAxisScaleTest, DiscreteAxisOnlyOnYIsInvalid)
{
    KelChartAxisDiscrete& axis = discreteAxis();
    addOn(axis, false, 0, 4);
    KelChartAxisScale scale = updated(axis, false);
    expectEmpty(scale);
}

TEST_F(KelChartAxisScaleTest, PlainAxisGetsAnInvalidScale)
{
    KelChartAxis axis(group);
    axis.enabled.set(true);
    addOn(axis, true, 0, 4);
    KelChartAxisScale scale = updated(axis, false);
    expectEmpty(scale);
    EXPECT_FALSE(scale.discrete());
}

// ---- Base line -------------------------------------------------------------

namespace {

struct BaseLineCase {
    double min, max, baseLine;
};
void PrintTo(const BaseLineCase& c, std::ostream* os)
{
    *os << "[" << c.min << ", " << c.max << "]";
}

class KelChartAxisScaleBaseLineTest : public KelChartAxisScaleTest, public ::testing::WithParamInterface<BaseLineCase> {};

} // namespace

TEST_P(KelChartAxisScaleBaseLineTest, IsTheValueNearestToZero)
{
    KelChartAxisContinuous& axis = continuousAxis();
    addOn(axis, true, 0, 1);
    axis.autoScale.set(false);
    axis.min.set(GetParam().min);
    axis.max.set(GetParam().max);
    KelChartAxisScale scale = updated(axis);
    ASSERT_EQ(scale.min(), GetParam().min);
    ASSERT_EQ(scale.max(), GetParam().max);
    EXPECT_EQ(scale.baseLine(), GetParam().baseLine);
}

INSTANTIATE_TEST_SUITE_P(Ranges, KelChartAxisScaleBaseLineTest, ::testing::Values(
    BaseLineCase{2, 8, 2}, BaseLineCase{-8, -2, -2}, BaseLineCase{-3, 5, 0}));
