#include "KelChart.h"

const QString KelChart::typeString = QStringLiteral("chart");

namespace {
const QString emptyUnit;
}

KelChart::KelChart(KelModifiedGroup& group)
    : KelProperties(group)
    , title(*this, QStringLiteral("title"), QString(), emptyUnit)
    , textColor(*this, QStringLiteral("textColor"), QColor(Qt::black), emptyUnit)
    , textShadowColor(*this, QStringLiteral("textShadowColor"), QColor(Qt::transparent), emptyUnit)
    , unitSystem(group)
    , variables(group, QStringLiteral("variable.1"))
    , style(group)
{
    nameAndInsertChildren();
}

KelChart::KelChart(const KelChart& other)
    : KelProperties(other.group())
    , title(*this, other.title)
    , textColor(*this, other.textColor)
    , textShadowColor(*this, other.textShadowColor)
    , unitSystem(other.unitSystem)
    , variables(other.variables)
    , style(other.style)
{
    nameAndInsertChildren();
}

KelChart& KelChart::operator=(const KelChart& other) = default;

KelChart::~KelChart() = default;

void KelChart::nameAndInsertChildren()
{
    setType(typeString);
    rename(QStringLiteral("chart.1"));
    unitSystem.rename(QStringLiteral("unitsystem"));
    variables.rename(QStringLiteral("variable"));
    style.rename(QStringLiteral("style"));
    insert(&unitSystem, true);
    insert(&variables, true);
    insert(&style, true);
}

void KelChart::setUpLabelKind(const QString& type, KelProperties& labels)
{
    setType(type);
    rename(type);
    labels.rename(QStringLiteral("labels"));
    insert(&labels, true);
}

void KelChart::setUpCopiedLabelKind(const QString& type, KelProperties& labels)
{
    insert(&labels, true);
    setType(type);
    rename(type);
}

void KelChart::insertAxisPairs(KelProperties& x, KelProperties& y, KelProperties& z)
{
    x.rename(QStringLiteral("axis.x"));
    insert(&x, true);
    y.rename(QStringLiteral("axis.y"));
    insert(&y, true);
    z.rename(QStringLiteral("axis.z"));
    insert(&z, true);
}
