#pragma once
// A time axis: a continuous axis whose values are instants. Its unit label is
// a timestamp unit ("s since 2012-01-01 00:00:00 UTC"), agreed by the unit
// update like any other unit; values stay numbers relative to that origin, so
// caches and matrices need nothing new. An empty unit label means seconds
// since 1970-01-01 00:00:00 UTC.
//
// Ticks sit on calendar boundaries of the axis's time zone and are labelled
// there: "timeZone" is an IANA name ("Europe/Berlin"; an unknown name is
// reported and UTC used), "labelFormat" a strftime-style format for every tick
// label ("%Y-%m-%d %H:%M"), or empty for concise automatic labels. Logarithmic
// makes no sense for instants and is ignored.

#include "OrvChartExport.h"
#include "KelChartAxisContinuous.h"

class ORV_CHART_EXPORT KelChartAxisTime : public KelChartAxisContinuous {
public:
    static const QString typeString;
    // The unit of values on an axis without a unit label.
    static const QString unixTimeUnit;

    explicit KelChartAxisTime(KelModifiedGroup& group);
    KelChartAxisTime(const KelChartAxisTime& other);
    KelChartAxisTime& operator=(const KelChartAxisTime& other);
    ~KelChartAxisTime() override;

    KelPropertyAdaptor<QString> timeZone;
    KelPropertyAdaptor<QString> labelFormat;
};
