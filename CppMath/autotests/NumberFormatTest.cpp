#include "NumberFormat.h"

#include <gtest/gtest.h>

#include <limits>

using namespace Orv::Math;
using Notation = NumberFormat::Notation;

TEST(NumberFormat, WritesTheExactDecimal)
{
    const NumberFormat fixed(Notation::Fixed), scientific(Notation::Scientific);
    const struct {
        Decimal value;
        NumberFormat format;
        const char* text;
    } cases[] = {
        // Automatic: the number's own precision; scientific only for long runs of zeros (the same rule
        // as automaticNotation, which NiceIntervals applies to a whole axis).
        {{3, -1}, {}, "0.3"}, {{150, -2}, {}, "1.50"}, {{0, -2}, {}, "0.00"}, {{-5, -4}, {}, "-0.0005"},
        {{25, -6}, {}, "2.5e-5"}, {{15, 5}, {}, "1500000"}, {{10, 6}, {}, "1.0e7"}, {{0, 9}, {}, "0"},
        {{25, -8}, fixed, "0.00000025"}, {{1, 400}, fixed, "1e400"},
        {{std::numeric_limits<std::int64_t>::min(), 0}, fixed, "-9223372036854775808"},
        // Rounds the decimal half away from zero, not its nearest double; no "-0".
        {{15, -1}, NumberFormat(Notation::Fixed, 0), "2"}, {{-25, -1}, NumberFormat(Notation::Fixed, 0), "-3"},
        {{-4, -3}, NumberFormat(Notation::Fixed, 2), "0.00"},
        {{1, 0}, NumberFormat(Notation::Fixed, 1000), "1.000000000000000000000000000000"},
        {{1500, 0}, scientific, "1.500e3"}, {{-12, -8}, scientific, "-1.2e-7"}, {{0, 3}, scientific, "0"},
        {{9996, 0}, NumberFormat(Notation::Scientific, 2), "1.00e4"},
        {{0, 3}, NumberFormat(Notation::Scientific, 1), "0.0e0"}};
    for (const auto& c : cases)
        EXPECT_EQ(c.format.format(c.value), c.text) << c.value.digits << "e" << c.value.exponent;
}
