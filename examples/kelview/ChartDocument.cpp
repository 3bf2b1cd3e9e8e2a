#include "ChartDocument.h"

#include "ChartFile.h"
#include "CsvChart.h"
#include "CsvReader.h"
#include "DataBinding.h"
#include "SampleChart.h"

#include <QFileInfo>

namespace kelview {

std::unique_ptr<ChartDocument> ChartDocument::open(const QString& chartPath, const QString& csvPath)
{
    std::unique_ptr<ChartDocument> document(new ChartDocument);
    kelchart::DataSet data = csvPath.isEmpty() ? kelchart::SampleChart::data() : kelchart::CsvReader::read(csvPath);
    document->m_notes = data.notes;
    if (!chartPath.isEmpty()) {
        document->m_root = kelchart::ChartFile::load(chartPath, document->m_group);
    } else if (csvPath.isEmpty()) {
        document->m_root = kelchart::SampleChart::build(document->m_group);
    } else {
        auto chart = std::make_unique<KelChart2D>(document->m_group);
        kelchart::setUpChartForData(*chart, data, QFileInfo(csvPath).completeBaseName());
        document->m_root = std::move(chart);
    }
    document->m_pairs = kelchart::axisPairsOf(*document->m_root);
    if (KelChart* chart = document->chart()) {
        for (const QString& name : kelchart::bindData(chart->variables, document->m_pairs, std::move(data)))
            document->m_notes << QStringLiteral("the chart has no variable \"%1\" for that data series").arg(name);
    }
    return document;
}

KelChart* ChartDocument::chart()
{
    return m_pairs.exist() ? dynamic_cast<KelChart*>(m_root.get()) : nullptr;
}

void ChartDocument::save(const QString& path) const
{
    kelchart::ChartFile::save(*m_root, path);
}

} // namespace kelview
