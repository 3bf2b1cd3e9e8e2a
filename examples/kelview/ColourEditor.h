#pragma once
// The editor of a colour value: its text ("#rrggbb", "#aarrggbb"), typed or
// picked with the colour dialog behind the button.

#include <QWidget>

class QLineEdit;

namespace kelview {

class ColourEditor : public QWidget {
public:
    explicit ColourEditor(QWidget* parent = nullptr);

    QString text() const;
    void setText(const QString& text);

private:
    void pick();

    QLineEdit* m_line;
};

} // namespace kelview
