#include "PropertyEditCommand.h"

#include "KelChartPropertyModel.h"

#include <QCoreApplication>

namespace Orv::Chart {

namespace {

using Model = KelChartPropertyModel;

// The value cell of the row with that path, walking down the rows whose paths lead to it.
QModelIndex valueCellAt(const Model& model, const QString& path, const QModelIndex& parent = {})
{
    for (int row = 0; row < model.rowCount(parent); ++row) {
        const QModelIndex name = model.index(row, Model::NameColumn, parent);
        const QString rowPath = name.data(Model::PathRole).toString();
        if (rowPath == path)
            return name.siblingAtColumn(Model::ValueColumn);
        if (path.startsWith(rowPath + QLatin1Char('/')))
            return valueCellAt(model, path, name);
    }
    return {};
}

QString lastName(const QString& path)
{
    return path.mid(path.lastIndexOf(QLatin1Char('/')) + 1);
}

} // namespace

PropertyEditCommand::PropertyEditCommand(KelChartPropertyModel* model, const QString& path, const QString& before,
                                         const QString& after)
    : QUndoCommand(QCoreApplication::translate("Orv::Chart::PropertyEditCommand", "Set %1").arg(lastName(path)))
    , m_model(model)
    , m_path(path)
    , m_before(before)
    , m_after(after)
{
}

void PropertyEditCommand::undo()
{
    write(m_before);
}

void PropertyEditCommand::redo()
{
    if (m_made) {
        m_made = false;
        return;
    }
    write(m_after);
}

// A refused write (the tree changed elsewhere since) goes out through the model's
// editRefused like any refusal; a row that is gone is skipped.
void PropertyEditCommand::write(const QString& text)
{
    if (!m_model)
        return;
    const QModelIndex cell = valueCellAt(*m_model, m_path);
    if (cell.isValid())
        m_model->setData(cell, text, Qt::EditRole);
}

} // namespace Orv::Chart
