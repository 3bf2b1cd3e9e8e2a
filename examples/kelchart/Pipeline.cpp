#include "Pipeline.h"

#include "ChartLayout.h"
#include "TextStyle.h"
#include "TickFit.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisTime.h"

#include <algorithm>
#include <map>

namespace kelchart {

namespace {

// The first run's request, before the layout is known.
constexpr unsigned firstCount = 8;

// The interval count each valid axis of the first run has room for.
TickCounts fittedCounts(const KelChartPipeline& first, const AxisPairs& pairs, const TickRoom& room)
{
    const ChartLayout layout(first, room.size);
    LabelRoom labels;
    labels.width = room.labelWidth ? room.labelWidth : TickFit::perCharacter(TickRoom::characterWidth);
    TickCounts counts;
    const auto fit = [&](const KelChartAxisScale& scale, const KelChartAxis* axis, AxisSide side) {
        if (!scale.valid() || axis == nullptr)
            return;
        labels.horizontal = side == AxisSide::Bottom || side == AxisSide::Top;
        labels.length = labels.horizontal ? layout.plot().width() : layout.plot().height();
        counts[axis] = TickFit::count(scale, labels, room.maxCount);
    };
    fit(first.xScales().first(), pairs.x->first(), AxisSide::Bottom);
    fit(first.xScales().second(), pairs.x->second(), AxisSide::Top);
    fit(first.yScales().first(), pairs.y->first(), AxisSide::Left);
    fit(first.yScales().second(), pairs.y->second(), AxisSide::Right);
    return counts;
}

unsigned countOf(const TickCounts& counts, const KelChartAxis* axis)
{
    const auto found = counts.find(axis);
    return found == counts.end() ? firstCount : found->second;
}

KelChartPipeline::Settings settingsFor(const TickCounts& counts)
{
    const auto request = [&counts](const KelChartAxis& axis) {
        return KelChartPipeline::TickRequest{countOf(counts, &axis), {}};
    };
    return {request, false, QStringList()};
}

} // namespace

Pipeline::Pipeline(KelChart& chart, const AxisPairs& pairs, const TickRoom& room)
    : m_chart(chart)
    , m_first(chart.unitSystem, *pairs.x, *pairs.y, *pairs.z, chart.variables,
              {KelChartPipeline::everyAxis(firstCount), false, QStringList()})
    , m_counts(fittedCounts(m_first, pairs, room))
    , m_run(*pairs.x, *pairs.y, *pairs.z, m_first.cache(), settingsFor(m_counts))
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
    const bool time = axis->type() == KelChartAxisTime::typeString;
    AxisResult result{scale.axisName(), side,           axis,           scale.discrete(), time, scale.offsetText(),
                      scale.min(),      scale.max(),    scale.factor(), scale.baseLine(), QString(),
                      countOf(m_counts, axis), {}};
    // A time axis's unit only says where its numbers start; its labels are dates.
    if (const auto* continuous = dynamic_cast<const KelChartAxisContinuous*>(axis); continuous && !time)
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
