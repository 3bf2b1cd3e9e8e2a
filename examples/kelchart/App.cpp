#include "App.h"

#include "ChartFile.h"
#include "ChartSetUp.h"
#include "CsvImport.h"
#include "DataBinding.h"
#include "ElementClasses.h"
#include "Failure.h"
#include "Plot.h"
#include "PropertyPath.h"
#include "ChartPainter.h"
#include "Report.h"
#include "SampleChart.h"

#include <QFileInfo>

#include <memory>

namespace kelchart {

namespace {

DataSet readData(const Options& options)
{
    if (options.csvPath.isEmpty())
        return SampleChart::data();
    CsvImport::Result read = CsvImport::read(options.csvPath, options.csv);
    if (read.error.kind == IoError::BadRequest)
        throw Failure(QStringLiteral("%1 (see kelchart --help)").arg(read.error.message), Failure::BadUsage);
    if (!read.ok())
        throw Failure(read.error.message);
    return std::move(read.data);
}

std::unique_ptr<KelProperties> loadChart(const QString& path, KelModifiedGroup& group)
{
    IoError error;
    std::unique_ptr<KelProperties> root = ChartFile::load(path, group, &error);
    if (!root)
        throw Failure(error.message);
    return root;
}

std::unique_ptr<KelProperties> makeChart(const Options& options, const DataSet& data, KelModifiedGroup& group)
{
    if (!options.loadPath.isEmpty())
        return loadChart(options.loadPath, group);
    if (options.csvPath.isEmpty())
        return SampleChart::build(group);
    auto chart = std::make_unique<KelChart2D>(group);
    setUpChartForData(*chart, data, QFileInfo(options.csvPath).completeBaseName());
    return chart;
}

void bind(KelProperties& root, DataSet data, QTextStream& err)
{
    auto* chart = dynamic_cast<KelChart*>(&root);
    if (!chart)
        return;
    const QStringList unbound = bindData(chart->variables, axisPairsOf(root), std::move(data));
    for (const QString& name : unbound)
        err << "kelchart: note: the chart has no variable \"" << name << "\" for that data series\n";
}

void assignAll(KelProperties& root, const QStringList& assignments)
{
    for (const QString& assignment : assignments) {
        IoError error;
        if (!PropertyPath::assign(root, assignment, &error))
            throw Failure(QStringLiteral("--set %1").arg(error.message),
                          error.kind == IoError::BadRequest ? Failure::BadUsage : Failure::BadInput);
    }
}

// What the import guessed that dropped or changed data, in the report as well as on stderr.
void reportNotes(const QStringList& notes, QTextStream& out)
{
    for (const QString& note : notes)
        out << "note: " << note << '\n';
}

void writeImages(const ChartPainter& renderer, const std::vector<Output>& outputs)
{
    for (const Output& output : outputs) {
        QString error;
        if (!renderer.write(output.path, output.format, &error))
            throw Failure(error);
    }
}

// "a", "a and b", "a, b and c".
QString listed(const std::vector<Output>& outputs)
{
    QStringList paths;
    for (const Output& output : outputs)
        paths << output.path;
    const QString last = paths.takeLast();
    return paths.isEmpty() ? last : paths.join(QStringLiteral(", ")) + QStringLiteral(" and ") + last;
}

void draw(KelChart& chart, const AxisPairs& pairs, const Options& options, QTextStream& out)
{
    const Plot pipeline(chart, pairs, {options.size, options.tickCount, {}, options.locale});
    ChartPainter renderer(pipeline, options.size);
    renderer.setLocale(options.locale);
    renderer.setPixelRatio(options.scale);
    if (options.drawImages)
        writeImages(renderer, options.outputs);
    if (options.fullReport) {
        out << Report::full(pipeline, renderer.layout());
        return;
    }
    out << Report::summary(pipeline);
    if (options.drawImages)
        out << "wrote " << listed(options.outputs) << '\n';
}

} // namespace

void run(const Options& options, QTextStream& out, QTextStream& err)
{
    KelModifiedGroup group;
    DataSet data = readData(options);
    for (const QString& note : data.notes)
        err << "kelchart: note: " << note << '\n';
    if (options.fullReport)
        reportNotes(data.notes, out);
    const std::unique_ptr<KelProperties> root = makeChart(options, data, group);
    // Before binding, so that an axis's time zone places the data's times; after
    // it, so that what the user set wins over what the data set (category labels).
    assignAll(*root, options.assignments);
    bind(*root, std::move(data), err);
    assignAll(*root, options.assignments);
    IoError error;
    if (!options.savePath.isEmpty() && !ChartFile::save(*root, options.savePath, &error))
        throw Failure(error.message);
    const AxisPairs pairs = axisPairsOf(*root);
    if (pairs.exist())
        draw(static_cast<KelChart&>(*root), pairs, options, out);
    else
        err << "kelchart: note: a \"" << root->type() << "\" has no axes to draw; nothing drawn\n";
}

} // namespace kelchart
