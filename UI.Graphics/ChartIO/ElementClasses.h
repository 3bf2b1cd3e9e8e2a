#pragma once
// The element classes the host knows by type string: the library's chart
// elements and the framework's own nodes. Loading a chart file makes its root
// through this table and checks every node it builds against it, so that a
// loaded tree consists of the same classes as the saved one.

#include "OrvChartIOExport.h"
#include "KelModified.h"
#include "KelProperties.h"

#include <QString>
#include <QStringList>

#include <memory>

class KelChartAxis;
class KelChartAxisPair;

namespace Orv::Chart {

namespace ElementClasses {

// Every type string in the table, in a fixed order.
ORV_CHARTIO_EXPORT QStringList types();
ORV_CHARTIO_EXPORT bool known(const QString& type);
// A new element of that type in the group, as its class constructs it; null
// for an unknown type.
ORV_CHARTIO_EXPORT std::unique_ptr<KelProperties> make(const QString& type, KelModifiedGroup& group);
// Whether the node is an instance of the class its type string names.
ORV_CHARTIO_EXPORT bool isInstance(const KelProperties& node);

} // namespace ElementClasses

// The three axis pairs of a 2-D or 3-D chart.
struct ORV_CHARTIO_EXPORT AxisPairs {
    KelChartAxisPair* x = nullptr;
    KelChartAxisPair* y = nullptr;
    KelChartAxisPair* z = nullptr;

    bool exist() const { return x != nullptr; }
    // The axis of that name in any pair, or null.
    KelChartAxis* find(const QString& name) const;
};

// The axis pairs of the node when it is a 2-D or 3-D chart; none otherwise.
ORV_CHARTIO_EXPORT AxisPairs axisPairsOf(KelProperties& node);

} // namespace Orv::Chart
