#pragma once
// What the benchmarks share: series made from fixed seeds, so that every run
// measures the same points; chart variables that own them and live until the
// program ends (building 1e7 points takes longer than measuring them); the
// reading floor; a heap counter; and the counters every case reports.

#include "KelChartVariable.h"
#include "KelChartVariableCache.h"
#include "KelModified.h"

#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bench {

// The point counts of the cases. Only `Small` cases run in the test suite.
constexpr std::int64_t Small = 10'000;
constexpr std::int64_t Medium = 1'000'000;
constexpr std::int64_t Large = 10'000'000;

// The share of points with one undefined component.
constexpr double UndefinedShare = 0.1;

// A 2-D series as a host hands it over: floats with undefined flags.
struct Series {
    std::vector<float> x;
    std::vector<float> y;
    std::vector<bool> xUndefined;
    std::vector<bool> yUndefined;
};

enum class XOrder { Ascending, Shuffled };

// `count` points with x ascending in random steps (or those x shuffled) and
// random y; `UndefinedShare` of them have x or y undefined, never both.
Series makeSeries(std::size_t count, XOrder order, std::uint64_t seed = 1);

enum class Kind { Ascending, Shuffled, Scalar };

// A chart variable holding `count` points of that kind, built once per
// (kind, count, seed) and kept. Scalar variables hold the y values as doubles.
KelChartVariable& variable(Kind kind, std::size_t count, std::uint64_t seed = 1);

// The list of `variables` variables sharing `totalCount` points, ascending x,
// sorted by x, drawn against "axis.x.bottom" and "axis.y.left"; kept.
const std::vector<const KelChartVariable*>& variableList(std::size_t variables, std::size_t totalCount);

// Copies of what the iterator delivers, in preallocated arrays.
struct ReadArrays {
    explicit ReadArrays(std::size_t count);
    std::vector<double> x;
    std::vector<double> y;
    std::vector<unsigned char> undefined;
};

// The least a cache of a vector (or scalar) variable must do: read every item
// once through the iterator's virtual calls and store it. Gives the item count.
std::size_t readVectors(KelVariableIter& iter, ReadArrays& out);
std::size_t readScalars(KelVariableIter& iter, ReadArrays& out);

// Bytes held by the arrays of a cache, capacity included.
std::size_t heldBytes(const KelChartVariableCache& cache);

// Items per second, and the bytes each item leaves in the result.
void reportItems(benchmark::State& state, std::int64_t itemsPerIteration, std::size_t resultBytes);

// The heap in use, as the allocator counts it: Qt containers bypass operator new.
std::int64_t heapInUse();

// Counts the bytes allocated through operator new while alive (std containers
// allocate that way; Qt containers do not). Not available under
// AddressSanitizer, which owns the allocator then.
class HeapProbe {
public:
    static bool available();
    HeapProbe();
    ~HeapProbe();
    HeapProbe(const HeapProbe&) = delete;
    HeapProbe& operator=(const HeapProbe&) = delete;
    // Bytes allocated since construction and not freed yet.
    std::int64_t current() const;
    // The most that `current()` reached.
    std::int64_t peak() const;

private:
    std::int64_t m_start;
    std::int64_t m_savedPeak;
};

} // namespace bench
