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
    const double smallest = extent(QStringLiteral("00"), room) + room.gap;
    const double most = std::floor(room.length / std::max(1.0, smallest));
    return static_cast<unsigned>(std::clamp(most, 1.0, static_cast<double>(std::max(1u, maxCount))));
}

} // namespace

std::function<double(const QString&)> TickFit::perCharacter(double pixels)
{
    return [pixels](const QString& text) { return pixels * text.size(); };
}

bool TickFit::fits(const KelChartAxisScale& scale, const LabelRoom& room)
{
    const unsigned ticks = std::min(scale.size(), scale.entryCount());
    for (unsigned i = 1; i < ticks; ++i) {
        const double distance = std::abs(scale.percentage(i) - scale.percentage(i - 1)) * room.length;
        const double needed = (extent(scale.label(i - 1), room) + extent(scale.label(i), room)) / 2 + room.gap;
        if (distance < needed)
            return false;
    }
    return true;
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
