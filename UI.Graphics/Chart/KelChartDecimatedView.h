#pragma once
// The points of one cached variable that are worth drawing at a resolution:
// a picture of millions of points costs what a picture of a few thousand does.
//
// Lines (`lines`): for every pixel column, and within it every unbroken run,
// the first, lowest, highest and last point in index order. A line through
// these, with points snapped to pixel centres, covers exactly the pixels the
// line through all points covers; unsnapped it differs by less than a pixel.
// One point is kept beyond each end of the view so that lines enter and leave
// it. A point that is not drawable (an x or y that is NaN or infinite) is not
// returned; the line breaks there, and also between neighbours whose x values
// enclose, strictly, the x of a point without y (the cache's yUndef). A break
// is returned as `breakMark`, never twice in a row nor at either end.
//
// Points (`points`): one point per occupied pixel cell of the view, the last
// in index order, which is the one drawn on top.
//
// Ordered data (x ascending, NaN x last, as a sorting cache leaves them) is
// summarised on the first request: the lowest and highest drawable y of every
// 16 points, of every 16 such blocks, and so on, about 1/15 of the memory of
// x and y. Any line view then costs O(columns x log n) plus its breaks. Other
// data, and matrices that mix y into x, are reduced in one pass, O(n).
//
// The view reads the cache on every request: the cache must outlive the view
// and must not change while the view is used. The summary is built through
// const access, so concurrent first requests need outside locking.
//
// A view of a live series (KelChartLiveSeries) reads the points kept at the
// time of each request, through the summary the series keeps as they arrive.

#include "OrvChartExport.h"
#include "KelChartVariableCache.h"

#include "DoubleMatrix.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

class KelChartLiveSeries;
namespace KelChartDecimation {
struct Summary;
}

class ORV_CHART_EXPORT KelChartDecimatedView {
public:
    // Between two runs of `lines` that must not be joined.
    static constexpr std::size_t breakMark = std::numeric_limits<std::size_t>::max();
    // More pixel columns are clamped, with a warning.
    static constexpr long maxColumns = 1L << 24;
    // More pixel cells make `points` keep every point in view, with a warning.
    static constexpr long maxCells = 1L << 27;

    // Where the points land on the device, exactly as the host computes it:
    // (x + xOffset, y, 0) through the matrix (in double precision, see
    // KelChartPerVariableScaling::preciseMatrix) into the normalised square, then
    // pixel x = left + (nx + 1) / 2 * width and pixel y = bottom - (ny + 1) / 2 * height.
    // Pixel column c covers [c, c + 1); the view is made of the pixels that
    // meet [left, left + width] x [bottom - height, bottom].
    struct Placement {
        Orv::Math::DoubleMatrix matrix;
        double xOffset = 0.0;
        double left = 0.0;
        double bottom = 0.0;
        double width = 0.0;
        double height = 0.0;
    };

    // The points read: x and y of the points to draw, parallel, and the
    // positions of points with one undefined component, as in the cache.
    struct Data {
        const double* x = nullptr;
        const double* y = nullptr;
        std::size_t size = 0;
        const double* yUndef = nullptr;
        std::size_t yUndefCount = 0;
        const double* xUndef = nullptr;
        std::size_t xUndefCount = 0;
    };

    explicit KelChartDecimatedView(const KelChartVariableCache& cache);
    // The series must outlive the view; the view follows its appends.
    explicit KelChartDecimatedView(const KelChartLiveSeries& live);
    KelChartDecimatedView(const KelChartDecimatedView&) = delete;
    KelChartDecimatedView& operator=(const KelChartDecimatedView&) = delete;
    ~KelChartDecimatedView();

    // The cache read, or the one that stands for a live series's kept points
    // (variable, bounds and validity; its own arrays are empty).
    const KelChartVariableCache& cache() const;
    // The points as they are now: valid until the next request or append.
    const Data& data() const;
    bool live() const { return m_live != nullptr; }

    // Indices into the cache's x and y, ascending, with breaks: the line over
    // [x0, x1] cut into `columns` equal columns. x0 > x1 mirrors the view.
    std::vector<std::size_t> lines(double x0, double x1, long columns) const;
    // The same for the pixel columns of a placement.
    std::vector<std::size_t> lines(const Placement& placement) const;
    // Indices, ascending, of one point per occupied pixel cell in view.
    std::vector<std::size_t> points(const Placement& placement) const;

    // The extent of the points with no NaN component (low above high when
    // there is none), and the points with exactly one NaN component, in
    // index order: what a painter needs to mark gaps, found once with the
    // summary rather than on every frame.
    struct Span {
        double lowX = std::numeric_limits<double>::infinity();
        double highX = -std::numeric_limits<double>::infinity();
        double lowY = std::numeric_limits<double>::infinity();
        double highY = -std::numeric_limits<double>::infinity();
    };
    const Span& numberSpan() const;
    const std::vector<std::size_t>& halfNaN() const;

    // The nearest points, as KelChartVariableCache::nearestIndex finds them,
    // among the points read now (npos when none qualifies).
    static constexpr std::size_t npos = static_cast<std::size_t>(-1);
    std::size_t nearestIndex(double x) const;
    std::size_t nearestIndex(double x, double y, double xScale, double yScale) const;

    // The smallest difference of neighbouring x values, as the cache's minXDelta
    // gives it; a live series's is measured on the points read now.
    double minXDelta() const;

    // Whether the data are ordered, so that line views are fast (builds the summary).
    bool ordered() const;
    // Memory held by the summary, in bytes (builds it).
    std::size_t summaryBytes() const;

private:
    friend class KelChartLiveSeries;
    struct Output;

    const KelChartDecimation::Summary& summary() const;
    const KelChartDecimation::Summary& staticSummary() const;
    static void findFiniteRange(const double* x, std::size_t nanBegin, KelChartDecimation::Summary& s);
    static void findGaps(const double* yUndef, std::size_t count, KelChartDecimation::Summary& s);
    static void findNumbers(const double* x, const double* y, std::size_t n, KelChartDecimation::Summary& s);
    template <class Column>
    std::vector<std::size_t> linesOrdered(const Column& column, double first, double end) const;
    template <class Column>
    void walkOrdered(const Column& column, std::size_t lo, std::size_t hi, Output& out) const;
    template <class Column>
    std::size_t columnEnd(const Column& bucket, std::size_t pos, std::size_t hi, std::size_t hint) const;
    template <class Column>
    std::vector<std::size_t> linesInOnePass(const Column& column, double first, double end) const;
    bool drawable(std::size_t k) const;
    std::size_t nextDrawable(std::size_t pos, std::size_t limit) const;
    std::size_t nextUndrawable(std::size_t pos, std::size_t limit) const;
    std::size_t nextCut(std::size_t pos, std::size_t last) const;
    bool cutBefore(std::size_t k) const;
    void emitRun(std::size_t begin, std::size_t end, Output& out) const;

    const KelChartVariableCache* m_cache = nullptr;
    const KelChartLiveSeries* m_live = nullptr;
    mutable Data m_data;
    mutable const KelChartDecimation::Summary* m_current = nullptr;
    mutable std::unique_ptr<KelChartDecimation::Summary> m_summary;
};
