#include "KelChartPie.h"

const QString KelChartPie::typeString = QStringLiteral("chart.pie");

KelChartPie::KelChartPie(KelModifiedGroup& group)
    : KelChart(group)
    , labels(group)
    , showPercentages(*this, QStringLiteral("showPercentages"), true, QString())
{
    setUpLabelKind(typeString, labels);
}

KelChartPie::KelChartPie(const KelChartPie& other)
    : KelChart(other)
    , labels(other.labels)
    , showPercentages(*this, QStringLiteral("showPercentages"), other.showPercentages.get(), QString())
{
    setUpCopiedLabelKind(typeString, labels);
}

KelChartPie& KelChartPie::operator=(const KelChartPie& other) = default;

KelChartPie::~KelChartPie() = default;
