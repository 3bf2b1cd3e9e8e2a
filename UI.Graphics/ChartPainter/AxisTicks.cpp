#include "AxisTicks.h"

#include "KelChartAxisScale.h"

#include <algorithm>

namespace Orv::Chart {

AxisTicks::AxisTicks(const KelChartAxisScale& scale, unsigned stride, const std::vector<bool>& minorLabels,
                     const std::vector<QString>& majorLabels)
    : m_logarithmic(scale.logarithmic())
{
    // A discrete scale may have more slots than it stores entries.
    const unsigned majors = std::min(scale.size(), scale.entryCount());
    const unsigned every = std::max(stride, 1u);
    m_major.reserve(majors);
    for (unsigned i = 0; i < majors; ++i) {
        Tick& tick = m_major.emplace_back();
        tick.value = scale.value(i);
        tick.label = i < majorLabels.size() ? majorLabels[i] : scale.label(i);
        tick.position = scale.percentage(i);
        tick.labelled = i % every == 0;
    }
    m_minor.reserve(scale.minorTickCount());
    for (unsigned i = 0; i < scale.minorTickCount(); ++i) {
        const KelChartAxisScale::MinorTick& minor = scale.minorTick(i);
        Tick& tick = m_minor.emplace_back();
        tick.value = minor.value;
        tick.label = minor.label;
        tick.position = minor.percentage;
        tick.labelled = i < minorLabels.size() && minorLabels[i];
    }
}

} // namespace Orv::Chart
