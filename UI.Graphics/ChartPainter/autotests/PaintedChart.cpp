#include "PaintedChart.h"

#include "ChartSetUp.h"
#include "DataBinding.h"
#include "IoError.h"
#include "PropertyPath.h"
#include "SampleChart.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

namespace PaintedChart {

namespace Chart = Orv::Chart;

void assignAll(KelProperties& root, const QStringList& settings)
{
    for (const QString& setting : settings) {
        Chart::IoError error;
        EXPECT_TRUE(Chart::PropertyPath::assign(root, setting, &error)) << error.message.toStdString();
    }
}

std::unique_ptr<KelChart2D> sample(KelModifiedGroup& group)
{
    std::unique_ptr<KelChart2D> chart = Chart::SampleChart::build(group);
    Chart::bindData(chart->variables, Chart::axisPairsOf(*chart), Chart::SampleChart::data());
    return chart;
}

Chart::DataSeries series(const QString& xName, std::vector<float> x, const QString& yName, std::vector<float> y,
                         std::vector<bool> xUndefined, std::vector<bool> yUndefined)
{
    Chart::DataSeries s;
    s.x = {xName, {}, std::move(x), std::move(xUndefined)};
    s.y = {yName, {}, std::move(y), std::move(yUndefined)};
    s.x.undefined.resize(s.x.values.size(), false);
    s.y.undefined.resize(s.y.values.size(), false);
    return s;
}

QImage image(const Chart::ChartPainter& painter, QSize size)
{
    QImage result(size, QImage::Format_ARGB32);
    result.fill(Qt::white);
    QPainter device(&result);
    painter.paint(device);
    return result;
}

QByteArray svg(const Chart::ChartPainter& painter, QSize size, bool withViewBox)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(size);
    if (withViewBox)
        generator.setViewBox(QRect(QPoint(0, 0), size));
    QPainter device(&generator);
    painter.paint(device);
    device.end();
    return buffer.data();
}

void SeriesChart::draw(Chart::DataSeries one, const QStringList& settings)
{
    painter.reset();
    plot.reset();
    chart = std::make_unique<KelChart2D>(group);
    Chart::DataSet data;
    data.series.push_back(std::move(one));
    Chart::setUpChartForData(*chart, data, QStringLiteral("test"));
    assignAll(*chart,
              QStringList{
                  QStringLiteral("variable/%1/style/lineColor=%2").arg(data.series.front().y.name, seriesColour.name())}
                  + settings);
    EXPECT_TRUE(Chart::bindData(chart->variables, Chart::axisPairsOf(*chart), std::move(data)).isEmpty());
    plot = std::make_unique<Chart::Plot>(*chart, Chart::axisPairsOf(*chart), Chart::TickRoom{size, 100, {}});
    painter = std::make_unique<Chart::ChartPainter>(*plot, size);
}

QPointF SeriesChart::pixelOf(double x, double y) const
{
    const auto cube = plot->scaling().preciseMatrix(0).map(static_cast<float>(x), static_cast<float>(y), 0.0f);
    return painter->layout().toPixel(cube.x, cube.y);
}

} // namespace PaintedChart
