#pragma once
// The persisted form of a chart (or of any element): JSON written from the
// property tree alone. Each node is an object with its "type" string, its
// "name", its "properties" (name, value text and unit text, in store order)
// and its "children" in order. Data are not part of it.
//
// Loading makes the root from its type string and rebuilds every child
// through `child(name, type)`, so the element classes make their own
// children; the axes of an axis pair are taken as its first and second axis
// in child order. Every node must come out as the class its type string
// names, and every value text must be accepted by its property.
//
// Saving writes a temporary file and renames it. Any fault throws a Failure
// naming the file, the line or the node path and property.

#include "KelModified.h"
#include "KelProperties.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace kelchart {

namespace ChartFile {

QByteArray toJson(const KelProperties& root);
// `source` names the data in messages.
std::unique_ptr<KelProperties> fromJson(const QByteArray& json, const QString& source, KelModifiedGroup& group);

void save(const KelProperties& root, const QString& path);
std::unique_ptr<KelProperties> load(const QString& path, KelModifiedGroup& group);

} // namespace ChartFile

} // namespace kelchart
