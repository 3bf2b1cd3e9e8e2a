#pragma once
// KelChartVariableList: the node that holds a chart's data series. Every child
// it makes is a KelChartVariable, whatever type the caller asks for.

#include "OrvChartExport.h"
#include "KelChartVariable.h"
#include "KelPropertiesList.h"

#include <QString>

extern template class ORV_CHART_EXPORT KelPropertiesList<KelChartVariable>;

class ORV_CHART_EXPORT KelChartVariableList : public KelPropertiesList<KelChartVariable> {
public:
    static const QString typeString;

    // Unnamed on return: the owner names it.
    KelChartVariableList(KelModifiedGroup& group, const QString& defaultChildName);
    KelChartVariableList(const KelChartVariableList& other);
    // Copies: a list moved from keeps its state. Copying allocates, so the
    // moves may throw and are not noexcept.
    KelChartVariableList(KelChartVariableList&& other); // NOLINT(performance-noexcept-move-constructor)
    KelChartVariableList& operator=(const KelChartVariableList& other);
    KelChartVariableList& operator=(KelChartVariableList&& other); // NOLINT(performance-noexcept-move-constructor)
    ~KelChartVariableList() override;

protected:
    // A new variable in this list's group, named `name`; the caller inserts it.
    KelProperties* makeChild(const QString& name, const QString& type) override;
};
