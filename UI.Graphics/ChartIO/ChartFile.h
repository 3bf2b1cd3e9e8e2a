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
// Saving writes a temporary file and renames it, so a failed save leaves the
// file as it was. A fault's message names the file, the line or the node path
// and property.

#include "IoError.h"
#include "OrvChartIOExport.h"

#include "KelModified.h"
#include "KelProperties.h"

#include <QByteArray>
#include <QString>

#include <memory>

namespace Orv::Chart::ChartFile {

ORV_CHARTIO_EXPORT QByteArray toJson(const KelProperties& root);
// The tree, or null after a fault; `source` names the data in messages.
ORV_CHARTIO_EXPORT std::unique_ptr<KelProperties> fromJson(const QByteArray& json, const QString& source,
                                                           KelModifiedGroup& group, IoError* error = nullptr);

ORV_CHARTIO_EXPORT bool save(const KelProperties& root, const QString& path, IoError* error = nullptr);
ORV_CHARTIO_EXPORT std::unique_ptr<KelProperties> load(const QString& path, KelModifiedGroup& group,
                                                       IoError* error = nullptr);

} // namespace Orv::Chart
