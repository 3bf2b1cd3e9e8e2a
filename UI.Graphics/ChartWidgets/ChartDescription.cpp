#include "ChartDescription_p.h"

#include "HoverText.h"

#include "KelChartAxisTime.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace Orv::Chart {

namespace {

// A span is read to a hundredth of itself: finer digits are noise to a listener.
constexpr double stepsPerSpan = 100;
// The digits of a number whose span says nothing about its precision.
constexpr int plainDigits = 6;
// More category labels than this are told by count and ends, not one by one.
constexpr int listedCategories = 8;

QString counted(std::size_t count, const char* one, const char* many)
{
    return QStringLiteral("%1 %2").arg(count).arg(QLatin1String(count == 1 ? one : many));
}

// The decimals that tell values `step` apart, as significant digits of
// `value`, so that trailing zeros drop ("24", not "24.0"); never fewer than
// the integer digits, which would turn to an exponent.
QString numberText(double value, double step, const QLocale& locale)
{
    if (!(step > 0) || !std::isfinite(step) || !std::isfinite(value))
        return locale.toString(value, 'g', plainDigits);
    const int decimals = std::max(0, static_cast<int>(std::ceil(-std::log10(step))));
    const int integerDigits = static_cast<int>(std::floor(std::log10(std::max(std::abs(value), step)))) + 1;
    return locale.toString(value, 'g', std::clamp(integerDigits + decimals, 1, 15));
}

// Dates and categories name themselves; numbers take the unit after them.
bool numeric(const PlotAxis& axis)
{
    return !axis.discrete && !axis.time;
}

QString unitSuffix(const PlotAxis& axis)
{
    return numeric(axis) && !axis.unitLabel.isEmpty() ? QLatin1Char(' ') + axis.unitLabel : QString();
}

// A value in the axis's own terms, without the unit; `step` in the axis's coordinates.
QString valueText(const PlotAxis& axis, double value, double step, const QLocale& locale)
{
    if (axis.time) {
        QString date = HoverText::dateText(axis, value, step);
        if (!date.isEmpty())
            return date;
    }
    if (axis.discrete) {
        QString label = HoverText::categoryText(axis, value);
        if (!label.isEmpty())
            return label;
    }
    if (!axis.ticks.logarithmic())
        return numberText(value, step, locale);
    // Positions on a logarithmic axis are log10 of the values.
    const double real = std::pow(10.0, value);
    return numberText(real, real * (std::pow(10.0, step) - 1.0), locale);
}

QString fromTo(const PlotAxis& axis, double from, double to, const QLocale& locale)
{
    const double step = std::abs(to - from) / stepsPerSpan;
    return QStringLiteral("from %1 to %2%3")
        .arg(valueText(axis, from, step, locale), valueText(axis, to, step, locale), unitSuffix(axis));
}

QString categoryRange(const PlotAxis& axis)
{
    QStringList labels;
    for (const Tick& tick : axis.ticks.major())
        labels << tick.label;
    if (labels.isEmpty())
        return QStringLiteral("no categories");
    if (labels.size() <= listedCategories)
        return labels.join(QStringLiteral(", "));
    return QStringLiteral("%1, from %2 to %3")
        .arg(counted(static_cast<std::size_t>(labels.size()), "category", "categories"), labels.first(), labels.last());
}

const QString& sideName(AxisSide side)
{
    static const QString names[] = {QStringLiteral("bottom"), QStringLiteral("top"), QStringLiteral("left"),
                                    QStringLiteral("right")};
    return names[static_cast<int>(side)];
}

bool horizontal(AxisSide side)
{
    return side == AxisSide::Bottom || side == AxisSide::Top;
}

// What a series' y values come to; NaN where none has a reading.
struct YSummary {
    std::size_t count = 0;
    std::size_t unread = 0;
    double min = std::numeric_limits<double>::infinity();
    double max = -std::numeric_limits<double>::infinity();
    double last = std::numeric_limits<double>::quiet_NaN();

    explicit YSummary(const std::vector<double>& y)
        : count(y.size())
    {
        for (double value : y) {
            if (!std::isfinite(value)) {
                ++unread;
                continue;
            }
            min = std::min(min, value);
            max = std::max(max, value);
            last = value;
        }
    }
};

QString valuesText(const PlotAxis& axis, const YSummary& values, const QLocale& locale)
{
    const double step = (values.max - values.min) / stepsPerSpan;
    return QStringLiteral("%1, last %2%3")
        .arg(fromTo(axis, values.min, values.max, locale), valueText(axis, values.last, step, locale),
             unitSuffix(axis));
}

} // namespace

QString ChartDescription::summary(const ChartFrames* frames)
{
    if (frames == nullptr)
        return QStringLiteral("no axes to draw");
    return QStringLiteral("%1, %2").arg(counted(frames->pipeline().axes().size(), "axis", "axes"),
                                        counted(drawnSeries(*frames).size(), "series", "series"));
}

QString ChartDescription::axisName(const PlotAxis& axis)
{
    QString caption = axis.axis->title.get().trimmed();
    if (caption.isEmpty())
        caption = horizontal(axis.side) ? QStringLiteral("x") : QStringLiteral("y");
    return QStringLiteral("%1 axis, %2").arg(caption, sideName(axis.side));
}

QString ChartDescription::axisKind(const PlotAxis& axis)
{
    if (axis.discrete)
        return QStringLiteral("categories");
    if (axis.time)
        return QStringLiteral("time");
    return axis.ticks.logarithmic() ? QStringLiteral("logarithmic") : QStringLiteral("continuous");
}

QString ChartDescription::axisRange(const PlotAxis& axis, const QLocale& locale)
{
    return axis.discrete ? categoryRange(axis) : fromTo(axis, axis.min, axis.max, locale);
}

std::vector<std::size_t> ChartDescription::drawnSeries(const ChartFrames& frames)
{
    std::vector<std::size_t> series;
    const KelChartPerVariableScaling& scaling = frames.pipeline().scaling();
    for (std::size_t i = 0; i < scaling.size(); ++i)
        if (scaling.valid(i))
            series.push_back(i);
    return series;
}

QString ChartDescription::seriesSummary(const ChartFrames& frames, std::size_t series, const QLocale& locale)
{
    const KelChartPerVariableScaling& scaling = frames.pipeline().scaling();
    if (series >= scaling.size() || !scaling.valid(series))
        return {};
    const KelChartVariableCache& cache = scaling.variable(series);
    const YSummary values(cache.y());
    if (values.count == 0)
        return QStringLiteral("no points");
    QString text = counted(values.count, "point", "points");
    if (values.unread == values.count)
        return text + QStringLiteral(", none with a reading");
    if (values.unread > 0)
        text += QStringLiteral(", %1 without a reading").arg(values.unread);
    const PlotAxis* y = frames.pipeline().axis(cache.variable().yAxis.get());
    return y == nullptr ? text : text + QStringLiteral(", ") + valuesText(*y, values, locale);
}

} // namespace Orv::Chart
