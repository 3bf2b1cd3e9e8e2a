// The chart style vocabulary. Stored charts and host choice lists depend on
// these exact texts, including where the lists and the single words differ:
// `lines` lacks "dashDashDot" and "gradient"; `styles` has "dot" and "stick";
// `symbols` spells the pointed triangles "dTriangle" etc. while the single
// words are all lower case, and ends with "normal"; `legends` starts with
// "vertical".

#include "KelChart.h"

namespace {

QStringList splitAtBlanks(const char* literal)
{
    return QString::fromLatin1(literal).split(QLatin1Char(' '), Qt::KeepEmptyParts, Qt::CaseSensitive);
}

} // namespace

const QString KelChart::fillNone = QStringLiteral("none");
const QString KelChart::fillSolid = QStringLiteral("solid");
const QString KelChart::fillDense = QStringLiteral("dense");
const QString KelChart::fillMedium = QStringLiteral("medium");
const QString KelChart::fillSparse = QStringLiteral("sparse");
const QString KelChart::fillHorizontal = QStringLiteral("horizontal");
const QString KelChart::fillVertical = QStringLiteral("vertical");
const QString KelChart::fillCross = QStringLiteral("cross");
const QString KelChart::fillBDiagonal = QStringLiteral("bDiagonal");
const QString KelChart::fillFDiagonal = QStringLiteral("fDiagonal");
const QString KelChart::fillCrossDiagonal = QStringLiteral("crossDiagonal");
const QString KelChart::fillGradient = QStringLiteral("gradient");

const QString KelChart::lineNone = QStringLiteral("none");
const QString KelChart::lineSolid = QStringLiteral("solid");
const QString KelChart::lineDense = QStringLiteral("dense");
const QString KelChart::lineMedium = QStringLiteral("medium");
const QString KelChart::lineSparse = QStringLiteral("sparse");
const QString KelChart::lineDashShort = QStringLiteral("dashShort");
const QString KelChart::lineDashMedium = QStringLiteral("dashMedium");
const QString KelChart::lineDashLong = QStringLiteral("dashLong");
const QString KelChart::lineDashDot = QStringLiteral("dashDot");
const QString KelChart::lineDashDotDot = QStringLiteral("dashDotDot");
const QString KelChart::lineDashDashDot = QStringLiteral("dashDashDot");
const QString KelChart::lineGradient = QStringLiteral("gradient");

const QString KelChart::styleNone = QStringLiteral("none");
const QString KelChart::styleLine = QStringLiteral("line");
const QString KelChart::styleSpline = QStringLiteral("spline");
const QString KelChart::styleBar = QStringLiteral("bar");
const QString KelChart::styleStep = QStringLiteral("step");

const QString KelChart::symbolNone = QStringLiteral("none");
const QString KelChart::symbolEllipse = QStringLiteral("ellipse");
const QString KelChart::symbolRect = QStringLiteral("rect");
const QString KelChart::symbolDiamond = QStringLiteral("diamond");
const QString KelChart::symbolHexagon = QStringLiteral("hexagon");
const QString KelChart::symbolTriangle = QStringLiteral("triangle");
const QString KelChart::symbolDTriangle = QStringLiteral("dtriangle");
const QString KelChart::symbolUTriangle = QStringLiteral("utriangle");
const QString KelChart::symbolLTriangle = QStringLiteral("ltriangle");
const QString KelChart::symbolRTriangle = QStringLiteral("rtriangle");
const QString KelChart::symbolCross = QStringLiteral("cross");
const QString KelChart::symbolXCross = QStringLiteral("xCross");
const QString KelChart::symbolStar = QStringLiteral("star");

const QString KelChart::legendVertical = QStringLiteral("vertical");
const QString KelChart::legendHorizontal = QStringLiteral("horizontal");

const QStringList KelChart::fills = splitAtBlanks(
    "none solid dense medium sparse horizontal vertical cross bDiagonal fDiagonal crossDiagonal gradient");
const QStringList KelChart::lines = splitAtBlanks(
    "none solid dense medium sparse dashShort dashMedium dashLong dashDot dashDotDot");
const QStringList KelChart::styles = splitAtBlanks("none dot line spline stick bar step");
const QStringList KelChart::symbols = splitAtBlanks(
    "none ellipse rect diamond hexagon triangle dTriangle uTriangle lTriangle rTriangle cross xCross star normal");
const QStringList KelChart::legends = splitAtBlanks("vertical horizontal");
