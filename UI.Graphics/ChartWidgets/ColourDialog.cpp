#include "ColourDialog_p.h"

#include <QColorDialog>

namespace Orv::Chart {

QColorDialog* openColourDialog(QWidget* owner, const QColor& initial, std::function<void(const QColor&)> chosen)
{
    auto* dialog = new QColorDialog(initial.isValid() ? initial : QColor(Qt::white), owner);
    dialog->setWindowTitle(QColorDialog::tr("Colour"));
    dialog->setOption(QColorDialog::ShowAlphaChannel);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QColorDialog::colorSelected, owner, std::move(chosen));
    dialog->show();
    return dialog;
}

QString colourText(const QColor& colour)
{
    return colour.name(colour.alpha() == 255 ? QColor::HexRgb : QColor::HexArgb);
}

} // namespace Orv::Chart
