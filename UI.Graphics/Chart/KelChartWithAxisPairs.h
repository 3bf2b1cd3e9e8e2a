#pragma once
// What 2-D and 3-D charts share: after the chart base, the kind's own bool
// switch, then three axis pairs named "axis.x", "axis.y" and "axis.z".
//
// `Kind` describes one chart kind:
//   - `Switch`, a class holding the switch's property adaptor, built from the
//     chart node and the switch's first value; it is a base, so that the switch
//     is built right after the chart base and before the pairs;
//   - `switchDefault`, the switch's value in a new chart;
//   - `typeString`;
//   - `traces`, the signatures and place texts of the scoped traces that
//     construction, copy and destruction open.
// A copy gets new, empty axis pairs (an axis pair cannot be copied) and the
// source's switch value; assignment assigns the switch and the pairs.

#include "KelChart.h"
#include "KelChartAxisPair.h"
#include "KelChartTraceTexts.h"

#include "OrvDebug.h"

#include <QString>

template <class Kind>
class KelChartWithAxisPairs : public KelChart, public Kind::Switch {
public:
    explicit KelChartWithAxisPairs(KelModifiedGroup& group)
        : KelChart(group)
        , Kind::Switch(*this, Kind::switchDefault)
        , axisX(group)
        , axisY(group)
        , axisZ(group)
    {
        const orvdebug::trace scope(kel::debug_logger::debuglogger(), Kind::traces.constructor,
                                    Kind::traces.constructorWhere);
        setType(Kind::typeString);
        insertAxisPairs(axisX, axisY, axisZ);
    }

    KelChartWithAxisPairs(const KelChartWithAxisPairs& other)
        : KelChart(other)
        , Kind::Switch(*this, other.Kind::Switch::value())
        , axisX(group())
        , axisY(group())
        , axisZ(group())
    {
        {
            const orvdebug::trace scope(kel::debug_logger::debuglogger(), Kind::traces.copyConstructor,
                                        Kind::traces.copyConstructorWhere);
            insertAxisPairs(axisX, axisY, axisZ);
        }
        setType(Kind::typeString);
    }

    KelChartWithAxisPairs& operator=(const KelChartWithAxisPairs& other) = default;

    ~KelChartWithAxisPairs() override
    {
        const orvdebug::trace scope(kel::debug_logger::debuglogger(), Kind::traces.destructor,
                                    Kind::traces.destructorWhere);
    }

    KelChartAxisPair axisX;
    KelChartAxisPair axisY;
    KelChartAxisPair axisZ;
};
