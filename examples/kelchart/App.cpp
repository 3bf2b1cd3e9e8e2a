#include "App.h"

#include "ChartFile.h"
#include "CsvChart.h"
#include "CsvReader.h"
#include "DataBinding.h"
#include "ElementClasses.h"
#include "Pipeline.h"
#include "PropertyPath.h"
#include "Renderer.h"
#include "Report.h"
#include "SampleChart.h"

#include <QFileInfo>

#include <memory>

namespace kelchart {

namespace {

std::unique_ptr<KelProperties> makeChart(const Options& options, const DataSet& data, KelModifiedGroup& group)
{
    if (!options.loadPath.isEmpty())
        return ChartFile::load(options.loadPath, group);
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
    for (const QString& assignment : assignments)
        PropertyPath::assign(root, assignment);
}

void draw(KelChart& chart, const AxisPairs& pairs, const Options& options, QTextStream& out)
{
    const Pipeline pipeline(chart, pairs, {options.size, options.tickCount, {}});
    const Renderer renderer(pipeline, options.size);
    if (options.drawImages) {
        renderer.writePng(options.pngPath);
        renderer.writeSvg(options.svgPath);
    }
    if (options.fullReport) {
        out << Report::full(pipeline, renderer.layout());
        return;
    }
    out << Report::summary(pipeline);
    if (options.drawImages)
        out << "wrote " << options.pngPath << " and " << options.svgPath << '\n';
}

} // namespace

void run(const Options& options, QTextStream& out, QTextStream& err)
{
    KelModifiedGroup group;
    DataSet data = options.csvPath.isEmpty() ? SampleChart::data()
                                             : CsvReader::read(options.csvPath, options.csv);
    for (const QString& note : data.notes)
        err << "kelchart: note: " << note << '\n';
    const std::unique_ptr<KelProperties> root = makeChart(options, data, group);
    // Before binding, so that an axis's time zone places the data's times; after
    // it, so that what the user set wins over what the data set (category labels).
    assignAll(*root, options.assignments);
    bind(*root, std::move(data), err);
    assignAll(*root, options.assignments);
    if (!options.savePath.isEmpty())
        ChartFile::save(*root, options.savePath);
    const AxisPairs pairs = axisPairsOf(*root);
    if (pairs.exist())
        draw(static_cast<KelChart&>(*root), pairs, options, out);
    else
        err << "kelchart: note: a \"" << root->type() << "\" has no axes to draw; nothing drawn\n";
}

} // namespace kelchart
