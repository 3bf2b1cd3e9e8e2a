#pragma once
// Whether the chart in the window differs from its file, and what to do about
// it before the chart is closed or replaced. The chart changes through edits
// in the property editor (its undo stack tells whether they were undone since
// the last save) and through the chart view: panning, zooming and legend
// clicks write the axes' ranges and the series' "enabled", which are saved
// with the chart.

#include <QObject>

#include <functional>

class QUndoStack;

namespace Orv::Chart {
class ChartWidget;
} // namespace Orv::Chart

namespace kelview {

enum class SaveAnswer { Save, Discard, Cancel };

// Whether the chart may go: at once when nothing would be lost, otherwise as
// the user answers `ask`; with Save only once `save` succeeded.
bool mayDiscard(bool modified, const std::function<SaveAnswer()>& ask, const std::function<bool()>& save);

class UnsavedChanges : public QObject {
    Q_OBJECT
public:
    // Both must outlive the tracker.
    UnsavedChanges(Orv::Chart::ChartWidget* chart, QUndoStack* edits, QObject* parent = nullptr);

    bool isModified() const;
    // The chart is as its file is now (saved, or just opened).
    void markSaved();

Q_SIGNALS:
    void modifiedChanged(bool modified);

private:
    void viewChanged();

    QUndoStack* m_edits;
    bool m_viewChanged = false;
};

} // namespace kelview
