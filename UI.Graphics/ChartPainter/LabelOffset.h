#pragma once
// Short tick labels for a zoomed linear axis. Zoomed in far enough, every
// label of an axis repeats the same leading digits ("299.90010",
// "299.90015", ...) and is too wide for its room. The labels then show each
// value less a round offset the ticks share, and the offset is said once
// beside the axis: "+299.9" with labels "0.00010", "0.00015", ... Where those
// are still too wide, they are written in a power of 1000 of the unit, as the
// axis factor shows: "100", "150", ... with the factor 10^-6.
//
// The labels are worked out from the C-locale label texts of the ticks and
// the scale's factor (a power of ten) in exact decimal arithmetic, never from
// the doubles, so they stay exact and keep the ticks' number of decimals.
// Labels that fit their room, or that an offset would not shorten (no
// leading digits shared, a range across zero), are left as they are.
//
// Meant for the linear numeric axes: calendar ticks have their own offset
// text, and logarithmic or discrete labels are not a run of decimals.

#include "OrvChartPainterExport.h"

#include <QString>

#include <functional>
#include <vector>

namespace Orv::Chart {

struct ORV_CHARTPAINTER_EXPORT LabelOffset {
    // Whether the labels are relative to an offset.
    bool applies() const { return !text.isEmpty(); }

    // A tick's value is its label × 10^exponent + value.
    double value = 0;
    int exponent = 0;
    // The offset in the C locale with its sign ("+299.9", "-1.7e9"); empty
    // when the labels stand as they are.
    QString text;
    // One per label given, in the C locale; empty when the labels stand.
    std::vector<QString> labels;

    // The offset for ticks labelled `labels` (the scale's C-locale labels,
    // which show value / `factor`), when a label is wider than `room` pixels
    // by `width` and the offset makes the widest one narrower.
    static LabelOffset of(const std::vector<QString>& labels, double factor, double room,
                          const std::function<double(const QString&)>& width);
};

} // namespace Orv::Chart
