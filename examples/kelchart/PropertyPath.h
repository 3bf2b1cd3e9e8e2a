#pragma once
// Writing a property by name, as a host's property editor does: the path is
// the chain of child names from the chart down to the node, then the property
// name, joined by "/" ("axis.y/axis.y.left/autoScale"). The value text goes
// through the node's text interface, which checks it against the property's
// value type. Faults throw a Failure naming the path.

#include "KelProperties.h"

#include <QString>

namespace kelchart {

namespace PropertyPath {

struct Target {
    KelProperties* node;
    QString property;
};

// The node and property a path names; the property must exist.
Target resolve(KelProperties& root, const QString& path);
// Writes `value` to the property at `path`.
void set(KelProperties& root, const QString& path, const QString& value);
// Takes "PATH=VALUE" apart at the first "=" and writes it.
void assign(KelProperties& root, const QString& assignment);

} // namespace PropertyPath

} // namespace kelchart
