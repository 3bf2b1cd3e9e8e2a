#include "ChartWidget.h"

#include "AxisRanges.h"
#include "HoverText.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include <cmath>

namespace Orv::Chart {

namespace {

// One wheel notch (120 eighths of a degree) shrinks the ranges to this share.
constexpr double zoomPerNotch = 0.8;
// Smaller drags are clicks.
constexpr double bandThreshold = 3;

QPointF positionOf(const QMouseEvent* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->position();
#else
    return event->localPos();
#endif
}

} // namespace

ChartWidget::ChartWidget(QWidget* parent)
    : QWidget(parent)
{
    setMouseTracking(true);
    setMinimumSize(Orv::Chart::ChartLayout::minimumWidth, Orv::Chart::ChartLayout::minimumHeight);
    setFocusPolicy(Qt::WheelFocus);
}

ChartWidget::~ChartWidget() = default;

void ChartWidget::setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs)
{
    m_pressRanges.reset();
    m_drag = Drag::None;
    m_frames.reset();
    if (chart != nullptr && pairs.exist()) {
        m_frames = std::make_unique<ChartFrames>(*chart, pairs);
        m_frames->rescale(size());
    }
    update();
}

void ChartWidget::reload()
{
    if (!m_frames)
        return;
    m_frames->reload();
    m_frames->rescale(size());
    update();
}

void ChartWidget::rangesWritten()
{
    m_frames->rescale(size());
    update();
    Q_EMIT rangesChanged();
}

void ChartWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (!m_frames) {
        painter.fillRect(rect(), Qt::white);
        painter.drawText(rect(), Qt::AlignCenter, tr("This chart has no axes to draw."));
        return;
    }
    m_frames->paint(painter);
    paintBand(painter);
    paintHover(painter);
}

void ChartWidget::resizeEvent(QResizeEvent*)
{
    if (m_frames)
        m_frames->rescale(size());
}

void ChartWidget::wheelEvent(QWheelEvent* event)
{
    const int eighths = event->angleDelta().y();
    if (!m_frames || eighths == 0)
        return;
    AxisRanges(m_frames->pipeline(), m_frames->pairs(), m_frames->layout())
        .zoom(event->position(), std::pow(zoomPerNotch, eighths / 120.0));
    rangesWritten();
    event->accept();
}

void ChartWidget::mousePressEvent(QMouseEvent* event)
{
    if (!m_frames)
        return;
    const bool band = event->button() == Qt::RightButton ||
                      (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ShiftModifier));
    m_drag = band ? Drag::Band : event->button() == Qt::LeftButton ? Drag::Pan : Drag::None;
    m_pressed = m_current = positionOf(event);
    m_pressRanges = std::make_unique<AxisRanges>(m_frames->pipeline(), m_frames->pairs(), m_frames->layout());
}

void ChartWidget::mouseMoveEvent(QMouseEvent* event)
{
    m_current = positionOf(event);
    if (m_drag == Drag::Pan && m_pressRanges) {
        m_pressRanges->pan(m_pressed, m_current);
        rangesWritten();
    } else if (m_drag == Drag::Band) {
        update();
    } else {
        updateHover(positionOf(event));
    }
}

void ChartWidget::mouseReleaseEvent(QMouseEvent* event)
{
    m_current = positionOf(event);
    const QRectF band = QRectF(m_pressed, m_current).normalized();
    if (m_drag == Drag::Band && m_pressRanges && band.width() > bandThreshold && band.height() > bandThreshold) {
        m_pressRanges->zoomTo(band);
        rangesWritten();
    }
    m_drag = Drag::None;
    m_pressRanges.reset();
    update();
}

void ChartWidget::mouseDoubleClickEvent(QMouseEvent*)
{
    if (!m_frames)
        return;
    AxisRanges::autoScaleAll(m_frames->pairs());
    rangesWritten();
}

void ChartWidget::leaveEvent(QEvent*)
{
    m_hover.clear();
    update();
    Q_EMIT hoverChanged(QString());
}

void ChartWidget::updateHover(QPointF pixel)
{
    if (!m_frames)
        return;
    m_hover = HoverText::lines(*m_frames, pixel);
    m_hoverAt = pixel;
    update();
    Q_EMIT hoverChanged(m_hover.join(QStringLiteral("; ")));
}

void ChartWidget::paintBand(QPainter& painter) const
{
    if (m_drag != Drag::Band)
        return;
    painter.setPen(QPen(QColor(40, 80, 160), 1, Qt::DashLine));
    painter.setBrush(QColor(40, 80, 160, 40));
    painter.drawRect(QRectF(m_pressed, m_current).normalized());
}

// A box beside the cursor, kept inside the widget.
void ChartWidget::paintHover(QPainter& painter) const
{
    if (m_hover.isEmpty() || m_drag != Drag::None)
        return;
    const QString text = m_hover.join(QLatin1Char('\n'));
    QRectF box = painter.fontMetrics().boundingRect(QRect(0, 0, width(), height()), Qt::AlignLeft, text);
    box.adjust(-6, -4, 6, 4);
    box.moveTopLeft(m_hoverAt + QPointF(14, 14));
    if (box.right() > width())
        box.moveRight(m_hoverAt.x() - 14);
    if (box.bottom() > height())
        box.moveBottom(m_hoverAt.y() - 14);
    painter.setPen(QColor(90, 90, 90));
    painter.setBrush(QColor(255, 255, 240, 235));
    painter.drawRect(box);
    painter.setPen(Qt::black);
    painter.drawText(box.adjusted(6, 4, -6, -4), Qt::AlignLeft, text);
}

} // namespace Orv::Chart
