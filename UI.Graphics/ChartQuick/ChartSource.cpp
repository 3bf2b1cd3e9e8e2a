#include "ChartSource_p.h"

#include "ChartFile.h"
#include "ChartSetUp.h"
#include "CsvImport.h"
#include "DataBinding.h"
#include "SampleChart.h"

#include "KelChart2D.h"

#include <QFileInfo>
#include <QStringList>

#include <exception>

namespace Orv::Chart {

namespace {

bool isDataFile(const QFileInfo& file)
{
    static const QStringList suffixes{QStringLiteral("csv"), QStringLiteral("tsv"), QStringLiteral("txt")};
    return suffixes.contains(file.suffix(), Qt::CaseInsensitive);
}

CsvOptions optionsFor(const QFileInfo& file)
{
    CsvOptions options;
    if (file.suffix().compare(QStringLiteral("tsv"), Qt::CaseInsensitive) == 0)
        options.separator = QStringLiteral("\t");
    return options;
}

} // namespace

std::unique_ptr<ChartSource> ChartSource::load(const QString& path, QString* error)
{
    std::unique_ptr<ChartSource> source(new ChartSource);
    try {
        if (!source->read(path, error))
            return nullptr;
    } catch (const std::exception& fault) {
        *error = QStringLiteral("%1: %2").arg(path, QString::fromLocal8Bit(fault.what()));
        return nullptr;
    }
    return source;
}

bool ChartSource::read(const QString& path, QString* error)
{
    const QFileInfo file(path);
    if (path.isEmpty()) {
        m_root = SampleChart::build(m_group);
    } else if (!file.isFile() || !file.isReadable()) {
        *error = QStringLiteral("%1: no such file, or not one that can be read").arg(path);
        return false;
    }
    DataSet data = SampleChart::data();
    if (!path.isEmpty() && isDataFile(file)) {
        CsvImport::Result read = CsvImport::read(path, optionsFor(file));
        if (!read.ok()) {
            *error = read.error.message;
            return false;
        }
        data = std::move(read.data);
        auto chart = std::make_unique<KelChart2D>(m_group);
        setUpChartForData(*chart, data, file.completeBaseName());
        m_root = std::move(chart);
    } else if (!path.isEmpty()) {
        IoError fault;
        m_root = ChartFile::load(path, m_group, &fault);
        if (!m_root) {
            *error = fault.message;
            return false;
        }
    }
    m_pairs = axisPairsOf(*m_root);
    if (KelChart* drawn = chart())
        bindData(drawn->variables, m_pairs, std::move(data));
    return true;
}

KelChart* ChartSource::chart() const
{
    return m_pairs.exist() ? dynamic_cast<KelChart*>(m_root.get()) : nullptr;
}

} // namespace Orv::Chart
