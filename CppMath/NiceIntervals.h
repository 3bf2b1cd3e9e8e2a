#pragma once
// The ticks of an axis scale: round steps, exact values, clean labels.

#include "OrvCppMathExport.h"
#include "NumberFormat.h"

#include <cstdint>
#include <string>

namespace Orv::Math {

// Ticks for a data range [min, max]: size() values `step` apart, ascending, with their labels.
// The step is j × q × 10^z with q in 1, 5, 2, 2.5, 4, 3 (in that order of preference) and j >= 1:
// the ticks are every j-th multiple of the unit q × 10^z, starting at any multiple, so with j > 1
// they need not be multiples of the step: -10 10 30 is every second multiple of 10 from -10, a
// step of 20.
//
// Choosing the ticks: the search runs over j, q, z, the start among the unit multiples and, for
// enclosing ticks, how many steps beyond the tightest set they reach; the labeling with the best
// extended labeling quality of Talbot, Lin and Hanrahan (2010) wins:
//   0.25 simplicity + 0.2 coverage + 0.5 density + 0.05 legibility, with
//   simplicity = 1 - (position of q in the list above minus 1) / 5 - j + (1 if 0 is a tick),
//   coverage   = 1 - 0.5 ((dmax - lmax)^2 + (dmin - lmin)^2) / (0.1 (dmax - dmin))^2,
//   density    = 2 - max(r / t, t / r), r the tick density of the labeling, t the wanted one
//                (a single tick has none: it is taken only when nothing else fits),
//   legibility = the mean of four parts: the format of the labels as this class writes them,
//                1 for plain decimals, 0.5 with a power of 1000 factored out, 0.3 in scientific
//                notation; font size, orientation and overlap, left to the host, count as 1.
// So a round step and a tick at zero are weighed against covering the data tightly, getting
// close to `count` intervals and plain labels; enclosing ticks reach further out when the
// density gains more than the coverage loses. The search is cheap: upper bounds of simplicity,
// coverage and density, known from the step alone before laying out the ticks, skip every step
// that cannot beat the best labeling so far. The likely winners come first, so the bar rises
// early: for j = 1 the two steps of each q nearest span / count, best bound first; then, for j
// = 2, 3, ..., the two nearest steps of each q, and further decades only while their bounds
// allow. Steps stay within a thousandth of span / count to about 10^4 times it. When j × q is
// itself a listed q times a power of ten (2 × 2.5 = 5), ticks that start at a multiple of the step
// are those of that simpler step, which scores more for them, so only the other starts are tried.
//
// Exactness: a step is held as integer digits × 10^e (2.5 as 25 × 10^-1), and value(i) is the
// double nearest k·digits × 10^e, computed on its own (k·digits × 10^e, or k·digits / 10^-e for
// small steps; exact powers of ten up to 10^22, correctly rounded beyond), never by adding up
// steps, so values do not drift. Labels are written from the integer k·digits and the exponent,
// never from the double, so they show no float noise and zero never has a sign.
//
// Degenerate input gives an empty result (size() 0, max() <= min()): min >= max, a NaN or
// infinite bound, a span that overflows, a span too narrow for a step of at least 1e-300, or one
// too narrow relative to the bounds for distinct multiples (|k| must stay below 2^50).
class ORV_CPPMATH_EXPORT NiceIntervals {
public:
    // Wanted intervals outside [1, MaxCount] are clamped into it.
    static constexpr int MaxCount = 1000;
    // With factor labels, ticks whose largest magnitude is at least 10^LargeExponent, or below
    // 10^SmallExponent, get a factor.
    static constexpr int LargeExponent = 5;
    static constexpr int SmallExponent = -3;

    NiceIntervals() = default;

    // `count`: wanted number of intervals (count + 1 ticks).
    // `loose` true: the ticks enclose the data. The first is at or below `min`, the last at or
    //   above `max`, and they are min() and max() (the rounded range).
    //   false: only the ticks inside [min, max]; min() and max() are the first and the last of
    //   them (equal when there is one).
    // `factorLabels` true: when the ticks are very large or very small (see LargeExponent,
    //   SmallExponent), `factor` becomes a power of 1000 and labels show value / factor. It is the
    //   largest power of 1000 not above the largest tick magnitude, lowered while the labels would
    //   need more than two decimals (so 1000000..1000010 keeps factor 1 and integer labels).
    //   Otherwise `factor` is 1.
    // `format`: how labels are written. Automatic decimals means the step's precision ("0.0",
    //   "0.5", "1.0"); an Automatic notation is resolved once for all labels.
    NiceIntervals(double min, double max, int count, bool loose, bool factorLabels,
                  const NumberFormat& format);

    int size() const { return m_size; }
    // Tick i, 0 <= i < size(), ascending.
    double value(int i) const;
    double min() const { return m_min; }
    double max() const { return m_max; }
    // The text of tick i: value(i) / factor in the label format.
    std::string label(int i) const;
    // (value(i) - min()) / (max() - min()), or 1 minus that when inverted. Computed from the index,
    // so it is exact and never overflows; 0 when there are fewer than two ticks.
    double fraction(int i, bool inverted) const;

    // The distance between ticks; 0 when empty.
    double step() const;
    // `factor` is 10 to this power.
    int factorExponent() const { return m_factorExponent; }

    // The labels show value / factor. Informational: changing it does not change the labels.
    double factor = 1.0;

private:
    // value(i) is (m_first + i × m_stride) × m_stepDigits × 10^m_stepExponent.
    std::int64_t m_first = 0;
    std::int64_t m_stride = 1;
    int m_size = 0;
    std::int64_t m_stepDigits = 1;
    int m_stepExponent = 0;
    int m_factorExponent = 0;
    double m_min = 0.0;
    double m_max = 0.0;
    NumberFormat m_format; // notation resolved
};

} // namespace Orv::Math
