#pragma once
// Chooses how many tick intervals an axis asks its scale for from the room it
// has: the axis length in pixels and the width of its labels. A request whose
// labels would touch is lowered until they keep a gap. Where even the smallest
// request gives more labels than fit (long labels of a narrow numeric range,
// weekly ticks on a short axis), every k-th tick is labelled, so no two tick
// labels are ever drawn over each other, whatever the axis kind or its range.
// Labels that a room allows to be shown relative to an offset (see
// LabelOffset) are fitted as they are then drawn.

#include "OrvChartPainterExport.h"
#include "KelChartAxisScale.h"
#include "LabelOffset.h"

#include <QString>

#include <functional>
#include <vector>

namespace Orv::Chart {

struct LabelRoom {
    // Pixels along the axis.
    double length = 0;
    // Labels side by side along a horizontal axis, stacked along a vertical one.
    bool horizontal = true;
    // The drawn width of a label in pixels.
    std::function<double(const QString&)> width;
    double height = 14;
    // Free pixels between neighbouring labels: enough that a reader sees
    // separate labels, not one line of text.
    double gap = 24;
    // Neighbouring ticks closer than this crowd the axis, however short their labels.
    double minDistance = 0;
    // Labels wider than this are shown relative to an offset where that makes
    // them narrower; 0: never (an axis whose labels are not a run of decimals).
    double offsetRoom = 0;
};

class ORV_CHARTPAINTER_EXPORT TickFit {
public:
    // The offset the labels of `scale`'s major ticks are shown relative to in
    // `room`; none unless the room has an `offsetRoom`.
    static LabelOffset offset(const KelChartAxisScale& scale, const LabelRoom& room);

    // A label width of `perCharacter` pixels for every character.
    static std::function<double(const QString&)> perCharacter(double pixels);

    // Whether the labels of every `stride`-th tick of `scale` keep the room's
    // gap between neighbours.
    static bool fits(const KelChartAxisScale& scale, const LabelRoom& room, unsigned stride = 1);

    // The largest interval count up to `maxCount` whose labels fit; 1 when
    // none does. `scale` itself is left as it is.
    static unsigned count(const KelChartAxisScale& scale, const LabelRoom& room, unsigned maxCount,
                          const Orv::Math::NumberFormat& format = {});

    // The smallest k such that labelling every k-th tick fits.
    static unsigned stride(const KelChartAxisScale& scale, const LabelRoom& room);

    // Which minor ticks of a logarithmic scale get labels beside its labelled
    // majors (every `stride`-th): all of them where they fit, else those at
    // 2 and 5 times a power of ten, else none.
    static std::vector<bool> labelledMinors(const KelChartAxisScale& scale, const LabelRoom& room, unsigned stride);
};

} // namespace Orv::Chart
