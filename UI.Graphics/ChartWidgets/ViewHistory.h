#pragma once
// The views a user walked through: the ranges of every continuous axis of a
// chart, as its properties hold them, so that going back to a view gives the
// very frame it showed. The first view is Home, the one the chart opened with.
// A new view after going back drops the views ahead, as a browser does.

#include "OrvChartWidgetsExport.h"
#include "ElementClasses.h"

#include <QString>

#include <cstddef>
#include <vector>

namespace Orv::Chart {

// The range settings of the axes of a chart: of the continuous ones, and the
// view windows of the discrete ones (in `min` and `max`).
class ORV_CHARTWIDGETS_EXPORT ViewState {
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

class ORV_CHARTWIDGETS_EXPORT ViewHistory {
public:
    // Starts anew with Home.
    void reset(const ViewState& home);
    // A view the user chose; the same view as the current one is no new step.
    void push(const ViewState& state);
    // The current view became this one by small steps of one gesture (wheel
    // notches): it takes the place of the current view rather than adding one.
    void amend(const ViewState& state);

    bool canGoBack() const { return m_current > 0; }
    bool canGoForward() const { return m_current + 1 < m_views.size(); }
    // The view stepped to; the current one when there is none to step to.
    const ViewState& back();
    const ViewState& forward();
    const ViewState& home() const { return m_views.front(); }
    const ViewState& current() const { return m_views[m_current]; }
    std::size_t size() const { return m_views.size(); }

private:
    // Never empty: Home is the first.
    std::vector<ViewState> m_views{ViewState()};
    std::size_t m_current = 0;
};

} // namespace Orv::Chart
