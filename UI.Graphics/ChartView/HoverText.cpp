#include "HoverText.h"

#include "KelChartAxisTime.h"
#include "KelChartEpochConversion.h"
#include "TimeZone.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace Orv::Chart {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
// The calendar the zone database knows ends before the year 10000.
constexpr double latestSeconds = 2.5e11;
// Six digits are plenty to read a point off a chart, and keep the box narrow.
constexpr int pointDigits = 6;

// An axis of the frame as the cursor meets it: scale coordinates along a plot edge.
struct AxisView {
    const PlotAxis* axis = nullptr;
    QRectF plot;
    bool inverted = false;

    bool horizontal() const { return axis->side == AxisSide::Bottom || axis->side == AxisSide::Top; }
    double length() const { return horizontal() ? plot.width() : plot.height(); }
    double perPixel() const { return std::abs(axis->max - axis->min) / length(); }
};

AxisView viewOf(const ChartFrames& frames, const PlotAxis* axis)
{
    const KelChartAxisScale* scale = axis == nullptr ? nullptr : frames.pipeline().run().findScale(axis->name);
    return {axis, frames.layout().plot(), scale != nullptr && scale->inverted()};
}

AxisView viewOf(const ChartFrames& frames, const QString& name)
{
    return viewOf(frames, frames.pipeline().axis(name));
}

// Discrete values sit at the centres of their category slots.
double slotShift(const PlotAxis& axis)
{
    return axis.discrete ? 0.5 : 0.0;
}

double valueAt(const AxisView& view, QPointF pixel)
{
    const QRectF& plot = view.plot;
    double t =
        view.horizontal() ? (pixel.x() - plot.left()) / plot.width() : (plot.bottom() - pixel.y()) / plot.height();
    if (view.inverted)
        t = 1.0 - t;
    return view.axis->min + t * (view.axis->max - view.axis->min) - slotShift(*view.axis);
}

double pixelOf(const AxisView& view, double value)
{
    double t = (value + slotShift(*view.axis) - view.axis->min) / (view.axis->max - view.axis->min);
    if (view.inverted)
        t = 1.0 - t;
    return view.horizontal() ? view.plot.left() + t * view.plot.width() : view.plot.bottom() - t * view.plot.height();
}

QString withUnit(const PlotAxis& axis, const QString& number)
{
    return axis.unitLabel.isEmpty() ? number : number + QLatin1Char(' ') + axis.unitLabel;
}

// The pattern and second decimals that show a time to `resolution` seconds.
std::pair<const char*, int> timePattern(double resolution)
{
    if (resolution >= 86400)
        return {"%Y-%m-%d %Z", 0};
    if (resolution >= 60)
        return {"%Y-%m-%d %H:%M %Z", 0};
    if (resolution >= 1)
        return {"%Y-%m-%d %H:%M:%S %Z", 0};
    return {"%Y-%m-%d %H:%M:%S %Z", resolution >= 1e-3 ? 3 : 6};
}

// A point's own instant: to the second, or with the decimals its fraction of a second needs.
int secondDecimalsOf(std::int64_t micros)
{
    const std::int64_t fraction = ((micros % 1000000) + 1000000) % 1000000;
    return fraction == 0 ? 0 : fraction % 1000 == 0 ? 3 : 6;
}

// A number with the digits that `resolution` (its smallest distinct step) tells apart.
QString numberAt(double value, double resolution, const QLocale& locale)
{
    if (!(resolution > 0) || !std::isfinite(resolution))
        return locale.toString(value, 'g', pointDigits);
    const int decimals = static_cast<int>(std::ceil(-std::log10(resolution)));
    if (decimals >= 0 && decimals <= 9 && std::abs(value) < 1e9)
        return locale.toString(value, 'f', decimals);
    const double magnitude = std::max(std::abs(value), resolution);
    const int digits = static_cast<int>(std::ceil(std::log10(magnitude / resolution))) + 1;
    return locale.toString(value, 'g', std::clamp(digits, 1, 17));
}

// `resolution` in the axis's coordinates; zero for a point's own value.
QString valueText(const PlotAxis& axis, double value, double resolution, const QLocale& locale)
{
    if (!std::isfinite(value))
        return {};
    if (axis.time) {
        QString date = HoverText::dateText(axis, value, resolution);
        if (!date.isEmpty())
            return date;
    }
    if (axis.discrete)
        return HoverText::categoryText(axis, value);
    if (!axis.ticks.logarithmic())
        return withUnit(axis, resolution > 0 ? numberAt(value, resolution, locale)
                                             : locale.toString(value, 'g', pointDigits));
    // On a logarithmic axis a pixel spans a share of the value, not a fixed step.
    const double real = std::pow(10.0, value);
    const double step = real * (std::pow(10.0, resolution) - 1.0);
    return withUnit(axis, resolution > 0 ? numberAt(real, step, locale) : locale.toString(real, 'g', pointDigits));
}

QString axisCaption(const PlotAxis& axis)
{
    QString title = axis.axis->title.get().trimmed();
    if (!title.isEmpty())
        return title;
    return axis.side == AxisSide::Bottom || axis.side == AxisSide::Top ? QStringLiteral("x") : QStringLiteral("y");
}

const KelChartVariableCache* drawn(const ChartFrames& frames, std::size_t series)
{
    const KelChartPerVariableScaling& scaling = frames.pipeline().scaling();
    return series < scaling.size() && scaling.valid(series) ? &scaling.variable(series) : nullptr;
}

// The line of one point, and where it is drawn.
bool describe(const ChartFrames& frames, std::size_t series, std::size_t k, const QLocale& locale, HoverText::Hit& hit)
{
    const KelChartVariableCache* cache = drawn(frames, series);
    // The points as drawn: a live series's view reads them as they are now.
    const KelChartDecimatedView::Data& points = frames.view(series).data();
    if (cache == nullptr || k >= points.size)
        return false;
    const AxisView x = viewOf(frames, cache->variable().xAxis.get());
    const AxisView y = viewOf(frames, cache->variable().yAxis.get());
    if (x.axis == nullptr || y.axis == nullptr)
        return false;
    const double xValue = points.x[k];
    const double yValue = points.y[k];
    const QString name = HoverText::seriesName(frames, series);
    const QString xText = valueText(*x.axis, xValue, 0, locale);
    hit.series = series;
    hit.index = k;
    if (!std::isfinite(yValue)) {
        hit.pixel = QPointF(nan, nan);
        hit.line = QStringLiteral("%1: x = %2, no reading").arg(name, xText);
        return true;
    }
    hit.pixel = x.horizontal() ? QPointF(pixelOf(x, xValue), pixelOf(y, yValue))
                               : QPointF(pixelOf(y, yValue), pixelOf(x, xValue));
    hit.line = QStringLiteral("%1: x = %2, y = %3").arg(name, xText, valueText(*y.axis, yValue, 0, locale));
    return true;
}

QString readOut(const ChartFrames& frames, QPointF pixel, const QLocale& locale)
{
    QStringList parts;
    for (const PlotAxis& axis : frames.pipeline().axes()) {
        const AxisView view = viewOf(frames, &axis);
        const QString text = valueText(axis, valueAt(view, pixel), view.perPixel(), locale);
        if (!text.isEmpty())
            parts << axisCaption(axis) + QStringLiteral(" = ") + text;
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace

QString HoverText::dateText(const PlotAxis& axis, double value, double resolution)
{
    const auto* time = static_cast<const KelChartAxisTime*>(axis.axis);
    const KelChartEpochConversion epoch(time->unitLabel.get());
    if (!epoch.valid())
        return {};
    const double seconds = epoch.toEpoch(value);
    if (!std::isfinite(seconds) || std::abs(seconds) > latestSeconds)
        return {};
    const auto micros = static_cast<std::int64_t>(std::llround(seconds * 1e6));
    const double secondsResolution = std::abs(epoch.toEpoch(value + resolution) - seconds);
    auto [pattern, decimals] = timePattern(resolution > 0 ? secondsResolution : 0.5);
    if (resolution <= 0)
        decimals = secondDecimalsOf(micros);
    const Orv::Math::TimeZone zone(time->timeZone.get().trimmed().toStdString());
    return QString::fromStdString(zone.format(micros, pattern, decimals));
}

QString HoverText::categoryText(const PlotAxis& axis, double value)
{
    const double category = std::round(value);
    for (const Tick& tick : axis.ticks.major())
        if (tick.value == category)
            return tick.label;
    return {};
}

QString HoverText::seriesName(const ChartFrames& frames, std::size_t series)
{
    const KelChartVariableCache* cache = drawn(frames, series);
    if (cache == nullptr)
        return {};
    const KelChartVariable& variable = cache->variable();
    return variable.title.get().isEmpty() ? variable.name() : variable.title.get();
}

HoverText::Hover HoverText::at(const ChartFrames& frames, QPointF pixel, const QLocale& locale)
{
    Hover hover;
    const QRectF plot = frames.layout().plot();
    if (!plot.contains(pixel))
        return hover;
    hover.readOut = readOut(frames, pixel, locale);
    const KelChartPerVariableScaling& scaling = frames.pipeline().scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i) {
        const KelChartVariableCache* cache = drawn(frames, i);
        if (cache == nullptr)
            continue;
        const AxisView x = viewOf(frames, cache->variable().xAxis.get());
        const AxisView y = viewOf(frames, cache->variable().yAxis.get());
        if (x.axis == nullptr || y.axis == nullptr)
            continue;
        const double xValue = valueAt(x, pixel);
        const KelChartDecimatedView& view = frames.view(i);
        const std::size_t k = view.ordered() ? view.nearestIndex(xValue)
                                             : view.nearestIndex(xValue, valueAt(y, pixel), x.perPixel(), y.perPixel());
        Hit hit;
        if (k == KelChartVariableCache::npos || !describe(frames, i, k, locale, hit))
            continue;
        // A point outside the shown ranges is not where the cursor points.
        if (std::isfinite(hit.pixel.x()) && !plot.adjusted(-1, -1, 1, 1).contains(hit.pixel))
            continue;
        hover.hits.push_back(hit);
    }
    return hover;
}

QStringList HoverText::lines(const ChartFrames& frames, QPointF pixel)
{
    QStringList lines;
    for (const Hit& hit : at(frames, pixel).hits)
        lines << hit.line;
    return lines;
}

QString HoverText::pointText(const ChartFrames& frames, std::size_t series, std::size_t index, const QLocale& locale)
{
    Hit hit;
    return describe(frames, series, index, locale, hit) ? hit.line : QString();
}

QPointF HoverText::pointPixel(const ChartFrames& frames, std::size_t series, std::size_t index)
{
    Hit hit;
    return describe(frames, series, index, QLocale::c(), hit) ? hit.pixel : QPointF(nan, nan);
}

} // namespace Orv::Chart
