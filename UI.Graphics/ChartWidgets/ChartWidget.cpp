#include "ChartWidget.h"

#include "AxisRanges.h"
#include "FrameCache_p.h"
#include "HoverText.h"

#include "KelChartVariable.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace Orv::Chart {

namespace {

// One wheel notch (120 eighths of a degree) shrinks the ranges to this share;
// a notch back widens them by its inverse, so that in and out cancel.
constexpr double zoomPerNotch = 0.8;
// Smaller drags are clicks.
constexpr double dragThreshold = 3;
// Wheel notches closer together than this are one step of the history.
constexpr qint64 wheelGestureMs = 700;
// The wheel and held keys give no end of their gesture: it ends when they rest this long.
constexpr int settleMs = 150;
// An arrow key moves the content by this share of the plot.
constexpr double keyPanShare = 0.1;
// Shift with Left or Right moves the point cursor by this many points.
constexpr long bigStep = 10;
constexpr double markerRadius = 4;

const QColor bandColour(40, 80, 160);
const QColor crosshairColour(90, 90, 90, 160);

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

// Keys that pan or zoom, and are held to go on doing so; Left and Right move
// the point cursor instead while there is one.
bool navigates(int key, bool onPoint)
{
    switch (key) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        return !onPoint;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Plus:
    case Qt::Key_Equal:
    case Qt::Key_Minus:
        return true;
    default:
        return false;
    }
}

} // namespace

ChartWidget::ChartWidget(QWidget* parent)
    : QWidget(parent)
    , m_picture(std::make_unique<KeptFrame>())
    , m_cacheInputs(std::make_unique<CacheInputs>())
    , m_settle(new QTimer(this))
{
    m_settle->setSingleShot(true);
    m_settle->setInterval(settleMs);
    connect(m_settle, &QTimer::timeout, this, &ChartWidget::settle);
    setMouseTracking(true);
    setMinimumSize(Orv::Chart::ChartLayout::minimumWidth, Orv::Chart::ChartLayout::minimumHeight);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

ChartWidget::~ChartWidget() = default;

void ChartWidget::setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs)
{
    m_pressRanges.reset();
    m_drag = Drag::None;
    m_settle->stop();
    m_frames.reset();
    *m_cacheInputs = CacheInputs();
    m_cursor = {};
    m_hover.clear();
    m_readOut.clear();
    if (chart != nullptr && pairs.exist()) {
        m_frames = std::make_unique<ChartFrames>(*chart, pairs);
        *m_cacheInputs = CacheInputs(*chart);
        m_frames->setLocale(locale());
        m_history.reset(ViewState::of(pairs));
    } else {
        m_history.reset(ViewState());
    }
    rescale();
    update();
    Q_EMIT historyChanged();
    Q_EMIT pointCursorChanged();
}

void ChartWidget::reload()
{
    if (!m_frames)
        return;
    CacheInputs inputs(m_frames->chart());
    if (inputs == *m_cacheInputs) {
        rescale();
    } else {
        m_frames->reload();
        // The unit update writes the axes' unit labels: the record is taken after it.
        *m_cacheInputs = CacheInputs(m_frames->chart());
        frameChanged();
    }
    setPointCursor(m_cursor.series, m_cursor.index);
    refreshHover();
    update();
}

void ChartWidget::showLive(std::vector<const KelChartLiveSeries*> series)
{
    if (!m_frames)
        return;
    m_frames->showLive(std::move(series));
    m_frames->rescale(size());
    frameChanged();
    setPointCursor(m_cursor.series, m_cursor.index);
    refreshHover();
    update();
}

void ChartWidget::liveAppended()
{
    if (!m_frames || !m_frames->live())
        return;
    // A stream moves the picture as a drag does: plain frames while items
    // arrive, the settled one once they stop.
    settleSoon();
    m_frames->liveAppended();
    frameChanged();
    setPointCursor(m_cursor.series, m_cursor.index);
    refreshHover();
    update();
}

void ChartWidget::rescale()
{
    if (m_frames)
        m_frames->rescale(size());
    frameChanged();
}

// Every change of the frame passes here: a kept picture of an older frame
// would show a chart that is no longer there.
void ChartWidget::frameChanged()
{
    m_picture->invalidate();
}

const QImage& ChartWidget::chartPicture()
{
    return m_picture->image(size(), devicePixelRatioF(), [this](QPainter& painter) { m_frames->paint(painter); });
}

void ChartWidget::beginInteraction()
{
    if (!m_frames || m_frames->interactive())
        return;
    m_frames->setInteractive(true);
    frameChanged();
}

void ChartWidget::settleSoon()
{
    beginInteraction();
    m_settle->start();
}

// The gesture ended: the settled frame replaces the last interactive one.
void ChartWidget::settle()
{
    m_settle->stop();
    if (!m_frames || !m_frames->interactive())
        return;
    m_frames->setInteractive(false);
    frameChanged();
    update();
}

void ChartWidget::rangesWritten()
{
    rescale();
    refreshHover();
    update();
    Q_EMIT rangesChanged();
}

void ChartWidget::viewChosen()
{
    m_history.push(ViewState::of(m_frames->pairs()));
    Q_EMIT historyChanged();
}

void ChartWidget::showView(const ViewState& state)
{
    if (!m_frames)
        return;
    state.applyTo(m_frames->pairs());
    rangesWritten();
    Q_EMIT historyChanged();
}

void ChartWidget::home()
{
    if (!m_frames)
        return;
    showView(m_history.home());
    viewChosen();
}

void ChartWidget::back()
{
    showView(m_history.back());
}

void ChartWidget::forward()
{
    showView(m_history.forward());
}

void ChartWidget::zoomIn()
{
    if (!m_frames)
        return;
    zoomAt(m_frames->layout().plot().center(), zoomPerNotch);
    viewChosen();
}

void ChartWidget::zoomOut()
{
    if (!m_frames)
        return;
    zoomAt(m_frames->layout().plot().center(), 1.0 / zoomPerNotch);
    viewChosen();
}

void ChartWidget::zoomAt(QPointF centre, double factor)
{
    AxisRanges(m_frames->pipeline(), m_frames->pairs(), m_frames->layout()).zoom(centre, factor);
    rangesWritten();
}

void ChartWidget::fitY()
{
    if (!m_frames)
        return;
    AxisRanges(m_frames->pipeline(), m_frames->pairs(), m_frames->layout()).fitVertical(*m_frames);
    rangesWritten();
    viewChosen();
}

void ChartWidget::panBy(QPointF pixels)
{
    if (!m_frames)
        return;
    const QPointF centre = m_frames->layout().plot().center();
    AxisRanges(m_frames->pipeline(), m_frames->pairs(), m_frames->layout()).pan(centre, centre + pixels);
    rangesWritten();
    viewChosen();
}

QImage ChartWidget::image() const
{
    QImage image(size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    if (m_frames) {
        QPainter painter(&image);
        m_frames->paint(painter);
    }
    return image;
}

QImage ChartWidget::keptFrame() const
{
    return m_picture->image();
}

QString ChartWidget::valuesText() const
{
    QString point = pointCursorText();
    if (!point.isEmpty())
        return point;
    return (QStringList(m_readOut) + m_hover).join(QLatin1Char('\n')).trimmed();
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
    if (!m_frames) {
        painter.fillRect(rect(), Qt::white);
        painter.drawText(rect(), Qt::AlignCenter, tr("This chart has no axes to draw."));
        return;
    }
    painter.drawImage(QPointF(), chartPicture());
    paintFocus(painter);
    paintBand(painter);
    paintCrosshair(painter);
    paintMarkers(painter);
    paintHover(painter);
}

void ChartWidget::resizeEvent(QResizeEvent*)
{
    rescale();
    refreshHover();
}

void ChartWidget::wheelEvent(QWheelEvent* event)
{
    const int eighths = event->angleDelta().y();
    if (!m_frames || eighths == 0)
        return;
    const QPointF at = event->position();
    const double factor = std::pow(zoomPerNotch, eighths / 120.0);
    const AxisRanges ranges(m_frames->pipeline(), m_frames->pairs(), m_frames->layout());
    if (m_frames->layout().plot().contains(at)) {
        ranges.zoom(at, factor);
    } else if (const std::size_t span = ranges.spanAt(at); span != AxisRanges::npos) {
        ranges.zoomAxis(span, at, factor);
    } else {
        // Over the title or the legend the wheel has no point to zoom about.
        event->ignore();
        return;
    }
    settleSoon();
    rangesWritten();
    const bool sameGesture = m_wheelClock.isValid() && m_wheelClock.elapsed() < wheelGestureMs;
    if (sameGesture)
        m_history.amend(ViewState::of(m_frames->pairs()));
    else
        m_history.push(ViewState::of(m_frames->pairs()));
    m_wheelClock.start();
    Q_EMIT historyChanged();
    event->accept();
}

void ChartWidget::mousePressEvent(QMouseEvent* event)
{
    if (!m_frames)
        return;
    const QPointF at = positionOf(event);
    if (event->button() == Qt::LeftButton && !(event->modifiers() & Qt::ShiftModifier) && toggleLegendEntry(at))
        return;
    const bool band = event->button() == Qt::RightButton ||
                      (event->button() == Qt::LeftButton && (event->modifiers() & Qt::ShiftModifier));
    m_drag = band ? Drag::Band : event->button() == Qt::LeftButton ? Drag::Pan : Drag::None;
    m_pressed = m_current = at;
    m_pressRanges = std::make_unique<AxisRanges>(m_frames->pipeline(), m_frames->pairs(), m_frames->layout());
    // A drag that starts on an axis's labels moves that axis alone.
    m_dragSpan = m_frames->layout().plot().contains(at) ? AxisRanges::npos : m_pressRanges->spanAt(at);
}

void ChartWidget::mouseMoveEvent(QMouseEvent* event)
{
    m_current = positionOf(event);
    if (m_drag == Drag::Pan && m_pressRanges) {
        beginInteraction();
        m_pressRanges->pan(m_pressed, m_current, m_dragSpan);
        rangesWritten();
    } else if (m_drag == Drag::Band) {
        update();
    } else {
        updateHover(m_current);
    }
}

void ChartWidget::mouseReleaseEvent(QMouseEvent* event)
{
    m_current = positionOf(event);
    const QRectF band = QRectF(m_pressed, m_current).normalized();
    const bool moved = QLineF(m_pressed, m_current).length() > dragThreshold;
    if (m_drag == Drag::Band && m_pressRanges && band.width() > dragThreshold && band.height() > dragThreshold) {
        m_pressRanges->zoomTo(band);
        rangesWritten();
        viewChosen();
    } else if (m_drag == Drag::Pan && moved) {
        viewChosen();
    }
    m_drag = Drag::None;
    m_pressRanges.reset();
    settle();
    updateHover(m_current);
}

void ChartWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    // The first click of a double click on the legend already toggled its entry.
    if (m_frames && m_frames->layout().plot().contains(positionOf(event)))
        home();
}

void ChartWidget::leaveEvent(QEvent*)
{
    clearHover();
}

void ChartWidget::clearHover()
{
    m_hovering = false;
    m_hover.clear();
    m_readOut.clear();
    m_hits.clear();
    update();
    Q_EMIT hoverChanged(QString());
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
    if (event->type() == QEvent::LocaleChange) {
        if (m_frames)
            m_frames->setLocale(locale());
        frameChanged();
        refreshHover();
        update();
    }
}

// A legend entry under the pixel is hidden or shown through its "enabled",
// so that the choice is saved with the chart.
bool ChartWidget::toggleLegendEntry(QPointF pixel)
{
    const ChartLayout& layout = m_frames->layout();
    const std::vector<const KelChartVariable*>& entries = layout.legendVariables();
    const std::size_t shown = std::min(layout.legendGrid().shown, entries.size());
    for (std::size_t entry = 0; entry < shown; ++entry) {
        if (!layout.legendCell(entry).contains(pixel))
            continue;
        const QString name = entries[entry]->name();
        auto* variable = dynamic_cast<KelChartVariable*>(m_frames->chart().variables.at(name));
        if (variable == nullptr)
            return false;
        const bool show = !variable->enabled.get();
        variable->enabled.set(show);
        reload();
        Q_EMIT seriesToggled(name, show);
        return true;
    }
    return false;
}

void ChartWidget::keyPressEvent(QKeyEvent* event)
{
    if (!m_frames)
        return QWidget::keyPressEvent(event);
    const QRectF plot = m_frames->layout().plot();
    const double dx = plot.width() * keyPanShare;
    const double dy = plot.height() * keyPanShare;
    // With the point cursor on a series Left and Right move it (Shift: by ten).
    const bool onPoint = m_cursor.valid();
    const long step = (event->modifiers() & Qt::ShiftModifier) ? bigStep : 1;
    if (navigates(event->key(), onPoint))
        settleSoon();
    switch (event->key()) {
    case Qt::Key_Left:
        return m_cursor.valid() ? moveCursorAlong(-step) : panBy({dx, 0});
    case Qt::Key_Right:
        return m_cursor.valid() ? moveCursorAlong(step) : panBy({-dx, 0});
    case Qt::Key_Up:
        return panBy({0, dy});
    case Qt::Key_Down:
        return panBy({0, -dy});
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return zoomIn();
    case Qt::Key_Minus:
        return zoomOut();
    case Qt::Key_Home:
        return (event->modifiers() & Qt::ControlModifier) && onPoint ? setPointCursor(m_cursor.series, 0) : home();
    case Qt::Key_End:
        if (onPoint)
            return setPointCursor(m_cursor.series, PointCursor::npos - 1);
        break;
    case Qt::Key_Escape:
        if (m_drag == Drag::Band) {
            m_drag = Drag::None;
            m_pressRanges.reset();
            return update();
        }
        if (m_cursor.valid())
            return setPointCursor(PointCursor::npos, 0);
        break;
    default:
        break;
    }
    QWidget::keyPressEvent(event);
}

// Tab walks through the series with the point cursor, then on to the next widget.
bool ChartWidget::focusNextPrevChild(bool next)
{
    if (m_frames && moveCursorToSeries(next))
        return true;
    if (m_cursor.valid())
        setPointCursor(PointCursor::npos, 0);
    return QWidget::focusNextPrevChild(next);
}

std::vector<std::size_t> ChartWidget::drawnSeries() const
{
    std::vector<std::size_t> series;
    const KelChartPerVariableScaling& scaling = m_frames->pipeline().scaling();
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
    const QPointF from = m_cursor.valid() ? HoverText::pointPixel(*m_frames, m_cursor.series, m_cursor.index)
                                          : m_frames->layout().plot().center();
    const AxisRanges ranges(m_frames->pipeline(), m_frames->pairs(), m_frames->layout());
    const KelChartVariableCache& cache = m_frames->pipeline().scaling().variable(series);
    for (const AxisSpan& span : ranges.spans()) {
        if (span.name != cache.variable().xAxis.get() || !m_frames->view(series).ordered())
            continue;
        const std::size_t k = cache.nearestIndex(span.valueAt(finite(from) ? from : m_frames->layout().plot().center()));
        if (k != KelChartVariableCache::npos)
            return k;
    }
    return 0;
}

void ChartWidget::setPointCursor(std::size_t series, std::size_t index)
{
    PointCursor cursor;
    if (m_frames && series != PointCursor::npos) {
        const std::vector<std::size_t> drawn = drawnSeries();
        if (std::find(drawn.begin(), drawn.end(), series) != drawn.end()) {
            const std::size_t count = m_frames->view(series).data().size;
            cursor = {series, std::min(index, count - 1)};
        }
    }
    const bool moved = !(cursor == m_cursor);
    m_cursor = cursor;
    // The keyboard took over from the mouse: the point cursor's box, not the hover's.
    if (moved && cursor.valid())
        clearHover();
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
    const QRectF plot = m_frames->layout().plot();
    const QPointF at = HoverText::pointPixel(*m_frames, m_cursor.series, m_cursor.index);
    if (!std::isfinite(at.x()) || (at.x() >= plot.left() && at.x() <= plot.right()))
        return;
    AxisRanges(m_frames->pipeline(), m_frames->pairs(), m_frames->layout())
        .pan(QPointF(at.x(), plot.center().y()), plot.center());
    rangesWritten();
}

QString ChartWidget::pointCursorText() const
{
    if (!m_frames || !m_cursor.valid())
        return {};
    return HoverText::pointText(*m_frames, m_cursor.series, m_cursor.index, locale());
}

void ChartWidget::updateHover(QPointF pixel)
{
    m_hovering = true;
    m_hoverAt = pixel;
    if (!m_frames)
        return;
    const HoverText::Hover hover = HoverText::at(*m_frames, pixel, locale());
    m_readOut = hover.readOut;
    m_hits = hover.hits;
    m_hover.clear();
    for (const HoverText::Hit& hit : m_hits)
        m_hover << hit.line;
    update();
    Q_EMIT hoverChanged((QStringList(m_readOut) + m_hover).join(QStringLiteral("; ")));
}

// After the frame changed under a still cursor: what it points at now.
void ChartWidget::refreshHover()
{
    if (m_hovering && m_drag == Drag::None)
        updateHover(m_hoverAt);
}

void ChartWidget::paintBand(QPainter& painter) const
{
    if (m_drag != Drag::Band)
        return;
    painter.setPen(QPen(bandColour, 1, Qt::DashLine));
    painter.setBrush(QColor(bandColour.red(), bandColour.green(), bandColour.blue(), 40));
    painter.drawRect(QRectF(m_pressed, m_current).normalized());
}

void ChartWidget::paintCrosshair(QPainter& painter) const
{
    const QRectF plot = m_frames->layout().plot();
    if (m_drag != Drag::None || m_readOut.isEmpty() || !plot.contains(m_hoverAt))
        return;
    painter.setPen(QPen(crosshairColour, 1, Qt::DashLine));
    painter.drawLine(QPointF(m_hoverAt.x(), plot.top()), QPointF(m_hoverAt.x(), plot.bottom()));
    painter.drawLine(QPointF(plot.left(), m_hoverAt.y()), QPointF(plot.right(), m_hoverAt.y()));
}

void ChartWidget::paintMarkers(QPainter& painter) const
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(m_frames->layout().plot().adjusted(-markerRadius, -markerRadius, markerRadius, markerRadius));
    if (m_drag == Drag::None) {
        painter.setPen(QPen(Qt::black, 1.5));
        painter.setBrush(QColor(255, 255, 255, 200));
        for (const HoverText::Hit& hit : m_hits)
            if (finite(hit.pixel))
                painter.drawEllipse(hit.pixel, markerRadius, markerRadius);
    }
    if (m_cursor.valid()) {
        const QPointF at = HoverText::pointPixel(*m_frames, m_cursor.series, m_cursor.index);
        if (finite(at)) {
            painter.setPen(QPen(palette().color(QPalette::Highlight), 2.5));
            painter.setBrush(Qt::NoBrush);
            painter.drawEllipse(at, markerRadius + 2, markerRadius + 2);
        }
    }
    painter.restore();
}

// A box beside the cursor (or the point cursor), kept inside the widget.
void ChartWidget::paintHover(QPainter& painter) const
{
    QStringList lines;
    QPointF at;
    if (m_drag == Drag::None && !m_readOut.isEmpty()) {
        lines = QStringList(m_readOut) + m_hover;
        at = m_hoverAt;
    } else if (m_cursor.valid()) {
        lines << pointCursorText();
        at = HoverText::pointPixel(*m_frames, m_cursor.series, m_cursor.index);
    }
    if (lines.isEmpty() || !finite(at))
        return;
    const QString text = lines.join(QLatin1Char('\n'));
    QRectF box = painter.fontMetrics().boundingRect(QRect(0, 0, width(), height()), Qt::AlignLeft, text);
    box.adjust(-6, -4, 6, 4);
    box.moveTopLeft(at + QPointF(14, 14));
    if (box.right() > width())
        box.moveRight(at.x() - 14);
    if (box.left() < 0)
        box.moveLeft(std::max(0.0, width() - box.width()));
    if (box.bottom() > height())
        box.moveBottom(at.y() - 14);
    if (box.top() < 0)
        box.moveTop(0);
    painter.setPen(QColor(90, 90, 90));
    painter.setBrush(QColor(255, 255, 240, 235));
    painter.drawRect(box);
    painter.setPen(Qt::black);
    painter.drawText(box.adjusted(6, 4, -6, -4), Qt::AlignLeft, text);
}

// Keyboard focus shows as a frame around the plot.
void ChartWidget::paintFocus(QPainter& painter) const
{
    if (!hasFocus())
        return;
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(m_frames->layout().plot().adjusted(-3, -3, 3, 3));
}

} // namespace Orv::Chart
