#include "Pipeline.h"

#include "KelChartAxisContinuous.h"
#include "KelChartUpdateVariableUnits.h"

#include "NumberFormat.h"

namespace kelchart {

namespace {

std::vector<const KelChartVariable*> updateUnits(KelChart& chart, const AxisPairs& pairs)
{
    return KelChartUpdateVariableUnits(chart.unitSystem, *pairs.x, *pairs.y, *pairs.z, chart.variables)();
}

} // namespace

Pipeline::Pipeline(KelChart& chart, const AxisPairs& pairs, unsigned tickCount)
    : m_chart(chart)
    , m_tickCount(tickCount)
    , m_unitsAccepted(updateUnits(chart, pairs))
    , m_cache(m_unitsAccepted, QStringList())
    , m_xScale(updatedScale(*pairs.x, m_cache, tickCount))
    , m_yScale(updatedScale(*pairs.y, m_cache, tickCount))
    , m_scaling(m_xScale, m_yScale, m_cache)
{
    addAxis(m_xScale.first(), pairs.x->first(), AxisSide::Bottom);
    addAxis(m_xScale.second(), pairs.x->second(), AxisSide::Top);
    addAxis(m_yScale.first(), pairs.y->first(), AxisSide::Left);
    addAxis(m_yScale.second(), pairs.y->second(), AxisSide::Right);
    collectValidVariables();
}

// A pair scale keeps pointers to the pair's axes and to the cache, not to
// itself, so the updated copy is as good as the original.
KelChartAxisPairScale Pipeline::updatedScale(const KelChartAxisPair& pair, const KelChartVariableListCache& cache,
                                             unsigned tickCount)
{
    KelChartAxisPairScale scale(pair, cache);
    scale.update(tickCount, Orv::Math::NumberFormat());
    return scale;
}

// The scale's label and axis name accessors are not const; a copy answers them.
void Pipeline::addAxis(const KelChartAxisScale& scale, const KelChartAxis* axis, AxisSide side)
{
    if (!scale.valid())
        return;
    KelChartAxisScale copy = scale;
    AxisResult result{copy.axisName(), side, axis, copy.discrete(), copy.min(), copy.max(), copy.factor(),
                      copy.baseLine(), QString(), {}};
    if (const auto* continuous = dynamic_cast<const KelChartAxisContinuous*>(axis))
        result.unitLabel = continuous->unitLabel.get();
    for (unsigned i = 0; i < copy.size(); ++i)
        result.ticks.push_back({copy.value(i), copy.label(i), copy.percentage(i)});
    m_axes.push_back(std::move(result));
}

void Pipeline::collectValidVariables()
{
    for (size_t i = 0; i < m_cache.size(); ++i)
        m_validVariables.push_back(m_cache.cache(i));
}

const AxisResult* Pipeline::axis(const QString& name) const
{
    for (const AxisResult& result : m_axes)
        if (result.name == name)
            return &result;
    return nullptr;
}

} // namespace kelchart
