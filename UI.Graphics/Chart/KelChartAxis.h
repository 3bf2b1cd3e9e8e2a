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

    // A new continuous or discrete axis in the group for its type string, named
    // `name`; null for any other type string.
    static KelChartAxis* makeOfType(KelModifiedGroup& group, const QString& type, const QString& name);
    // Assigns `source` to `target` as the most derived axis class both share.
    static void assignAxis(KelChartAxis& target, const KelChartAxis& source);

    KelPropertyAdaptor<bool> enabled;
    KelPropertyAdaptor<QString> title;
    KelPropertyAdaptor<bool> inverted;
    KelPropertyAdaptor<QColor> tickColor;
    KelPropertyAdaptor<QColor> gridColor;
    KelPropertyAdaptor<QColor> labelColor;
    KelPropertyAdaptor<QColor> labelShadowColor;
};
