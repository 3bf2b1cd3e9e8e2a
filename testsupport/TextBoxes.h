#pragma once
// Records the texts a painting draws, each with the box it covers on the
// device, so that tests can check that no text overlaps another or leaves the
// picture. The recording device draws nothing else.

#include <QList>
#include <QRectF>
#include <QSize>
#include <QString>
#include <QStringList>

#include <functional>

class QPainter;

namespace OrvTest {

struct DrawnText {
    QString text;
    QRectF box; // in device pixels: the advance of the text by the font's height
};

// Runs `paint` on a painter over a device of `size` at 96 dpi and returns every non-blank text drawn.
QList<DrawnText> drawnTexts(QSize size, const std::function<void(QPainter&)>& paint);

// "a" / "b" for each pair of texts whose boxes share more than `tolerance` pixels in both directions.
QStringList overlappingTexts(const QList<DrawnText>& texts, double tolerance = 1.0);
// The texts whose boxes reach more than `tolerance` pixels beyond the device.
QStringList textsOutside(const QList<DrawnText>& texts, QSize size, double tolerance = 1.0);

} // namespace OrvTest
