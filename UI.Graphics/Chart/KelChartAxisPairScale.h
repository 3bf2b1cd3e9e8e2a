#pragma once
// The computed scales of the two axes of an axis pair. The host builds one per
// axis pair, updates it and hands it to the per-variable scaling, which finds
// the scale of a variable's axis by name.
//
// A missing axis gets a default scale, which is never valid. The pair's axes
// and the cache must outlive every `update`.

#include "OrvChartExport.h"
#include "KelChartAxisScale.h"

class KelChartAxisPair;

class ORV_CHART_EXPORT KelChartAxisPairScale {
public:
    KelChartAxisPairScale(const KelChartAxisPair& pair, const KelChartVariableListCache& cache);
    KelChartAxisPairScale(const KelChartAxisPairScale& other);
    KelChartAxisPairScale(KelChartAxisPairScale&& other) noexcept;
    KelChartAxisPairScale& operator=(const KelChartAxisPairScale& other);
    KelChartAxisPairScale& operator=(KelChartAxisPairScale&& other) noexcept;
    ~KelChartAxisPairScale();

    const KelChartAxisScale& first() const { return m_first; }
    const KelChartAxisScale& second() const { return m_second; }

    // Updates the first, then the second scale.
    void update(unsigned int tickCount, const Orv::Math::NumberFormat& format);
    // Updates each scale with its own tick count and format.
    void update(unsigned int firstTickCount, const Orv::Math::NumberFormat& firstFormat,
                unsigned int secondTickCount, const Orv::Math::NumberFormat& secondFormat);

    // The first, else the second scale of that axis name, counting only valid
    // scales; null when there is none.
    const KelChartAxisScale* find(const QString& name) const;

private:
    KelChartAxisScale m_first;
    KelChartAxisScale m_second;
};
