#include "SeriesLook_p.h"

#include "KelChart.h"

#include <QHash>
#include <QPolygonF>
#include <QVector>

#include <cmath>
#include <vector>

namespace Orv::Chart {

namespace {

constexpr double pi = 3.14159265358979323846;

QString firstWord(const QStringList& words, const QString& fallback)
{
    return words.isEmpty() ? fallback : words.front();
}

// Dash patterns in units of the pen width; an empty pattern is a solid line.
QVector<qreal> dashPattern(const QString& line)
{
    static const QHash<QString, QVector<qreal>> patterns = {
        {KelChart::lineDense, {1, 1}},         {KelChart::lineMedium, {1, 2}},
        {KelChart::lineSparse, {1, 4}},        {KelChart::lineDashShort, {2, 2}},
        {KelChart::lineDashMedium, {4, 3}},    {KelChart::lineDashLong, {8, 4}},
        {KelChart::lineDashDot, {4, 2, 1, 2}}, {KelChart::lineDashDotDot, {4, 2, 1, 2, 1, 2}},
        {KelChart::lineDashDashDot, {4, 2, 4, 2, 1, 2}},
    };
    return patterns.value(line);
}

Qt::BrushStyle brushStyle(const QString& fill)
{
    static const QHash<QString, Qt::BrushStyle> styles = {
        {KelChart::fillNone, Qt::NoBrush},           {KelChart::fillSolid, Qt::SolidPattern},
        {KelChart::fillDense, Qt::Dense3Pattern},    {KelChart::fillMedium, Qt::Dense4Pattern},
        {KelChart::fillSparse, Qt::Dense6Pattern},   {KelChart::fillHorizontal, Qt::HorPattern},
        {KelChart::fillVertical, Qt::VerPattern},    {KelChart::fillCross, Qt::CrossPattern},
        {KelChart::fillBDiagonal, Qt::BDiagPattern}, {KelChart::fillFDiagonal, Qt::FDiagPattern},
        {KelChart::fillCrossDiagonal, Qt::DiagCrossPattern},
    };
    return styles.value(fill, Qt::SolidPattern);
}

QPolygonF regularPolygon(int corners, double radius, double startDegrees)
{
    QPolygonF polygon;
    for (int i = 0; i < corners; ++i) {
        const double angle = (startDegrees + 360.0 * i / corners) * pi / 180.0;
        polygon << QPointF(radius * std::cos(angle), -radius * std::sin(angle));
    }
    return polygon;
}

QPolygonF star(double radius)
{
    QPolygonF polygon;
    for (int i = 0; i < 10; ++i) {
        const double r = i % 2 == 0 ? radius : radius * 0.45;
        const double angle = (90.0 + 36.0 * i) * pi / 180.0;
        polygon << QPointF(r * std::cos(angle), -r * std::sin(angle));
    }
    return polygon;
}

// The outline of a symbol of the given size, centred on (0, 0).
QPainterPath symbolPath(const QString& symbol, double size)
{
    const QString name = symbol.toLower();
    const double r = size / 2.0;
    QPainterPath path;
    if (name == QLatin1String("rect")) {
        path.addRect(-r, -r, size, size);
    } else if (name == QLatin1String("diamond")) {
        path.addPolygon(regularPolygon(4, r, 90));
    } else if (name == QLatin1String("hexagon")) {
        path.addPolygon(regularPolygon(6, r, 0));
    } else if (name == QLatin1String("triangle") || name == QLatin1String("utriangle")) {
        path.addPolygon(regularPolygon(3, r, 90));
    } else if (name == QLatin1String("dtriangle")) {
        path.addPolygon(regularPolygon(3, r, 270));
    } else if (name == QLatin1String("ltriangle")) {
        path.addPolygon(regularPolygon(3, r, 180));
    } else if (name == QLatin1String("rtriangle")) {
        path.addPolygon(regularPolygon(3, r, 0));
    } else if (name == QLatin1String("cross")) {
        path.addRect(-r, -r / 3, size, size / 3);
        path.addRect(-r / 3, -r, size / 3, size);
        path.setFillRule(Qt::WindingFill);
    } else if (name == QLatin1String("xcross")) {
        QTransform turn;
        turn.rotate(45);
        return turn.map(symbolPath(QStringLiteral("cross"), size));
    } else if (name == QLatin1String("star")) {
        path.addPolygon(star(r));
    } else {
        path.addEllipse(QPointF(0, 0), r, r);
    }
    path.closeSubpath();
    return path;
}

} // namespace

QColor SeriesLook::lineColour(const KelChartVariableStyle& style)
{
    return entry(style.lineColor.get(), 0, QColor(Qt::black));
}

QPen SeriesLook::linePen(const KelChartVariableStyle& style, const QBrush& gradient)
{
    const QString line = firstWord(style.line.get(), KelChart::lineSolid);
    if (line == KelChart::lineNone)
        return {Qt::NoPen};
    // Qt draws a pen of width 0 one device pixel wide, which a high-DPI
    // picture would show thinner than the logical pixel the layout means.
    const double width = entry(style.lineWidth.get(), 0, 1.0);
    QPen pen(line == KelChart::lineGradient ? gradient : QBrush(lineColour(style)), width > 0 ? width : 1.0);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::RoundJoin);
    const QVector<qreal> dashes = dashPattern(line);
    if (!dashes.isEmpty())
        pen.setDashPattern(dashes);
    return pen;
}

QBrush SeriesLook::fillBrush(const KelChartVariableStyle& style, std::size_t item, const QBrush& gradient)
{
    const QString fill = entry(style.fill.get(), item, KelChart::fillNone);
    if (fill == KelChart::fillGradient)
        return gradient;
    return {entry(style.fillColor.get(), item, QColor(Qt::black)), brushStyle(fill)};
}

bool SeriesLook::usesLineGradient(const KelChartVariableStyle& style)
{
    return firstWord(style.line.get(), KelChart::lineSolid) == KelChart::lineGradient;
}

bool SeriesLook::usesFillGradient(const KelChartVariableStyle& style)
{
    return firstWord(style.fill.get(), KelChart::fillNone) == KelChart::fillGradient;
}

QBrush SeriesLook::gradient(const QList<QColor>& colours, QPointF from, QPointF to)
{
    QLinearGradient linear(from, to);
    for (int i = 0; i < colours.size(); ++i)
        linear.setColorAt(colours.size() > 1 ? static_cast<double>(i) / (colours.size() - 1) : 0.0, colours[i]);
    return {linear};
}

bool SeriesLook::fills(const KelChartVariableStyle& style)
{
    return firstWord(style.fill.get(), KelChart::fillNone) != KelChart::fillNone;
}

bool SeriesLook::drawsFromBaseLine(const KelChartVariableStyle& style)
{
    const QString plot = style.style.get();
    return plot == KelChart::styleBar || plot == QLatin1String("stick") || fills(style);
}

bool SeriesLook::hasSymbols(const KelChartVariableStyle& style)
{
    for (const QString& symbol : style.symbol.get())
        if (symbol != KelChart::symbolNone)
            return true;
    return false;
}

void SeriesLook::paintSymbol(QPainter& painter, const KelChartVariableStyle& style, std::size_t item, QPointF at)
{
    const QString symbol = entry(style.symbol.get(), item, KelChart::symbolNone);
    if (symbol == KelChart::symbolNone)
        return;
    const QString fill = entry(style.symbolFill.get(), item, KelChart::fillSolid);
    const QColor fillColour = entry(style.symbolFillColor.get(), item, QColor(Qt::black));
    const bool outline = entry(style.symbolOutline.get(), item, true);
    const QColor outlineColour = entry(style.symbolOutlineColor.get(), item, QColor(Qt::black));
    painter.setPen(outline ? QPen(outlineColour, 1.0) : QPen(Qt::NoPen));
    painter.setBrush(QBrush(fillColour, brushStyle(fill)));
    painter.drawPath(symbolPath(symbol, entry(style.symbolSize.get(), item, 7)).translated(at));
}

} // namespace Orv::Chart
