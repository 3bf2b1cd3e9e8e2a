#pragma once
// The colour dialog behind the colour editors' buttons. It does not block:
// the user can look at the chart while picking, and nothing waits on it. It
// is a child of the editor that opened it, so the item view keeps that editor
// open while the dialog has the focus, and it goes when the editor goes.

#include <QColor>
#include <QString>

#include <functional>

class QColorDialog;
class QWidget;

namespace Orv::Chart {

// Opens the dialog on `initial` (white when invalid); `chosen` gets the colour when the user accepts.
QColorDialog* openColourDialog(QWidget* owner, const QColor& initial, std::function<void(const QColor&)> chosen);

// A colour as the chart stores it: "#rrggbb" when opaque, else "#aarrggbb".
QString colourText(const QColor& colour);

} // namespace Orv::Chart
