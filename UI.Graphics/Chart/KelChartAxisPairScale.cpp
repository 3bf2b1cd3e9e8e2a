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
    update(tickCount, format, tickCount, format);
}

void KelChartAxisPairScale::update(unsigned int firstTickCount, const Orv::Math::NumberFormat& firstFormat,
                                   unsigned int secondTickCount, const Orv::Math::NumberFormat& secondFormat)
{
    m_first.update(firstTickCount, firstFormat);
    m_second.update(secondTickCount, secondFormat);
}

const KelChartAxisScale* KelChartAxisPairScale::find(const QString& name) const
{
    if (m_first.valid() && m_first.axisName() == name)
        return &m_first;
    if (m_second.valid() && m_second.axisName() == name)
        return &m_second;
    return nullptr;
}
