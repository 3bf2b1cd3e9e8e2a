#include "KelChartDecimatedView.h"
#include "KelChartDecimationSummary_p.h"
#include "KelChartLiveSeries.h"

#include "OrvDiagnostics.h"
#include "Vector.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace {

using KelChartDecimation::Extent;
using KelChartDecimation::fanOut;
constexpr std::size_t npos = static_cast<std::size_t>(-1);
constexpr double infinity = std::numeric_limits<double>::infinity();

// The first index in [begin, end) where `holds` is false, for a `holds` that
// is true on a prefix of the range.
template <class Holds>
std::size_t partitionPoint(std::size_t begin, std::size_t end, const Holds& holds)
{
    while (begin < end) {
        const std::size_t middle = begin + (end - begin) / 2;
        if (holds(middle))
            begin = middle + 1;
        else
            end = middle;
    }
    return begin;
}

// The same for `holds` true at lo and false at up, searching down from up.
template <class Holds>
std::size_t backwardEnd(const Holds& holds, std::size_t lo, std::size_t up)
{
    std::size_t step = 1;
    while (step < up - lo && !holds(up - step)) {
        up -= step;
        step *= 2;
    }
    return partitionPoint(step < up - lo ? up - step + 1 : lo + 1, up, holds);
}

// The pixel column or row of a coordinate; NaN, which has no place in an
// order, goes before everything.
double pixelOf(double pixel)
{
    return std::isnan(pixel) ? -infinity : std::floor(pixel);
}

} // namespace

struct KelChartDecimatedView::Output {
    std::vector<std::size_t> points;
    bool pendingBreak = false;

    void cut() { pendingBreak = true; }
    void push(std::size_t k)
    {
        if (pendingBreak && !points.empty() && points.back() != breakMark)
            points.push_back(breakMark);
        pendingBreak = false;
        points.push_back(k);
    }
    // The distinct indices of [begin, end), ascending.
    void pushSorted(std::size_t* begin, std::size_t* end)
    {
        std::sort(begin, end);
        for (std::size_t* k = begin; k != end; ++k)
            if (k == begin || *k != k[-1])
                push(*k);
    }
};

namespace {

// Reads x and y once: block extents, broken blocks and whether x ascends.
class SummaryBuilder {
public:
    SummaryBuilder(const double* x, const double* y, std::size_t n)
        : m_x(x)
        , m_y(y)
        , m_n(n)
    {
    }

    void build(std::vector<Extent>& blocks, std::vector<std::uint64_t>& broken, bool& ordered)
    {
        const std::size_t count = (m_n + fanOut - 1) / fanOut;
        blocks.assign(std::max<std::size_t>(count, 1), Extent());
        broken.assign(blocks.size() / 64 + 1, 0);
        for (std::size_t block = 0; block < count; ++block) {
            const std::size_t begin = block * fanOut;
            const std::size_t end = std::min(begin + fanOut, m_n);
            if (allFinite(begin, end) && m_firstNanX == npos)
                blocks[block] = finiteBlock(begin, end);
            else
                blocks[block] = mixedBlock(begin, end, broken[block / 64], block % 64);
        }
        ordered = m_disorder == 0;
    }
    std::size_t nanXBegin() const { return m_firstNanX == npos ? m_n : m_firstNanX; }

private:
    // A NaN or infinity turns the sum into NaN.
    bool allFinite(std::size_t begin, std::size_t end) const
    {
        double probe = 0.0;
        for (std::size_t k = begin; k < end; ++k)
            probe += (m_x[k] - m_x[k]) + (m_y[k] - m_y[k]);
        return probe == 0.0;
    }
    Extent finiteBlock(std::size_t begin, std::size_t end)
    {
        Extent extent{m_y[begin], m_y[begin]};
        std::size_t disorder = begin > 0 && m_x[begin] < m_x[begin - 1];
        for (std::size_t k = begin + 1; k < end; ++k) {
            extent.min = std::min(extent.min, m_y[k]);
            extent.max = std::max(extent.max, m_y[k]);
            disorder += m_x[k] < m_x[k - 1];
        }
        m_disorder += disorder;
        return extent;
    }
    Extent mixedBlock(std::size_t begin, std::size_t end, std::uint64_t& brokenWord, std::size_t bit)
    {
        Extent extent;
        for (std::size_t k = begin; k < end; ++k) {
            checkOrder(k);
            if (std::isfinite(m_x[k]) && std::isfinite(m_y[k])) {
                extent.min = std::min(extent.min, m_y[k]);
                extent.max = std::max(extent.max, m_y[k]);
            } else {
                brokenWord |= std::uint64_t(1) << bit;
            }
        }
        return extent;
    }
    // NaN x values are in order only as a tail.
    void checkOrder(std::size_t k)
    {
        if (std::isnan(m_x[k])) {
            m_firstNanX = std::min(m_firstNanX, k);
            return;
        }
        if (m_firstNanX != npos || (k > 0 && m_x[k] < m_x[k - 1]))
            ++m_disorder;
    }

    const double* m_x;
    const double* m_y;
    std::size_t m_n;
    std::size_t m_firstNanX = npos;
    std::size_t m_disorder = 0;
};

std::vector<Extent> levelAbove(const std::vector<Extent>& below)
{
    std::vector<Extent> level((below.size() + fanOut - 1) / fanOut);
    for (std::size_t k = 0; k < below.size(); ++k) {
        Extent& e = level[k / fanOut];
        e.min = std::min(e.min, below[k].min);
        e.max = std::max(e.max, below[k].max);
    }
    return level;
}

bool usableAsGaps(const double* values, std::size_t count)
{
    for (std::size_t k = 0; k < count; ++k)
        if (std::isnan(values[k]) || (k > 0 && values[k] < values[k - 1]))
            return false;
    return true;
}

// Where the lowest and highest y of a range were found: an element of a level
// (0 for the points themselves, L for levels[L - 1]) and its value.
struct Extremes {
    double min = infinity;
    double max = -infinity;
    std::size_t minLevel = 0, minAt = 0, maxLevel = 0, maxAt = 0;
};

// Range queries over the summary of a run of drawable points.
class ExtremesFinder {
public:
    // `y` holds the data's points, the first `summary.origin` elements after storage element 0.
    ExtremesFinder(const double* y, std::size_t size, const KelChartDecimation::Summary& summary)
        : m_y(y)
        , m_origin(summary.origin)
        , m_stored(summary.origin + size)
        , m_levels(summary.levels)
    {
    }

    // The indices of the lowest and the highest point in [begin, end).
    std::pair<std::size_t, std::size_t> find(std::size_t begin, std::size_t end) const
    {
        Extremes found;
        collect(0, begin + m_origin, end + m_origin, found);
        return {descend(found.minLevel, found.minAt, found.min, &Extent::min) - m_origin,
                descend(found.maxLevel, found.maxAt, found.max, &Extent::max) - m_origin};
    }

private:
    // Level 0 is the points, counted from storage element 0.
    double yAt(std::size_t k) const { return m_y[k - m_origin]; }
    Extent at(std::size_t level, std::size_t k) const
    {
        return level == 0 ? Extent{yAt(k), yAt(k)} : m_levels[level - 1][k];
    }
    void scan(std::size_t level, std::size_t begin, std::size_t end, Extremes& found) const
    {
        if (level > 0) {
            const Extent* blocks = m_levels[level - 1].data();
            for (std::size_t k = begin; k < end; ++k)
                take(level, k, blocks[k].min, blocks[k].max, found);
            return;
        }
        for (std::size_t k = begin; k < end; ++k)
            take(0, k, yAt(k), yAt(k), found);
    }
    static void take(std::size_t level, std::size_t k, double min, double max, Extremes& found)
    {
        if (min < found.min)
            found.min = min, found.minLevel = level, found.minAt = k;
        if (max > found.max)
            found.max = max, found.maxLevel = level, found.maxAt = k;
    }
    // Whole blocks are taken from the level above; only the ragged ends are scanned.
    void collect(std::size_t level, std::size_t begin, std::size_t end, Extremes& found) const
    {
        KelChartDecimation::coverByBlocks(m_levels.size(), level, begin, end,
                                          [&](std::size_t at, std::size_t from, std::size_t to) { scan(at, from, to, found); });
    }
    // Down from a block to the first of its points that holds the value.
    std::size_t descend(std::size_t level, std::size_t k, double value, double Extent::*side) const
    {
        for (; level > 0; --level) {
            const std::size_t size = level == 1 ? m_stored : m_levels[level - 2].size();
            std::size_t child = k * fanOut;
            const std::size_t end = std::min(child + fanOut, size);
            while (child + 1 < end && at(level - 1, child).*side != value)
                ++child;
            k = child;
        }
        return k;
    }

    const double* m_y;
    std::size_t m_origin;
    std::size_t m_stored;
    const std::vector<std::vector<Extent>>& m_levels;
};

// The pixel column of (x, y) under a placement, as the host computes it.
class PlacementColumn {
public:
    PlacementColumn(const KelChartDecimatedView::Placement& placement, const double* x, const double* y)
        : m_p(placement)
        , m_x(x)
        , m_y(y)
    {
    }
    // Point k's column; ordered data are bucketed by x alone (`withY` false).
    double operator()(std::size_t k, bool withY) const
    {
        const double y = withY ? m_y[k] : 0.0;
        return pixelOf(m_p.left + (m_p.matrix.map(m_x[k] + m_p.xOffset, y, 0.0).x + 1.0) / 2.0 * m_p.width);
    }

private:
    const KelChartDecimatedView::Placement& m_p;
    const double* m_x;
    const double* m_y;
};

// The column of x when [x0, x1] is cut into equal columns.
struct RangeColumn {
    const double* x;
    double x0;
    double scale;
    double operator()(std::size_t k, bool) const { return pixelOf((x[k] - x0) * scale); }
};

bool mixesYIntoX(const Orv::Math::DoubleMatrix& matrix)
{
    return matrix(1, 0) != 0.0 || matrix(2, 0) != 0.0;
}

// The pixels [first, end) that meet [from, from + size], at most `KelChartDecimatedView::maxColumns`.
bool pixelSpan(double from, double size, double& first, double& end)
{
    if (!std::isfinite(from) || !std::isfinite(size) || size <= 0.0 || !std::isfinite(from + size)) {
        orvdebug::warning("decimated view: the plot area ", from, " + ", size, " is empty or not finite");
        return false;
    }
    first = std::floor(from);
    end = std::floor(from + size) + 1.0;
    if (end - first > double(KelChartDecimatedView::maxColumns)) {
        orvdebug::warning("decimated view: ", end - first, " pixels clamped to ", KelChartDecimatedView::maxColumns);
        end = first + double(KelChartDecimatedView::maxColumns);
    }
    return true;
}

} // namespace

KelChartDecimatedView::KelChartDecimatedView(const KelChartVariableCache& cache)
    : m_cache(&cache)
{
}

KelChartDecimatedView::KelChartDecimatedView(const KelChartLiveSeries& live)
    : m_live(&live)
{
}

KelChartDecimatedView::~KelChartDecimatedView() = default;

const KelChartVariableCache& KelChartDecimatedView::cache() const
{
    return m_cache ? *m_cache : m_live->cache();
}

// A static cache is read once; a live series's arrays move as points arrive.
const KelChartDecimatedView::Data& KelChartDecimatedView::data() const
{
    if (m_live) {
        m_data = m_live->data();
        m_current = &m_live->summary();
    } else if (!m_current) {
        m_data = Data{m_cache->x().data(), m_cache->y().data(), std::min(m_cache->x().size(), m_cache->y().size()),
                      m_cache->yUndef().data(), m_cache->yUndef().size(), m_cache->xUndef().data(),
                      m_cache->xUndef().size()};
        m_current = &staticSummary();
    }
    return m_data;
}

const KelChartDecimation::Summary& KelChartDecimatedView::summary() const
{
    data();
    return *m_current;
}

const KelChartDecimation::Summary& KelChartDecimatedView::staticSummary() const
{
    auto made = std::make_unique<KelChartDecimation::Summary>();
    SummaryBuilder builder(m_data.x, m_data.y, m_data.size);
    made->levels.emplace_back();
    builder.build(made->levels[0], made->broken, made->ordered);
    while (made->levels.back().size() > fanOut)
        made->levels.push_back(levelAbove(made->levels.back()));
    findFiniteRange(m_data.x, builder.nanXBegin(), *made);
    findGaps(m_data.yUndef, m_data.yUndefCount, *made);
    findNumbers(m_data.x, m_data.y, m_data.size, *made);
    m_summary = std::move(made);
    return *m_summary;
}

// Ordered data: -infinity leads, NaN (from `nanBegin` on) trails, +infinity comes before NaN.
void KelChartDecimatedView::findFiniteRange(const double* x, std::size_t nanBegin, KelChartDecimation::Summary& s)
{
    s.finiteBegin = partitionPoint(0, nanBegin, [&](std::size_t k) { return x[k] == -infinity; });
    s.finiteEnd = partitionPoint(s.finiteBegin, nanBegin, [&](std::size_t k) { return x[k] < infinity; });
}

void KelChartDecimatedView::findGaps(const double* yUndef, std::size_t count, KelChartDecimation::Summary& s)
{
    s.sortedGaps.clear();
    s.gaps = yUndef;
    s.gapCount = count;
    if (usableAsGaps(yUndef, count))
        return;
    for (std::size_t k = 0; k < count; ++k)
        if (!std::isnan(yUndef[k]))
            s.sortedGaps.push_back(yUndef[k]);
    std::sort(s.sortedGaps.begin(), s.sortedGaps.end());
    s.gaps = s.sortedGaps.data();
    s.gapCount = s.sortedGaps.size();
}

void KelChartDecimatedView::findNumbers(const double* x, const double* y, std::size_t n, KelChartDecimation::Summary& s)
{
    for (std::size_t k = 0; k < n; ++k) {
        const bool xNaN = std::isnan(x[k]);
        const bool yNaN = std::isnan(y[k]);
        if (xNaN != yNaN)
            s.halfNaN.push_back(k);
        if (xNaN || yNaN)
            continue;
        s.numbers.lowX = std::min(s.numbers.lowX, x[k]);
        s.numbers.highX = std::max(s.numbers.highX, x[k]);
        s.numbers.lowY = std::min(s.numbers.lowY, y[k]);
        s.numbers.highY = std::max(s.numbers.highY, y[k]);
    }
}

const KelChartDecimatedView::Span& KelChartDecimatedView::numberSpan() const
{
    return summary().numbers;
}

const std::vector<std::size_t>& KelChartDecimatedView::halfNaN() const
{
    return summary().halfNaN;
}

std::size_t KelChartDecimatedView::nearestIndex(double x) const
{
    const Data& points = data();
    if (std::isnan(x))
        return npos;
    const double* begin = points.x;
    // NaN x values sit at the end; the search covers the numbers before them.
    const double* numbers = std::partition_point(begin, begin + points.size, [](double v) { return !std::isnan(v); });
    const double* above = std::lower_bound(begin, numbers, x);
    if (above == begin)
        return above == numbers ? npos : 0;
    const double* below = above - 1;
    // The first of a run of equal values below wins over its later equals.
    const double* firstBelow = std::lower_bound(begin, below, *below);
    if (above == numbers || x - *below <= *above - x)
        return static_cast<std::size_t>(firstBelow - begin);
    return static_cast<std::size_t>(above - begin);
}

std::size_t KelChartDecimatedView::nearestIndex(double x, double y, double xScale, double yScale) const
{
    const Data& points = data();
    if (!(xScale > 0) || !(yScale > 0) || std::isnan(x) || std::isnan(y))
        return npos;
    std::size_t best = npos;
    double bestDistance = infinity;
    for (std::size_t k = 0; k < points.size; ++k) {
        const double dx = (points.x[k] - x) / xScale;
        const double dy = (points.y[k] - y) / yScale;
        const double distance = dx * dx + dy * dy;
        // NaN distances fail the comparison, so NaN points never count.
        if (distance < bestDistance) {
            bestDistance = distance;
            best = k;
        }
    }
    return best;
}

double KelChartDecimatedView::minXDelta() const
{
    if (m_cache)
        return m_cache->minXDelta();
    const Data& points = data();
    if (points.size < 2)
        return points.size == 1 ? points.x[0] : 0.0;
    double delta = std::numeric_limits<double>::max();
    for (std::size_t k = 1; k < points.size; ++k)
        delta = std::min(delta, points.x[k] - points.x[k - 1]);
    return delta;
}

bool KelChartDecimatedView::ordered() const
{
    return summary().ordered;
}

std::size_t KelChartDecimatedView::summaryBytes() const
{
    const KelChartDecimation::Summary& s = summary();
    std::size_t bytes = s.broken.size() * sizeof(std::uint64_t) + s.sortedGaps.size() * sizeof(double);
    for (const std::vector<Extent>& level : s.levels)
        bytes += level.size() * sizeof(Extent);
    return bytes;
}

std::vector<std::size_t> KelChartDecimatedView::lines(double x0, double x1, long columns) const
{
    if (!std::isfinite(x0) || !std::isfinite(x1) || x0 == x1 || !std::isfinite(x1 - x0)) {
        orvdebug::warning("decimated view: the x range [", x0, ", ", x1, "] is empty or not finite");
        return {};
    }
    if (columns <= 0) {
        orvdebug::warning("decimated view: ", columns, " pixel columns; nothing is drawn");
        return {};
    }
    if (columns > maxColumns) {
        orvdebug::warning("decimated view: ", columns, " pixel columns clamped to ", maxColumns);
        columns = maxColumns;
    }
    const RangeColumn column{data().x, x0, double(columns) / (x1 - x0)};
    if (summary().ordered)
        return linesOrdered(column, 0.0, double(columns));
    return linesInOnePass(column, 0.0, double(columns));
}

std::vector<std::size_t> KelChartDecimatedView::lines(const Placement& placement) const
{
    double first = 0.0;
    double end = 0.0;
    if (!pixelSpan(placement.left, placement.width, first, end))
        return {};
    const PlacementColumn column(placement, data().x, data().y);
    if (summary().ordered && !mixesYIntoX(placement.matrix))
        return linesOrdered(column, first, end);
    return linesInOnePass(column, first, end);
}

template <class Column>
std::vector<std::size_t> KelChartDecimatedView::linesOrdered(const Column& column, double first, double end) const
{
    const KelChartDecimation::Summary& s = summary();
    if (s.finiteBegin >= s.finiteEnd)
        return {};
    // Data that never reach the view stay out, all but the nearest point at either side.
    const auto bucket = [&](std::size_t k) { return std::clamp(column(k, false), first - 1.0, end); };
    const bool decreasing = bucket(s.finiteEnd - 1) < bucket(s.finiteBegin);
    const double lead = decreasing ? end : first - 1.0;
    const std::size_t inView = partitionPoint(s.finiteBegin, s.finiteEnd, [&](std::size_t k) { return bucket(k) == lead; });
    const double trail = decreasing ? first - 1.0 : end;
    const std::size_t beyond = partitionPoint(inView, s.finiteEnd, [&](std::size_t k) { return bucket(k) != trail; });
    Output out;
    walkOrdered(bucket, inView > s.finiteBegin ? inView - 1 : inView, std::min(beyond + 1, s.finiteEnd), out);
    return std::move(out.points);
}

// Each step takes the points up to the next column, break or undrawable point.
template <class Column>
void KelChartDecimatedView::walkOrdered(const Column& bucket, std::size_t lo, std::size_t hi, Output& out) const
{
    const std::size_t lastFinite = summary().finiteEnd - 1;
    std::size_t hint = 0;
    for (std::size_t pos = lo; pos < hi;) {
        if (!drawable(pos)) {
            out.cut();
            pos = nextDrawable(pos, hi);
            continue;
        }
        const std::size_t next = columnEnd(bucket, pos, hi, hint);
        hint = next - pos;
        std::size_t stop = nextUndrawable(pos, next);
        const std::size_t cut = nextCut(pos, std::min(stop, lastFinite));
        stop = std::min(stop, cut);
        emitRun(pos, stop, out);
        if (cut == stop)
            out.cut();
        pos = stop;
    }
}

// The first index after pos in another column. The data are mostly as dense
// as in the column before (`hint` points), so that guess is tried first; from
// there a galloping search, which touches few cache lines when it is close.
template <class Column>
std::size_t KelChartDecimatedView::columnEnd(const Column& bucket, std::size_t pos, std::size_t hi,
                                             std::size_t hint) const
{
    const double here = bucket(pos);
    const auto same = [&](std::size_t k) { return bucket(k) == here; };
    std::size_t lo = pos;
    if (hint > 1 && hint < hi - pos) {
        const std::size_t guess = pos + hint;
        if (!same(guess - 1))
            return backwardEnd(same, lo, guess - 1);
        if (!same(guess))
            return guess;
        lo = guess;
    }
    std::size_t step = 1;
    while (step < hi - lo && same(lo + step)) {
        lo += step;
        step *= 2;
    }
    return partitionPoint(lo + 1, std::min(hi, lo + step), same);
}

template <class Column>
std::vector<std::size_t> KelChartDecimatedView::linesInOnePass(const Column& column, double first, double end) const
{
    struct Group {
        std::size_t first = npos, min = 0, max = 0, last = 0;
        double bucket = 0.0;
    } group;
    const double* y = data().y;
    Output out;
    // Points beyond the view keep only the ends of their run: the rest cannot show.
    const auto flush = [&]() {
        if (group.first == npos)
            return;
        const bool seen = group.bucket >= first && group.bucket < end;
        std::size_t picked[4] = {group.first, group.last, seen ? group.min : group.first, seen ? group.max : group.last};
        out.pushSorted(picked, picked + 4);
        group.first = npos;
    };
    for (std::size_t k = 0; k < m_data.size; ++k) {
        const bool joined = group.first != npos && !cutBefore(k);
        if (!drawable(k) || !joined) {
            flush();
            out.cut();
            if (!drawable(k))
                continue;
        }
        const double bucket = std::clamp(column(k, true), first - 1.0, end);
        if (group.first != npos && bucket == group.bucket) {
            group.min = y[k] < y[group.min] ? k : group.min;
            group.max = y[k] > y[group.max] ? k : group.max;
            group.last = k;
            continue;
        }
        flush();
        group = Group{k, k, k, k, bucket};
    }
    flush();
    return std::move(out.points);
}

std::vector<std::size_t> KelChartDecimatedView::points(const Placement& placement) const
{
    double left = 0.0, right = 0.0, top = 0.0, bottom = 0.0;
    if (!pixelSpan(placement.left, placement.width, left, right)
        || !pixelSpan(placement.bottom - placement.height, placement.height, top, bottom))
        return {};
    const double columns = right - left;
    const bool reduce = columns * (bottom - top) <= double(maxCells);
    if (!reduce)
        orvdebug::warning("decimated view: ", columns * (bottom - top), " pixel cells; every point in view is kept");
    std::vector<std::uint64_t> taken(reduce ? std::size_t(columns * (bottom - top)) / 64 + 1 : 0);
    const double* x = data().x;
    const double* y = m_data.y;
    std::vector<std::size_t> kept;
    // Backwards, so that the point drawn on top, the last, is the one kept.
    for (std::size_t k = m_data.size; k-- > 0;) {
        if (!drawable(k))
            continue;
        const Orv::Math::DoubleMatrix::Point cube = placement.matrix.map(x[k] + placement.xOffset, y[k], 0.0);
        const double column = pixelOf(placement.left + (cube.x + 1.0) / 2.0 * placement.width) - left;
        const double row = pixelOf(placement.bottom - (cube.y + 1.0) / 2.0 * placement.height) - top;
        if (column < 0.0 || column >= columns || row < 0.0 || row >= bottom - top)
            continue;
        if (reduce) {
            const auto cell = static_cast<std::size_t>(row * columns + column);
            if ((taken[cell / 64] >> (cell % 64)) & 1u)
                continue;
            taken[cell / 64] |= std::uint64_t(1) << (cell % 64);
        }
        kept.push_back(k);
    }
    std::reverse(kept.begin(), kept.end());
    return kept;
}

bool KelChartDecimatedView::drawable(std::size_t k) const
{
    return std::isfinite(m_data.x[k]) && std::isfinite(m_data.y[k]);
}

// Blocks without a drawable point are skipped whole.
std::size_t KelChartDecimatedView::nextDrawable(std::size_t pos, std::size_t limit) const
{
    const std::vector<Extent>& blocks = m_current->levels[0];
    const std::size_t origin = m_current->origin;
    while (pos < limit) {
        const Extent& block = blocks[(pos + origin) / fanOut];
        if ((pos + origin) % fanOut == 0 && block.min > block.max)
            pos += fanOut;
        else if (drawable(pos))
            return pos;
        else
            ++pos;
    }
    return limit;
}

// Blocks flagged as holding no undrawable point are skipped, 64 at a time where possible.
std::size_t KelChartDecimatedView::nextUndrawable(std::size_t pos, std::size_t limit) const
{
    const KelChartDecimation::Summary& s = *m_current;
    while (pos < limit) {
        const std::size_t block = (pos + s.origin) / fanOut;
        const std::uint64_t ahead = block / 64 < s.broken.size() ? s.broken[block / 64] >> (block % 64) : 0;
        if (ahead == 0) {
            pos = (block / 64 + 1) * 64 * fanOut - s.origin;
            continue;
        }
        if ((ahead & 1u) == 0) {
            pos = (block + static_cast<std::size_t>(__builtin_ctzll(ahead))) * fanOut - s.origin;
            continue;
        }
        for (const std::size_t blockEnd = std::min((block + 1) * fanOut - s.origin, limit); pos < blockEnd; ++pos)
            if (!drawable(pos))
                return pos;
    }
    return limit;
}

// The first k in (pos, last] with a point without y strictly between x[k - 1]
// and x[k], or npos. Ordered data only.
std::size_t KelChartDecimatedView::nextCut(std::size_t pos, std::size_t last) const
{
    const double* gaps = m_current->gaps;
    const double* gapsEnd = gaps + m_current->gapCount;
    const double* x = m_data.x;
    if (gaps == gapsEnd || last <= pos)
        return npos;
    const double* gap = std::upper_bound(gaps, gapsEnd, x[pos]);
    while (gap != gapsEnd && *gap < x[last]) {
        const auto k = static_cast<std::size_t>(std::upper_bound(x + pos + 1, x + last + 1, *gap) - x);
        if (x[k - 1] < *gap)
            return k;
        gap = std::upper_bound(gap, gapsEnd, *gap);
    }
    return npos;
}

bool KelChartDecimatedView::cutBefore(std::size_t k) const
{
    const double* gaps = m_current->gaps;
    const double* gapsEnd = gaps + m_current->gapCount;
    if (gaps == gapsEnd || k == 0)
        return false;
    const double a = std::min(m_data.x[k - 1], m_data.x[k]);
    const double b = std::max(m_data.x[k - 1], m_data.x[k]);
    const double* gap = std::upper_bound(gaps, gapsEnd, a);
    return gap != gapsEnd && *gap < b;
}

// A run of drawable points in one column: its first, lowest, highest and last.
void KelChartDecimatedView::emitRun(std::size_t begin, std::size_t end, Output& out) const
{
    if (end - begin <= 4) {
        for (std::size_t k = begin; k < end; ++k)
            out.push(k);
        return;
    }
    const auto [low, high] = ExtremesFinder(m_data.y, m_data.size, *m_current).find(begin, end);
    std::size_t picked[4] = {begin, low, high, end - 1};
    out.pushSorted(picked, picked + 4);
}
