// The example host: a chart view in miniature on top of the chart library.
// It runs without a display, on Qt's offscreen platform.

#include "App.h"
#include "CommandLine.h"
#include "Failure.h"

#include <QGuiApplication>
#include <QTextStream>

namespace {

QtMessageHandler qtHandler = nullptr;

// Without a desktop session Qt falls back to a private runtime directory by
// itself; that is normal here and not worth a line on stderr.
void messageHandler(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (type == QtWarningMsg && message.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set")))
        return;
    qtHandler(type, context, message);
}

} // namespace

// Qt's offscreen platform plugin does not free its screen and cursor when the
// application ends. Sanitizer builds are told so, and only of these: each
// entry is a frame that the allocation of one such object shows.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libqoffscreen.so\n"
           "leak:QScreen::QScreen\n"
           "leak:QPlatformScreen::QPlatformScreen\n"
           "leak:QWindowSystemInterface::handleScreenAdded\n"
           "leak:QtSharedPointer::ExternalRefCountData::getAndRef\n"
           "leak:QObject::QObject\n";
}

extern "C" const char* __lsan_default_options()
{
    return "print_suppressions=0";
}

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qtHandler = qInstallMessageHandler(messageHandler);
    QGuiApplication application(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    try {
        const kelchart::Options options = kelchart::parseCommandLine(QGuiApplication::arguments());
        if (!options.helpText.isEmpty()) {
            out << options.helpText;
            return 0;
        }
        kelchart::run(options, out, err);
    } catch (const kelchart::Failure& failure) {
        out.flush();
        err << "kelchart: " << failure.message() << '\n';
        return failure.status();
    }
    return 0;
}
