#pragma once
// A two-dimensional chart: the chart base plus the 3-D drawing switch
// ("draw3d", off by default) and three axis pairs.

#include "OrvChartExport.h"
#include "KelChartWithAxisPairs.h"

struct ORV_CHART_EXPORT KelChart2DKind {
    struct Switch {
        Switch(KelProperties& chart, bool on)
            : draw3d(chart, QStringLiteral("draw3d"), on, QString())
        {
        }
        bool value() const { return draw3d.get(); }

        KelPropertyAdaptor<bool> draw3d;
    };
    static constexpr bool switchDefault = false;
    static const QString& typeString;
    static constexpr const KelChartKindTraces& traces = KelChartTraceTexts::chart2D;
};

extern template class ORV_CHART_EXPORT KelChartWithAxisPairs<KelChart2DKind>;

class ORV_CHART_EXPORT KelChart2D : public KelChartWithAxisPairs<KelChart2DKind> {
public:
    static const QString typeString;
    using KelChartWithAxisPairs::KelChartWithAxisPairs;
};
