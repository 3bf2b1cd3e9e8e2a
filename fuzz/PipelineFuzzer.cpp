// The chart pipeline from the model to the matrices on arbitrary charts: axes
// of any kind (continuous, discrete, time) with any settings, variables with
// any data and units (timestamps among them). Each
// run goes through the unit update, the variable and list caches, the axis
// pair scales, the per-variable scaling and the valid variable list, and asks
// every question a renderer asks. Properties checked:
//   - every cache holds matching arrays and a position for every item placed;
//   - a valid axis scale has a finite, non-empty range, a bounded number of
//     finite entries, and a continuous one ascending ticks inside [0, 1]; a
//     logarithmic one (any continuous axis may be) positive real values and
//     minor ticks inside the range;
//   - a valid variable's matrix is finite.
// The data of one input stay below a few thousand items, so runs stay fast.

#include "FuzzInput.h"
#include "FuzzTargets.h"
#include "QuietLogger.h"

#include "KelChart2D.h"
#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"
#include "KelChartPipeline.h"

#include "NumberFormat.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

using Comp = Orv::Math::Vector3::Comp;
using Orv::Math::NumberFormat;
using Orv::Math::Vector2;
using Orv::Math::Vector3;

constexpr int maxVariables = 4;
constexpr std::size_t maxItemsPerVariable = 1024;
constexpr int maxLabels = 8;
constexpr std::size_t maxPattern = 8;

const char* const units[] = {"", "m", "km", "degC", "degF", "K", "Pa", "kPa", "h", "s", "m/s", "1", "no unit",
                             "s since 2012-01-01 00:00:00 UTC", "days since 1958-03-01"};
const char* const axisNames[] = {"axis.x.first", "axis.x.second", "axis.y.first", "axis.y.second",
                                 "axis.z.first", "axis.z.second", "nowhere"};

QString unitFrom(FuzzInput& in)
{
    return QString::fromLatin1(units[in.index(static_cast<int>(std::size(units)))]);
}

QString axisNameFrom(FuzzInput& in)
{
    return QString::fromLatin1(axisNames[in.index(static_cast<int>(std::size(axisNames)))]);
}

void setUpContinuous(KelChartAxisContinuous& axis, FuzzInput& in)
{
    axis.autoScale.set(in.flag());
    axis.min.set(in.anyDouble());
    axis.max.set(in.anyDouble());
    axis.logarithmic.set(in.flag());
    axis.symmetric.set(in.flag());
    axis.unitLabel.set(unitFrom(in));
}

// Fixed "min" and "max" and the data may both run to huge category indices.
void setUpDiscrete(KelChartAxisDiscrete& axis, FuzzInput& in)
{
    axis.autoScale.set(in.flag());
    axis.min.set(in.anyInt());
    axis.max.set(in.anyInt());
    QStringList labels;
    const int count = in.index(maxLabels + 1);
    for (int i = 0; i < count; ++i)
        labels << QStringLiteral("c%1").arg(i);
    axis.labels.setLabels(labels);
}

// A time axis in one of a few zones, with a format now and then; its unit
// comes from the data (any unit, a timestamp or not).
void setUpTime(KelChartAxisTime& axis, FuzzInput& in)
{
    static const char* const zones[] = {"UTC", "Europe/Berlin", "America/Sao_Paulo", "Australia/Lord_Howe",
                                        "Asia/Kathmandu", "Nowhere/Special"};
    axis.timeZone.set(QString::fromLatin1(zones[in.index(6)]));
    axis.labelFormat.set(in.flag() ? QStringLiteral("%Y-%m-%d %H:%M") : QString());
}

// Makes none, a continuous, a discrete or a time axis in the pair's first or second slot.
void setUpAxis(KelChartAxisPair& pair, bool first, FuzzInput& in)
{
    const int kind = in.index(4);
    if (kind == 0)
        return;
    const QString name = first ? QStringLiteral("first") : QStringLiteral("second");
    const QStringList types = {KelChartAxisContinuous::typeString, KelChartAxisDiscrete::typeString,
                               KelChartAxisTime::typeString};
    const QString& type = types[kind - 1];
    KelChartAxis& axis = first ? pair.createFirst(name, type) : pair.createSecond(name, type);
    axis.enabled.set(in.index(8) != 0);
    axis.inverted.set(in.flag());
    if (auto* time = dynamic_cast<KelChartAxisTime*>(&axis))
        setUpTime(*time, in);
    if (auto* continuous = dynamic_cast<KelChartAxisContinuous*>(&axis))
        setUpContinuous(*continuous, in);
    else if (auto* discrete = dynamic_cast<KelChartAxisDiscrete*>(&axis))
        setUpDiscrete(*discrete, in);
}

// A column of `size` values: category indices, an arithmetic run from any
// start by any step, or a short pattern repeated (equal values included).
template <class T>
std::vector<T> columnFrom(FuzzInput& in, std::size_t size)
{
    std::vector<T> column(size);
    switch (in.index(3)) {
    case 0:
        for (std::size_t i = 0; i < size; ++i)
            column[i] = static_cast<T>(i);
        break;
    case 1: {
        const double start = in.anyDouble();
        const double step = in.anyDouble();
        for (std::size_t i = 0; i < size; ++i)
            column[i] = static_cast<T>(start + step * static_cast<double>(i));
        break;
    }
    default: {
        std::vector<double> pattern(in.index(static_cast<int>(maxPattern)) + 1);
        for (double& value : pattern)
            value = in.anyDouble();
        for (std::size_t i = 0; i < size; ++i)
            column[i] = static_cast<T>(pattern[i % pattern.size()]);
        break;
    }
    }
    return column;
}

// Undefined flags from a repeated bit pattern; possibly fewer than the values.
std::vector<bool> flagsFrom(FuzzInput& in, std::size_t size)
{
    const std::uint8_t pattern = in.byte();
    std::vector<bool> flags(static_cast<std::size_t>(in.integer(0, static_cast<std::int64_t>(size))));
    for (std::size_t i = 0; i < flags.size(); ++i)
        flags[i] = ((pattern >> (i % 8)) & 1) != 0;
    return flags;
}

Vector3 vectorFrom(FuzzInput& in)
{
    const float x = in.anyFloat();
    const float y = in.anyFloat();
    const float z = in.anyFloat();
    return Vector3(x, y, z);
}

void setUpVariable(KelChartVariable& variable, int position, FuzzInput& in)
{
    variable.enabled.set(in.index(8) != 0);
    variable.order.set(in.index(5) - 2 + position);
    variable.xAxis.set(axisNameFrom(in));
    variable.yAxis.set(axisNameFrom(in));
    if (in.index(4) == 0)
        variable.zAxis.set(axisNameFrom(in));
    variable.style.componentSortAxis.set(in.index(3) - 1);
    variable.autoRange.set(in.flag());
    const Vector3 min = vectorFrom(in);
    variable.min.reset(min, unitFrom(in), QString(), QString());
    const Vector3 max = vectorFrom(in);
    variable.max.reset(max, unitFrom(in), QString(), QString());

    const auto size = static_cast<std::size_t>(in.integer(0, maxItemsPerVariable));
    if (in.index(4) == 0) {
        std::vector<double> values = columnFrom<double>(in, size);
        std::vector<bool> undefined = flagsFrom(in, size);
        variable.variableiter.setScalarData(std::move(values), std::move(undefined), unitFrom(in));
        return;
    }
    std::vector<float> x = columnFrom<float>(in, size);
    std::vector<float> y = columnFrom<float>(in, size);
    std::vector<bool> xUndefined = flagsFrom(in, size);
    std::vector<bool> yUndefined = flagsFrom(in, size);
    const QString xUnit = unitFrom(in);
    const QString yUnit = unitFrom(in);
    variable.variableiter.setVector2Data(std::move(x), std::move(y), std::move(xUndefined), std::move(yUndefined),
                                         xUnit, yUnit);
}

void checkCache(const KelChartVariableCache& cache)
{
    FUZZ_CHECK(cache.valid());
    FUZZ_CHECK(cache.x().size() == cache.y().size());
    FUZZ_CHECK(cache.index().size() >= cache.x().size());
    const std::size_t items = cache.variable().variableiter.size();
    for (const std::size_t position : cache.index())
        FUZZ_CHECK(position < items);
    cache.fillBaseLine();
    cache.minXDelta();
}

void checkScale(const KelChartAxisScale& scale)
{
    if (!scale.valid())
        return;
    FUZZ_CHECK(std::isfinite(scale.min()) && std::isfinite(scale.max()) && scale.min() < scale.max());
    FUZZ_CHECK(std::isfinite(scale.factor()) && scale.factor() > 0);
    FUZZ_CHECK(scale.baseLine() >= scale.min() && scale.baseLine() <= scale.max());
    // A discrete scale stores at most the entry limit, plus labels beyond its range.
    if (scale.discrete())
        FUZZ_CHECK(scale.entryCount() <= KelChartAxisScale::MaxDiscreteEntries + maxLabels);
    else
        FUZZ_CHECK(scale.size() >= 2 && scale.size() <= 10u * Orv::Math::NiceIntervals::MaxCount + 2);
    FUZZ_CHECK(scale.label(scale.entryCount()).isEmpty() && scale.value(scale.entryCount()) == 0);
    for (unsigned int i = 0; i < std::min(scale.size(), scale.entryCount()); ++i) {
        FUZZ_CHECK(std::isfinite(scale.value(i)) && std::isfinite(scale.percentage(i)));
        if (scale.discrete())
            continue;
        FUZZ_CHECK(i == 0 || scale.value(i - 1) < scale.value(i));
        FUZZ_CHECK(scale.percentage(i) >= 0 && scale.percentage(i) <= 1);
        if (scale.logarithmic())
            FUZZ_CHECK(std::isfinite(scale.realValue(i)) && scale.realValue(i) > 0);
    }
    for (unsigned int i = 0; i < scale.minorTickCount(); ++i) {
        const KelChartAxisScale::MinorTick& minor = scale.minorTick(i);
        FUZZ_CHECK(scale.logarithmic() && std::isfinite(minor.value) && minor.realValue > 0);
        FUZZ_CHECK(minor.percentage >= -1e-9 && minor.percentage <= 1 + 1e-9 && !minor.label.isEmpty());
    }
}

void checkScaling(const KelChartPerVariableScaling& scaling)
{
    for (std::size_t i = 0; i < scaling.size(); ++i) {
        const Orv::Math::Matrix& matrix = scaling.matrix(i);
        if (scaling.valid(i))
            for (int row = 0; row < 4; ++row)
                for (int column = 0; column < 4; ++column)
                    FUZZ_CHECK(std::isfinite(matrix(row, column)));
        for (const Comp comp : {Comp::X, Comp::Y, Comp::Z}) {
            scaling.baseLine(i, comp);
            Vector2 extents;
            double baseLine = 0;
            scaling.gradientExtents(i, comp, extents, baseLine);
            scaling.isAxisDiscrete(comp, i);
        }
    }
}

} // namespace

int fuzzPipeline(const std::uint8_t* data, std::size_t size)
{
    const QuietLogger quiet;
    FuzzInput in(data, size);
    KelModifiedGroup group;
    KelChart2D chart(group);
    for (KelChartAxisPair* pair : {&chart.axisX, &chart.axisY, &chart.axisZ}) {
        setUpAxis(*pair, true, in);
        setUpAxis(*pair, false, in);
    }
    chart.unitSystem.enabled.set(in.flag());
    const int variables = in.index(maxVariables) + 1;
    for (int i = 0; i < variables; ++i)
        setUpVariable(chart.variables.child(QStringLiteral("v%1").arg(i), KelChartVariable::typeString), i, in);
    const auto tickCount = static_cast<unsigned int>(in.anyInt());
    const NumberFormat format(in.flag() ? NumberFormat::Notation::Automatic : NumberFormat::Notation::Fixed);
    const bool threeD = in.flag();
    QStringList positionAxes;
    if (in.flag())
        positionAxes << axisNameFrom(in);

    const KelChartPipeline pipeline(chart, {KelChartPipeline::everyAxis(tickCount, format), threeD, positionAxes});
    const KelChartVariableListCache& cache = pipeline.cache();
    for (std::size_t i = 0; i < cache.size(); ++i)
        checkCache(cache.cache(i));
    cache.bounds();
    cache.fillBaseLine();
    cache.minXDelta();
    cache.maxScalarLen();
    for (const KelChartAxisPairScale* scales : {&pipeline.xScales(), &pipeline.yScales(), &pipeline.zScales()}) {
        checkScale(scales->first());
        checkScale(scales->second());
    }
    checkScaling(pipeline.scaling());

    const KelChartValidVariableList& validVariables = pipeline.validVariables();
    for (std::size_t i = 0; i < validVariables.size(); ++i) {
        validVariables.minmax(i);
        validVariables.fillBaseLine(i);
        FUZZ_CHECK(validVariables.findIndexByName(validVariables.variable(i).name()) >= 0);
    }
    return 0;
}

#ifndef ORV_FUZZ_REPLAY
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return fuzzPipeline(data, size);
}
#endif
