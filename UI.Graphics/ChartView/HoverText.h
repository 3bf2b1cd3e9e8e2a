#pragma once
// What the view tells about the cursor and the points near it:
//   - the read-out: the cursor's position in axis units, x along the bottom
//     (or top) axis, y along the left axis and, beside it, the right one,
//     with as many digits as one pixel tells apart (dates in the axis's time
//     zone, to the second or millisecond where the zoom shows them; real
//     values on a logarithmic axis);
//   - for every drawn series, the point nearest to the cursor, with x and y in
//     their axes' units. Sorted series are searched along x alone (binary
//     search), others by screen distance. A point without a reading (NaN) says
//     so rather than printing "nan".

#include "OrvChartViewExport.h"
#include "ChartFrames.h"

#include <QLocale>
#include <QPointF>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <vector>

namespace Orv::Chart::HoverText {

// A series' point named by the hover.
struct Hit {
    std::size_t series;
    std::size_t index;
    // Where the point is drawn; NaN coordinates for a point without a reading.
    QPointF pixel;
    QString line;
};

struct Hover {
    QString readOut;
    std::vector<Hit> hits;
};

// Empty outside the plot.
ORV_CHARTVIEW_EXPORT Hover at(const ChartFrames& frames, QPointF pixel, const QLocale& locale = QLocale::c());
// The hits' lines: one per series with a point.
ORV_CHARTVIEW_EXPORT QStringList lines(const ChartFrames& frames, QPointF pixel);
// One point of a series: "air temperature: x = 13 h, y = 8.12916 degC"; empty when there is none.
ORV_CHARTVIEW_EXPORT QString pointText(const ChartFrames& frames, std::size_t series, std::size_t index,
                                       const QLocale& locale = QLocale::c());
// Where that point is drawn; NaN coordinates when it has no place.
ORV_CHARTVIEW_EXPORT QPointF pointPixel(const ChartFrames& frames, std::size_t series, std::size_t index);
// A time axis's value as a date in the axis's zone, to `resolution` in the
// axis's coordinates (zero: as exact as the value); empty where the calendar has none.
ORV_CHARTVIEW_EXPORT QString dateText(const PlotAxis& axis, double value, double resolution);
// The label of the category at that value, or empty.
ORV_CHARTVIEW_EXPORT QString categoryText(const PlotAxis& axis, double value);
// The title of a series, or its name when untitled.
ORV_CHARTVIEW_EXPORT QString seriesName(const ChartFrames& frames, std::size_t series);

} // namespace Orv::Chart::HoverText
