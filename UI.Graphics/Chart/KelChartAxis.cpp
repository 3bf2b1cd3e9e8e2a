#include "KelChartAxis.h"

const QString KelChartAxis::typeString = QStringLiteral("chart.axis");

KelChartAxis::KelChartAxis(KelModifiedGroup& group)
    : KelProperties(group)
    , enabled(*this, QStringLiteral("enabled"), false, QString())
    , title(*this, QStringLiteral("title"), QString(), QString())
    , inverted(*this, QStringLiteral("inverted"), false, QString())
    , tickColor(*this, QStringLiteral("tickColor"), QColor(Qt::black), QString())
    , gridColor(*this, QStringLiteral("gridColor"), QColor(Qt::lightGray), QString())
    , labelColor(*this, QStringLiteral("labelColor"), QColor(Qt::black), QString())
    , labelShadowColor(*this, QStringLiteral("labelShadowColor"), QColor(Qt::transparent), QString())
{
    setType(typeString);
    rename(QStringLiteral("axis.1"));
}

KelChartAxis::KelChartAxis(const KelChartAxis& other)
    : KelProperties(other)
    , enabled(*this, other.enabled)
    , title(*this, other.title)
    , inverted(*this, other.inverted)
    , tickColor(*this, other.tickColor)
    , gridColor(*this, other.gridColor)
    , labelColor(*this, other.labelColor)
    , labelShadowColor(*this, other.labelShadowColor)
{
    setType(typeString);
    rename(QStringLiteral("axis.1"));
}

KelChartAxis& KelChartAxis::operator=(const KelChartAxis& other) = default;

KelChartAxis::~KelChartAxis() = default;
