#include "KelChartVariableCache.h"
#include "KelStableOrder.h"
#include "KelChartBaseLine.h"

#include "OrvDebug.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <numeric>

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

// Lowest and highest non-NaN value of an array, narrowed to float as the box
// keeps them; NaN when there is none, which the box ignores.
std::pair<float, float> extent(const std::vector<double>& values)
{
    double lo = positiveInfinity;
    double hi = -positiveInfinity;
    for (const double v : values) {
        lo = v < lo ? v : lo;
        hi = v > hi ? v : hi;
    }
    if (lo > hi)
        return {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::quiet_NaN()};
    return {static_cast<float>(lo), static_cast<float>(hi)};
}

template <class T>
std::vector<T> gather(const std::vector<T>& values, const std::vector<size_t>& order)
{
    std::vector<T> result(order.size());
    for (size_t i = 0; i < order.size(); ++i)
        result[i] = values[order[i]];
    return result;
}

std::vector<size_t> stableOrderOf(const std::vector<double>& x)
{
    std::vector<std::uint64_t> keys(x.size());
    std::transform(x.begin(), x.end(), keys.begin(), KelStableOrder::key);
    if (x.size() <= std::numeric_limits<std::uint32_t>::max()) {
        const auto narrow = KelStableOrder::byKey<std::uint32_t>(std::move(keys));
        return std::vector<size_t>(narrow.begin(), narrow.end());
    }
    return KelStableOrder::byKey<size_t>(std::move(keys));
}

} // namespace

// The items as read from the iterator, in iteration order.
struct KelChartVariableCache::Collected {
    explicit Collected(size_t expected, bool checkOrder)
        : checkOrder(checkOrder)
    {
        x.reserve(expected);
        y.reserve(expected);
        undefined.reserve(expected);
    }

    void add(double xValue, bool xUndefined, double yValue, bool yUndefined)
    {
        x.push_back(xValue);
        y.push_back(yValue);
        undefined.push_back(static_cast<unsigned char>((xUndefined ? xUndefinedBit : 0) |
                                                       (yUndefined ? yUndefinedBit : 0)));
        anyUndefined = anyUndefined || xUndefined || yUndefined;
        if (!xUndefined)
            minX.add(xValue);
        if (!yUndefined)
            minY.add(yValue);
        if (checkOrder) {
            const std::uint64_t key = KelStableOrder::key(xValue);
            ascending = ascending && key >= previousKey;
            previousKey = key;
        }
    }

    size_t size() const { return x.size(); }

    std::vector<double> x;
    std::vector<double> y;
    std::vector<unsigned char> undefined;
    RunningMinimum minX;
    RunningMinimum minY;
    bool anyUndefined = false;
    bool checkOrder;
    bool ascending = true;
    std::uint64_t previousKey = 0;
};

KelChartVariableCache::KelChartVariableCache()
    : m_variable(nullptr)
    , m_valid(false)
    , m_scalar(false)
    , m_minXDelta(-1.0)
{
}

KelChartVariableCache::KelChartVariableCache(const KelChartVariable& variable, bool sort,
                                             const QStringList& positionAxes)
    : m_variable(&variable)
    , m_valid(false)
    , m_scalar(false)
    , m_minXDelta(-1.0)
{
    orvdebug::dbgostream trace = kel::debug_logger::debuglogger().dlog();
    trace.buffer() << "caching : " << variable.name();
    trace << std::endl;
    if (!variable.enabled.get())
        return;
    trace.buffer() << "\tenabled";
    trace << std::endl;

    // Iterating moves the iterator's position, which is not part of the variable's value.
    auto& iter = const_cast<KelVariableIter&>(variable.variableiter);
    iter.reset();
    Collected items(iter.size(), sort);
    if (iter.hasDimension(2))
        collectVectors(iter, items, trace);
    else if (iter.hasDimension(1))
        collectScalars(iter, items, trace);

    trace.buffer() << "\tsize : " << items.size();
    trace << std::endl;
    if (items.size() == 0)
        return;

    const std::vector<size_t> order = sort && !items.ascending ? stableOrderOf(items.x) : std::vector<size_t>();
    const bool positional = positionAxes.contains(variable.xAxis.get());
    if (!items.anyUndefined && !positional)
        fillDefined(items, order);
    else
        fillByCase(variable, items, order, positional);

    m_valid = (!m_x.empty() && m_x.size() == m_y.size()) || !m_xUndef.empty() || !m_yUndef.empty();
    trace.buffer() << "\tvalid = " << m_valid;
    trace << std::endl;
}

KelChartVariableCache::KelChartVariableCache(const KelChartVariableCache& other) = default;
KelChartVariableCache::KelChartVariableCache(KelChartVariableCache&& other) noexcept = default;
KelChartVariableCache& KelChartVariableCache::operator=(const KelChartVariableCache& other) = default;
KelChartVariableCache& KelChartVariableCache::operator=(KelChartVariableCache&& other) noexcept = default;
KelChartVariableCache::~KelChartVariableCache() = default;

void KelChartVariableCache::collectVectors(KelVariableIter& iter, Collected& items, orvdebug::dbgostream& trace)
{
    const bool tracing = trace.enabled();
    if (tracing) {
        trace.buffer() << "\tvector 2";
        trace << std::endl;
    }
    Orv::Math::Vector2 v;
    while (iter.next()) {
        iter.vector2Value(v);
        bool fx = false, fy = false, fz = false;
        iter.undefinedFlags(fx, fy, fz);
        fx = fx || v.x() == positiveInfinity;
        fy = fy || v.y() == positiveInfinity;
        items.add(v.x(), fx, v.y(), fy);
        if (tracing)
            trace.buffer() << "\t\tvalue = {" << v.x() << ", " << v.y() << "}, undef = {" << fx << ", " << fy
                           << "}, min = {" << items.minX.value << ", " << items.minY.value << "}\n";
    }
}

void KelChartVariableCache::collectScalars(KelVariableIter& iter, Collected& items, orvdebug::dbgostream& trace)
{
    m_scalar = true;
    const bool tracing = trace.enabled();
    if (tracing) {
        trace.buffer() << "\tscalar";
        trace << std::endl;
    }
    while (iter.next()) {
        const double d = iter.scalarValue();
        bool f = false, unused = false;
        iter.undefinedFlags(f, unused, unused);
        f = f || d == positiveInfinity;
        items.add(0.0, false, d, f);
        if (tracing)
            trace.buffer() << "\t\tvalue = " << d << ", undef = " << f << ", minY : " << items.minY.value << "\n";
    }
}

// Every item defined and x taken as it is: the arrays are the items, in order.
void KelChartVariableCache::fillDefined(Collected& items, const std::vector<size_t>& order)
{
    if (order.empty()) {
        m_x = std::move(items.x);
        m_y = std::move(items.y);
        m_index.resize(m_x.size());
        std::iota(m_index.begin(), m_index.end(), size_t(0));
    } else {
        m_x = gather(items.x, order);
        std::vector<double>().swap(items.x);
        m_y = gather(items.y, order);
        m_index = order;
    }
    const auto [xLo, xHi] = extent(m_x);
    const auto [yLo, yHi] = extent(m_y);
    m_bounds.insert(xLo, yLo, 0.0f);
    m_bounds.insert(xHi, yHi, 0.0f);
}

// Items with undefined components, or positional x: each item by its case.
void KelChartVariableCache::fillByCase(const KelChartVariable& variable, const Collected& items,
                                       const std::vector<size_t>& order, bool positional)
{
    const size_t n = items.size();
    m_index.reserve(n);
    m_x.reserve(n);
    m_y.reserve(n);
    const double minX = items.minX.value;
    const double minY = items.minY.value;
    for (size_t i = 0; i < n; ++i) {
        const size_t r = order.empty() ? i : order[i];
        const double position = static_cast<double>(i);
        const bool xUndefined = items.undefined[r] & xUndefinedBit;
        const bool yUndefined = items.undefined[r] & yUndefinedBit;
        m_index.push_back(r);
        if (!xUndefined && !yUndefined) {
            appendPoint(positional ? position : items.x[r], items.y[r]);
        } else if (m_scalar) {
            m_x.push_back(minX);
            m_y.push_back(minY);
            m_yUndef.push_back(position);
            m_bounds.insert(0.0f, static_cast<float>(minY), 0.0f);
        } else if (positional) {
            m_x.push_back(position);
            m_y.push_back(yUndefined ? 0.0 : items.y[r]);
            if (xUndefined)
                m_xUndef.push_back(items.y[r]);
            if (yUndefined)
                m_yUndef.push_back(position);
        } else if (!yUndefined) {
            m_xUndef.push_back(items.y[r]);
            m_bounds.insert(static_cast<float>(minX), static_cast<float>(items.y[r]), 0.0f);
        } else if (!xUndefined) {
            m_yUndef.push_back(items.x[r]);
            m_bounds.insert(static_cast<float>(items.x[r]), static_cast<float>(minY), 0.0f);
        } else {
            reportUndefined(variable);
        }
    }
}

void KelChartVariableCache::appendPoint(double x, double y)
{
    m_x.push_back(x);
    m_y.push_back(y);
    m_bounds.insert(static_cast<float>(x), static_cast<float>(y), 0.0f);
}

void KelChartVariableCache::reportUndefined(const KelChartVariable& variable)
{
    orvdebug::dbgostream out = kel::debug_logger::debuglogger().dout("Err");
    out.buffer() << "Some value that is completely undefined was found in variable(" << variable.name() << ")";
    out << std::endl;
}

double KelChartVariableCache::fillBaseLine() const
{
    return KelChartBaseLine(m_bounds.min().y(), m_bounds.max().y());
}

double KelChartVariableCache::minXDelta() const
{
    if (m_minXDelta >= 0)
        return m_minXDelta;
    const size_t n = m_x.size();
    if (n > 1) {
        double delta = std::numeric_limits<double>::max();
        for (size_t k = 1; k < n; ++k)
            delta = std::min(delta, m_x[k] - m_x[k - 1]);
        m_minXDelta = delta;
    } else {
        m_minXDelta = n == 1 ? m_x[0] : 0.0;
    }
    return m_minXDelta;
}
