#include "ChartDocument.h"

#include "ChartFile.h"
#include "ChartSetUp.h"
#include "CsvImport.h"
#include "DataBinding.h"
#include "Failure.h"
#include "SampleChart.h"

#include <QFileInfo>

namespace kelview {

namespace Chart = Orv::Chart;
using kelchart::Failure;

namespace {

Chart::DataSet readData(const QString& csvPath)
{
    if (csvPath.isEmpty())
        return Chart::SampleChart::data();
    Chart::CsvImport::Result read = Chart::CsvImport::read(csvPath);
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

std::unique_ptr<ChartDocument> ChartDocument::open(const QString& chartPath, const QString& csvPath)
{
    std::unique_ptr<ChartDocument> document(new ChartDocument);
    Chart::DataSet data = readData(csvPath);
    document->m_notes = data.notes;
    if (!chartPath.isEmpty()) {
        document->m_root = loadChart(chartPath, document->m_group);
    } else if (csvPath.isEmpty()) {
        document->m_root = Chart::SampleChart::build(document->m_group);
    } else {
        auto chart = std::make_unique<KelChart2D>(document->m_group);
        Chart::setUpChartForData(*chart, data, QFileInfo(csvPath).completeBaseName());
        document->m_root = std::move(chart);
    }
    document->m_pairs = Chart::axisPairsOf(*document->m_root);
    if (KelChart* chart = document->chart()) {
        for (const QString& name : Chart::bindData(chart->variables, document->m_pairs, std::move(data)))
            document->m_notes << QStringLiteral("the chart has no variable \"%1\" for that data series").arg(name);
    }
    return document;
}

KelChart* ChartDocument::chart()
{
    return m_pairs.exist() ? dynamic_cast<KelChart*>(m_root.get()) : nullptr;
}

} // namespace kelview
