#pragma once
// The chart an interactive view shows, with its data: a chart file, a chart
// set up for a CSV file, or the built-in sample, loaded as the command-line
// host loads them. A chart file without a CSV file gets the sample's data,
// handed to its variables by name. Data are not part of the saved chart.

#include "ElementClasses.h"

#include "KelChart.h"
#include "KelModified.h"
#include "KelProperties.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace kelview {

class ChartDocument {
public:
    // Empty paths: the sample. Faults throw a kelchart::Failure.
    static std::unique_ptr<ChartDocument> open(const QString& chartPath, const QString& csvPath);

    KelProperties& root() { return *m_root; }
    // The root as a chart with axes, or null when it has none to draw.
    KelChart* chart();
    const Orv::Chart::AxisPairs& pairs() const { return m_pairs; }
    // Remarks about the data, one line each (columns left out, series without a variable).
    const QStringList& notes() const { return m_notes; }

private:
    ChartDocument() = default;

    KelModifiedGroup m_group;
    std::unique_ptr<KelProperties> m_root;
    Orv::Chart::AxisPairs m_pairs;
    QStringList m_notes;
};

} // namespace kelview
