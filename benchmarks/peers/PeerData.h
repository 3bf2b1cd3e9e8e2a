#pragma once
// The benchmark series in the containers the peer libraries take.

#include "BenchData.h"

#include <QPointF>
#include <QVector>

namespace bench {

struct PeerSeries {
    QVector<double> keys;
    QVector<double> values;
    QVector<QPointF> points;
};

// The same points as `variable(kind, count)` holds, flags left out.
const PeerSeries& peerSeries(Kind kind, std::size_t count);

} // namespace bench
