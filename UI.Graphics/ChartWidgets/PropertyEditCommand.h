#pragma once
// An accepted edit of one property, for the property editor's undo stack. It
// finds its row by the row's path ("axis.y/axis.y.left/min"), not by a model
// index, so it still applies after the model was reset or rows came and went;
// it writes the old or new text back through the model, which checks it and
// tells the views as for any edit.

#include "OrvChartWidgetsExport.h"

#include <QPointer>
#include <QString>
#include <QUndoCommand>

class KelChartPropertyModel;

namespace Orv::Chart {

class ORV_CHARTWIDGETS_EXPORT PropertyEditCommand : public QUndoCommand {
public:
    // Records an edit already made: the redo of the push writes nothing.
    PropertyEditCommand(KelChartPropertyModel* model, const QString& path, const QString& before,
                        const QString& after);

    void undo() override;
    void redo() override;

    QString path() const { return m_path; }

private:
    void write(const QString& text);

    QPointer<KelChartPropertyModel> m_model;
    QString m_path;
    QString m_before;
    QString m_after;
    bool m_made = true;
};

} // namespace Orv::Chart
