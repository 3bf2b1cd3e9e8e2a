#pragma once
// The ranges and interval counts the tick benchmarks share: spreads from 1e-6
// to 1e9 at offsets on either side of zero, 2 to 12 intervals, from a fixed seed.

#include <cstddef>

namespace bench {

struct TickCase {
    double min;
    double max;
    int count;
};

// Call `call` of a run over the 1,024 cases: one case after another, or in a fixed random
// order too long for the branch predictor to learn, as an axis meets ranges in use. Run back
// to back, the cycle is learnt and flatters code with many data-dependent branches.
enum class TickOrder { Cycled, Shuffled };
const TickCase& tickCase(std::size_t call, TickOrder order);

} // namespace bench
