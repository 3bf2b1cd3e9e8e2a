#include "ChartAxis.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"

#include <cmath>
#include <limits>

namespace Orv::Chart {

namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();

} // namespace

ChartAxis::ChartAxis(Access access, QObject* parent)
    : QObject(parent)
    , m_access(std::move(access))
{
}

KelChartAxisContinuous* ChartAxis::continuous() const
{
    return dynamic_cast<KelChartAxisContinuous*>(m_access.find());
}

double ChartAxis::min() const
{
    const KelChartAxisContinuous* axis = continuous();
    double min = nan;
    double max = nan;
    if (axis != nullptr && !m_access.shown(min, max))
        min = axis->min.get();
    return min;
}

double ChartAxis::max() const
{
    const KelChartAxisContinuous* axis = continuous();
    double min = nan;
    double max = nan;
    if (axis != nullptr && !m_access.shown(min, max))
        max = axis->max.get();
    return max;
}

bool ChartAxis::autoScale() const
{
    const KelChartAxisContinuous* axis = continuous();
    return axis != nullptr && axis->autoScale.get();
}

bool ChartAxis::logarithmic() const
{
    const KelChartAxisContinuous* axis = continuous();
    return axis != nullptr && axis->logarithmic.get();
}

QString ChartAxis::title() const
{
    const KelChartAxis* axis = m_access.find();
    return axis != nullptr ? axis->title.get() : QString();
}

QString ChartAxis::kind() const
{
    const KelChartAxis* axis = m_access.find();
    if (dynamic_cast<const KelChartAxisTime*>(axis) != nullptr)
        return QStringLiteral("time");
    if (dynamic_cast<const KelChartAxisContinuous*>(axis) != nullptr)
        return QStringLiteral("continuous");
    if (dynamic_cast<const KelChartAxisDiscrete*>(axis) != nullptr)
        return QStringLiteral("discrete");
    return {};
}

// A range the user wrote is shown as written, as after a zoom.
void ChartAxis::fix(double min, double max)
{
    KelChartAxisContinuous* axis = continuous();
    if (axis == nullptr || !std::isfinite(min) || !std::isfinite(max) || !(min < max))
        return;
    axis->autoScale.set(false);
    axis->tightRange.set(true);
    axis->min.set(min);
    axis->max.set(max);
    m_access.edited();
}

void ChartAxis::setMin(double value)
{
    fix(value, max());
}

void ChartAxis::setMax(double value)
{
    fix(min(), value);
}

void ChartAxis::setAutoScale(bool on)
{
    KelChartAxisContinuous* axis = continuous();
    if (axis == nullptr || axis->autoScale.get() == on)
        return;
    axis->autoScale.set(on);
    m_access.edited();
}

void ChartAxis::setLogarithmic(bool on)
{
    KelChartAxisContinuous* axis = continuous();
    if (axis == nullptr || axis->logarithmic.get() == on)
        return;
    axis->logarithmic.set(on);
    m_access.edited();
}

void ChartAxis::setTitle(const QString& title)
{
    KelChartAxis* axis = m_access.find();
    if (axis == nullptr || axis->title.get() == title)
        return;
    axis->title.set(title);
    m_access.edited();
}

} // namespace Orv::Chart
