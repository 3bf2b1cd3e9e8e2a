#pragma once
// A chart legend: whether it is shown, its orientation, its colours, its
// viewport, and which variable's entry is expanded.

#include "OrvChartExport.h"
#include "KelPropertyAdaptor.h"
#include "KelViewport.h"

class ORV_CHART_EXPORT KelChartLegend : public KelProperties {
public:
    static const QString typeString;
    // The default of "expandVariable": expand the first entry.
    static const QString expandFirstEntry;

    explicit KelChartLegend(KelModifiedGroup& group);
    KelChartLegend(const KelChartLegend& other);
    KelChartLegend& operator=(const KelChartLegend& other);
    ~KelChartLegend() override;

    KelPropertyAdaptor<bool> enabled;
    KelPropertyAdaptor<QString> style;
    KelPropertyAdaptor<QList<QColor>> background;
    KelPropertyAdaptor<QColor> border;
    KelViewport viewport;
    KelPropertyAdaptor<QColor> textColor;
    KelPropertyAdaptor<QColor> textShadowColor;
    KelPropertyAdaptor<QString> chart;
    KelPropertyAdaptor<QString> expandVariable;

private:
    void nameAndInsertViewport();
};
