#pragma once
// A pie chart: a label iterator and a switch that shows percentages.

#include "OrvChartExport.h"
#include "KelChart.h"
#include "KelLabelIter.h"

class ORV_CHART_EXPORT KelChartPie : public KelChart {
public:
    static const QString typeString;

    explicit KelChartPie(KelModifiedGroup& group);
    KelChartPie(const KelChartPie& other);
    KelChartPie& operator=(const KelChartPie& other);
    ~KelChartPie() override;

    KelLabelIter labels;
    KelPropertyAdaptor<bool> showPercentages;
};
