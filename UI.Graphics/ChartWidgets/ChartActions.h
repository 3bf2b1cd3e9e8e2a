#pragma once
// The commands of a chart widget as actions a host puts into its menus, tool
// bars and the chart's context menu: the views (Home, Back, Forward, zoom,
// fit y), copying values and the image, saving the image, and undo and redo of
// a property editor's edits. Each action has a text, a tool tip, an icon from
// the icon theme or the style and its usual shortcuts:
//
//   Home          Alt+Home, Ctrl+0 (Home alone while the chart has the focus)
//   Back          the platform's Back key (Alt+Left here), Alt+Left
//   Forward       the platform's Forward key (Alt+Right here), Alt+Right
//   Zoom in/out   the platform's zoom keys (Ctrl++ and Ctrl+-)
//   Fit y         Ctrl+Shift+Y
//   Copy values   the platform's Copy key (Ctrl+C), only while the chart has the focus,
//                 so that line edits beside it keep their own Ctrl+C
//   Copy image    Ctrl+Shift+C
//   Undo, Redo    the platform's keys (Ctrl+Z, Ctrl+Shift+Z)
//
// The actions are added to the chart widget, so their shortcuts work anywhere
// in its window. Its context menu opens on a right click without a drag (a
// right drag draws the rubber band), on the Menu key and on Shift+F10.

#include "OrvChartWidgetsExport.h"

#include <QList>
#include <QMenu>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QString>

class QAction;
class QIcon;

namespace Orv::Chart {

class ChartWidget;
class PropertyEditor;

class ORV_CHARTWIDGETS_EXPORT ChartActions : public QObject {
    Q_OBJECT
public:
    // The actions of `chart` and, with an `editor`, undo and redo of its edits;
    // both must outlive the actions.
    explicit ChartActions(ChartWidget* chart, PropertyEditor* editor = nullptr, QObject* parent = nullptr);
    ~ChartActions() override;

    QAction* home() const { return m_home; }
    QAction* back() const { return m_back; }
    QAction* forward() const { return m_forward; }
    QAction* zoomIn() const { return m_zoomIn; }
    QAction* zoomOut() const { return m_zoomOut; }
    QAction* fitY() const { return m_fitY; }
    QAction* copyValues() const { return m_copyValues; }
    QAction* copyImage() const { return m_copyImage; }
    QAction* saveImage() const { return m_saveImage; }
    // Null without an editor.
    QAction* undo() const { return m_undo; }
    QAction* redo() const { return m_redo; }

    // Home, Back, Forward, Zoom in, Zoom out, Fit y: for a View menu or a tool bar.
    QList<QAction*> viewActions() const;
    // Undo and Redo (with an editor), Copy values, Copy image: for an Edit menu.
    QList<QAction*> editActions() const;
    // The chart's context menu: the view actions, copying and Save image; a
    // host may add its own.
    QMenu* contextMenu() const { return m_menu; }

    // Writes the chart as drawn now in the format the suffix names; false, with
    // the reason in `error`, when it cannot.
    bool writeImage(const QString& path, QString* error = nullptr) const;

public Q_SLOTS:
    // Asks for a file and writes the image there.
    void saveImageAs();
    // Opens the context menu at a position in the chart widget.
    void showContextMenu(QPoint position);

Q_SIGNALS:
    void imageSaved(const QString& path);
    // Saving the image failed; the message names the file.
    void failed(const QString& message);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* makeAction(const QString& text, const QString& toolTip, const QIcon& icon);
    void createViewActions();
    void createCopyActions();
    void createUndoActions(PropertyEditor* editor);
    void buildContextMenu();
    void updateEnabled();
    void copyValuesNow();
    QPoint keyboardMenuPosition() const;

    ChartWidget* m_chart;
    QAction* m_home = nullptr;
    QAction* m_back = nullptr;
    QAction* m_forward = nullptr;
    QAction* m_zoomIn = nullptr;
    QAction* m_zoomOut = nullptr;
    QAction* m_fitY = nullptr;
    QAction* m_copyValues = nullptr;
    QAction* m_copyImage = nullptr;
    QAction* m_saveImage = nullptr;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    // The chart's child, so that it pops up over the chart's window: it goes
    // with the chart or with the actions, whichever goes first.
    QPointer<QMenu> m_menu;
    // Where the right button went down, to tell a click from a rubber band.
    QPoint m_rightPressed;
    bool m_rightDown = false;
    // The values under the cursor when the context menu opened: the menu takes
    // the hover away, and Copy values in it copies what was under the click.
    QString m_menuValues;
};

} // namespace Orv::Chart
