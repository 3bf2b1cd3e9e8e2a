#include "ChartOverlays.h"

#include <QFontMetrics>

#include <algorithm>
#include <cmath>

namespace Orv::Chart::ChartOverlays {

namespace {

const QColor bandColour(40, 80, 160);
const QColor crosshairColour(90, 90, 90, 160);
// The box keeps this far from the cursor, so that the cursor never hides its text.
constexpr double boxOffset = 14;

bool finite(QPointF point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

} // namespace

void paintBand(QPainter& painter, const QRectF& band)
{
    painter.setPen(QPen(bandColour, 1, Qt::DashLine));
    painter.setBrush(QColor(bandColour.red(), bandColour.green(), bandColour.blue(), 40));
    painter.drawRect(band);
}

void paintCrosshair(QPainter& painter, const QRectF& plot, QPointF at)
{
    painter.setPen(QPen(crosshairColour, 1, Qt::DashLine));
    painter.drawLine(QPointF(at.x(), plot.top()), QPointF(at.x(), plot.bottom()));
    painter.drawLine(QPointF(plot.left(), at.y()), QPointF(plot.right(), at.y()));
}

void paintHits(QPainter& painter, const QRectF& plot, const std::vector<HoverText::Hit>& hits)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(plot.adjusted(-markerRadius, -markerRadius, markerRadius, markerRadius));
    painter.setPen(QPen(Qt::black, 1.5));
    painter.setBrush(QColor(255, 255, 255, 200));
    for (const HoverText::Hit& hit : hits)
        if (finite(hit.pixel))
            painter.drawEllipse(hit.pixel, markerRadius, markerRadius);
    painter.restore();
}

void paintBox(QPainter& painter, QSize area, QPointF at, const QString& text)
{
    if (text.isEmpty() || !finite(at))
        return;
    QRectF box = painter.fontMetrics().boundingRect(QRect(QPoint(), area), Qt::AlignLeft, text);
    box.adjust(-6, -4, 6, 4);
    box.moveTopLeft(at + QPointF(boxOffset, boxOffset));
    if (box.right() > area.width())
        box.moveRight(at.x() - boxOffset);
    if (box.left() < 0)
        box.moveLeft(std::max(0.0, area.width() - box.width()));
    if (box.bottom() > area.height())
        box.moveBottom(at.y() - boxOffset);
    if (box.top() < 0)
        box.moveTop(0);
    painter.setPen(QColor(90, 90, 90));
    painter.setBrush(QColor(255, 255, 240, 235));
    painter.drawRect(box);
    painter.setPen(Qt::black);
    painter.drawText(box.adjusted(6, 4, -6, -4), Qt::AlignLeft, text);
}

void paintAll(QPainter& painter, const ChartNavigator& navigator, QSize area)
{
    if (navigator.frames() == nullptr)
        return;
    if (navigator.drag() == ChartNavigator::Drag::Band)
        return paintBand(painter, navigator.band());
    if (navigator.drag() != ChartNavigator::Drag::None || navigator.readOut().isEmpty())
        return;
    const QRectF plot = navigator.frames()->layout().plot();
    if (plot.contains(navigator.hoverAt()))
        paintCrosshair(painter, plot, navigator.hoverAt());
    paintHits(painter, plot, navigator.hits());
    const QStringList lines = QStringList(navigator.readOut()) + navigator.hoverLines();
    paintBox(painter, area, navigator.hoverAt(), lines.join(QLatin1Char('\n')));
}

} // namespace Orv::Chart::ChartOverlays
