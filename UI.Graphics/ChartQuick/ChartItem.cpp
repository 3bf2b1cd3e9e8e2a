#include "ChartItem.h"

#include "AxisRanges.h"
#include "ChartOverlays.h"
#include "ChartSource_p.h"

#include "KelChartAxisPair.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QQuickWindow>
#include <QTouchEvent>
#include <QWheelEvent>
#include <QtQml>

#include <cmath>
#include <vector>

namespace Orv::Chart {

namespace {

template <typename Event>
QPointF positionOf(const Event* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->position();
#else
    return event->localPos();
#endif
}

QPointF positionOf(const QHoverEvent* event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event->position();
#else
    return event->posF();
#endif
}

// A touch point: where it is, and whether it is still down.
struct Touch {
    QPointF at;
    bool down;
};

std::vector<Touch> touchesOf(const QTouchEvent* event)
{
    std::vector<Touch> touches;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    for (const QEventPoint& point : event->points())
        touches.push_back({point.position(), point.state() != QEventPoint::Released});
#else
    for (const QTouchEvent::TouchPoint& point : event->touchPoints())
        touches.push_back({point.pos(), point.state() != Qt::TouchPointReleased});
#endif
    return touches;
}

// The path a source URL names (empty: the sample); false for what is no file here.
bool pathOf(const QUrl& url, QString& path)
{
    if (url.isEmpty() || url.isLocalFile())
        path = url.toLocalFile();
    else if (url.scheme() == QLatin1String("qrc"))
        path = QLatin1Char(':') + url.path();
    else if (url.scheme().isEmpty())
        path = url.path();
    else
        return false;
    return true;
}

} // namespace

ChartItem::ChartItem(QQuickItem* parent)
    : QQuickPaintedItem(parent)
    , m_nav(new ChartNavigator([this] { return hostSize(); }, this))
{
    const auto axis = [this](bool x) {
        ChartAxis::Access access;
        access.find = [this, x] { return firstAxis(x); };
        access.shown = [this, x](double& min, double& max) { return shownRange(firstAxis(x), min, max); };
        access.edited = [this] { m_nav->rangesEdited(); };
        return access;
    };
    m_xAxis = new ChartAxis(axis(true), this);
    m_yAxis = new ChartAxis(axis(false), this);
    connect(m_nav, &ChartNavigator::changed, this, [this] { update(); });
    connect(m_nav, &ChartNavigator::rangesChanged, this, &ChartItem::rangesChanged);
    connect(m_nav, &ChartNavigator::rangesChanged, this, &ChartItem::axesChanged);
    connect(m_nav, &ChartNavigator::reloaded, this, &ChartItem::axesChanged);
    connect(m_nav, &ChartNavigator::hoverChanged, this, &ChartItem::hoverChanged);
    connect(m_nav, &ChartNavigator::historyChanged, this, &ChartItem::historyChanged);
    connect(m_nav, &ChartNavigator::seriesToggled, this, &ChartItem::seriesToggled);
    setAcceptedMouseButtons(Qt::LeftButton | Qt::RightButton);
    setAcceptHoverEvents(true);
    setAcceptTouchEvents(true);
    setActiveFocusOnTab(true);
    setOpaquePainting(true);
    setFillColor(Qt::white);
    setImplicitSize(ChartLayout::minimumWidth, ChartLayout::minimumHeight);
    // The sample until a source names a file.
    m_loaded = ChartSource::load(QString(), &m_error);
    show(m_loaded->chart(), m_loaded->pairs());
}

ChartItem::~ChartItem()
{
    // The navigator's frames point into the chart: they go first.
    m_nav->setChart(nullptr, {});
}

void ChartItem::registerQmlTypes()
{
    qmlRegisterType<ChartItem>("Orv.Chart", 1, 0, "Chart");
    qmlRegisterUncreatableType<ChartAxis>("Orv.Chart", 1, 0, "ChartAxis",
                                          QStringLiteral("an axis belongs to its chart: chart.xAxis, chart.yAxis"));
}

QSize ChartItem::hostSize() const
{
    return {qRound(width()), qRound(height())};
}

qreal ChartItem::pixelRatio() const
{
    return window() != nullptr ? window()->effectiveDevicePixelRatio() : 1.0;
}

void ChartItem::setSource(const QUrl& source)
{
    if (source == m_source && m_loaded)
        return;
    m_source = source;
    Q_EMIT sourceChanged();
    QString path;
    QString error;
    std::unique_ptr<ChartSource> loaded;
    if (!pathOf(source, path))
        error = QStringLiteral("%1: only local files can be shown").arg(source.toString());
    else
        loaded = ChartSource::load(path, &error);
    if (loaded) {
        // The old chart stays until the frames let go of it.
        show(loaded->chart(), loaded->pairs());
        m_loaded = std::move(loaded);
    }
    if (error != m_error) {
        m_error = error;
        Q_EMIT errorStringChanged();
    }
}

void ChartItem::setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs)
{
    show(chart, pairs);
    m_loaded.reset();
}

void ChartItem::show(KelChart* chart, const Orv::Chart::AxisPairs& pairs)
{
    m_nav->setChart(chart, pairs);
    axesChanged();
    Q_EMIT titleChanged();
    Q_EMIT chartChanged();
}

void ChartItem::reload()
{
    m_nav->reload();
}

QString ChartItem::title() const
{
    return frames() != nullptr ? frames()->chart().title.get() : QString();
}

void ChartItem::setTitle(const QString& title)
{
    if (frames() == nullptr || title == this->title())
        return;
    frames()->chart().title.set(title);
    m_nav->reload();
    Q_EMIT titleChanged();
}

KelChartAxis* ChartItem::firstAxis(bool x) const
{
    if (frames() == nullptr)
        return nullptr;
    const KelChartAxisPair* pair = x ? frames()->pairs().x : frames()->pairs().y;
    return pair != nullptr ? pair->first() : nullptr;
}

// The range the axis is drawn with, as real values.
bool ChartItem::shownRange(const KelChartAxis* axis, double& min, double& max) const
{
    if (frames() == nullptr || axis == nullptr)
        return false;
    const AxisRanges ranges(frames()->pipeline(), frames()->pairs(), frames()->layout());
    for (const AxisSpan& span : ranges.spans()) {
        if (span.axis != axis)
            continue;
        min = span.logarithmic ? std::pow(10.0, span.min) : span.min;
        max = span.logarithmic ? std::pow(10.0, span.max) : span.max;
        return true;
    }
    return false;
}

void ChartItem::axesChanged()
{
    Q_EMIT m_xAxis->changed();
    Q_EMIT m_yAxis->changed();
}

void ChartItem::home()
{
    m_nav->home();
}

void ChartItem::back()
{
    m_nav->back();
}

void ChartItem::forward()
{
    m_nav->forward();
}

void ChartItem::zoomIn()
{
    m_nav->zoomIn();
}

void ChartItem::zoomOut()
{
    m_nav->zoomOut();
}

void ChartItem::fitY()
{
    m_nav->fitY();
}

void ChartItem::paint(QPainter* painter)
{
    if (frames() == nullptr) {
        const QRectF area(QPointF(), size());
        painter->fillRect(area, Qt::white);
        painter->drawText(area, Qt::AlignCenter, tr("This chart has no axes to draw."));
        return;
    }
    painter->drawImage(QPointF(), m_nav->picture(pixelRatio()));
    ChartOverlays::paintAll(*painter, *m_nav, hostSize());
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
void ChartItem::geometryChange(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickPaintedItem::geometryChange(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        m_nav->resized();
}
#else
void ChartItem::geometryChanged(const QRectF& newGeometry, const QRectF& oldGeometry)
{
    QQuickPaintedItem::geometryChanged(newGeometry, oldGeometry);
    if (newGeometry.size() != oldGeometry.size())
        m_nav->resized();
}
#endif

bool ChartItem::event(QEvent* event)
{
    if (event->type() == QEvent::NativeGesture && nativeGesture(event))
        return true;
    return QQuickPaintedItem::event(event);
}

// The platform's pinch (a touchpad's) comes as zoom steps of relative size.
bool ChartItem::nativeGesture(QEvent* event)
{
    const auto* gesture = static_cast<QNativeGestureEvent*>(event);
    if (gesture->gestureType() != Qt::ZoomNativeGesture)
        return false;
    m_nav->pinch(positionOf(gesture), 1.0 + gesture->value());
    event->accept();
    return true;
}

void ChartItem::wheelEvent(QWheelEvent* event)
{
    if (m_nav->wheel(event->position(), event->angleDelta().y()))
        event->accept();
    else
        event->ignore();
}

void ChartItem::mousePressEvent(QMouseEvent* event)
{
    forceActiveFocus(Qt::MouseFocusReason);
    m_nav->press(positionOf(event), event->button(), event->modifiers());
    event->accept();
}

void ChartItem::mouseMoveEvent(QMouseEvent* event)
{
    m_nav->move(positionOf(event));
}

void ChartItem::mouseReleaseEvent(QMouseEvent* event)
{
    m_nav->release(positionOf(event));
}

void ChartItem::mouseDoubleClickEvent(QMouseEvent* event)
{
    m_nav->doubleClick(positionOf(event));
    event->accept();
}

void ChartItem::hoverEnterEvent(QHoverEvent* event)
{
    hoverMoveEvent(event);
}

void ChartItem::hoverMoveEvent(QHoverEvent* event)
{
    if (m_nav->drag() == ChartNavigator::Drag::None)
        m_nav->move(positionOf(event));
}

void ChartItem::hoverLeaveEvent(QHoverEvent*)
{
    m_nav->clearHover();
}

// One finger pans as a left drag does; two pinch about their centre. A
// finger left over from a pinch does not start a pan.
void ChartItem::touchEvent(QTouchEvent* event)
{
    std::vector<QPointF> down;
    const std::vector<Touch> touches = touchesOf(event);
    for (const Touch& touch : touches)
        if (touch.down)
            down.push_back(touch.at);
    const bool ends = event->type() == QEvent::TouchEnd || event->type() == QEvent::TouchCancel;
    const bool dragging = m_nav->drag() != ChartNavigator::Drag::None;
    if (down.size() >= 2 && !ends) {
        if (dragging)
            m_nav->release(down[0]);
        touchPinch((down[0] + down[1]) / 2, QLineF(down[0], down[1]).length());
    } else if (down.size() == 1 && !ends && m_pinchDistance == 0) {
        if (event->type() == QEvent::TouchBegin)
            m_nav->press(down[0], Qt::LeftButton, Qt::NoModifier);
        else if (dragging)
            m_nav->move(down[0]);
    } else if (ends || down.empty()) {
        if (dragging && !touches.empty())
            m_nav->release(touches.front().at);
        m_pinchDistance = 0;
    }
    event->accept();
}

void ChartItem::touchPinch(QPointF centre, double distance)
{
    if (m_pinchDistance > 0 && distance > 0)
        m_nav->pinch(centre, distance / m_pinchDistance);
    m_pinchDistance = distance;
}

void ChartItem::keyPressEvent(QKeyEvent* event)
{
    if (!m_nav->navigateByKey(event->key()))
        QQuickPaintedItem::keyPressEvent(event);
}

} // namespace Orv::Chart
