#include "KelChartAxisTime.h"

const QString KelChartAxisTime::typeString = QStringLiteral("chart.axis.time");
const QString KelChartAxisTime::unixTimeUnit = QStringLiteral("s since 1970-01-01 00:00:00 UTC");

KelChartAxisTime::KelChartAxisTime(KelModifiedGroup& group)
    : KelChartAxisContinuous(group)
    , timeZone(*this, QStringLiteral("timeZone"), QStringLiteral("UTC"), QString())
    , labelFormat(*this, QStringLiteral("labelFormat"), QString(), QString())
{
    setType(typeString);
}

KelChartAxisTime::KelChartAxisTime(const KelChartAxisTime& other)
    : KelChartAxisContinuous(other)
    , timeZone(*this, other.timeZone)
    , labelFormat(*this, other.labelFormat)
{
    setType(typeString);
}

KelChartAxisTime& KelChartAxisTime::operator=(const KelChartAxisTime& other) = default;

KelChartAxisTime::~KelChartAxisTime() = default;
