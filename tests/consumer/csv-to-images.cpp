// Renders a CSV file through the installed libraries as PNG, SVG and PDF, then
// checks each file: the PNG loads and is not one flat colour, the SVG holds the
// chart's title, the PDF starts as one does. Without an argument it writes a
// made-up CSV of its own into a temporary folder. Exits non-zero on a failure.
//   csv-to-images [CSV_FILE]

#include <ChartPainter.h>
#include <ChartSetUp.h>
#include <CsvImport.h>
#include <DataBinding.h>
#include <KelChart2D.h>
#include <Plot.h>

#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QTemporaryDir>
#include <QTextStream>

#include <cstdio>

namespace {

int check(bool ok, const QString& what)
{
    std::printf("%s: %s\n", ok ? "ok" : "FAILED", qPrintable(what));
    return ok ? 0 : 1;
}

// A day of hourly readings of two thermometers.
QString writeSampleCsv(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return {};
    QTextStream out(&file);
    out << "time [h],outdoor [degC],indoor [degC]\n";
    for (int hour = 0; hour < 24; ++hour)
        out << hour << ',' << 8 + (hour * 7) % 13 << ',' << 20 + hour % 3 << '\n';
    return path;
}

bool oneColour(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != image.pixel(0, 0))
                return false;
    return true;
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

int main(int argc, char** argv)
{
    // Text is laid out with the platform's fonts, which need a GUI application.
    QGuiApplication app(argc, argv);
    QTemporaryDir folder;
    const QString csv = argc > 1 ? QString::fromLocal8Bit(argv[1]) : writeSampleCsv(folder.filePath("readings.csv"));
    const Orv::Chart::CsvImport::Result read = Orv::Chart::CsvImport::read(csv);
    if (!read.ok()) {
        std::fprintf(stderr, "csv-to-images: %s\n", qPrintable(read.error.message));
        return 1;
    }

    const QString title = QStringLiteral("Thermometers");
    KelModifiedGroup group;
    KelChart2D chart(group);
    Orv::Chart::setUpChartForData(chart, read.data, title);
    Orv::Chart::bindData(chart.variables, Orv::Chart::axisPairsOf(chart), read.data);

    const QSize size(800, 500);
    const Orv::Chart::Plot plot(chart, Orv::Chart::axisPairsOf(chart), {size, 100, {}});
    const Orv::Chart::ChartPainter painter(plot, size);
    int failures = 0;
    for (const QString suffix : {"png", "svg", "pdf"}) {
        QString error;
        const bool written = painter.write(folder.filePath("chart." + suffix), &error);
        failures += check(written, "writes the " + suffix + " file " + error);
    }

    const QImage png(folder.filePath("chart.png"));
    failures += check(png.size() == size && !oneColour(png), "the PNG is a picture of the chart's size");
    const QByteArray svg = contents(folder.filePath("chart.svg"));
    failures += check(svg.contains("<svg") && svg.contains(title.toUtf8()), "the SVG holds the title");
    failures += check(contents(folder.filePath("chart.pdf")).startsWith("%PDF"), "the PDF starts as one");
    return failures == 0 ? 0 : 1;
}
