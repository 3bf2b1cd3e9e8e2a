#include "ChartAccessible_p.h"

#include "ChartDescription_p.h"
#include "HoverText.h"

#include <algorithm>
#include <cmath>

namespace Orv::Chart {

namespace {

// The point's box reaches as far as the widget's marker on it.
constexpr double pointRadius = 4;

} // namespace

ChartPartAccessible::ChartPartAccessible(ChartWidget* widget, ChartPart key)
    : m_widget(widget)
    , m_key(key)
{
}

bool ChartPartAccessible::isValid() const
{
    if (m_widget.isNull())
        return false;
    const std::vector<ChartPart> parts = chartPartsOf(*m_widget);
    return std::find(parts.begin(), parts.end(), m_key) != parts.end();
}

QWindow* ChartPartAccessible::window() const
{
    const QAccessibleInterface* chart = parent();
    return chart != nullptr ? chart->window() : nullptr;
}

QAccessibleInterface* ChartPartAccessible::parent() const
{
    return m_widget.isNull() ? nullptr : QAccessible::queryAccessibleInterface(m_widget.data());
}

QString ChartPartAccessible::text(QAccessible::Text t) const
{
    if (!isValid())
        return {};
    switch (m_key.kind) {
    case ChartPart::Kind::Axis:
        return axisText(t);
    case ChartPart::Kind::Series:
        return seriesText(t);
    case ChartPart::Kind::Point:
        return pointText(t);
    }
    return {};
}

const PlotAxis* ChartPartAccessible::axis() const
{
    const auto side = static_cast<AxisSide>(m_key.index);
    for (const PlotAxis& drawn : m_widget->frames()->pipeline().axes())
        if (drawn.side == side)
            return &drawn;
    return nullptr;
}

QString ChartPartAccessible::axisText(QAccessible::Text t) const
{
    const PlotAxis* drawn = axis();
    if (drawn == nullptr)
        return {};
    QString range = ChartDescription::axisRange(*drawn, m_widget->locale());
    switch (t) {
    case QAccessible::Name:
        return ChartDescription::axisName(*drawn);
    case QAccessible::Description:
        return ChartDescription::axisKind(*drawn) + QStringLiteral(", ") + range;
    case QAccessible::Value:
        return range;
    default:
        return {};
    }
}

QString ChartPartAccessible::seriesText(QAccessible::Text t) const
{
    const ChartFrames& frames = *m_widget->frames();
    if (t == QAccessible::Name)
        return HoverText::seriesName(frames, m_key.index);
    if (t == QAccessible::Description)
        return ChartDescription::seriesSummary(frames, m_key.index, m_widget->locale());
    return {};
}

QString ChartPartAccessible::pointText(QAccessible::Text t) const
{
    if (t == QAccessible::Name)
        return m_widget->pointCursorText();
    if (t != QAccessible::Description)
        return {};
    const PointCursor cursor = m_widget->pointCursor();
    const std::size_t count = m_widget->frames()->view(cursor.series).data().size;
    return QStringLiteral("point %1 of %2").arg(cursor.index + 1).arg(count);
}

QRect ChartPartAccessible::rect() const
{
    const QRectF drawn = isValid() ? area() : QRectF();
    if (drawn.isEmpty())
        return {};
    return drawn.translated(m_widget->mapToGlobal(QPoint(0, 0))).toAlignedRect();
}

QRectF ChartPartAccessible::area() const
{
    switch (m_key.kind) {
    case ChartPart::Kind::Axis:
        return m_widget->frames()->layout().axisBand(static_cast<AxisSide>(m_key.index));
    case ChartPart::Kind::Series:
        return seriesArea();
    case ChartPart::Kind::Point:
        return pointArea();
    }
    return {};
}

// Its legend cell where the legend shows it, else the plot it is drawn in.
QRectF ChartPartAccessible::seriesArea() const
{
    const ChartLayout& layout = m_widget->frames()->layout();
    const std::vector<std::size_t>& entries = layout.legendEntries();
    const auto entry =
        static_cast<std::size_t>(std::find(entries.begin(), entries.end(), m_key.index) - entries.begin());
    return entry < std::min(layout.legendGrid().shown, entries.size()) ? layout.legendCell(entry) : layout.plot();
}

QRectF ChartPartAccessible::pointArea() const
{
    const PointCursor cursor = m_widget->pointCursor();
    const QPointF at = HoverText::pointPixel(*m_widget->frames(), cursor.series, cursor.index);
    if (!std::isfinite(at.x()) || !std::isfinite(at.y()))
        return {};
    return {at - QPointF(pointRadius, pointRadius), QSizeF(2 * pointRadius, 2 * pointRadius)};
}

QAccessible::Role ChartPartAccessible::role() const
{
    // Read as plain text: a reader says the name and the description, which
    // tell the part's kind, and nothing on the part invites an action.
    return QAccessible::StaticText;
}

QAccessible::State ChartPartAccessible::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    state.invisible = !m_widget->isVisible() || area().isEmpty();
    if (m_key.kind == ChartPart::Kind::Point) {
        state.focusable = true;
        state.focused = m_widget->hasFocus();
    }
    return state;
}

} // namespace Orv::Chart
