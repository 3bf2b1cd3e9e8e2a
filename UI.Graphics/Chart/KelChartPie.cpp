#include "KelChartPie.h"

const QString KelChartPie::typeString = QStringLiteral("chart.pie");

KelChartPie::KelChartPie(KelModifiedGroup& group)
    : KelChart(group)
    , labels(group)
    , showPercentages(*this, QStringLiteral("showPercentages"), true, QString())
{
    setType(typeString);
    rename(typeString);
    labels.rename(QStringLiteral("labels"));
    insert(&labels, true);
}

KelChartPie::KelChartPie(const KelChartPie& other)
    : KelChart(other)
    , labels(other.labels)
    , showPercentages(*this, QStringLiteral("showPercentages"), other.showPercentages.get(), QString())
{
    insert(&labels, true);
    setType(typeString);
    rename(typeString);
}

KelChartPie& KelChartPie::operator=(const KelChartPie& other) = default;

KelChartPie::~KelChartPie() = default;
