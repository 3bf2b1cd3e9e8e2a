#include "KelChartMultiAxis.h"

const QString KelChartMultiAxis::typeString = QStringLiteral("chart.multi.axis");

KelChartMultiAxis::KelChartMultiAxis(KelModifiedGroup& group)
    : KelChart(group)
    , firstAxis(*this, QStringLiteral("firstAxis"), QString(), QString())
    , labels(group)
{
    setUpLabelKind(typeString, labels);
}

KelChartMultiAxis::KelChartMultiAxis(const KelChartMultiAxis& other)
    : KelChart(other)
    , firstAxis(*this, QStringLiteral("firstAxis"), other.firstAxis.get(), QString())
    , labels(other.labels)
{
    setUpCopiedLabelKind(typeString, labels);
}

KelChartMultiAxis& KelChartMultiAxis::operator=(const KelChartMultiAxis& other) = default;

KelChartMultiAxis::~KelChartMultiAxis() = default;
