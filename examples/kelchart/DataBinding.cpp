#include "DataBinding.h"

#include "KelChartAxisDiscrete.h"

#include <utility>

namespace kelchart {

QStringList bindData(KelChartVariableList& variables, const AxisPairs& pairs, DataSet data)
{
    QStringList unbound;
    for (DataSeries& series : data.series) {
        KelChartVariable* variable = variables[series.y.name];
        if (!variable) {
            unbound << series.y.name;
            continue;
        }
        auto* discrete = dynamic_cast<KelChartAxisDiscrete*>(pairs.find(variable->xAxis.get()));
        if (data.discreteX && discrete)
            discrete->labels.setLabels(data.categories);
        variable->variableiter.setVector2Data(std::move(series.x.values), std::move(series.y.values),
                                              std::move(series.x.undefined), std::move(series.y.undefined),
                                              series.x.unit, series.y.unit);
    }
    return unbound;
}

} // namespace kelchart
