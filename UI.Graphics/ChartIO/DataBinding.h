#pragma once
// Hands data to a chart: each series goes to the variable of its name through
// the variable's iterator, with its units and undefined flags. For a data set
// with discrete x, the categories become the labels of the discrete axes that
// those variables use along x. Times without a zone of their own are read in
// the time zone of the variable's x axis, and all become seconds since the
// first row's day ("s since 2012-01-01 00:00:00 UTC").

#include "OrvChartIOExport.h"
#include "DataSet.h"
#include "ElementClasses.h"

#include "KelChartVariableList.h"
#include "TimeZone.h"

#include <QStringList>

#include <cstdint>
#include <vector>

namespace Orv::Chart {

// How bindData makes x values of times: wall-clock times read in a zone (UTC
// instants as they are), as seconds since the UTC midnight that begins
// the day of the first defined time. Items that arrive after binding are
// placed by the same origin, so that they continue the bound ones exactly.
class ORV_CHARTIO_EXPORT TimePlacement {
public:
    // The origin is that of the first time not flagged undefined; 1970 without
    // one, or for dates before the Gregorian reform.
    TimePlacement(const QString& zone, const std::vector<ParsedTime>& times, const std::vector<bool>& undefined);
    // The zone a variable's times are read in: its x axis's own when that is a time axis, else UTC.
    static QString zoneOf(const AxisPairs& pairs, const KelChartVariable& variable);

    // In double precision: 0.1 s samples keep their places centuries after the origin.
    double place(const ParsedTime& time) const;
    // "s since 2012-01-01 00:00:00 UTC"
    const QString& unit() const { return m_unit; }

private:
    std::int64_t instantOf(const ParsedTime& time) const;

    Orv::Math::TimeZone m_zone;
    std::int64_t m_origin = 0;
    QString m_unit;
};

// Returns the names of the series that found no variable.
ORV_CHARTIO_EXPORT QStringList bindData(KelChartVariableList& variables, const AxisPairs& pairs, DataSet data);

} // namespace Orv::Chart
