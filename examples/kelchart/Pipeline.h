#pragma once
// The drawing pipeline of a 2-D view, run once on a chart, with its results:
//   1. the unit update agrees the axes' unit labels and converts the variables;
//   2. the list cache caches the variables whose units were accepted;
//   3. each axis pair gets its pair scale, updated for the wanted tick count;
//   4. the per-variable scaling gives each cached variable its matrix;
//   5. the valid variable list gives each cached variable its rounded range.
// Everything a view draws or reports is read from these results.
//
// The chart must outlive the pipeline; the pipeline does not follow later
// changes of the chart (run a new one).

#include "ElementClasses.h"

#include "KelChart.h"
#include "KelChartAxisPairScale.h"
#include "KelChartPerVariableScaling.h"
#include "KelChartValidVariableList.h"
#include "KelChartVariableListCache.h"

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
    const std::vector<const KelChartVariable*>& unitsAccepted() const { return m_unitsAccepted; }
    const KelChartVariableListCache& cache() const { return m_cache; }
    const KelChartPerVariableScaling& scaling() const { return m_scaling; }
    const KelChartValidVariableList& validVariables() const { return m_validVariables; }
    // The valid axes, bottom, top, left, right.
    const std::vector<AxisResult>& axes() const { return m_axes; }
    // The axis result of that axis name, or null.
    const AxisResult* axis(const QString& name) const;

private:
    static KelChartAxisPairScale updatedScale(const KelChartAxisPair& pair, const KelChartVariableListCache& cache,
                                              unsigned tickCount);
    void addAxis(const KelChartAxisScale& scale, const KelChartAxis* axis, AxisSide side);
    void collectValidVariables();

    const KelChart& m_chart;
    unsigned m_tickCount;
    std::vector<const KelChartVariable*> m_unitsAccepted;
    KelChartVariableListCache m_cache;
    KelChartAxisPairScale m_xScale;
    KelChartAxisPairScale m_yScale;
    KelChartPerVariableScaling m_scaling;
    KelChartValidVariableList m_validVariables;
    std::vector<AxisResult> m_axes;
};

} // namespace kelchart
