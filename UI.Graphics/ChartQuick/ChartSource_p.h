#pragma once
// A chart with its data loaded from a file, as the chart item's `source`
// names it: a data file (".csv", ".tsv" by tabs, ".txt" guessed) gets a chart
// set up for it; any other file is a chart file, which gets the sample's data
// by variable name; no file at all is the sample. Faults come back as a
// message naming the file, never as an exception; what is not a regular file
// (a folder, a pipe, a device) is refused before anything reads it.

#include "ElementClasses.h"

#include "KelChart.h"
#include "KelModified.h"
#include "KelProperties.h"

#include <QString>

#include <memory>

namespace Orv::Chart {

class ChartSource {
public:
    // The sample chart; a path: that file. Null with `error` set when it cannot be loaded.
    static std::unique_ptr<ChartSource> load(const QString& path, QString* error);

    // The chart, or null when the file holds no chart with axes.
    KelChart* chart() const;
    const AxisPairs& pairs() const { return m_pairs; }

private:
    ChartSource() = default;
    bool read(const QString& path, QString* error);

    KelModifiedGroup m_group;
    std::unique_ptr<KelProperties> m_root;
    AxisPairs m_pairs;
};

} // namespace Orv::Chart
