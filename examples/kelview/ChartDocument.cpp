#include "ChartDocument.h"

#include "ChartFile.h"
#include "ChartSetUp.h"
#include "DataBinding.h"
#include "Failure.h"
#include "LogRelay.h"
#include "SampleChart.h"

#include <QFileInfo>

namespace kelview {

namespace Chart = Orv::Chart;
using kelchart::Failure;

namespace {

Chart::DataSet readData(const QString& path)
{
    if (path.isEmpty())
        return Chart::SampleChart::data();
    Chart::CsvImport::Result read = Chart::CsvImport::read(path, dataOptionsFor(path));
    if (!read.ok())
        throw Failure(read.error.message);
    return std::move(read.data);
}

std::unique_ptr<KelProperties> loadChart(const QString& path, KelModifiedGroup& group)
{
    Chart::IoError error;
    std::unique_ptr<KelProperties> root = Chart::ChartFile::load(path, group, &error);
    if (!root)
        throw Failure(error.message);
    return root;
}

} // namespace

bool isDataFile(const QString& path)
{
    static const QStringList dataSuffixes{QStringLiteral("csv"), QStringLiteral("tsv"), QStringLiteral("txt")};
    return dataSuffixes.contains(QFileInfo(path).suffix(), Qt::CaseInsensitive);
}

Chart::CsvOptions dataOptionsFor(const QString& path)
{
    Chart::CsvOptions options;
    if (QFileInfo(path).suffix().compare(QStringLiteral("tsv"), Qt::CaseInsensitive) == 0)
        options.separator = QStringLiteral("\t");
    return options;
}

QString withChartSuffix(const QString& path)
{
    return QFileInfo(path).suffix().isEmpty() ? path + QStringLiteral(".json") : path;
}

std::unique_ptr<ChartDocument> ChartDocument::open(const QString& chartPath, const QString& dataPath)
{
    std::unique_ptr<ChartDocument> document(new ChartDocument);
    document->m_chartPath = chartPath;
    document->m_dataPath = dataPath;
    const LogRelay relay([&document](const QString& warning) { document->m_warnings << warning; });
    Chart::DataSet data = readData(dataPath);
    document->m_notes = data.notes;
    if (!chartPath.isEmpty())
        document->m_root = loadChart(chartPath, document->m_group);
    document->build(std::move(data));
    return document;
}

std::unique_ptr<ChartDocument> ChartDocument::open(const QString& path)
{
    return isDataFile(path) ? open(QString(), path) : open(path, QString());
}

// The chart for the data when no file gave one, then the data handed to its variables.
void ChartDocument::build(Chart::DataSet data)
{
    if (!m_root && m_dataPath.isEmpty()) {
        m_root = Chart::SampleChart::build(m_group);
    } else if (!m_root) {
        auto chart = std::make_unique<KelChart2D>(m_group);
        Chart::setUpChartForData(*chart, data, QFileInfo(m_dataPath).completeBaseName());
        m_root = std::move(chart);
    }
    m_pairs = Chart::axisPairsOf(*m_root);
    if (KelChart* chart = this->chart())
        noteUnbound(Chart::bindData(chart->variables, m_pairs, std::move(data)));
}

void ChartDocument::noteUnbound(const QStringList& names)
{
    for (const QString& name : names)
        m_notes << QStringLiteral("the chart has no variable \"%1\" for that data series").arg(name);
}

std::unique_ptr<ChartDocument> ChartDocument::forLive(const Chart::DataSet& table, const QString& name,
                                                      const Binder& bind)
{
    std::unique_ptr<ChartDocument> document(new ChartDocument);
    const LogRelay relay([&document](const QString& warning) { document->m_warnings << warning; });
    document->m_notes = table.notes;
    auto chart = std::make_unique<KelChart2D>(document->m_group);
    Chart::setUpChartForData(*chart, table, name);
    document->m_root = std::move(chart);
    document->m_pairs = Chart::axisPairsOf(*document->m_root);
    if (bind)
        document->noteUnbound(bind(document->chart()->variables, document->m_pairs));
    return document;
}

KelChart* ChartDocument::chart()
{
    return m_pairs.exist() ? dynamic_cast<KelChart*>(m_root.get()) : nullptr;
}

QString ChartDocument::displayName() const
{
    if (!m_chartPath.isEmpty())
        return QFileInfo(m_chartPath).fileName();
    if (!m_dataPath.isEmpty())
        return QFileInfo(m_dataPath).fileName();
    const auto* chart = dynamic_cast<const KelChart*>(m_root.get());
    return chart != nullptr && !chart->title.get().isEmpty() ? chart->title.get() : m_root->name();
}

} // namespace kelview
