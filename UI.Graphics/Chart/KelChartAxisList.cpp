#include "KelChartAxisList.h"
#include "KelChartAxisKinds.h"

template class KelPropertiesList<KelChartAxis>;

KelChartAxisList::KelChartAxisList(KelModifiedGroup& group, const QString& defaultChildName)
    : KelPropertiesList<KelChartAxis>(group, defaultChildName)
{
}

KelChartAxisList::KelChartAxisList(const KelChartAxisList& other) = default;

KelChartAxisList& KelChartAxisList::operator=(const KelChartAxisList& other) = default;

KelChartAxisList::~KelChartAxisList() = default;

KelProperties* KelChartAxisList::makeChild(const QString& name, const QString& type)
{
    if (KelChartAxis* axis = KelChartAxisKinds::make(group(), type, name))
        return axis;
    auto* axis = new KelChartAxis(group());
    axis->rename(name);
    return axis;
}
