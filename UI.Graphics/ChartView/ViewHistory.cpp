#include "ViewHistory.h"

namespace Orv::Chart {

void ViewHistory::reset(const ViewState& home)
{
    m_views.assign(1, home);
    m_current = 0;
}

void ViewHistory::push(const ViewState& state)
{
    if (state == current())
        return;
    m_views.resize(m_current + 1);
    m_views.push_back(state);
    ++m_current;
}

void ViewHistory::amend(const ViewState& state)
{
    // Home stays what the chart opened with.
    if (m_current == 0) {
        push(state);
        return;
    }
    m_views.resize(m_current + 1);
    m_views[m_current] = state;
}

const ViewState& ViewHistory::back()
{
    if (canGoBack())
        --m_current;
    return current();
}

const ViewState& ViewHistory::forward()
{
    if (canGoForward())
        ++m_current;
    return current();
}

} // namespace Orv::Chart
