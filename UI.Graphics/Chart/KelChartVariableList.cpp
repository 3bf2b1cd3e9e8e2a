#include "KelChartVariableList.h"

template class KelPropertiesList<KelChartVariable>;

const QString KelChartVariableList::typeString = QStringLiteral("chart.variable_list");

KelChartVariableList::KelChartVariableList(KelModifiedGroup& group, const QString& defaultChildName)
    : KelPropertiesList<KelChartVariable>(group, defaultChildName)
{
    setType(typeString);
}

KelChartVariableList::KelChartVariableList(const KelChartVariableList& other) = default;

// A move copies, so that a list moved from stays a valid tree node.
KelChartVariableList::KelChartVariableList(KelChartVariableList&& other) // NOLINT(performance-noexcept-move-constructor)
    : KelPropertiesList<KelChartVariable>(other)
{
}

KelChartVariableList& KelChartVariableList::operator=(const KelChartVariableList& other)
{
    KelPropertiesList<KelChartVariable>::operator=(other);
    return *this;
}

KelChartVariableList& KelChartVariableList::operator=(KelChartVariableList&& other) // NOLINT(performance-noexcept-move-constructor)
{
    KelPropertiesList<KelChartVariable>::operator=(other);
    return *this;
}

KelChartVariableList::~KelChartVariableList() = default;

KelProperties* KelChartVariableList::makeChild(const QString& name, const QString& type)
{
    (void)type;
    auto* variable = new KelChartVariable(group());
    variable->rename(name);
    return variable;
}
