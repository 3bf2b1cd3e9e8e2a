#include "DataBinding.h"

#include "KelChartAxisDiscrete.h"
#include "KelChartAxisTime.h"

#include <date/date.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace Orv::Chart {

namespace {

constexpr std::int64_t microsecondsPerDay = 86400LL * 1000000;

// The x values of a time column as seconds since an origin near the data, in
// double precision; the float items rounded from them still place rows to a
// fraction of a second for months, where seconds since 1970 would be good to
// about two minutes only.
struct PlacedTimes {
    std::vector<double> values;
    QString unit;
};

std::int64_t floorToDay(std::int64_t microseconds)
{
    const std::int64_t day = microseconds / microsecondsPerDay;
    return (microseconds % microsecondsPerDay < 0 ? day - 1 : day) * microsecondsPerDay;
}

// "s since 2012-01-01 00:00:00 UTC". The unit database reads dates before the
// Gregorian reform in the Julian calendar, so older data count from 1970.
QString unitSince(std::int64_t originMicroseconds)
{
    const date::year_month_day day{date::sys_days{date::days{originMicroseconds / microsecondsPerDay}}};
    return QString::asprintf("s since %04d-%02u-%02u 00:00:00 UTC", static_cast<int>(day.year()),
                             static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
}

PlacedTimes placeTimes(const std::vector<ParsedTime>& times, const std::vector<bool>& undefined,
                       const QString& zoneName)
{
    const TimePlacement placement(zoneName, times, undefined);
    PlacedTimes placed{std::vector<double>(times.size()), placement.unit()};
    for (std::size_t i = 0; i < times.size(); ++i)
        placed.values[i] = undefined[i] ? NAN : placement.place(times[i]);
    return placed;
}

// The times of a series that holds some of the rows only (one group's).
std::vector<ParsedTime> timesOfRows(const std::vector<ParsedTime>& times, const std::vector<std::size_t>& rows)
{
    std::vector<ParsedTime> picked(rows.size());
    std::transform(rows.begin(), rows.end(), picked.begin(), [&times](std::size_t row) { return times[row]; });
    return picked;
}

} // namespace

TimePlacement::TimePlacement(const QString& zone, const std::vector<ParsedTime>& times,
                             const std::vector<bool>& undefined)
    : m_zone(zone.toStdString())
{
    constexpr std::int64_t gregorianOnly = -12219292800LL * 1000000; // 1582-10-15
    for (std::size_t i = 0; i < times.size(); ++i) {
        if (!undefined[i]) {
            const std::int64_t first = instantOf(times[i]);
            m_origin = first < gregorianOnly ? 0 : floorToDay(first);
            break;
        }
    }
    m_unit = unitSince(m_origin);
}

QString TimePlacement::zoneOf(const AxisPairs& pairs, const KelChartVariable& variable)
{
    const auto* time = dynamic_cast<const KelChartAxisTime*>(pairs.find(variable.xAxis.get()));
    return time ? time->timeZone.get() : QStringLiteral("UTC");
}

std::int64_t TimePlacement::instantOf(const ParsedTime& time) const
{
    return time.utc ? time.microseconds : m_zone.toUtc(time.microseconds);
}

double TimePlacement::place(const ParsedTime& time) const
{
    return static_cast<double>(instantOf(time) - m_origin) * 1e-6;
}

QStringList bindData(KelChartVariableList& variables, const AxisPairs& pairs, DataSet data)
{
    QStringList unbound;
    // Series of all rows share their x column; it is placed once per time zone.
    std::map<QString, PlacedTimes> placedByZone;
    for (DataSeries& series : data.series) {
        KelChartVariable* variable = variables[series.y.name];
        if (!variable) {
            unbound << series.y.name;
            continue;
        }
        auto* discrete = dynamic_cast<KelChartAxisDiscrete*>(pairs.find(variable->xAxis.get()));
        if (data.discreteX && discrete)
            discrete->labels.setLabels(data.categories);
        if (!data.timeX) {
            variable->variableiter.setVector2Data(std::move(series.x.values), std::move(series.y.values),
                                                  std::move(series.x.undefined), std::move(series.y.undefined),
                                                  series.x.unit, series.y.unit);
            continue;
        }
        PlacedTimes placed;
        if (!series.rows.empty()) {
            placed = placeTimes(timesOfRows(data.xTimes, series.rows), series.x.undefined,
                                TimePlacement::zoneOf(pairs, *variable));
        } else {
            const QString zone = TimePlacement::zoneOf(pairs, *variable);
            auto found = placedByZone.find(zone);
            if (found == placedByZone.end())
                found = placedByZone.emplace(zone, placeTimes(data.xTimes, series.x.undefined, zone)).first;
            placed = found->second;
        }
        variable->variableiter.setPreciseVector2Data(std::move(placed.values), std::move(series.y.values),
                                                     std::move(series.x.undefined), std::move(series.y.undefined),
                                                     placed.unit, series.y.unit);
    }
    return unbound;
}

} // namespace Orv::Chart
