#pragma once
// Empty values used as defaults of optional arguments and typed properties.

#include <QColor>
#include <QList>
#include <QStringList>

#include <vector>

extern const QColor QColor0;            // the invalid colour
extern const QList<QColor> QColorList0;
extern const QStringList QStringList0;
extern const std::vector<int> KelIntList0;
extern const std::vector<double> KelDoubleList0;
extern const std::vector<bool> KelBoolList0;
