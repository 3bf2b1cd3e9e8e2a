#include "TickFit.h"

#include <algorithm>
#include <cmath>

namespace Orv::Chart {

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

struct PlacedLabel {
    double percentage;
    QString text;
};

// Whether neighbouring labels, in any order along the axis, keep the room's gap.
bool labelsFit(std::vector<PlacedLabel> labels, const LabelRoom& room)
{
    std::sort(labels.begin(), labels.end(),
              [](const PlacedLabel& a, const PlacedLabel& b) { return a.percentage < b.percentage; });
    for (std::size_t i = 1; i < labels.size(); ++i) {
        const double span = (labels[i].percentage - labels[i - 1].percentage) * room.length;
        if (span < (extent(labels[i - 1].text, room) + extent(labels[i].text, room)) / 2 + room.gap)
            return false;
    }
    return true;
}

std::vector<QString> majorLabels(const KelChartAxisScale& scale)
{
    std::vector<QString> labels;
    const unsigned ticks = std::min(scale.size(), scale.entryCount());
    labels.reserve(ticks);
    for (unsigned i = 0; i < ticks; ++i)
        labels.push_back(scale.label(i));
    return labels;
}

// The labels of the major ticks as they are drawn.
std::vector<QString> drawnLabels(const KelChartAxisScale& scale, const LabelRoom& room)
{
    LabelOffset offset = TickFit::offset(scale, room);
    return offset.applies() ? std::move(offset.labels) : majorLabels(scale);
}

// The digit m of a minor tick at m × 10^k.
int mantissaOf(const KelChartAxisScale::MinorTick& tick)
{
    return static_cast<int>(std::lround(tick.realValue / std::pow(10.0, std::floor(tick.value + 1e-9))));
}

} // namespace

std::vector<bool> TickFit::labelledMinors(const KelChartAxisScale& scale, const LabelRoom& room, unsigned stride)
{
    std::vector<PlacedLabel> majors;
    const unsigned ticks = std::min(scale.size(), scale.entryCount());
    for (unsigned i = 0; i < ticks; i += std::max(1u, stride))
        majors.push_back({scale.percentage(i), scale.label(i)});
    // Every minor, else those at 2 and 5 times a power of ten.
    for (const bool every : {true, false}) {
        std::vector<bool> chosen(scale.minorTickCount(), false);
        std::vector<PlacedLabel> labels = majors;
        for (unsigned i = 0; i < scale.minorTickCount(); ++i) {
            const KelChartAxisScale::MinorTick& tick = scale.minorTick(i);
            const int mantissa = mantissaOf(tick);
            chosen[i] = every || mantissa == 2 || mantissa == 5;
            if (chosen[i])
                labels.push_back({tick.percentage, tick.label});
        }
        if (labelsFit(std::move(labels), room))
            return chosen;
    }
    std::vector<bool> none(scale.minorTickCount(), false);
    return none;
}

LabelOffset TickFit::offset(const KelChartAxisScale& scale, const LabelRoom& room)
{
    if (!(room.offsetRoom > 0) || !room.width)
        return {};
    return LabelOffset::of(majorLabels(scale), scale.factor(), room.offsetRoom, room.width);
}

std::function<double(const QString&)> TickFit::perCharacter(double pixels)
{
    return [pixels](const QString& text) { return pixels * text.size(); };
}

bool TickFit::fits(const KelChartAxisScale& scale, const LabelRoom& room, unsigned stride)
{
    const std::vector<QString> labels = drawnLabels(scale, room);
    const auto ticks = static_cast<unsigned>(labels.size());
    for (unsigned i = 1; i < ticks; ++i) {
        const double distance = std::abs(scale.percentage(i) - scale.percentage(i - 1)) * room.length;
        if (stride == 1 && distance < room.minDistance)
            return false;
        if (i < stride || i % stride != 0)
            continue;
        const unsigned before = i - stride;
        const double span = std::abs(scale.percentage(i) - scale.percentage(before)) * room.length;
        const double needed = (extent(labels[before], room) + extent(labels[i], room)) / 2 + room.gap;
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

} // namespace Orv::Chart
