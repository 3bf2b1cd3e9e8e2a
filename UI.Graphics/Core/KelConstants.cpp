#include "KelConstants.h"

const QColor QColor0;
const QList<QColor> QColorList0;
const QStringList QStringList0;
const std::vector<int> KelIntList0;
const std::vector<double> KelDoubleList0;
const std::vector<bool> KelBoolList0;
