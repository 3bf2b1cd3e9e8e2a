#include "KelChartAxisPairScale.h"

#include "KelChartAxisPair.h"

namespace {

KelChartAxisScale scaleOf(const KelChartAxis* axis, const KelChartVariableListCache& cache)
{
    return axis ? KelChartAxisScale(*axis, cache) : KelChartAxisScale();
}

} // namespace

KelChartAxisPairScale::KelChartAxisPairScale(const KelChartAxisPair& pair, const KelChartVariableListCache& cache)
    : m_first(scaleOf(pair.first(), cache))
    , m_second(scaleOf(pair.second(), cache))
{
}

KelChartAxisPairScale::KelChartAxisPairScale(const KelChartAxisPairScale& other) = default;
KelChartAxisPairScale::KelChartAxisPairScale(KelChartAxisPairScale&& other) noexcept = default;
KelChartAxisPairScale& KelChartAxisPairScale::operator=(const KelChartAxisPairScale& other) = default;
KelChartAxisPairScale& KelChartAxisPairScale::operator=(KelChartAxisPairScale&& other) noexcept = default;
KelChartAxisPairScale::~KelChartAxisPairScale() = default;

void KelChartAxisPairScale::update(unsigned int tickCount, const Orv::Math::NumberFormat& format)
{
    m_first.update(tickCount, format);
    m_second.update(tickCount, format);
}

const KelChartAxisScale* KelChartAxisPairScale::find(const QString& name) const
{
    if (m_first.m_axisName == name && m_first.valid())
        return &m_first;
    if (m_second.m_axisName == name && m_second.valid())
        return &m_second;
    return nullptr;
}
