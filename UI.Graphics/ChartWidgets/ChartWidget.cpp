#include "ChartWidget.h"

#include "AxisRanges.h"
#include "ChartOverlays.h"
#include "HoverText.h"

#include "KelChartVariable.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPaintEngine>
#include <QPainter>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace Orv::Chart {

namespace {

// Shift with Left or Right moves the point cursor by this many points.
constexpr long bigStep = 10;

QPointF positionOf(const QMouseEvent* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->position();
#else
    return event->localPos();
#endif
}

bool finite(QPointF point)
{
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

} // namespace

ChartWidget::ChartWidget(QWidget* parent)
    : QWidget(parent)
    , m_nav(new ChartNavigator([this] { return size(); }, this))
{
    m_nav->setLocale(locale());
    connect(m_nav, &ChartNavigator::changed, this, qOverload<>(&QWidget::update));
    connect(m_nav, &ChartNavigator::rangesChanged, this, &ChartWidget::rangesChanged);
    connect(m_nav, &ChartNavigator::hoverChanged, this, &ChartWidget::hoverChanged);
    connect(m_nav, &ChartNavigator::historyChanged, this, &ChartWidget::historyChanged);
    connect(m_nav, &ChartNavigator::seriesToggled, this, &ChartWidget::seriesToggled);
    // Series may have gone or lost points: the point cursor stays on one that is drawn.
    connect(m_nav, &ChartNavigator::reloaded, this, [this] { setPointCursor(m_cursor.series, m_cursor.index); });
    setMouseTracking(true);
    setMinimumSize(Orv::Chart::ChartLayout::minimumWidth, Orv::Chart::ChartLayout::minimumHeight);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

ChartWidget::~ChartWidget() = default;

void ChartWidget::setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs)
{
    m_cursor = {};
    m_nav->setChart(chart, pairs);
    Q_EMIT pointCursorChanged();
}

void ChartWidget::reload()
{
    m_nav->reload();
}

void ChartWidget::showLive(std::vector<const KelChartLiveSeries*> series)
{
    m_nav->showLive(std::move(series));
}

void ChartWidget::liveAppended()
{
    m_nav->liveAppended();
}

void ChartWidget::home()
{
    m_nav->home();
}

void ChartWidget::back()
{
    m_nav->back();
}

void ChartWidget::forward()
{
    m_nav->forward();
}

void ChartWidget::zoomIn()
{
    m_nav->zoomIn();
}

void ChartWidget::zoomOut()
{
    m_nav->zoomOut();
}

void ChartWidget::fitY()
{
    m_nav->fitY();
}

void ChartWidget::panBy(QPointF pixels)
{
    m_nav->panBy(pixels);
}

QImage ChartWidget::image() const
{
    QImage image(size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    if (m_nav->frames() != nullptr) {
        QPainter painter(&image);
        m_nav->frames()->paint(painter);
    }
    return image;
}

QImage ChartWidget::keptFrame() const
{
    return m_nav->keptPicture();
}

QString ChartWidget::valuesText() const
{
    QString point = pointCursorText();
    if (!point.isEmpty())
        return point;
    return (QStringList(readOut()) + hoverLines()).join(QLatin1Char('\n')).trimmed();
}

void ChartWidget::copyValues() const
{
    const QString text = valuesText();
    if (!text.isEmpty())
        QApplication::clipboard()->setText(text);
}

void ChartWidget::copyImage() const
{
    QApplication::clipboard()->setImage(image());
}

void ChartWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_nav->frames() == nullptr) {
        painter.fillRect(rect(), Qt::white);
        painter.drawText(rect(), Qt::AlignCenter, tr("This chart has no axes to draw."));
        return;
    }
    // The ratio of the device painted on, not the widget's: render() into a 2x image redirects
    // the painter there and must get a 2x picture.
    const QPaintDevice* target = painter.paintEngine() ? painter.paintEngine()->paintDevice() : this;
    painter.drawImage(QPointF(), m_nav->picture(target->devicePixelRatioF()));
    paintFocus(painter);
    const QRectF plot = m_nav->frames()->layout().plot();
    const bool still = m_nav->drag() == ChartNavigator::Drag::None;
    if (m_nav->drag() == ChartNavigator::Drag::Band)
        ChartOverlays::paintBand(painter, m_nav->band());
    if (still && !readOut().isEmpty() && plot.contains(m_nav->hoverAt()))
        ChartOverlays::paintCrosshair(painter, plot, m_nav->hoverAt());
    if (still)
        ChartOverlays::paintHits(painter, plot, m_nav->hits());
    paintCursorRing(painter);
    paintHover(painter);
}

void ChartWidget::resizeEvent(QResizeEvent*)
{
    m_nav->resized();
}

void ChartWidget::wheelEvent(QWheelEvent* event)
{
    if (m_nav->wheel(event->position(), event->angleDelta().y()))
        event->accept();
    else
        event->ignore();
}

void ChartWidget::mousePressEvent(QMouseEvent* event)
{
    m_nav->press(positionOf(event), event->button(), event->modifiers());
}

void ChartWidget::mouseMoveEvent(QMouseEvent* event)
{
    m_nav->move(positionOf(event));
}

void ChartWidget::mouseReleaseEvent(QMouseEvent* event)
{
    m_nav->release(positionOf(event));
}

void ChartWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    m_nav->doubleClick(positionOf(event));
}

void ChartWidget::leaveEvent(QEvent*)
{
    m_nav->clearHover();
}

void ChartWidget::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void ChartWidget::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

void ChartWidget::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LocaleChange)
        m_nav->setLocale(locale());
}

void ChartWidget::keyPressEvent(QKeyEvent* event)
{
    if (pointCursorKey(*event) || m_nav->navigateByKey(event->key()))
        return;
    if (event->key() == Qt::Key_Escape && m_cursor.valid())
        return setPointCursor(PointCursor::npos, 0);
    QWidget::keyPressEvent(event);
}

// With the point cursor on a series, Left and Right move it (Shift: by ten), Ctrl+Home and End
// put it on the first and the last point.
bool ChartWidget::pointCursorKey(const QKeyEvent& event)
{
    if (!m_cursor.valid())
        return false;
    const long step = (event.modifiers() & Qt::ShiftModifier) ? bigStep : 1;
    switch (event.key()) {
    case Qt::Key_Left:
        moveCursorAlong(-step);
        return true;
    case Qt::Key_Right:
        moveCursorAlong(step);
        return true;
    case Qt::Key_Home:
        if (!(event.modifiers() & Qt::ControlModifier))
            return false;
        setPointCursor(m_cursor.series, 0);
        return true;
    case Qt::Key_End:
        setPointCursor(m_cursor.series, PointCursor::npos - 1);
        return true;
    default:
        return false;
    }
}

// Tab walks through the series with the point cursor, then on to the next widget.
bool ChartWidget::focusNextPrevChild(bool next)
{
    if (m_nav->frames() != nullptr && moveCursorToSeries(next))
        return true;
    if (m_cursor.valid())
        setPointCursor(PointCursor::npos, 0);
    return QWidget::focusNextPrevChild(next);
}

std::vector<std::size_t> ChartWidget::drawnSeries() const
{
    std::vector<std::size_t> series;
    const KelChartPerVariableScaling& scaling = m_nav->frames()->pipeline().scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i)
        if (scaling.valid(i) && !scaling.variable(i).x().empty())
            series.push_back(i);
    return series;
}

bool ChartWidget::moveCursorToSeries(bool next)
{
    const std::vector<std::size_t> series = drawnSeries();
    if (series.empty())
        return false;
    auto at = std::find(series.begin(), series.end(), m_cursor.series);
    if (at == series.end())
        at = next ? series.begin() : series.end() - 1;
    else if (next ? at + 1 == series.end() : at == series.begin())
        return false;
    else
        at += next ? 1 : -1;
    setPointCursor(*at, nearestOnSeries(*at));
    return true;
}

// The point of a series nearest along x to the cursor's point, or to the plot's centre.
std::size_t ChartWidget::nearestOnSeries(std::size_t series) const
{
    const ChartFrames& frames = *m_nav->frames();
    const QPointF from = m_cursor.valid() ? HoverText::pointPixel(frames, m_cursor.series, m_cursor.index)
                                          : frames.layout().plot().center();
    const AxisRanges ranges(frames.pipeline(), frames.pairs(), frames.layout());
    const KelChartVariableCache& cache = frames.pipeline().scaling().variable(series);
    for (const AxisSpan& span : ranges.spans()) {
        if (span.name != cache.variable().xAxis.get() || !frames.view(series).ordered())
            continue;
        const std::size_t k = cache.nearestIndex(span.valueAt(finite(from) ? from : frames.layout().plot().center()));
        if (k != KelChartVariableCache::npos)
            return k;
    }
    return 0;
}

void ChartWidget::setPointCursor(std::size_t series, std::size_t index)
{
    PointCursor cursor;
    if (m_nav->frames() != nullptr && series != PointCursor::npos) {
        const std::vector<std::size_t> drawn = drawnSeries();
        if (std::find(drawn.begin(), drawn.end(), series) != drawn.end()) {
            const std::size_t count = m_nav->frames()->view(series).data().size;
            cursor = {series, std::min(index, count - 1)};
        }
    }
    const bool moved = !(cursor == m_cursor);
    m_cursor = cursor;
    // The keyboard took over from the mouse: the point cursor's box, not the hover's.
    if (moved && cursor.valid())
        m_nav->clearHover();
    if (cursor.valid())
        keepCursorInView();
    update();
    if (moved)
        Q_EMIT pointCursorChanged();
}

void ChartWidget::moveCursorAlong(long steps)
{
    const long index = static_cast<long>(m_cursor.index) + steps;
    setPointCursor(m_cursor.series, static_cast<std::size_t>(std::max(0L, index)));
}

// A point cursor that leaves the plot brings the ranges along, centred on it.
void ChartWidget::keepCursorInView()
{
    const QRectF plot = m_nav->frames()->layout().plot();
    const QPointF at = HoverText::pointPixel(*m_nav->frames(), m_cursor.series, m_cursor.index);
    if (!std::isfinite(at.x()) || (at.x() >= plot.left() && at.x() <= plot.right()))
        return;
    m_nav->pan(QPointF(at.x(), plot.center().y()), plot.center());
}

QString ChartWidget::pointCursorText() const
{
    if (m_nav->frames() == nullptr || !m_cursor.valid())
        return {};
    return HoverText::pointText(*m_nav->frames(), m_cursor.series, m_cursor.index, locale());
}

// The point cursor's ring, in the highlight colour, clipped as the hover's rings are.
void ChartWidget::paintCursorRing(QPainter& painter) const
{
    if (!m_cursor.valid())
        return;
    const QPointF at = HoverText::pointPixel(*m_nav->frames(), m_cursor.series, m_cursor.index);
    if (!finite(at))
        return;
    constexpr double radius = ChartOverlays::markerRadius;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(m_nav->frames()->layout().plot().adjusted(-radius, -radius, radius, radius));
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(at, radius + 2, radius + 2);
    painter.restore();
}

// A box beside the cursor (or the point cursor), kept inside the widget.
void ChartWidget::paintHover(QPainter& painter) const
{
    if (m_nav->drag() == ChartNavigator::Drag::None && !readOut().isEmpty()) {
        const QStringList lines = QStringList(readOut()) + hoverLines();
        ChartOverlays::paintBox(painter, size(), m_nav->hoverAt(), lines.join(QLatin1Char('\n')));
    } else if (m_cursor.valid()) {
        const QPointF at = HoverText::pointPixel(*m_nav->frames(), m_cursor.series, m_cursor.index);
        ChartOverlays::paintBox(painter, size(), at, pointCursorText());
    }
}

// Keyboard focus shows as a frame around the plot.
void ChartWidget::paintFocus(QPainter& painter) const
{
    if (!hasFocus())
        return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(m_nav->frames()->layout().plot().adjusted(-3, -3, 3, 3));
}

} // namespace Orv::Chart
