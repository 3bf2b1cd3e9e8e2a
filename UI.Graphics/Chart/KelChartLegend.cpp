#include "KelChartLegend.h"
#include "KelChart.h"

const QString KelChartLegend::typeString = QStringLiteral("chart.legend");
const QString KelChartLegend::expandFirstEntry = QStringLiteral("chart.legend.expandTheFirstEntryByDefault");

namespace {
// Qt::AlignTop | Qt::AlignRight: a new legend sits in the top right corner.
constexpr int topRight = 34;
} // namespace

KelChartLegend::KelChartLegend(KelModifiedGroup& group)
    : KelProperties(group)
    , enabled(*this, QStringLiteral("enabled"), true, QString())
    , style(*this, QStringLiteral("style"), KelChart::legendVertical, QString())
    , background(*this, QStringLiteral("background"), QList<QColor>(), QString())
    , border(*this, QStringLiteral("border"), QColor(Qt::transparent), QString())
    , viewport(group)
    , textColor(*this, QStringLiteral("textColor"), QColor(Qt::black), QString())
    , textShadowColor(*this, QStringLiteral("textShadowColor"), QColor(Qt::transparent), QString())
    , chart(*this, QStringLiteral("chart"), QString(), QString())
    , expandVariable(*this, QStringLiteral("expandVariable"), expandFirstEntry, QString())
{
    setType(typeString);
    rename(QStringLiteral("legend.1"));
    viewport.alignment.set(topRight);
    nameAndInsertViewport();
}

KelChartLegend::KelChartLegend(const KelChartLegend& other)
    : KelProperties(other.group())
    , enabled(*this, other.enabled)
    , style(*this, other.style)
    , background(*this, other.background)
    , border(*this, other.border)
    , viewport(other.viewport)
    , textColor(*this, other.textColor)
    , textShadowColor(*this, other.textShadowColor)
    , chart(*this, other.chart)
    , expandVariable(*this, other.expandVariable)
{
    setType(typeString);
    rename(QStringLiteral("legend.1"));
    nameAndInsertViewport();
}

KelChartLegend& KelChartLegend::operator=(const KelChartLegend& other) = default;

KelChartLegend::~KelChartLegend() = default;

void KelChartLegend::nameAndInsertViewport()
{
    viewport.rename(QStringLiteral("viewport"));
    insert(&viewport, true);
}
