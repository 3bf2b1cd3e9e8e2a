#pragma once
// Powers of ten and digit counts shared by the number formatting and the tick search.

#include <cstdint>

namespace Orv::Math::DecimalDigits {

inline constexpr std::uint64_t PowersOfTen[] = {
    1ull,
    10ull,
    100ull,
    1000ull,
    10000ull,
    100000ull,
    1000000ull,
    10000000ull,
    100000000ull,
    1000000000ull,
    10000000000ull,
    100000000000ull,
    1000000000000ull,
    10000000000000ull,
    100000000000000ull,
    1000000000000000ull,
    10000000000000000ull,
    100000000000000000ull,
    1000000000000000000ull,
    10000000000000000000ull,
};
// Digits of the largest uint64.
inline constexpr int MaxDigits = 20;

// The powers of ten that are exact doubles.
inline constexpr double ExactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                              1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                              1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr int LastExactPower = 22;

// The decimal digits of value, 1 for 0. From the bit length, without a loop whose length would
// vary with the number: the length times log10(2) (1233 / 4096, exact enough for 64 bits) is
// the digit count or one less.
inline int digitCount(std::uint64_t value)
{
    const std::uint64_t nonZero = value | 1; // 0 has one digit, as 1 has
    const int bits = 64 - __builtin_clzll(nonZero);
    const int guess = (bits * 1233) >> 12; // at most 19
    return guess + (nonZero >= PowersOfTen[guess] ? 1 : 0);
}

} // namespace Orv::Math::DecimalDigits
