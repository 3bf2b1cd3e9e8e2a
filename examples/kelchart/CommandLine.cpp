#include "CommandLine.h"

#include "ChartLayout.h"
#include "Failure.h"

#include <QCommandLineParser>
#include <QHash>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace kelchart {

namespace {

constexpr int largestSide = 10000;
constexpr unsigned largestTickCount = 1000;
constexpr double largestScale = 8;
// Of a PNG file, after --scale.
constexpr int largestPixelSide = 16384;

[[noreturn]] void usageFault(const QString& message)
{
    throw Failure(message + QStringLiteral(" (see kelchart --help)"), Failure::BadUsage);
}

QSize parseSize(const QString& text)
{
    static const QRegularExpression pattern(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = pattern.match(text);
    const QSize size = match.hasMatch() ? QSize(match.captured(1).toInt(), match.captured(2).toInt()) : QSize();
    if (!match.hasMatch() || size.width() < ChartLayout::minimumWidth || size.height() < ChartLayout::minimumHeight
        || size.width() > largestSide || size.height() > largestSide)
        usageFault(QStringLiteral("--size %1: expected WIDTHxHEIGHT from %2x%3 to %4x%4 pixels")
                       .arg(text)
                       .arg(ChartLayout::minimumWidth)
                       .arg(ChartLayout::minimumHeight)
                       .arg(largestSide));
    return size;
}

unsigned parseTickCount(const QString& text)
{
    bool ok = false;
    const unsigned count = text.toUInt(&ok);
    if (!ok || count < 1 || count > largestTickCount)
        usageFault(QStringLiteral("--ticks %1: expected a whole number from 1 to %2").arg(text).arg(largestTickCount));
    return count;
}

// QLocale takes any name and falls back to the C locale for one it does not know.
QLocale parseLocale(const QString& name)
{
    const QLocale locale(name);
    const bool namesC = name == QLatin1String("C") || name == QLatin1String("POSIX");
    if (locale.language() == QLocale::C && !namesC)
        usageFault(QStringLiteral("--locale %1: not a locale name; expected language_TERRITORY such as de_DE, "
                                  "or a language such as fr, or C")
                       .arg(name));
    return locale;
}

qreal parseScale(const QString& text)
{
    bool ok = false;
    const double scale = text.toDouble(&ok);
    if (!ok || !(scale > 0) || scale > largestScale)
        usageFault(QStringLiteral("--scale %1: expected a number above 0 and at most %2, such as 2 or 1.5")
                       .arg(text)
                       .arg(largestScale));
    return scale;
}

void checkPixelSize(QSize size, qreal scale)
{
    const QSize pixels = (QSizeF(size) * scale).toSize();
    if (pixels.width() < 1 || pixels.height() < 1 || pixels.width() > largestPixelSide
        || pixels.height() > largestPixelSide)
        usageFault(QStringLiteral("--scale %1 makes a PNG file of %2x%3 pixels of the %4x%5 chart; "
                                  "expected 1 to %6 pixels a side")
                       .arg(scale)
                       .arg(pixels.width())
                       .arg(pixels.height())
                       .arg(size.width())
                       .arg(size.height())
                       .arg(largestPixelSide));
}

ChartPainter::Format outputFormat(const QString& path)
{
    const std::optional<ChartPainter::Format> format = ChartPainter::formatOf(path);
    if (!format)
        usageFault(QStringLiteral("--output %1: expected a file name ending in .png, .svg or .pdf").arg(path));
    return *format;
}

// The files named by --png, --svg, --pdf and --output, in the order the
// command line names them; the defaults when it names none.
std::vector<Output> parseOutputs(const QCommandLineParser& parser, std::vector<Output> defaults)
{
    const QString output = QStringLiteral("output");
    const std::pair<QString, ChartPainter::Format> fixed[] = {{QStringLiteral("png"), ChartPainter::Format::Png},
                                                              {QStringLiteral("svg"), ChartPainter::Format::Svg},
                                                              {QStringLiteral("pdf"), ChartPainter::Format::Pdf}};
    QHash<QString, int> used;
    std::vector<Output> outputs;
    for (QString name : parser.optionNames()) {
        if (name == QLatin1String("o"))
            name = output;
        const auto format = std::find_if(std::begin(fixed), std::end(fixed),
                                         [&name](const auto& entry) { return entry.first == name; });
        if (name != output && format == std::end(fixed))
            continue;
        const QString path = parser.values(name).value(used[name]++);
        outputs.push_back({path, name == output ? outputFormat(path) : format->second});
    }
    return outputs.empty() ? defaults : outputs;
}

std::optional<SeriesShape> parseShape(const QCommandLineParser& parser)
{
    const std::pair<const char*, SeriesShape> shapes[] = {
        {"points", SeriesShape::Points}, {"lines", SeriesShape::Lines}, {"bars", SeriesShape::Bars}};
    std::optional<SeriesShape> chosen;
    for (const auto& [name, shape] : shapes) {
        if (!parser.isSet(QLatin1String(name)))
            continue;
        if (chosen)
            usageFault(QStringLiteral("--points, --lines and --bars exclude each other"));
        chosen = shape;
    }
    return chosen;
}

// Each pair of options that exclude each other gives true, false or nothing.
std::optional<bool> parseSwitch(const QCommandLineParser& parser, const QString& on, const QString& off)
{
    if (parser.isSet(on) && parser.isSet(off))
        usageFault(QStringLiteral("--%1 and --%2 exclude each other").arg(on, off));
    if (parser.isSet(on) || parser.isSet(off))
        return parser.isSet(on);
    return std::nullopt;
}

QString parseSeparator(const QCommandLineParser& parser)
{
    const QString text = parser.value(QStringLiteral("separator"));
    if (text == QLatin1String("tab"))
        return QStringLiteral("\\t");
    if (text == QLatin1String("space"))
        return QStringLiteral(" ");
    if (text.size() > 1)
        usageFault(QStringLiteral("--separator %1: expected one character, tab or space").arg(text));
    return text;
}

std::optional<CsvAggregate> parseAggregate(const QCommandLineParser& parser)
{
    if (!parser.isSet(QStringLiteral("aggregate")))
        return std::nullopt;
    const QString text = parser.value(QStringLiteral("aggregate"));
    const std::pair<const char*, CsvAggregate> kinds[] = {
        {"mean", CsvAggregate::Mean}, {"sum", CsvAggregate::Sum}, {"none", CsvAggregate::None}};
    for (const auto& [name, kind] : kinds)
        if (text == QLatin1String(name))
            return kind;
    usageFault(QStringLiteral("--aggregate %1: expected mean, sum or none").arg(text));
}

void parseDialect(const QCommandLineParser& parser, CsvOptions& csv)
{
    csv.separator = parseSeparator(parser);
    csv.header = parseSwitch(parser, QStringLiteral("header"), QStringLiteral("no-header"));
    if (const std::optional<bool> dayFirst =
            parseSwitch(parser, QStringLiteral("day-first"), QStringLiteral("month-first")))
        csv.dateOrder = *dayFirst ? DateOrder::DayFirst : DateOrder::MonthFirst;
    csv.decimalComma = parseSwitch(parser, QStringLiteral("decimal-comma"), QStringLiteral("decimal-point"));
    csv.aggregate = parseAggregate(parser);
    csv.rowNumberX = parser.isSet(QStringLiteral("x-row"));
    if (csv.rowNumberX && !csv.x.isEmpty())
        usageFault(QStringLiteral("-x and --x-row exclude each other"));
}

CsvOptions parseCsvOptions(const QCommandLineParser& parser)
{
    CsvOptions csv;
    csv.timeFormat = parser.value(QStringLiteral("time-format"));
    csv.x = parser.value(QStringLiteral("x"));
    csv.group = parser.value(QStringLiteral("group"));
    const QString ys = parser.value(QStringLiteral("y"));
    for (const QString& name : ys.split(QLatin1Char(','), Qt::SkipEmptyParts))
        csv.y << name.trimmed();
    if (parser.isSet(QStringLiteral("y")) && (csv.y.isEmpty() || csv.y.contains(QString())))
        usageFault(QStringLiteral("--y %1: expected column names separated by commas").arg(ys));
    csv.shape = parseShape(parser);
    parseDialect(parser, csv);
    return csv;
}

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Draws a chart with the chart library: the built-in sample, or the data of a CSV file. The separator, "
        "the header, dates and the roles of the columns are guessed; the options below override each guess, "
        "and every guess that drops or changes data prints a note."));
    parser.addHelpOption();
    parser.addPositionalArgument(QStringLiteral("data.csv"), QStringLiteral("Data to draw instead of the sample."),
                                 QStringLiteral("[data.csv]"));
    parser.addOptions({
        {QStringLiteral("set"), QStringLiteral("Writes a property by its path from the chart, e.g. "
                                               "axis.y/axis.y.left/autoScale=false. Repeatable."),
         QStringLiteral("PATH=VALUE")},
        {QStringLiteral("save"), QStringLiteral("Saves the chart (without data) as JSON."), QStringLiteral("FILE")},
        {QStringLiteral("load"), QStringLiteral("Loads the chart from a saved file; data still come from the "
                                                "CSV file or the sample, by variable name."),
         QStringLiteral("FILE")},
        {QStringLiteral("report"), QStringLiteral("Prints the pipeline's results in full.")},
        {QStringLiteral("size"), QStringLiteral("Image size, default 800x500."), QStringLiteral("WxH")},
        {QStringLiteral("ticks"), QStringLiteral("The most tick intervals an axis asks for; by default each axis "
                                                 "asks for as many as its labels have room for."),
         QStringLiteral("N")},
        {QStringLiteral("locale"), QStringLiteral("Draws the axis labels in that locale: decimal comma, digit groups, "
                                                  "month and weekday names, e.g. de_DE; default C, as the report "
                                                  "writes them."),
         QStringLiteral("NAME")},
        {QStringLiteral("time-format"),
         QStringLiteral("How the x column writes dates and times that are not ISO 8601 or one of the usual "
                        "forms, as strftime fields, for example \"%d.%m.%Y %H:%M\"."),
         QStringLiteral("FORMAT")},
        {QStringLiteral("separator"), QStringLiteral("The field separator: one character, tab, or space for runs "
                                                     "of blanks; guessed by default."),
         QStringLiteral("CHAR")},
        {QStringLiteral("header"), QStringLiteral("The first line names the columns.")},
        {QStringLiteral("no-header"), QStringLiteral("The first line is data; columns are \"column 1\", ...")},
        {QStringLiteral("decimal-comma"), QStringLiteral("Numbers write 3,5 for 3.5 (and 1.234,5).")},
        {QStringLiteral("decimal-point"), QStringLiteral("Numbers write 3.5 (and 1,234.5).")},
        {QStringLiteral("day-first"), QStringLiteral("Slash dates are day/month/year.")},
        {QStringLiteral("month-first"), QStringLiteral("Slash dates are month/day/year.")},
        {QStringLiteral("x"), QStringLiteral("The x column, by name; default the first date column, else the first "
                                             "column."),
         QStringLiteral("COLUMN")},
        {QStringLiteral("x-row"), QStringLiteral("x is the row number; every column of numbers is a series.")},
        {QStringLiteral("aggregate"), QStringLiteral("How rows of a repeating category make one bar: mean "
                                                     "(default), sum or none."),
         QStringLiteral("MODE")},
        {QStringLiteral("y"), QStringLiteral("The y columns, by name; default every numeric column but x."),
         QStringLiteral("COLUMN[,COLUMN...]")},
        {QStringLiteral("group"), QStringLiteral("The column whose values split the rows into one series each; by "
                                                 "default a repeating text column where x repeats."),
         QStringLiteral("COLUMN")},
        {QStringLiteral("points"), QStringLiteral("Draws the series as symbols without lines.")},
        {QStringLiteral("lines"), QStringLiteral("Draws the series as lines.")},
        {QStringLiteral("bars"), QStringLiteral("Draws the series as bars.")},
        {QStringLiteral("png"), QStringLiteral("PNG file to write. Repeatable, as are --svg, --pdf and --output; "
                                               "with none of them kelchart writes kelchart.png and kelchart.svg."),
         QStringLiteral("FILE")},
        {QStringLiteral("svg"), QStringLiteral("SVG file to write."), QStringLiteral("FILE")},
        {QStringLiteral("pdf"), QStringLiteral("PDF file to write: one page of the chart's size, vector, text as "
                                               "text."),
         QStringLiteral("FILE")},
        {{QStringLiteral("o"), QStringLiteral("output")},
         QStringLiteral("File to write, PNG, SVG or PDF by its suffix (.png, .svg, .pdf)."), QStringLiteral("FILE")},
        {QStringLiteral("scale"), QStringLiteral("PNG files get N device pixels per pixel of the --size layout "
                                                 "(e.g. 2 or 1.5), drawn sharp at that resolution; default 1."),
         QStringLiteral("N")},
        {QStringLiteral("no-images"), QStringLiteral("Writes no image file.")},
    });
}

} // namespace

Options parseCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    if (!parser.parse(arguments))
        usageFault(parser.errorText());
    Options options;
    if (parser.isSet(QStringLiteral("help"))) {
        options.helpText = parser.helpText();
        return options;
    }
    const QStringList positional = parser.positionalArguments();
    if (positional.size() > 1)
        usageFault(QStringLiteral("expected at most one CSV file, got %1 arguments").arg(positional.size()));
    options.csvPath = positional.value(0);
    options.loadPath = parser.value(QStringLiteral("load"));
    options.savePath = parser.value(QStringLiteral("save"));
    options.assignments = parser.values(QStringLiteral("set"));
    options.fullReport = parser.isSet(QStringLiteral("report"));
    options.drawImages = !parser.isSet(QStringLiteral("no-images"));
    options.outputs = parseOutputs(parser, options.outputs);
    if (parser.isSet(QStringLiteral("size")))
        options.size = parseSize(parser.value(QStringLiteral("size")));
    if (parser.isSet(QStringLiteral("scale")))
        options.scale = parseScale(parser.value(QStringLiteral("scale")));
    checkPixelSize(options.size, options.scale);
    if (parser.isSet(QStringLiteral("ticks")))
        options.tickCount = parseTickCount(parser.value(QStringLiteral("ticks")));
    if (parser.isSet(QStringLiteral("locale")))
        options.locale = parseLocale(parser.value(QStringLiteral("locale")));
    options.csv = parseCsvOptions(parser);
    return options;
}

} // namespace kelchart
