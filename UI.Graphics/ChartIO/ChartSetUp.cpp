#include "ChartSetUp.h"

#include "KelChartAxisContinuous.h"
#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"
#include "KelUnitsConverter.h"
#include "KelChartLegend.h"

#include <QColor>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Orv::Chart {

namespace {

// The same hue and saturation on the other side of middle lightness: a light
// colour gets a dark companion and a dark one a light companion.
QColor companion(const QColor& colour)
{
    constexpr double shift = 0.22;
    const double lightness = colour.lightnessF();
    const double moved = lightness > 0.55 ? lightness - shift : lightness + shift;
    return QColor::fromHslF(colour.hslHueF(), colour.hslSaturationF(), moved);
}

// Hues a golden angle apart never come back to an earlier one, and
// neighbours alternate between a darker and a lighter shade.
QColor generatedColour(std::size_t n)
{
    constexpr double goldenAngle = 137.50776405003785;
    constexpr double firstHue = 20.0;
    const double hue = std::fmod(firstHue + static_cast<double>(n) * goldenAngle, 360.0);
    const double lightness = n % 2 == 0 ? 0.42 : 0.62;
    return QColor::fromHslF(hue / 360.0, 0.65, lightness);
}

// Ten series colours, then a companion of each, then generated hues.
QColor paletteColour(std::size_t index)
{
    static const QRgb palette[] = {0x4e79a7, 0xf28e2b, 0xe15759, 0x76b7b2, 0x59a14f,
                                   0xedc948, 0xb07aa1, 0xff9da7, 0x9c755f, 0xbab0ac};
    constexpr std::size_t size = std::size(palette);
    if (index < size)
        return {palette[index]};
    if (index < 2 * size)
        return companion(QColor(palette[index - size]));
    return generatedColour(index - 2 * size);
}

// The data of a file fill their axis rather than a range rounded out to
// ticks; discrete axes have no such range.
void showTightRange(KelChartAxis& axis)
{
    if (auto* continuous = dynamic_cast<KelChartAxisContinuous*>(&axis))
        continuous->tightRange.set(true);
}

// Units without text are of no dimension: they match only each other.
bool sameDimension(const QString& a, const QString& b)
{
    if (a.isEmpty() || b.isEmpty())
        return a == b;
    static const KelUnitsConverter converter;
    return converter.convertible(a, b);
}

// The largest magnitude of a column's defined values; 0 when it has none.
double magnitudeOf(const DataColumn& column)
{
    double largest = 0.0;
    for (std::size_t i = 0; i < column.size(); ++i)
        if (!column.undefined[i] && std::isfinite(column.values[i]))
            largest = std::max(largest, std::abs(static_cast<double>(column.values[i])));
    return largest;
}

// Whether two magnitudes are so far apart that the smaller would lie flat on a shared axis.
bool farApart(double a, double b)
{
    constexpr double ratio = 50.0;
    return a > 0.0 && b > 0.0 && (a > ratio * b || b > ratio * a);
}

// Chooses the y axis of each series by its unit, opening the right axis for a
// second dimension, or, while it is free, for values of the left axis's
// dimension that are too large or too small to share its scale (a volume of
// millions beside prices of a hundred). Bars keep the range rounded out to
// ticks, often down to zero: a tight one would leave the lowest bar a sliver
// above the axis.
class YAxes {
public:
    YAxes(KelChartAxisPair& pair, SeriesShape shape)
        : m_pair(pair)
        , m_tight(shape != SeriesShape::Bars)
    {
    }

    KelChartAxis& axisFor(const DataColumn& column)
    {
        const QString& unit = column.unit;
        const double magnitude = magnitudeOf(column);
        if (!m_left)
            return open(m_left, m_leftSide, column, QStringLiteral("left"));
        if (m_right && sameDimension(unit, m_rightSide.unit) && !farApart(magnitude, m_rightSide.magnitude)
            && farApart(magnitude, m_leftSide.magnitude))
            return take(*m_right, m_rightSide, magnitude);
        if (sameDimension(unit, m_leftSide.unit) && (m_right || !farApart(magnitude, m_leftSide.magnitude)))
            return take(*m_left, m_leftSide, magnitude);
        if (m_right && !sameDimension(unit, m_rightSide.unit))
            return *m_left;
        return m_right ? take(*m_right, m_rightSide, magnitude)
                       : open(m_right, m_rightSide, column, QStringLiteral("right"));
    }

private:
    struct Side {
        QString unit;
        double magnitude = 0.0;
    };

    static KelChartAxis& take(KelChartAxis& axis, Side& side, double magnitude)
    {
        side.magnitude = std::max(side.magnitude, magnitude);
        return axis;
    }

    KelChartAxis& open(KelChartAxis*& axis, Side& side, const DataColumn& column, const QString& name)
    {
        axis = m_left ? &m_pair.createSecond(name, KelChartAxisContinuous::typeString)
                      : &m_pair.createFirst(name, KelChartAxisContinuous::typeString);
        if (m_tight)
            showTightRange(*axis);
        side = {column.unit, magnitudeOf(column)};
        return *axis;
    }

    KelChartAxisPair& m_pair;
    bool m_tight;
    KelChartAxis* m_left = nullptr;
    KelChartAxis* m_right = nullptr;
    Side m_leftSide;
    Side m_rightSide;
};

void setBars(KelChartVariableStyle& style, const QColor& colour, std::size_t index, std::size_t count)
{
    // Bars of one category side by side, together 80% of the category.
    const double width = 0.8 / static_cast<double>(count);
    style.style.set(KelChart::styleBar);
    style.fill.set({KelChart::fillSolid});
    style.fillColor.set({colour});
    style.barWidth.set({width});
    style.barOffset.set({(static_cast<double>(index) - (static_cast<double>(count) - 1.0) / 2.0) * width});
}

void setLook(KelChartVariableStyle& style, std::size_t index, std::size_t count, SeriesShape shape)
{
    const QColor colour = paletteColour(index);
    style.lineColor.set({colour});
    style.symbolFillColor.set({colour});
    switch (shape) {
    case SeriesShape::Lines:
        style.style.set(KelChart::styleLine);
        style.lineWidth.set({1.5});
        break;
    case SeriesShape::Points:
        // No plot style draws no line; the symbols alone show the points.
        style.style.set(KelChart::styleNone);
        style.symbol.set({KelChart::symbolEllipse});
        style.symbolSize.set({6});
        style.symbolOutline.set({false});
        break;
    case SeriesShape::Bars:
        setBars(style, colour, index, count);
        break;
    }
}

// Each quantity once: series of one value column split into groups share its name.
void appendTitle(KelChartAxis& axis, const QString& name)
{
    const QString title = axis.title.get();
    if (title.split(QStringLiteral(", ")).contains(name))
        return;
    axis.title.set(title.isEmpty() ? name : title + QStringLiteral(", ") + name);
}

} // namespace

void setUpChartForData(KelChart2D& chart, const DataSet& data, const QString& title)
{
    chart.title.set(title);
    const QString& xType = data.discreteX ? KelChartAxisDiscrete::typeString
                           : data.timeX   ? KelChartAxisTime::typeString
                                          : KelChartAxisContinuous::typeString;
    KelChartAxis& x = chart.axisX.createFirst(QStringLiteral("bottom"), xType);
    showTightRange(x);
    if (!data.series.empty())
        x.title.set(data.series.front().x.name);
    YAxes yAxes(chart.axisY, data.shape);
    for (std::size_t i = 0; i < data.series.size(); ++i) {
        const DataColumn& column = data.series[i].y;
        KelChartAxis& y = yAxes.axisFor(column);
        appendTitle(y, data.series[i].valueName.isEmpty() ? column.name : data.series[i].valueName);
        KelChartVariable& variable = chart.variables.child(column.name, KelChartVariable::typeString);
        variable.title.set(column.name);
        variable.xAxis.set(x.name());
        variable.yAxis.set(y.name());
        variable.order.set(static_cast<int>(i));
        setLook(variable.style, i, data.series.size(), data.shape);
    }
    // The legend is the chart's own element, saved with it and set like any other.
    addLegend(chart);
}

const KelChartLegend* legendOf(const KelChart& chart)
{
    for (unsigned i = 0; i < chart.size(); ++i)
        if (const auto* legend = dynamic_cast<const KelChartLegend*>(chart[i]))
            return legend;
    return nullptr;
}

void addLegend(KelChart& chart)
{
    if (!legendOf(chart))
        chart.insert(new KelChartLegend(chart.group()), false);
}

} // namespace Orv::Chart
