#pragma once
// A property editor for a chart: the tree of its elements and their
// properties over a KelChartPropertyModel, each value edited as text with an
// editor chosen from the model's hints (see PropertyDelegate), and a line
// under the tree that tells why the last edit was refused. Nothing here opens
// a dialog of its own, so an edit never blocks the application.

#include "OrvChartWidgetsExport.h"

#include <QWidget>

class KelChartPropertyModel;
class QLabel;
class QTreeView;

namespace Orv::Chart {

class ChartWidget;

class ORV_CHARTWIDGETS_EXPORT PropertyEditor : public QWidget {
    Q_OBJECT
public:
    explicit PropertyEditor(QWidget* parent = nullptr);

    // The model shown, or none; it is not owned and must outlive the editor or be replaced first.
    void setModel(KelChartPropertyModel* model);
    KelChartPropertyModel* model() const { return m_model; }
    QTreeView* view() const { return m_view; }

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

Q_SIGNALS:
    // A property took a new value through the model.
    void edited();
    // The model refused an edit; the property is as it was.
    void refused(const QString& message);

private:
    KelChartPropertyModel* m_model = nullptr;
    QTreeView* m_view;
    QLabel* m_message;
    // Set while the model catches up with the tree: its changes are no edits.
    bool m_refreshing = false;
};

} // namespace Orv::Chart
