// kelquick: the chart item in a Qt Quick window, on the built-in sample
// chart or a file named on the command line (a CSV file or a chart file).
//   kelquick [FILE] [--size WxH] [--screenshot FILE.png [--hover X,Y]]
// --screenshot lays the window out, waits for its first frame, writes the
// window's picture and quits (for documentation and tests); --hover puts the
// mouse at that window position first.
#include "ChartItem.h"

#include <QCommandLineParser>
#include <QCursor>
#include <QDir>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickItemGrabResult>
#include <QQuickWindow>
#include <QTextStream>
#include <QUrl>

#include <utility>

namespace {

struct Options {
    QUrl source;
    QSize size{1000, 680};
    QString screenshot;
    // Where the mouse hovers before the screenshot; none when negative.
    QPointF hover{-1, -1};
};

Options parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("The chart item in a Qt Quick window."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("file"),
                                 QStringLiteral("a CSV file or a chart file (default: the sample)"));
    parser.addOption({QStringLiteral("size"), QStringLiteral("window size"), QStringLiteral("WxH")});
    parser.addOption({QStringLiteral("screenshot"), QStringLiteral("write the window to a PNG file and quit"),
                      QStringLiteral("file")});
    parser.addOption({QStringLiteral("hover"), QStringLiteral("the mouse's window position for the screenshot"),
                      QStringLiteral("X,Y")});
    parser.process(arguments);
    Options options;
    if (!parser.positionalArguments().isEmpty())
        options.source = QUrl::fromLocalFile(QDir::current().absoluteFilePath(parser.positionalArguments().first()));
    const QStringList size = parser.value(QStringLiteral("size")).split(QLatin1Char('x'));
    if (size.size() == 2 && size[0].toInt() > 0 && size[1].toInt() > 0)
        options.size = QSize(size[0].toInt(), size[1].toInt());
    options.screenshot = parser.value(QStringLiteral("screenshot"));
    const QStringList hover = parser.value(QStringLiteral("hover")).split(QLatin1Char(','));
    if (hover.size() == 2)
        options.hover = QPointF(hover[0].toDouble(), hover[1].toDouble());
    return options;
}

// The window's content item to a PNG file, then quit with the outcome.
// The content item's picture, which every scene graph backend and platform gives. `pending` keeps
// the grab alive until it is ready; the connection holds no reference to it, which would be a cycle.
void writeScreenshot(QQuickWindow& window, const QString& path, QSharedPointer<QQuickItemGrabResult>& pending)
{
    const QSize pixels = (QSizeF(window.size()) * window.effectiveDevicePixelRatio()).toSize();
    pending = window.contentItem()->grabToImage(pixels);
    const QQuickItemGrabResult* grab = pending.data();
    QObject::connect(grab, &QQuickItemGrabResult::ready, &window, [grab, path] {
        const bool saved = grab->image().save(path, "PNG");
        if (!saved)
            QTextStream(stderr) << "kelquick: " << path << ": cannot write the screenshot\n";
        QCoreApplication::exit(saved ? 0 : 1);
    });
}

// After the first frame: the mouse put where asked, and once a frame shows it, the screenshot.
void screenshotAfterFirstFrame(QQuickWindow& window, const QString& path, QPointF hover,
                               QSharedPointer<QQuickItemGrabResult>& pending)
{
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, [&window, path, hover, &pending] {
        static int frames = 0;
        ++frames;
        if (frames == 1 && hover.x() >= 0) {
            const QPoint global = window.mapToGlobal(hover.toPoint());
            QCursor::setPos(global);
            QMouseEvent move(QEvent::MouseMove, hover, hover, global, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(&window, &move);
            window.update();
        } else if (frames == 1 || frames == 2) {
            writeScreenshot(window, path, pending);
        }
    });
}

} // namespace

int main(int argc, char* argv[])
{
    QGuiApplication app(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Orv"));
    QCoreApplication::setApplicationName(QStringLiteral("kelquick"));
    const Options options = parse(QCoreApplication::arguments());
    Orv::Chart::ChartItem::registerQmlTypes();

    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("initialSource"), options.source);
    engine.load(QUrl(QStringLiteral("qrc:/kelquick/main.qml")));
    auto* window = engine.rootObjects().isEmpty() ? nullptr : qobject_cast<QQuickWindow*>(engine.rootObjects().first());
    if (window == nullptr) {
        QTextStream(stderr) << "kelquick: the window's QML did not load\n";
        return 1;
    }
    window->resize(options.size);
    QSharedPointer<QQuickItemGrabResult> pendingScreenshot;
    if (!options.screenshot.isEmpty())
        screenshotAfterFirstFrame(*window, options.screenshot, options.hover, pendingScreenshot);
    window->show();
    return QGuiApplication::exec();
}
