#include "NumberFormat.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Orv::Math;
using Notation = NumberFormat::Notation;

namespace {

struct FormatCase {
    Decimal value;
    NumberFormat format;
    const char* text;
};

void PrintTo(const FormatCase& c, std::ostream* os)
{
    *os << c.value.digits << "e" << c.value.exponent << " -> " << c.text;
}

class Formatting : public testing::TestWithParam<FormatCase> {};

} // namespace

TEST_P(Formatting, WritesTheExactDecimal)
{
    const FormatCase c = GetParam();
    EXPECT_EQ(c.format.format(c.value), c.text);
}

INSTANTIATE_TEST_SUITE_P(
    Automatic, Formatting,
    testing::Values(FormatCase{{3, -1}, {}, "0.3"}, FormatCase{{150, -2}, {}, "1.50"},
                    FormatCase{{0, -2}, {}, "0.00"}, FormatCase{{-5, -4}, {}, "-0.0005"},
                    FormatCase{{1, -4}, {}, "0.0001"}, FormatCase{{25, -6}, {}, "2.5e-5"},
                    FormatCase{{15, 5}, {}, "1500000"}, FormatCase{{3, 6}, {}, "3e6"},
                    FormatCase{{10, 6}, {}, "1.0e7"}, FormatCase{{0, 9}, {}, "0"}));

INSTANTIATE_TEST_SUITE_P(
    Fixed, Formatting,
    testing::Values(FormatCase{{25, 6}, NumberFormat(Notation::Fixed), "25000000"},
                    FormatCase{{25, -8}, NumberFormat(Notation::Fixed), "0.00000025"},
                    FormatCase{{150, -2}, NumberFormat(Notation::Fixed, 1), "1.5"},
                    // Rounds the decimal half away from zero, not its nearest double.
                    FormatCase{{15, -1}, NumberFormat(Notation::Fixed, 0), "2"},
                    FormatCase{{-25, -1}, NumberFormat(Notation::Fixed, 0), "-3"},
                    FormatCase{{-4, -3}, NumberFormat(Notation::Fixed, 2), "0.00"},
                    FormatCase{{std::numeric_limits<std::int64_t>::min(), 0}, NumberFormat(Notation::Fixed),
                               "-9223372036854775808"},
                    FormatCase{{1, 400}, NumberFormat(Notation::Fixed), "1e400"}));

INSTANTIATE_TEST_SUITE_P(
    Scientific, Formatting,
    testing::Values(FormatCase{{1500, 0}, NumberFormat(Notation::Scientific), "1.500e3"},
                    FormatCase{{1500, 0}, NumberFormat(Notation::Scientific, 1), "1.5e3"},
                    FormatCase{{9996, 0}, NumberFormat(Notation::Scientific, 2), "1.00e4"},
                    FormatCase{{-12, -8}, NumberFormat(Notation::Scientific), "-1.2e-7"},
                    FormatCase{{0, 3}, NumberFormat(Notation::Scientific), "0"},
                    FormatCase{{0, 3}, NumberFormat(Notation::Scientific, 1), "0.0e0"}));

TEST(NumberFormat, DefaultIsAutomaticAndDecimalsAreClamped)
{
    const NumberFormat format;
    EXPECT_EQ(format, NumberFormat(Notation::Automatic, NumberFormat::AutomaticDecimals));
    EXPECT_NE(format, NumberFormat(Notation::Fixed));
    const std::string text = NumberFormat(Notation::Fixed, 1000).format({1, 0});
    EXPECT_EQ(text, "1." + std::string(NumberFormat::MaxDecimals, '0'));
}

TEST(NumberFormat, AutomaticNotationAvoidsLongRunsOfZeros)
{
    EXPECT_EQ(NumberFormat::automaticNotation(0, 6), Notation::Fixed);       // 1000001
    EXPECT_EQ(NumberFormat::automaticNotation(6, 8), Notation::Scientific);  // 300000000
    EXPECT_EQ(NumberFormat::automaticNotation(-6, -4), Notation::Fixed);     // 0.000123
    EXPECT_EQ(NumberFormat::automaticNotation(-6, -5), Notation::Scientific); // 0.000012
}
