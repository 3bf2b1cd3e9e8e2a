#pragma once
// A property editor for a chart: a filter line, the tree of the chart's
// elements and their properties over a KelChartPropertyModel, each value
// edited as text with an editor chosen from the model's hints (see
// PropertyDelegate), and under the tree two lines: what is wrong with the
// text being typed, and why the last edit was refused. A refused text comes
// back in its field to be corrected. Accepted edits go onto an undo stack,
// whose undo and redo write through the model like edits. Nothing here opens
// a modal dialog, so an edit never blocks the application.

#include "OrvChartWidgetsExport.h"

#include <QWidget>

class KelChartPropertyModel;
class QLabel;
class QLineEdit;
class QModelIndex;
class QTreeView;
class QUndoStack;

namespace Orv::Chart {

class ChartWidget;
class PropertyDelegate;
class PropertyFilter;

class ORV_CHARTWIDGETS_EXPORT PropertyEditor : public QWidget {
    Q_OBJECT
public:
    explicit PropertyEditor(QWidget* parent = nullptr);
    ~PropertyEditor() override;

    // The model shown, or none; it is not owned and must outlive the editor or
    // be replaced first. A new model starts with an empty undo stack.
    void setModel(KelChartPropertyModel* model);
    KelChartPropertyModel* model() const { return m_model; }
    // The tree; its model is a filter over `model()` (none without a model).
    QTreeView* view() const { return m_view; }
    // The filter line above the tree: rows whose name or value holds its text stay, with their ancestors.
    QLineEdit* filter() const { return m_filter; }
    // The edits made here, for a host's undo and redo actions.
    QUndoStack* undoStack() const { return m_undo; }

    // Keeps a chart widget over the same tree in step: an edit here gives it
    // new caches and a new frame; ranges it writes while the user pans or
    // zooms show up here. The chart widget must outlive the editor.
    void attach(ChartWidget* chart);
    // Catches up with changes of the tree made elsewhere (ranges written by a
    // chart widget, elements added or removed), without reporting them as edits.
    void refresh();

    // The reason of the last refused edit, empty after a good one.
    QString message() const;
    void showMessage(const QString& text);
    // Why the text in the open field would be refused, empty when it would be taken.
    QString hint() const;

Q_SIGNALS:
    // A property took a new value through the model (an undo or redo too).
    void edited();
    // The model refused an edit; the property is as it was.
    void refused(const QString& message);

private:
    void filterRows(const QString& text);
    void afterCommit(const QModelIndex& index, bool accepted);
    void showHint(const QString& text);

    KelChartPropertyModel* m_model = nullptr;
    QLineEdit* m_filter;
    PropertyFilter* m_rows;
    QTreeView* m_view;
    PropertyDelegate* m_delegate;
    QLabel* m_hint;
    QLabel* m_message;
    QUndoStack* m_undo;
    // Set while the model catches up with the tree: its changes are no edits.
    bool m_refreshing = false;
};

} // namespace Orv::Chart
