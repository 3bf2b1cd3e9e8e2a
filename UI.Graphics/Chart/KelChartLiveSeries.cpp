#include "KelChartLiveSeries.h"
#include "KelChartDecimationSummary_p.h"

#include "KelChartVariable.h"

#include "OrvDiagnostics.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using KelChartDecimation::Extent;
using KelChartDecimation::fanOut;

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr std::size_t none = static_cast<std::size_t>(-1);
// Storage indices move down by multiples of this at least, so that the
// blocked-point bits move by whole words.
constexpr std::size_t wordOfBlocks = 64 * fanOut;

// fanOut to the power `levels`: the points under one block of the top level.
std::size_t pointsPerBlock(std::size_t levels)
{
    std::size_t points = 1;
    for (std::size_t k = 0; k < levels; ++k)
        points *= fanOut;
    return points;
}

// As a cache narrows its extents into the box: NaN when there is none.
float low(const Extent& e)
{
    return e.min > e.max ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(e.min);
}
float high(const Extent& e)
{
    return e.min > e.max ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(e.max);
}

} // namespace

struct KelChartLiveSeries::Numbers {
    KelChartDecimation::Extent x;
    KelChartDecimation::Extent y;
    void add(const Numbers& other)
    {
        x.add(other.x);
        y.add(other.y);
    }
};

void KelChartLiveSeries::Undefined::push(double value, std::uint64_t item)
{
    values.push_back(value);
    items.push_back(item);
}

// The front is erased once it is half the storage: a constant cost per item.
void KelChartLiveSeries::Undefined::dropFront()
{
    ++begin;
    if (begin < 64 || begin * 2 < values.size())
        return;
    values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(begin));
    items.erase(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(begin));
    begin = 0;
}

void KelChartLiveSeries::Marks::dropBefore(std::size_t first)
{
    while (begin < at.size() && at[begin] < first)
        ++begin;
    if (begin >= 64 && begin * 2 >= at.size()) {
        at.erase(at.begin(), at.begin() + static_cast<std::ptrdiff_t>(begin));
        begin = 0;
    }
}

void KelChartLiveSeries::Marks::shiftDown(std::size_t by)
{
    dropBefore(by);
    for (std::size_t k = begin; k < at.size(); ++k)
        at[k] -= by;
}

KelChartLiveSeries::KelChartLiveSeries(const KelChartVariable& variable, std::size_t limit)
    : m_variable(&variable)
    , m_summary(std::make_unique<KelChartDecimation::Summary>())
    , m_lastNumberX(none)
{
    setLimit(limit);
}

KelChartLiveSeries::~KelChartLiveSeries() = default;

void KelChartLiveSeries::setLimit(std::size_t items)
{
    m_limit = items;
    dropBeyondLimit();
    while (m_summary->levels.size() > levelCap()) {
        m_summary->levels.pop_back();
        m_numberLevels.pop_back();
    }
    if (m_limit > 0)
        reserve(m_limit + std::max(m_limit / 4, 2 * alignment()));
    changed();
}

// Storage and summary levels for `points`, so that neither grows by doubling.
void KelChartLiveSeries::reserve(std::size_t points)
{
    m_x.reserve(points);
    m_y.reserve(points);
    std::size_t blocks = points / fanOut + 1;
    m_summary->broken.reserve(blocks / 64 + 1);
    for (std::size_t level = 0; level < levelCap(); ++level, blocks = blocks / fanOut + 1) {
        if (level == m_summary->levels.size()) {
            m_summary->levels.emplace_back();
            m_numberLevels.emplace_back();
        }
        m_summary->levels[level].reserve(blocks);
        m_numberLevels[level].reserve(blocks);
    }
}

void KelChartLiveSeries::clear()
{
    m_x.clear();
    m_y.clear();
    m_start = 0;
    m_yUndef = m_xUndef = m_noneDefined = Undefined();
    m_firstItem = m_nextItem = m_completelyUndefined = 0;
    *m_summary = KelChartDecimation::Summary();
    m_numberLevels.clear();
    m_halfNaN = m_descents = m_nanX = Marks();
    m_lastNumberX = none;
    setLimit(m_limit);
}

void KelChartLiveSeries::append(double x, double y, bool xUndefined, bool yUndefined)
{
    xUndefined = xUndefined || x == infinity;
    yUndefined = yUndefined || y == infinity;
    const std::uint64_t item = m_nextItem++;
    if (!xUndefined && !yUndefined)
        appendPoint(x, y);
    else if (!yUndefined)
        m_xUndef.push(y, item);
    else if (!xUndefined)
        m_yUndef.push(x, item);
    else {
        m_noneDefined.push(0.0, item);
        ++m_completelyUndefined;
        orvdebug::dataError("Some value that is completely undefined was found in variable(", m_variable->name(), ")");
    }
    dropBeyondLimit();
    changed();
}

// Runs of plain points go in by blocks; an undefined item goes one by one.
void KelChartLiveSeries::append(const double* x, const double* y, std::size_t count)
{
    for (std::size_t k = 0; k < count;) {
        std::size_t end = k;
        while (end < count && x[end] != infinity && y[end] != infinity)
            ++end;
        appendPoints(x + k, y + k, end - k);
        if (end < count)
            append(x[end], y[end]);
        k = end + 1;
    }
    changed();
}

// In pieces small enough that the oldest are dropped before the storage fills.
void KelChartLiveSeries::appendPoints(const double* x, const double* y, std::size_t count)
{
    constexpr std::size_t piece = 4 * fanOut * fanOut;
    for (std::size_t k = 0; k < count; k += piece) {
        const std::size_t n = std::min(piece, count - k);
        if (m_x.size() + n > m_x.capacity())
            makeRoom();
        const std::size_t first = m_x.size();
        m_x.insert(m_x.end(), x + k, x + k + n);
        m_y.insert(m_y.end(), y + k, y + k + n);
        summarise(first, first + n);
        m_nextItem += n;
        dropBeyondLimit();
    }
}

// Whole blocks of finite points, the common case, in one tight pass each.
void KelChartLiveSeries::summarise(std::size_t begin, std::size_t end)
{
    std::size_t k = begin;
    for (; k < end && (k % fanOut != 0 || end - k < fanOut); ++k)
        summarise(k, m_x[k], m_y[k]);
    for (; k + fanOut <= end; k += fanOut)
        if (!summariseFiniteBlock(k))
            for (std::size_t i = k; i < k + fanOut; ++i)
                summarise(i, m_x[i], m_y[i]);
    for (; k < end; ++k)
        summarise(k, m_x[k], m_y[k]);
}

// A block of points whose components are all finite; false (and nothing
// done) when one is not.
bool KelChartLiveSeries::summariseFiniteBlock(std::size_t first)
{
    const double* x = m_x.data() + first;
    const double* y = m_y.data() + first;
    double probe = 0.0;
    for (std::size_t k = 0; k < fanOut; ++k)
        probe += (x[k] - x[k]) + (y[k] - y[k]);
    if (probe != 0.0 || m_summary->levels.empty())
        return false;
    Numbers numbers;
    std::size_t descents = first > m_start && x[0] < m_x[first - 1];
    for (std::size_t k = 0; k < fanOut; ++k) {
        numbers.x.add(x[k]);
        numbers.y.add(y[k]);
        descents += k > 0 && x[k] < x[k - 1];
    }
    if (descents > 0)
        for (std::size_t k = first; k < first + fanOut; ++k)
            if (k > m_start && m_x[k] < m_x[k - 1])
                m_descents.at.push_back(k);
    const std::size_t block = first / fanOut;
    m_summary->levels[0].push_back(numbers.y);
    m_numberLevels[0].push_back(numbers);
    if (block / 64 == m_summary->broken.size())
        m_summary->broken.push_back(0);
    m_lastNumberX = first + fanOut - 1;
    completeBlock(0, block);
    return true;
}

void KelChartLiveSeries::appendPoint(double x, double y)
{
    if (m_x.size() == m_x.capacity())
        makeRoom();
    const std::size_t k = m_x.size();
    m_x.push_back(x);
    m_y.push_back(y);
    summarise(k, x, y);
}

// Per point: its block's extents, whether the block is broken, the marks of
// NaN and of descending x. Higher levels follow when a block completes.
void KelChartLiveSeries::summarise(std::size_t k, double x, double y)
{
    const std::size_t block = k / fanOut;
    if (m_summary->levels.empty()) {
        m_summary->levels.emplace_back();
        m_numberLevels.emplace_back();
    }
    if (block == m_summary->levels[0].size()) {
        m_summary->levels[0].emplace_back();
        m_numberLevels[0].emplace_back();
        if (block / 64 == m_summary->broken.size())
            m_summary->broken.push_back(0);
    }
    if (std::isfinite(x) && std::isfinite(y))
        m_summary->levels[0][block].add(y);
    else
        m_summary->broken[block / 64] |= std::uint64_t(1) << (block % 64);
    const bool xNaN = std::isnan(x);
    if (xNaN != std::isnan(y))
        m_halfNaN.at.push_back(k);
    else if (!xNaN) {
        m_numberLevels[0][block].x.add(x);
        m_numberLevels[0][block].y.add(y);
    }
    if (xNaN) {
        m_nanX.at.push_back(k);
    } else {
        if (k > m_start && x < m_x[k - 1])
            m_descents.at.push_back(k);
        m_lastNumberX = k;
    }
    if ((k + 1) % fanOut == 0)
        completeBlock(0, block);
}

// A complete block joins its parent; a parent completed by it joins its own.
void KelChartLiveSeries::completeBlock(std::size_t level, std::size_t block)
{
    if (level + 1 >= levelCap())
        return;
    if (m_summary->levels.size() == level + 1) {
        m_summary->levels.emplace_back();
        m_numberLevels.emplace_back();
    }
    const std::size_t parent = block / fanOut;
    if (parent >= m_summary->levels[level + 1].size()) {
        m_summary->levels[level + 1].resize(parent + 1);
        m_numberLevels[level + 1].resize(parent + 1);
    }
    m_summary->levels[level + 1][parent].add(m_summary->levels[level][block]);
    m_numberLevels[level + 1][parent].add(m_numberLevels[level][block]);
    if ((block + 1) % fanOut == 0)
        completeBlock(level + 1, parent);
}

// Levels: blocks of fanOut points, of fanOut blocks and so on, with the
// largest block at most a sixteenth of the limit so that the storage can
// move down by whole blocks of every level.
std::size_t KelChartLiveSeries::levelCap() const
{
    if (m_limit == 0)
        return 16;
    std::size_t levels = 1;
    while (pointsPerBlock(levels + 1) <= std::max<std::size_t>(m_limit / 16, wordOfBlocks))
        ++levels;
    return levels;
}

std::size_t KelChartLiveSeries::alignment() const
{
    return std::max(pointsPerBlock(std::max<std::size_t>(m_summary->levels.size(), levelCap())), wordOfBlocks);
}

// Points alone are dropped in one step; undefined items among them one by one.
void KelChartLiveSeries::dropBeyondLimit()
{
    if (m_limit == 0 || items() <= m_limit)
        return;
    const std::uint64_t excess = items() - m_limit;
    const std::uint64_t end = m_firstItem + excess;
    const auto before = [end](const Undefined& u) { return u.begin < u.items.size() && u.items[u.begin] < end; };
    if (!before(m_yUndef) && !before(m_xUndef) && !before(m_noneDefined)) {
        m_start += static_cast<std::size_t>(excess);
        m_firstItem = end;
        return;
    }
    while (items() > m_limit)
        dropOldest();
}

// The oldest item is the first point unless it is one of the undefined ones.
void KelChartLiveSeries::dropOldest()
{
    const std::uint64_t item = m_firstItem++;
    if (m_yUndef.leads(item))
        m_yUndef.dropFront();
    else if (m_xUndef.leads(item))
        m_xUndef.dropFront();
    else if (m_noneDefined.leads(item))
        m_noneDefined.dropFront();
    else
        ++m_start;
}

// The storage is full: move the kept points down by whole top-level blocks
// when the dropped ones make room for that, else let it grow.
void KelChartLiveSeries::makeRoom()
{
    const std::size_t align = alignment();
    if (m_limit > 0 && m_start >= align)
        compact(m_start / align * align);
}

void KelChartLiveSeries::compact(std::size_t shift)
{
    m_x.erase(m_x.begin(), m_x.begin() + static_cast<std::ptrdiff_t>(shift));
    m_y.erase(m_y.begin(), m_y.begin() + static_cast<std::ptrdiff_t>(shift));
    m_start -= shift;
    for (std::size_t level = 0; level < m_summary->levels.size(); ++level) {
        const auto blocks =
            static_cast<std::ptrdiff_t>(std::min(shift / pointsPerBlock(level + 1), m_summary->levels[level].size()));
        m_summary->levels[level].erase(m_summary->levels[level].begin(), m_summary->levels[level].begin() + blocks);
        m_numberLevels[level].erase(m_numberLevels[level].begin(), m_numberLevels[level].begin() + blocks);
    }
    const auto words = static_cast<std::ptrdiff_t>(std::min(shift / wordOfBlocks, m_summary->broken.size()));
    m_summary->broken.erase(m_summary->broken.begin(), m_summary->broken.begin() + words);
    m_halfNaN.shiftDown(shift);
    m_descents.shiftDown(shift);
    m_nanX.shiftDown(shift);
    m_lastNumberX = m_lastNumberX != none && m_lastNumberX >= shift ? m_lastNumberX - shift : none;
}

KelChartDecimatedView::Data KelChartLiveSeries::data() const
{
    return {m_x.data() + m_start, m_y.data() + m_start,
            m_x.size() - m_start, m_yUndef.values.data() + m_yUndef.begin,
            m_yUndef.size(),      m_xUndef.values.data() + m_xUndef.begin,
            m_xUndef.size()};
}

// In order while x never descends between kept neighbours and NaN x values
// only trail.
bool KelChartLiveSeries::ordered() const
{
    const auto firstAtOrAfter = [](const Marks& marks, std::size_t k) {
        const auto at =
            std::lower_bound(marks.at.begin() + static_cast<std::ptrdiff_t>(marks.begin), marks.at.end(), k);
        return at == marks.at.end() ? none : *at;
    };
    if (firstAtOrAfter(m_descents, m_start + 1) != none)
        return false;
    const std::size_t nan = firstAtOrAfter(m_nanX, m_start);
    return nan == none || m_lastNumberX == none || m_lastNumberX < nan;
}

const KelChartDecimation::Summary& KelChartLiveSeries::summary() const
{
    if (m_summarised == m_generation)
        return *m_summary;
    m_summarised = m_generation;
    KelChartDecimation::Summary& s = *m_summary;
    const KelChartDecimatedView::Data points = data();
    s.origin = m_start;
    s.ordered = ordered();
    const std::size_t nanBegin = s.ordered && !m_nanX.at.empty() && m_nanX.at.back() >= m_start
                                     ? *std::lower_bound(m_nanX.at.begin(), m_nanX.at.end(), m_start) - m_start
                                     : points.size;
    KelChartDecimatedView::findFiniteRange(points.x, nanBegin, s);
    KelChartDecimatedView::findGaps(points.yUndef, points.yUndefCount, s);
    const Numbers numbers = numbersIn(m_start, m_x.size());
    s.numbers = {numbers.x.min, numbers.x.max, numbers.y.min, numbers.y.max};
    s.halfNaN.clear();
    for (std::size_t k = m_halfNaN.begin; k < m_halfNaN.at.size(); ++k)
        if (m_halfNaN.at[k] >= m_start)
            s.halfNaN.push_back(m_halfNaN.at[k] - m_start);
    return s;
}

KelChartLiveSeries::Numbers KelChartLiveSeries::numbersIn(std::size_t begin, std::size_t end) const
{
    Numbers out;
    collectNumbers(0, begin, end, out);
    return out;
}

// Whole blocks from the levels above, the ragged ends point by point.
void KelChartLiveSeries::collectNumbers(std::size_t level, std::size_t begin, std::size_t end, Numbers& out) const
{
    const auto take = [&](std::size_t at, std::size_t from, std::size_t to) {
        for (std::size_t k = from; k < to; ++k) {
            if (at > 0) {
                out.add(m_numberLevels[at - 1][k]);
            } else if (!std::isnan(m_x[k]) && !std::isnan(m_y[k])) {
                out.x.add(m_x[k]);
                out.y.add(m_y[k]);
            }
        }
    };
    KelChartDecimation::coverByBlocks(m_numberLevels.size(), level, begin, end, take);
}

// The item number of the first kept point: the first kept item that is not
// one of the undefined ones.
std::uint64_t KelChartLiveSeries::firstPointItem() const
{
    std::size_t y = m_yUndef.begin, x = m_xUndef.begin, n = m_noneDefined.begin;
    for (std::uint64_t item = m_firstItem;; ++item) {
        if (y < m_yUndef.items.size() && m_yUndef.items[y] == item)
            ++y;
        else if (x < m_xUndef.items.size() && m_xUndef.items[x] == item)
            ++x;
        else if (n < m_noneDefined.items.size() && m_noneDefined.items[n] == item)
            ++n;
        else
            return item;
    }
}

// What a cache's running minimum of one component gives: the smallest value
// defined, unless the first defined one is NaN (which no later value
// replaces), and 0 when none is defined. `points` holds that component of the
// points; `undefined` the items where it is defined and the other is not.
double KelChartLiveSeries::firstDefined(const std::vector<double>& points, const Undefined& undefined) const
{
    const bool anyPoint = m_start < points.size();
    const bool pointFirst = anyPoint && (undefined.size() == 0 || firstPointItem() < undefined.items[undefined.begin]);
    if (!anyPoint && undefined.size() == 0)
        return 0.0;
    return pointFirst ? points[m_start] : undefined.values[undefined.begin];
}

Orv::Math::BoundingBox KelChartLiveSeries::bounds() const
{
    Orv::Math::BoundingBox box;
    if (!valid())
        return box;
    Numbers extent = numbersIn(m_start, m_x.size());
    for (std::size_t k = m_halfNaN.begin; k < m_halfNaN.at.size(); ++k) {
        if (m_halfNaN.at[k] >= m_start) {
            extent.x.add(m_x[m_halfNaN.at[k]]);
            extent.y.add(m_y[m_halfNaN.at[k]]);
        }
    }
    for (std::size_t k = m_yUndef.begin; k < m_yUndef.values.size(); ++k)
        extent.x.add(m_yUndef.values[k]);
    for (std::size_t k = m_xUndef.begin; k < m_xUndef.values.size(); ++k)
        extent.y.add(m_xUndef.values[k]);
    const auto smallest = [](double first, const Extent& e) {
        return std::isnan(first) ? first : std::min(e.min, first);
    };
    if (m_xUndef.size() > 0)
        extent.x.add(smallest(firstDefined(m_x, m_yUndef), extent.x));
    if (m_yUndef.size() > 0)
        extent.y.add(smallest(firstDefined(m_y, m_xUndef), extent.y));
    box.insert(low(extent.x), low(extent.y), 0.0f);
    box.insert(high(extent.x), high(extent.y), 0.0f);
    return box;
}

bool KelChartLiveSeries::valid() const
{
    return m_start < m_x.size() || m_xUndef.size() > 0 || m_yUndef.size() > 0;
}

const KelChartVariableCache& KelChartLiveSeries::cache() const
{
    m_cache.m_variable = m_variable;
    m_cache.m_valid = valid();
    m_cache.m_scalar = false;
    m_cache.m_bounds = bounds();
    return m_cache;
}

std::size_t KelChartLiveSeries::memoryBytes() const
{
    std::size_t bytes =
        (m_x.capacity() + m_y.capacity()) * sizeof(double) + m_summary->broken.capacity() * sizeof(std::uint64_t);
    for (const auto& level : m_summary->levels)
        bytes += level.capacity() * sizeof(Extent);
    for (const auto& level : m_numberLevels)
        bytes += level.capacity() * sizeof(Numbers);
    for (const Undefined* u : {&m_yUndef, &m_xUndef, &m_noneDefined})
        bytes += u->values.capacity() * sizeof(double) + u->items.capacity() * sizeof(std::uint64_t);
    for (const Marks* m : {&m_halfNaN, &m_descents, &m_nanX})
        bytes += m->at.capacity() * sizeof(std::size_t);
    return bytes;
}
