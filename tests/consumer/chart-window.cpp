// Shows a chart in a window through the installed widgets library and grabs
// the window: the grab must have the window's size, and the chart widget's part
// of it must show the series in colour. Runs on any Qt platform; CTest picks
// "offscreen".

#include <ChartSetUp.h>
#include <ChartWidget.h>
#include <CsvImport.h>
#include <DataBinding.h>
#include <KelChart2D.h>

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QVBoxLayout>

#include <cstdio>

namespace {

int check(bool ok, const char* what)
{
    std::printf("%s: %s\n", ok ? "ok" : "FAILED", what);
    return ok ? 0 : 1;
}

// Whether any pixel is neither white, black nor grey: the frame, axes and
// texts are drawn in those, the series in colour.
bool showsColour(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            if (qRed(pixel) != qGreen(pixel) || qGreen(pixel) != qBlue(pixel))
                return true;
        }
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);

    // The data of a CSV file, read from memory.
    QByteArray text("day,pressure [hPa]\nMon,1012\nTue,1008\nWed,995\nThu,1003\nFri,1019\n");
    QBuffer csv(&text);
    const Orv::Chart::CsvImport::Result read = Orv::Chart::CsvImport::read(csv, "week.csv");
    if (!read.ok()) {
        std::fprintf(stderr, "chart-window: %s\n", qPrintable(read.error.message));
        return 1;
    }

    // Declared before the window, so that the chart outlives the widget showing it.
    KelModifiedGroup group;
    KelChart2D chart(group);
    Orv::Chart::setUpChartForData(chart, read.data, "Pressure");
    Orv::Chart::bindData(chart.variables, Orv::Chart::axisPairsOf(chart), read.data);

    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* view = new Orv::Chart::ChartWidget;
    layout->addWidget(view);
    view->setChart(&chart, Orv::Chart::axisPairsOf(chart));
    window.resize(640, 400);
    window.show();
    QApplication::processEvents();

    const QImage shot = window.grab().toImage();
    int failures = 0;
    failures += check(view->frames() != nullptr, "the widget has a chart to draw");
    failures += check(shot.size() == window.size(), "the grab has the window's size");
    failures += check(showsColour(shot.copy(view->geometry())), "the chart shows its series in colour");
    return failures == 0 ? 0 : 1;
}
