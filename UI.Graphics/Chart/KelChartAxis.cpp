#include "KelChartAxis.h"
#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"

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

KelChartAxis* KelChartAxis::makeOfType(KelModifiedGroup& group, const QString& type, const QString& name)
{
    KelChartAxis* axis = nullptr;
    if (type == KelChartAxisDiscrete::typeString)
        axis = new KelChartAxisDiscrete(group);
    else if (type == KelChartAxisContinuous::typeString)
        axis = new KelChartAxisContinuous(group);
    if (axis)
        axis->rename(name);
    return axis;
}

void KelChartAxis::assignAxis(KelChartAxis& target, const KelChartAxis& source)
{
    auto* continuous = dynamic_cast<KelChartAxisContinuous*>(&target);
    auto* discrete = dynamic_cast<KelChartAxisDiscrete*>(&target);
    if (auto* from = dynamic_cast<const KelChartAxisContinuous*>(&source); continuous && from)
        *continuous = *from;
    else if (auto* from = dynamic_cast<const KelChartAxisDiscrete*>(&source); discrete && from)
        *discrete = *from;
    else
        target = source;
}
