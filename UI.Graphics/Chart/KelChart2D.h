#pragma once
// A two-dimensional chart: the chart base plus the 3-D drawing switch and three axis pairs.

#include "OrvChartExport.h"
#include "KelChart.h"
#include "KelChartAxisPair.h"

class ORV_CHART_EXPORT KelChart2D : public KelChart {
public:
    static const QString typeString;

    explicit KelChart2D(KelModifiedGroup& group);
    // A copy has new, empty axis pairs: the source's axes are not copied.
    KelChart2D(const KelChart2D& other);
    KelChart2D& operator=(const KelChart2D& other);
    ~KelChart2D() override;

    KelPropertyAdaptor<bool> draw3d;
    KelChartAxisPair axisX;
    KelChartAxisPair axisY;
    KelChartAxisPair axisZ;
};
