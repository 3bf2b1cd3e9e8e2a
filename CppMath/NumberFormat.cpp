#include "NumberFormat.h"

#include "DecimalDigits_p.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <system_error>

namespace Orv::Math {

namespace {

using namespace DecimalDigits;

constexpr std::int64_t FirstInexactInteger = std::int64_t(1) << 53;

// The decimal's text read by a correctly rounding parser, for the digits and exponents a single
// floating-point operation cannot round exactly.
double parsed(const Decimal& d)
{
    // 20 characters hold any int64 with its sign, 11 any int.
    char text[40] = {};
    char* end = std::to_chars(text, text + 20, d.digits).ptr;
    *end++ = 'e';
    end = std::to_chars(end, end + 11, d.exponent).ptr;
    double value = 0.0;
    if (std::from_chars(text, end, value).ec == std::errc::result_out_of_range) {
        const double magnitude = d.exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
        return d.digits < 0 ? -magnitude : magnitude;
    }
    return value;
}

// A fixed text longer than this (far beyond the double range) is written in scientific notation.
constexpr std::int64_t MaxFixedDigits = 330;

// `magnitude` without its last `count` digits, rounded half away from zero.
std::uint64_t dropDigits(std::uint64_t magnitude, std::int64_t count)
{
    if (count <= 0)
        return magnitude;
    if (count >= MaxDigits)
        return 0; // every uint64 is below half of 10^20
    const std::uint64_t unit = PowersOfTen[count];
    const std::uint64_t kept = magnitude / unit;
    const std::uint64_t rest = magnitude % unit;
    return rest >= unit - rest ? kept + 1 : kept;
}

bool prefersScientific(std::int64_t lastDigitExponent, std::int64_t largestExponent)
{
    return lastDigitExponent >= 6 || largestExponent <= -5;
}

// Runs of zeros up to this long are filled at this fixed length, which compiles to a few
// stores instead of a library call; the buffer leaves room for the overshoot.
constexpr std::int64_t ShortZeros = 32;

// Collects one text on the stack, so formatting allocates only the returned string.
class TextBuffer {
public:
    void put(char c) { m_text[m_size++] = c; }
    void zeros(std::int64_t count)
    {
        if (count <= ShortZeros)
            std::memset(m_text + m_size, '0', ShortZeros);
        else
            std::memset(m_text + m_size, '0', static_cast<std::size_t>(count));
        m_size += static_cast<std::size_t>(count);
    }
    template <typename Integer>
    void digits(Integer value)
    {
        m_size = static_cast<std::size_t>(
            std::to_chars(m_text + m_size, m_text + sizeof m_text, value).ptr - m_text);
    }
    // A point and the `count` <= 18 decimals of `fraction` < 10^count, leading zeros included:
    // the digits of 10^count + fraction but its leading 1, which the point overwrites.
    void decimals(std::uint64_t fraction, std::int64_t count)
    {
        const std::size_t point = m_size;
        digits(PowersOfTen[count] + fraction);
        m_text[point] = '.';
    }
    std::string text() const { return {m_text, m_size}; }

private:
    // Sign, MaxFixedDigits integer digits, point and MaxDecimals decimals fit (362 characters
    // at most), and the overshoot of short zeros filled at any place within them.
    char m_text[400 + ShortZeros];
    std::size_t m_size = 0;
};

// `count` is the digit count of `magnitude`.
void writeFixed(TextBuffer& out, bool negative, std::uint64_t magnitude, int count, std::int64_t exponent,
                int decimals)
{
    const std::int64_t shown = decimals < 0 ? std::max<std::int64_t>(0, -exponent) : decimals;
    if (-exponent > shown) {
        magnitude = dropDigits(magnitude, -exponent - shown);
        exponent = -shown;
        count = digitCount(magnitude);
    }
    if (negative && magnitude != 0)
        out.put('-');

    std::int64_t written = 0; // decimals written so far
    if (magnitude == 0) {
        out.put('0');
    } else if (exponent >= 0) {
        out.digits(magnitude);
        out.zeros(exponent);
    } else {
        written = -exponent;
        if (count > written) { // so written <= 18: an int64 magnitude has at most 19 digits
            const std::uint64_t unit = PowersOfTen[written];
            out.digits(magnitude / unit);
            out.decimals(magnitude % unit, written);
        } else {
            out.put('0');
            out.put('.');
            out.zeros(written - count);
            out.digits(magnitude);
        }
    }
    if (shown > written) {
        if (written == 0)
            out.put('.');
        out.zeros(shown - written);
    }
}

void writeScientific(TextBuffer& out, bool negative, std::uint64_t magnitude, std::int64_t exponent,
                     int decimals)
{
    if (magnitude == 0) {
        out.put('0');
        if (decimals > 0) {
            out.put('.');
            out.zeros(decimals);
            out.put('e');
            out.put('0');
        }
        return;
    }
    int count = digitCount(magnitude);
    std::int64_t power = exponent + count - 1;
    if (decimals >= 0 && count > decimals + 1) {
        magnitude = dropDigits(magnitude, count - (decimals + 1));
        if (digitCount(magnitude) > decimals + 1) { // rounding carried: 9.99 became 10.0
            magnitude /= 10;
            ++power;
        }
    }
    if (negative)
        out.put('-');

    count = digitCount(magnitude);
    const int shown = decimals < 0 ? count - 1 : decimals;
    const std::uint64_t unit = PowersOfTen[count - 1];
    out.digits(magnitude / unit);
    if (shown > 0) {
        out.decimals(magnitude % unit, count - 1);
        out.zeros(shown - (count - 1));
    }
    out.put('e');
    out.digits(power);
}

} // namespace

std::string NumberFormat::format(Decimal value) const
{
    const bool negative = value.digits < 0;
    // Unsigned negation is right for every int64, the most negative one included.
    const std::uint64_t magnitude =
        negative ? 0 - static_cast<std::uint64_t>(value.digits) : static_cast<std::uint64_t>(value.digits);
    const int shownDecimals = decimals < 0 ? AutomaticDecimals : std::min(decimals, MaxDecimals);
    const std::int64_t exponent = value.exponent;
    const int count = digitCount(magnitude);
    const std::int64_t largest = count - 1 + exponent;

    bool scientific = notation == Notation::Scientific;
    if (notation == Notation::Automatic)
        scientific = magnitude != 0 && prefersScientific(exponent, largest);
    const bool fixedTooLong =
        largest >= MaxFixedDigits || (shownDecimals < 0 && -exponent > MaxFixedDigits);

    TextBuffer out;
    if (scientific || fixedTooLong)
        writeScientific(out, negative, magnitude, exponent, shownDecimals);
    else
        writeFixed(out, negative, magnitude, count, exponent, shownDecimals);
    return out.text();
}

NumberFormat::Notation NumberFormat::automaticNotation(int lastDigitExponent, int largestExponent)
{
    return prefersScientific(lastDigitExponent, largestExponent) ? Notation::Scientific : Notation::Fixed;
}

double Decimal::toDouble() const
{
    // While the digits and the power of ten are both exact doubles, one multiplication or
    // division rounds once, so it gives the nearest double; that covers the everyday ticks.
    if (digits > -FirstInexactInteger && digits < FirstInexactInteger && exponent >= -LastExactPower
        && exponent <= LastExactPower) {
        const auto n = static_cast<double>(digits);
        return exponent >= 0 ? n * ExactPowersOfTen[exponent] : n / ExactPowersOfTen[-exponent];
    }
    return parsed(*this);
}

} // namespace Orv::Math
