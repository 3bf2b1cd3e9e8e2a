#pragma once
// A numeric axis. Its range comes from the data or is fixed by the user; it
// also carries the unit label that the unit update agrees for its variables.
//
// "tightRange" (default false) shows that range as it is: the data's range
// with its margin, or the fixed range exactly, with the nice ticks that fall
// inside it. Off, the range is rounded outward to the nice ticks around it
// (see KelChartAxisScale).

#include "OrvChartExport.h"
#include "KelChartAxis.h"

class ORV_CHART_EXPORT KelChartAxisContinuous : public KelChartAxis {
public:
    static const QString typeString;

    explicit KelChartAxisContinuous(KelModifiedGroup& group);
    KelChartAxisContinuous(const KelChartAxisContinuous& other);
    KelChartAxisContinuous& operator=(const KelChartAxisContinuous& other);
    ~KelChartAxisContinuous() override;

    KelPropertyAdaptor<bool> autoScale;
    KelPropertyAdaptor<double> min;
    KelPropertyAdaptor<double> max;
    KelPropertyAdaptor<QString> unitLabel;
    KelPropertyAdaptor<bool> symmetric;
    KelPropertyAdaptor<bool> logarithmic;
    KelPropertyAdaptor<bool> usability;
    KelPropertyAdaptor<bool> tightRange;
};
