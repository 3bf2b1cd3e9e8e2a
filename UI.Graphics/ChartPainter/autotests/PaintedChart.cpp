#include "PaintedChart.h"

#include "IoError.h"
#include "PropertyPath.h"

#include <QBuffer>
#include <QPainter>
#include <QSvgGenerator>

#include <gtest/gtest.h>

namespace PaintedChart {

void assignAll(KelProperties& root, const QStringList& settings)
{
    for (const QString& setting : settings) {
        Orv::Chart::IoError error;
        EXPECT_TRUE(Orv::Chart::PropertyPath::assign(root, setting, &error)) << error.message.toStdString();
    }
}

QImage image(const Orv::Chart::ChartPainter& painter, QSize size)
{
    QImage result(size, QImage::Format_ARGB32);
    result.fill(Qt::white);
    QPainter device(&result);
    painter.paint(device);
    return result;
}

QByteArray svg(const Orv::Chart::ChartPainter& painter, QSize size, bool withViewBox)
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

} // namespace PaintedChart
