#pragma once
// How numbers, axis labels in particular, are written as text.

#include "OrvCppMathExport.h"

#include <cstdint>
#include <string>

namespace Orv::Math {

// The exact decimal number digits × 10^exponent. The exponent is also its precision:
// {150, -2} is 1.50 and is written with two decimals unless a format asks otherwise.
struct ORV_CPPMATH_EXPORT Decimal {
    std::int64_t digits = 0;
    int exponent = 0;

    // The double nearest the number, as a correctly rounding parser reads its text ("3e45" is
    // 3e45, not 3 × 10^45 rounded twice); 0 or infinite, with its sign, beyond the doubles.
    [[nodiscard]] double toDouble() const;
};

// A value class: how many decimals and which notation. Written from exact decimals, so a
// text never shows binary float noise ("0.3", not "0.30000000000000004") and zero never
// has a sign ("0", not "-0").
class ORV_CPPMATH_EXPORT NumberFormat {
public:
    enum class Notation {
        // Fixed, unless that would end in six or more zeros before the point (from 1e6 on,
        // in steps of a million or more) or start with "0.0000" (below 1e-4).
        Automatic,
        // 1500, 0.25
        Fixed,
        // 1.5e3, 2.5e-1: one digit before the point, exponent without '+' or leading zeros.
        Scientific,
    };

    // The `decimals` that means: all the digits the number's precision has.
    static constexpr int AutomaticDecimals = -1;
    // Larger requests are clamped, to keep every text short.
    static constexpr int MaxDecimals = 30;

    // Digits after the decimal point (of the mantissa, in scientific notation). When the number
    // has more, it is rounded half away from zero; when it has fewer, zeros are appended.
    // Negative: automatic.
    int decimals = AutomaticDecimals;
    Notation notation = Notation::Automatic;

    constexpr NumberFormat() = default;
    constexpr explicit NumberFormat(Notation notation, int decimals = AutomaticDecimals)
        : decimals(decimals), notation(notation)
    {
    }

    bool operator==(const NumberFormat& o) const
    {
        return decimals == o.decimals && notation == o.notation;
    }
    bool operator!=(const NumberFormat& o) const { return !(*this == o); }

    std::string format(Decimal value) const;

    // The notation Automatic stands for, for numbers whose last digit is at 10^lastDigitExponent
    // and whose largest magnitude lies in [10^largestExponent, 10^(largestExponent + 1)).
    // Deciding once for a whole series keeps the labels of one axis in one notation.
    static Notation automaticNotation(int lastDigitExponent, int largestExponent);
};

} // namespace Orv::Math
