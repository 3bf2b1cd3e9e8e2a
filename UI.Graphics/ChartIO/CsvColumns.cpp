#include "CsvColumns_p.h"

#include "Fault_p.h"

#include <fast_float/fast_float.h>

#include <QRegularExpression>
#include <QSet>

#include <algorithm>
#include <limits>
#include <utility>

namespace Orv::Chart {

namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

std::string_view trimmed(std::string_view text)
{
    const auto blank = [](char c) { return c == ' ' || c == '\t'; };
    while (!text.empty() && blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && blank(text.back()))
        text.remove_suffix(1);
    return text;
}

bool isMissing(std::string_view cell)
{
    return cell.empty()
           || (cell.size() == 3 && (cell[0] | 0x20) == 'n' && (cell[1] | 0x20) == 'a' && (cell[2] | 0x20) == 'n');
}

bool parseNumber(std::string_view cell, float& value)
{
    if (!cell.empty() && cell.front() == '+')
        cell.remove_prefix(1);
    double number = 0.0;
    const auto result = fast_float::from_chars(cell.data(), cell.data() + cell.size(), number);
    value = static_cast<float>(number);
    return result.ec == std::errc() && result.ptr == cell.data() + cell.size() && !cell.empty();
}

QString textOf(std::string_view cell)
{
    return QString::fromUtf8(cell.data(), static_cast<int>(cell.size()));
}

// Copies the values of a column at the given rows.
template <typename T>
std::vector<T> pick(const std::vector<T>& all, const std::vector<std::size_t>& rows)
{
    std::vector<T> picked;
    picked.reserve(rows.size());
    for (std::size_t row : rows)
        picked.push_back(all[row]);
    return picked;
}

DataColumn pickColumn(const DataColumn& column, const std::vector<std::size_t>& rows, const QString& name)
{
    return DataColumn{name, column.unit, pick(column.values, rows), pick(column.undefined, rows)};
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

XColumn::XColumn(const QString& timeFormat)
    : m_timeText(timeFormat)
    , m_timeFirst(!timeFormat.isEmpty())
{
}

// The first x cell that holds something decides whether x is numeric, time or text.
bool XColumn::take(std::string_view cell, qint64 line)
{
    if (kind == Kind::Text) {
        column.append(static_cast<float>(categories.codeOf(cell)), false);
        return true;
    }
    if (isMissing(cell)) {
        column.append(notANumber, true);
        times.emplace_back();
        return true;
    }
    const Kind before = kind;
    if (takeTyped(cell)) {
        if (before == Kind::Unknown)
            kindLine = line;
        return true;
    }
    if (kind != Kind::Unknown)
        return false;
    switchToCategories();
    return take(cell, line);
}

// A number or a time, as x has been so far; the first one decides. A user's
// time format is tried before numbers, since it may match digits only.
bool XColumn::takeTyped(std::string_view cell)
{
    const bool timeFirst = kind == Kind::Time || (kind == Kind::Unknown && m_timeFirst);
    if (timeFirst && takeTime(cell))
        return true;
    float value = notANumber;
    if (kind != Kind::Time && parseNumber(cell, value)) {
        kind = Kind::Numeric;
        column.append(value, false);
        return true;
    }
    return kind == Kind::Unknown && takeTime(cell);
}

bool XColumn::takeTime(std::string_view cell)
{
    const std::optional<ParsedTime> time = m_timeText.parse(textOf(cell));
    if (!time)
        return false;
    times.push_back(*time);
    column.append(0.0f, false);
    kind = Kind::Time;
    return true;
}

// Rows before the first text x had no x at all: they become the empty category.
void XColumn::switchToCategories()
{
    kind = Kind::Text;
    times = {};
    for (std::size_t i = 0; i < column.size(); ++i) {
        column.values[i] = static_cast<float>(categories.codeOf({}));
        column.undefined[i] = false;
    }
}

double XColumn::key(std::size_t row) const
{
    return kind == Kind::Time ? static_cast<double>(times[row].microseconds) : column.values[row];
}

bool XColumn::isScattered(const std::vector<std::size_t>* rows) const
{
    const std::size_t count = rows ? rows->size() : column.size();
    std::vector<double> keys;
    bool ascending = true;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t row = rows ? (*rows)[i] : i;
        if (column.undefined[row])
            continue;
        ascending = ascending && (keys.empty() || keys.back() <= key(row));
        keys.push_back(key(row));
    }
    if (ascending)
        return false;
    std::sort(keys.begin(), keys.end());
    return std::adjacent_find(keys.begin(), keys.end()) != keys.end();
}

// Whether some x value comes twice; strictly ascending x cannot, and needs no copy to tell.
bool XColumn::repeats() const
{
    if (kind == Kind::Text)
        return categories.size() < column.size();
    double last = -std::numeric_limits<double>::infinity();
    bool strictlyAscending = true;
    for (std::size_t row = 0; row < column.size() && strictlyAscending; ++row) {
        if (column.undefined[row])
            continue;
        strictlyAscending = last < key(row);
        last = key(row);
    }
    if (strictlyAscending)
        return false;
    std::vector<double> keys;
    for (std::size_t row = 0; row < column.size(); ++row)
        if (!column.undefined[row])
            keys.push_back(key(row));
    std::sort(keys.begin(), keys.end());
    return std::adjacent_find(keys.begin(), keys.end()) != keys.end();
}

void ValueColumn::take(std::string_view cell)
{
    if (keepsText || isText) {
        takeText(cell);
        return;
    }
    float value = notANumber;
    if (isMissing(cell)) {
        data.append(notANumber, true);
    } else if (parseNumber(cell, value)) {
        data.append(value, false);
    } else {
        turnText();
        takeText(cell);
    }
}

void ValueColumn::takeText(std::string_view cell)
{
    if (m_tooVaried)
        return;
    if (isMissing(cell)) {
        codes.push_back(TextCodes::missing);
        return;
    }
    ++m_present;
    codes.push_back(values.codeOf(cell));
    // So many distinct values would not be groups; nothing more is kept.
    if (!keepsText && values.size() > CsvImport::mostGroups) {
        m_tooVaried = true;
        codes = {};
        values.clear();
    }
}

// The numbers before the first text cell become texts, in case this is the group column.
void ValueColumn::turnText()
{
    isText = true;
    for (std::size_t i = 0; i < data.size(); ++i) {
        if (data.undefined[i])
            codes.push_back(TextCodes::missing);
        else
            takeText(QString::number(static_cast<double>(data.values[i])).toStdString());
    }
    data.values = {};
    data.undefined = {};
}

CsvColumns::CsvColumns(const QString& path, const CsvOptions& options)
    : m_path(path)
    , m_options(options)
    , m_x(options.timeFormat)
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
        return;
    }
    if (count != m_columns.size())
        fail(line, QStringLiteral("expected %1 fields as in the header, found %2").arg(m_columns.size()).arg(count));
    takeRow(fields, line);
}

void CsvColumns::takeRow(const std::vector<std::string>& fields, qint64 line)
{
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const std::string_view cell = trimmed(fields[i]);
        if (i != m_xIndex)
            m_columns[i].take(cell);
        else if (!m_x.take(cell, line))
            failX(cell, line);
    }
    ++m_rowCount;
}

void CsvColumns::failX(std::string_view cell, qint64 line) const
{
    const bool time = m_x.kind == XColumn::Kind::Time;
    const QString kind = time ? QStringLiteral("a date or time") : QStringLiteral("a number");
    const QString since = time ? QStringLiteral("dates and times") : QStringLiteral("numeric");
    fail(line, QStringLiteral("x value \"%1\" is not %2, though x is %3 from line %4 on")
                   .arg(textOf(cell), kind, since)
                   .arg(m_x.kindLine));
}

// "T [degC]" gives the name "T" and the unit "degC".
void CsvColumns::takeHeader(const std::vector<std::string>& fields, std::size_t count, qint64 line)
{
    static const QRegularExpression withUnit(QStringLiteral("^(.*?)\\s*\\[([^\\]]*)\\]$"));
    if (count < 2)
        fail(line, QStringLiteral("no numeric column: the header names only the x column"));
    m_headerSeen = true;
    m_headerLine = line;
    m_columns.resize(count);
    QSet<QString> names;
    for (std::size_t i = 0; i < count; ++i) {
        DataColumn& column = m_columns[i].data;
        const QString field = textOf(trimmed(fields[i]));
        const QRegularExpressionMatch match = withUnit.match(field);
        column.name = match.hasMatch() ? match.captured(1) : field;
        column.unit = match.hasMatch() ? match.captured(2).trimmed() : QString();
        if (column.name.isEmpty())
            fail(line, QStringLiteral("column %1 of the header has no name").arg(i + 1));
        if (names.contains(column.name))
            fail(line, QStringLiteral("two columns are named \"%1\"").arg(column.name));
        names.insert(column.name);
    }
    assignRoles();
}

// The column an option names, by its name or its whole header text.
int CsvColumns::columnNamed(const QString& option, const QString& name) const
{
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const DataColumn& column = m_columns[i].data;
        if (column.name == name || (!column.unit.isEmpty() && column.name + " [" + column.unit + "]" == name))
            return static_cast<int>(i);
    }
    Orv::Chart::fail(QStringLiteral("%1 column \"%2\": %3 has no such column").arg(option, name, m_path),
                     IoError::BadRequest);
}

void CsvColumns::assignRoles()
{
    const auto clash = [](const QString& option, const QString& name, const char* role) {
        return Fault{{IoError::BadRequest, QStringLiteral("%1 column \"%2\": that column is %3").arg(option, name, role)}};
    };
    m_xIndex = m_options.x.isEmpty() ? 0 : static_cast<std::size_t>(columnNamed(QStringLiteral("x"), m_options.x));
    m_x.column.name = m_columns[m_xIndex].data.name;
    m_x.column.unit = m_columns[m_xIndex].data.unit;
    if (!m_options.group.isEmpty()) {
        m_forcedGroup = columnNamed(QStringLiteral("group"), m_options.group);
        if (static_cast<std::size_t>(m_forcedGroup) == m_xIndex)
            throw clash(QStringLiteral("group"), m_options.group, "x");
        m_columns[static_cast<std::size_t>(m_forcedGroup)].keepsText = true;
    }
    for (const QString& name : m_options.y) {
        const int index = columnNamed(QStringLiteral("y"), name);
        if (static_cast<std::size_t>(index) == m_xIndex)
            throw clash(QStringLiteral("y"), name, "x");
        if (index == m_forcedGroup)
            throw clash(QStringLiteral("y"), name, "the group");
        m_yOrder.push_back(static_cast<std::size_t>(index));
    }
    for (std::size_t i = 0; m_options.y.isEmpty() && i < m_columns.size(); ++i)
        if (i != m_xIndex && static_cast<int>(i) != m_forcedGroup)
            m_yOrder.push_back(i);
}

// The user's group column, or, where x repeats, the first text column whose values repeat.
int CsvColumns::findGroup()
{
    if (m_forcedGroup >= 0)
        return m_forcedGroup;
    const auto candidate = [this](const ValueColumn& column) { return column.isText && column.repeats(); };
    const auto found = std::find_if(m_columns.begin(), m_columns.end(), candidate);
    if (found == m_columns.end() || !m_x.repeats())
        return -1;
    return static_cast<int>(found - m_columns.begin());
}

void CsvColumns::noteTextColumns(DataSet& data, int group) const
{
    for (std::size_t i : m_yOrder)
        if (m_columns[i].isText && static_cast<int>(i) != group)
            data.notes << QStringLiteral("column \"%1\" holds text; skipped").arg(m_columns[i].data.name);
}

std::vector<std::size_t> CsvColumns::numericYs() const
{
    std::vector<std::size_t> ys;
    std::copy_if(m_yOrder.begin(), m_yOrder.end(), std::back_inserter(ys),
                 [this](std::size_t i) { return !m_columns[i].isText && !m_columns[i].keepsText; });
    return ys;
}

// Every series gets its own x values, as the iterators take them over; the last one takes the column itself.
void CsvColumns::addAllRows(DataSet& data, const std::vector<std::size_t>& ys)
{
    for (std::size_t k = 0; k + 1 < ys.size(); ++k)
        data.series.push_back(DataSeries{m_x.column, std::move(m_columns[ys[k]].data), {}});
    data.series.push_back(DataSeries{std::move(m_x.column), std::move(m_columns[ys.back()].data), {}});
}

// One series per group value and y column, holding that group's rows.
void CsvColumns::addGroups(DataSet& data, const std::vector<std::size_t>& ys, int group)
{
    const ValueColumn& groups = m_columns[static_cast<std::size_t>(group)];
    std::vector<std::vector<std::size_t>> rowsOf(groups.values.size());
    for (std::size_t row = 0; row < groups.codes.size(); ++row)
        if (groups.codes[row] != TextCodes::missing)
            rowsOf[groups.codes[row]].push_back(row);
    for (std::uint32_t code = 0; code < rowsOf.size(); ++code) {
        const QString value = groups.values.text(code);
        for (std::size_t y : ys) {
            const DataColumn& column = m_columns[y].data;
            const QString name = ys.size() == 1 ? value : value + QLatin1Char(' ') + column.name;
            data.series.push_back(DataSeries{pickColumn(m_x.column, rowsOf[code], m_x.column.name),
                                             pickColumn(column, rowsOf[code], name),
                                             data.timeX ? rowsOf[code] : std::vector<std::size_t>{}});
        }
    }
    data.shape = shapeOf(data, rowsOf);
}

SeriesShape CsvColumns::shapeOf(const DataSet& data, const std::vector<std::vector<std::size_t>>& groupRows) const
{
    if (m_options.shape)
        return *m_options.shape;
    const bool scattered = groupRows.empty()
                               ? m_x.isScattered(nullptr)
                               : std::any_of(groupRows.begin(), groupRows.end(),
                                             [this](const auto& rows) { return m_x.isScattered(&rows); });
    if (scattered)
        return SeriesShape::Points;
    return data.discreteX ? SeriesShape::Bars : SeriesShape::Lines;
}

DataSet CsvColumns::finish(qint64 lastLine)
{
    if (!m_headerSeen)
        Orv::Chart::fail(QStringLiteral("%1: empty file, expected a header row").arg(m_path));
    if (m_rowCount == 0)
        fail(lastLine, QStringLiteral("no data rows after the header"));
    DataSet data;
    const int group = findGroup();
    noteTextColumns(data, group);
    const std::vector<std::size_t> ys = numericYs();
    if (ys.empty())
        fail(m_headerLine, QStringLiteral("no numeric column: every column besides x holds text"));
    data.discreteX = m_x.kind == XColumn::Kind::Text;
    data.categories = m_x.categories.texts();
    data.timeX = m_x.kind == XColumn::Kind::Time;
    if (group >= 0) {
        addGroups(data, ys, group);
    } else {
        data.shape = shapeOf(data, {});
        addAllRows(data, ys);
    }
    if (data.timeX)
        data.xTimes = std::move(m_x.times);
    return data;
}

} // namespace Orv::Chart
