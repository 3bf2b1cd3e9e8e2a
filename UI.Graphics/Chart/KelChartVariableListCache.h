#pragma once
// The caches of all enabled variables of a chart that have something to draw,
// stable-sorted by the variables' "order", with the aggregates that axis
// scaling needs: the union box, the smallest x spacing and the largest point
// count, each computed on first request and kept.

#include "OrvChartExport.h"
#include "KelChartVariableCache.h"
#include "KelChartVariableList.h"

#include <vector>

class ORV_CHART_EXPORT KelChartVariableListCache {
public:
    KelChartVariableListCache();
    KelChartVariableListCache(const std::vector<const KelChartVariable*>& variables, const QStringList& positionAxes);
    explicit KelChartVariableListCache(const KelChartVariableList& list);
    // Caches made elsewhere (those that stand for live series), kept when
    // valid and stable-sorted by their variables' "order".
    explicit KelChartVariableListCache(std::vector<KelChartVariableCache> caches);
    KelChartVariableListCache(const KelChartVariableListCache& other);
    KelChartVariableListCache(KelChartVariableListCache&& other) noexcept;
    KelChartVariableListCache& operator=(const KelChartVariableListCache& other);
    KelChartVariableListCache& operator=(KelChartVariableListCache&& other) noexcept;
    ~KelChartVariableListCache();

    size_t size() const { return m_caches.size(); }
    const KelChartVariableCache& cache(size_t i) const { return m_caches[i]; }

    const Orv::Math::BoundingBox& bounds() const;
    double fillBaseLine() const;
    double minXDelta() const;
    int maxScalarLen() const;
    void clear();

private:
    void add(const KelChartVariable& variable, const QStringList& positionAxes);
    void sortByOrder();

    std::vector<KelChartVariableCache> m_caches;
    mutable double m_minXDelta;
    mutable Orv::Math::BoundingBox m_bounds;
    mutable int m_maxScalarLen;
};
