#include "CsvLines.h"

#include "CsvCells_p.h"
#include "CsvDialect_p.h"
#include "DataBinding.h"
#include "Fault_p.h"

#include <QBuffer>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>

namespace Orv::Chart {

namespace {

constexpr double missing = std::numeric_limits<double>::infinity();

QString quoted(const QString& name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

QString textOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isBlankLine(std::string_view line)
{
    return std::all_of(line.begin(), line.end(), [](char c) { return isBlank(c) || c == '\r'; });
}

bool isComment(std::string_view line)
{
    const std::string_view cell = trimmedCell(line);
    return !cell.empty() && cell.front() == '#';
}

// Splits one line into fields as the file reader does: at the separator (or
// at runs of blanks) outside double quotes, where a doubled quote stands for
// one. Gives the number of fields, or 0 when a quote is left open.
std::size_t splitLine(std::string_view line, const CsvDialect& dialect, std::vector<std::string>& fields)
{
    if (dialect.blankRuns)
        line = trimmedCell(line);
    std::size_t count = 0;
    const auto next = [&]() -> std::string& {
        if (count == fields.size())
            fields.emplace_back();
        fields[count].clear();
        return fields[count++];
    };
    std::string* field = &next();
    bool inQuotes = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const char c = line[i];
        if (inQuotes && c == '"' && i + 1 < line.size() && line[i + 1] == '"') {
            *field += '"';
            ++i;
        } else if (c == '"') {
            inQuotes = !inQuotes;
        } else if (!inQuotes && (dialect.blankRuns ? isBlank(c) : c == dialect.separator)) {
            while (dialect.blankRuns && i + 1 < line.size() && isBlank(line[i + 1]))
                ++i;
            field = &next();
        } else {
            *field += c;
        }
    }
    return inQuotes ? 0 : count;
}

// The lines of `text` that end with a line break, without it (and without a CR before it).
std::vector<std::string_view> wholeLines(std::string_view text)
{
    std::vector<std::string_view> lines;
    for (std::size_t start = 0, end; (end = text.find('\n', start)) != std::string_view::npos; start = end + 1) {
        std::string_view line = text.substr(start, end - start);
        if (!line.empty() && line.back() == '\r')
            line.remove_suffix(1);
        lines.push_back(line);
    }
    return lines;
}

// The lines of the table: from the first that is neither blank nor a comment, blank ones left out.
std::vector<std::string_view> tableLines(const std::vector<std::string_view>& lines)
{
    std::vector<std::string_view> table;
    for (std::string_view line : lines)
        if (!isBlankLine(line) && (!table.empty() || !isComment(line)))
            table.push_back(line);
    return table;
}

// "T [degC]" is the column "T"; an empty first name is that of R's row names.
QString columnName(std::string_view field, std::size_t index, std::size_t count)
{
    static const QRegularExpression withUnit(QStringLiteral("^(.*?)\\s*\\[([^\\]]*)\\]$"));
    const QString text = textOf(trimmedCell(field));
    const QRegularExpressionMatch match = withUnit.match(text);
    const QString name = match.hasMatch() ? match.captured(1) : text;
    return name.isEmpty() && index == 0 && count > 1 ? QStringLiteral("row") : name;
}

// How a settled table's rows are read: the columns' names by field, and how many fields a row may have.
struct Layout {
    QStringList names;
    // A separator at the end of every line adds an empty field.
    std::size_t trailing = 0;

    bool fits(std::size_t count) const
    {
        const auto width = static_cast<std::size_t>(names.size());
        return count == width || count == width + trailing;
    }
};

// The names as CsvImport gives them, from the head's first line and how its first row relates to it.
Layout layoutOf(const std::vector<std::string_view>& table, const CsvDialect& dialect)
{
    Layout layout;
    std::vector<std::string> fields;
    std::size_t count = splitLine(table.front(), dialect, fields);
    if (dialect.header && count > 1 && trimmedCell(fields[count - 1]).empty()) {
        --count;
        layout.trailing = 1;
    }
    for (std::size_t i = 0; i < count; ++i)
        layout.names << (dialect.header ? columnName(fields[i], i, count) : QStringLiteral("column %1").arg(i + 1));
    const std::size_t firstRow = dialect.header ? 1 : 0;
    if (firstRow >= table.size())
        return layout;
    const std::size_t rowCount = splitLine(table[firstRow], dialect, fields);
    if (rowCount == count + 1 && layout.trailing == 0) {
        if (trimmedCell(fields[rowCount - 1]).empty())
            layout.trailing = 1;
        else
            layout.names.prepend(QStringLiteral("row"));
    }
    return layout;
}

// Slash dates read day first when some read only so and none only month first, as a file's column is settled.
DateOrder dateOrderOf(const std::vector<std::string_view>& rows, const CsvDialect& dialect, std::size_t field)
{
    bool dayFirstOnly = false;
    bool monthFirstOnly = false;
    std::vector<std::string> fields;
    for (std::string_view row : rows) {
        if (splitLine(row, dialect, fields) <= field)
            continue;
        const TimeText::SlashReading reading = TimeText::slashReading(textOf(trimmedCell(fields[field])));
        dayFirstOnly = dayFirstOnly || reading == TimeText::SlashReading::DayFirstOnly;
        monthFirstOnly = monthFirstOnly || reading == TimeText::SlashReading::MonthFirstOnly;
    }
    return dayFirstOnly && !monthFirstOnly ? DateOrder::DayFirst : DateOrder::MonthFirst;
}

} // namespace

struct CsvLines::Private {
    enum class XKind { Number, Time, RowNumber };
    // A row's x: a number (+infinity when missing), or a time that each series places on its own x axis.
    struct RowX {
        float number = 0.0f;
        std::optional<ParsedTime> time;
    };

    QString source;
    CsvOptions options;
    CsvDialect dialect;
    Layout layout;
    XKind xKind = XKind::Number;
    std::size_t xField = 0;
    std::vector<std::size_t> yFields;
    TimeText times;
    // One per series: each variable's x axis may have its own zone.
    std::vector<TimePlacement> placements;
    // The head's data until they are bound.
    DataSet head;
    std::uint64_t rows = 0;
    std::uint64_t skipped = 0;
    qint64 nextLine = 1;
    qint64 currentLine = 0;
    // The start of a line whose end has not arrived yet.
    std::string pending;
    std::vector<std::string> fields;
    std::vector<double> ys;
    QSet<QString> faultsNoted;
    QStringList notes;

    Private(const QString& source, const CsvOptions& options)
        : source(source)
        , options(options)
    {
    }

    [[noreturn]] void refuse(const QString& why) const { fail(QStringLiteral("%1: %2").arg(source, why)); }
    std::size_t fieldNamed(const QString& name) const;
    void settle(const std::vector<std::string_view>& table);
    void settleX(const std::vector<std::string_view>& table);
    std::vector<Items> headItems() const;
    std::vector<Items> takeText(std::string_view text, bool last);
    void takeLine(std::string_view text, std::vector<Items>& items);
    bool readNumber(std::size_t field, float& value);
    bool readX(RowX& x);
    void skip(const QString& kind, const QString& what);
};

std::size_t CsvLines::Private::fieldNamed(const QString& name) const
{
    const int field = layout.names.indexOf(name);
    if (field < 0)
        refuse(QStringLiteral("no column is named %1").arg(quoted(name)));
    return static_cast<std::size_t>(field);
}

// Which field each series and x come from, found by the names CsvImport gave the columns.
void CsvLines::Private::settle(const std::vector<std::string_view>& table)
{
    layout = layoutOf(table, dialect);
    if (head.discreteX)
        refuse(QStringLiteral("x is column %1 of text (categories), which rows read live cannot have: every new "
                              "label would reorder the axis; give numbers or dates as x")
                   .arg(quoted(head.series.front().x.name)));
    for (const DataSeries& series : head.series) {
        if (!series.valueName.isEmpty())
            refuse(QStringLiteral("rows are split into groups by a column, which rows read live cannot be; "
                                  "give each group a column of its own"));
        yFields.push_back(fieldNamed(series.y.name));
    }
    settleX(table);
    placements.assign(head.series.size(),
                      TimePlacement(QStringLiteral("UTC"), head.xTimes, head.series.front().x.undefined));
    rows = head.series.front().x.size();
}

void CsvLines::Private::settleX(const std::vector<std::string_view>& table)
{
    const QString& name = head.series.front().x.name;
    if (!layout.names.contains(name) && head.timeX)
        refuse(QStringLiteral("x is made of year, month and day columns, which rows read live cannot be; "
                              "give a date column as x"));
    if (!layout.names.contains(name)) {
        xKind = XKind::RowNumber;
        return;
    }
    xField = fieldNamed(name);
    xKind = head.timeX ? XKind::Time : XKind::Number;
    if (xKind != XKind::Time)
        return;
    const std::vector<std::string_view> rowLines(table.begin() + (dialect.header ? 1 : 0), table.end());
    const DateOrder order = options.dateOrder.value_or(dateOrderOf(rowLines, dialect, xField));
    times = TimeText(options.timeFormat, order);
}

std::vector<CsvLines::Items> CsvLines::Private::headItems() const
{
    std::vector<Items> items(head.series.size());
    for (std::size_t s = 0; s < items.size(); ++s) {
        const DataSeries& series = head.series[s];
        for (std::size_t i = 0; i < series.x.size(); ++i) {
            const bool xMissing = series.x.undefined[i];
            const double x = head.timeX && !xMissing ? placements[s].place(head.xTimes[i]) : series.x.values[i];
            items[s].x.push_back(xMissing ? missing : x);
            items[s].y.push_back(series.y.undefined[i] ? missing : static_cast<double>(series.y.values[i]));
        }
    }
    return items;
}

// The rows of the lines that `text` completes; the start of a line whose end is still to come waits,
// unless this is the stream's end.
std::vector<CsvLines::Items> CsvLines::Private::takeText(std::string_view text, bool last)
{
    constexpr auto none = std::string_view::npos;
    std::vector<Items> items(yFields.size());
    std::size_t start = 0;
    if (!pending.empty()) {
        const std::size_t end = text.find('\n');
        pending.append(text.substr(0, end));
        if (end == none && !last)
            return items;
        takeLine(pending, items);
        pending.clear();
        start = end == none ? text.size() : end + 1;
    }
    while (start < text.size()) {
        const std::size_t end = text.find('\n', start);
        if (end == none && !last) {
            pending.assign(text.substr(start));
            break;
        }
        takeLine(text.substr(start, end == none ? none : end - start), items);
        start = end == none ? text.size() : end + 1;
    }
    return items;
}

void CsvLines::Private::takeLine(std::string_view text, std::vector<Items>& items)
{
    currentLine = nextLine++;
    if (!text.empty() && text.back() == '\r')
        text.remove_suffix(1);
    if (isBlankLine(text))
        return;
    const std::size_t count = splitLine(text, dialect, fields);
    if (count == 0)
        return skip(QStringLiteral("quote"), QStringLiteral("a quote is not closed"));
    if (!layout.fits(count))
        return skip(QStringLiteral("fields"), QStringLiteral("expected %1 fields as in the header, found %2")
                                                  .arg(static_cast<std::size_t>(layout.names.size()) + layout.trailing)
                                                  .arg(count));
    RowX x;
    if (!readX(x))
        return;
    ys.resize(yFields.size());
    for (std::size_t s = 0; s < yFields.size(); ++s) {
        float y = 0.0f;
        if (!readNumber(yFields[s], y))
            return;
        ys[s] = static_cast<double>(y);
    }
    ++rows;
    for (std::size_t s = 0; s < items.size(); ++s) {
        items[s].x.push_back(static_cast<double>(x.time ? placements[s].place(*x.time) : x.number));
        items[s].y.push_back(ys[s]);
    }
}

// A missing value is +infinity; a cell that is not a number skips the line.
bool CsvLines::Private::readNumber(std::size_t field, float& value)
{
    const std::string_view cell = trimmedCell(fields[field]);
    unsigned marks = 0;
    if (isMissingCell(cell)) {
        value = std::numeric_limits<float>::infinity();
        return true;
    }
    if (parseCellNumber(cell, value, marks, dialect.decimalComma))
        return true;
    const QString& name = layout.names[static_cast<int>(field)];
    skip(QStringLiteral("column ") + name,
         QStringLiteral("column %1 holds \"%2\" where a number belongs").arg(quoted(name), textOf(cell)));
    return false;
}

bool CsvLines::Private::readX(RowX& x)
{
    if (xKind == XKind::RowNumber) {
        x.number = static_cast<float>(rows + 1);
        return true;
    }
    if (xKind == XKind::Number)
        return readNumber(xField, x.number);
    const std::string_view cell = trimmedCell(fields[xField]);
    if (isMissingCell(cell)) {
        x.number = std::numeric_limits<float>::infinity();
        return true;
    }
    x.time = times.parse(textOf(cell));
    if (x.time)
        return true;
    const QString& name = layout.names[static_cast<int>(xField)];
    skip(QStringLiteral("column ") + name,
         QStringLiteral("column %1 holds \"%2\" where a date belongs").arg(quoted(name), textOf(cell)));
    return false;
}

// One note per kind of fault: a stream that keeps sending bad lines must not flood the user.
void CsvLines::Private::skip(const QString& kind, const QString& what)
{
    ++skipped;
    if (faultsNoted.contains(kind))
        return;
    faultsNoted.insert(kind);
    notes << QStringLiteral("%1:%2: %3; lines like it are skipped").arg(source).arg(currentLine).arg(what);
}

CsvLines::CsvLines(const QString& source, const CsvOptions& options)
    : d(std::make_unique<Private>(source, options))
{
}

CsvLines::~CsvLines() = default;

CsvImport::Result CsvLines::start(const QByteArray& head)
{
    const int end = head.lastIndexOf('\n') + 1;
    QByteArray whole = head.left(end);
    d->pending.assign(head.constData() + end, static_cast<std::size_t>(head.size() - end));
    d->nextLine = whole.count('\n') + 1;
    QBuffer buffer(&whole);
    CsvImport::Result result = CsvImport::read(buffer, d->source, d->options);
    if (!result.ok())
        return result;
    if (whole.startsWith("\xEF\xBB\xBF"))
        whole.remove(0, 3);
    d->dialect = guessDialect(whole, true, d->options);
    d->head = result.data;
    const std::vector<std::string_view> table =
        tableLines(wholeLines(std::string_view(whole.constData(), static_cast<std::size_t>(whole.size()))));
    result.error = {};
    guarded(
        [&] {
            d->settle(table);
            return true;
        },
        &result.error, false);
    if (!result.ok())
        result.data = {};
    return result;
}

CsvLines::Bound CsvLines::bind(KelChartVariableList& variables, const AxisPairs& pairs)
{
    for (std::size_t s = 0; s < d->head.series.size(); ++s) {
        const KelChartVariable* variable = variables[d->head.series[s].y.name];
        if (variable)
            d->placements[s] =
                TimePlacement(TimePlacement::zoneOf(pairs, *variable), d->head.xTimes, d->head.series[s].x.undefined);
    }
    Bound bound{d->headItems(), {}};
    bound.unbound = bindData(variables, pairs, std::move(d->head));
    d->head = {};
    return bound;
}

std::vector<CsvLines::Items> CsvLines::read(const QByteArray& text)
{
    return d->takeText(std::string_view(text.constData(), static_cast<std::size_t>(text.size())), false);
}

std::vector<CsvLines::Items> CsvLines::finish()
{
    return d->takeText(std::string_view(), true);
}

QStringList CsvLines::takeNotes()
{
    QStringList notes;
    notes.swap(d->notes);
    return notes;
}

std::uint64_t CsvLines::rowsRead() const
{
    return d->rows;
}

std::uint64_t CsvLines::linesSkipped() const
{
    return d->skipped;
}

} // namespace Orv::Chart
