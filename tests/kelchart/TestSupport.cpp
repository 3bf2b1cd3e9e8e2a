#include "TestSupport.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>

#include <gtest/gtest.h>

KelchartRun runKelchart(const QStringList& arguments, const QString& directory)
{
    QProcess process;
    process.setWorkingDirectory(directory);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(KELCHART_BINARY), arguments);
    KelchartRun run;
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "kelchart did not finish: " << arguments.join(QLatin1Char(' ')).toStdString();
    }
    run.crashed = process.exitStatus() != QProcess::NormalExit;
    run.exitCode = process.exitCode();
    run.out = process.readAllStandardOutput();
    run.err = process.readAllStandardError();
    return run;
}

QString testDataPath(const QString& name)
{
    return QStringLiteral(KELCHART_TEST_DATA) + QLatin1Char('/') + name;
}

QByteArray readAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        ADD_FAILURE() << "cannot read " << path.toStdString();
    return file.readAll();
}

void writeText(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        ADD_FAILURE() << "cannot write " << path.toStdString();
}

QRectF reportedPlotArea(const QString& report)
{
    static const QRegularExpression line(QStringLiteral("plot area at \\(([-\\d.e+]+), ([-\\d.e+]+)\\), "
                                                        "([-\\d.e+]+) x ([-\\d.e+]+)"));
    const QRegularExpressionMatch match = line.match(report);
    EXPECT_TRUE(match.hasMatch()) << "no plot area in the report";
    return QRectF(match.captured(1).toDouble(), match.captured(2).toDouble(), match.captured(3).toDouble(),
                  match.captured(4).toDouble());
}

Orv::Math::Matrix reportedMatrix(const QString& report, const QString& variable)
{
    Orv::Math::Matrix matrix;
    const int start = report.indexOf(QStringLiteral("variable \"%1\"").arg(variable));
    EXPECT_GE(start, 0) << "no variable " << variable.toStdString() << " in the report";
    for (int row = 0; row < 4; ++row) {
        const QString label = QStringLiteral("matrix row %1: ").arg(row);
        const int at = report.indexOf(label, start) + label.size();
        const QStringList cells = report.mid(at, report.indexOf(QLatin1Char('\n'), at) - at).split(QLatin1Char(' '));
        EXPECT_EQ(cells.size(), 4);
        for (int column = 0; column < cells.size() && column < 4; ++column)
            matrix(row, column) = cells[column].toFloat();
    }
    return matrix;
}

QPointF pixelOf(const QString& report, const QString& variable, double x, double y)
{
    const Orv::Math::Vector3 cube = reportedMatrix(report, variable)
                                        .map(Orv::Math::Vector3(static_cast<float>(x), static_cast<float>(y), 0.0f));
    const QRectF plot = reportedPlotArea(report);
    return QPointF(plot.left() + (cube.x() + 1.0) / 2.0 * plot.width(),
                   plot.bottom() - (cube.y() + 1.0) / 2.0 * plot.height());
}
