#pragma once
// The library's drawing pipeline of a 2-D view, run once on a chart, and its
// valid axes as the view places them: bottom, top, left, right, each with its
// ticks. Everything the view draws or reports is read from here.
//
// The chart must outlive the pipeline; the pipeline does not follow later
// changes of the chart (run a new one).

#include "ElementClasses.h"

#include "KelChart.h"
#include "KelChartPipeline.h"

#include <QString>

#include <vector>

namespace kelchart {

// Where a view puts an axis: the first axis of the x pair at the bottom, its
// second at the top, the y pair's first at the left and second at the right.
enum class AxisSide { Bottom, Top, Left, Right };

struct Tick {
    double value;
    QString label;
    // Relative position along the axis, 0 at its start, 1 at its end.
    double position;
};

// A valid axis scale as the pipeline computed it, with the axis settings a
// view needs to draw it.
struct AxisResult {
    QString name;
    AxisSide side;
    // The axis itself, never null.
    const KelChartAxis* axis;
    bool discrete;
    double min;
    double max;
    double factor;
    double baseLine;
    QString unitLabel;
    std::vector<Tick> ticks;
};

class Pipeline {
public:
    // `pairs` must be the chart's own (see axisPairsOf).
    Pipeline(KelChart& chart, const AxisPairs& pairs, unsigned tickCount);
    Pipeline(const Pipeline&) = delete;
    Pipeline& operator=(const Pipeline&) = delete;

    const KelChart& chart() const { return m_chart; }
    unsigned tickCount() const { return m_tickCount; }
    const std::vector<const KelChartVariable*>& unitsAccepted() const { return m_run.unitsAccepted(); }
    const KelChartVariableListCache& cache() const { return m_run.cache(); }
    const KelChartPerVariableScaling& scaling() const { return m_run.scaling(); }
    const KelChartValidVariableList& validVariables() const { return m_run.validVariables(); }
    // The valid axes, bottom, top, left, right.
    const std::vector<AxisResult>& axes() const { return m_axes; }
    // The axis result of that axis name, or null.
    const AxisResult* axis(const QString& name) const;

private:
    void addAxis(const KelChartAxisScale& scale, const KelChartAxis* axis, AxisSide side);

    const KelChart& m_chart;
    unsigned m_tickCount;
    KelChartPipeline m_run;
    std::vector<AxisResult> m_axes;
};

} // namespace kelchart
