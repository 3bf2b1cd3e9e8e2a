#pragma once
// The interactive view: the chart in the middle under a message bar, the
// property editor in a dock beside it, menus and a tool bar, and the hover's
// read-out in the status bar. Edits in the editor go through the item model's
// text interface and redraw the chart from new caches; ranges the chart view
// writes while panning or zooming show up in the editor. A refused edit
// changes nothing; its reason appears under the editor and in the status bar
// until a good edit. A file that does not open, remarks on one that did and
// the library's warnings go to the message bar: nothing blocks on a dialog
// but choosing a file and the question whether to save changes before they
// would be lost.

#include "ChartDocument.h"
#include "UnsavedChanges.h"

#include <QLocale>
#include <QMainWindow>

#include <functional>
#include <memory>

class KelChartPropertyModel;
class QAction;
class QActionGroup;
class QDockWidget;
class QLabel;
class QMenu;
class QPrinter;
class QTimer;

namespace Orv::Chart {
class ChartActions;
class ChartWidget;
class PropertyEditor;
} // namespace Orv::Chart

namespace kelview {

// The path the export dialog gave, with the suffix of its chosen name filter
// ("PDF documents (*.pdf)") added when it names no format kelview writes.
QString withExportSuffix(const QString& path, const QString& nameFilter);

class LogRelay;
class MessageBar;

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
    Orv::Chart::ChartActions* chartActions() const { return m_actions; }
    MessageBar* messageBar() const { return m_messageBar; }
    // The last refusal or fault shown to the user.
    QString message() const;
    // The status bar: the hover's read-out (or the point cursor's), and the last message.
    QString readOut() const;
    QString statusMessage() const;
    bool isModified() const { return m_unsaved->isModified(); }

    // Shows a chart or data file in place of the chart, without asking about
    // unsaved changes; gives false and shows why when it cannot, keeping the chart.
    bool openFile(const QString& path);
    // Shows another document in place of the chart, without asking about unsaved changes.
    void replaceDocument(std::unique_ptr<ChartDocument> document);
    // Writes the chart file; gives false and shows why when it cannot.
    bool save(const QString& path);
    // Writes the chart as shown, in the widget's size, as PNG, SVG or PDF by
    // the path's suffix; gives false and shows why when it cannot.
    bool exportChart(const QString& path);
    // Prints the chart as shown on one page, fitted to the printable area and
    // centred on it; the chart's layout is kept, drawn to the page's scale.
    void printOn(QPrinter& printer);
    // After the tree was changed outside the editor: new rows, new frame.
    void treeChanged();
    // The chart writes numbers and dates as `locale` does.
    void setChartLocale(const QLocale& locale);
    // How the window asks whether to save before changes are lost; a dialog
    // unless replaced.
    void setSavePrompt(std::function<SaveAnswer()> prompt) { m_savePrompt = std::move(prompt); }

Q_SIGNALS:
    // The document is about to go: what points into its chart lets go of it now.
    void documentReleasing();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void buildCentre();
    void buildEditor();
    void buildMenus();
    void buildFileMenu();
    void buildEditMenu();
    void buildViewMenu();
    void buildLocaleMenu(QMenu* view);
    QAction* addLocaleAction(const QString& name);
    void buildToolBar();
    void buildStatusBar();
    void connectMessages();
    void releaseDocument();
    void showDocument();
    void showReadOut();
    void showStatus(const QString& text, bool refusal = false);
    void showFault(const QString& text);
    void showWarning(const QString& text);
    void updateTitle();
    bool mayDiscardChanges();
    SaveAnswer askToSave();
    void openChosen();
    bool saveChosen();
    bool saveAsChosen();
    void exportChosen();
    void print();
    void chooseLocale(const QString& name);

    std::unique_ptr<ChartDocument> m_document;
    Orv::Chart::ChartWidget* m_chart;
    KelChartPropertyModel* m_model = nullptr;
    Orv::Chart::PropertyEditor* m_editor = nullptr;
    QDockWidget* m_dock = nullptr;
    Orv::Chart::ChartActions* m_actions = nullptr;
    MessageBar* m_messageBar = nullptr;
    UnsavedChanges* m_unsaved = nullptr;
    QLabel* m_readOut = nullptr;
    QString m_hover;
    QLabel* m_status = nullptr;
    QTimer* m_statusTimer = nullptr;
    bool m_statusIsRefusal = false;
    QMenu* m_localeMenu = nullptr;
    QActionGroup* m_locales = nullptr;
    std::unique_ptr<QPrinter> m_printer;
    std::function<SaveAnswer()> m_savePrompt;
    std::unique_ptr<LogRelay> m_relay;
    // While a file opens, the document collects the library's warnings itself.
    bool m_opening = false;
};

} // namespace kelview
