#pragma once
// The points of one variable while they arrive: a measurement that grows as
// it is shown. Items are appended, the oldest dropped beyond a limit, and
// what a view needs follows at a constant cost per item, whatever the size:
// the arrays, the bounding box and the decimation summary are never rebuilt.
//
// What it holds is what a cache built from scratch on the kept items would
// hold (KelChartVariableCache of a vector variable, not sorted, not drawn at
// its positions): the same x, y, xUndef and yUndef, bit for bit, and the same
// bounds and validity. Items arrive in x order in most streams; they are kept
// in arrival order all the same, so that data arriving out of order are
// drawn as they are (their views then cost a pass over the points).
//
// Memory: with a limit of n items the arrays hold at most about 1.25 n
// points, reserved once; the summary adds about 3 bytes per point. The
// oldest points are dropped by moving the others down in large steps (a
// multiple of the summary's largest block), so that every block stays
// where it was and the cost per item stays constant.
//
// Not thread safe: append and draw from one thread. A host that receives
// data on another thread queues them there (under a mutex, or in a lock-free
// queue) and drains the queue into the series on its own thread once per
// frame, before it draws.

#include "OrvChartExport.h"
#include "KelChartDecimatedView.h"
#include "KelChartVariableCache.h"

#include "BoundingBox.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class KelChartVariable;

class ORV_CHART_EXPORT KelChartLiveSeries {
public:
    // `variable` (which must outlive the series) names the series and styles
    // it; its own items are not read.
    explicit KelChartLiveSeries(const KelChartVariable& variable, std::size_t limit = 0);
    KelChartLiveSeries(const KelChartLiveSeries&) = delete;
    KelChartLiveSeries& operator=(const KelChartLiveSeries&) = delete;
    ~KelChartLiveSeries();

    const KelChartVariable& variable() const { return *m_variable; }

    // The most items kept, the oldest dropped first; 0 keeps every item.
    void setLimit(std::size_t items);
    std::size_t limit() const { return m_limit; }

    // One item as an iterator gives it. A component equal to +infinity is
    // undefined even when not flagged; NaN is kept as a value.
    void append(double x, double y, bool xUndefined = false, bool yUndefined = false);
    // `count` items; +infinity marks an undefined component.
    void append(const double* x, const double* y, std::size_t count);
    void clear();

    // The items kept, and those appended since construction or `clear`.
    std::size_t items() const { return static_cast<std::size_t>(m_nextItem - m_firstItem); }
    std::uint64_t appended() const { return m_nextItem; }
    // Items with both components undefined that were appended (and reported).
    std::uint64_t completelyUndefined() const { return m_completelyUndefined; }

    // The kept points, as a view reads them: valid until the next append.
    KelChartDecimatedView::Data data() const;
    Orv::Math::BoundingBox bounds() const;
    bool valid() const;
    // A cache that stands for the kept points where the scales need one: the
    // variable, the bounds and the validity; its arrays are empty.
    const KelChartVariableCache& cache() const;

    // Memory held for the points, the undefined items and the summary, in bytes.
    std::size_t memoryBytes() const;

private:
    friend class KelChartDecimatedView;

    // The extents of points without a NaN component, by block, as the summary's levels.
    struct Numbers;
    // Items with an undefined component, oldest first from `begin`.
    struct Undefined {
        std::vector<double> values;
        std::vector<std::uint64_t> items;
        std::size_t begin = 0;
        std::size_t size() const { return values.size() - begin; }
        bool leads(std::uint64_t item) const { return begin < items.size() && items[begin] == item; }
        void push(double value, std::uint64_t item);
        void dropFront();
    };
    // Storage indices, ascending, oldest first from `begin`.
    struct Marks {
        std::vector<std::size_t> at;
        std::size_t begin = 0;
        void dropBefore(std::size_t first);
        void shiftDown(std::size_t by);
    };

    void appendPoint(double x, double y);
    void reserve(std::size_t points);
    void appendPoints(const double* x, const double* y, std::size_t count);
    void summarise(std::size_t k, double x, double y);
    void summarise(std::size_t begin, std::size_t end);
    bool summariseFiniteBlock(std::size_t first);
    void completeBlock(std::size_t level, std::size_t block);
    void addLevelsUpTo(std::size_t count);
    void dropBeyondLimit();
    void dropOldest();
    void makeRoom();
    void compact(std::size_t shift);
    std::size_t alignment() const;
    std::size_t levelCap() const;
    void changed() { ++m_generation; }

    const KelChartDecimation::Summary& summary() const;
    bool ordered() const;
    Numbers numbersIn(std::size_t begin, std::size_t end) const;
    void collectNumbers(std::size_t level, std::size_t begin, std::size_t end, Numbers& out) const;
    std::uint64_t firstPointItem() const;
    double firstDefined(const std::vector<double>& points, const Undefined& undefined) const;

    const KelChartVariable* m_variable;
    std::size_t m_limit = 0;
    // Storage of the points; the kept ones start at m_start.
    std::vector<double> m_x;
    std::vector<double> m_y;
    std::size_t m_start = 0;
    Undefined m_yUndef;
    Undefined m_xUndef;
    Undefined m_noneDefined;
    std::uint64_t m_firstItem = 0;
    std::uint64_t m_nextItem = 0;
    std::uint64_t m_completelyUndefined = 0;
    // The summary's levels and broken blocks count by storage index and are
    // kept up to date as points arrive; the rest is found per request.
    std::unique_ptr<KelChartDecimation::Summary> m_summary;
    std::vector<std::vector<Numbers>> m_numberLevels;
    Marks m_halfNaN;
    // Points whose x lies below their predecessor's, and points with a NaN x.
    Marks m_descents;
    Marks m_nanX;
    std::size_t m_lastNumberX;
    std::uint64_t m_generation = 0;
    mutable std::uint64_t m_summarised = ~std::uint64_t(0);
    mutable KelChartVariableCache m_cache;
};
