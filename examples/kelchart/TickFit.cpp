#include "TickFit.h"

#include <algorithm>
#include <cmath>

namespace kelchart {

namespace {

// The extent of a label along the axis.
double extent(const QString& label, const LabelRoom& room)
{
    return room.horizontal ? room.width(label) : room.height;
}

// No more intervals than the narrowest labels (two characters' worth) could take.
unsigned ceilingFor(const LabelRoom& room, unsigned maxCount)
{
    const double smallest = std::max(extent(QStringLiteral("00"), room) + room.gap, room.minDistance);
    const double most = std::floor(room.length / std::max(1.0, smallest));
    return static_cast<unsigned>(std::clamp(most, 1.0, static_cast<double>(std::max(1u, maxCount))));
}

} // namespace

std::function<double(const QString&)> TickFit::perCharacter(double pixels)
{
    return [pixels](const QString& text) { return pixels * text.size(); };
}

bool TickFit::fits(const KelChartAxisScale& scale, const LabelRoom& room, unsigned stride)
{
    const unsigned ticks = std::min(scale.size(), scale.entryCount());
    for (unsigned i = 1; i < ticks; ++i) {
        const double distance = std::abs(scale.percentage(i) - scale.percentage(i - 1)) * room.length;
        if (stride == 1 && distance < room.minDistance)
            return false;
        if (i < stride || i % stride != 0)
            continue;
        const unsigned before = i - stride;
        const double span = std::abs(scale.percentage(i) - scale.percentage(before)) * room.length;
        const double needed = (extent(scale.label(before), room) + extent(scale.label(i), room)) / 2 + room.gap;
        if (span < needed)
            return false;
    }
    return true;
}

unsigned TickFit::stride(const KelChartAxisScale& scale, const LabelRoom& room)
{
    LabelRoom labelsOnly = room;
    labelsOnly.minDistance = 0;
    const unsigned ticks = std::min(scale.size(), scale.entryCount());
    unsigned k = 1;
    while (k < ticks && !fits(scale, labelsOnly, k))
        ++k;
    return std::max(k, 1u);
}

unsigned TickFit::count(const KelChartAxisScale& scale, const LabelRoom& room, unsigned maxCount,
                        const Orv::Math::NumberFormat& format)
{
    KelChartAxisScale trial = scale;
    for (unsigned n = ceilingFor(room, maxCount); n > 1; --n) {
        trial.update(n, format);
        if (fits(trial, room))
            return n;
    }
    return 1;
}

} // namespace kelchart
