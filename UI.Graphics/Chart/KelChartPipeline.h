#pragma once
// One drawing request of a chart with axis pairs, from the model to the
// matrices, in the order every host needs:
//   1. the unit update agrees one unit per continuous axis and asks each
//      variable's iterator for its values in its axes' units;
//   2. the list cache caches the variables whose units were accepted;
//   3. each axis pair gets its pair scale, each axis updated with the tick
//      count and label format the host asks for on it;
//   4. the per-variable scaling gives each cached variable its matrix;
//   5. the valid variable list gives each cached variable its rounded range.
// A view whose data and units did not change (panning, zooming, new tick
// requests) can run steps 3 to 5 alone over caches it already has.
//
// The pipeline owns these computation objects, which point into each other
// and into the model, so it can be neither copied nor moved. The model (unit
// system, axis pairs with their axes, variables) must outlive it. It does not
// follow later changes of the model: the host runs a new one.

#include "OrvChartExport.h"
#include "KelChartAxisPairScale.h"
#include "KelChartPerVariableScaling.h"
#include "KelChartValidVariableList.h"
#include "KelChartVariableListCache.h"
#include "KelChartWithAxisPairs.h"

#include "NumberFormat.h"

#include <QStringList>

#include <functional>
#include <vector>

class KelChartAxis;
class KelChartAxisPair;
class KelChartVariableList;
class KelUnitSystem;

class ORV_CHART_EXPORT KelChartPipeline {
public:
    // About how many ticks the host wants on one axis, and their label format.
    struct TickRequest {
        unsigned int count = 8;
        Orv::Math::NumberFormat format;
    };
    // The host's request for each axis; empty: a default TickRequest everywhere.
    using TickRequests = std::function<TickRequest(const KelChartAxis& axis)>;

    struct Settings {
        TickRequests ticks;
        // Scales with the z pair as well (a 3-D view), else with x and y only.
        bool threeD = false;
        // The x axes along which variables are drawn at their positions.
        QStringList positionAxes;
    };

    // The same request on every axis.
    static TickRequests everyAxis(unsigned int count, const Orv::Math::NumberFormat& format = {});

    KelChartPipeline(const KelUnitSystem& units, const KelChartAxisPair& xPair, const KelChartAxisPair& yPair,
                     const KelChartAxisPair& zPair, KelChartVariableList& variables, const Settings& settings);
    // Steps 3 to 5 over `cache`, which must outlive the pipeline; no unit update.
    KelChartPipeline(const KelChartAxisPair& xPair, const KelChartAxisPair& yPair, const KelChartAxisPair& zPair,
                     const KelChartVariableListCache& cache, const Settings& settings);
    // A 2-D or 3-D chart with its own unit system, axis pairs and variables.
    template <class Kind>
    KelChartPipeline(KelChartWithAxisPairs<Kind>& chart, const Settings& settings)
        : KelChartPipeline(chart.unitSystem, chart.axisX, chart.axisY, chart.axisZ, chart.variables, settings)
    {
    }
    // The same with the default settings.
    template <class Kind>
    explicit KelChartPipeline(KelChartWithAxisPairs<Kind>& chart)
        : KelChartPipeline(chart, Settings())
    {
    }
    KelChartPipeline(const KelChartPipeline&) = delete;
    KelChartPipeline& operator=(const KelChartPipeline&) = delete;
    ~KelChartPipeline();

    // The variables whose units were accepted, in "order"; none without a unit update.
    const std::vector<const KelChartVariable*>& unitsAccepted() const { return m_unitsAccepted; }
    const KelChartVariableListCache& cache() const { return m_cache; }
    const KelChartAxisPairScale& xScales() const { return m_xScales; }
    const KelChartAxisPairScale& yScales() const { return m_yScales; }
    const KelChartAxisPairScale& zScales() const { return m_zScales; }
    // The valid scale of that axis name in the x, y or z pair, searched in this
    // order; null when there is none.
    const KelChartAxisScale* findScale(const QString& axisName) const;
    const KelChartPerVariableScaling& scaling() const { return m_scaling; }
    const KelChartValidVariableList& validVariables() const { return m_validVariables; }

private:
    static KelChartAxisPairScale updatedScales(const KelChartAxisPair& pair, const KelChartVariableListCache& cache,
                                               const TickRequests& ticks);
    KelChartPerVariableScaling scalingOf(bool threeD) const;
    KelChartValidVariableList validVariablesOf() const;

    std::vector<const KelChartVariable*> m_unitsAccepted;
    // The pipeline's own caches, empty when it runs over those of another.
    KelChartVariableListCache m_ownCache;
    const KelChartVariableListCache& m_cache;
    KelChartAxisPairScale m_xScales;
    KelChartAxisPairScale m_yScales;
    KelChartAxisPairScale m_zScales;
    KelChartPerVariableScaling m_scaling;
    KelChartValidVariableList m_validVariables;
};
