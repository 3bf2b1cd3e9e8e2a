#pragma once
// KelChartVariable: one data series of a chart. It holds the series' switches,
// title, labels and sort order, the names of the axes it is drawn against,
// and as member children its data iterator, its drawing style, a manual value
// range ("min", "max") and a filter range ("filterMin", "filterMax").
//
// Requests by name for a quantity child's name are routed to that child, so
// the host can read and write the ranges through the variable itself.

#include "OrvChartExport.h"
#include "KelChartVariableStyle.h"
#include "KelPropertyAdaptor.h"
#include "KelQuantityTriple.h"
#include "KelVariableIter.h"

#include <QString>
#include <QStringList>

class KelUnitSystem;

class ORV_CHART_EXPORT KelChartVariable : public KelProperties {
public:
    static const QString typeString;

    // Named "variable.1", with its six children named and inserted.
    explicit KelChartVariable(KelModifiedGroup& group);
    // Takes other's values, style, iterator state and quantities, but is
    // named "variable.1" again; its owner renames it.
    KelChartVariable(const KelChartVariable& other);
    // Copies values into the existing children; keeps this node's name.
    KelChartVariable& operator=(const KelChartVariable& other);
    ~KelChartVariable() override;

    QString getValue(const QString& name, QString& value, const QString& defaultValue) const override;
    QString setValue(const QString& name, const QString& value) override;

    // Hands the unit system's converter and flag to the iterator, then converts
    // the four quantities into the units the iterator then reports.
    void SetUnitsConversion(const KelUnitSystem& unitSystem);

    KelPropertyAdaptor<bool> enabled;
    KelPropertyAdaptor<QString> title;
    KelPropertyAdaptor<bool> legend;
    KelPropertyAdaptor<QString> xAxis;
    KelPropertyAdaptor<QString> yAxis;
    KelPropertyAdaptor<QString> zAxis;
    KelPropertyAdaptor<QStringList> label;
    KelVariableIter variableiter;
    KelChartVariableStyle style;
    KelPropertyAdaptor<bool> autoRange;
    KelQuantityTriple max;
    KelQuantityTriple min;
    KelPropertyAdaptor<bool> enableFilters;
    KelQuantityTriple filterMax;
    KelQuantityTriple filterMin;
    KelPropertyAdaptor<int> order;
    KelPropertyAdaptor<bool> tesselate;

private:
    // Whether `name` is the current name of one of the four quantity members.
    bool isQuantityName(const QString& name) const;
    static void warnMissingQuantity(const char* condition, const char* signature, int line);
};
