#pragma once
// The example host's command line:
//   kelchart [options] [data.csv]
// Without a CSV file it draws the built-in sample. Usage faults throw a
// Failure with the BadUsage status.

#include "CsvImport.h"

#include <QLocale>
#include <QSize>
#include <QString>
#include <QStringList>

namespace kelchart {

using namespace Orv::Chart;

struct Options {
    QString csvPath;
    QString loadPath;
    QString savePath;
    QString pngPath = QStringLiteral("kelchart.png");
    QString svgPath = QStringLiteral("kelchart.svg");
    bool drawImages = true;
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
