#pragma once
// Any number of axes. The list makes the axis class that a type string asks
// for, and a plain axis for any other type string.

#include "OrvChartExport.h"
#include "KelChartAxis.h"
#include "KelPropertiesList.h"

extern template class ORV_CHART_EXPORT KelPropertiesList<KelChartAxis>;

class ORV_CHART_EXPORT KelChartAxisList : public KelPropertiesList<KelChartAxis> {
public:
    KelChartAxisList(KelModifiedGroup& group, const QString& defaultChildName);
    KelChartAxisList(const KelChartAxisList& other);
    KelChartAxisList& operator=(const KelChartAxisList& other);
    ~KelChartAxisList() override;

protected:
    KelProperties* makeChild(const QString& name, const QString& type) override;
};
