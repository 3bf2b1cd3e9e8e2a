#include "NiceIntervals.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <limits>
#include <optional>

namespace Orv::Math {

namespace {

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

constexpr double ExactPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                       1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                       1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr int LastExactPower = 22;

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

int digitCount(std::int64_t magnitude)
{
    std::int64_t power = 10;
    int count = 1;
    for (; count < 18 && magnitude >= power; power *= 10)
        ++count;
    return count;
}

// The largest multiple of 3 not above e.
int engineeringExponent(int e)
{
    return 3 * static_cast<int>(std::floor(e / 3.0));
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

// A step shape j × q with what the search needs of it, worked out once: the integer digits ×
// 10^shift without trailing zeros (a skipped step such as 2 × 5 is 1 × 10^1, so its labels get
// the precision of 10, not of 1.0), and the simplicity without the bonus for a tick at zero.
struct Shape {
    int rank = 0; // of q
    int skip = 1; // j
    std::int64_t digits = 1;
    int shift = 0;
    double value = 1.0; // j × q
    double inverseValue = 1.0;
    double inverseDigits = 1.0;
    double plainSimplicity = 0.0;
    double largestMultiple = 0.0; // |k| below it: distinct ticks and k × digits exact
};

constexpr Shape makeShape(int rank, int skip)
{
    Shape s;
    s.rank = rank;
    s.skip = skip;
    s.digits = static_cast<std::int64_t>(BaseDigits[rank]) * skip;
    s.shift = BaseShift[rank];
    while (s.digits % 10 == 0) {
        s.digits /= 10;
        ++s.shift;
    }
    s.value = BaseValue[rank] * skip;
    s.inverseValue = 1.0 / s.value;
    s.inverseDigits = 1.0 / static_cast<double>(s.digits);
    s.plainSimplicity = 1.0 - rank / (BaseCount - 1.0) - skip;
    s.largestMultiple = std::min(MaxMultiple, MaxExactInteger / static_cast<double>(s.digits));
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

// A step j × q × 10^z, kept as the integer digits × 10^exponent so that ticks are exact.
struct Step {
    const Shape* shape = &Shapes[0];
    int exponent = 0;
    double size = 1.0;
    double inverseSize = 1.0;

    std::int64_t digits() const { return shape->digits; }
    double tick(std::int64_t k) const { return Decimal{k * digits(), exponent}.toDouble(); }
};

std::optional<Step> makeStep(const Shape& shape, int z)
{
    const int exponent = z + shape.shift;
    if (exponent < MinStepExponent || exponent > MaxStepExponent)
        return std::nullopt;
    const double size = Decimal{shape.digits, exponent}.toDouble();
    if (!std::isfinite(size))
        return std::nullopt;
    // The reciprocal only turns quotients into products: a rounding more stays far inside the
    // tolerance of nearInteger.
    const double inverseSize = exponent <= 0 ? shape.inverseDigits * powerOfTen(-exponent) : 1.0 / size;
    return Step{&shape, exponent, size, inverseSize};
}

// How the labels of ticks from..to of a step are written.
struct LabelStyle {
    int factorExponent = 0;
    int largestExponent = 0;
    NumberFormat::Notation notation = NumberFormat::Notation::Fixed;
};

LabelStyle labelStyle(const Step& s, std::int64_t first, std::int64_t last, bool factorLabels,
                      NumberFormat::Notation notation)
{
    LabelStyle style;
    const std::int64_t largestDigits = std::max(std::abs(first), std::abs(last)) * s.digits();
    style.largestExponent = digitCount(largestDigits) - 1 + s.exponent;
    if (factorLabels && largestDigits != 0)
        style.factorExponent = labelFactorExponent(style.largestExponent, s.exponent);
    style.notation = notation;
    if (notation == NumberFormat::Notation::Automatic)
        style.notation = NumberFormat::automaticNotation(s.exponent - style.factorExponent,
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
    // For the scores and bounds: 1 / count, 10 / span (a step of at least 10^-300 needs a span
    // far from the smallest doubles, so this is finite whenever a step is laid out), and the
    // largest span in steps for which zero can be a tick.
    double inverseCount;
    double tenOverSpan;
    double zeroReachableUpTo;
};

Request makeRequest(double min, double max, int count, bool loose, bool factorLabels, NumberFormat::Notation notation)
{
    const double span = max - min;
    Request r{min, max, span, count, loose, factorLabels, notation, 1.0 / count, 10.0 / span, 0.0};
    if (min <= 0.0 && max >= 0.0)
        r.zeroReachableUpTo = std::numeric_limits<double>::infinity();
    else if (loose) // the step must reach from zero past the nearer end
        r.zeroReachableUpTo = r.span / std::min(std::fabs(min), std::fabs(max)) * (1.0 + BoundSlack);
    else
        r.zeroReachableUpTo = -1.0;
    return r;
}

// One candidate: the ticks first..last of a step, lmin..lmax.
struct Labeling {
    Step step;
    std::int64_t first = 0;
    std::int64_t last = -1;
    double lmin = 0.0;
    double lmax = 0.0;
    double score = -std::numeric_limits<double>::infinity();
    LabelStyle style;
};

// Whether a quotient below 2^50 may be an integer up to its rounding errors (a few units in
// the last place).
bool nearInteger(double x)
{
    const double fraction = x - static_cast<double>(floorToInteger(x));
    const double tolerance = 1e-9 * std::max(1.0, std::fabs(x));
    return fraction <= tolerance || fraction >= 1.0 - tolerance;
}

// The multiple tightest at or below x, given quotient = x / step. Away from an integer the
// quotient decides alone; near one, the exact tick values do.
std::int64_t multipleAtOrBelow(const Step& s, double quotient, double x)
{
    auto k = floorToInteger(quotient);
    if (!nearInteger(quotient))
        return k;
    if (s.tick(k + 1) <= x)
        ++k;
    else if (s.tick(k) > x)
        --k;
    return k;
}

std::int64_t multipleAtOrAbove(const Step& s, double quotient, double x)
{
    auto k = ceilToInteger(quotient);
    if (!nearInteger(quotient))
        return k;
    if (s.tick(k - 1) >= x)
        --k;
    else if (s.tick(k) < x)
        ++k;
    return k;
}

double square(double x)
{
    return x * x;
}

// 2 - max(ratio, 1 / ratio), ratio = the extent of data and ticks, in steps, over the wanted intervals.
double density(double extentInSteps, const Request& r)
{
    const double ratio = extentInSteps * r.inverseCount;
    return 2.0 - std::max(ratio, 1.0 / ratio);
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

// 2 - max(n / count, count / n) for n > 0 steps.
double densityOfSteps(const Request& r, double n)
{
    return 2.0 - std::max(n * r.inverseCount, r.count / n);
}

// The span in steps u, and 1 / u, which the walk over z keeps up by products alongside u.
struct StepsInSpan {
    double u;
    double inverse;
};

// The best coverage and density a step can reach, known before laying it out, from the span in
// steps u alone. Enclosing ticks span n = ceil(u) or n + 1 steps, the data inside; inner ones
// floor(u) or one less, inside the data, whose extent sets the density.
double spreadBound(const Request& r, StepsInSpan s)
{
    if (r.loose) {
        const double n = std::max(1.0, std::ceil(s.u * (1.0 - BoundSlack)));
        const auto part = [&](double steps) {
            return 0.2 * coverageBound(std::max(0.0, steps - s.u) * s.inverse) + 0.5 * densityOfSteps(r, steps);
        };
        return std::max(part(n), part(n + 1.0));
    }
    const double n = std::floor(s.u * (1.0 + BoundSlack));
    if (n < 1.0)
        return -std::numeric_limits<double>::infinity(); // at most one tick
    const double density = 2.0 - std::max(s.u * r.inverseCount, r.count * s.inverse);
    return 0.2 * coverageBound(std::max(0.0, s.u - n) * s.inverse) + 0.5 * density;
}

// A looser bound than spreadBound, but one that only grows towards u = count from either side,
// so that once it falls below the best score, steps further out need not be tried.
double spreadEnvelope(const Request& r, StepsInSpan s)
{
    if (!r.loose) {
        if (s.u < 1.0)
            return -std::numeric_limits<double>::infinity();
        return 0.2 + 0.5 * (2.0 - std::max(s.u * r.inverseCount, r.count * s.inverse));
    }
    if (s.u >= r.count) // more steps than wanted: density falls with u
        return 0.2 + 0.5 * std::min(1.0, 2.0 - s.u * r.inverseCount);
    const double coverage = s.u < 1.0 ? coverageBound(s.inverse - 1.0) : 1.0;
    return 0.2 * coverage + 0.5 * std::min(1.0, 2.0 - r.count / (s.u + 2.0));
}

std::optional<Labeling> layOut(const Request& r, const Step& s)
{
    const double low = r.min * s.inverseSize;
    const double high = r.max * s.inverseSize;
    if (!(std::fabs(low) < s.shape->largestMultiple && std::fabs(high) < s.shape->largestMultiple))
        return std::nullopt;

    Labeling l;
    l.step = s;
    l.first = r.loose ? multipleAtOrBelow(s, low, r.min) : multipleAtOrAbove(s, low, r.min);
    l.last = r.loose ? multipleAtOrAbove(s, high, r.max) : multipleAtOrBelow(s, high, r.max);
    if (l.last < l.first)
        return std::nullopt;
    l.lmin = s.tick(l.first);
    l.lmax = s.tick(l.last);
    if (!std::isfinite(l.lmin) || !std::isfinite(l.lmax))
        return std::nullopt;
    return l;
}

// The score with legibility taken as 1, its most.
double scoreBeforeLegibility(const Labeling& l, const Request& r)
{
    const double coverage =
        1.0 - 0.5 * (square((r.max - l.lmax) * r.tenOverSpan) + square((r.min - l.lmin) * r.tenOverSpan));
    // Counted in steps, the extent cannot overflow however large the values.
    const double extent = static_cast<double>(l.last - l.first) + std::max(0.0, (r.max - l.lmax) * l.step.inverseSize)
                          + std::max(0.0, (l.lmin - r.min) * l.step.inverseSize);
    const double spread = l.last > l.first ? density(extent, r) : -std::numeric_limits<double>::infinity();
    const bool zeroIsTick = l.first <= 0 && l.last >= 0;
    return weighted(l.step.shape->plainSimplicity + (zeroIsTick ? 1.0 : 0.0), coverage, spread, 1.0);
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

// The best labeling of a request, by a walk over j, q and z that skips what bounds rule out.
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
            if (shape.skip > 1)
                tryNearest(shape, nearestSteps(shape));
            searchFar(shape);
        }
        if (!m_found)
            return std::nullopt;
        return m_best;
    }

private:
    // Steps with zero among their ticks span at most zeroReachableUpTo steps; below count steps
    // the envelope only rises towards count.
    static double zeroSpread(const Request& r)
    {
        const double u = std::min(r.zeroReachableUpTo, static_cast<double>(r.count));
        return spreadEnvelope(r, {u, 1.0 / u});
    }

    // What a candidate must beat, less the slack for rounding in the bounds.
    double bar() const { return m_bar; }

    // The most any step of the shape can score, with or without a tick at zero.
    double shapeBound(const Shape& shape) const
    {
        return 0.25 * shape.plainSimplicity + MostLegibility + std::max(MostSpread, 0.25 + m_zeroSpread);
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
    void searchNearest()
    {
        struct Candidate {
            double bound; // by the envelope, cheaper than stepBound
            StepsInSpan steps;
            int rank;
            int z;
        };
        std::array<Candidate, std::size_t{2} * BaseCount> nearest{};
        for (int rank = 0; rank < BaseCount; ++rank) {
            const Shape& shape = Shapes[static_cast<std::size_t>(rank)];
            const Nearest n = nearestSteps(shape);
            const StepsInSpan coarse = coarser(n.steps);
            const std::size_t at = 2 * static_cast<std::size_t>(rank);
            nearest[at] = {envelopeBound(shape, n.steps), n.steps, rank, n.z};
            nearest[at + 1] = {envelopeBound(shape, coarse), coarse, rank, n.z + 1};
        }
        for (std::size_t tried = 0; tried < nearest.size(); ++tried) {
            const auto next = std::max_element(nearest.begin(), nearest.end(),
                                               [](const Candidate& a, const Candidate& b) { return a.bound < b.bound; });
            if (next->bound < bar())
                return;
            const Shape& shape = Shapes[static_cast<std::size_t>(next->rank)];
            if (stepBound(shape, next->steps) >= bar()) {
                if (const auto step = makeStep(shape, next->z))
                    consider(*step);
            }
            next->bound = -std::numeric_limits<double>::infinity();
        }
    }

    double envelopeBound(const Shape& shape, StepsInSpan s) const
    {
        const double simplicity = shape.plainSimplicity + (s.u <= m_r.zeroReachableUpTo ? 1.0 : 0.0);
        return 0.25 * simplicity + spreadEnvelope(m_r, s) + MostLegibility;
    }

    // The most a step can score, from the span in its steps.
    double stepBound(const Shape& shape, StepsInSpan s) const
    {
        const double simplicity = shape.plainSimplicity + (s.u <= m_r.zeroReachableUpTo ? 1.0 : 0.0);
        return 0.25 * simplicity + spreadBound(m_r, s) + MostLegibility;
    }

    void tryNearest(const Shape& shape, Nearest n)
    {
        tryStep(shape, n.z, n.steps);
        tryStep(shape, n.z + 1, coarser(n.steps));
    }

    void tryStep(const Shape& shape, int z, StepsInSpan s)
    {
        // The envelope first: cheaper, and mostly enough.
        if (envelopeBound(shape, s) < bar() || stepBound(shape, s) < bar())
            return;
        if (const auto step = makeStep(shape, z))
            consider(*step);
    }

    // Tries the steps further out than the nearest two, while their bounds can still beat the
    // best. Their span is at least 10 × count steps or below count / 10, and the envelope only
    // falls away from count, so most often none is tried.
    void searchFar(const Shape& shape)
    {
        if (0.25 * (shape.plainSimplicity + 1.0) + m_farSpread + MostLegibility < bar())
            return;
        const Nearest n = nearestSteps(shape);
        StepsInSpan fine = finer(n.steps);
        for (int z = n.z - 1; z >= m_centre - DecadesBelow && visit(shape, z, fine, true); --z)
            fine = finer(fine);
        StepsInSpan coarse = coarser(coarser(n.steps));
        for (int z = n.z + 2; z <= m_centre + DecadesAbove && visit(shape, z, coarse, false); ++z)
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
    bool visit(const Shape& shape, int z, StepsInSpan s, bool downwards)
    {
        const double reach = m_r.zeroReachableUpTo;
        // Downwards u grows, so once zero is out of reach it stays so.
        const bool zeroAhead = downwards ? s.u <= reach : reach > 0.0;
        const double simplicityAhead = shape.plainSimplicity + (zeroAhead ? 1.0 : 0.0);
        if (0.25 * simplicityAhead + spreadEnvelope(m_r, s) + MostLegibility < bar())
            return false;
        if (stepBound(shape, s) < bar())
            return true;
        if (const auto step = makeStep(shape, z))
            consider(*step);
        return true;
    }

    // Lays out the step and keeps it when it beats the best so far.
    void consider(const Step& s)
    {
        auto candidate = layOut(m_r, s);
        if (!candidate)
            return;
        const double upper = scoreBeforeLegibility(*candidate, m_r);
        if (m_found && !(upper > m_best.score))
            return;
        candidate->style = labelStyle(s, candidate->first, candidate->last, m_r.factorLabels, m_r.notation);
        candidate->score = upper - 0.05 * (1.0 - legibility(candidate->style));
        if (!m_found || candidate->score > m_best.score) {
            m_best = *candidate;
            m_found = true;
            m_bar = m_best.score - BoundSlack;
        }
    }

    const Request& m_r;
    int m_centre;
    double m_unitsInSpan;
    double m_inverseUnitsInSpan;
    double m_zeroSpread; // the most coverage and density add for a step with a tick at zero
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

    const Step& step = best->step;
    m_first = best->first;
    m_size = static_cast<int>(best->last - best->first + 1);
    m_stepDigits = step.digits();
    m_stepExponent = step.exponent;
    m_min = best->lmin; // value(0) and value(m_size - 1), worked out already
    m_max = best->lmax;

    m_factorExponent = best->style.factorExponent;
    factor = Decimal{1, m_factorExponent}.toDouble();
    m_format.notation = best->style.notation;
}

double NiceIntervals::value(int i) const
{
    return Decimal{(m_first + i) * m_stepDigits, m_stepExponent}.toDouble();
}

std::string NiceIntervals::label(int i) const
{
    return m_format.format(Decimal{(m_first + i) * m_stepDigits, m_stepExponent - m_factorExponent});
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
    return m_size > 0 ? Decimal{m_stepDigits, m_stepExponent}.toDouble() : 0.0;
}

} // namespace Orv::Math
