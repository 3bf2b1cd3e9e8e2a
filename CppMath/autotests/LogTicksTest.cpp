#include "LogTicks.h"

#include "LabelValue.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <iomanip>
#include <random>
#include <limits>
#include <regex>
#include <string>
#include <vector>

using Orv::Math::LogTicks;
using Orv::Math::NumberFormat;
using Regime = LogTicks::Regime;

namespace {

struct RangeCase {
    const char* name;
    double lo; // real values
    double hi;
    int count;
    Regime regime;
};

std::ostream& operator<<(std::ostream& os, const RangeCase& c)
{
    return os << c.name;
}

// The real value a label stands for, read back as a parser reads the text.
double labelValue(const std::string& label, double factor)
{
    return LabelValue::value(label, static_cast<int>(std::lround(std::log10(factor))));
}

// Texts such as "0.30000000000000004" or "9.999999999e-8" betray binary noise.
bool looksClean(const std::string& label)
{
    static const std::regex number(R"(-?\d+(\.\d+)?(e-?\d+)?|(\d×)?10(⁻)?[⁰¹²³⁴⁵⁶⁷⁸⁹]+)");
    return std::regex_match(label, number) && label.find("00000") == std::string::npos
        && label.find("99999") == std::string::npos;
}

class LogTicksRanges : public testing::TestWithParam<RangeCase> {
protected:
    LogTicks ticks()
    {
        const RangeCase& c = GetParam();
        return LogTicks(std::log10(c.lo), std::log10(c.hi), c.count, NumberFormat());
    }
};

TEST_P(LogTicksRanges, MajorsAreLabelledPowersOrNiceValuesCoveringTheRange)
{
    const RangeCase& c = GetParam();
    const LogTicks t = ticks();
    ASSERT_EQ(t.regime(), c.regime);
    ASSERT_GE(t.size(), 2);
    EXPECT_LE(t.min(), std::log10(c.lo) + 1e-9);
    EXPECT_GE(t.max(), std::log10(c.hi) - 1e-9);
    for (int i = 0; i < t.size(); ++i) {
        const LogTicks::Tick& tick = t.major(i);
        SCOPED_TRACE(tick.label);
        ASSERT_TRUE(std::isfinite(tick.position) && std::isfinite(tick.value));
        EXPECT_GE(tick.position, t.min() - 1e-9);
        EXPECT_LE(tick.position, t.max() + 1e-9);
        if (i > 0) {
            EXPECT_LT(t.major(i - 1).position, tick.position);
        }
        EXPECT_TRUE(looksClean(tick.label));
        EXPECT_EQ(labelValue(tick.label, t.factor()), tick.value);
        if (c.regime == Regime::Decades) {
            EXPECT_EQ(tick.position, std::round(tick.position));
            EXPECT_EQ(tick.value, std::strtod(("1e" + std::to_string(static_cast<int>(tick.position))).c_str(), nullptr));
            EXPECT_EQ(static_cast<int>(tick.position) % t.decadeStride(), 0);
        }
    }
}

TEST_P(LogTicksRanges, MinorsLieBetweenMajorsInsideTheRange)
{
    const LogTicks t = ticks();
    for (int i = 0; i < t.minorCount(); ++i) {
        const LogTicks::Tick& minor = t.minor(i);
        SCOPED_TRACE(minor.label);
        EXPECT_TRUE(looksClean(minor.label));
        EXPECT_GE(minor.position, t.min() - 1e-9);
        EXPECT_LE(minor.position, t.max() + 1e-9);
        // A subnormal value keeps only a few digits; its position stays the exact one.
        if (minor.value >= std::numeric_limits<double>::min()) {
            EXPECT_NEAR(minor.position, std::log10(minor.value), 1e-12 * std::fabs(minor.position) + 1e-15);
        }
        for (int j = 0; j < t.size(); ++j)
            EXPECT_NE(t.major(j).position, minor.position);
    }
}

const RangeCase ranges[] = {
    {"PressureInKilopascal", 101.1, 101.9, 5, Regime::Linear},
    {"PressureInPascal", 101130, 101870, 5, Regime::Linear},
    {"UnderADecadeStraddlingOne", 0.6, 3.0, 5, Regime::Linear},
    {"UnderADecadeSmall", 2.1e-7, 8.7e-7, 5, Regime::Linear},
    {"OneDecadeExactly", 1, 10, 5, Regime::Decades},
    {"AFewDecades", 3, 4000, 5, Regime::Decades},
    {"SixDecades", 0.002, 1500, 6, Regime::Decades},
    {"NegativeExponents", 3e-9, 2e-4, 5, Regime::Decades},
    {"StraddlingOne", 0.05, 30, 5, Regime::Decades},
    {"HundredsOfDecades", 1e-150, 1e150, 5, Regime::Decades},
    {"EndsOfTheDoubles", 1e-300, 1e300, 5, Regime::Decades},
    {"SmallestNormal", 2.3e-308, 1e-290, 4, Regime::Decades},
    {"Subnormal", 5e-324, 1e-300, 3, Regime::Decades},
    {"LargestDouble", 1e290, 1.7e308, 4, Regime::Decades},
    {"ManyTicksWanted", 1, 1e6, 50, Regime::Decades},
    {"OneTickWanted", 1, 1e6, 1, Regime::Decades},
};

INSTANTIATE_TEST_SUITE_P(, LogTicksRanges, testing::ValuesIn(ranges),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(LogTicks, StrideGivesAboutTheWantedCount)
{
    const LogTicks t(-150, 150, 6, NumberFormat());
    EXPECT_EQ(t.decadeStride(), 50);
    EXPECT_EQ(t.size(), 7);
    EXPECT_EQ(t.label(0), "10⁻¹⁵⁰");
    EXPECT_EQ(t.label(6), "10¹⁵⁰");
    EXPECT_EQ(t.minorCount(), 0);
}

TEST(LogTicks, AFewDecadesHaveMinorsAndRoundToThem)
{
    const LogTicks t(std::log10(3.0), std::log10(4000.0), 5, NumberFormat());
    EXPECT_EQ(t.decadeStride(), 1);
    std::vector<std::string> majors;
    for (int i = 0; i < t.size(); ++i)
        majors.push_back(t.label(i));
    EXPECT_EQ(majors, (std::vector<std::string>{"10", "100", "1000"}));
    EXPECT_DOUBLE_EQ(t.min(), std::log10(3.0));
    EXPECT_DOUBLE_EQ(t.max(), std::log10(4000.0));
    EXPECT_EQ(t.minor(0).label, "3");
    EXPECT_EQ(t.minor(t.minorCount() - 1).label, "4000");
    EXPECT_EQ(t.minorCount(), 7 + 8 + 8 + 3);
}

TEST(LogTicks, TooFewMajorsInsideTheMinorsFallBackToWholeDecades)
{
    const LogTicks t(std::log10(2.0), std::log10(30.0), 5, NumberFormat());
    EXPECT_EQ(t.min(), 0.0);
    EXPECT_EQ(t.max(), 2.0);
    EXPECT_EQ(t.size(), 3);
}

TEST(LogTicks, LinearTicksNeverReachZero)
{
    // Loose linear ticks of 0.6..3 would start at 0, which has no logarithm.
    const LogTicks t(std::log10(0.6), std::log10(3.0), 3, NumberFormat());
    ASSERT_EQ(t.regime(), Regime::Linear);
    EXPECT_GT(t.major(0).value, 0.0);
    EXPECT_DOUBLE_EQ(t.min(), std::log10(0.6));
}

TEST(LogTicks, LinearTicksKeepTheCommonFactor)
{
    const LogTicks t(std::log10(101130.0), std::log10(101870.0), 4, NumberFormat());
    EXPECT_EQ(t.factor(), 1000.0);
    EXPECT_EQ(t.label(0).substr(0, 4), "101.");
}

TEST(LogTicks, OneNotationPerAxis)
{
    const LogTicks fixed(-2, 3, 5, NumberFormat());
    EXPECT_EQ(fixed.label(0), "0.01");
    EXPECT_EQ(fixed.label(fixed.size() - 1), "1000");
    const LogTicks scientific(-7, 0, 7, NumberFormat());
    EXPECT_EQ(scientific.label(0), "10⁻⁷");
    EXPECT_EQ(scientific.label(scientific.size() - 1), "10⁰");
    const LogTicks minors(5, 7, 2, NumberFormat());
    ASSERT_EQ(minors.decadeStride(), 1);
    EXPECT_EQ(minors.minorLabel(0), "2×10⁵");
    // A notation the caller chose stays.
    const LogTicks chosen(-7, 0, 7, NumberFormat(NumberFormat::Notation::Scientific));
    EXPECT_EQ(chosen.label(0), "1e-7");
}

TEST(LogTicks, InvertedFractions)
{
    const LogTicks t(0, 2, 2, NumberFormat());
    EXPECT_EQ(t.fraction(t.major(0).position, false), 0.0);
    EXPECT_EQ(t.fraction(t.major(0).position, true), 1.0);
    EXPECT_EQ(t.fraction(t.major(1).position, false), 0.5);
}

TEST(LogTicks, PositionsBeyondTheDoublesStillGetTwoMajors)
{
    // Only positions, never values, can lie out there: ticks come from the decades doubles hold.
    for (const int count : {0, 1, 5, 1000}) {
        const LogTicks t(-106.1, 1105.1, count, NumberFormat());
        ASSERT_GE(t.size(), 2);
        EXPECT_LE(t.min(), -106.1);
        EXPECT_GE(t.max(), 1105.1);
        EXPECT_LE(t.major(t.size() - 1).position, LogTicks::MaxExponent);
    }
}

TEST(LogTicks, DegenerateRangesAreEmpty)
{
    const double nan = std::nan("");
    const double inf = HUGE_VAL;
    for (const auto& [lo, hi] : {std::pair{1.0, 1.0}, {2.0, 1.0}, {nan, 1.0}, {0.0, inf}, {-inf, 0.0}}) {
        const LogTicks t(lo, hi, 5, NumberFormat());
        EXPECT_EQ(t.regime(), Regime::Empty);
        EXPECT_EQ(t.size(), 0);
        EXPECT_EQ(t.minorCount(), 0);
    }
}

} // namespace

// Logarithmic axes from 1e-320 to 1e308, a tenth of a decade to 600 decades wide: every major and
// minor tick is the double nearest its label times the factor.
TEST(LogTicks, SweepTickValuesAreTheirLabelsExactly)
{
    std::mt19937_64 random(20261125);
    std::uniform_real_distribution<double> low(-320.0, 308.0), width(-1.0, 2.8);
    std::uniform_int_distribution<int> count(2, 12);
    int failures = 0, ticks = 0;
    const auto check = [&](const LogTicks::Tick& tick, double factor) {
        const int factorExponent = static_cast<int>(std::lround(std::log10(factor)));
        const std::string text = LabelValue::decimalText(tick.label, factorExponent);
        ++ticks;
        if (tick.value != std::strtod(text.c_str(), nullptr) && ++failures <= 10)
            ADD_FAILURE() << std::setprecision(17) << "tick '" << tick.label << "' read as " << text << " is "
                          << tick.value;
    };
    for (int n = 0; n < 20000 && failures < 10; ++n) {
        const double lo = low(random), hi = std::min(lo + std::pow(10.0, width(random)), 308.25);
        const LogTicks t(lo, hi, count(random), NumberFormat());
        for (int i = 0; i < t.size(); ++i)
            check(t.major(i), t.factor());
        for (int i = 0; i < t.minorCount(); ++i)
            check(t.minor(i), t.factor());
    }
    EXPECT_GT(ticks, 50000);
}
