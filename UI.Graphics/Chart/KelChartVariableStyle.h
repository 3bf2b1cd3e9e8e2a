#pragma once
// KelChartVariableStyle: how the host draws one data series — plot style,
// lines, fills, bars, symbols, label colours, point sorting and line
// interpolation. Every variable owns one, and so does the chart.
//
// Most properties are lists so that a series can vary its look per item; the
// defaults hold one entry, the two gradients five. The library itself reads
// only `componentSortAxis`; everything else is for the host.

#include "OrvChartExport.h"
#include "KelPropertyAdaptor.h"

#include <QColor>
#include <QList>
#include <QString>
#include <QStringList>

#include <ostream>
#include <vector>

class ORV_CHART_EXPORT KelChartVariableStyle : public KelProperties {
public:
    static const QString typeString;

    // Unnamed on return: the owner names it "style".
    explicit KelChartVariableStyle(KelModifiedGroup& group);
    KelChartVariableStyle(const KelChartVariableStyle& other);
    KelChartVariableStyle& operator=(const KelChartVariableStyle& other);
    ~KelChartVariableStyle() override;

    KelPropertyAdaptor<QString> style;
    KelPropertyAdaptor<QStringList> line;
    KelPropertyAdaptor<QList<QColor>> lineColor;
    KelPropertyAdaptor<QList<QColor>> lineBackgroundColor;
    KelPropertyAdaptor<QList<QColor>> lineGradient;
    KelPropertyAdaptor<std::vector<double>> lineWidth;
    KelPropertyAdaptor<std::vector<bool>> lineSmooth;
    KelPropertyAdaptor<QStringList> fill;
    KelPropertyAdaptor<QList<QColor>> fillColor;
    KelPropertyAdaptor<QList<QColor>> fillBackgroundColor;
    KelPropertyAdaptor<QList<QColor>> fillGradient;
    KelPropertyAdaptor<unsigned> bands;
    KelPropertyAdaptor<QList<QColor>> labelColor;
    KelPropertyAdaptor<QList<QColor>> labelShadowColor;
    KelPropertyAdaptor<std::vector<double>> barWidth;
    KelPropertyAdaptor<std::vector<double>> barOffset;
    KelPropertyAdaptor<std::vector<double>> barTopSize;
    KelPropertyAdaptor<QList<QColor>> barTopColor;
    KelPropertyAdaptor<QStringList> symbol;
    KelPropertyAdaptor<std::vector<int>> symbolSize;
    KelPropertyAdaptor<std::vector<bool>> symbolOutline;
    KelPropertyAdaptor<QList<QColor>> symbolOutlineColor;
    KelPropertyAdaptor<QStringList> symbolFill;
    KelPropertyAdaptor<QList<QColor>> symbolFillColor;
    // -1: keep the points in data order; 0: sort them by x.
    KelPropertyAdaptor<int> componentSortAxis;
    KelPropertyAdaptor<bool> showLinearInterpolationOfLines;
};

// Writes the drawing properties as "\t<name padded>: <stored text>" lines, one
// per property, without heading; `bands`, `componentSortAxis` and
// `showLinearInterpolationOfLines` are left out. Flushes after the last line.
ORV_CHART_EXPORT std::ostream& operator<<(std::ostream& os, const KelChartVariableStyle& style);
