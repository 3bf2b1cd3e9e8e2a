#include "AxisPainter_p.h"

#include "KelChartAxis.h"
#include "KelChartAxisTime.h"
#include "LocaleText.h"
#include "TextStyle_p.h"

#include <QPaintEngine>

#include <algorithm>
#include <cmath>

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

// The centre of a line `width` pixels wide nearest x that makes it cover whole pixels.
double onPixels(double x, double width)
{
    return std::fmod(std::round(width), 2.0) == 1.0 ? std::floor(x) + 0.5 : std::round(x);
}

// A coordinate moved so that a line of whole pixels across it covers whole pixels. It is
// placed on logical pixels first, so that at a whole ratio the picture is the 1x layout times
// the ratio, still crisp; other ratios then move it on device pixels too.
double snapped(double value, double scale, double offset, double ratio, double penWidth)
{
    const double width = penWidth * std::abs(scale);
    double crisp = onPixels(value * scale + offset, width);
    if (ratio != std::round(ratio))
        crisp = onPixels(crisp * ratio, width * ratio) / ratio;
    return (crisp - offset) / scale;
}

// A line along x or y placed on device pixels, so that a 1-pixel axis at x = 73
// is one black column rather than two grey ones. Vector devices (SVG, PDF) and
// rotated painters keep the exact line.
QLineF crisp(const QPainter& painter, const QLineF& line)
{
    const QPaintEngine* engine = painter.paintEngine();
    const QTransform t = painter.combinedTransform();
    if (engine == nullptr || engine->type() != QPaintEngine::Raster || t.type() > QTransform::TxScale)
        return line;
    const double ratio = painter.device()->devicePixelRatioF();
    const double width = painter.pen().widthF();
    if (line.x1() == line.x2()) {
        const double x = snapped(line.x1(), t.m11(), t.dx(), ratio, width);
        return {x, line.y1(), x, line.y2()};
    }
    if (line.y1() == line.y2()) {
        const double y = snapped(line.y1(), t.m22(), t.dy(), ratio, width);
        return {line.x1(), y, line.x2(), y};
    }
    return line;
}

// A power of ten as 10 with a superscript exponent ("10\u2076", "10\u207b\u00b3"), read at a glance where
// "1000000" needs its zeros counted; any other factor as its number.
QString factorNumber(double factor, const QLocale& locale)
{
    static const char16_t superscripts[] = {u'\u2070', u'\u00b9', u'\u00b2', u'\u00b3', u'\u2074',
                                            u'\u2075', u'\u2076', u'\u2077', u'\u2078', u'\u2079'};
    const double exponent = std::round(std::log10(factor));
    if (!(factor > 0) || !std::isfinite(exponent) || std::abs(std::pow(10.0, exponent) - factor) > 1e-12 * factor)
        return LocaleText::number(factor, locale);
    QString text = QStringLiteral("10");
    if (exponent < 0)
        text += QChar(u'\u207b');
    for (const QChar digit : QString::number(std::abs(static_cast<int>(exponent))))
        text += QChar(superscripts[digit.digitValue()]);
    return text;
}

} // namespace

AxisPainter::AxisPainter(QPainter& painter, const ChartLayout& layout, const QLocale& locale)
    : m_painter(painter)
    , m_layout(layout)
    , m_locale(locale)
{
}

double AxisPainter::labelColumn(const QRectF& band)
{
    return band.width() - tickLength - labelGap - captionHeight;
}

QString AxisPainter::caption(const PlotAxis& axis) const
{
    return joined(titleAndUnit(axis), factorText(axis));
}

QString AxisPainter::titleAndUnit(const PlotAxis& axis)
{
    return joined(axis.axis->title.get().trimmed(), unitText(axis));
}

QString AxisPainter::unitText(const PlotAxis& axis)
{
    return axis.unitLabel.isEmpty() ? QString() : QLatin1Char('[') + axis.unitLabel + QLatin1Char(']');
}

QString AxisPainter::factorText(const PlotAxis& axis) const
{
    return axis.factor == 1.0 ? QString()
                              : QStringLiteral("(\u00d7 ") + factorNumber(axis.factor, m_locale) + QLatin1Char(')');
}

QString AxisPainter::joined(const QString& head, const QString& tail)
{
    return head.isEmpty() || tail.isEmpty() ? head + tail : head + QLatin1Char(' ') + tail;
}

// The factor stays whole: without it the labels read a thousand or a million
// times off. The unit stays whole too while it takes at most half the room
// left; the title gives way first.
QString AxisPainter::fittedCaption(const PlotAxis& axis, double room) const
{
    const QFontMetricsF metrics(m_painter.font());
    const QString factor = factorText(axis);
    const double headRoom = room - (factor.isEmpty() ? 0.0 : metrics.horizontalAdvance(QLatin1Char(' ') + factor));
    const QString head = titleAndUnit(axis);
    if (metrics.horizontalAdvance(head) <= headRoom)
        return joined(head, factor);
    const QString unit = unitText(axis);
    const double unitWidth = unit.isEmpty() ? 0.0 : metrics.horizontalAdvance(QLatin1Char(' ') + unit);
    if (unit.isEmpty() || unitWidth > headRoom / 2)
        return joined(elided(m_painter, head, headRoom), factor);
    const QString title = elided(m_painter, axis.axis->title.get().trimmed(), headRoom - unitWidth);
    return joined(joined(title, unit), factor);
}

void AxisPainter::paintGrid(const PlotAxis& axis)
{
    if (axis.side == AxisSide::Top || axis.side == AxisSide::Right)
        return;
    m_painter.setPen(QPen(axis.axis->gridColor.get(), 1.0, Qt::DotLine));
    for (const Tick& tick : axis.ticks.major()) {
        const QPointF from = m_layout.alongAxis(axis.side, tick.position);
        m_painter.drawLine(crisp(m_painter, QLineF(from, across(m_layout.plot(), axis.side, from))));
    }
}

void AxisPainter::paintTicks(const PlotAxis& axis, const std::vector<Tick>& ticks, double length)
{
    const QPen tickPen(axis.axis->tickColor.get(), 1.0);
    for (const Tick& tick : ticks) {
        const QPointF at = m_layout.alongAxis(axis.side, tick.position);
        // Each label sets its own pen.
        m_painter.setPen(tickPen);
        m_painter.drawLine(crisp(m_painter, QLineF(at, at + outward(axis.side) * length)));
        if (tick.labelled)
            paintTickLabel(axis, tick);
    }
}

void AxisPainter::paintAxis(const PlotAxis& axis)
{
    m_painter.setPen(QPen(axis.axis->tickColor.get(), 1.0));
    m_painter.drawLine(crisp(m_painter, QLineF(m_layout.alongAxis(axis.side, 0.0), m_layout.alongAxis(axis.side, 1.0))));
    paintTicks(axis, axis.ticks.major(), tickLength);
    paintTicks(axis, axis.ticks.minor(), minorTickLength);
    paintCaption(axis);
}

void AxisPainter::paintTickLabel(const PlotAxis& axis, const Tick& tick)
{
    const QPointF at = m_layout.alongAxis(axis.side, tick.position) + outward(axis.side) * (tickLength + labelGap);
    m_painter.setFont(tickLabelFont());
    const QString text = tickText(axis, tick.label);
    switch (axis.side) {
    case AxisSide::Bottom:
        return paintText(horizontalLabelBox(text, at.x(), at.y()), Qt::AlignHCenter | Qt::AlignTop, text, axis);
    case AxisSide::Top:
        return paintText(horizontalLabelBox(text, at.x(), at.y() - 14), Qt::AlignHCenter | Qt::AlignBottom, text, axis);
    case AxisSide::Left:
    case AxisSide::Right:
        break;
    }
    // Beside a vertical axis, a label keeps off the caption and the image edge.
    const double room = labelColumn(m_layout.axisBand(axis.side));
    const QString label = elided(m_painter, text, room);
    if (axis.side == AxisSide::Left)
        return paintText(QRectF(at.x() - room, at.y() - 7, room, 14), Qt::AlignRight | Qt::AlignVCenter, label, axis);
    paintText(QRectF(at.x(), at.y() - 7, room, 14), Qt::AlignLeft | Qt::AlignVCenter, label, axis);
}

// Category names are the user's; so are the numbers of a time axis's own
// label format, whose "14.03." is a date and no decimal.
QString AxisPainter::tickText(const PlotAxis& axis, const QString& label) const
{
    if (axis.discrete)
        return label;
    const auto* time = dynamic_cast<const KelChartAxisTime*>(axis.axis);
    if (time && !time->labelFormat.get().trimmed().isEmpty())
        return LocaleText::names(label, m_locale);
    return LocaleText::label(label, m_locale);
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
    // What the labels leave out, at the far end of the axis, where a reader
    // looks for it; the centred caption keeps clear of it.
    const QString offset = elided(m_painter, LocaleText::label(axis.offsetText, m_locale), box.width() / 3);
    const double offsetWidth = offset.isEmpty() ? 0.0 : QFontMetricsF(m_painter.font()).horizontalAdvance(offset);
    const double captionRoom = box.width() - 2 * (offsetWidth + (offset.isEmpty() ? 0.0 : captionGap));
    paintText(box, Qt::AlignCenter, fittedCaption(axis, captionRoom), axis);
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
