#include "ColourEditor.h"

#include "ColourDialog_p.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QToolButton>

namespace Orv::Chart {

ColourEditor::ColourEditor(QWidget* parent)
    : QWidget(parent)
    , m_line(new QLineEdit(this))
{
    auto* button = new QToolButton(this);
    button->setText(QStringLiteral("…"));
    button->setToolTip(tr("Pick a colour"));
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_line, 1);
    layout->addWidget(button);
    setFocusProxy(m_line);
    connect(button, &QToolButton::clicked, this, [this] { pick(); });
}

QString ColourEditor::text() const
{
    return m_line->text();
}

void ColourEditor::setText(const QString& text)
{
    m_line->setText(text);
}

void ColourEditor::pick()
{
    openColourDialog(this, QColor(m_line->text()), [this](const QColor& chosen) { m_line->setText(colourText(chosen)); });
}

} // namespace Orv::Chart
