#include "Pipeline.h"

#include "KelChartAxisContinuous.h"

#include <algorithm>

namespace kelchart {

Pipeline::Pipeline(KelChart& chart, const AxisPairs& pairs, unsigned tickCount)
    : m_chart(chart)
    , m_tickCount(tickCount)
    , m_run(chart.unitSystem, *pairs.x, *pairs.y, *pairs.z, chart.variables,
            {KelChartPipeline::everyAxis(tickCount), false, QStringList()})
{
    addAxis(m_run.xScales().first(), pairs.x->first(), AxisSide::Bottom);
    addAxis(m_run.xScales().second(), pairs.x->second(), AxisSide::Top);
    addAxis(m_run.yScales().first(), pairs.y->first(), AxisSide::Left);
    addAxis(m_run.yScales().second(), pairs.y->second(), AxisSide::Right);
}

void Pipeline::addAxis(const KelChartAxisScale& scale, const KelChartAxis* axis, AxisSide side)
{
    if (!scale.valid())
        return;
    AxisResult result{scale.axisName(), side, axis, scale.discrete(), scale.min(), scale.max(), scale.factor(),
                      scale.baseLine(), QString(), {}};
    if (const auto* continuous = dynamic_cast<const KelChartAxisContinuous*>(axis))
        result.unitLabel = continuous->unitLabel.get();
    // A discrete scale may have more slots than it stores entries.
    const unsigned ticks = std::min(scale.size(), scale.entryCount());
    result.ticks.reserve(ticks);
    for (unsigned i = 0; i < ticks; ++i)
        result.ticks.push_back({scale.value(i), scale.label(i), scale.percentage(i)});
    m_axes.push_back(std::move(result));
}

const AxisResult* Pipeline::axis(const QString& name) const
{
    for (const AxisResult& result : m_axes)
        if (result.name == name)
            return &result;
    return nullptr;
}

} // namespace kelchart
