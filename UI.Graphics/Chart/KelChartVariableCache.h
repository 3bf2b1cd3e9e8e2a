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
// The cache is built once and not updated when the variable changes. Its
// arrays never change after construction either, so copies share them: a copy
// costs the same for ten points as for ten million.
//
// Items are read through the iteration interface, one virtual call per
// operation, except from the framework's in-memory iterator, whose delivered
// arrays are read directly: same items, same flags, same result.

#include "OrvChartExport.h"
#include "KelChartVariable.h"

#include "BoundingBox.h"
#include "OrvDiagnostics.h"

#include <QStringList>

#include <cstddef>
#include <memory>
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

    const std::vector<double>& x() const { return arrays().x; }
    const std::vector<double>& y() const { return arrays().y; }
    const std::vector<double>& data() const { return arrays().y; }
    const std::vector<size_t>& index() const { return arrays().index; }
    const std::vector<double>& xUndef() const { return arrays().xUndef; }
    const std::vector<double>& yUndef() const { return arrays().yUndef; }
    const Orv::Math::BoundingBox& bounds() const { return m_bounds; }

    // 0 brought into the y range of the bounds: where an area fill starts.
    double fillBaseLine() const;
    // Smallest difference of neighbouring x values, computed on first request.
    double minXDelta() const;

    // What the nearest-point queries give when no point qualifies.
    static constexpr size_t npos = static_cast<size_t>(-1);
    // The point whose x is nearest to `x`, by binary search: the points must be
    // in ascending x order (a sorting cache). Points with a NaN x never count;
    // of two equally near points the first wins. npos when none has a number x
    // or `x` is NaN.
    size_t nearestIndex(double x) const;
    // The point nearest to (x, y) in any order, O(n), with distances measured
    // along x in units of `xScale` and along y in units of `yScale` (a pixel's
    // size in data units, so that "nearest" means nearest on the screen).
    // Points with a NaN component never count; npos when none qualifies or a
    // scale is not a positive number.
    size_t nearestIndex(double x, double y, double xScale, double yScale) const;

protected:
    // Caches `variable` with its items read from `items` rather than from its
    // own iterator, through the iteration interface unless `items` is exactly
    // the in-memory iterator.
    KelChartVariableCache(const KelChartVariable& variable, KelVariableIterInterface& items, bool sort,
                          const QStringList& positionAxes);

private:
    // A live series stands for its kept points with a cache of its bounds.
    friend class KelChartLiveSeries;

    struct Arrays {
        std::vector<double> x;
        std::vector<double> y;
        std::vector<size_t> index;
        std::vector<double> yUndef;
        std::vector<double> xUndef;
    };
    struct Item;
    struct Minima;
    struct Collected;
    class Placement;
    struct InOrder;
    class PerItem;
    class InMemory;

    const Arrays& arrays() const { return m_arrays ? *m_arrays : noArrays(); }
    static const Arrays& noArrays();

    // Fills `arrays` from `source`, placing items as they are read while
    // that keeps them in order, else sorting them; gives the item count.
    template <class Source>
    size_t fill(Source source, int dimension, Arrays& arrays, bool sort, bool positional,
                orvdebug::TraceLines& trace);
    // Read the items in iteration order and hand each to `take` until it
    // refuses one; give whether every item was taken.
    template <class Source, class Take>
    bool readVectors(Source& source, Take& take, Minima& minima, orvdebug::TraceLines& trace);
    template <class Source, class Take>
    bool readScalars(Source& source, Take& take, Minima& minima, orvdebug::TraceLines& trace);
    template <class Source, class Take>
    bool read(Source& source, int dimension, Take& take, Minima& minima, orvdebug::TraceLines& trace);
    // Places the items in ascending x order.
    void placeSorted(const Collected& items, Placement& placement);
    static void reportUndefined(const KelChartVariable& variable);

    const KelChartVariable* m_variable;
    bool m_valid;
    bool m_scalar;
    // Null when empty; never changed once built, so copies share it.
    std::shared_ptr<const Arrays> m_arrays;
    Orv::Math::BoundingBox m_bounds;
    mutable double m_minXDelta;
};
