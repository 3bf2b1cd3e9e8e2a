#pragma once
// A three-dimensional chart: the chart base plus the cube switch and three axis pairs.

#include "OrvChartExport.h"
#include "KelChart.h"
#include "KelChartAxisPair.h"

class ORV_CHART_EXPORT KelChart3D : public KelChart {
public:
    static const QString typeString;

    explicit KelChart3D(KelModifiedGroup& group);
    // A copy has new, empty axis pairs: the source's axes are not copied.
    KelChart3D(const KelChart3D& other);
    KelChart3D& operator=(const KelChart3D& other);
    ~KelChart3D() override;

    KelPropertyAdaptor<bool> cube;
    KelChartAxisPair axisX;
    KelChartAxisPair axisY;
    KelChartAxisPair axisZ;
};
