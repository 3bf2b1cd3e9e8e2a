#pragma once
// The library's drawing pipeline of a 2-D view, run once on a chart, and its
// valid axes as the view places them: bottom, top, left, right, each with its
// ticks. Everything the view draws or reports is read from here.
//
// Each axis asks its scale for as many tick intervals as its labels have room
// for in the image (see TickFit): a first run finds the axes and the layout,
// a second one, over the first run's caches, computes the ticks that fit.
// A linear numeric axis whose labels would be too wide (zoomed in far, all
// repeating the same leading digits) labels its ticks relative to an offset
// instead (see LabelOffset); the scale keeps its own labels.
//
// The chart must outlive the pipeline; the pipeline does not follow later
// changes of the chart (run a new one).

#include "AxisTicks.h"
#include "ElementClasses.h"
#include "LabelOffset.h"
#include "OrvChartPainterExport.h"

#include "KelChart.h"
#include "KelChartPipeline.h"
#include "TickFit.h"

#include <QLocale>
#include <QSize>
#include <QString>

#include <functional>
#include <map>

#include <vector>

namespace Orv::Chart {

// Where a view puts an axis: the first axis of the x pair at the bottom, its
// second at the top, the y pair's first at the left and second at the right.
enum class AxisSide { Bottom, Top, Left, Right };

// A valid axis scale as the pipeline computed it, with the axis settings a
// view needs to draw it.
struct ORV_CHARTPAINTER_EXPORT PlotAxis {
    PlotAxis(const KelChartAxisScale& scale, const KelChartAxis& axis, AxisSide side, unsigned wanted, AxisTicks ticks,
             const LabelOffset& labelOffset = {});

    QString name;
    AxisSide side;
    // The axis itself, never null.
    const KelChartAxis* axis;
    bool discrete;
    // Calendar ticks; `offsetText` is what their labels leave out ("2012-03").
    bool time;
    // What the labels leave out, in the C locale: the date all calendar ticks
    // share, or the offset of labels relative to one ("+299.9").
    QString offsetText;
    double min;
    double max;
    // A tick's value is its label × factor + offset.
    double factor;
    double offset = 0;
    double baseLine;
    QString unitLabel;
    // The interval count the axis asked its scale for.
    unsigned wanted;
    AxisTicks ticks;
};

// The room an image gives the tick labels.
struct TickRoom {
    // A generous width of one character of the tick labels' font: estimated
    // rather than measured, so that the same input gives the same ticks on
    // every machine, whatever fonts it has.
    static constexpr double characterWidth = 7;

    QSize size;
    // The most intervals any axis asks for.
    unsigned maxCount = 100;
    // The drawn width of a tick label; empty: `characterWidth` per character.
    std::function<double(const QString&)> labelWidth;
    // The locale the labels are drawn in (see LocaleText): their widths are
    // fitted as it writes them.
    QLocale locale = QLocale::c();
};

// Each axis's interval count and the room its labels have.
struct AxisFit {
    unsigned count;
    LabelRoom room;
};
using AxisFits = std::map<const KelChartAxis*, AxisFit>;

class ORV_CHARTPAINTER_EXPORT Plot {
public:
    // `pairs` must be the chart's own (see axisPairsOf).
    Plot(KelChart& chart, const AxisPairs& pairs, const TickRoom& room);
    // The same over caches of an earlier unit update of this chart, which must
    // outlive the pipeline: an interactive view reruns only the scales when it
    // pans or zooms. `unitsAccepted` is empty then.
    Plot(KelChart& chart, const AxisPairs& pairs, const TickRoom& room, const KelChartVariableListCache& cache);
    Plot(const Plot&) = delete;
    Plot& operator=(const Plot&) = delete;

    const KelChart& chart() const { return m_chart; }
    const KelChartPipeline& run() const { return m_run; }
    const std::vector<const KelChartVariable*>& unitsAccepted() const { return m_first.unitsAccepted(); }
    const KelChartVariableListCache& cache() const { return m_run.cache(); }
    const KelChartPerVariableScaling& scaling() const { return m_run.scaling(); }
    const KelChartValidVariableList& validVariables() const { return m_run.validVariables(); }
    // The valid axes, bottom, top, left, right.
    const std::vector<PlotAxis>& axes() const { return m_axes; }
    // The axis result of that axis name, or null.
    const PlotAxis* axis(const QString& name) const;

private:
    void addAxes(const AxisPairs& pairs);
    void addAxis(const KelChartAxisScale& scale, const KelChartAxis* axis, AxisSide side);

    const KelChart& m_chart;
    KelChartPipeline m_first;
    AxisFits m_fits;
    KelChartPipeline m_run;
    std::vector<PlotAxis> m_axes;
};

} // namespace Orv::Chart
