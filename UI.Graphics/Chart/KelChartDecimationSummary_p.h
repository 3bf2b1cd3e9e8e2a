#pragma once
// What a decimated view knows of its data beyond x and y: the lowest and
// highest drawable y of every block of points and of every block of blocks,
// the blocks that hold an undrawable point, where the finite x values lie,
// and the x values at which lines break. A static cache's view builds it once;
// a live series keeps its own up to date as points arrive.
//
// Blocks are counted from element 0 of the storage, which may lie `origin`
// elements before the data's first point (a live series drops its oldest
// points without moving the rest). Blocks that reach before the first point
// hold values of dropped points: a query uses a block only when it lies
// wholly inside the range it asks about, so those are never read as a whole.

#include "KelChartDecimatedView.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace KelChartDecimation {

// Points per summary block, and blocks per block of the next level.
constexpr std::size_t fanOut = 16;

// The lowest and highest drawable y of a block; min > max when it has none.
struct Extent {
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();
    void add(double v)
    {
        min = v < min ? v : min;
        max = v > max ? v : max;
    }
    void add(const Extent& e)
    {
        min = e.min < min ? e.min : min;
        max = e.max > max ? e.max : max;
    }
};

// Covers [begin, end) of `level` (0: the points) with whole blocks of the
// levels above, `levels` of them: `scan(level, from, to)` takes the ragged
// ends at each level and what is left at the top.
template <class Scan>
void coverByBlocks(std::size_t levels, std::size_t level, std::size_t begin, std::size_t end, const Scan& scan)
{
    if (level >= levels || end - begin <= 2 * fanOut) {
        scan(level, begin, end);
        return;
    }
    const std::size_t first = (begin + fanOut - 1) / fanOut;
    const std::size_t last = end / fanOut;
    scan(level, begin, first * fanOut);
    scan(level, last * fanOut, end);
    coverByBlocks(levels, level + 1, first, last, scan);
}

struct Summary {
    bool ordered = true;
    // The data's first point, counted in storage elements.
    std::size_t origin = 0;
    // Ordered data only: the points whose x is finite, counted from the first point.
    std::size_t finiteBegin = 0;
    std::size_t finiteEnd = 0;
    // levels[0] sums up the points by blocks, levels[L] the blocks of levels[L - 1].
    std::vector<std::vector<Extent>> levels;
    // One bit per block of levels[0]: whether it holds a point that is not drawable.
    std::vector<std::uint64_t> broken;
    // The x values of points without y, ascending, without NaN.
    const double* gaps = nullptr;
    std::size_t gapCount = 0;
    std::vector<double> sortedGaps;
    KelChartDecimatedView::Span numbers;
    std::vector<std::size_t> halfNaN;

    bool brokenBlock(std::size_t block) const
    {
        return block / 64 < broken.size() && ((broken[block / 64] >> (block % 64)) & 1u);
    }
};

} // namespace KelChartDecimation
