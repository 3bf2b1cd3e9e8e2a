#include "LabelOffset.h"

#include "NumberFormat.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

namespace Orv::Chart {

namespace {

using Orv::Math::Decimal;
using Orv::Math::NumberFormat;

// Integers of the arithmetic stay below this, so that differences and a
// scaling by ten never overflow.
constexpr std::int64_t largest = 100000000000000000; // 10^17
constexpr int largestExponent = 400;

// The ticks as exact decimals: value i is units[i] × 10^exponent.
struct ExactTicks {
    std::vector<std::int64_t> units;
    int exponent = 0;
};

// A label as [-]digits[.digits][e[-]digits]; none when it is anything else
// or has more digits than the arithmetic keeps.
std::optional<Decimal> parsed(const QString& label)
{
    const std::string text = label.toStdString();
    std::size_t at = text.empty() || text[0] != '-' ? 0 : 1;
    Decimal number;
    bool point = false;
    bool digits = false;
    for (; at < text.size() && (text[at] == '.' || (text[at] >= '0' && text[at] <= '9')); ++at) {
        if (text[at] == '.') {
            if (point)
                return std::nullopt;
            point = true;
            continue;
        }
        if (number.digits >= largest / 10)
            return std::nullopt;
        number.digits = number.digits * 10 + (text[at] - '0');
        number.exponent -= point ? 1 : 0;
        digits = true;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        int exponent = 0;
        const char* from = text.data() + at + 1 + (at + 1 < text.size() && text[at + 1] == '+' ? 1 : 0);
        const std::from_chars_result read = std::from_chars(from, text.data() + text.size(), exponent);
        if (read.ec != std::errc() || std::abs(exponent) > largestExponent)
            return std::nullopt;
        number.exponent += exponent;
        at = static_cast<std::size_t>(read.ptr - text.data());
    }
    if (!digits || at != text.size())
        return std::nullopt;
    number.digits = text[0] == '-' ? -number.digits : number.digits;
    return number;
}

// v × 10^shift, shift >= 0; none where it would leave the arithmetic's range.
std::optional<std::int64_t> scaled(std::int64_t v, int shift)
{
    for (; shift > 0; --shift) {
        if (std::abs(v) >= largest / 10)
            return std::nullopt;
        v *= 10;
    }
    return v;
}

// The exponent of a factor that is a power of ten; none for any other.
std::optional<int> powerOfTen(double factor)
{
    if (!(factor > 0) || !std::isfinite(factor))
        return std::nullopt;
    const int exponent = static_cast<int>(std::lround(std::log10(factor)));
    if (std::abs(std::pow(10.0, exponent) - factor) > 1e-12 * factor)
        return std::nullopt;
    return exponent;
}

std::optional<ExactTicks> exactTicks(const std::vector<QString>& labels, int factorExponent)
{
    std::vector<Decimal> decimals;
    for (const QString& label : labels) {
        const std::optional<Decimal> decimal = parsed(label);
        if (!decimal)
            return std::nullopt;
        decimals.push_back({decimal->digits, decimal->exponent + factorExponent});
    }
    ExactTicks ticks;
    ticks.exponent = std::min_element(decimals.begin(), decimals.end(), [](const Decimal& a, const Decimal& b) {
                         return a.exponent < b.exponent;
                     })->exponent;
    for (const Decimal& decimal : decimals) {
        const std::optional<std::int64_t> units = scaled(decimal.digits, decimal.exponent - ticks.exponent);
        if (!units)
            return std::nullopt;
        ticks.units.push_back(*units);
    }
    return ticks;
}

std::int64_t floorDivided(std::int64_t a, std::int64_t b)
{
    return a / b - (a % b < 0 ? 1 : 0);
}

std::int64_t ceilDivided(std::int64_t a, std::int64_t b)
{
    return a / b + (a % b > 0 ? 1 : 0);
}

std::int64_t roundDivided(std::int64_t a, std::int64_t b)
{
    return floorDivided(a + b / 2, b);
}

// The roundest multiple of a power of ten that the range [lo, hi] shares:
// for the smallest power at which either all values share the digits above
// it (the offset then lies between them and zero, so the labels keep the
// sign of the values), or all lie within one unit of a multiple of it (a
// range across a round value: labels on both sides of zero). None for a
// range across zero, or one whose values share no leading digit.
std::optional<std::int64_t> sharedOffset(std::int64_t lo, std::int64_t hi)
{
    if (lo < 0 && hi > 0)
        return std::nullopt;
    for (std::int64_t unit = 10; unit <= largest; unit *= 10) {
        const bool negative = hi <= 0;
        const std::int64_t first = negative ? ceilDivided(lo, unit) : floorDivided(lo, unit);
        const std::int64_t last = negative ? ceilDivided(hi, unit) : floorDivided(hi, unit);
        if (first == last)
            return first == 0 ? std::nullopt : std::optional<std::int64_t>(first * unit);
        const std::int64_t nearest = roundDivided(lo + (hi - lo) / 2, unit) * unit;
        if (nearest != 0 && std::max(std::abs(lo - nearest), std::abs(hi - nearest)) < unit)
            return nearest;
    }
    return std::nullopt;
}

struct Labelling {
    int exponent = 0;
    std::vector<QString> labels;
    double widest = 0;
};

double widestOf(const std::vector<QString>& labels, const std::function<double(const QString&)>& width)
{
    double widest = 0;
    for (const QString& label : labels)
        widest = std::max(widest, width(label));
    return widest;
}

// The remainders in units of 10^exponent, with the decimals of the ticks' precision.
Labelling labelled(const std::vector<std::int64_t>& remainders, int precision, int exponent,
                   const std::function<double(const QString&)>& width)
{
    Labelling result{exponent, {}, 0};
    const NumberFormat format(NumberFormat::Notation::Fixed, std::max(0, exponent - precision));
    for (const std::int64_t remainder : remainders)
        result.labels.push_back(QString::fromStdString(format.format(Decimal{remainder, precision - exponent})));
    result.widest = widestOf(result.labels, width);
    return result;
}

// In the unit itself where that fits the room; else in the power of 1000
// that gives the narrowest labels, the one nearest the unit among equals.
Labelling bestLabelling(const std::vector<std::int64_t>& remainders, int precision, double room,
                        const std::function<double(const QString&)>& width)
{
    Labelling best = labelled(remainders, precision, 0, width);
    if (best.widest <= room)
        return best;
    const int lowest = 3 * static_cast<int>(std::floor(precision / 3.0));
    for (int exponent = lowest; exponent <= lowest + 18; exponent += 3) {
        Labelling candidate = labelled(remainders, precision, exponent, width);
        const bool nearer = std::abs(candidate.exponent) < std::abs(best.exponent);
        if (candidate.widest < best.widest || (candidate.widest == best.widest && nearer))
            best = std::move(candidate);
    }
    return best;
}

// The offset with its sign, in its shortest exact form.
QString offsetText(std::int64_t units, int exponent)
{
    while (units % 10 == 0) {
        units /= 10;
        ++exponent;
    }
    const QString number = QString::fromStdString(NumberFormat().format(Decimal{units, exponent}));
    return units > 0 ? QLatin1Char('+') + number : number;
}

} // namespace

LabelOffset LabelOffset::of(const std::vector<QString>& labels, double factor, double room,
                            const std::function<double(const QString&)>& width)
{
    const double widest = widestOf(labels, width);
    const std::optional<int> factorExponent = powerOfTen(factor);
    if (labels.empty() || widest <= room || !factorExponent)
        return {};
    const std::optional<ExactTicks> ticks = exactTicks(labels, *factorExponent);
    if (!ticks)
        return {};
    const auto [lo, hi] = std::minmax_element(ticks->units.begin(), ticks->units.end());
    const std::optional<std::int64_t> offset = sharedOffset(*lo, *hi);
    if (!offset)
        return {};
    std::vector<std::int64_t> remainders;
    for (const std::int64_t units : ticks->units)
        remainders.push_back(units - *offset);
    Labelling shown = bestLabelling(remainders, ticks->exponent, room, width);
    if (shown.widest >= widest)
        return {};
    LabelOffset result;
    result.text = offsetText(*offset, ticks->exponent);
    result.value = result.text.toDouble();
    result.exponent = shown.exponent;
    result.labels = std::move(shown.labels);
    return result;
}

} // namespace Orv::Chart
