#include "BenchData.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <map>
#include <memory>
#include <new>
#include <random>
#include <tuple>

#include <malloc.h>

namespace bench {

Series makeSeries(std::size_t count, XOrder order, std::uint64_t seed)
{
    std::mt19937_64 random(seed);
    std::uniform_real_distribution<double> step(0.0, 2.0);
    std::uniform_real_distribution<double> value(-1000.0, 1000.0);
    std::uniform_real_distribution<double> chance(0.0, 1.0);
    Series series;
    series.x.reserve(count);
    series.y.reserve(count);
    series.xUndefined.reserve(count);
    series.yUndefined.reserve(count);
    // x crosses zero, so that the keys of negative and positive values meet.
    double x = -0.5 * static_cast<double>(count);
    for (std::size_t i = 0; i < count; ++i) {
        x += step(random);
        series.x.push_back(static_cast<float>(x));
        series.y.push_back(static_cast<float>(value(random)));
        const double draw = chance(random);
        series.xUndefined.push_back(draw < UndefinedShare / 2);
        series.yUndefined.push_back(draw >= UndefinedShare / 2 && draw < UndefinedShare);
    }
    if (order == XOrder::Shuffled)
        std::shuffle(series.x.begin(), series.x.end(), random);
    return series;
}

namespace {

// A variable with the property group it belongs to.
struct OwnedVariable {
    KelModifiedGroup group;
    KelChartVariable variable{group};
};

void fill(KelChartVariable& target, Kind kind, std::size_t count, std::uint64_t seed)
{
    Series series = makeSeries(count, kind == Kind::Shuffled ? XOrder::Shuffled : XOrder::Ascending, seed);
    if (kind == Kind::Scalar) {
        target.variableiter.setScalarData(std::vector<double>(series.y.begin(), series.y.end()),
                                          std::move(series.yUndefined));
    } else {
        target.variableiter.setVector2Data(std::move(series.x), std::move(series.y),
                                           std::move(series.xUndefined), std::move(series.yUndefined));
    }
}

} // namespace

KelChartVariable& variable(Kind kind, std::size_t count, std::uint64_t seed)
{
    static std::map<std::tuple<Kind, std::size_t, std::uint64_t>, std::unique_ptr<OwnedVariable>> kept;
    auto& slot = kept[{kind, count, seed}];
    if (!slot) {
        slot = std::make_unique<OwnedVariable>();
        fill(slot->variable, kind, count, seed);
        slot->variable.variableiter.reset(); // delivers the arrays now, not in the first measurement
    }
    return slot->variable;
}

const std::vector<const KelChartVariable*>& variableList(std::size_t variables, std::size_t totalCount)
{
    static std::map<std::pair<std::size_t, std::size_t>, std::vector<const KelChartVariable*>> kept;
    auto& list = kept[{variables, totalCount}];
    if (list.empty()) {
        for (std::size_t i = 0; i < variables; ++i) {
            KelChartVariable& var = variable(Kind::Ascending, totalCount / variables, 100 + i);
            var.xAxis.set(QStringLiteral("axis.x.bottom"));
            var.yAxis.set(QStringLiteral("axis.y.left"));
            var.style.componentSortAxis.set(0);
            var.order.set(static_cast<int>((i * 7) % 10)); // the list cache reorders them
            list.push_back(&var);
        }
    }
    return list;
}

ReadArrays::ReadArrays(std::size_t count)
    : x(count)
    , y(count)
    , undefined(count)
{
}

std::size_t readVectors(KelVariableIter& iter, ReadArrays& out)
{
    iter.reset();
    Orv::Math::Vector2 v;
    std::size_t i = 0;
    while (iter.next()) {
        iter.vector2Value(v);
        bool fx = false, fy = false, fz = false;
        iter.undefinedFlags(fx, fy, fz);
        out.x[i] = v.x();
        out.y[i] = v.y();
        out.undefined[i] = static_cast<unsigned char>(fx | (fy << 1));
        ++i;
    }
    return i;
}

std::size_t readScalars(KelVariableIter& iter, ReadArrays& out)
{
    iter.reset();
    std::size_t i = 0;
    while (iter.next()) {
        bool f = false, unused = false;
        iter.undefinedFlags(f, unused, unused);
        out.y[i] = iter.scalarValue();
        out.undefined[i] = f;
        ++i;
    }
    return i;
}

std::size_t heldBytes(const KelChartVariableCache& cache)
{
    return (cache.x().capacity() + cache.y().capacity() + cache.xUndef().capacity() + cache.yUndef().capacity()) *
               sizeof(double) +
           cache.index().capacity() * sizeof(std::size_t);
}

void reportItems(benchmark::State& state, std::int64_t itemsPerIteration, std::size_t resultBytes)
{
    state.SetItemsProcessed(state.iterations() * itemsPerIteration);
    if (itemsPerIteration > 0)
        state.counters["bytes_per_item"] = static_cast<double>(resultBytes) / static_cast<double>(itemsPerIteration);
}

std::int64_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<std::int64_t>(info.uordblks + info.hblkhd);
}

namespace {
std::atomic<std::int64_t> allocatedBytes{0};
std::atomic<std::int64_t> peakBytes{0};
} // namespace

#if defined(__SANITIZE_ADDRESS__)
bool HeapProbe::available() { return false; }
#else
bool HeapProbe::available() { return true; }
#endif

HeapProbe::HeapProbe()
    : m_start(allocatedBytes.load())
    , m_savedPeak(peakBytes.exchange(m_start))
{
}

HeapProbe::~HeapProbe()
{
    peakBytes = std::max(m_savedPeak, peakBytes.load());
}

std::int64_t HeapProbe::current() const { return allocatedBytes.load() - m_start; }
std::int64_t HeapProbe::peak() const { return peakBytes.load() - m_start; }

} // namespace bench

#if !defined(__SANITIZE_ADDRESS__)
// The other forms of operator new and delete in libstdc++ end in these.
void* operator new(std::size_t size)
{
    void* p = std::malloc(size == 0 ? 1 : size);
    if (!p)
        throw std::bad_alloc();
    const auto bytes = static_cast<std::int64_t>(malloc_usable_size(p));
    const std::int64_t now = bench::allocatedBytes.fetch_add(bytes) + bytes;
    std::int64_t peak = bench::peakBytes.load();
    while (now > peak && !bench::peakBytes.compare_exchange_weak(peak, now))
        ;
    return p;
}

void operator delete(void* p) noexcept
{
    if (!p)
        return;
    bench::allocatedBytes.fetch_sub(static_cast<std::int64_t>(malloc_usable_size(p)));
    std::free(p);
}

void operator delete(void* p, std::size_t) noexcept
{
    ::operator delete(p);
}
#endif
