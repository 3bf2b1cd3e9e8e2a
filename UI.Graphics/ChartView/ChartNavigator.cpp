#include "ChartNavigator.h"

#include "AxisRanges.h"
#include "FrameCache_p.h"

#include "KelChartVariable.h"

#include <QLineF>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace Orv::Chart {

namespace {

// One wheel notch (120 eighths of a degree) shrinks the ranges to this share;
// a notch back widens them by its inverse, so that in and out cancel.
constexpr double zoomPerNotch = 0.8;
// Smaller drags are clicks.
constexpr double dragThreshold = 3;
// Wheel notches (and pinch steps) closer together than this are one step of the history.
constexpr qint64 wheelGestureMs = 700;
// The wheel and held keys give no end of their gesture: it ends when they rest this long.
constexpr int settleMs = 150;
// An arrow key moves the content by this share of the plot.
constexpr double keyPanShare = 0.1;

} // namespace

ChartNavigator::ChartNavigator(std::function<QSize()> hostSize, QObject* parent)
    : QObject(parent)
    , m_hostSize(std::move(hostSize))
    , m_picture(std::make_unique<KeptFrame>())
    , m_cacheInputs(std::make_unique<CacheInputs>())
    , m_settle(new QTimer(this))
{
    m_settle->setSingleShot(true);
    m_settle->setInterval(settleMs);
    connect(m_settle, &QTimer::timeout, this, &ChartNavigator::settle);
}

ChartNavigator::~ChartNavigator() = default;

AxisRanges ChartNavigator::ranges() const
{
    return {m_frames->pipeline(), m_frames->pairs(), m_frames->layout()};
}

void ChartNavigator::setChart(KelChart* chart, const Orv::Chart::AxisPairs& pairs)
{
    m_pressRanges.reset();
    m_drag = Drag::None;
    m_settle->stop();
    m_frames.reset();
    *m_cacheInputs = CacheInputs();
    m_hover.clear();
    m_readOut.clear();
    m_hits.clear();
    if (chart != nullptr && pairs.exist()) {
        m_frames = std::make_unique<ChartFrames>(*chart, pairs);
        *m_cacheInputs = CacheInputs(*chart);
        m_frames->setLocale(m_locale);
        m_history.reset(ViewState::of(pairs));
    } else {
        m_history.reset(ViewState());
    }
    rescale();
    Q_EMIT changed();
    Q_EMIT historyChanged();
}

void ChartNavigator::reload()
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
    Q_EMIT reloaded();
    refreshHover();
    Q_EMIT changed();
}

void ChartNavigator::showLive(std::vector<const KelChartLiveSeries*> series)
{
    if (!m_frames)
        return;
    m_frames->showLive(std::move(series));
    m_frames->rescale(m_hostSize());
    frameChanged();
    Q_EMIT reloaded();
    refreshHover();
    Q_EMIT changed();
}

void ChartNavigator::liveAppended()
{
    if (!m_frames || !m_frames->live())
        return;
    // A stream moves the picture as a drag does: plain frames while items
    // arrive, the settled one once they stop.
    settleSoon();
    m_frames->liveAppended();
    frameChanged();
    Q_EMIT reloaded();
    refreshHover();
    Q_EMIT changed();
}

void ChartNavigator::resized()
{
    rescale();
    refreshHover();
}

void ChartNavigator::setLocale(const QLocale& locale)
{
    m_locale = locale;
    if (m_frames)
        m_frames->setLocale(locale);
    frameChanged();
    refreshHover();
    Q_EMIT changed();
}

void ChartNavigator::rescale()
{
    if (m_frames)
        m_frames->rescale(m_hostSize());
    frameChanged();
}

// Every change of the frame passes here: a kept picture of an older frame
// would show a chart that is no longer there.
void ChartNavigator::frameChanged()
{
    m_picture->invalidate();
}

const QImage& ChartNavigator::picture(qreal ratio)
{
    return m_picture->image(m_hostSize(), ratio, [this](QPainter& painter) {
        if (m_frames)
            m_frames->paint(painter);
    });
}

const QImage& ChartNavigator::keptPicture() const
{
    return m_picture->image();
}

void ChartNavigator::beginInteraction()
{
    if (!m_frames || m_frames->interactive())
        return;
    m_frames->setInteractive(true);
    frameChanged();
}

bool ChartNavigator::navigateByKey(int key)
{
    if (!m_frames)
        return false;
    const QRectF plot = m_frames->layout().plot();
    const QPointF across(plot.width() * keyPanShare, 0);
    const QPointF up(0, plot.height() * keyPanShare);
    switch (key) {
    case Qt::Key_Left:
        return keyStep([&] { panBy(across); });
    case Qt::Key_Right:
        return keyStep([&] { panBy(-across); });
    case Qt::Key_Up:
        return keyStep([&] { panBy(up); });
    case Qt::Key_Down:
        return keyStep([&] { panBy(-up); });
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        return keyStep([&] { zoomIn(); });
    case Qt::Key_Minus:
        return keyStep([&] { zoomOut(); });
    case Qt::Key_Home:
        home();
        return true;
    case Qt::Key_Escape:
        return cancelBand();
    default:
        return false;
    }
}

// A held key repeats without an end of its own: its steps settle once it rests.
bool ChartNavigator::keyStep(const std::function<void()>& step)
{
    settleSoon();
    step();
    return true;
}

void ChartNavigator::settleSoon()
{
    beginInteraction();
    m_settle->start();
}

// The gesture ended: the settled frame replaces the last interactive one.
void ChartNavigator::settle()
{
    m_settle->stop();
    if (!m_frames || !m_frames->interactive())
        return;
    m_frames->setInteractive(false);
    frameChanged();
    Q_EMIT changed();
}

void ChartNavigator::rangesWritten()
{
    rescale();
    refreshHover();
    Q_EMIT changed();
    Q_EMIT rangesChanged();
}

void ChartNavigator::viewChosen()
{
    m_history.push(ViewState::of(m_frames->pairs()));
    Q_EMIT historyChanged();
}

void ChartNavigator::showView(const ViewState& state)
{
    if (!m_frames)
        return;
    state.applyTo(m_frames->pairs());
    rangesWritten();
    Q_EMIT historyChanged();
}

void ChartNavigator::home()
{
    if (!m_frames)
        return;
    showView(m_history.home());
    viewChosen();
}

void ChartNavigator::back()
{
    showView(m_history.back());
}

void ChartNavigator::forward()
{
    showView(m_history.forward());
}

void ChartNavigator::zoomIn()
{
    if (!m_frames)
        return;
    zoomAt(m_frames->layout().plot().center(), zoomPerNotch);
    viewChosen();
}

void ChartNavigator::zoomOut()
{
    if (!m_frames)
        return;
    zoomAt(m_frames->layout().plot().center(), 1.0 / zoomPerNotch);
    viewChosen();
}

void ChartNavigator::zoomAt(QPointF centre, double factor)
{
    ranges().zoom(centre, factor);
    rangesWritten();
}

void ChartNavigator::fitY()
{
    if (!m_frames)
        return;
    ranges().fitVertical(*m_frames);
    rangesWritten();
    viewChosen();
}

void ChartNavigator::rangesEdited()
{
    if (!m_frames)
        return;
    reload();
    Q_EMIT rangesChanged();
    viewChosen();
}

void ChartNavigator::panBy(QPointF pixels)
{
    if (!m_frames)
        return;
    const QPointF centre = m_frames->layout().plot().center();
    pan(centre, centre + pixels);
    viewChosen();
}

void ChartNavigator::pan(QPointF from, QPointF to)
{
    if (!m_frames)
        return;
    ranges().pan(from, to);
    rangesWritten();
}

// A wheel notch or pinch step: the steps of one gesture make one view of the history.
void ChartNavigator::stepInGesture()
{
    settleSoon();
    rangesWritten();
    const bool sameGesture = m_wheelClock.isValid() && m_wheelClock.elapsed() < wheelGestureMs;
    if (sameGesture)
        m_history.amend(ViewState::of(m_frames->pairs()));
    else
        m_history.push(ViewState::of(m_frames->pairs()));
    m_wheelClock.start();
    Q_EMIT historyChanged();
}

bool ChartNavigator::wheel(QPointF at, int eighths)
{
    if (!m_frames || eighths == 0)
        return true;
    const double factor = std::pow(zoomPerNotch, eighths / 120.0);
    const AxisRanges axes = ranges();
    if (m_frames->layout().plot().contains(at)) {
        axes.zoom(at, factor);
    } else if (const std::size_t span = axes.spanAt(at); span != AxisRanges::npos) {
        axes.zoomAxis(span, at, factor);
    } else {
        // Over the title or the legend the wheel has no point to zoom about.
        return false;
    }
    stepInGesture();
    return true;
}

void ChartNavigator::pinch(QPointF centre, double scale)
{
    if (!m_frames || !(scale > 0) || !std::isfinite(scale) || scale == 1)
        return;
    ranges().zoom(centre, 1.0 / scale);
    stepInGesture();
}

bool ChartNavigator::press(QPointF at, Qt::MouseButton button, Qt::KeyboardModifiers modifiers)
{
    if (!m_frames)
        return false;
    const bool shift = modifiers & Qt::ShiftModifier;
    if (button == Qt::LeftButton && !shift && toggleLegendEntry(at))
        return true;
    const bool band = button == Qt::RightButton || (button == Qt::LeftButton && shift);
    m_drag = band ? Drag::Band : button == Qt::LeftButton ? Drag::Pan : Drag::None;
    m_pressed = m_current = at;
    m_pressRanges = std::make_unique<AxisRanges>(ranges());
    // A drag that starts on an axis's labels moves that axis alone.
    m_dragSpan = m_frames->layout().plot().contains(at) ? AxisRanges::npos : m_pressRanges->spanAt(at);
    return false;
}

void ChartNavigator::move(QPointF at)
{
    m_current = at;
    if (m_drag == Drag::Pan && m_pressRanges) {
        beginInteraction();
        m_pressRanges->pan(m_pressed, m_current, m_dragSpan);
        rangesWritten();
    } else if (m_drag == Drag::Band) {
        Q_EMIT changed();
    } else {
        updateHover(m_current);
    }
}

void ChartNavigator::release(QPointF at)
{
    m_current = at;
    const QRectF rect = band();
    const bool moved = QLineF(m_pressed, m_current).length() > dragThreshold;
    if (m_drag == Drag::Band && m_pressRanges && rect.width() > dragThreshold && rect.height() > dragThreshold) {
        m_pressRanges->zoomTo(rect);
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

void ChartNavigator::doubleClick(QPointF at)
{
    // The first click of a double click on the legend already toggled its entry.
    if (m_frames && m_frames->layout().plot().contains(at))
        home();
}

bool ChartNavigator::cancelBand()
{
    if (m_drag != Drag::Band)
        return false;
    m_drag = Drag::None;
    m_pressRanges.reset();
    Q_EMIT changed();
    return true;
}

// A legend entry under the pixel is hidden or shown through its "enabled",
// so that the choice is saved with the chart.
bool ChartNavigator::toggleLegendEntry(QPointF pixel)
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

void ChartNavigator::updateHover(QPointF pixel)
{
    m_hovering = true;
    m_hoverAt = pixel;
    if (!m_frames)
        return;
    const HoverText::Hover hover = HoverText::at(*m_frames, pixel, m_locale);
    m_readOut = hover.readOut;
    m_hits = hover.hits;
    m_hover.clear();
    for (const HoverText::Hit& hit : m_hits)
        m_hover << hit.line;
    Q_EMIT changed();
    Q_EMIT hoverChanged((QStringList(m_readOut) + m_hover).join(QStringLiteral("; ")));
}

void ChartNavigator::refreshHover()
{
    if (m_hovering && m_drag == Drag::None)
        updateHover(m_hoverAt);
}

void ChartNavigator::clearHover()
{
    m_hovering = false;
    m_hover.clear();
    m_readOut.clear();
    m_hits.clear();
    Q_EMIT changed();
    Q_EMIT hoverChanged(QString());
}

} // namespace Orv::Chart
