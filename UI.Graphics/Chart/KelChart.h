#pragma once
// The root element of every chart description, and the chart style vocabulary:
// the words that chart properties use for fills, lines, plot styles, point
// symbols and legend orientation, as single words and as choice lists.

#include "OrvChartExport.h"
#include "KelChartVariableList.h"
#include "KelChartVariableStyle.h"
#include "KelPropertyAdaptor.h"
#include "KelUnitSystem.h"

#include <QString>
#include <QStringList>

class ORV_CHART_EXPORT KelChart : public KelProperties {
public:
    static const QString typeString;

    explicit KelChart(KelModifiedGroup& group);
    // A copy lies in `other`'s group and is named "chart.1" whatever `other` is named.
    KelChart(const KelChart& other);
    KelChart& operator=(const KelChart& other);
    ~KelChart() override;

    KelPropertyAdaptor<QString> title;
    KelPropertyAdaptor<QColor> textColor;
    KelPropertyAdaptor<QColor> textShadowColor;
    KelUnitSystem unitSystem;
    KelChartVariableList variables;
    KelChartVariableStyle style;

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

protected:
    // Names the three axis pairs "axis.x", "axis.y", "axis.z" and inserts them, in that order.
    void insertAxisPairs(KelProperties& x, KelProperties& y, KelProperties& z);
    // Gives a kind with a label iterator its type and its type string as name,
    // then names the iterator "labels" and inserts it.
    void setUpLabelKind(const QString& type, KelProperties& labels);
    // The same for a copy: the copied iterator keeps its name and is inserted
    // before the type and name are set.
    void setUpCopiedLabelKind(const QString& type, KelProperties& labels);

private:
    void nameAndInsertChildren();
};
