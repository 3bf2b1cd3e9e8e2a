#include "NiceIntervals.h"

#include "DecimalDigits_p.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>

namespace Orv::Math {

namespace {

// A search takes a few hundred nanoseconds, much of it in small helpers called from several
// places; those on its hot path are declared inline, which the compiler otherwise declines for
// some of them, at a cost of more than a tenth of the search.

constexpr int MinStepExponent = -300;
constexpr int MaxStepExponent = 308;
// Multiples beyond this are not all distinct doubles.
constexpr double MaxMultiple = 1125899906842624.0; // 2^50
// Below this every integer is exact in a double, so k × digits is too.
constexpr double MaxExactInteger = 9007199254740992.0; // 2^53
// The step bases q in order of preference, which is also their rank in the simplicity score,
// as digits × 10^shift: 2.5 is 25 × 10^-1.
constexpr int BaseDigits[] = {1, 5, 2, 25, 4, 3};
constexpr int BaseShift[] = {0, 0, 0, -1, 0, 0};
constexpr double BaseValue[] = {1, 5, 2, 2.5, 4, 3};
constexpr int BaseCount = 6;
// Every j-th multiple of q: skipping costs 1 in simplicity per j, so large j never win; the cap
// only bounds the search when nothing fits at all.
constexpr int MaxSkip = 10;
// Decades of 10^z tried around that of span / count. Steps further out score far below a step
// near the wanted density; the lower limit keeps the tick count bounded (at most about 1000 ×
// count) when coarse steps overflow near the largest doubles.
constexpr int DecadesBelow = 2;
constexpr int DecadesAbove = 3;
// Legibility parts, see the header.
constexpr double DecimalLegibility = 1.0;
constexpr double FactoredLegibility = 0.5;
constexpr double ScientificLegibility = 0.3;
constexpr double ConstantLegibilityParts = 3.0; // font size, orientation, overlap
// The most coverage and density add up to (0.2 × 1 + 0.5 × 1), and legibility (0.05 × 1).
constexpr double MostSpread = 0.7;
constexpr double MostLegibility = 0.05;
// Slack for rounding in the score bounds.
constexpr double BoundSlack = 1e-9;

using DecimalDigits::ExactPowersOfTen;
using DecimalDigits::LastExactPower;

// 10^z for 0 <= z <= MaxStepExponent, the double nearest it. Beyond 10^22 powers of ten are not
// exact; those are parsed once, like the compiler's own literals.
double powerOfTen(int z)
{
    if (z <= LastExactPower)
        return ExactPowersOfTen[z];
    static const auto inexact = [] {
        std::array<double, MaxStepExponent - LastExactPower> powers{};
        char text[8] = {'1', 'e'};
        for (int e = LastExactPower + 1; e <= MaxStepExponent; ++e) {
            char* end = std::to_chars(text + 2, text + sizeof text, e).ptr;
            std::from_chars(text, end, powers[static_cast<std::size_t>(e - LastExactPower - 1)]);
        }
        return powers;
    }();
    return inexact[static_cast<std::size_t>(z - LastExactPower - 1)];
}

// Decimal{digits, exponent}.toDouble(), with its everyday case inline: while the digits and
// the power of ten are both exact doubles, one operation rounds once to the nearest double,
// which is what toDouble gives too.
inline double decimalValue(std::int64_t digits, int exponent)
{
    constexpr auto exactDigits = static_cast<std::int64_t>(MaxExactInteger);
    if (digits > -exactDigits && digits < exactDigits && exponent >= -LastExactPower && exponent <= LastExactPower) {
        const auto n = static_cast<double>(digits);
        return exponent >= 0 ? n * ExactPowersOfTen[exponent] : n / ExactPowersOfTen[-exponent];
    }
    return Decimal{digits, exponent}.toDouble();
}

// n × 10^z for |z| <= MaxStepExponent, for scores: rounded twice beyond 10^±22. Tick values
// come from Decimal::toDouble instead.
double scaled(double n, int z)
{
    return z >= 0 ? n * powerOfTen(z) : n / powerOfTen(-z);
}

// floor and ceil for |x| < 2^63, without a library call.
std::int64_t floorToInteger(double x)
{
    const auto k = static_cast<std::int64_t>(x);
    return static_cast<double>(k) > x ? k - 1 : k;
}

std::int64_t ceilToInteger(double x)
{
    const auto k = static_cast<std::int64_t>(x);
    return static_cast<double>(k) < x ? k + 1 : k;
}

// std::floor and std::ceil up to the sign of zero, without a library call: doubles from 2^52 on
// are integers already.
double floorOf(double x)
{
    return std::fabs(x) < 0x1p52 ? static_cast<double>(floorToInteger(x)) : x;
}

double ceilOf(double x)
{
    return std::fabs(x) < 0x1p52 ? static_cast<double>(ceilToInteger(x)) : x;
}

// The largest multiple of 3 not above e.
int engineeringExponent(int e)
{
    return 3 * (e >= 0 ? e / 3 : -((2 - e) / 3));
}

// The power of ten the labels are divided by, for ticks whose largest magnitude lies in
// [10^largestExponent, 10^(largestExponent + 1)) and whose step's last digit is at 10^stepExponent.
int labelFactorExponent(int largestExponent, int stepExponent)
{
    // Labels need at most two decimals when the step's last digit stays at 10^-2 or above.
    const int fewDecimals = engineeringExponent(stepExponent + 2);
    if (largestExponent >= NiceIntervals::LargeExponent)
        return std::max(0, std::min(engineeringExponent(largestExponent), fewDecimals));
    if (largestExponent < NiceIntervals::SmallExponent)
        return std::min(engineeringExponent(largestExponent), fewDecimals);
    return 0;
}

// A step shape j × q with what the search needs of it, worked out once. Ticks are multiples of
// the unit q × 10^z, every j-th one; the unit is held as integer digits × 10^(z + shift), 2.5
// as 25 × 10^-1, so that ticks are exact.
struct Shape {
    int rank = 0; // of q
    int skip = 1; // j
    std::int64_t unitDigits = 1;
    int unitShift = 0;
    double value = 1.0; // j × q
    double inverseValue = 1.0;
    double inverseUnitDigits = 1.0;
    double plainSimplicity = 0.0; // without the bonus for a label at zero
    double largestMultiple = 0.0; // of the unit: |k| below it keeps ticks distinct and k × digits exact
    // For j > 1, when j × q is a listed q' times 10^simplerDecade: then the ticks that start at a
    // multiple of the step (the only ones that can hold zero) are those of the step q' × 10^(z +
    // simplerDecade) with j = 1, which scores more for the same ticks. -1 otherwise.
    int simplerDecade = -1;

    // Whether any of its steps may have a label at zero: not when the simpler step with the
    // same ticks is in the same decade, and so always within the walk over z.
    constexpr bool mayLabelZero() const { return simplerDecade != 0; }
};

// The decade d with value = q' × 10^d for a listed base q', or -1.
constexpr int listedDecade(double value)
{
    for (int decade = 0; decade <= 2; ++decade, value /= 10.0) {
        for (const double base : BaseValue) {
            if (value == base)
                return decade;
        }
    }
    return -1;
}

constexpr Shape makeShape(int rank, int skip)
{
    Shape s;
    s.rank = rank;
    s.skip = skip;
    s.unitDigits = BaseDigits[rank];
    s.unitShift = BaseShift[rank];
    s.value = BaseValue[rank] * skip;
    s.inverseValue = 1.0 / s.value;
    s.inverseUnitDigits = 1.0 / static_cast<double>(s.unitDigits);
    s.plainSimplicity = 1.0 - rank / (BaseCount - 1.0) - skip;
    s.largestMultiple = std::min(MaxMultiple, MaxExactInteger / static_cast<double>(s.unitDigits));
    s.simplerDecade = skip > 1 ? listedDecade(s.value) : -1;
    return s;
}

// Every shape in the order of the search: j, then q. Simplicity never rises along it.
constexpr auto Shapes = [] {
    std::array<Shape, std::size_t{MaxSkip} * BaseCount> shapes{};
    std::size_t next = 0;
    for (int skip = 1; skip <= MaxSkip; ++skip) {
        for (int rank = 0; rank < BaseCount; ++rank)
            shapes[next++] = makeShape(rank, skip);
    }
    return shapes;
}();

// A step j × q × 10^z: its unit q × 10^z is unitDigits × 10^exponent.
struct Step {
    const Shape* shape = &Shapes[0];
    int exponent = 0;
    double unitSize = 1.0;
    double inverseUnitSize = 1.0;
    double size = 1.0; // j units, for scores
    double inverseSize = 1.0;

    std::int64_t skip() const { return shape->skip; }
    // The k-th multiple of the unit, the double nearest the decimal.
    double tick(std::int64_t k) const { return decimalValue(k * shape->unitDigits, exponent); }
};

inline std::optional<Step> makeStep(const Shape& shape, int z)
{
    const int exponent = z + shape.unitShift;
    if (exponent < MinStepExponent || exponent > MaxStepExponent)
        return std::nullopt;
    const double unitSize = decimalValue(shape.unitDigits, exponent);
    const double size = unitSize * shape.skip;
    if (!std::isfinite(size))
        return std::nullopt;
    // The reciprocal only turns quotients into products: a rounding more stays far inside the
    // tolerance of nearInteger.
    const double inverseUnitSize =
        exponent <= 0 ? shape.inverseUnitDigits * powerOfTen(-exponent) : 1.0 / unitSize;
    return Step{&shape, exponent, unitSize, inverseUnitSize, size, inverseUnitSize / shape.skip};
}

// The ticks first, first + j, ..., last (multiples of the unit) as (first + i × stride) × digits
// × 10^exponent with the common factor of all ticks in digits, trailing zeros moved to the
// exponent: labels get the precision of the ticks themselves (5 15 25, but 0 10 20 not 0.0 1.0 2.0).
struct TickDigits {
    std::int64_t first = 0;
    std::int64_t last = 0;
    std::int64_t stride = 1;
    std::int64_t digits = 1;
    int exponent = 0;
};

TickDigits tickDigits(const Step& s, std::int64_t first, std::int64_t last)
{
    TickDigits t{first, last, s.skip(), s.shape->unitDigits, s.exponent};
    if (s.skip() > 1) { // the usual j = 1 needs no division
        const std::int64_t common = std::gcd(first, s.skip()); // j when first is 0
        t = {first / common, last / common, s.skip() / common, s.shape->unitDigits * common, s.exponent};
    }
    while (t.digits % 10 == 0) {
        t.digits /= 10;
        ++t.exponent;
    }
    return t;
}

// How the labels of a labeling are written.
struct LabelStyle {
    int factorExponent = 0;
    int largestExponent = 0;
    NumberFormat::Notation notation = NumberFormat::Notation::Fixed;
};

LabelStyle labelStyle(const TickDigits& t, bool factorLabels, NumberFormat::Notation notation)
{
    LabelStyle style;
    const std::int64_t largestDigits = std::max(std::abs(t.first), std::abs(t.last)) * t.digits;
    style.largestExponent = DecimalDigits::digitCount(static_cast<std::uint64_t>(largestDigits)) - 1 + t.exponent;
    if (factorLabels && largestDigits != 0)
        style.factorExponent = labelFactorExponent(style.largestExponent, t.exponent);
    style.notation = notation;
    if (notation == NumberFormat::Notation::Automatic)
        style.notation = NumberFormat::automaticNotation(t.exponent - style.factorExponent,
                                                         style.largestExponent - style.factorExponent);
    return style;
}

// The data range and what is wanted of its ticks.
struct Request {
    double min;
    double max;
    double span;
    int count;
    bool loose;
    bool factorLabels;
    NumberFormat::Notation notation;
    // For the scores and bounds: 1 / count, 10 / span and 1 / span (a step of at least 10^-300
    // needs a span far from the smallest doubles, so these are finite whenever a step is laid
    // out), whether zero lies in the data and otherwise the distance from zero to the nearer
    // end, in spans.
    double inverseCount;
    double tenOverSpan;
    double inverseSpan;
    bool zeroInside;
    double zeroDistance;
};

Request makeRequest(double min, double max, int count, bool loose, bool factorLabels, NumberFormat::Notation notation)
{
    const double span = max - min;
    const bool zeroInside = min <= 0.0 && max >= 0.0;
    const double zeroDistance = zeroInside ? 0.0 : std::min(std::fabs(min), std::fabs(max)) / span;
    return {min, max, span, count, loose, factorLabels, notation, 1.0 / count, 10.0 / span, 1.0 / span,
            zeroInside, zeroDistance};
}

// Whether multiples first..last of the unit stay below the largest doubles. With |k| exact (below
// 2^50) the product |k| × unit rounds twice, so the tick exceeds it by a factor of at most
// 1 + 2^-51: below 1e307 the tick is finite. Only near the largest doubles the ticks tell.
bool finiteTicks(const Step& s, std::int64_t first, std::int64_t last)
{
    const double largest = std::max(std::fabs(static_cast<double>(first)), std::fabs(static_cast<double>(last)));
    if (largest * s.unitSize < 1e307)
        return true;
    return std::isfinite(s.tick(first)) && std::isfinite(s.tick(last));
}

// The chosen ticks, as their digits, with their score and how they are labelled.
struct Labeling {
    double score = -std::numeric_limits<double>::infinity();
    LabelStyle style;
    TickDigits digits;
};

// Whether a quotient below 2^50 may be an integer up to its rounding errors (a few units in
// the last place); `below` is floor(x).
bool nearInteger(double x, std::int64_t below)
{
    const double fraction = x - static_cast<double>(below);
    const double tolerance = 1e-9 * std::max(1.0, std::fabs(x));
    return fraction <= tolerance || fraction >= 1.0 - tolerance;
}

// The unit multiple tightest at or below x, given quotient = x / unit. Away from an integer the
// quotient decides alone; near one, the exact tick values do.
inline std::int64_t multipleAtOrBelow(const Step& s, double quotient, double x)
{
    auto k = floorToInteger(quotient);
    if (!nearInteger(quotient, k))
        return k;
    if (s.tick(k + 1) <= x)
        ++k;
    else if (s.tick(k) > x)
        --k;
    return k;
}

inline std::int64_t multipleAtOrAbove(const Step& s, double quotient, double x)
{
    auto k = ceilToInteger(quotient);
    if (!nearInteger(quotient, floorToInteger(quotient)))
        return k;
    if (s.tick(k - 1) >= x)
        --k;
    else if (s.tick(k) < x)
        ++k;
    return k;
}

// x rounded half away from zero, then clamped to [0, most]. Clamping first gives the same (the
// ends are integers) and lets a truncation round.
std::int64_t roundedWithin(double x, std::int64_t most)
{
    const double clamped = std::clamp(x, 0.0, static_cast<double>(most));
    const auto k = static_cast<std::int64_t>(clamped);
    return clamped - static_cast<double>(k) >= 0.5 ? k + 1 : k;
}

// x / j, truncated; the usual j = 1 without a division.
std::int64_t quotient(std::int64_t x, std::int64_t j)
{
    return j == 1 ? x : x / j;
}

// x mod j in [0, j).
std::int64_t residue(std::int64_t x, std::int64_t j)
{
    if (j == 1)
        return 0; // the usual case, without a division
    const std::int64_t r = x % j;
    return r < 0 ? r + j : r;
}

double square(double x)
{
    return x * x;
}

// The coverage for gaps `low` and `high` between the data ends and the outer ticks.
double coverage(double low, double high, const Request& r)
{
    return 1.0 - 0.5 * (square(low * r.tenOverSpan) + square(high * r.tenOverSpan));
}

// The coverage when the ticks leave `gap` in all between them and the data ends, split evenly,
// which is the most it can be: 1 - 25 (gap / span)^2.
double coverageBound(double gapInSpans)
{
    return 1.0 - 25.0 * square(gapInSpans);
}

double weighted(double simplicity, double coverage, double density, double legibility)
{
    return 0.25 * simplicity + 0.2 * coverage + 0.5 * density + 0.05 * legibility;
}

double legibility(const LabelStyle& style)
{
    const double format = style.notation == NumberFormat::Notation::Scientific ? ScientificLegibility
                          : style.factorExponent != 0                          ? FactoredLegibility
                                                                               : DecimalLegibility;
    return (format + ConstantLegibilityParts) / (ConstantLegibilityParts + 1.0);
}

// 2 - max(n / count, count / n): the density when data and ticks extend over n > 0 steps.
double densityOfSteps(const Request& r, double n)
{
    return 2.0 - std::max(n * r.inverseCount, r.count / n);
}

// An upper bound of densityOfSteps, for the bounds: from count steps on n / count is at least 1
// and count / n at most 1 (up to a rounding), and leaving the smaller term out of the max can
// only raise the result, so no division is needed there.
double densityBound(const Request& r, double n)
{
    return n >= r.count ? 2.0 - n * r.inverseCount : densityOfSteps(r, n);
}

// The span in steps u, and 1 / u, which the walk over z keeps up by products alongside u.
struct StepsInSpan {
    double u;
    double inverse;
};

// Coverage and density of ticks enclosing the data over n steps whose gap below the data is at
// least nearGap spans, with the gaps split as evenly as that allows (the most coverage).
inline double enclosingPart(const Request& r, StepsInSpan s, double n, double nearGap)
{
    const double gap = std::max(0.0, n * s.inverse - 1.0); // in spans
    const double near = std::max(nearGap, 0.5 * gap);
    const double cover = 1.0 - 50.0 * (square(near) + square(std::max(0.0, gap - near)));
    return 0.2 * cover + 0.5 * densityBound(r, n);
}

// The most coverage and density add for enclosing ticks, over every number of steps n: at least
// u (1 + nearGap) to reach over the data and the gap. Both parts are concave in n (the squared
// gaps convex, the density a minimum of concave terms), so the walk up from the fewest steps
// stops at the top; past count steps both fall.
inline double enclosingBound(const Request& r, StepsInSpan s, double nearGap)
{
    double n = std::max(1.0, ceilOf(s.u * (1.0 + nearGap) * (1.0 - BoundSlack)));
    double best = enclosingPart(r, s, n, nearGap);
    for (; n < r.count; ++n) {
        const double next = enclosingPart(r, s, n + 1.0, nearGap);
        if (next <= best)
            break;
        best = next;
    }
    return best;
}

// The most coverage and density add for inner ticks: floor(u) or one step less inside the data,
// whose extent sets the density.
double innerBound(const Request& r, StepsInSpan s)
{
    const double n = floorOf(s.u * (1.0 + BoundSlack));
    if (n < 1.0)
        return -std::numeric_limits<double>::infinity(); // at most one tick
    const double density = 2.0 - std::max(s.u * r.inverseCount, r.count * s.inverse);
    return 0.2 * coverageBound(std::max(0.0, s.u - n) * s.inverse) + 0.5 * density;
}

// A looser bound than the two above, but one that only grows towards u = count from either side,
// so that once it falls below the best score, steps further out need not be tried.
inline double spreadEnvelope(const Request& r, StepsInSpan s)
{
    if (!r.loose) {
        if (s.u < 1.0)
            return -std::numeric_limits<double>::infinity();
        return 0.2 + 0.5 * (2.0 - std::max(s.u * r.inverseCount, r.count * s.inverse));
    }
    if (s.u >= r.count) // n >= u >= count steps: density falls with u, coverage at most 1
        return 0.2 + 0.5 * std::min(1.0, 2.0 - s.u * r.inverseCount);
    // Fewer steps than wanted: extending the ticks by a gap of t spans (at least t_min = 1 / u - 1,
    // to have a step) raises the density and costs coverage. Their sum is at most
    // falling(t) = 0.7 - 5t^2 (density 1) and at most rising(t) = 1.2 - 0.5 count / (u (1 + t))
    // (coverage 1). For any t0 >= t_min: beyond t0 the sum is below falling(t0), and up to t0
    // below both rising(t0) and falling(t_min). Each of the three rises with u (t0 and t_min fall,
    // count / (u (1 + t0)) falls with u), so the bound does too.
    const double ratio = r.count * s.inverse;
    const double least = std::max(0.0, s.inverse - 1.0); // t_min
    const double t = std::max(least, 0.1 * (ratio - 1.0)); // t0, near where the two cross
    const double falling = 0.7 - 5.0 * t * t;
    const double rising = 1.2 - 0.5 * ratio / (1.0 + t);
    return std::min(MostSpread, std::max(falling, std::min(rising, 0.7 - 5.0 * least * least)));
}

// The decimal exponent of x > 0: floor(log10(x)), up to rounding at exact powers of ten. From
// the binary exponent it is one of two values, and a power of ten tells which.
int decimalExponent(double x)
{
    if (!(x >= 1e-300 && x < 1e300)) // far out, where the table of powers ends
        return static_cast<int>(std::floor(std::log10(x)));
    std::uint64_t bits = 0;
    std::memcpy(&bits, &x, sizeof bits);
    const int binaryExponent = static_cast<int>((bits >> 52) & 0x7ff) - 1023; // x in [2^b, 2^(b + 1))
    constexpr double Log10Of2 = 0.30102999566398120;
    auto e = static_cast<int>(floorToInteger(binaryExponent * Log10Of2));
    const int next = e + 1;
    if (next >= 0 ? x >= powerOfTen(next) : x * powerOfTen(-next) >= 1.0)
        e = next;
    return e;
}

// The unit multiples nearest the data ends (outside for enclosing ticks, inside for inner ones)
// and their distances to the ends.
struct Ends {
    std::int64_t low;
    std::int64_t high;
    double lowGap;
    double highGap;
};

// The best labeling of a request, by a walk over j, q and z that skips what bounds rule out;
// each step laid out is tried at every start offset, enclosing ticks also with extra steps.
class Search {
public:
    explicit Search(const Request& r)
        : m_r(r)
        , m_centre(decimalExponent(r.span / r.count))
        , m_unitsInSpan(scaled(r.span, -std::clamp(m_centre, -MaxStepExponent, MaxStepExponent)))
        , m_inverseUnitsInSpan(1.0 / m_unitsInSpan)
        , m_zeroSpread(zeroSpread(r))
        , m_farSpread(farSpread(r))
    {
    }

    std::optional<Labeling> run()
    {
        // With j = 1 the nearest steps are tried first of all, best bound first: they raise the
        // bar early for all the rest.
        searchNearest();
        for (const Shape& shape : Shapes) {
            // Simplicity only falls from here on: once even the best rest cannot win, stop.
            if (shapeBound(shape) < bar())
                break;
            if (!shape.mayLabelZero() && shapeBound(shape, false) < bar())
                continue;
            if (shape.skip > 1)
                tryNearest(shape, nearestSteps(shape));
            searchFar(shape);
        }
        if (!m_found)
            return std::nullopt;
        return m_best;
    }

private:
    // The most coverage and density add when zero is a label. Inner ticks have it only when
    // the data hold zero; enclosing ones reach it from outside at a gap of at least the distance
    // to zero below or above the data, which caps the coverage.
    static double zeroSpread(const Request& r)
    {
        if (r.zeroInside)
            return MostSpread;
        if (!r.loose)
            return -std::numeric_limits<double>::infinity();
        return std::min(MostSpread, 0.2 * (1.0 - 50.0 * square(r.zeroDistance)) + 0.5);
    }

    // What a candidate must beat, less the slack for rounding in the bounds.
    double bar() const { return m_bar; }

    // The most any step of the shape can score, with or without a label at zero.
    double shapeBound(const Shape& shape, bool zeroLabel = true) const
    {
        return 0.25 * shape.plainSimplicity + MostLegibility
               + std::max(MostSpread, 0.25 + zeroSpreadFor(zeroLabel));
    }

    // Whether the step j × q × 10^z may have a label at zero that no simpler step with the
    // same ticks has (see Shape::simplerDecade); that simpler step lies within the walk over z.
    bool zeroLabel(const Shape& shape, int z) const
    {
        return shape.simplerDecade < 0 || z + shape.simplerDecade > m_centre + DecadesAbove;
    }

    double zeroSpreadFor(bool zeroLabel) const
    {
        return zeroLabel ? m_zeroSpread : -std::numeric_limits<double>::infinity();
    }

    // The largest z whose step is at most span / count, roughly, and the span in its steps.
    // u is the span in steps, count where the density is best.
    int startExponent(const Shape& shape) const { return m_centre - (shape.value >= 10.0 ? 1 : 0); }

    StepsInSpan startSteps(const Shape& shape) const
    {
        const bool wide = shape.value >= 10.0;
        return {m_unitsInSpan * shape.inverseValue * (wide ? 10.0 : 1.0),
                m_inverseUnitsInSpan * shape.value * (wide ? 0.1 : 1.0)};
    }

    static StepsInSpan coarser(StepsInSpan s) { return {s.u * 0.1, s.inverse * 10.0}; }
    static StepsInSpan finer(StepsInSpan s) { return {s.u * 10.0, s.inverse * 0.1}; }

    // The steps of a shape with the span just at or above count steps and just below, the
    // usual winners: the exponent and the span in steps of the first.
    struct Nearest {
        int z;
        StepsInSpan steps;
    };

    Nearest nearestSteps(const Shape& shape) const
    {
        Nearest n{startExponent(shape), startSteps(shape)};
        if (n.steps.u < m_r.count) {
            --n.z;
            n.steps = finer(n.steps);
        }
        return n;
    }

    // The nearest two steps of each q with j = 1, tried best bound first.
    // A step of searchNearest: j = 1, q of the rank, 10^z.
    struct Candidate {
        double bound; // by the envelope, cheaper than stepBound
        StepsInSpan steps;
        int rank;
        int z;
    };

    void searchNearest()
    {
        std::array<Candidate, std::size_t{2} * BaseCount> nearest; // all set below
        for (int rank = 0; rank < BaseCount; ++rank) {
            const Shape& shape = Shapes[static_cast<std::size_t>(rank)];
            const Nearest n = nearestSteps(shape);
            const StepsInSpan coarse = coarser(n.steps);
            const std::size_t at = 2 * static_cast<std::size_t>(rank);
            nearest[at] = {envelopeBound(shape, n.steps), n.steps, rank, n.z};
            nearest[at + 1] = {envelopeBound(shape, coarse), coarse, rank, n.z + 1};
        }
        // Tried by descending bound, ties in list order, so that equal scores resolve the same
        // way every time. The best goes first; it mostly raises the bar above all but a few,
        // and only those need ordering, as the bar only rises.
        Candidate* best = std::max_element(nearest.begin(), nearest.end(),
                                           [](const Candidate& a, const Candidate& b) { return a.bound < b.bound; });
        if (!tryCandidate(*best))
            return;
        std::size_t left = 0;
        for (const Candidate& c : nearest) {
            if (&c != best && !(c.bound < bar()))
                nearest[left++] = c;
        }
        // An insertion sort: stable, and it allocates nothing.
        for (std::size_t i = 1; i < left; ++i) {
            const Candidate c = nearest[i];
            std::size_t at = i;
            for (; at > 0 && nearest[at - 1].bound < c.bound; --at)
                nearest[at] = nearest[at - 1];
            nearest[at] = c;
        }
        for (std::size_t i = 0; i < left; ++i) {
            if (!tryCandidate(nearest[i]))
                return;
        }
    }

    // Considers a candidate unless its bounds rule it out; false when its envelope is below the
    // bar, and so are those of all after it.
    bool tryCandidate(const Candidate& c)
    {
        if (c.bound < bar())
            return false;
        const Shape& shape = Shapes[static_cast<std::size_t>(c.rank)];
        // Before anything is found every bound passes (they are never NaN): the first
        // candidate goes without one.
        if (!m_found || stepBound(shape, c.steps, true) >= bar()) {
            if (const auto step = makeStep(shape, c.z))
                consider(*step, true);
        }
        return true;
    }

    // Monotone in u on either side of count, see spreadEnvelope; with zero a label, the spread
    // is also capped by m_zeroSpread.
    double envelopeBound(const Shape& shape, StepsInSpan s, bool zeroLabel = true) const
    {
        const double spread = spreadEnvelope(m_r, s);
        return MostLegibility + 0.25 * shape.plainSimplicity
               + std::max(spread, 0.25 + std::min(spread, zeroSpreadFor(zeroLabel)));
    }

    // The most a step can score, from the span in its steps.
    double stepBound(const Shape& shape, StepsInSpan s, bool zeroLabel) const
    {
        const double plain = MostLegibility + 0.25 * shape.plainSimplicity;
        if (!m_r.loose)
            return plain + innerBound(m_r, s) + (zeroLabel && m_r.zeroInside ? 0.25 : 0.0);
        const double spread = enclosingBound(m_r, s, 0.0);
        if (!zeroLabel)
            return plain + spread;
        if (m_r.zeroInside)
            return plain + 0.25 + spread;
        const double withoutZero = plain + spread;
        if (plain + 0.25 + m_zeroSpread < std::max(withoutZero, bar()))
            return withoutZero;
        return std::max(withoutZero, plain + 0.25 + enclosingBound(m_r, s, m_r.zeroDistance));
    }

    void tryNearest(const Shape& shape, Nearest n)
    {
        tryStep(shape, n.z, n.steps);
        tryStep(shape, n.z + 1, coarser(n.steps));
    }

    void tryStep(const Shape& shape, int z, StepsInSpan s)
    {
        // The envelope first: cheaper, and mostly enough.
        const bool zero = zeroLabel(shape, z);
        if (envelopeBound(shape, s, zero) < bar() || stepBound(shape, s, zero) < bar())
            return;
        if (const auto step = makeStep(shape, z))
            consider(*step, zero);
    }

    // Tries the steps further out than the nearest two, while their bounds can still beat the
    // best. Their span is at least 10 × count steps or below count / 10, and the envelope only
    // falls away from count, so most often none is tried.
    void searchFar(const Shape& shape)
    {
        const double zeroBonus = shape.mayLabelZero() ? 1.0 : 0.0;
        if (0.25 * (shape.plainSimplicity + zeroBonus) + m_farSpread + MostLegibility < bar())
            return;
        walkFar(shape);
    }

    // Kept out of line: it is rarely reached, and inlined it slows the usual path.
    [[gnu::noinline, gnu::cold]] void walkFar(const Shape& shape)
    {
        const Nearest n = nearestSteps(shape);
        StepsInSpan fine = finer(n.steps);
        for (int z = n.z - 1; z >= m_centre - DecadesBelow && visit(shape, z, fine); --z)
            fine = finer(fine);
        StepsInSpan coarse = coarser(coarser(n.steps));
        for (int z = n.z + 2; z <= m_centre + DecadesAbove && visit(shape, z, coarse); ++z)
            coarse = coarser(coarse);
    }

    // The most coverage and density add for a span of at least 10 × count steps or below
    // count / 10.
    static double farSpread(const Request& r)
    {
        const double count = r.count;
        return std::max(spreadEnvelope(r, {10.0 * count, 0.1 / count}), spreadEnvelope(r, {0.1 * count, 10.0 / count}));
    }

    // Considers a step beyond the nearest two unless its bounds rule it out; false when the
    // walk need go no further: there the envelope only falls further out.
    bool visit(const Shape& shape, int z, StepsInSpan s)
    {
        // The envelope with a zero label, so that it still only falls further out.
        if (envelopeBound(shape, s) < bar())
            return false;
        const bool zero = zeroLabel(shape, z);
        if (stepBound(shape, s, zero) < bar())
            return true;
        if (const auto step = makeStep(shape, z))
            consider(*step, zero);
        return true;
    }

    // Lays out the step at each start offset: the first tick any multiple of the unit, the
    // rest every j-th, so that for j > 1 the ticks need not be multiples of the step. Without
    // `zeroLabel`, offset 0 is left to the simpler step with the same ticks.
    void consider(const Step& s, bool zeroLabel)
    {
        const double low = m_r.min * s.inverseUnitSize;
        const double high = m_r.max * s.inverseUnitSize;
        const double largest = s.shape->largestMultiple;
        if (!(std::fabs(low) < largest && std::fabs(high) < largest))
            return;
        const bool loose = m_r.loose;
        const std::int64_t first = loose ? multipleAtOrBelow(s, low, m_r.min) : multipleAtOrAbove(s, low, m_r.min);
        const std::int64_t last = loose ? multipleAtOrAbove(s, high, m_r.max) : multipleAtOrBelow(s, high, m_r.max);
        if (last <= first)
            return; // fewer than two ticks
        const double lmin = s.tick(first);
        const double lmax = s.tick(last);
        if (!std::isfinite(lmin) || !std::isfinite(lmax))
            return;
        const Ends ends{first, last, std::fabs(m_r.min - lmin), std::fabs(m_r.max - lmax)};
        for (std::int64_t offset = zeroLabel ? 0 : 1; offset < s.skip(); ++offset) {
            if (loose)
                considerEnclosing(s, ends, offset);
            else
                considerInner(s, ends, offset);
        }
    }

    // The inner ticks whose multiples are `offset` modulo j. Fewer ticks never score more: the
    // density depends on the step alone and the coverage falls.
    void considerInner(const Step& s, const Ends& e, std::int64_t offset)
    {
        const std::int64_t j = s.skip();
        const std::int64_t first = e.low + residue(offset - e.low, j);
        const std::int64_t last = e.high - residue(e.high - offset, j);
        if (last <= first)
            return;
        const double lowGap = e.lowGap + static_cast<double>(first - e.low) * s.unitSize;
        const double highGap = e.highGap + static_cast<double>(e.high - last) * s.unitSize;
        const bool zero = offset == 0 && first <= 0 && last >= 0;
        const double density = densityOfSteps(m_r, m_r.span * s.inverseSize);
        keep(s, first, last,
             weighted(s.shape->plainSimplicity + (zero ? 1.0 : 0.0), coverage(lowGap, highGap, m_r), density, 1.0));
    }

    // The tightest enclosing ticks whose multiples are `offset` modulo j, and those with extra
    // steps below and above: below count steps they raise the density, and they may reach zero.
    void considerEnclosing(const Step& s, const Ends& e, std::int64_t offset)
    {
        const std::int64_t j = s.skip();
        Extension x;
        x.first = e.low - residue(e.low - offset, j);
        x.last = e.high + residue(offset - e.high, j);
        x.lowGap = e.lowGap + static_cast<double>(e.low - x.first) * s.unitSize;
        x.highGap = e.highGap + static_cast<double>(x.last - e.high) * s.unitSize;
        x.steps = static_cast<double>(quotient(x.last - x.first, j));
        const double mostSimplicity = s.shape->plainSimplicity + (offset == 0 ? 1.0 : 0.0);
        const double mostSteps = std::max(x.steps, static_cast<double>(NiceIntervals::MaxCount));
        for (std::int64_t extra = 0; x.steps + static_cast<double>(extra) <= mostSteps; ++extra) {
            // Further steps only widen the gaps and, past count steps, lower the density.
            const double n = x.steps + static_cast<double>(extra);
            const double gaps = x.lowGap + x.highGap + static_cast<double>(extra) * s.size;
            const double most = 0.25 * mostSimplicity + 0.2 * coverageBound(gaps * m_r.inverseSpan)
                                + 0.5 * (n <= m_r.count ? 1.0 : densityBound(m_r, n)) + MostLegibility;
            if (most < bar())
                return;
            extend(s, x, extra, offset == 0);
        }
    }

    // Tightest enclosing ticks, to be extended.
    struct Extension {
        std::int64_t first;
        std::int64_t last;
        double lowGap;
        double highGap;
        double steps;
    };

    // The tightest ticks with `extra` more steps, split below and above to leave the gaps nearest
    // even (the most coverage: the sum of squares is convex in the split), and when zero is
    // a multiple of j outside them, the split nearest that which reaches it.
    void extend(const Step& s, const Extension& x, std::int64_t extra, bool zeroFits)
    {
        const std::int64_t j = s.skip();
        const double even = (static_cast<double>(extra) * s.size + x.highGap - x.lowGap) / (2.0 * s.size);
        const std::int64_t below = roundedWithin(even, extra);
        scoreExtension(s, x, below, extra);
        if (!zeroFits)
            return;
        if (x.first > 0 && x.first - below * j > 0 && quotient(x.first, j) <= extra)
            scoreExtension(s, x, quotient(x.first, j), extra);
        else if (x.last < 0 && x.last + (extra - below) * j < 0 && -quotient(x.last, j) <= extra)
            scoreExtension(s, x, extra + quotient(x.last, j), extra);
    }

    void scoreExtension(const Step& s, const Extension& x, std::int64_t below, std::int64_t extra)
    {
        const std::int64_t j = s.skip();
        const std::int64_t above = extra - below;
        const std::int64_t first = x.first - below * j;
        const std::int64_t last = x.last + above * j;
        const double lowGap = x.lowGap + static_cast<double>(below) * s.size;
        const double highGap = x.highGap + static_cast<double>(above) * s.size;
        const bool zero = first <= 0 && last >= 0 && residue(first, j) == 0;
        keep(s, first, last,
             weighted(s.shape->plainSimplicity + (zero ? 1.0 : 0.0), coverage(lowGap, highGap, m_r),
                      densityOfSteps(m_r, x.steps + static_cast<double>(extra)), 1.0));
    }

    // Keeps the ticks first..last when they beat the best so far; `upper` is their score with
    // legibility taken as 1, its most.
    void keep(const Step& s, std::int64_t first, std::int64_t last, double upper)
    {
        if (m_found && !(upper > m_best.score))
            return;
        const double largest = s.shape->largestMultiple;
        if (!(std::fabs(static_cast<double>(first)) < largest && std::fabs(static_cast<double>(last)) < largest))
            return;
        const TickDigits digits = tickDigits(s, first, last);
        const LabelStyle style = labelStyle(digits, m_r.factorLabels, m_r.notation);
        const double score = upper - 0.05 * (1.0 - legibility(style));
        if (m_found && !(score > m_best.score))
            return;
        if (!finiteTicks(s, first, last))
            return; // extended past the largest doubles
        m_best = Labeling{score, style, digits};
        m_found = true;
        m_bar = score - BoundSlack;
    }

    const Request& m_r;
    int m_centre;
    double m_unitsInSpan;
    double m_inverseUnitsInSpan;
    double m_zeroSpread; // the most coverage and density add with zero a label
    double m_farSpread;
    Labeling m_best;
    bool m_found = false;
    double m_bar = -std::numeric_limits<double>::infinity();
};

std::optional<Labeling> bestLabeling(const Request& r)
{
    if (!(r.span / r.count > 0.0))
        return std::nullopt;
    return Search(r).run();
}

} // namespace

NiceIntervals::NiceIntervals(double min, double max, int count, bool loose, bool factorLabels,
                             const NumberFormat& format)
    : m_format(format)
{
    if (!(std::isfinite(min) && std::isfinite(max) && min < max))
        return;
    const double span = max - min;
    if (!std::isfinite(span))
        return;
    const Request request = makeRequest(min, max, std::clamp(count, 1, MaxCount), loose, factorLabels, format.notation);
    const auto best = bestLabeling(request);
    if (!best)
        return;

    const TickDigits& digits = best->digits;
    m_first = digits.first;
    m_stride = digits.stride;
    m_size = static_cast<int>((digits.last - digits.first) / digits.stride + 1);
    m_stepDigits = digits.digits;
    m_stepExponent = digits.exponent;
    m_min = value(0);
    m_max = value(m_size - 1);

    m_factorExponent = best->style.factorExponent;
    factor = decimalValue(1, m_factorExponent);
    m_format.notation = best->style.notation;
}

double NiceIntervals::value(int i) const
{
    return decimalValue((m_first + i * m_stride) * m_stepDigits, m_stepExponent);
}

std::string NiceIntervals::label(int i) const
{
    return m_format.format(Decimal{(m_first + i * m_stride) * m_stepDigits, m_stepExponent - m_factorExponent});
}

double NiceIntervals::fraction(int i, bool inverted) const
{
    if (m_size < 2)
        return 0.0;
    const double f = static_cast<double>(i) / (m_size - 1);
    return inverted ? 1.0 - f : f;
}

double NiceIntervals::step() const
{
    return m_size > 0 ? decimalValue(m_stride * m_stepDigits, m_stepExponent) : 0.0;
}

} // namespace Orv::Math
