#pragma once
// A three-dimensional chart: the chart base plus the cube switch
// ("cube", on by default) and three axis pairs.

#include "OrvChartExport.h"
#include "KelChartWithAxisPairs.h"

struct ORV_CHART_EXPORT KelChart3DKind {
    struct Switch {
        Switch(KelProperties& chart, bool on)
            : cube(chart, QStringLiteral("cube"), on, QString())
        {
        }
        bool value() const { return cube.get(); }

        KelPropertyAdaptor<bool> cube;
    };
    static constexpr bool switchDefault = true;
    static const QString& typeString;
    static constexpr const KelChartKindTraces& traces = KelChartTraceTexts::chart3D;
};

extern template class ORV_CHART_EXPORT KelChartWithAxisPairs<KelChart3DKind>;

class ORV_CHART_EXPORT KelChart3D : public KelChartWithAxisPairs<KelChart3DKind> {
public:
    static const QString typeString;
    using KelChartWithAxisPairs::KelChartWithAxisPairs;
};
