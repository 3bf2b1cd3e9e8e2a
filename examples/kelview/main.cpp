// The interactive view: a chart window with a property editor.
#include "ChartWidget.h"
#include "Failure.h"
#include "LiveView.h"
#include "ViewOptions.h"
#include "ViewWindow.h"

#include <QApplication>
#include <QDockWidget>
#include <QMouseEvent>
#include <QSettings>
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

// The locale asked for, else the one chosen in the View menu last time; a
// screenshot does not depend on that choice, so that scripts get the same image.
QLocale chartLocale(const kelview::ViewOptions& options)
{
    if (!options.locale.isEmpty())
        return QLocale(options.locale);
    if (!options.screenshotPath.isEmpty())
        return QLocale::c();
    return QLocale(QSettings().value(QStringLiteral("locale"), QStringLiteral("C")).toString());
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Orv"));
    QCoreApplication::setApplicationName(QStringLiteral("kelview"));
    QTextStream err(stderr);
    try {
        const kelview::ViewOptions options = kelview::ViewOptions::parse(QCoreApplication::arguments());
        std::unique_ptr<kelview::LiveSource> live = kelview::LiveSource::open(options.live);
        kelview::ViewWindow window(live ? kelview::LiveView::waiting(live->name())
                                        : kelview::ChartDocument::open(options.chartPath, options.csvPath));
        if (live)
            new kelview::LiveView(window, std::move(live), options.live);
        window.resize(options.size);
        window.editorDock()->setVisible(options.editor);
        window.setChartLocale(chartLocale(options));
        if (!options.screenshotPath.isEmpty())
            return screenshot(window, options);
        window.show();
        return QApplication::exec();
    } catch (const kelchart::Failure& failure) {
        err << (failure.status() == kelchart::Failure::BadUsage ? "" : "kelview: ") << failure.message() << '\n';
        return failure.status();
    }
}
