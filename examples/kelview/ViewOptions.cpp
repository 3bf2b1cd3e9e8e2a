#include "ViewOptions.h"

#include "ChartDocument.h"
#include "Failure.h"

#include <QCommandLineParser>
#include <QLocale>

#include <cmath>

namespace kelview {

namespace {

int positiveNumber(const QString& text, const QString& option)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < 0 || value > 20000)
        throw kelchart::Failure(QStringLiteral("--%1: \"%2\" is not a number from 0 to 20000").arg(option, text),
                                kelchart::Failure::BadUsage);
    return value;
}

// "AxB" with A and B read by `positiveNumber`.
QPoint pairOf(const QString& text, QChar separator, const QString& option)
{
    const QStringList parts = text.split(separator);
    if (parts.size() != 2)
        throw kelchart::Failure(QStringLiteral("--%1: \"%2\" is not of the form A%3B").arg(option, text, separator),
                                kelchart::Failure::BadUsage);
    return QPoint(positiveNumber(parts[0], option), positiveNumber(parts[1], option));
}

// "C" or a name QLocale knows ("de_DE", "fr", "ja-JP"): anything else would quietly be C.
QString localeName(const QString& text)
{
    const QLocale locale(text);
    if (text.compare(QStringLiteral("C"), Qt::CaseInsensitive) != 0 && locale == QLocale::c())
        throw kelchart::Failure(QStringLiteral("--locale: \"%1\" is no locale name such as de_DE").arg(text),
                                kelchart::Failure::BadUsage);
    return locale.name();
}

[[noreturn]] void badUsage(const QString& message)
{
    throw kelchart::Failure(message, kelchart::Failure::BadUsage);
}

// A finite number in [low, high].
double numberIn(const QString& text, double low, double high, const QString& option)
{
    bool ok = false;
    const double value = text.toDouble(&ok);
    if (!ok || !(value >= low && value <= high))
        badUsage(QStringLiteral("--%1: \"%2\" is not a number from %3 to %4").arg(option, text).arg(low).arg(high));
    return value;
}

// "generator", "generator:RATE", "-" for standard input, or a path.
LiveOptions liveSource(const QString& text)
{
    static const QString generator = QStringLiteral("generator");
    LiveOptions live;
    if (text == QLatin1String("-")) {
        live.source = LiveOptions::Source::StandardInput;
    } else if (text == generator || text.startsWith(generator + QLatin1Char(':'))) {
        live.source = LiveOptions::Source::Generator;
        live.follow = 10.0;
        if (text != generator)
            live.rate = numberIn(text.mid(generator.size() + 1), 1, 1e8, QStringLiteral("live generator:RATE"));
    } else {
        live.source = LiveOptions::Source::Path;
        live.path = text;
    }
    return live;
}

LiveOptions liveOptions(const QCommandLineParser& parser)
{
    const QString limit = QStringLiteral("limit");
    const QString follow = QStringLiteral("follow");
    if (!parser.isSet(QStringLiteral("live"))) {
        if (parser.isSet(limit) || parser.isSet(follow))
            badUsage(QStringLiteral("--limit and --follow go with --live"));
        return {};
    }
    if (!parser.positionalArguments().isEmpty())
        badUsage(QStringLiteral("--live shows live data instead of files"));
    LiveOptions live = liveSource(parser.value(QStringLiteral("live")));
    if (parser.isSet(limit)) {
        const double items = numberIn(parser.value(limit), 0, 1e12, limit);
        if (items != std::floor(items))
            badUsage(QStringLiteral("--limit: \"%1\" is not a whole number").arg(parser.value(limit)));
        live.limit = static_cast<std::size_t>(items);
    }
    if (parser.isSet(follow))
        live.follow = numberIn(parser.value(follow), 0, 1e15, follow);
    return live;
}

} // namespace

ViewOptions ViewOptions::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("An interactive chart view with a property editor."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QStringLiteral("A chart file and/or a data file (.csv, .tsv, .txt)."),
                                 QStringLiteral("[chart.json] [data.csv]"));
    parser.addOption({QStringLiteral("size"), QStringLiteral("Window size."), QStringLiteral("WxH")});
    parser.addOption({QStringLiteral("no-editor"), QStringLiteral("Start with the property editor closed.")});
    parser.addOption({QStringLiteral("screenshot"), QStringLiteral("Write the window to a PNG file and quit."),
                      QStringLiteral("FILE")});
    parser.addOption({QStringLiteral("hover"), QStringLiteral("For the screenshot: the cursor at X,Y of the chart."),
                      QStringLiteral("X,Y")});
    parser.addOption({QStringLiteral("locale"),
                      QStringLiteral("How the chart writes numbers and dates (C, de_DE, ...); when not given, "
                                     "the last choice in the View menu (C for a screenshot)."),
                      QStringLiteral("NAME")});
    parser.addOption({QStringLiteral("live"),
                      QStringLiteral("Show data as they arrive: \"generator\" or \"generator:RATE\" (a test signal, "
                                     "RATE items per second per channel, 1000 when not given), \"-\" (rows of a "
                                     "table on standard input), or a named pipe or file that rows are appended to."),
                      QStringLiteral("SOURCE")});
    parser.addOption({QStringLiteral("limit"),
                      QStringLiteral("Live: the items kept per series, the oldest dropped first; 0 keeps all "
                                     "(default 1000000)."),
                      QStringLiteral("N")});
    parser.addOption({QStringLiteral("follow"),
                      QStringLiteral("Live: the x axis shows the newest SECONDS (x units) and follows them; 0 "
                                     "leaves it alone (default 10 for the generator, 0 otherwise)."),
                      QStringLiteral("SECONDS")});
    if (!parser.parse(arguments))
        throw kelchart::Failure(parser.errorText(), kelchart::Failure::BadUsage);
    if (parser.isSet(QStringLiteral("help")))
        throw kelchart::Failure(parser.helpText(), kelchart::Failure::BadUsage);

    ViewOptions options;
    options.live = liveOptions(parser);
    for (const QString& file : parser.positionalArguments()) {
        QString& slot = isDataFile(file) ? options.csvPath : options.chartPath;
        if (!slot.isEmpty())
            throw kelchart::Failure(QStringLiteral("\"%1\": only one chart file and one data file").arg(file),
                                    kelchart::Failure::BadUsage);
        slot = file;
    }
    if (parser.isSet(QStringLiteral("size"))) {
        const QPoint size = pairOf(parser.value(QStringLiteral("size")), QLatin1Char('x'), QStringLiteral("size"));
        options.size = QSize(size.x(), size.y());
    }
    options.editor = !parser.isSet(QStringLiteral("no-editor"));
    if (parser.isSet(QStringLiteral("locale")))
        options.locale = localeName(parser.value(QStringLiteral("locale")));
    options.screenshotPath = parser.value(QStringLiteral("screenshot"));
    if (parser.isSet(QStringLiteral("hover")))
        options.hover = pairOf(parser.value(QStringLiteral("hover")), QLatin1Char(','), QStringLiteral("hover"));
    return options;
}

} // namespace kelview
