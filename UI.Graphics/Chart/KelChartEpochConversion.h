#pragma once
// Converts the values of a time axis between its timestamp unit ("days since
// 1958-03-01") and seconds since 1970-01-01 00:00:00 UTC, in which calendar
// ticks are computed. Not exported: only the axis scale uses it.

#include "KelChartAxisTime.h"
#include "KelUnitsConverter.h"

#include <vector>

class KelChartEpochConversion {
public:
    // An empty unit means seconds since the epoch already.
    explicit KelChartEpochConversion(const QString& unit)
        : m_unit(unit.trimmed().isEmpty() ? KelChartAxisTime::unixTimeUnit : unit)
    {
    }

    // Whether the unit is a timestamp unit the unit database can convert.
    bool valid() const { return converter().convertible(m_unit, KelChartAxisTime::unixTimeUnit); }

    double toEpoch(double value) const
    {
        converter().convert(value, m_unit, KelChartAxisTime::unixTimeUnit);
        return value;
    }

    void fromEpoch(std::vector<double>& values) const
    {
        converter().convert(values.data(), values.size(), KelChartAxisTime::unixTimeUnit, m_unit);
    }

private:
    static const KelUnitsConverter& converter()
    {
        static const KelUnitsConverter shared;
        return shared;
    }

    QString m_unit;
};
