#pragma once
// The root element of every chart description, and the chart style vocabulary:
// the words that chart properties use for fills, lines, plot styles, point
// symbols and legend orientation, as single words and as choice lists.

#include "KelProperties.h"

#include <QString>
#include <QStringList>

class KelChart : public KelProperties {
public:
    // Fill patterns.
    static const QString fillNone;
    static const QString fillSolid;
    static const QString fillDense;
    static const QString fillMedium;
    static const QString fillSparse;
    static const QString fillHorizontal;
    static const QString fillVertical;
    static const QString fillCross;
    static const QString fillBDiagonal;
    static const QString fillFDiagonal;
    static const QString fillCrossDiagonal;
    static const QString fillGradient;

    // Line patterns.
    static const QString lineNone;
    static const QString lineSolid;
    static const QString lineDense;
    static const QString lineMedium;
    static const QString lineSparse;
    static const QString lineDashShort;
    static const QString lineDashMedium;
    static const QString lineDashLong;
    static const QString lineDashDot;
    static const QString lineDashDotDot;
    static const QString lineDashDashDot;
    static const QString lineGradient;

    // Plot styles.
    static const QString styleNone;
    static const QString styleLine;
    static const QString styleSpline;
    static const QString styleBar;
    static const QString styleStep;

    // Point symbols.
    static const QString symbolNone;
    static const QString symbolEllipse;
    static const QString symbolRect;
    static const QString symbolDiamond;
    static const QString symbolHexagon;
    static const QString symbolTriangle;
    static const QString symbolDTriangle;
    static const QString symbolUTriangle;
    static const QString symbolLTriangle;
    static const QString symbolRTriangle;
    static const QString symbolCross;
    static const QString symbolXCross;
    static const QString symbolStar;

    // Legend orientations.
    static const QString legendVertical;
    static const QString legendHorizontal;

    // Choice lists. They are published as they are and do not match the single
    // words one to one (see the vocabulary source).
    static const QStringList fills;
    static const QStringList lines;
    static const QStringList styles;
    static const QStringList symbols;
    static const QStringList legends;
};
