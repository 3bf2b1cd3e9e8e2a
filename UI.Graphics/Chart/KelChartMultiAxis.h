#pragma once
// A multi-axis chart: the name of its first axis and a label iterator.

#include "KelChart.h"
#include "KelLabelIter.h"

class KelChartMultiAxis : public KelChart {
public:
    static const QString typeString;

    explicit KelChartMultiAxis(KelModifiedGroup& group);
    KelChartMultiAxis(const KelChartMultiAxis& other);
    KelChartMultiAxis& operator=(const KelChartMultiAxis& other);
    ~KelChartMultiAxis() override;

    KelPropertyAdaptor<QString> firstAxis;
    KelLabelIter labels;
};
