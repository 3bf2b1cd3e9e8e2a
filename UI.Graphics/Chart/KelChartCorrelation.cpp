#include "KelChartCorrelation.h"

const QString KelChartCorrelation::typeString = QStringLiteral("chart.correlation");

KelChartCorrelation::KelChartCorrelation(KelModifiedGroup& group)
    : KelChart(group)
    , legendLabel(*this, QStringLiteral("legendLabel"), std::vector<double>{-1.0, -0.5, 0.0, 0.5, 1.0}, QString())
    , displayValues(*this, QStringLiteral("displayValues"), false, QString())
{
    setType(typeString);
    rename(typeString);
}

KelChartCorrelation::KelChartCorrelation(const KelChartCorrelation& other)
    : KelChart(other)
    , legendLabel(*this, QStringLiteral("legendLabel"), other.legendLabel.get(), QString())
    , displayValues(*this, QStringLiteral("displayValues"), other.displayValues.get(), QString())
{
    setType(typeString);
    rename(typeString);
}

KelChartCorrelation& KelChartCorrelation::operator=(const KelChartCorrelation& other) = default;

KelChartCorrelation::~KelChartCorrelation() = default;
