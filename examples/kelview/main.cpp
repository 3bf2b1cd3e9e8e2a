// The interactive view: a chart window with a property editor.
#include "ChartWidget.h"
#include "Failure.h"
#include "ViewOptions.h"
#include "ViewWindow.h"

#include <QApplication>
#include <QDockWidget>
#include <QMouseEvent>
#include <QTextStream>

#include <cstdio>

namespace {

// Lays the window out at its size and grabs it, with the cursor where asked.
int screenshot(kelview::ViewWindow& window, const kelview::ViewOptions& options)
{
    window.show();
    QCoreApplication::processEvents();
    if (options.hover.x() >= 0) {
        QWidget* chart = window.chartView();
        QMouseEvent move(QEvent::MouseMove, options.hover, chart->mapToGlobal(options.hover), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(chart, &move);
    }
    if (!window.grab().save(options.screenshotPath, "PNG"))
        throw kelchart::Failure(QStringLiteral("%1: cannot write the screenshot").arg(options.screenshotPath));
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QTextStream err(stderr);
    try {
        const kelview::ViewOptions options = kelview::ViewOptions::parse(QCoreApplication::arguments());
        kelview::ViewWindow window(kelview::ChartDocument::open(options.chartPath, options.csvPath));
        window.resize(options.size);
        window.editorDock()->setVisible(options.editor);
        if (!options.screenshotPath.isEmpty())
            return screenshot(window, options);
        window.show();
        return QApplication::exec();
    } catch (const kelchart::Failure& failure) {
        err << (failure.status() == kelchart::Failure::BadUsage ? "" : "kelview: ") << failure.message() << '\n';
        return failure.status();
    }
}
