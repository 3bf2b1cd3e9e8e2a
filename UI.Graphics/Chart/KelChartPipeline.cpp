#include "KelChartPipeline.h"

#include "KelChartAxisPair.h"
#include "KelChartUpdateVariableUnits.h"

KelChartPipeline::TickRequests KelChartPipeline::everyAxis(unsigned int count, const Orv::Math::NumberFormat& format)
{
    return [count, format](const KelChartAxis&) { return TickRequest{count, format}; };
}

KelChartPipeline::KelChartPipeline(const KelUnitSystem& units, const KelChartAxisPair& xPair,
                                   const KelChartAxisPair& yPair, const KelChartAxisPair& zPair,
                                   KelChartVariableList& variables, const Settings& settings)
    : m_unitsAccepted(KelChartUpdateVariableUnits(units, xPair, yPair, zPair, variables)())
    , m_ownCache(m_unitsAccepted, settings.positionAxes)
    , m_cache(m_ownCache)
    , m_xScales(updatedScales(xPair, m_cache, settings.ticks))
    , m_yScales(updatedScales(yPair, m_cache, settings.ticks))
    , m_zScales(updatedScales(zPair, m_cache, settings.ticks))
    , m_scaling(scalingOf(settings.threeD))
    , m_validVariables(validVariablesOf())
{
}

KelChartPipeline::KelChartPipeline(const KelChartAxisPair& xPair, const KelChartAxisPair& yPair,
                                   const KelChartAxisPair& zPair, const KelChartVariableListCache& cache,
                                   const Settings& settings)
    : m_cache(cache)
    , m_xScales(updatedScales(xPair, m_cache, settings.ticks))
    , m_yScales(updatedScales(yPair, m_cache, settings.ticks))
    , m_zScales(updatedScales(zPair, m_cache, settings.ticks))
    , m_scaling(scalingOf(settings.threeD))
    , m_validVariables(validVariablesOf())
{
}

KelChartPipeline::~KelChartPipeline() = default;

// A pair scale points to the pair's axes and to the cache, not to itself, so
// the returned scale is as good as the one updated here.
KelChartAxisPairScale KelChartPipeline::updatedScales(const KelChartAxisPair& pair,
                                                      const KelChartVariableListCache& cache,
                                                      const TickRequests& ticks)
{
    const auto request = [&ticks](const KelChartAxis* axis) {
        return ticks && axis ? ticks(*axis) : TickRequest();
    };
    const TickRequest first = request(pair.first());
    const TickRequest second = request(pair.second());
    KelChartAxisPairScale scales(pair, cache);
    scales.update(first.count, first.format, second.count, second.format);
    return scales;
}

KelChartPerVariableScaling KelChartPipeline::scalingOf(bool threeD) const
{
    if (threeD)
        return {m_xScales, m_yScales, m_zScales, m_cache};
    return {m_xScales, m_yScales, m_cache};
}

KelChartValidVariableList KelChartPipeline::validVariablesOf() const
{
    KelChartValidVariableList list;
    for (size_t i = 0; i < m_cache.size(); ++i)
        list.push_back(m_cache.cache(i));
    return list;
}

const KelChartAxisScale* KelChartPipeline::findScale(const QString& axisName) const
{
    for (const KelChartAxisPairScale* scales : {&m_xScales, &m_yScales, &m_zScales})
        if (const KelChartAxisScale* found = scales->find(axisName))
            return found;
    return nullptr;
}
