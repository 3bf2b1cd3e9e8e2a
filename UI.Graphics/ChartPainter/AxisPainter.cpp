#include "AxisPainter_p.h"

#include "KelChartAxis.h"
#include "NumberText.h"
#include "TextStyle_p.h"

#include <algorithm>

namespace Orv::Chart {

namespace {

constexpr double tickLength = 5;
constexpr double minorTickLength = 3;
constexpr double labelGap = 3;
// The room of a caption across its axis band, and the least gap between the
// caption and the offset text beside it.
constexpr double captionHeight = 18;
constexpr double captionGap = 8;

bool horizontal(AxisSide side)
{
    return side == AxisSide::Bottom || side == AxisSide::Top;
}

// The direction away from the plot, in pixels.
QPointF outward(AxisSide side)
{
    switch (side) {
    case AxisSide::Bottom:
        return {0, 1};
    case AxisSide::Top:
        return {0, -1};
    case AxisSide::Left:
        return {-1, 0};
    case AxisSide::Right:
        break;
    }
    return {1, 0};
}

// The other end of a grid line that starts on the axis's plot edge.
QPointF across(const QRectF& plot, AxisSide side, QPointF from)
{
    return horizontal(side) ? QPointF(from.x(), side == AxisSide::Bottom ? plot.top() : plot.bottom())
                            : QPointF(side == AxisSide::Left ? plot.right() : plot.left(), from.y());
}

} // namespace

AxisPainter::AxisPainter(QPainter& painter, const ChartLayout& layout)
    : m_painter(painter)
    , m_layout(layout)
{
}

QString AxisPainter::caption(const PlotAxis& axis)
{
    QString text = axis.axis->title.get();
    if (!axis.unitLabel.isEmpty())
        text += QStringLiteral(" [") + axis.unitLabel + QLatin1Char(']');
    if (axis.factor != 1.0)
        text += QStringLiteral(" (\u00d7 ") + numberText(axis.factor) + QLatin1Char(')');
    return text.trimmed();
}

void AxisPainter::paintGrid(const PlotAxis& axis)
{
    if (axis.side == AxisSide::Top || axis.side == AxisSide::Right)
        return;
    m_painter.setPen(QPen(axis.axis->gridColor.get(), 1.0, Qt::DotLine));
    for (const Tick& tick : axis.ticks.major()) {
        const QPointF from = m_layout.alongAxis(axis.side, tick.position);
        m_painter.drawLine(from, across(m_layout.plot(), axis.side, from));
    }
}

void AxisPainter::paintTicks(const PlotAxis& axis, const std::vector<Tick>& ticks, double length)
{
    const QPen tickPen(axis.axis->tickColor.get(), 1.0);
    for (const Tick& tick : ticks) {
        const QPointF at = m_layout.alongAxis(axis.side, tick.position);
        // Each label sets its own pen.
        m_painter.setPen(tickPen);
        m_painter.drawLine(at, at + outward(axis.side) * length);
        if (tick.labelled)
            paintTickLabel(axis, tick);
    }
}

void AxisPainter::paintAxis(const PlotAxis& axis)
{
    m_painter.setPen(QPen(axis.axis->tickColor.get(), 1.0));
    m_painter.drawLine(m_layout.alongAxis(axis.side, 0.0), m_layout.alongAxis(axis.side, 1.0));
    paintTicks(axis, axis.ticks.major(), tickLength);
    paintTicks(axis, axis.ticks.minor(), minorTickLength);
    paintCaption(axis);
}

void AxisPainter::paintTickLabel(const PlotAxis& axis, const Tick& tick)
{
    const QPointF at = m_layout.alongAxis(axis.side, tick.position) + outward(axis.side) * (tickLength + labelGap);
    m_painter.setFont(tickLabelFont());
    switch (axis.side) {
    case AxisSide::Bottom:
        return paintText(horizontalLabelBox(tick.label, at.x(), at.y()), Qt::AlignHCenter | Qt::AlignTop, tick.label,
                         axis);
    case AxisSide::Top:
        return paintText(horizontalLabelBox(tick.label, at.x(), at.y() - 14), Qt::AlignHCenter | Qt::AlignBottom,
                         tick.label, axis);
    case AxisSide::Left:
    case AxisSide::Right:
        break;
    }
    // Beside a vertical axis, a label keeps off the caption and the image edge.
    const double room = m_layout.axisBand(axis.side).width() - tickLength - labelGap - captionHeight;
    const QString label = elided(m_painter, tick.label, room);
    if (axis.side == AxisSide::Left)
        return paintText(QRectF(at.x() - room, at.y() - 7, room, 14), Qt::AlignRight | Qt::AlignVCenter, label, axis);
    paintText(QRectF(at.x(), at.y() - 7, room, 14), Qt::AlignLeft | Qt::AlignVCenter, label, axis);
}

// Centred on its tick, but moved inwards where it would leave the image.
QRectF AxisPainter::horizontalLabelBox(const QString& label, double x, double top) const
{
    const double width = QFontMetricsF(m_painter.font()).horizontalAdvance(label);
    const double left = std::clamp(x - width / 2, 0.0, std::max(0.0, m_layout.size().width() - width));
    return {left, top, width, 14};
}

// Captions of vertical axes run along the axis, read from below for the left
// axis and from above for the right one.
void AxisPainter::paintCaption(const PlotAxis& axis)
{
    const QRectF band = m_layout.axisBand(axis.side);
    m_painter.setFont(pixelFont(12));
    m_painter.save();
    QRectF box(0, 0, horizontal(axis.side) ? band.width() : band.height(), 16);
    switch (axis.side) {
    case AxisSide::Bottom:
        m_painter.translate(band.left(), band.bottom() - 18);
        break;
    case AxisSide::Top:
        m_painter.translate(band.left(), band.top() + 2);
        break;
    case AxisSide::Left:
        m_painter.translate(band.left() + 2, band.bottom());
        m_painter.rotate(-90);
        break;
    case AxisSide::Right:
        m_painter.translate(band.right() - 2, band.top());
        m_painter.rotate(90);
        break;
    }
    // What the time labels leave out, at the far end of the axis, where a
    // reader looks for it; the centred caption keeps clear of it.
    const QString offset = elided(m_painter, axis.offsetText, box.width() / 3);
    const double offsetWidth = offset.isEmpty() ? 0.0 : QFontMetricsF(m_painter.font()).horizontalAdvance(offset);
    const double captionRoom = box.width() - 2 * (offsetWidth + (offset.isEmpty() ? 0.0 : captionGap));
    paintText(box, Qt::AlignCenter, elided(m_painter, caption(axis), captionRoom), axis);
    paintText(box, Qt::AlignRight | Qt::AlignVCenter, offset, axis);
    m_painter.restore();
}

void AxisPainter::paintText(const QRectF& box, int flags, const QString& text, const PlotAxis& axis)
{
    // Labels wider than their box stay whole; the tick counts keep them apart.
    flags |= Qt::TextDontClip;
    paintShadowedText(m_painter, box, flags, text, axis.axis->labelColor.get(), axis.axis->labelShadowColor.get());
}

} // namespace Orv::Chart
