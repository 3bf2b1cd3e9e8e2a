#include "KelChartAxisContinuous.h"

const QString KelChartAxisContinuous::typeString = QStringLiteral("chart.axis.continuous");

KelChartAxisContinuous::KelChartAxisContinuous(KelModifiedGroup& group)
    : KelChartAxis(group)
    , autoScale(*this, QStringLiteral("autoScale"), true, QString())
    , min(*this, QStringLiteral("min"), 0.0, QString())
    , max(*this, QStringLiteral("max"), 0.0, QString())
    , unitLabel(*this, QStringLiteral("unitLabel"), QString(), QString())
    , symmetric(*this, QStringLiteral("symmetric"), false, QString())
    , logarithmic(*this, QStringLiteral("logarithmic"), false, QString())
    , usability(*this, QStringLiteral("usability"), false, QString())
    , tightRange(*this, QStringLiteral("tightRange"), false, QString())
{
    setType(typeString);
}

KelChartAxisContinuous::KelChartAxisContinuous(const KelChartAxisContinuous& other)
    : KelChartAxis(other)
    , autoScale(*this, other.autoScale)
    , min(*this, other.min)
    , max(*this, other.max)
    , unitLabel(*this, other.unitLabel)
    , symmetric(*this, other.symmetric)
    , logarithmic(*this, other.logarithmic)
    , usability(*this, other.usability)
    , tightRange(*this, other.tightRange)
{
    setType(typeString);
}

KelChartAxisContinuous& KelChartAxisContinuous::operator=(const KelChartAxisContinuous& other) = default;

KelChartAxisContinuous::~KelChartAxisContinuous() = default;
