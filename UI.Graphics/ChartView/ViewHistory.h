#pragma once
// The views a user walked through (see ViewState). The first view is Home,
// the one the chart opened with.
// A new view after going back drops the views ahead, as a browser does.

#include "OrvChartViewExport.h"
#include "ViewState.h"

#include <cstddef>
#include <vector>

namespace Orv::Chart {

class ORV_CHARTVIEW_EXPORT ViewHistory {
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
