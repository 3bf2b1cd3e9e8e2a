#pragma once
// The editor of a colour list (a series' line colours, its gradient): the
// list's text, still typed as the chart stores it ("#e15759, red"), and under
// it one swatch per entry that opens the colour dialog for that entry, with
// buttons that add an entry or take the last one away. While the text does
// not read as a colour list the swatches stay as they were and are disabled.

#include "OrvChartWidgetsExport.h"

#include <QColor>
#include <QList>
#include <QWidget>

class QHBoxLayout;
class QLineEdit;
class QToolButton;

namespace Orv::Chart {

class ORV_CHARTWIDGETS_EXPORT ColourListEditor : public QWidget {
public:
    explicit ColourListEditor(QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);

    // The swatch buttons, one per entry, in list order.
    QList<QToolButton*> swatches() const { return m_swatches; }
    QToolButton* addButton() const { return m_add; }
    QToolButton* removeButton() const { return m_remove; }

private:
    void showEntries();
    void pick(int entry);
    void setEntry(int entry, const QColor& colour);
    void addEntry();
    void removeEntry();
    // The colours the text names; false while it does not read as a colour list.
    bool readColours(QList<QColor>& colours) const;
    void writeColours(const QList<QColor>& colours);

    QLineEdit* m_line;
    QHBoxLayout* m_row;
    QList<QToolButton*> m_swatches;
    QToolButton* m_add;
    QToolButton* m_remove;
};

} // namespace Orv::Chart
