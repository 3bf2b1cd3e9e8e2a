#pragma once
// The chart an interactive view shows, with its data: a chart file, a chart
// set up for a data file, or the built-in sample, loaded as the command-line
// host loads them. A chart file without a data file gets the sample's data,
// handed to its variables by name. Data are not part of the saved chart.
//
// Data files are named by their suffix: ".csv", ".tsv" (tab separated) and
// ".txt" (separator guessed); any other file is a chart file.

#include "ElementClasses.h"

#include "CsvImport.h"
#include "KelChart.h"
#include "KelModified.h"
#include "KelProperties.h"

#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace kelview {

// Whether the file holds data rather than a chart, by its suffix.
bool isDataFile(const QString& path);
// How a data file is read: a ".tsv" file by tabs, others as guessed.
Orv::Chart::CsvOptions dataOptionsFor(const QString& path);
// The name a chart is saved under: ".json" added when the name has no suffix.
QString withChartSuffix(const QString& path);

class ChartDocument {
public:
    // Empty paths: the sample. Faults throw a kelchart::Failure.
    static std::unique_ptr<ChartDocument> open(const QString& chartPath, const QString& dataPath);
    // A chart file or a data file, told apart by `isDataFile`.
    static std::unique_ptr<ChartDocument> open(const QString& path);
    // Hands a live table's first data to the chart's variables; gives the series that found none.
    using Binder = std::function<QStringList(KelChartVariableList& variables, const Orv::Chart::AxisPairs& pairs)>;
    // A chart set up for a live table, titled `name`; without `bind` its variables stay without data.
    static std::unique_ptr<ChartDocument> forLive(const Orv::Chart::DataSet& table, const QString& name,
                                                  const Binder& bind = {});

    KelProperties& root() { return *m_root; }
    // The root as a chart with axes, or null when it has none to draw.
    KelChart* chart();
    const Orv::Chart::AxisPairs& pairs() const { return m_pairs; }
    // Remarks about the data, one line each (columns left out, series without a variable).
    const QStringList& notes() const { return m_notes; }
    // The library's warnings while the chart was loaded.
    const QStringList& warnings() const { return m_warnings; }

    // The chart file it was loaded from or last saved to; empty for a chart
    // set up for data or the sample, which have none to save to yet.
    const QString& chartPath() const { return m_chartPath; }
    void setChartPath(const QString& path) { m_chartPath = path; }
    const QString& dataPath() const { return m_dataPath; }
    // The file's name for a window title, or else the chart's title or name.
    QString displayName() const;

private:
    ChartDocument() = default;
    void build(Orv::Chart::DataSet data);
    void noteUnbound(const QStringList& names);

    KelModifiedGroup m_group;
    std::unique_ptr<KelProperties> m_root;
    Orv::Chart::AxisPairs m_pairs;
    QStringList m_notes;
    QStringList m_warnings;
    QString m_chartPath;
    QString m_dataPath;
};

} // namespace kelview
