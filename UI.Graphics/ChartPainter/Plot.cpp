#include "Plot.h"

#include "AxisPainter_p.h"
#include "ChartLayout.h"
#include "LocaleText.h"
#include "TextStyle_p.h"
#include "TickFit.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisTime.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace Orv::Chart {

namespace {

// The first run's request, before the layout is known.
constexpr unsigned firstCount = 8;

// Free pixels between tick labels, and the least distance between ticks along
// and across, which keep an axis from looking crowded.
constexpr double labelGap = 24;
constexpr double horizontalDistance = 56;
constexpr double verticalDistance = 30;
// Labels along a horizontal axis wider than about what the column beside a
// vertical axis holds are shown relative to an offset, as they are there.
constexpr double horizontalOffsetRoom = 6 * TickRoom::characterWidth;

// The drawn width of a label: the model's texts as the room's locale writes
// them, category names as they are.
std::function<double(const QString&)> labelWidth(const TickRoom& room, bool modelTexts)
{
    auto width = room.labelWidth ? room.labelWidth : TickFit::perCharacter(TickRoom::characterWidth);
    if (!modelTexts || room.locale.language() == QLocale::C)
        return width;
    return [width, locale = room.locale](const QString& text) { return width(LocaleText::label(text, locale)); };
}

// Linear numeric labels only: calendar labels have their own offset text, and
// logarithmic or category labels are no run of decimals.
bool takesOffset(const KelChartAxisScale& scale, const KelChartAxis& axis)
{
    return !scale.discrete() && !scale.logarithmic() && axis.type() != KelChartAxisTime::typeString;
}

// The interval count each valid axis of the first run has room for.
AxisFits fitAxes(const KelChartPipeline& first, const AxisPairs& pairs, const TickRoom& room,
                 const LegendLook& legend)
{
    const ChartLayout layout(first, room.size, legend);
    AxisFits fits;
    const auto fit = [&](const KelChartAxisScale& scale, const KelChartAxis* axis, AxisSide side) {
        if (!scale.valid() || axis == nullptr)
            return;
        LabelRoom labels;
        labels.width = labelWidth(room, !scale.discrete());
        labels.horizontal = side == AxisSide::Bottom || side == AxisSide::Top;
        labels.length = labels.horizontal ? layout.plot().width() : layout.plot().height();
        labels.gap = labelGap;
        labels.minDistance = labels.horizontal ? horizontalDistance : verticalDistance;
        if (takesOffset(scale, *axis))
            labels.offsetRoom =
                labels.horizontal ? horizontalOffsetRoom : AxisPainter::labelColumn(layout.axisBand(side));
        fits[axis] = {TickFit::count(scale, labels, room.maxCount), labels};
    };
    fit(first.xScales().first(), pairs.x->first(), AxisSide::Bottom);
    fit(first.xScales().second(), pairs.x->second(), AxisSide::Top);
    fit(first.yScales().first(), pairs.y->first(), AxisSide::Left);
    fit(first.yScales().second(), pairs.y->second(), AxisSide::Right);
    return fits;
}

const AxisFit* fitOf(const AxisFits& fits, const KelChartAxis* axis)
{
    const auto found = fits.find(axis);
    return found == fits.end() ? nullptr : &found->second;
}

KelChartPipeline::Settings settingsFor(const AxisFits& fits)
{
    const auto request = [&fits](const KelChartAxis& axis) {
        const AxisFit* fit = fitOf(fits, &axis);
        return KelChartPipeline::TickRequest{fit ? fit->count : firstCount, {}};
    };
    return {request, false, QStringList()};
}

} // namespace

Plot::Plot(KelChart& chart, const AxisPairs& pairs, const TickRoom& room)
    : m_chart(chart)
    , m_first(chart.unitSystem, *pairs.x, *pairs.y, *pairs.z, chart.variables,
              {KelChartPipeline::everyAxis(firstCount), false, QStringList()})
    , m_fits(fitAxes(m_first, pairs, room, legendLookOf(chart)))
    , m_run(*pairs.x, *pairs.y, *pairs.z, m_first.cache(), settingsFor(m_fits))
{
    addAxes(pairs);
}

Plot::Plot(KelChart& chart, const AxisPairs& pairs, const TickRoom& room,
                   const KelChartVariableListCache& cache)
    : m_chart(chart)
    , m_first(*pairs.x, *pairs.y, *pairs.z, cache, {KelChartPipeline::everyAxis(firstCount), false, QStringList()})
    , m_fits(fitAxes(m_first, pairs, room, legendLookOf(chart)))
    , m_run(*pairs.x, *pairs.y, *pairs.z, cache, settingsFor(m_fits))
{
    addAxes(pairs);
}

void Plot::addAxes(const AxisPairs& pairs)
{
    addAxis(m_run.xScales().first(), pairs.x->first(), AxisSide::Bottom);
    addAxis(m_run.xScales().second(), pairs.x->second(), AxisSide::Top);
    addAxis(m_run.yScales().first(), pairs.y->first(), AxisSide::Left);
    addAxis(m_run.yScales().second(), pairs.y->second(), AxisSide::Right);
}

void Plot::addAxis(const KelChartAxisScale& scale, const KelChartAxis* axis, AxisSide side)
{
    if (!scale.valid())
        return;
    const AxisFit* fit = fitOf(m_fits, axis);
    // A discrete axis keeps a slot for every category and labels every k-th
    // where the labels would crowd it.
    const unsigned stride = fit ? TickFit::stride(scale, fit->room) : 1;
    const std::vector<bool> minorLabels = fit ? TickFit::labelledMinors(scale, fit->room, stride) : std::vector<bool>();
    const LabelOffset offset = fit ? TickFit::offset(scale, fit->room) : LabelOffset();
    m_axes.emplace_back(scale, *axis, side, fit ? fit->count : firstCount,
                        AxisTicks(scale, stride, minorLabels, offset.labels), offset);
}

const PlotAxis* Plot::axis(const QString& name) const
{
    for (const PlotAxis& result : m_axes)
        if (result.name == name)
            return &result;
    return nullptr;
}

PlotAxis::PlotAxis(const KelChartAxisScale& scale, const KelChartAxis& axis, AxisSide side, unsigned wanted,
                   AxisTicks ticks, const LabelOffset& labelOffset)
    : name(scale.axisName())
    , side(side)
    , axis(&axis)
    , discrete(scale.discrete())
    , time(axis.type() == KelChartAxisTime::typeString)
    , offsetText(scale.offsetText())
    , min(scale.min())
    , max(scale.max())
    , factor(scale.factor())
    , baseLine(scale.baseLine())
    , wanted(wanted)
    , ticks(std::move(ticks))
{
    if (labelOffset.applies()) {
        offsetText = labelOffset.text;
        offset = labelOffset.value;
        factor = std::pow(10.0, labelOffset.exponent);
    }
    // A time axis's unit only says where its numbers start; its labels are dates.
    if (const auto* continuous = dynamic_cast<const KelChartAxisContinuous*>(&axis); continuous && !time)
        unitLabel = continuous->unitLabel.get();
}

} // namespace Orv::Chart
