#pragma once
// Text as the chart draws it: fonts sized in pixels, so that text keeps its
// size against the pixel layout, and texts with an optional shadow one pixel
// down and right, drawn when the shadow colour is not fully transparent.

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>
#include <QString>

namespace Orv::Chart {

inline QFont pixelFont(int pixels, bool bold = false)
{
    QFont font;
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

// The font of tick labels, which the tick counts are fitted to.
inline QFont tickLabelFont()
{
    return pixelFont(11);
}

// The text as wide as the painter's font draws it in `width` pixels at most,
// ending in "..." where it is cut.
inline QString elided(const QPainter& painter, const QString& text, double width)
{
    return QFontMetricsF(painter.font()).elidedText(text, Qt::ElideRight, width);
}

inline void paintShadowedText(QPainter& painter, const QRectF& box, int flags, const QString& text,
                              const QColor& colour, const QColor& shadow)
{
    if (shadow.alpha() > 0) {
        painter.setPen(shadow);
        painter.drawText(box.translated(1, 1), flags, text);
    }
    painter.setPen(colour);
    painter.drawText(box, flags, text);
}

} // namespace Orv::Chart
