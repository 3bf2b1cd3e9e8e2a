#pragma once
// How the words and lists of a variable style become Qt pens, brushes and
// symbol shapes. Style lists may vary the look per item: item k takes entry
// k modulo the list's length, and an empty list gives a plain fallback.
// Symbol words are matched without regard to case, as the style vocabulary
// writes the pointed triangles both ways.

#include "KelChartVariableStyle.h"

#include <QBrush>
#include <QColor>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPointF>

#include <cstddef>

namespace Orv::Chart::SeriesLook {

template <class List>
auto entry(const List& list, std::size_t item, const typename List::value_type& fallback) ->
    typename List::value_type
{
    if (list.empty())
        return fallback;
    return list[static_cast<int>(item % static_cast<std::size_t>(list.size()))];
}

QColor lineColour(const KelChartVariableStyle& style);
// The pen of the series' lines; a "gradient" line takes `gradient` as brush.
QPen linePen(const KelChartVariableStyle& style, const QBrush& gradient = QBrush());
// The brush of fill areas and bars for item k; a "gradient" fill takes `gradient`.
QBrush fillBrush(const KelChartVariableStyle& style, std::size_t item, const QBrush& gradient = QBrush());
bool usesLineGradient(const KelChartVariableStyle& style);
bool usesFillGradient(const KelChartVariableStyle& style);
// A linear gradient through the colours, evenly spaced, from one pixel to another.
QBrush gradient(const QList<QColor>& colours, QPointF from, QPointF to);

// Whether the series is drawn from its base line: bars, sticks and filled areas.
bool drawsFromBaseLine(const KelChartVariableStyle& style);
bool fills(const KelChartVariableStyle& style);

bool hasSymbols(const KelChartVariableStyle& style);
// Draws item k's symbol centred on the pixel.
void paintSymbol(QPainter& painter, const KelChartVariableStyle& style, std::size_t item, QPointF at);

} // namespace Orv::Chart
