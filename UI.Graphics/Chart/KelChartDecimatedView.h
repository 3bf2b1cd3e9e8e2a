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

#include "OrvChartExport.h"
#include "KelChartVariableCache.h"

#include "Matrix.h"

#include <cstddef>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

class ORV_CHART_EXPORT KelChartDecimatedView {
public:
    // Between two runs of `lines` that must not be joined.
    static constexpr std::size_t breakMark = std::numeric_limits<std::size_t>::max();
    // More pixel columns are clamped, with a warning.
    static constexpr long maxColumns = 1L << 24;
    // More pixel cells make `points` keep every point in view, with a warning.
    static constexpr long maxCells = 1L << 27;

    // Where the points land on the device, exactly as the host computes it:
    // (x + xOffset, y, 0) through the matrix into the normalised square, then
    // pixel x = left + (nx + 1) / 2 * width and pixel y = bottom - (ny + 1) / 2 * height.
    // Pixel column c covers [c, c + 1); the view is made of the pixels that
    // meet [left, left + width] x [bottom - height, bottom].
    struct Placement {
        Orv::Math::Matrix matrix;
        double xOffset = 0.0;
        double left = 0.0;
        double bottom = 0.0;
        double width = 0.0;
        double height = 0.0;
    };

    explicit KelChartDecimatedView(const KelChartVariableCache& cache);
    KelChartDecimatedView(const KelChartDecimatedView&) = delete;
    KelChartDecimatedView& operator=(const KelChartDecimatedView&) = delete;
    ~KelChartDecimatedView();

    const KelChartVariableCache& cache() const { return m_cache; }

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

    // Whether the data are ordered, so that line views are fast (builds the summary).
    bool ordered() const;
    // Memory held by the summary, in bytes (builds it).
    std::size_t summaryBytes() const;

private:
    struct Summary;
    struct Output;

    const Summary& summary() const;
    static void findNumbers(const std::vector<double>& x, const std::vector<double>& y, Summary& s);
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

    const KelChartVariableCache& m_cache;
    mutable std::unique_ptr<Summary> m_summary;
};
