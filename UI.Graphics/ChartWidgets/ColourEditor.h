#pragma once
// The editor of a colour value: its text ("#rrggbb", "#aarrggbb" or a colour
// name), typed or picked with the colour dialog behind the button.

#include "OrvChartWidgetsExport.h"
#include <QWidget>

class QLineEdit;

namespace Orv::Chart {

class ORV_CHARTWIDGETS_EXPORT ColourEditor : public QWidget {
public:
    explicit ColourEditor(QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);

private:
    void pick();

    QLineEdit* m_line;
};

} // namespace Orv::Chart
