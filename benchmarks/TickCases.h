#pragma once
// The ranges and interval counts the tick benchmarks share: spreads from 1e-6
// to 1e9 at offsets on either side of zero, 2 to 12 intervals, from a fixed seed.

#include <vector>

namespace bench {

struct TickCase {
    double min;
    double max;
    int count;
};

const std::vector<TickCase>& tickCases();

} // namespace bench
