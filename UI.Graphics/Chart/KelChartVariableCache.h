#pragma once
// The cached data of one variable: flat x and y arrays of the points to draw,
// the iteration position of every item, the positions of points with one
// undefined component, and the bounding box of everything cached.
//
// A component equal to +infinity counts as undefined even when the iterator
// does not flag it; NaN is cached as an ordinary value. When sorting, points
// are put in ascending x order, stably; NaN x values have no place in a
// less-than order, so they go last, in iteration order, and -0.0 sorts equal
// to +0.0.
//
// The cache is built once and not updated when the variable changes.

#include "OrvChartExport.h"
#include "KelChartVariable.h"

#include "BoundingBox.h"
#include "OrvDiagnostics.h"

#include <QStringList>

#include <cstddef>
#include <vector>

class ORV_CHART_EXPORT KelChartVariableCache {
public:
    KelChartVariableCache();
    KelChartVariableCache(const KelChartVariable& variable, bool sort, const QStringList& positionAxes);
    KelChartVariableCache(const KelChartVariableCache& other);
    KelChartVariableCache(KelChartVariableCache&& other) noexcept;
    KelChartVariableCache& operator=(const KelChartVariableCache& other);
    KelChartVariableCache& operator=(KelChartVariableCache&& other) noexcept;
    ~KelChartVariableCache();

    const KelChartVariable& variable() const { return *m_variable; }
    bool valid() const { return m_valid; }
    bool scalar() const { return m_scalar; }

    const std::vector<double>& x() const { return m_x; }
    const std::vector<double>& y() const { return m_y; }
    const std::vector<double>& data() const { return m_y; }
    const std::vector<size_t>& index() const { return m_index; }
    const std::vector<double>& xUndef() const { return m_xUndef; }
    const std::vector<double>& yUndef() const { return m_yUndef; }
    const Orv::Math::BoundingBox& bounds() const { return m_bounds; }

    // 0 brought into the y range of the bounds: where an area fill starts.
    double fillBaseLine() const;
    // Smallest difference of neighbouring x values, computed on first request.
    double minXDelta() const;

private:
    struct Item;
    struct Minima;
    struct Collected;
    class Placement;
    struct InOrder;

    // Read the items in iteration order and hand each to `take` until it
    // refuses one; give whether every item was taken.
    template <class Take>
    bool readVectors(KelVariableIter& iter, Take& take, Minima& minima, orvdebug::TraceLines& trace);
    template <class Take>
    bool readScalars(KelVariableIter& iter, Take& take, Minima& minima, orvdebug::TraceLines& trace);
    template <class Take>
    bool read(KelVariableIter& iter, Take& take, Minima& minima, orvdebug::TraceLines& trace);
    // Places the items in ascending x order.
    void placeSorted(const Collected& items, Placement& placement);
    void releaseArrays();
    static void reportUndefined(const KelChartVariable& variable);

    const KelChartVariable* m_variable;
    bool m_valid;
    bool m_scalar;
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::vector<size_t> m_index;
    std::vector<double> m_yUndef;
    std::vector<double> m_xUndef;
    Orv::Math::BoundingBox m_bounds;
    mutable double m_minXDelta;
};
