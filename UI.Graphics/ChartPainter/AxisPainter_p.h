#pragma once
// Draws an axis from its pipeline result: the axis line along its plot edge,
// a tick and a label at each of the scale's tick positions, grid lines for the
// first axis of each direction, and the caption: the axis title, its unit
// label in brackets, and the scale's factor where it is not 1. A caption too
// long for its row loses the end of its title, never the factor. The offset
// text that the labels leave out ("2012-03" of a time axis, "+299.9" of a
// zoomed one) goes at the far end of the caption row.
//
// The model's texts (tick labels of continuous axes, offset texts, factors)
// are drawn in the painter's locale (see LocaleText); category names and
// titles are the user's and stay as written, and so do the numbers of a time
// axis's own label format.

#include "ChartLayout.h"
#include "Plot.h"

#include <QLocale>
#include <QPainter>

namespace Orv::Chart {

class AxisPainter {
public:
    AxisPainter(QPainter& painter, const ChartLayout& layout, const QLocale& locale = QLocale::c());

    // The width tick labels have beside a vertical axis in `band`, between
    // the tick marks and the caption.
    static double labelColumn(const QRectF& band);

    void paintGrid(const PlotAxis& axis);
    void paintAxis(const PlotAxis& axis);

    // "title [unit] (x factor)", leaving out what is empty or 1; a factor
    // that is a power of ten reads "10" with a superscript exponent.
    QString caption(const PlotAxis& axis) const;
    // The caption in `room` pixels of the painter's font: where it is too
    // long the title is elided, never the factor, and the unit only when it
    // would take more than half of what the factor leaves.
    QString fittedCaption(const PlotAxis& axis, double room) const;

private:
    static QString titleAndUnit(const PlotAxis& axis);
    static QString unitText(const PlotAxis& axis);
    QString factorText(const PlotAxis& axis) const;
    // The two parts with a space between, or the one that is not empty.
    static QString joined(const QString& head, const QString& tail);
    // Tick marks of `length` pixels, with the labels that are drawn.
    void paintTicks(const PlotAxis& axis, const std::vector<Tick>& ticks, double length);
    void paintTickLabel(const PlotAxis& axis, const Tick& tick);
    // A tick's label as drawn in the painter's locale.
    QString tickText(const PlotAxis& axis, const QString& label) const;
    QRectF horizontalLabelBox(const QString& label, double x, double top) const;
    void paintCaption(const PlotAxis& axis);
    void paintText(const QRectF& box, int flags, const QString& text, const PlotAxis& axis);

    QPainter& m_painter;
    const ChartLayout& m_layout;
    QLocale m_locale;
};

} // namespace Orv::Chart
