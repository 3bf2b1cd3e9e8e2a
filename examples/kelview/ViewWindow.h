#pragma once
// The interactive view: the chart in the middle, the property editor in a
// dock beside it. Edits in the editor go through the item model's text
// interface and redraw the chart from new caches; ranges the chart view
// writes while panning or zooming show up in the editor. A refused edit
// changes nothing and its reason appears under the editor and in the status
// bar, so nothing ever blocks on a dialog.

#include "ChartDocument.h"

#include <QMainWindow>

#include <memory>

class KelChartPropertyModel;
class QDockWidget;
class QTreeView;

namespace Orv::Chart {
class ChartWidget;
class PropertyEditor;
} // namespace Orv::Chart

namespace kelview {

class ViewWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit ViewWindow(std::unique_ptr<ChartDocument> document, QWidget* parent = nullptr);
    ~ViewWindow() override;

    ChartDocument& document() { return *m_document; }
    Orv::Chart::ChartWidget* chartView() const { return m_chart; }
    KelChartPropertyModel* propertyModel() const { return m_model; }
    Orv::Chart::PropertyEditor* editor() const { return m_editor; }
    QDockWidget* editorDock() const { return m_dock; }
    // The last refusal or fault shown to the user.
    QString message() const;

    // Writes the chart file; gives false and shows why when it cannot.
    bool save(const QString& path);
    // After the tree was changed outside the editor: new rows, new frame.
    void treeChanged();

private:
    void buildEditor();
    void buildMenus();
    void showMessage(const QString& text);
    void saveAs();

    std::unique_ptr<ChartDocument> m_document;
    Orv::Chart::ChartWidget* m_chart;
    KelChartPropertyModel* m_model;
    Orv::Chart::PropertyEditor* m_editor = nullptr;
    QDockWidget* m_dock = nullptr;
};

} // namespace kelview
