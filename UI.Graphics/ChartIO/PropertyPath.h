#pragma once
// Writing a property by name, as a host's property editor does: the path is
// the chain of child names from the chart down to the node, then the property
// name, joined by "/" ("axis.y/axis.y.left/autoScale"). The value text goes
// through the node's text interface, which checks it against the property's
// value type. A fault's message names the path; a failed write leaves the
// property as it was.

#include "IoError.h"
#include "OrvChartIOExport.h"

#include "KelProperties.h"

#include <QString>

namespace Orv::Chart::PropertyPath {

struct Target {
    KelProperties* node = nullptr;
    QString property;
};

// The node and property a path names; a null node when the path names no
// existing property.
ORV_CHARTIO_EXPORT Target resolve(KelProperties& root, const QString& path, IoError* error = nullptr);
// Writes `value` to the property at `path`.
ORV_CHARTIO_EXPORT bool set(KelProperties& root, const QString& path, const QString& value,
                            IoError* error = nullptr);
// Takes "PATH=VALUE" apart at the first "=" and writes it; text without a
// path before an "=" is a fault of the request.
ORV_CHARTIO_EXPORT bool assign(KelProperties& root, const QString& assignment, IoError* error = nullptr);

} // namespace Orv::Chart
