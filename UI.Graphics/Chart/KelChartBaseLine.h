#pragma once
// Where bars and area fills start: 0 brought into the range [lo, hi], that is
// lo when the range lies above 0, hi when it lies below 0, else 0.

inline double KelChartBaseLine(double lo, double hi)
{
    if (lo > 0)
        return lo;
    if (hi < 0)
        return hi;
    return 0.0;
}
