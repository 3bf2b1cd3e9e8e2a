#pragma once
// A category axis. Its range is a range of category indices; the category
// texts come from its label iterator child "labels".

#include "OrvChartExport.h"
#include "KelChartAxis.h"
#include "KelLabelIter.h"

#include <vector>

class ORV_CHART_EXPORT KelChartAxisDiscrete : public KelChartAxis {
public:
    static const QString typeString;

    explicit KelChartAxisDiscrete(KelModifiedGroup& group);
    KelChartAxisDiscrete(const KelChartAxisDiscrete& other);
    KelChartAxisDiscrete& operator=(const KelChartAxisDiscrete& other);
    ~KelChartAxisDiscrete() override;

    KelPropertyAdaptor<bool> autoScale;
    KelPropertyAdaptor<int> min;
    KelPropertyAdaptor<int> max;
    KelPropertyAdaptor<std::vector<double>> labelOffset;
    KelPropertyAdaptor<bool> stacked;
    KelLabelIter labels;
};
