#include "KelChartAxisDiscrete.h"

const QString KelChartAxisDiscrete::typeString = QStringLiteral("chart.axis.discrete");

namespace {
const QString labelsName = QStringLiteral("labels");
}

KelChartAxisDiscrete::KelChartAxisDiscrete(KelModifiedGroup& group)
    : KelChartAxis(group)
    , autoScale(*this, QStringLiteral("autoScale"), true, QString())
    , min(*this, QStringLiteral("min"), 0, QString())
    , max(*this, QStringLiteral("max"), 0, QString())
    , labelOffset(*this, QStringLiteral("labelOffset"), std::vector<double>{0.5}, QString())
    , stacked(*this, QStringLiteral("stacked"), false, QString())
    , viewMin(*this, QStringLiteral("viewMin"), 0.0, QString())
    , viewMax(*this, QStringLiteral("viewMax"), 0.0, QString())
    , labels(group)
{
    setType(typeString);
    labels.rename(labelsName);
    insert(&labels, true);
}

KelChartAxisDiscrete::KelChartAxisDiscrete(const KelChartAxisDiscrete& other)
    : KelChartAxis(other)
    , autoScale(*this, other.autoScale)
    , min(*this, other.min)
    , max(*this, other.max)
    , labelOffset(*this, other.labelOffset)
    , stacked(*this, other.stacked)
    , viewMin(*this, other.viewMin)
    , viewMax(*this, other.viewMax)
    , labels(other.labels)
{
    labels.rename(labelsName);
    setType(typeString);
    insert(&labels, true);
}

KelChartAxisDiscrete& KelChartAxisDiscrete::operator=(const KelChartAxisDiscrete& other) = default;

KelChartAxisDiscrete::~KelChartAxisDiscrete() = default;
