#pragma once
// An axis of a chart: whether it is enabled, its title, whether it runs
// inverted, and its colours. It computes nothing; scales read these settings.

#include "OrvChartExport.h"
#include "KelPropertyAdaptor.h"

class ORV_CHART_EXPORT KelChartAxis : public KelProperties {
public:
    static const QString typeString;

    explicit KelChartAxis(KelModifiedGroup& group);
    KelChartAxis(const KelChartAxis& other);
    KelChartAxis& operator=(const KelChartAxis& other);
    ~KelChartAxis() override;

    KelPropertyAdaptor<bool> enabled;
    KelPropertyAdaptor<QString> title;
    KelPropertyAdaptor<bool> inverted;
    KelPropertyAdaptor<QColor> tickColor;
    KelPropertyAdaptor<QColor> gridColor;
    KelPropertyAdaptor<QColor> labelColor;
    KelPropertyAdaptor<QColor> labelShadowColor;
};
