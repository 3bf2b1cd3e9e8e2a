#include "CsvColumns_p.h"

#include "CsvCells_p.h"
#include "CsvRoles_p.h"
#include "Fault_p.h"

#include <QRegularExpression>
#include <QSet>

#include <limits>

namespace Orv::Chart {

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

QString textOf(std::string_view cell)
{
    return QString::fromUtf8(cell.data(), static_cast<int>(cell.size()));
}

// The reading of a date in the order a column has shown so far; slash dates that read only day first
// count as such even in a month-first column, which finish() then settles.
std::optional<ParsedTime> readTime(const QString& text, const CellReaders& readers, bool dayFirst)
{
    return (dayFirst ? readers.dayFirst : readers.monthFirst).parse(text);
}

} // namespace

std::uint32_t TextCodes::codeOf(std::string_view text)
{
    const auto [entry, added] = m_codes.emplace(std::string(text), static_cast<std::uint32_t>(m_texts.size()));
    if (added)
        m_texts.emplace_back(text);
    return entry->second;
}

QStringList TextCodes::texts() const
{
    QStringList all;
    for (std::uint32_t code = 0; code < m_texts.size(); ++code)
        all << text(code);
    return all;
}

void TextCodes::clear()
{
    m_codes = {};
    m_texts = {};
}

void TypedColumn::take(std::string_view cell, qint64 line, const CellReaders& readers)
{
    if (isMissingCell(cell)) {
        appendMissing();
        return;
    }
    if (kind == Kind::Empty) {
        decide(cell, readers);
        firstLine = line;
    }
    ++m_present;
    switch (kind) {
    case Kind::Numeric:
        return takeNumber(cell, readers);
    case Kind::Time:
        return takeTime(cell, line, readers);
    case Kind::Text:
    case Kind::Empty:
        return takeText(cell);
    }
}

// The first value decides the kind; the rows above it had none.
void TypedColumn::decide(std::string_view cell, const CellReaders& readers)
{
    const QString text = textOf(cell);
    float value = 0.0f;
    unsigned marks = 0;
    const bool formatMatches = readers.formatGiven && readers.monthFirst.parse(text);
    if (!formatMatches && parseCellNumber(cell, value, marks, readers.decimalComma))
        kind = Kind::Numeric;
    else if (formatMatches || readers.monthFirst.parse(text) || readers.dayFirst.parse(text))
        kind = Kind::Time;
    else
        kind = Kind::Text;
    if (kind == Kind::Time)
        times.resize(data.size());
    if (kind == Kind::Text)
        codes.assign(data.size(), TextCodes::missing);
}

void TypedColumn::appendMissing()
{
    data.append(notANumber, true);
    if (kind == Kind::Time) {
        times.emplace_back();
        if (!m_dayFirst.empty())
            m_dayFirst.emplace_back();
    }
    if (kind == Kind::Text && !tooVaried)
        codes.push_back(TextCodes::missing);
}

void TypedColumn::takeNumber(std::string_view cell, const CellReaders& readers)
{
    float value = notANumber;
    if (parseCellNumber(cell, value, numberMarks, readers.decimalComma)) {
        data.append(value, false);
        return;
    }
    turnText();
    takeText(cell);
}

void TypedColumn::takeTime(std::string_view cell, qint64 line, const CellReaders& readers)
{
    const QString text = textOf(cell);
    const TimeText::SlashReading reading = TimeText::slashReading(text);
    const bool dayFirst = readers.order == DateOrder::DayFirst;
    std::optional<ParsedTime> time = readTime(text, readers, dayFirst);
    if (!readers.order && reading != TimeText::SlashReading::NotSlashDate) {
        if (m_dayFirst.empty())
            m_dayFirst = times;
        const std::optional<ParsedTime> other = readers.dayFirst.parse(text);
        m_monthFirstOnly = m_monthFirstOnly || reading == TimeText::SlashReading::MonthFirstOnly;
        if (reading == TimeText::SlashReading::DayFirstOnly) {
            m_dayFirstOnly = true;
            m_dayFirstOnlyRows.push_back(data.size());
        }
        m_dayFirst.push_back(other.value_or(ParsedTime{}));
        if (!time && other)
            time = ParsedTime{}; // read only day first: settled by finish()
    } else if (!m_dayFirst.empty()) {
        m_dayFirst.push_back(time.value_or(ParsedTime{}));
    }
    if (!time) {
        if (m_badTimes++ == 0) {
            m_firstBadLine = line;
            m_firstBad = std::string(cell);
        }
        data.append(notANumber, true);
        times.emplace_back();
        return;
    }
    data.append(0.0f, false);
    times.push_back(*time);
}

void TypedColumn::takeText(std::string_view cell)
{
    data.append(notANumber, true);
    if (tooVaried)
        return;
    codes.push_back(texts.codeOf(cell));
    if (texts.size() > mostTexts) {
        tooVaried = true;
        codes = {};
        texts.clear();
    }
}

// The numbers before the first text cell become texts, in case this is the category or group column.
void TypedColumn::turnText()
{
    kind = Kind::Text;
    for (std::size_t i = 0; i < data.size() && !tooVaried; ++i) {
        if (data.undefined[i]) {
            codes.push_back(TextCodes::missing);
            continue;
        }
        codes.push_back(texts.codeOf(QString::number(static_cast<double>(data.values[i])).toStdString()));
        tooVaried = texts.size() > mostTexts;
    }
    if (tooVaried) {
        codes = {};
        texts.clear();
    }
    std::fill(data.values.begin(), data.values.end(), notANumber);
    std::fill(data.undefined.begin(), data.undefined.end(), true);
}

bool TypedColumn::repeats(std::size_t most) const
{
    return kind == Kind::Text && !tooVaried && texts.size() <= most && texts.size() > 0
           && texts.size() < m_present;
}

void TypedColumn::finish(QStringList& notes)
{
    const QString name = QStringLiteral("column \"%1\"").arg(data.name);
    if (kind == Kind::Numeric)
        return finishNumbers(name, notes);
    if (kind != Kind::Time)
        return;
    if (!m_dayFirst.empty() && m_dayFirstOnly && !m_monthFirstOnly) {
        times = std::move(m_dayFirst);
        notes << QStringLiteral("%1: dates read day first (day/month/year), as some have a first number above 12")
                     .arg(name);
    } else if (m_dayFirstOnly && m_monthFirstOnly) {
        notes << QStringLiteral("%1: dates mix day-first and month-first order; read month first").arg(name);
        for (std::size_t row : m_dayFirstOnlyRows)
            data.undefined[row] = true;
        m_badTimes += m_dayFirstOnlyRows.size();
    }
    m_dayFirstOnlyRows = {};
    m_dayFirst = {};
    if (m_badTimes > 0)
        notes << QStringLiteral("%1: %2 cell(s) are not dates and have no value (the first, \"%3\", on line %4)")
                     .arg(name)
                     .arg(m_badTimes)
                     .arg(QString::fromStdString(m_firstBad))
                     .arg(m_firstBadLine);
}

// Percent signs make the unit; currency signs are dropped, with a note, since amounts in different
// currencies would otherwise share an axis unnoticed.
void TypedColumn::finishNumbers(const QString& name, QStringList& notes)
{
    if ((numberMarks & PercentSign) && data.unit.isEmpty()) {
        data.unit = QStringLiteral("%");
        notes << QStringLiteral("%1: values written with %, the unit is %").arg(name);
    }
    if (numberMarks & CurrencySign)
        notes << QStringLiteral("%1: currency signs left out; the values are amounts").arg(name);
}

std::size_t columnNamed(const std::vector<TypedColumn>& columns, const QString& option, const QString& name,
                        const QString& path)
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const DataColumn& column = columns[i].data;
        if (column.name == name || (!column.unit.isEmpty() && column.name + " [" + column.unit + "]" == name))
            return i;
    }
    Orv::Chart::fail(QStringLiteral("%1 column \"%2\": %3 has no such column").arg(option, name, path),
                     IoError::BadRequest);
}

CsvColumns::CsvColumns(const QString& path, const CsvOptions& options, const CsvDialect& dialect)
    : m_path(path)
    , m_options(options)
    , m_dialect(dialect)
    , m_readers{TimeText(options.timeFormat, DateOrder::MonthFirst), TimeText(options.timeFormat, DateOrder::DayFirst),
                !options.timeFormat.isEmpty(), options.dateOrder, dialect.decimalComma}
{
}

void CsvColumns::fail(qint64 line, const QString& message) const
{
    Orv::Chart::fail(QStringLiteral("%1:%2: %3").arg(m_path).arg(line).arg(message));
}

void CsvColumns::take(const std::vector<std::string>& fields, std::size_t count, qint64 line)
{
    if (!m_headerSeen) {
        takeHeader(fields, count, line);
        if (m_dialect.header)
            return;
    }
    if (!m_layoutSettled)
        settleRowLayout(fields, count, line);
    takeRow(fields, count, line);
}

void CsvColumns::failRagged(std::size_t count, qint64 line) const
{
    const std::size_t expected = m_columns.size() + m_leadingExtra + m_trailingExtra;
    QString hint;
    if (count > expected)
        hint = QStringLiteral(" (a separator inside an unquoted field? quote the field)");
    fail(line, QStringLiteral("expected %1 fields as in the header, found %2%3").arg(expected).arg(count).arg(hint));
}

// The first row shows how rows relate to the header: as long, one longer with row names in front (the
// header has no cell above them), or one longer with an empty field at the end (a trailing separator).
void CsvColumns::settleRowLayout(const std::vector<std::string>& fields, std::size_t count, qint64 line)
{
    m_layoutSettled = true;
    const std::size_t expected = m_columns.size() + m_trailingExtra;
    if (count == expected || count == m_columns.size())
        return;
    if (count != expected + 1 || m_trailingExtra != 0)
        failRagged(count, line);
    if (trimmedCell(fields[count - 1]).empty()) {
        m_trailingExtra = 1;
        return;
    }
    TypedColumn rowNames;
    rowNames.data.name = QStringLiteral("row");
    m_columns.insert(m_columns.begin(), std::move(rowNames));
    m_notes << QStringLiteral("rows have one field more than the header: the first is taken as row names");
}

void CsvColumns::takeRow(const std::vector<std::string>& fields, std::size_t count, qint64 line)
{
    const std::size_t width = m_columns.size();
    // A row without its trailing separator still holds every column.
    if (count != width + m_trailingExtra && count != width)
        failRagged(count, line);
    for (std::size_t i = 0; i < width; ++i)
        m_columns[i].take(trimmedCell(fields[i]), line, m_readers);
    ++m_rowCount;
}

// "T [degC]" gives the name "T" and the unit "degC". An empty first name is R's row names column; an
// empty last name comes from a separator at the end of the line and adds no column.
void CsvColumns::takeHeader(const std::vector<std::string>& fields, std::size_t count, qint64 line)
{
    m_headerSeen = true;
    m_headerLine = line;
    if (!m_dialect.header) {
        nameColumns(count);
        return;
    }
    static const QRegularExpression withUnit(QStringLiteral("^(.*?)\\s*\\[([^\\]]*)\\]$"));
    if (count > 1 && trimmedCell(fields[count - 1]).empty()) {
        --count;
        m_trailingExtra = 1;
    }
    m_columns.resize(count);
    QSet<QString> names;
    for (std::size_t i = 0; i < count; ++i) {
        DataColumn& column = m_columns[i].data;
        const QString field = textOf(trimmedCell(fields[i]));
        const QRegularExpressionMatch match = withUnit.match(field);
        column.name = match.hasMatch() ? match.captured(1) : field;
        column.unit = match.hasMatch() ? match.captured(2).trimmed() : QString();
        if (column.name.isEmpty() && i == 0 && count > 1)
            column.name = QStringLiteral("row");
        if (column.name.isEmpty())
            fail(line, QStringLiteral("column %1 of the header has no name").arg(i + 1));
        if (names.contains(column.name))
            fail(line, QStringLiteral("two columns are named \"%1\"").arg(column.name));
        names.insert(column.name);
    }
    checkOptionColumns();
}

// A role option naming no column is the request's fault, told before any row is read.
void CsvColumns::checkOptionColumns() const
{
    const auto check = [this](const QString& option, const QString& name) {
        // "row" may name the row names column that the first row adds.
        if (!name.isEmpty() && name != QLatin1String("row"))
            columnNamed(m_columns, option, name, m_path);
    };
    check(QStringLiteral("x"), m_options.x);
    check(QStringLiteral("group"), m_options.group);
    for (const QString& y : m_options.y)
        check(QStringLiteral("y"), y);
}

void CsvColumns::nameColumns(std::size_t count)
{
    m_columns.resize(count);
    for (std::size_t i = 0; i < count; ++i)
        m_columns[i].data.name = QStringLiteral("column %1").arg(i + 1);
    m_notes << QStringLiteral("the first line holds data, not names: columns are named \"column 1\" to \"column %1\"")
                   .arg(count);
}

DataSet CsvColumns::finish(qint64 lastLine)
{
    if (!m_headerSeen)
        Orv::Chart::fail(QStringLiteral("%1: empty file, expected a header row").arg(m_path));
    if (m_rowCount == 0)
        fail(lastLine, QStringLiteral("no data rows after the header"));
    if (m_dialect.decimalComma && !m_options.decimalComma)
        m_notes.prepend(QStringLiteral("numbers are read with a decimal comma (\"3,5\" is 3.5)"));
    if (m_dialect.commentLines > 0)
        m_notes.prepend(QStringLiteral("skipped %1 comment line(s) above the table").arg(m_dialect.commentLines));
    for (TypedColumn& column : m_columns)
        column.finish(m_notes);
    CsvRoles roles(m_path, m_options, m_columns, m_rowCount);
    DataSet data = roles.assign(m_headerLine);
    data.notes = m_notes + data.notes;
    return data;
}

} // namespace Orv::Chart
