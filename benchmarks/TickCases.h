#pragma once
// The ranges and interval counts the tick benchmarks share: spreads from 1e-6
// to 1e9 at offsets on either side of zero, 2 to 12 intervals, from a fixed seed.

#include <cstddef>
#include <vector>

namespace bench {

struct TickCase {
    double min;
    double max;
    int count;
};

const std::vector<TickCase>& tickCases();

// The cases one after another, or drawn in a fixed random order too long for the branch
// predictor to learn, as an axis meets ranges in use; run back to back, the cycle of 1,024
// cases is learnt and flatters code with many data-dependent branches.
enum class TickOrder { Cycled, Shuffled };
const TickCase& tickCase(std::size_t call, TickOrder order);

} // namespace bench
