#pragma once
// Stable ordering of doubles by value without comparison sorting: each value
// becomes a 64-bit key whose unsigned order is the values' order, and an LSD
// radix sort over the keys (stable by construction) gives the positions in
// ascending order. Equal values keep their input order; -0.0 and +0.0 are
// equal; NaN goes after everything, +infinity included.

#include <array>
#include <cstdint>
#include <cstring>
#include <numeric>
#include <vector>

namespace KelStableOrder {

inline std::uint64_t key(double value)
{
    constexpr std::uint64_t sign = std::uint64_t(1) << 63;
    if (value != value)
        return ~std::uint64_t(0);
    if (value == 0.0)
        value = 0.0;
    std::uint64_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    // Positive values count up from the sign bit, negative ones down from it.
    // Subtracting the magnitude rather than flipping every bit keeps trailing
    // zero bits zero: values that came from floats have 29 of them, so the low
    // digits of all keys agree and the sort skips those passes.
    return (bits & sign) ? sign - (bits & ~sign) : (bits | sign);
}

// Positions 0..n-1 of `keys`, sorted by key; equal keys keep their order.
template <class Index>
std::vector<Index> byKey(std::vector<std::uint64_t> keys)
{
    constexpr int digitBits = 8;
    constexpr int digitCount = 64 / digitBits;
    constexpr std::size_t buckets = std::size_t(1) << digitBits;
    const std::size_t n = keys.size();

    std::vector<std::array<std::size_t, buckets>> counts(digitCount);
    for (const std::uint64_t k : keys)
        for (int d = 0; d < digitCount; ++d)
            ++counts[d][(k >> (d * digitBits)) & (buckets - 1)];

    std::vector<Index> order(n);
    std::iota(order.begin(), order.end(), Index(0));
    std::vector<std::uint64_t> keysOut(n);
    std::vector<Index> orderOut(n);
    for (int d = 0; d < digitCount; ++d) {
        const int shift = d * digitBits;
        auto& count = counts[d];
        if (n == 0 || count[(keys[0] >> shift) & (buckets - 1)] == n)
            continue; // every key has the same digit here: the pass would change nothing
        std::size_t offset = 0;
        for (std::size_t& c : count) {
            const std::size_t here = c;
            c = offset;
            offset += here;
        }
        for (std::size_t i = 0; i < n; ++i) {
            const std::size_t slot = count[(keys[i] >> shift) & (buckets - 1)]++;
            keysOut[slot] = keys[i];
            orderOut[slot] = order[i];
        }
        keys.swap(keysOut);
        order.swap(orderOut);
    }
    return order;
}

} // namespace KelStableOrder
