#include "KelChartVariableCache.h"
#include "KelStableOrder.h"
#include "KelChartBaseLine.h"
#include "KelChartTraceTexts.h"

#include "OrvDiagnostics.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <typeinfo>

namespace {

constexpr double positiveInfinity = std::numeric_limits<double>::infinity();
constexpr unsigned char xUndefinedBit = 1;
constexpr unsigned char yUndefinedBit = 2;

// The smallest defined value seen so far, 0.0 before the first one.
struct RunningMinimum {
    double value = 0.0;
    bool seen = false;
    void add(double v)
    {
        value = seen ? std::min(value, v) : v;
        seen = true;
    }
};

// Lowest and highest non-NaN value added, narrowed to float as the box keeps
// them; NaN when there is none, which the box ignores. Growing the box once
// from these gives what inserting every point would, at a fraction of the cost.
struct Extent {
    double lo = positiveInfinity;
    double hi = -positiveInfinity;
    void add(double v)
    {
        lo = v < lo ? v : lo;
        hi = v > hi ? v : hi;
    }
    float low() const { return lo > hi ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(lo); }
    float high() const { return lo > hi ? std::numeric_limits<float>::quiet_NaN() : static_cast<float>(hi); }
};

// One item as the iterator gives it: components and the iterator's own
// undefined flags, before +infinity is judged.
struct RawItem {
    double x;
    double y;
    bool xUndefined;
    bool yUndefined;
};

} // namespace

// One item as read: both components and whether each is undefined.
struct KelChartVariableCache::Item {
    double x;
    double y;
    bool xUndefined;
    bool yUndefined;
};

// The smallest defined x and y of all items, taken in iteration order.
struct KelChartVariableCache::Minima {
    RunningMinimum x;
    RunningMinimum y;
    void add(const Item& item)
    {
        if (!item.xUndefined)
            x.add(item.x);
        if (!item.yUndefined)
            y.add(item.y);
    }
};

// The items as read, in iteration order, kept for sorting. x and y share one
// record, so that taking the items in sorted order costs one memory access
// per item rather than two.
struct KelChartVariableCache::Collected {
    struct Point {
        double x;
        double y;
    };

    explicit Collected(size_t expected)
    {
        points.reserve(expected);
        undefined.reserve(expected);
    }

    bool operator()(const Item& item)
    {
        points.push_back({item.x, item.y});
        undefined.push_back(static_cast<unsigned char>((item.xUndefined ? xUndefinedBit : 0) |
                                                       (item.yUndefined ? yUndefinedBit : 0)));
        return true;
    }

    Item operator[](size_t i) const
    {
        return {points[i].x, points[i].y, (undefined[i] & xUndefinedBit) != 0, (undefined[i] & yUndefinedBit) != 0};
    }

    size_t size() const { return points.size(); }

    std::vector<Point> points;
    std::vector<unsigned char> undefined;
};

// Puts items, in drawing order, into the cache's arrays, each by its case.
// What depends on the smallest defined x or y is known only once every item
// was read: `finish` completes it.
class KelChartVariableCache::Placement {
public:
    Placement(KelChartVariableCache& cache, Arrays& arrays, bool positional)
        : m_cache(cache)
        , m_arrays(arrays)
        , m_positional(positional)
    {
    }

    void reserve(size_t expected)
    {
        m_arrays.index.reserve(expected);
        m_arrays.x.reserve(expected);
        m_arrays.y.reserve(expected);
    }

    // `index` is the item's position in iteration order. Kept small, so that
    // the usual case inlines into the reading loops.
    void place(const Item& item, size_t index)
    {
        m_arrays.index.push_back(index);
        if (!item.xUndefined && !item.yUndefined)
            addPoint(m_positional ? static_cast<double>(m_count) : item.x, item.y);
        else
            placeUndefined(item);
        ++m_count;
    }

    size_t count() const { return m_count; }

    void finish(const Minima& minima, const KelChartVariable& variable)
    {
        if (m_xNeedsMinimum)
            m_xs.add(minima.x.value);
        if (m_yNeedsMinimum)
            m_ys.add(minima.y.value);
        // Undefined scalar items hold their position in yUndef, exactly.
        if (m_cache.m_scalar)
            for (const double position : m_arrays.yUndef)
                m_arrays.y[static_cast<size_t>(position)] = minima.y.value;
        if (m_boxed) {
            m_cache.m_bounds.insert(m_xs.low(), m_ys.low(), 0.0f);
            m_cache.m_bounds.insert(m_xs.high(), m_ys.high(), 0.0f);
        }
        for (size_t i = 0; i < m_completelyUndefined; ++i)
            reportUndefined(variable);
    }

private:
    void placeUndefined(const Item& item);

    void addPoint(double x, double y)
    {
        m_arrays.x.push_back(x);
        m_arrays.y.push_back(y);
        m_xs.add(x);
        m_ys.add(y);
        m_boxed = true;
    }

    KelChartVariableCache& m_cache;
    Arrays& m_arrays;
    const bool m_positional;
    size_t m_count = 0;
    Extent m_xs;
    Extent m_ys;
    bool m_boxed = false;
    bool m_xNeedsMinimum = false;
    bool m_yNeedsMinimum = false;
    size_t m_completelyUndefined = 0;
};

void KelChartVariableCache::Placement::placeUndefined(const Item& item)
{
    const auto position = static_cast<double>(m_count);
    if (m_cache.m_scalar) {
        // Drawn at the smallest defined y; the x of every scalar item is 0.
        m_arrays.x.push_back(0.0);
        m_arrays.y.push_back(0.0);
        m_arrays.yUndef.push_back(position);
        m_xs.add(0.0);
        m_yNeedsMinimum = m_boxed = true;
    } else if (m_positional) {
        m_arrays.x.push_back(position);
        m_arrays.y.push_back(item.yUndefined ? 0.0 : item.y);
        if (item.xUndefined)
            m_arrays.xUndef.push_back(item.y);
        if (item.yUndefined)
            m_arrays.yUndef.push_back(position);
    } else if (!item.yUndefined) {
        m_arrays.xUndef.push_back(item.y);
        m_ys.add(item.y);
        m_xNeedsMinimum = m_boxed = true;
    } else if (!item.xUndefined) {
        m_arrays.yUndef.push_back(item.x);
        m_xs.add(item.x);
        m_yNeedsMinimum = m_boxed = true;
    } else {
        ++m_completelyUndefined;
    }
}

// Places the items as they are read. When sorting, only while x ascends in
// the sort's order (NaN after everything): it refuses the first item whose x
// lies below its predecessor's.
struct KelChartVariableCache::InOrder {
    bool operator()(const Item& item)
    {
        if (sort) {
            const bool descends = std::isnan(previousX) ? !std::isnan(item.x) : item.x < previousX;
            if (descends)
                return false;
            previousX = item.x;
        }
        placement.place(item, placement.count());
        return true;
    }

    Placement& placement;
    const bool sort;
    double previousX = -positiveInfinity;
};

// Items through the iteration interface: several virtual calls per item.
class KelChartVariableCache::PerItem {
public:
    explicit PerItem(KelVariableIterInterface& iter)
        : m_iter(iter)
    {
    }

    size_t expected() const { return 0; }
    void restart() { m_iter.reset(); }

    bool vector(RawItem& item)
    {
        if (!m_iter.next())
            return false;
        Orv::Math::Vector2 v;
        m_iter.vector2Value(v);
        bool fx = false, fy = false, fz = false;
        m_iter.undefinedFlags(fx, fy, fz);
        item = {v.x(), v.y(), fx, fy};
        return true;
    }

    bool scalar(double& value, bool& undefined)
    {
        if (!m_iter.next())
            return false;
        value = m_iter.scalarValue();
        bool f = false, unused = false;
        m_iter.undefinedFlags(f, unused, unused);
        undefined = f;
        return true;
    }

private:
    KelVariableIterInterface& m_iter;
};

// Items straight from the in-memory iterator's delivered arrays: the same
// values and flags that its per-item calls give, at a fraction of the cost.
class KelChartVariableCache::InMemory {
public:
    explicit InMemory(KelVariableIter& iter)
        : m_items(iter.delivered())
    {
    }

    size_t expected() const { return m_items.size; }
    void restart() { m_next = 0; }

    bool vector(RawItem& item)
    {
        if (m_next >= m_items.size)
            return false;
        const size_t i = m_next++;
        const double x = m_items.exactX ? m_items.exactX[i] : m_items.x[i];
        item = {x, m_items.y[i], (*m_items.xUndefined)[i], (*m_items.yUndefined)[i]};
        return true;
    }

    bool scalar(double& value, bool& undefined)
    {
        if (m_next >= m_items.size)
            return false;
        const size_t i = m_next++;
        value = m_items.scalars[i];
        undefined = (*m_items.xUndefined)[i];
        return true;
    }

private:
    const KelVariableIter::Delivered m_items;
    size_t m_next = 0;
};

KelChartVariableCache::KelChartVariableCache()
    : m_variable(nullptr)
    , m_valid(false)
    , m_scalar(false)
    , m_minXDelta(-1.0)
{
}

// Iterating moves the iterator's position, which is not part of the variable's value.
KelChartVariableCache::KelChartVariableCache(const KelChartVariable& variable, bool sort,
                                             const QStringList& positionAxes)
    : KelChartVariableCache(variable, const_cast<KelVariableIter&>(variable.variableiter), sort, positionAxes)
{
}

KelChartVariableCache::KelChartVariableCache(const KelChartVariable& variable, KelVariableIterInterface& items,
                                             bool sort, const QStringList& positionAxes)
    : m_variable(&variable)
    , m_valid(false)
    , m_scalar(false)
    , m_minXDelta(-1.0)
{
    orvdebug::TraceLines trace;
    trace.line(KelChartTraceTexts::caching, variable.name());
    if (!variable.enabled.get())
        return;
    trace.line(KelChartTraceTexts::enabled);

    items.reset();
    const int dimension = items.hasDimension(2) ? 2 : items.hasDimension(1) ? 1 : 0;
    m_scalar = dimension == 1;
    const bool positional = positionAxes.contains(variable.xAxis.get());

    // Only the in-memory iterator itself: a subclass may deliver other items.
    auto arrays = std::make_shared<Arrays>();
    const size_t count = typeid(items) == typeid(KelVariableIter)
                             ? fill(InMemory(static_cast<KelVariableIter&>(items)), dimension, *arrays, sort,
                                    positional, trace)
                             : fill(PerItem(items), dimension, *arrays, sort, positional, trace);
    if (count == 0)
        return;
    m_valid = (!arrays->x.empty() && arrays->x.size() == arrays->y.size()) || !arrays->xUndef.empty() ||
              !arrays->yUndef.empty();
    m_arrays = std::move(arrays);
    trace.line(KelChartTraceTexts::valid, m_valid);
}

KelChartVariableCache::KelChartVariableCache(const KelChartVariableCache& other) = default;
KelChartVariableCache::KelChartVariableCache(KelChartVariableCache&& other) noexcept = default;
KelChartVariableCache& KelChartVariableCache::operator=(const KelChartVariableCache& other) = default;
KelChartVariableCache& KelChartVariableCache::operator=(KelChartVariableCache&& other) noexcept = default;
KelChartVariableCache::~KelChartVariableCache() = default;

const KelChartVariableCache::Arrays& KelChartVariableCache::noArrays()
{
    static const Arrays none;
    return none;
}

template <class Source>
size_t KelChartVariableCache::fill(Source source, int dimension, Arrays& arrays, bool sort, bool positional,
                                   orvdebug::TraceLines& trace)
{
    // Items go straight to their place as they are read, unless sorting finds
    // an x below its predecessor: then everything is read again and sorted.
    // A trace shows each item as read, once: traced sorting reads for sorting.
    Minima minima;
    std::optional<Placement> placement;
    if (!sort || !trace.enabled()) {
        placement.emplace(*this, arrays, positional);
        placement->reserve(source.expected());
        InOrder inOrder{*placement, sort};
        if (!read(source, dimension, inOrder, minima, trace)) {
            placement.reset();
            arrays = Arrays();
            minima = Minima();
            source.restart();
        }
    }
    if (!placement) {
        Collected items(source.expected());
        read(source, dimension, items, minima, trace);
        placement.emplace(*this, arrays, positional);
        placeSorted(items, *placement);
    }

    trace.line(KelChartTraceTexts::size, placement->count());
    if (placement->count() > 0)
        placement->finish(minima, *m_variable);
    return placement->count();
}

template <class Source, class Take>
bool KelChartVariableCache::read(Source& source, int dimension, Take& take, Minima& minima,
                                 orvdebug::TraceLines& trace)
{
    if (dimension == 2)
        return readVectors(source, take, minima, trace);
    if (dimension == 1)
        return readScalars(source, take, minima, trace);
    return true;
}

template <class Source, class Take>
bool KelChartVariableCache::readVectors(Source& source, Take& take, Minima& minima, orvdebug::TraceLines& trace)
{
    trace.line(KelChartTraceTexts::vector2);
    RawItem raw;
    while (source.vector(raw)) {
        const Item item{raw.x, raw.y, raw.xUndefined || raw.x == positiveInfinity,
                        raw.yUndefined || raw.y == positiveInfinity};
        minima.add(item);
        trace.item("\t\tvalue = {", raw.x, ", ", raw.y, "}, undef = {", item.xUndefined, ", ", item.yUndefined,
                   "}, min = {", minima.x.value, ", ", minima.y.value, "}");
        if (!take(item))
            return false;
    }
    return true;
}

template <class Source, class Take>
bool KelChartVariableCache::readScalars(Source& source, Take& take, Minima& minima, orvdebug::TraceLines& trace)
{
    trace.line(KelChartTraceTexts::scalar);
    double d = 0.0;
    bool undefined = false;
    while (source.scalar(d, undefined)) {
        const Item item{0.0, d, false, undefined || d == positiveInfinity};
        minima.add(item);
        trace.item("\t\tvalue = ", d, ", undef = ", item.yUndefined, ", minY : ", minima.y.value);
        if (!take(item))
            return false;
    }
    return true;
}

void KelChartVariableCache::placeSorted(const Collected& items, Placement& placement)
{
    std::vector<std::uint64_t> keys(items.size());
    std::transform(items.points.begin(), items.points.end(), keys.begin(),
                   [](const Collected::Point& p) { return KelStableOrder::key(p.x); });
    // The arrays are reserved only once the sort has freed its memory. The
    // items are read in random order: asking for those a few places ahead
    // keeps several memory accesses in flight.
    const auto placeAll = [&](const auto& order) {
        constexpr size_t ahead = 16;
        placement.reserve(order.size());
        for (size_t i = 0; i < order.size(); ++i) {
            if (i + ahead < order.size()) {
                __builtin_prefetch(&items.points[order[i + ahead]]);
                __builtin_prefetch(&items.undefined[order[i + ahead]]);
            }
            placement.place(items[order[i]], order[i]);
        }
    };
    // 32-bit positions where they suffice: they halve what the sort moves.
    // The order is taken in a statement of its own, which ends the life of the
    // sort's by-value keys before the arrays are reserved.
    if (items.size() <= std::numeric_limits<std::uint32_t>::max()) {
        const auto order = KelStableOrder::byKey<std::uint32_t>(std::move(keys));
        placeAll(order);
    } else {
        const auto order = KelStableOrder::byKey<size_t>(std::move(keys));
        placeAll(order);
    }
}

void KelChartVariableCache::reportUndefined(const KelChartVariable& variable)
{
    orvdebug::dataError("Some value that is completely undefined was found in variable(", variable.name(), ")");
}

double KelChartVariableCache::fillBaseLine() const
{
    return KelChartBaseLine(m_bounds.min().y(), m_bounds.max().y());
}

double KelChartVariableCache::minXDelta() const
{
    if (m_minXDelta >= 0)
        return m_minXDelta;
    const std::vector<double>& xs = x();
    const size_t n = xs.size();
    if (n > 1) {
        double delta = std::numeric_limits<double>::max();
        for (size_t k = 1; k < n; ++k)
            delta = std::min(delta, xs[k] - xs[k - 1]);
        m_minXDelta = delta;
    } else {
        m_minXDelta = n == 1 ? xs[0] : 0.0;
    }
    return m_minXDelta;
}

size_t KelChartVariableCache::nearestIndex(double x) const
{
    const std::vector<double>& xs = arrays().x;
    if (std::isnan(x))
        return npos;
    // NaN x values sit at the end; the search covers the numbers before them.
    const auto numbers = std::partition_point(xs.begin(), xs.end(), [](double v) { return !std::isnan(v); });
    const auto above = std::lower_bound(xs.begin(), numbers, x);
    if (above == xs.begin())
        return above == numbers ? npos : 0;
    const auto below = std::prev(above);
    // The first of a run of equal values below wins over its later equals.
    const auto firstBelow = std::lower_bound(xs.begin(), below, *below);
    if (above == numbers || x - *below <= *above - x)
        return static_cast<size_t>(firstBelow - xs.begin());
    return static_cast<size_t>(above - xs.begin());
}

size_t KelChartVariableCache::nearestIndex(double x, double y, double xScale, double yScale) const
{
    if (!(xScale > 0) || !(yScale > 0) || std::isnan(x) || std::isnan(y))
        return npos;
    const std::vector<double>& xs = arrays().x;
    const std::vector<double>& ys = arrays().y;
    size_t best = npos;
    double bestDistance = std::numeric_limits<double>::infinity();
    for (size_t k = 0; k < xs.size() && k < ys.size(); ++k) {
        const double dx = (xs[k] - x) / xScale;
        const double dy = (ys[k] - y) / yScale;
        const double distance = dx * dx + dy * dy;
        // NaN distances fail the comparison, so NaN points never count.
        if (distance < bestDistance) {
            bestDistance = distance;
            best = k;
        }
    }
    return best;
}
