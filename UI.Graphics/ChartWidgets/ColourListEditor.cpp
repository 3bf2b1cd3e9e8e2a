#include "ColourListEditor.h"

#include "ColourDialog_p.h"

#include "KelPropertiesString.h"

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>
#include <QVBoxLayout>

namespace Orv::Chart {

namespace {

constexpr int swatchSize = 14;

QString entryName()
{
    return QStringLiteral("colours");
}

// A swatch: the colour over white, an invalid colour as a crossed-out square.
QIcon swatchIcon(const QColor& colour)
{
    QPixmap pixmap(swatchSize, swatchSize);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    if (colour.isValid()) {
        painter.fillRect(pixmap.rect(), colour);
    } else {
        painter.setPen(Qt::gray);
        painter.drawLine(0, 0, swatchSize, swatchSize);
    }
    painter.setPen(Qt::darkGray);
    painter.drawRect(0, 0, swatchSize - 1, swatchSize - 1);
    return {pixmap};
}

QToolButton* smallButton(QWidget* parent, const QString& text, const QString& tip)
{
    auto* button = new QToolButton(parent);
    button->setText(text);
    button->setToolTip(tip);
    button->setAutoRaise(true);
    return button;
}

} // namespace

ColourListEditor::ColourListEditor(QWidget* parent)
    : QWidget(parent)
    , m_line(new QLineEdit(this))
    , m_row(new QHBoxLayout)
    , m_add(smallButton(this, QStringLiteral("+"), tr("Add a colour")))
    , m_remove(smallButton(this, QStringLiteral("−"), tr("Remove the last colour")))
{
    // Taller than its row, the editor covers the rows below while open.
    setAutoFillBackground(true);
    m_row->setContentsMargins(0, 0, 0, 0);
    m_row->setSpacing(1);
    m_row->addStretch(1);
    m_row->addWidget(m_add);
    m_row->addWidget(m_remove);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    layout->addWidget(m_line);
    layout->addLayout(m_row);
    setFocusProxy(m_line);
    connect(m_line, &QLineEdit::textChanged, this, [this] { showEntries(); });
    connect(m_add, &QToolButton::clicked, this, [this] { addEntry(); });
    connect(m_remove, &QToolButton::clicked, this, [this] { removeEntry(); });
    showEntries();
}

QString ColourListEditor::text() const
{
    return m_line->text();
}

void ColourListEditor::setText(const QString& text)
{
    m_line->setText(text);
}

void ColourListEditor::showEntries()
{
    QList<QColor> colours;
    const bool readable = readColours(colours);
    m_add->setEnabled(readable);
    m_remove->setEnabled(readable && !colours.isEmpty());
    if (!readable) {
        for (QToolButton* swatch : m_swatches)
            swatch->setEnabled(false);
        return;
    }
    while (m_swatches.size() > colours.size())
        delete m_swatches.takeLast();
    while (m_swatches.size() < colours.size()) {
        const int entry = static_cast<int>(m_swatches.size());
        auto* swatch = smallButton(this, QString(), QString());
        connect(swatch, &QToolButton::clicked, this, [this, entry] { pick(entry); });
        m_row->insertWidget(entry, swatch);
        m_swatches.append(swatch);
    }
    for (int entry = 0; entry < colours.size(); ++entry) {
        QToolButton* swatch = m_swatches[entry];
        swatch->setEnabled(true);
        swatch->setIcon(swatchIcon(colours[entry]));
        swatch->setToolTip(tr("Colour %1: %2; click to pick another")
                               .arg(entry + 1)
                               .arg(colours[entry].isValid() ? colourText(colours[entry]) : tr("none")));
    }
}

void ColourListEditor::pick(int entry)
{
    QList<QColor> colours;
    if (!readColours(colours) || entry >= colours.size())
        return;
    openColourDialog(this, colours[entry], [this, entry](const QColor& chosen) { setEntry(entry, chosen); });
}

// The text may have changed while the dialog was open: the entry is set in the list as it reads now.
void ColourListEditor::setEntry(int entry, const QColor& colour)
{
    QList<QColor> colours;
    if (!readColours(colours) || entry >= colours.size())
        return;
    colours[entry] = colour;
    writeColours(colours);
}

// A new entry repeats the last one, which is what a user tends to adjust from.
void ColourListEditor::addEntry()
{
    QList<QColor> colours;
    if (!readColours(colours))
        return;
    colours.append(colours.isEmpty() ? QColor(Qt::black) : colours.last());
    writeColours(colours);
}

void ColourListEditor::removeEntry()
{
    QList<QColor> colours;
    if (!readColours(colours) || colours.isEmpty())
        return;
    colours.removeLast();
    writeColours(colours);
}

// Read and written with the store's own list syntax, so the text is the one the property will hold.
bool ColourListEditor::readColours(QList<QColor>& colours) const
{
    KelPropertiesString scratch;
    scratch.setValue(entryName(), QList<QColor>());
    return scratch.setValue(entryName(), m_line->text()).isEmpty() &&
           scratch.getValue(entryName(), colours, {}).isEmpty();
}

void ColourListEditor::writeColours(const QList<QColor>& colours)
{
    KelPropertiesString scratch;
    scratch.setValue(entryName(), colours);
    m_line->setText(scratch.getString(entryName()));
}

} // namespace Orv::Chart
