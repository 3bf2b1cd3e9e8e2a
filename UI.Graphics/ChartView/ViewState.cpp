#include "ViewState.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisPair.h"

#include <utility>

namespace Orv::Chart {

namespace {

// Axes are known by their place (null where the pair has none) ("x0" is the first of the x pair): names repeat across
// pairs.
template <typename Visit>
void forEachAxis(const AxisPairs& pairs, Visit visit)
{
    const std::pair<QChar, KelChartAxisPair*> named[] = {{u'x', pairs.x}, {u'y', pairs.y}, {u'z', pairs.z}};
    for (const auto& [letter, pair] : named) {
        if (pair == nullptr)
            continue;
        visit(QString(letter) + QLatin1Char('0'), pair->first());
        visit(QString(letter) + QLatin1Char('1'), pair->second());
    }
}

} // namespace

bool ViewState::Axis::operator==(const Axis& other) const
{
    return place == other.place && autoScale == other.autoScale && tightRange == other.tightRange && min == other.min
           && max == other.max;
}

ViewState ViewState::of(const AxisPairs& pairs)
{
    ViewState state;
    forEachAxis(pairs, [&state](const QString& place, const KelChartAxis* axis) {
        if (const auto* continuous = dynamic_cast<const KelChartAxisContinuous*>(axis))
            state.m_axes.push_back({place, continuous->autoScale.get(), continuous->tightRange.get(),
                                    continuous->min.get(), continuous->max.get()});
        else if (const auto* discrete = dynamic_cast<const KelChartAxisDiscrete*>(axis))
            state.m_axes.push_back({place, false, false, discrete->viewMin.get(), discrete->viewMax.get()});
    });
    return state;
}

void ViewState::applyTo(const AxisPairs& pairs) const
{
    forEachAxis(pairs, [this](const QString& place, KelChartAxis* axis) {
        for (const Axis& saved : m_axes) {
            if (saved.place != place)
                continue;
            if (auto* continuous = dynamic_cast<KelChartAxisContinuous*>(axis)) {
                continuous->min.set(saved.min);
                continuous->max.set(saved.max);
                continuous->tightRange.set(saved.tightRange);
                continuous->autoScale.set(saved.autoScale);
            } else if (auto* discrete = dynamic_cast<KelChartAxisDiscrete*>(axis)) {
                discrete->viewMin.set(saved.min);
                discrete->viewMax.set(saved.max);
            }
        }
    });
}

} // namespace Orv::Chart
