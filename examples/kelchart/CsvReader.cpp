#include "CsvReader.h"

#include "Failure.h"

#include <QFile>
#include <QFileInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QSet>
#include <QTextStream>

#include <limits>
#include <optional>
#include <utility>

namespace kelchart {

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// The fields of one line; `complete` is false when a quoted field is not closed.
QStringList splitFields(const QString& line, bool& complete)
{
    QStringList fields;
    QString field;
    bool quoted = false;
    for (int i = 0; i < line.size(); ++i) {
        const QChar c = line[i];
        if (quoted && c == QLatin1Char('"') && i + 1 < line.size() && line[i + 1] == QLatin1Char('"')) {
            field += c;
            ++i;
        } else if (c == QLatin1Char('"')) {
            quoted = !quoted;
        } else if (c == QLatin1Char(',') && !quoted) {
            fields << field.trimmed();
            field.clear();
        } else {
            field += c;
        }
    }
    fields << field.trimmed();
    complete = !quoted;
    return fields;
}

bool isMissing(const QString& cell)
{
    return cell.isEmpty() || cell.compare(QLatin1String("nan"), Qt::CaseInsensitive) == 0;
}

bool parseNumber(const QString& cell, float& value)
{
    bool ok = false;
    const double number = QLocale::c().toDouble(cell, &ok);
    value = static_cast<float>(number);
    return ok;
}

// Collects the columns while the lines come in.
class CsvParser {
public:
    CsvParser(const QString& path, const QString& timeFormat)
        : m_path(path)
        , m_timeText(timeFormat)
        , m_timeFirst(!timeFormat.isEmpty())
    {
    }

    void take(const QString& line, qint64 lineNumber)
    {
        bool complete = true;
        const QStringList fields = splitFields(line, complete);
        if (!complete)
            fail(lineNumber, QStringLiteral("unterminated quoted field"));
        if (m_headerSeen)
            takeRow(fields, lineNumber);
        else
            takeHeader(fields, lineNumber);
        m_headerSeen = true;
    }

    DataSet finish(qint64 lineCount);

private:
    [[noreturn]] void fail(qint64 lineNumber, const QString& message) const
    {
        throw Failure(QStringLiteral("%1:%2: %3").arg(m_path).arg(lineNumber).arg(message));
    }

    void takeHeader(const QStringList& fields, qint64 lineNumber);
    void takeRow(const QStringList& fields, qint64 lineNumber);
    void takeX(const QString& cell, qint64 lineNumber);
    void switchToCategories();
    DataColumn namedColumn(const QString& field, int position, qint64 lineNumber) const;

    bool takeTyped(const QString& cell);
    bool takeTime(const QString& cell);
    [[noreturn]] void failX(const QString& cell, qint64 lineNumber) const;

    enum class XKind { Unknown, Numeric, Time, Text };

    QString m_path;
    TimeText m_timeText;
    bool m_timeFirst;
    std::vector<ParsedTime> m_times;
    bool m_headerSeen = false;
    DataColumn m_x;
    std::vector<DataColumn> m_columns;
    XKind m_xKind = XKind::Unknown;
    qint64 m_xKindLine = 0;
    QStringList m_categories;
};

// "T [degC]" gives the name "T" and the unit "degC".
DataColumn CsvParser::namedColumn(const QString& field, int position, qint64 lineNumber) const
{
    static const QRegularExpression withUnit(QStringLiteral("^(.*?)\\s*\\[([^\\]]*)\\]$"));
    DataColumn column;
    const QRegularExpressionMatch match = withUnit.match(field);
    column.name = match.hasMatch() ? match.captured(1) : field;
    column.unit = match.hasMatch() ? match.captured(2).trimmed() : QString();
    if (column.name.isEmpty())
        fail(lineNumber, QStringLiteral("column %1 of the header has no name").arg(position + 1));
    return column;
}

void CsvParser::takeHeader(const QStringList& fields, qint64 lineNumber)
{
    if (fields.size() < 2)
        fail(lineNumber, QStringLiteral("no numeric column: the header names only the x column"));
    QSet<QString> names;
    for (int i = 0; i < fields.size(); ++i) {
        DataColumn column = namedColumn(fields[i], i, lineNumber);
        if (names.contains(column.name))
            fail(lineNumber, QStringLiteral("two columns are named \"%1\"").arg(column.name));
        names.insert(column.name);
        if (i == 0)
            m_x = std::move(column);
        else
            m_columns.push_back(std::move(column));
    }
}

void CsvParser::takeRow(const QStringList& fields, qint64 lineNumber)
{
    const int expected = static_cast<int>(m_columns.size()) + 1;
    if (fields.size() != expected)
        fail(lineNumber, QStringLiteral("expected %1 fields as in the header, found %2").arg(expected).arg(fields.size()));
    takeX(fields[0], lineNumber);
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const QString& cell = fields[static_cast<int>(i) + 1];
        float value = notANumber;
        const bool missing = isMissing(cell);
        if (!missing && !parseNumber(cell, value))
            fail(lineNumber, QStringLiteral("column \"%1\": \"%2\" is not a number").arg(m_columns[i].name, cell));
        m_columns[i].append(value, missing);
    }
}

// The first x cell that holds something decides whether x is numeric, time or text.
void CsvParser::takeX(const QString& cell, qint64 lineNumber)
{
    if (m_xKind == XKind::Text) {
        m_categories << cell;
        m_x.append(static_cast<float>(m_x.size()), false);
        return;
    }
    if (isMissing(cell)) {
        m_x.append(notANumber, true);
        m_times.emplace_back();
        return;
    }
    const XKind before = m_xKind;
    if (takeTyped(cell)) {
        if (before == XKind::Unknown)
            m_xKindLine = lineNumber;
    } else if (m_xKind == XKind::Unknown) {
        switchToCategories();
        takeX(cell, lineNumber);
    } else {
        failX(cell, lineNumber);
    }
}

// A number or a time, as x has been so far; the first one decides. A user's
// time format is tried before numbers, since it may match digits only.
bool CsvParser::takeTyped(const QString& cell)
{
    const bool timeFirst = m_xKind == XKind::Time || (m_xKind == XKind::Unknown && m_timeFirst);
    if (timeFirst && takeTime(cell))
        return true;
    float value = notANumber;
    if (m_xKind != XKind::Time && parseNumber(cell, value)) {
        m_xKind = XKind::Numeric;
        m_x.append(value, false);
        return true;
    }
    return m_xKind == XKind::Unknown && takeTime(cell);
}

bool CsvParser::takeTime(const QString& cell)
{
    const std::optional<ParsedTime> time = m_timeText.parse(cell);
    if (!time)
        return false;
    m_times.push_back(*time);
    m_x.append(0.0f, false);
    m_xKind = XKind::Time;
    return true;
}

void CsvParser::failX(const QString& cell, qint64 lineNumber) const
{
    const QString kind = m_xKind == XKind::Time ? QStringLiteral("a date or time") : QStringLiteral("a number");
    const QString since = m_xKind == XKind::Time ? QStringLiteral("dates and times") : QStringLiteral("numeric");
    fail(lineNumber, QStringLiteral("x value \"%1\" is not %2, though x is %3 from line %4 on")
                         .arg(cell, kind, since)
                         .arg(m_xKindLine));
}

// Rows before the first text x had no x at all: they become empty categories.
void CsvParser::switchToCategories()
{
    m_xKind = XKind::Text;
    for (std::size_t i = 0; i < m_x.size(); ++i) {
        m_categories << QString();
        m_x.values[i] = static_cast<float>(i);
        m_x.undefined[i] = false;
    }
}

DataSet CsvParser::finish(qint64 lineCount)
{
    if (!m_headerSeen)
        throw Failure(QStringLiteral("%1: empty file, expected a header row").arg(m_path));
    if (m_x.size() == 0)
        fail(lineCount, QStringLiteral("no data rows after the header"));
    DataSet data;
    data.discreteX = m_xKind == XKind::Text;
    data.categories = std::move(m_categories);
    data.timeX = m_xKind == XKind::Time;
    if (data.timeX)
        data.xTimes = std::move(m_times);
    // Every series gets its own x values, as the iterators take them over; the
    // last one takes the column itself.
    for (std::size_t i = 0; i + 1 < m_columns.size(); ++i)
        data.series.push_back(DataSeries{m_x, std::move(m_columns[i])});
    data.series.push_back(DataSeries{std::move(m_x), std::move(m_columns.back())});
    return data;
}

} // namespace

DataSet CsvReader::read(const QString& path, const QString& timeFormat)
{
    QFile file(path);
    if (QFileInfo(path).isDir())
        throw Failure(QStringLiteral("%1: is a directory, expected a CSV file").arg(path));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        throw Failure(QStringLiteral("%1: cannot read: %2").arg(path, file.errorString()));
    QTextStream in(&file);
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    in.setCodec("UTF-8"); // Qt 6 streams read UTF-8 unless told otherwise
#endif
    CsvParser parser(path, timeFormat);
    QString line;
    qint64 lineNumber = 0;
    while (in.readLineInto(&line)) {
        ++lineNumber;
        if (!line.trimmed().isEmpty())
            parser.take(line, lineNumber);
    }
    if (file.error() != QFileDevice::NoError)
        throw Failure(QStringLiteral("%1: cannot read: %2").arg(path, file.errorString()));
    return parser.finish(lineNumber);
}

} // namespace kelchart
