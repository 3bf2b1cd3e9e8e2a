#include "KelChart3D.h"

const QString KelChart3D::typeString = QStringLiteral("chart.3d");
const QString& KelChart3DKind::typeString = KelChart3D::typeString;

template class KelChartWithAxisPairs<KelChart3DKind>;
