#include "KelChartVariableListCache.h"
#include "KelChartBaseLine.h"

#include <algorithm>
#include <limits>
#include <utility>

KelChartVariableListCache::KelChartVariableListCache()
    : m_minXDelta(-1.0)
    , m_maxScalarLen(-1)
{
}

KelChartVariableListCache::KelChartVariableListCache(const std::vector<const KelChartVariable*>& variables,
                                                     const QStringList& positionAxes)
    : KelChartVariableListCache()
{
    m_caches.reserve(variables.size());
    for (const KelChartVariable* variable : variables)
        if (variable)
            add(*variable, positionAxes);
    sortByOrder();
}

KelChartVariableListCache::KelChartVariableListCache(const KelChartVariableList& list)
    : KelChartVariableListCache()
{
    const QStringList noPositionAxes;
    m_caches.reserve(list.size());
    for (unsigned i = 0; i < list.size(); ++i)
        if (const KelChartVariable* variable = list[i])
            add(*variable, noPositionAxes);
    sortByOrder();
}

KelChartVariableListCache::KelChartVariableListCache(std::vector<KelChartVariableCache> caches)
    : KelChartVariableListCache()
{
    for (KelChartVariableCache& cache : caches)
        if (cache.valid())
            m_caches.push_back(std::move(cache));
    sortByOrder();
}

KelChartVariableListCache::KelChartVariableListCache(const KelChartVariableListCache& other) = default;
KelChartVariableListCache::KelChartVariableListCache(KelChartVariableListCache&& other) noexcept = default;
KelChartVariableListCache& KelChartVariableListCache::operator=(const KelChartVariableListCache& other) = default;
KelChartVariableListCache& KelChartVariableListCache::operator=(KelChartVariableListCache&& other) noexcept = default;
KelChartVariableListCache::~KelChartVariableListCache() = default;

// Points are sorted by x exactly when the variable's style asks to sort by component 0.
void KelChartVariableListCache::add(const KelChartVariable& variable, const QStringList& positionAxes)
{
    const bool sort = variable.style.componentSortAxis.get() == 0;
    KelChartVariableCache cache(variable, sort, positionAxes);
    if (cache.valid())
        m_caches.push_back(std::move(cache));
}

// Each variable's order is read once, and each cache moves once: sorting the
// caches themselves would read two properties and move caches per comparison.
void KelChartVariableListCache::sortByOrder()
{
    std::vector<std::pair<int, size_t>> byOrder; // (order, position)
    byOrder.reserve(m_caches.size());
    for (size_t i = 0; i < m_caches.size(); ++i)
        byOrder.emplace_back(m_caches[i].variable().order.get(), i);
    std::stable_sort(byOrder.begin(), byOrder.end(),
                     [](const std::pair<int, size_t>& a, const std::pair<int, size_t>& b) { return a.first < b.first; });
    std::vector<KelChartVariableCache> sorted;
    sorted.reserve(m_caches.size());
    for (const auto& entry : byOrder)
        sorted.push_back(std::move(m_caches[entry.second]));
    m_caches.swap(sorted);
}

const Orv::Math::BoundingBox& KelChartVariableListCache::bounds() const
{
    if (!m_bounds.defined())
        for (const KelChartVariableCache& cache : m_caches)
            m_bounds += cache.bounds();
    return m_bounds;
}

double KelChartVariableListCache::fillBaseLine() const
{
    const Orv::Math::BoundingBox& box = bounds();
    return KelChartBaseLine(box.min().y(), box.max().y());
}

double KelChartVariableListCache::minXDelta() const
{
    if (m_minXDelta < 0 && !m_caches.empty()) {
        double delta = std::numeric_limits<double>::max();
        for (const KelChartVariableCache& cache : m_caches)
            delta = std::min(delta, cache.minXDelta());
        m_minXDelta = delta;
    }
    return m_minXDelta;
}

int KelChartVariableListCache::maxScalarLen() const
{
    if (m_maxScalarLen < 0) {
        m_maxScalarLen = 0;
        for (const KelChartVariableCache& cache : m_caches)
            m_maxScalarLen = std::max(m_maxScalarLen, static_cast<int>(cache.y().size()));
    }
    return m_maxScalarLen;
}

void KelChartVariableListCache::clear()
{
    m_caches.clear();
    m_minXDelta = -1.0;
    m_bounds.reset();
    m_maxScalarLen = -1;
}
