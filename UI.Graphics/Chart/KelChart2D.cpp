#include "KelChart2D.h"

const QString KelChart2D::typeString = QStringLiteral("chart.2d");
const QString& KelChart2DKind::typeString = KelChart2D::typeString;

template class KelChartWithAxisPairs<KelChart2DKind>;
