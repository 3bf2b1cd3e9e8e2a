#pragma once
// A category axis. Its range is a range of category indices; the category
// texts come from its label iterator child "labels".
//
// "viewMin" and "viewMax" (default 0 and 0) set a window of category
// positions shown exactly, fractions included, when "viewMin" < "viewMax":
// an interactive view keeps the axis in step with a continuous axis along
// the same edge while that one zooms and pans. Otherwise the range is as
// "autoScale", "min" and "max" decide.

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
    KelPropertyAdaptor<double> viewMin;
    KelPropertyAdaptor<double> viewMax;
    KelLabelIter labels;
};
