#pragma once
// A multi-axis chart: the name of its first axis and a label iterator.

#include "OrvChartExport.h"
#include "KelChart.h"
#include "KelLabelIter.h"

class ORV_CHART_EXPORT KelChartMultiAxis : public KelChart {
public:
    static const QString typeString;

    explicit KelChartMultiAxis(KelModifiedGroup& group);
    KelChartMultiAxis(const KelChartMultiAxis& other);
    KelChartMultiAxis& operator=(const KelChartMultiAxis& other);
    ~KelChartMultiAxis() override;

    KelPropertyAdaptor<QString> firstAxis;
    KelLabelIter labels;
};
