#include "HoverText.h"

#include "KelChartAxisTime.h"
#include "KelChartEpochConversion.h"

#include <QDateTime>

#include <cmath>

namespace Orv::Chart {

namespace {

// An axis of the frame, as the cursor and the texts need it.
struct Axis {
    const Orv::Chart::PlotAxis* result = nullptr;
    double value = 0;     // the scale coordinate under the cursor
    double perPixel = 1;  // scale coordinates per pixel
};

Axis axisOf(const ChartFrames& frames, const QString& name, QPointF pixel)
{
    Axis axis;
    const KelChartAxisScale* scale = frames.pipeline().run().findScale(name);
    axis.result = frames.pipeline().axis(name);
    if (scale == nullptr || axis.result == nullptr) {
        axis.result = nullptr;
        return axis;
    }
    const QRectF plot = frames.layout().plot();
    const bool horizontal =
        axis.result->side == Orv::Chart::AxisSide::Bottom || axis.result->side == Orv::Chart::AxisSide::Top;
    double t = horizontal ? (pixel.x() - plot.left()) / plot.width() : (plot.bottom() - pixel.y()) / plot.height();
    if (scale->inverted())
        t = 1.0 - t;
    const double width = axis.result->max - axis.result->min;
    // Discrete values sit at the centres of their category slots.
    axis.value = axis.result->min + t * width - (axis.result->discrete ? 0.5 : 0.0);
    axis.perPixel = std::abs(width) / (horizontal ? plot.width() : plot.height());
    return axis;
}

QString valueText(const Orv::Chart::PlotAxis& axis, double value)
{
    if (axis.time) {
        const auto* time = static_cast<const KelChartAxisTime*>(axis.axis);
        const KelChartEpochConversion epoch(time->unitLabel.get());
        if (epoch.valid()) {
            const double seconds = epoch.toEpoch(value);
            if (std::isfinite(seconds) && std::abs(seconds) < 2.5e11)
                return QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(std::llround(seconds * 1000)), Qt::UTC)
                    .toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
        }
    }
    if (axis.discrete) {
        const long category = std::lround(value - axis.min);
        if (category >= 0 && static_cast<std::size_t>(category) < axis.ticks.major().size() &&
            !axis.ticks.major()[static_cast<std::size_t>(category)].label.isEmpty())
            return axis.ticks.major()[static_cast<std::size_t>(category)].label;
    }
    // Six digits are plenty to read off a chart, and keep the box narrow.
    const QString number = QString::number(axis.ticks.logarithmic() ? std::pow(10.0, value) : value, 'g', 6);
    return axis.unitLabel.isEmpty() ? number : number + QLatin1Char(' ') + axis.unitLabel;
}

} // namespace

QStringList HoverText::lines(const ChartFrames& frames, QPointF pixel)
{
    QStringList lines;
    if (!frames.layout().plot().contains(pixel))
        return lines;
    const KelChartPerVariableScaling& scaling = frames.pipeline().scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i) {
        if (!scaling.valid(i))
            continue;
        const KelChartVariableCache& cache = scaling.variable(i);
        const Axis x = axisOf(frames, cache.variable().xAxis.get(), pixel);
        const Axis y = axisOf(frames, cache.variable().yAxis.get(), pixel);
        if (x.result == nullptr || y.result == nullptr)
            continue;
        const std::size_t k = frames.view(i).ordered() ? cache.nearestIndex(x.value)
                                                       : cache.nearestIndex(x.value, y.value, x.perPixel, y.perPixel);
        if (k == KelChartVariableCache::npos)
            continue;
        const KelChartVariable& variable = cache.variable();
        const QString name = variable.title.get().isEmpty() ? variable.name() : variable.title.get();
        lines << QStringLiteral("%1: x = %2, y = %3")
                     .arg(name, valueText(*x.result, cache.x()[k]), valueText(*y.result, cache.y()[k]));
    }
    return lines;
}

} // namespace Orv::Chart
