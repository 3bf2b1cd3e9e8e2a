#include "ChartAccessible.h"

#include "ChartAccessible_p.h"
#include "ChartDescription_p.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace Orv::Chart {

namespace {

QAccessibleInterface* chartFactory(const QString& className, QObject* object)
{
    if (className != QLatin1String(ChartWidget::staticMetaObject.className()))
        return nullptr;
    auto* widget = qobject_cast<ChartWidget*>(object);
    return widget != nullptr ? new ChartAccessible(widget) : nullptr;
}

const KelChart* chartOf(const ChartWidget& widget)
{
    return widget.frames() != nullptr ? &widget.frames()->chart() : nullptr;
}

constexpr ChartPart pointPart{ChartPart::Kind::Point, 0};

ChartAnnouncer announcer = &QAccessible::updateAccessibility;

bool showsPoint(const std::vector<ChartPart>& parts)
{
    return std::find(parts.begin(), parts.end(), pointPart) != parts.end();
}

std::vector<ChartPart> withoutPoint(std::vector<ChartPart> parts)
{
    parts.erase(std::remove(parts.begin(), parts.end(), pointPart), parts.end());
    return parts;
}

} // namespace

void installChartAccessibility()
{
    static const bool installed = [] {
        QAccessible::installFactory(chartFactory);
        return true;
    }();
    Q_UNUSED(installed)
}

// Every application that links the widgets gets the chart's interfaces, as
// it gets those of Qt's own widgets, without a call of its own.
Q_COREAPP_STARTUP_FUNCTION(installChartAccessibility)

ChartAnnouncer setChartAnnouncer(ChartAnnouncer next)
{
    return std::exchange(announcer, next != nullptr ? next : &QAccessible::updateAccessibility);
}

std::vector<ChartPart> chartPartsOf(const ChartWidget& widget)
{
    std::vector<ChartPart> parts;
    const ChartFrames* frames = widget.frames();
    if (frames == nullptr)
        return parts;
    for (const PlotAxis& axis : frames->pipeline().axes())
        parts.push_back({ChartPart::Kind::Axis, static_cast<std::size_t>(axis.side)});
    for (std::size_t series : ChartDescription::drawnSeries(*frames))
        parts.push_back({ChartPart::Kind::Series, series});
    if (widget.pointCursor().valid())
        parts.push_back(pointPart);
    return parts;
}

ChartAccessible::ChartAccessible(ChartWidget* widget)
    : QAccessibleWidget(widget, QAccessible::Chart)
    , m_chart(chartOf(*widget))
    , m_shown(chartPartsOf(*widget))
    , m_listener(std::make_unique<QObject>())
{
    QObject::connect(widget, &ChartWidget::pointCursorChanged, m_listener.get(), [this] { cursorMoved(); });
    QObject::connect(widget, &ChartWidget::rangesChanged, m_listener.get(), [this] { rangesChanged(); });
    QObject::connect(widget, &ChartWidget::seriesToggled, m_listener.get(), [this] { checkParts(); });
}

ChartAccessible::~ChartAccessible()
{
    m_listener.reset();
    for (const auto& entry : m_parts)
        QAccessible::deleteAccessibleInterface(entry.second);
}

ChartWidget* ChartAccessible::chartWidget() const
{
    return static_cast<ChartWidget*>(widget());
}

int ChartAccessible::childCount() const
{
    return static_cast<int>(chartPartsOf(*chartWidget()).size());
}

QAccessibleInterface* ChartAccessible::child(int index) const
{
    const std::vector<ChartPart> parts = chartPartsOf(*chartWidget());
    if (index < 0 || static_cast<std::size_t>(index) >= parts.size())
        return nullptr;
    return part(parts[static_cast<std::size_t>(index)]);
}

int ChartAccessible::indexOfChild(const QAccessibleInterface* child) const
{
    const auto* part = dynamic_cast<const ChartPartAccessible*>(child);
    if (part == nullptr || part->chartWidget() != chartWidget())
        return -1;
    const std::vector<ChartPart> parts = chartPartsOf(*chartWidget());
    const auto found = std::find(parts.begin(), parts.end(), part->key());
    return found == parts.end() ? -1 : static_cast<int>(found - parts.begin());
}

QAccessibleInterface* ChartAccessible::childAt(int x, int y) const
{
    // Last to first: the point lies over the plot, which series without a
    // legend cell cover.
    const std::vector<ChartPart> parts = chartPartsOf(*chartWidget());
    for (auto at = parts.rbegin(); at != parts.rend(); ++at) {
        QAccessibleInterface* candidate = part(*at);
        if (candidate->rect().contains(x, y))
            return candidate;
    }
    return nullptr;
}

QAccessibleInterface* ChartAccessible::focusChild() const
{
    const ChartWidget* chart = chartWidget();
    return chart->hasFocus() && chart->pointCursor().valid() ? part(pointPart) : nullptr;
}

QString ChartAccessible::text(QAccessible::Text t) const
{
    const ChartWidget* chart = chartWidget();
    if (t == QAccessible::Name && chart->accessibleName().isEmpty())
        return chart->frames() != nullptr ? chart->frames()->chart().title.get() : QString();
    if (t == QAccessible::Description && chart->accessibleDescription().isEmpty())
        return ChartDescription::summary(chart->frames());
    return QAccessibleWidget::text(t);
}

QAccessibleInterface* ChartAccessible::part(ChartPart key) const
{
    // Ours unless someone deleted it from QAccessible's cache.
    const auto found = m_parts.find(key);
    QAccessibleInterface* known = found != m_parts.end() ? QAccessible::accessibleInterface(found->second) : nullptr;
    if (known != nullptr)
        return known;
    auto* made = new ChartPartAccessible(chartWidget(), key);
    m_parts[key] = QAccessible::registerAccessibleInterface(made);
    return made;
}

void ChartAccessible::announce(QAccessibleInterface* target, QAccessible::Event event) const
{
    QAccessibleEvent message(target, event);
    announcer(&message);
}

void ChartAccessible::checkParts()
{
    const KelChart* chart = chartOf(*chartWidget());
    std::vector<ChartPart> parts = chartPartsOf(*chartWidget());
    if (chart == m_chart && parts == m_shown)
        return;
    const bool otherChart = chart != m_chart;
    const bool samePlot = !otherChart && withoutPoint(parts) == withoutPoint(m_shown);
    m_chart = chart;
    m_shown = std::move(parts);
    // A point appearing is told as itself: a reader adds it without taking in
    // every child anew (nor does Qt 5's AT-SPI bridge pass a reorder on well).
    if (samePlot && showsPoint(m_shown)) {
        announce(part(pointPart), QAccessible::ObjectCreated);
        return;
    }
    announce(this, QAccessible::ObjectReorder);
    if (otherChart)
        announce(this, QAccessible::NameChanged);
    if (!samePlot)
        announce(this, QAccessible::DescriptionChanged);
}

// A point that takes the focus is read as focused; a move along a series
// after that changes the focused point's name, which a reader reads out.
void ChartAccessible::cursorMoved()
{
    const bool wasOnPoint = showsPoint(m_shown);
    checkParts();
    const ChartWidget* chart = chartWidget();
    if (chart->pointCursor().valid())
        announce(part(pointPart), wasOnPoint || !chart->hasFocus() ? QAccessible::NameChanged : QAccessible::Focus);
    else if (wasOnPoint && chart->hasFocus())
        announce(this, QAccessible::Focus);
}

void ChartAccessible::rangesChanged()
{
    checkParts();
    for (const ChartPart& shown : m_shown)
        if (shown.kind == ChartPart::Kind::Axis)
            announce(part(shown), QAccessible::DescriptionChanged);
}

} // namespace Orv::Chart
