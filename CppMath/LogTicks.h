#pragma once
// The ticks of a logarithmic axis: positions in log10 space, labels of the real values.

#include "OrvCppMathExport.h"
#include "NumberFormat.h"

#include <string>
#include <vector>

namespace Orv::Math {

// Ticks for the range [10^lo, 10^hi], given by its exponents `lo` < `hi` (the axis works in
// log10 space; the caller takes the logarithms). Three regimes, by the width of the range:
//   - Decades (one decade or more): major ticks at powers of ten whose exponents are multiples
//     of a decade stride of 1, 2 or 5 × 10^n, chosen so that the number of intervals comes
//     closest to `count`. With a stride of one decade the minor ticks are 2..9 × 10^k; with 2,
//     5 or 10 they are the skipped powers of ten; wider strides have none. The range is rounded
//     out to majors, or, with a stride of one, to the nearest minor ticks when that still
//     leaves two majors inside.
//   - Linear (less than one decade): nice linear ticks of the real values (101.2, 101.4, ...)
//     placed at their logarithms, with the common factor of `NiceIntervals`; ticks at or
//     below zero are dropped and the range then starts at `lo`. No minors.
//   - Empty: lo >= hi, or a bound that is NaN or infinite.
// Every regime that is not empty gives at least two majors.
//
// Exactness: a power of ten's position is its integer exponent and its value is the double
// nearest 10^k (what strtod gives for "1e-7"). Labels are written from exact decimals, never
// from the doubles, in one notation for all ticks of the axis: `format`'s, or the automatic
// choice for the smallest and largest major, which writes powers of ten as people do: "0.001",
// "1", "1000" while those stay short, else "10⁻⁷", "10⁰", "2×10³" (UTF-8 superscripts, plain
// text for any font).
class ORV_CPPMATH_EXPORT LogTicks {
public:
    enum class Regime { Empty, Decades, Linear };

    // Majors exist only at powers of ten a double can hold (subnormal ones included).
    static constexpr int MinExponent = -323;
    static constexpr int MaxExponent = 308;

    struct Tick {
        double position = 0.0; // log10 of value, the axis coordinate
        double value = 0.0;    // the real value
        std::string label;     // the real value / factor, written from an exact decimal
    };

    LogTicks() = default;
    // `count`: wanted number of intervals between majors, clamped to [1, 1000].
    LogTicks(double lo, double hi, int count, const NumberFormat& format);

    Regime regime() const { return m_regime; }
    // The rounded range, in log10 space.
    double min() const { return m_min; }
    double max() const { return m_max; }
    // Labels show value / factor (a power of 1000, linear regime only).
    double factor() const { return m_factor; }
    // The exponent distance between majors; 0 unless Decades.
    int decadeStride() const { return m_stride; }

    int size() const { return static_cast<int>(m_majors.size()); }
    const Tick& major(int i) const { return m_majors[static_cast<std::size_t>(i)]; }
    const std::string& label(int i) const { return major(i).label; }

    int minorCount() const { return static_cast<int>(m_minors.size()); }
    const Tick& minor(int i) const { return m_minors[static_cast<std::size_t>(i)]; }
    const std::string& minorLabel(int i) const { return minor(i).label; }

    // (position - min()) / (max() - min()), or 1 minus that when inverted.
    double fraction(double position, bool inverted) const;

private:
    void placeDecades(double lo, double hi, int count);
    void placeMajors(double lo, double hi, int stride);
    void placeLinear(double lo, double hi, int count);
    void addMinors(int firstExponent, int lastExponent);
    void roundToMinors(double lo, double hi);
    void resolveNotation();
    bool powerLabels() const;

    Regime m_regime = Regime::Empty;
    double m_min = 0.0;
    double m_max = 0.0;
    double m_factor = 1.0;
    int m_stride = 0;
    std::vector<Tick> m_majors;
    std::vector<Tick> m_minors;
    NumberFormat m_format;
    bool m_automaticNotation = false; // chosen anew for each stride tried
};

} // namespace Orv::Math
