#pragma once
// A strip above the chart that tells what went wrong or what to know about
// the file just opened, without a dialog that would block the window: a fault
// that kept a file from opening, or the remarks on one that did (notes on its
// data, the library's warnings). It stays until the user closes it or the
// next file opens; a remark already shown is not added twice.

#include <QFrame>
#include <QStringList>

class QLabel;

namespace kelview {

class MessageBar : public QFrame {
    Q_OBJECT
public:
    enum class Level { Remark, Fault };

    explicit MessageBar(QWidget* parent = nullptr);

    // Replaces what the bar shows; nothing hides it.
    void showMessage(Level level, const QStringList& lines);
    // One more line under those shown, at the level shown (a remark when hidden).
    void add(const QString& line);
    void clear();

    QStringList lines() const { return m_lines; }
    Level level() const { return m_level; }

private:
    void render();

    QLabel* m_text;
    QStringList m_lines;
    Level m_level = Level::Remark;
};

} // namespace kelview
