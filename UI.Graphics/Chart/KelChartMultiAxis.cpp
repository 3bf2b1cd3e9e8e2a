#include "KelChartMultiAxis.h"

const QString KelChartMultiAxis::typeString = QStringLiteral("chart.multi.axis");

KelChartMultiAxis::KelChartMultiAxis(KelModifiedGroup& group)
    : KelChart(group)
    , firstAxis(*this, QStringLiteral("firstAxis"), QString(), QString())
    , labels(group)
{
    setType(typeString);
    rename(typeString);
    labels.rename(QStringLiteral("labels"));
    insert(&labels, true);
}

KelChartMultiAxis::KelChartMultiAxis(const KelChartMultiAxis& other)
    : KelChart(other)
    , firstAxis(*this, QStringLiteral("firstAxis"), other.firstAxis.get(), QString())
    , labels(other.labels)
{
    insert(&labels, true);
    setType(typeString);
    rename(typeString);
}

KelChartMultiAxis& KelChartMultiAxis::operator=(const KelChartMultiAxis& other) = default;

KelChartMultiAxis::~KelChartMultiAxis() = default;
