#include "MessageBar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QToolButton>

namespace kelview {

namespace {

// More lines would push the chart out of sight; the rest are counted.
constexpr int mostLines = 6;

} // namespace

MessageBar::MessageBar(QWidget* parent)
    : QFrame(parent)
    , m_text(new QLabel(this))
{
    setObjectName(QStringLiteral("messageBar"));
    m_text->setWordWrap(true);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* close = new QToolButton(this);
    close->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    close->setAutoRaise(true);
    close->setToolTip(tr("Close the message"));
    connect(close, &QToolButton::clicked, this, &MessageBar::clear);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 4, 4);
    layout->addWidget(m_text, 1);
    layout->addWidget(close, 0, Qt::AlignTop);
    setVisible(false);
}

void MessageBar::showMessage(Level level, const QStringList& lines)
{
    m_level = level;
    m_lines.clear();
    for (const QString& line : lines)
        if (!m_lines.contains(line))
            m_lines << line;
    render();
}

void MessageBar::add(const QString& line)
{
    if (m_lines.contains(line))
        return;
    if (m_lines.isEmpty())
        m_level = Level::Remark;
    m_lines << line;
    render();
}

void MessageBar::clear()
{
    m_lines.clear();
    render();
}

void MessageBar::render()
{
    QStringList shown = m_lines.mid(0, mostLines);
    if (m_lines.size() > mostLines)
        shown << tr("... and %n more", nullptr, static_cast<int>(m_lines.size() - mostLines));
    m_text->setText(shown.join(QLatin1Char('\n')));
    const bool fault = m_level == Level::Fault;
    setStyleSheet(QStringLiteral("#messageBar { background: %1; border: 1px solid %2; border-radius: 3px; }"
                                 "#messageBar QLabel { color: %3; }")
                      .arg(fault ? QStringLiteral("#f8d7da") : QStringLiteral("#fff3cd"),
                           fault ? QStringLiteral("#e8a0a8") : QStringLiteral("#e6cf86"),
                           fault ? QStringLiteral("#6b1018") : QStringLiteral("#4d3a00")));
    setVisible(!m_lines.isEmpty());
}

} // namespace kelview
