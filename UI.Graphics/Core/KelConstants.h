#pragma once
// Empty values used as defaults of optional arguments and typed properties.

#include "OrvCoreExport.h"

#include <QColor>
#include <QList>
#include <QStringList>

#include <vector>

ORV_CORE_EXPORT extern const QColor QColor0;            // the invalid colour
ORV_CORE_EXPORT extern const QList<QColor> QColorList0;
ORV_CORE_EXPORT extern const QStringList QStringList0;
ORV_CORE_EXPORT extern const std::vector<int> KelIntList0;
ORV_CORE_EXPORT extern const std::vector<double> KelDoubleList0;
ORV_CORE_EXPORT extern const std::vector<bool> KelBoolList0;
