#include "ViewHistory.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisPair.h"

#include <utility>

namespace Orv::Chart {

namespace {

// Axes are known by their place ("x0" is the first of the x pair): names repeat across pairs.
template<typename Visit>
void forEachContinuousAxis(const AxisPairs& pairs, Visit visit)
{
    const std::pair<QChar, KelChartAxisPair*> named[] = {{u'x', pairs.x}, {u'y', pairs.y}, {u'z', pairs.z}};
    for (const auto& [letter, pair] : named) {
        if (pair == nullptr)
            continue;
        if (auto* first = dynamic_cast<KelChartAxisContinuous*>(pair->first()))
            visit(QString(letter) + QLatin1Char('0'), *first);
        if (auto* second = dynamic_cast<KelChartAxisContinuous*>(pair->second()))
            visit(QString(letter) + QLatin1Char('1'), *second);
    }
}

} // namespace

bool ViewState::Axis::operator==(const Axis& other) const
{
    return place == other.place && autoScale == other.autoScale && tightRange == other.tightRange &&
           min == other.min && max == other.max;
}

ViewState ViewState::of(const AxisPairs& pairs)
{
    ViewState state;
    forEachContinuousAxis(pairs, [&state](const QString& place, const KelChartAxisContinuous& axis) {
        state.m_axes.push_back(
            {place, axis.autoScale.get(), axis.tightRange.get(), axis.min.get(), axis.max.get()});
    });
    return state;
}

void ViewState::applyTo(const AxisPairs& pairs) const
{
    forEachContinuousAxis(pairs, [this](const QString& place, KelChartAxisContinuous& axis) {
        for (const Axis& saved : m_axes) {
            if (saved.place != place)
                continue;
            axis.min.set(saved.min);
            axis.max.set(saved.max);
            axis.tightRange.set(saved.tightRange);
            axis.autoScale.set(saved.autoScale);
        }
    });
}

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
