#include "Report.h"

#include "NumberText.h"

#include <QStringList>
#include <QTextStream>

#include <cmath>

namespace kelchart {

namespace {

QString sideName(AxisSide side)
{
    switch (side) {
    case AxisSide::Bottom:
        return QStringLiteral("bottom");
    case AxisSide::Top:
        return QStringLiteral("top");
    case AxisSide::Left:
        return QStringLiteral("left");
    case AxisSide::Right:
        break;
    }
    return QStringLiteral("right");
}

QString quoted(const QString& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('\\'), QStringLiteral("\\\\")).replace(QLatin1Char('"'), QStringLiteral("\\\""));
    return QLatin1Char('"') + escaped + QLatin1Char('"');
}

QString point(const Orv::Math::Vector3& v)
{
    return QStringLiteral("(%1, %2)").arg(numberText(v.x()), numberText(v.y()));
}

QString matrixRow(const Orv::Math::Matrix& m, int row)
{
    QStringList cells;
    for (int column = 0; column < 4; ++column)
        cells << numberText(m(row, column));
    return cells.join(QLatin1Char(' '));
}

void writeHeader(QTextStream& out, const Plot& pipeline)
{
    const KelChart& chart = pipeline.chart();
    out << "chart " << quoted(chart.name()) << " type " << chart.type() << " title " << quoted(chart.title.get())
        << '\n';
    out << "variables: " << chart.variables.size() << " in the chart, " << pipeline.unitsAccepted().size()
        << " with accepted units, " << pipeline.cache().size() << " cached\n";
}

void writeTicks(QTextStream& out, const std::vector<Tick>& ticks)
{
    for (const Tick& tick : ticks)
        out << "    " << numberText(tick.value) << ' ' << quoted(tick.label) << " at " << numberText(tick.position)
            << (tick.labelled ? "" : ", label not drawn") << '\n';
}

void writeAxis(QTextStream& out, const PlotAxis& axis)
{
    out << "axis " << quoted(axis.name) << " at the " << sideName(axis.side) << ", "
        << (axis.discrete ? "discrete" : axis.time ? "time" : "continuous")
        << (axis.ticks.logarithmic() ? ", logarithmic (positions are log10 of the values)" : "") << '\n';
    out << "  range: " << numberText(axis.min) << " .. " << numberText(axis.max) << '\n';
    out << "  factor: " << numberText(axis.factor) << '\n';
    out << "  base line: " << numberText(axis.baseLine) << '\n';
    out << "  unit label: " << quoted(axis.unitLabel) << '\n';
    // Labels relative to an offset say so; a time axis always tells its offset text.
    if (axis.time || !axis.offsetText.isEmpty())
        out << "  offset text: " << quoted(axis.offsetText) << '\n';
    out << "  ticks: " << axis.ticks.major().size() << ", " << axis.wanted << " intervals wanted\n";
    writeTicks(out, axis.ticks.major());
    if (axis.ticks.logarithmic()) {
        out << "  minor ticks: " << axis.ticks.minor().size() << '\n';
        writeTicks(out, axis.ticks.minor());
    }
}

void writeVariable(QTextStream& out, const KelChartPerVariableScaling& scaling, std::size_t i)
{
    const KelChartVariableCache& cache = scaling.variable(i);
    const KelChartVariable& variable = cache.variable();
    out << "variable " << quoted(variable.name()) << " on " << quoted(variable.xAxis.get()) << " and "
        << quoted(variable.yAxis.get()) << (scaling.valid(i) ? "" : ", axes not found") << '\n';
    out << "  cache: " << cache.index().size() << " items, " << cache.x().size() << " points, "
        << cache.yUndef().size() << " without y, " << cache.xUndef().size() << " without x\n";
    out << "  bounds: " << point(cache.bounds().min()) << " .. " << point(cache.bounds().max()) << '\n';
    const Orv::Math::Matrix& matrix = scaling.matrix(i);
    for (int row = 0; row < 4; ++row)
        out << "  matrix row " << row << ": " << matrixRow(matrix, row) << '\n';
}

void writeValidVariables(QTextStream& out, const KelChartValidVariableList& list)
{
    out << "valid variables: " << list.size() << '\n';
    for (std::size_t i = 0; i < list.size(); ++i)
        out << "  " << quoted(list.variable(i).name()) << ": " << numberText(list.minmax(i).x()) << " .. "
            << numberText(list.minmax(i).y()) << ", fill base line " << numberText(list.fillBaseLine(i)) << '\n';
}

} // namespace

QString Report::full(const Plot& pipeline, const ChartLayout& layout)
{
    QString text;
    QTextStream out(&text);
    writeHeader(out, pipeline);
    const QRectF plot = layout.plot();
    out << "image: " << layout.size().width() << " x " << layout.size().height() << ", plot area at ("
        << numberText(plot.left()) << ", " << numberText(plot.top()) << "), " << numberText(plot.width()) << " x "
        << numberText(plot.height()) << '\n';
    for (const PlotAxis& axis : pipeline.axes())
        writeAxis(out, axis);
    for (std::size_t i = 0; i < pipeline.scaling().size(); ++i)
        writeVariable(out, pipeline.scaling(), i);
    writeValidVariables(out, pipeline.validVariables());
    return text;
}

QString Report::summary(const Plot& pipeline)
{
    QString text;
    QTextStream out(&text);
    const KelChart& chart = pipeline.chart();
    out << quoted(chart.title.get()) << ": " << pipeline.cache().size() << " of " << chart.variables.size()
        << " variables drawn\n";
    for (const PlotAxis& axis : pipeline.axes()) {
        out << "  axis " << axis.name << ": ";
        if (axis.discrete)
            out << axis.ticks.major().size() << " categories\n";
        else if (axis.ticks.logarithmic())
            out << QString::number(std::pow(10.0, axis.min), 'g', 4) << " .. "
                << QString::number(std::pow(10.0, axis.max), 'g', 4) << ' ' << axis.unitLabel << ", logarithmic\n";
        else
            out << numberText(axis.min) << " .. " << numberText(axis.max) << ' ' << axis.unitLabel << '\n';
    }
    const KelChartValidVariableList& valid = pipeline.validVariables();
    for (std::size_t i = 0; i < valid.size(); ++i)
        out << "  variable " << valid.variable(i).name() << ": " << numberText(valid.minmax(i).x()) << " .. "
            << numberText(valid.minmax(i).y()) << '\n';
    return text;
}

} // namespace kelchart
