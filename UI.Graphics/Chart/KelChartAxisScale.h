#pragma once
// The computed scale of one axis: its range, the ticks with their values,
// labels and relative positions, the factor of the tick labels, the base line
// from which bars and areas start, and whether the axis is discrete, inverted
// and usable at all.
//
// Construction only decides whether the axis is in use: it is enabled and some
// valid variable names it as its x, y or z axis. `update` computes the rest;
// it does nothing on a scale that is not valid, so a scale that construction
// or an `update` left invalid stays so.
//
// Continuous axes are scaled to the fixed range of the axis (when "autoScale"
// is off and "min" < "max") or to the data on the axis with a margin:
//   - data on x: the union of the x ranges, widened by 2% at each end;
//   - data on y: each variable's y range widened by 1/20 at each end, or, for
//     a flat range, the union widened by 5% by `ExpandRange`.
// The range is rounded to nice intervals, which also give the tick values,
// labels, positions and factor.
//
// An axis with "tightRange" keeps the range it chose, fixed or from the data
// with the margins above, unrounded: its ticks are the nice ticks inside the
// range, and their positions are relative to the range, so the first and the
// last tick need not sit at its ends. A fixed range is then shown exactly, as
// a zoomed view sets it. A logarithmic axis keeps its range in decades the
// same way, with the majors and minors that lie inside it (at least one major
// where a power of ten or a linear tick lies inside); a time axis places its
// calendar ticks inside the range with or without it, and only its numeric
// fallback follows the property.
//
// Discrete axes are scaled to category indices [min, max): from the smallest
// x to one past the largest x of the variables drawn on the axis along x. A
// fixed range only narrows that. The entries are the axis's labels from the
// first shown category on, then empty fillers up to max; every entry sits at
// the centre of its category slot, (value - min + 0.5) / slots, with the
// offset rounded to float and 1 / slots computed in float. Its size is
// max - min truncated toward zero (saturated at the largest unsigned int), also
// for an invalid scale. It stores at most `MaxDiscreteEntries` entries: a range
// wider than that (a "max" near the largest int, data x near the largest float)
// gets its labels and fillers up to the limit only, and one warning on `derr`
// naming the axis; size and positions stay those of the whole range. An axis
// that is neither continuous nor discrete (a plain "chart.axis") gets an
// invalid scale.
//
// Time axes ("chart.axis.time") take their range as continuous axes do, then
// place ticks on calendar boundaries of the axis's time zone: the values are
// in the axis's timestamp unit, the labels are concise ("Mar", "14:00", "Tue
// 14") and `offsetText()` holds what all ticks share ("2012-03"), to be shown
// once beside the axis. The ticks are those inside the range; the range is not
// rounded outward. An axis whose unit is not a timestamp unit gets numeric
// ticks, with a warning; so does, without one, a range the calendar cannot
// tick (outside the years 1 to 9999, or too short for two ticks a microsecond
// apart).
//
// Logarithmic continuous axes ("logarithmic" true) keep every position in
// log10 space, as the data arrive from the iterator: min, max, the tick values
// and the base line are exponents, and the range's margin is taken there. A
// fixed "min" and "max" are real values (both must be positive, else the data
// decide). The ticks are powers of ten (1, 2, 5, ... decades apart) with minor
// ticks between them, or, under one decade, nice linear values placed at their
// logarithms; labels and `realValue` give the real values. Variables without
// a positive value on the axis leave it at 1..10.
//
// Entries are read by index below `size()`; an index past the stored entries
// answers 0 and an empty text, so a loop up to `size()` is safe, and
// `entryCount()` tells how many are stored.
//
// The scale keeps pointers to the axis and the cache; both must outlive every
// call of `update`.

#include "OrvChartExport.h"
#include "NiceIntervals.h"
#include "NumberFormat.h"

#include <QString>

#include <utility>
#include <vector>

class KelChartAxis;
class KelChartAxisContinuous;
class KelChartAxisDiscrete;
class KelChartAxisTime;
class KelChartEpochConversion;
class KelChartVariableListCache;
namespace Orv::Math {
class CalendarTicks;
class LogTicks;
}

class ORV_CHART_EXPORT KelChartAxisScale {
public:
    // The most entries (labels and fillers) a discrete scale stores. Beyond it
    // every further slot would be an empty filler; a million of them already
    // cost tens of megabytes, while no view draws that many categories.
    static constexpr unsigned int MaxDiscreteEntries = 1000000;

    // Invalid, empty, factor 1; `update` does nothing on it.
    KelChartAxisScale();
    KelChartAxisScale(const KelChartAxis& axis, const KelChartVariableListCache& cache);
    KelChartAxisScale(const KelChartAxisScale& other);
    KelChartAxisScale(KelChartAxisScale&& other) noexcept;
    KelChartAxisScale& operator=(const KelChartAxisScale& other);
    KelChartAxisScale& operator=(KelChartAxisScale&& other) noexcept;
    ~KelChartAxisScale();

    double min() const { return m_min; }
    double max() const { return m_max; }
    double factor() const { return m_factor; }
    // Ticks of a continuous axis, category slots of a discrete one.
    unsigned int size() const { return m_size; }
    // The entries stored: a discrete scale may store fewer than `size()` (the
    // entry limit) or more (labels beyond the shown range).
    unsigned int entryCount() const { return static_cast<unsigned int>(m_values.size()); }
    // Entry i, or 0 and an empty text past the stored entries.
    double value(unsigned int i) const { return i < m_values.size() ? m_values[i] : 0.0; }
    double percentage(unsigned int i) const { return i < m_percentages.size() ? m_percentages[i] : 0.0; }
    QString label(unsigned int i) const { return i < m_labels.size() ? m_labels[i] : QString(); }
    QString label(unsigned int i) { return std::as_const(*this).label(i); }
    bool valid() const { return m_valid; }
    QString axisName() const { return m_axisName; }
    QString axisName() { return m_axisName; }
    bool discrete() const { return m_discrete; }
    bool inverted() const { return m_inverted; }
    // The value of the range nearest to zero.
    double baseLine() const { return m_baseLine; }

    // Whether positions are log10 of the values (a logarithmic continuous axis).
    bool logarithmic() const { return m_logarithmic; }
    // The value tick i stands for: 10^value(i) on a logarithmic axis (the
    // double nearest the power of ten it shows), value(i) otherwise.
    double realValue(unsigned int i) const
    {
        return i < m_realValues.size() ? m_realValues[i] : value(i);
    }

    // Unlabelled ticks between the labelled ones (logarithmic axes only): a
    // position in the axis's coordinates like `value`, the real value, the
    // relative position like `percentage`, and a label a host may draw where
    // there is room. Hosts that draw only the ticks above may ignore them.
    struct MinorTick {
        double value = 0.0;
        double realValue = 0.0;
        double percentage = 0.0;
        QString label;
    };
    unsigned int minorTickCount() const { return static_cast<unsigned int>(m_minorTicks.size()); }
    const MinorTick& minorTick(unsigned int i) const { return m_minorTicks.at(i); }
    // What the labels of a time axis leave out because every tick shares it
    // ("2012", "2012-03-14"); empty for other axes.
    QString offsetText() const { return m_offsetText; }

    // Computes range, ticks, factor and base line for about `tickCount`
    // intervals, labels written in `format`.
    void update(unsigned int tickCount, const Orv::Math::NumberFormat& format);

    // Widens [min, max] by `fraction` of its width at each end. Degenerate
    // input still gives a usable range:
    //   - no width to widen by (a zero width or fraction): half of |max| at
    //     each end;
    //   - a single value inside (-1, 1): [-1, 1];
    //   - a single value at or beyond the largest float: [0, v], or [v, 0]
    //     when negative.
    // NaN bounds or fractions pass through as NaN, and so does an infinite
    // width times a zero fraction. The float version computes the widening in
    // float and rounds each new bound to float.
    template <class T>
    static void ExpandRange(T& min, T& max, T fraction);

private:
    // Empties the computed part; validity and the two pointers stay.
    void reset();

    void updateContinuous(const KelChartAxisContinuous& axis, unsigned int tickCount,
                          const Orv::Math::NumberFormat& format);
    // The range of the data on this axis with its margin; false when no valid
    // variable draws on the axis along x or y.
    // With `definedOnly`, variables whose every value on the axis is undefined
    // are left out rather than counted at the cache's stand-in 0.
    bool continuousDataRange(double& lo, double& hi, bool definedOnly = false) const;
    // Takes range, factor and ticks from the intervals. All tick production
    // runs through here.
    void takeTicks(const Orv::Math::NiceIntervals& intervals);
    // Makes [lo, hi] the range and places the ticks taken relative to it.
    void keepRange(double lo, double hi);
    // Where `value` lies in the range, 0 at min and 1 at max (the other way round when inverted).
    double relativePosition(double value) const;

    // The fixed range, or the data's range with its margin; false when neither.
    bool continuousRange(const KelChartAxisContinuous& axis, double& lo, double& hi) const;

    // Powers of ten or linear ticks of the real values, placed in log10 space.
    void updateLogarithmic(const KelChartAxisContinuous& axis, unsigned int tickCount,
                           const Orv::Math::NumberFormat& format);
    // The fixed range turned into log10 space, or the data's.
    bool logarithmicRange(const KelChartAxisContinuous& axis, double& lo, double& hi) const;
    // Takes the ticks with positions in [lo, hi], and that range; the rounded
    // range of the ticks takes them all.
    void takeLogTicks(const Orv::Math::LogTicks& ticks, double lo, double hi);

    // Calendar ticks in the axis's zone; a unit that is not a timestamp gives numeric ticks.
    void updateTime(const KelChartAxisTime& axis, unsigned int tickCount, const Orv::Math::NumberFormat& format);
    void takeCalendarTicks(const Orv::Math::CalendarTicks& ticks, const KelChartEpochConversion& epoch);

    void updateDiscrete(const KelChartAxisDiscrete& axis);
    // The category range [min, max) of the data on this axis along x.
    void discreteDataRange();
    void narrowToFixedRange(const KelChartAxisDiscrete& axis);
    void takeCategoryWindow(const KelChartAxisDiscrete& axis, double lo, double hi);
    void takeCategories(const KelChartAxisDiscrete& axis, double slots);
    void appendCategory(const QString& label, double value, double step);

    void updateBaseLine();

    double m_min;
    double m_max;
    double m_factor;
    unsigned int m_size;
    std::vector<double> m_values;
    std::vector<double> m_percentages;
    std::vector<QString> m_labels;
    bool m_valid;
    QString m_axisName;
    bool m_discrete;
    bool m_inverted;
    double m_baseLine;
    QString m_offsetText;
    bool m_logarithmic;
    std::vector<double> m_realValues; // logarithmic axes only
    std::vector<MinorTick> m_minorTicks;
    const KelChartAxis* m_axis;
    const KelChartVariableListCache* m_cache;
};

template <>
void KelChartAxisScale::ExpandRange<float>(float& min, float& max, float fraction);
template <>
void KelChartAxisScale::ExpandRange<double>(double& min, double& max, double fraction);
