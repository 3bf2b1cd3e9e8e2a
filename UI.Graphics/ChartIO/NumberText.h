#pragma once
// Numbers as text in their shortest form that reads back exactly ("0.1",
// "2500000", "1e+20", "-0"), so the same number always gives the same text.
// Magnitudes from 1e-5 to below 1e16 are written without exponent.

#include "OrvChartIOExport.h"
#include <QString>

namespace Orv::Chart {

ORV_CHARTIO_EXPORT QString numberText(double value);
ORV_CHARTIO_EXPORT QString numberText(float value);

} // namespace Orv::Chart
