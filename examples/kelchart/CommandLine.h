#pragma once
// The example host's command line:
//   kelchart [options] [data.csv]
// Without a CSV file it draws the built-in sample. Usage faults throw a
// Failure with the BadUsage status.

#include "ChartPainter.h"
#include "CsvImport.h"

#include <QLocale>
#include <QSize>
#include <QString>
#include <QStringList>

#include <vector>

namespace kelchart {

using namespace Orv::Chart;

// A file to draw the chart into, in the format --png, --svg, --pdf or the
// suffix of --output named.
struct Output {
    QString path;
    ChartPainter::Format format;
};

struct Options {
    QString csvPath;
    QString loadPath;
    QString savePath;
    // In the order given; kelchart.png and kelchart.svg when none is.
    std::vector<Output> outputs = {{QStringLiteral("kelchart.png"), ChartPainter::Format::Png},
                                   {QStringLiteral("kelchart.svg"), ChartPainter::Format::Svg}};
    bool drawImages = true;
    // Device pixels per layout pixel of PNG files; the layout keeps `size`.
    qreal scale = 1.0;
    QStringList assignments;
    bool fullReport = false;
    QSize size = QSize(800, 500);
    // The most tick intervals an axis asks for; the room for its labels decides below that.
    unsigned tickCount = 100;
    // The locale the axis labels are drawn in; the C locale writes them as the report does.
    QLocale locale = QLocale::c();
    // How the CSV file is read: x's time format, the columns' roles, the series' shape.
    CsvOptions csv;
    // Set by --help: the usage text, and nothing else is to be done.
    QString helpText;
};

// Parses the arguments, program name first.
Options parseCommandLine(const QStringList& arguments);

} // namespace kelchart
