#pragma once
// The one place where an axis type string meets its class: axis pairs, axis
// lists and hosts make and copy axes through it, so a new kind of axis is one
// more entry here rather than one more branch wherever axes are made.

#include "OrvChartExport.h"

#include <QString>
#include <QStringList>

class KelChartAxis;
class KelModifiedGroup;

class ORV_CHART_EXPORT KelChartAxisKinds {
public:
    // The type strings of the axes with a range: continuous, discrete, time.
    // These are the kinds an axis pair holds.
    static QStringList rangedTypes();
    static bool isRangedType(const QString& type);

    // A new axis of a ranged type in `group`, named `name`; null for any other
    // type string.
    static KelChartAxis* make(KelModifiedGroup& group, const QString& type, const QString& name);
    // Assigns `source` to `target` as the most derived axis class both share.
    static void assign(KelChartAxis& target, const KelChartAxis& source);
};
