#pragma once
// The value cell of the property editor's row with a given path, found by
// walking the model from the top, as a user opens the tree.

#include "KelChartPropertyModel.h"

#include <QModelIndex>
#include <QString>

inline QModelIndex valueCell(const KelChartPropertyModel& model, const QString& path, const QModelIndex& parent = {})
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex name = model.index(row, KelChartPropertyModel::NameColumn, parent);
        if (name.data(KelChartPropertyModel::PathRole).toString() == path)
            return name.siblingAtColumn(KelChartPropertyModel::ValueColumn);
        if (path.startsWith(name.data(KelChartPropertyModel::PathRole).toString() + QLatin1Char('/')))
            return valueCell(model, path, name);
    }
    return {};
}
