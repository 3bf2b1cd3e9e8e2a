#pragma once
// A correlation chart: the label values of its correlation legend and a switch
// that shows the values in the cells.

#include "OrvChartExport.h"
#include "KelChart.h"

#include <vector>

class ORV_CHART_EXPORT KelChartCorrelation : public KelChart {
public:
    static const QString typeString;

    explicit KelChartCorrelation(KelModifiedGroup& group);
    KelChartCorrelation(const KelChartCorrelation& other);
    KelChartCorrelation& operator=(const KelChartCorrelation& other);
    ~KelChartCorrelation() override;

    KelPropertyAdaptor<std::vector<double>> legendLabel;
    KelPropertyAdaptor<bool> displayValues;
};
