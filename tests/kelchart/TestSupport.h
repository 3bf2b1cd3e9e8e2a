#pragma once
// Helpers of the example host's tests: running the built executable, and
// reading what it reports back.

#include <QByteArray>
#include <QDir>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QStringList>

#include "Matrix.h"
#include "QtPrinters.h"

#include <ostream>


struct KelchartRun {
    int exitCode = -1;
    bool crashed = false;
    QByteArray out;
    QByteArray err;
};

// Runs the kelchart executable in `directory` and waits for it (a minute at most).
KelchartRun runKelchart(const QStringList& arguments, const QString& directory);

QString testDataPath(const QString& name);
QByteArray readAll(const QString& path);
void writeText(const QString& path, const QByteArray& text);

// The plot area that a full report states.
QRectF reportedPlotArea(const QString& report);
// The matrix a full report states for a variable.
Orv::Math::Matrix reportedMatrix(const QString& report, const QString& variable);
// Where a data point goes in the image, through the matrix and the plot area.
QPointF pixelOf(const QString& report, const QString& variable, double x, double y);
