#pragma once
// Decodes a fuzzer's byte string into the values a target needs, front to
// back. Every read succeeds: past the end it gives zeros, empty texts and
// false, so a target never has to check what is left.
//
// Numbers are drawn so that short inputs reach the interesting cases: a
// selector byte picks one of the edge values (NaN, infinities, the largest
// and smallest doubles and floats, denormals, zeros of both signs), a small
// integer, or the raw bits of the next eight bytes.
//
// Read values in statements of their own, never as two arguments of one call:
// compilers evaluate arguments in different orders, and an input found with
// clang must decode the same in the gcc replay tests.

#include <algorithm>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>

// Stops the run with a message when a property every input must keep is
// broken; libFuzzer and the replay tests both see the trap as a crash.
#define FUZZ_CHECK(cond)                                                                              \
    do {                                                                                              \
        if (!(cond))                                                                                  \
            ::fuzzFailure(#cond, __FILE__, __LINE__);                                                 \
    } while (false)

[[noreturn]] void fuzzFailure(const char* condition, const char* file, int line);

class FuzzInput {
public:
    FuzzInput(const std::uint8_t* data, std::size_t size)
        : m_data(data)
        , m_size(size)
    {
    }

    bool empty() const { return m_pos >= m_size; }
    std::size_t remaining() const { return m_size - m_pos; }

    std::uint8_t byte() { return empty() ? 0 : m_data[m_pos++]; }
    bool flag() { return (byte() & 1) != 0; }

    // A value in [lo, hi] from up to four bytes; lo when the input ran out.
    std::int64_t integer(std::int64_t lo, std::int64_t hi)
    {
        const std::uint64_t range = static_cast<std::uint64_t>(hi) - static_cast<std::uint64_t>(lo);
        std::uint64_t raw = 0;
        for (std::uint64_t span = range; span != 0; span >>= 8)
            raw = (raw << 8) | byte();
        return static_cast<std::int64_t>(static_cast<std::uint64_t>(lo)
                                         + (range == UINT64_MAX ? raw : raw % (range + 1)));
    }
    int index(int count) { return count <= 1 ? 0 : static_cast<int>(integer(0, count - 1)); }

    // Any int, with the ends of the range and small counts likely.
    int anyInt()
    {
        static constexpr int edges[] = {0, 1, -1, 2, 5, 10, 100, INT_MAX, INT_MIN, INT_MAX - 1, 1000, 1000000};
        const std::uint8_t selector = byte();
        if (selector < 96)
            return edges[selector % std::size(edges)];
        if (selector < 192)
            return static_cast<std::int8_t>(byte());
        return static_cast<int>(integer(INT_MIN, INT_MAX));
    }

    double anyDouble()
    {
        static constexpr double edges[] = {
            0.0, -0.0, 1.0, -1.0, 0.5, 10.0, 1e38, -1e38,
            std::numeric_limits<double>::quiet_NaN(), -std::numeric_limits<double>::quiet_NaN(),
            HUGE_VAL, -HUGE_VAL, DBL_MAX, -DBL_MAX, DBL_MIN, -DBL_MIN,
            std::numeric_limits<double>::denorm_min(), -std::numeric_limits<double>::denorm_min(),
            FLT_MAX, -FLT_MAX, FLT_MIN, 1e-300, 1e300, 2147483647.0,
            2147483648.0, -2147483649.0, 1e15, 1125899906842624.0, 1e-9, 1e9, 0.1, 3.0};
        const std::uint8_t selector = byte();
        if (selector < 96)
            return edges[selector % std::size(edges)];
        if (selector < 192) // small values with a fraction: step choices near whole numbers
            return static_cast<std::int16_t>(integer(0, 0xffff)) / 16.0;
        std::uint64_t bits = 0;
        for (int i = 0; i < 8; ++i)
            bits = (bits << 8) | byte();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return value;
    }

    float anyFloat()
    {
        const std::uint8_t selector = byte();
        if (selector < 16) {
            static constexpr float edges[] = {FLT_MAX, -FLT_MAX, FLT_MIN, std::numeric_limits<float>::denorm_min(),
                                              std::numeric_limits<float>::infinity(), 16777216.0f, 1e-30f, -0.0f};
            return edges[selector % std::size(edges)];
        }
        // Doubles out of float range round to infinity, which is what a host's cast does.
        return static_cast<float>(anyDouble());
    }

    // Up to `maxLength` bytes, the length taken from the first byte.
    std::string text(std::size_t maxLength)
    {
        const std::size_t length = std::min<std::size_t>(byte() % (maxLength + 1), remaining());
        std::string result(reinterpret_cast<const char*>(m_data + m_pos), length);
        m_pos += length;
        return result;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_pos = 0;
};
