#pragma once
// A view of a chart as its properties hold it: the ranges of the continuous
// axes ("autoScale", "tightRange", "min", "max") and the view windows of the
// discrete ones, so that going back to a view gives the very frame it showed.

#include "OrvChartViewExport.h"
#include "ElementClasses.h"

#include <QString>

#include <vector>

namespace Orv::Chart {

// The range settings of the axes of a chart: of the continuous ones, and the
// view windows of the discrete ones (in `min` and `max`).
class ORV_CHARTVIEW_EXPORT ViewState {
public:
    struct Axis {
        // The axis's place: the pair's letter and 0 for its first axis, 1 for its second.
        QString place;
        bool autoScale;
        bool tightRange;
        double min;
        double max;
        bool operator==(const Axis& other) const;
    };

    ViewState() = default;
    // The settings the chart's axes hold now.
    static ViewState of(const AxisPairs& pairs);
    // Writes them back; axes that no longer exist are skipped.
    void applyTo(const AxisPairs& pairs) const;

    const std::vector<Axis>& axes() const { return m_axes; }
    bool operator==(const ViewState& other) const { return m_axes == other.m_axes; }
    bool operator!=(const ViewState& other) const { return !(*this == other); }

private:
    std::vector<Axis> m_axes;
};

} // namespace Orv::Chart
