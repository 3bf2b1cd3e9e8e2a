#include "CsvRoles_p.h"

#include "Fault_p.h"

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#include <date/date.h>
#pragma GCC diagnostic pop

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

namespace Orv::Chart {

namespace {

using Kind = TypedColumn::Kind;
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();
constexpr std::int64_t microsecondsPerDay = 86400LL * 1000000LL;

QString quoted(const QString& name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

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

// The index of the first numeric column whose name (in lower case) is one of `names`, or -1.
int partNamed(const std::vector<TypedColumn>& columns, std::initializer_list<const char*> names)
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const QString name = columns[i].data.name.trimmed().toLower();
        for (const char* wanted : names)
            if (name == QLatin1String(wanted) && columns[i].kind == Kind::Numeric)
                return static_cast<int>(i);
    }
    return -1;
}

// Whether every value of the column is a whole number in [low, high].
bool wholeNumbersIn(const DataColumn& column, double low, double high)
{
    for (std::size_t i = 0; i < column.size(); ++i) {
        const double value = column.values[i];
        if (!column.undefined[i] && (value != std::floor(value) || value < low || value > high))
            return false;
    }
    return true;
}

// The wall-clock midnight of a calendar day, or nothing when there is no such day (31 April).
std::optional<ParsedTime> midnightOf(int year, int month, int day)
{
    const date::year_month_day ymd{date::year{year}, date::month{static_cast<unsigned>(month)},
                                   date::day{static_cast<unsigned>(day)}};
    if (!ymd.ok())
        return std::nullopt;
    return ParsedTime{date::sys_days(ymd).time_since_epoch().count() * microsecondsPerDay, false};
}

// The x values of the rows (all when null) that have one, as comparable keys.
std::vector<double> keysOf(const TypedColumn& x, const std::vector<std::size_t>* rows, std::size_t count)
{
    std::vector<double> keys;
    const std::size_t size = rows ? rows->size() : count;
    keys.reserve(size);
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t row = rows ? (*rows)[i] : i;
        if (x.kind == Kind::Text && row < x.codes.size())
            keys.push_back(x.codes[row] == TextCodes::missing ? -1.0 : x.codes[row]);
        else if (x.kind == Kind::Time && !x.data.undefined[row])
            keys.push_back(static_cast<double>(x.times[row].microseconds));
        else if (x.kind == Kind::Numeric && !x.data.undefined[row])
            keys.push_back(x.data.values[row]);
    }
    return keys;
}

// The categories of a text x in order of first appearance, a row without x in the empty one; each row's
// value becomes its category's index.
QStringList categoriesOf(TypedColumn& x)
{
    QStringList categories;
    std::vector<int> indexOf(x.texts.size() + 1, -1);
    for (std::size_t row = 0; row < x.codes.size(); ++row) {
        const std::uint32_t code = x.codes[row];
        const std::size_t slot = code == TextCodes::missing ? x.texts.size() : code;
        if (indexOf[slot] < 0) {
            indexOf[slot] = static_cast<int>(categories.size());
            categories << (code == TextCodes::missing ? QString() : x.texts.text(code));
        }
        x.data.values[row] = static_cast<float>(indexOf[slot]);
        x.data.undefined[row] = false;
    }
    return categories;
}

} // namespace

CsvRoles::CsvRoles(const QString& path, const CsvOptions& options, std::vector<TypedColumn>& columns,
                   std::size_t rows)
    : m_path(path)
    , m_options(options)
    , m_columns(columns)
    , m_rows(rows)
{
}

DataSet CsvRoles::assign(qint64 headerLine)
{
    skipEmptyColumns();
    combineDateParts();
    chooseX();
    chooseGroup();
    chooseYs();
    fallBackToRowNumber(headerLine);
    DataSet data;
    DataColumn x = xColumn(data);
    const std::vector<std::vector<std::size_t>> groups = rowsOfGroups();
    data.shape = shapeOf(data, groups);
    if (m_group >= 0 && groups.empty())
        fail(QStringLiteral("%1: group column %2 has no values").arg(m_path, quoted(column(m_group).data.name)));
    if (m_group < 0) {
        addSeries(data, x, allRows(), QString());
    } else {
        const TypedColumn& groupColumn = column(m_group);
        for (std::size_t code = 0; code < groups.size(); ++code)
            addSeries(data, x, groups[code], groupColumn.texts.text(static_cast<std::uint32_t>(code)));
    }
    if (m_aggregated)
        m_notes << QStringLiteral("%1 repeats within a series: each bar shows the %2 of its category's rows")
                       .arg(quoted(x.name), m_options.aggregate == CsvAggregate::Sum ? QStringLiteral("sum")
                                                                                      : QStringLiteral("mean"));
    data.notes = m_notes;
    return data;
}

void CsvRoles::skipEmptyColumns()
{
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        if (m_columns[i].kind != Kind::Empty)
            continue;
        m_skipped.insert(i);
        m_notes << QStringLiteral("column %1 has no values; skipped").arg(quoted(m_columns[i].data.name));
    }
}

// Columns named year, month and day (or day_of_month, date_of_month) holding whole numbers make one date
// column, which stands in for them.
void CsvRoles::combineDateParts()
{
    if (m_options.rowNumberX)
        return;
    const int year = partNamed(m_columns, {"year", "yr"});
    const int month = partNamed(m_columns, {"month", "mon", "mo"});
    const int day = partNamed(m_columns, {"day", "day_of_month", "date_of_month", "dayofmonth", "mday", "dom"});
    if (year < 0 || month < 0 || !wholeNumbersIn(column(year).data, -9999, 9999)
        || !wholeNumbersIn(column(month).data, 1, 12) || (day >= 0 && !wholeNumbersIn(column(day).data, 1, 31)))
        return;
    TypedColumn date;
    date.kind = Kind::Time;
    date.data.name = QStringLiteral("date");
    for (std::size_t row = 0; row < m_rows; ++row) {
        const auto part = [&](int index) { return static_cast<int>(column(index).data.values[row]); };
        const bool missing = column(year).data.undefined[row] || column(month).data.undefined[row]
                             || (day >= 0 && column(day).data.undefined[row]);
        const std::optional<ParsedTime> time =
            missing ? std::nullopt : midnightOf(part(year), part(month), day >= 0 ? part(day) : 1);
        date.data.append(time ? 0.0f : notANumber, !time);
        date.times.push_back(time.value_or(ParsedTime{}));
    }
    QStringList parts{quoted(column(year).data.name), quoted(column(month).data.name)};
    for (int index : {year, month, day})
        if (index >= 0)
            m_skipped.insert(static_cast<std::size_t>(index));
    if (day >= 0)
        parts << quoted(column(day).data.name);
    m_notes << QStringLiteral("columns %1 make the dates of x").arg(parts.join(QStringLiteral(", ")));
    m_columns.push_back(std::move(date));
}

// x: the user's column; else the first date column; else the first column kept, unless it is a series of its own.
void CsvRoles::chooseX()
{
    if (m_options.rowNumberX)
        return;
    if (!m_options.x.isEmpty()) {
        m_x = columnNamed(QStringLiteral("x"), m_options.x);
        if (column(m_x).kind == Kind::Text && column(m_x).tooVaried)
            fail(QStringLiteral("x column %1 holds too many distinct texts to be categories").arg(quoted(m_options.x)),
                 IoError::BadRequest);
        return;
    }
    for (std::size_t i = 0; i < m_columns.size() && m_x == rowNumber; ++i)
        if (m_columns[i].kind == Kind::Time && !m_skipped.count(i))
            m_x = static_cast<int>(i);
    for (std::size_t i = 0; i < m_columns.size() && m_x == rowNumber; ++i) {
        if (m_skipped.count(i))
            continue;
        if (m_columns[i].kind == Kind::Text && m_columns[i].tooVaried) {
            m_notes << QStringLiteral("column %1 holds too many distinct texts for categories; x is the row number")
                           .arg(quoted(m_columns[i].data.name));
            return;
        }
        if (m_columns[i].kind == Kind::Text || keepsNumericX(i))
            m_x = static_cast<int>(i);
        return;
    }
}

// A first numeric column is x when it is in order (within each group, when it repeats), or when it and one
// other column of numbers are an x/y pair; otherwise it is a series like the others.
bool CsvRoles::keepsNumericX(std::size_t index)
{
    m_x = static_cast<int>(index);
    chooseGroup();
    const auto groups = rowsOfGroups();
    const bool ordered = std::all_of(groups.begin(), groups.end(), [this](const auto& rows) { return xOrdered(rows); });
    const auto numeric = std::count_if(m_columns.begin(), m_columns.end(),
                                       [](const TypedColumn& c) { return c.kind == Kind::Numeric; });
    m_group = -1;
    m_x = rowNumber;
    if (ordered || numeric == 2)
        return true;
    m_notes << QStringLiteral("column %1 is in no order: every column is drawn against the row number")
                   .arg(quoted(m_columns[index].data.name));
    return false;
}

// The user's group column, or, where x repeats, the first other text column whose values repeat.
void CsvRoles::chooseGroup()
{
    if (!m_options.group.isEmpty()) {
        m_group = columnNamed(QStringLiteral("group"), m_options.group);
        if (m_group == m_x)
            fail(QStringLiteral("group column %1: that column is x").arg(quoted(m_options.group)),
                 IoError::BadRequest);
        if (column(m_group).kind != Kind::Text || column(m_group).tooVaried)
            m_columns[static_cast<std::size_t>(m_group)].turnText();
        return;
    }
    m_group = -1;
    if (m_x == rowNumber || !xRepeats(nullptr))
        return;
    for (std::size_t i = 0; i < m_columns.size() && m_group < 0; ++i)
        if (static_cast<int>(i) != m_x && !m_skipped.count(i) && m_columns[i].repeats(CsvImport::mostGroups))
            m_group = static_cast<int>(i);
}

void CsvRoles::chooseYs()
{
    for (const QString& name : m_options.y) {
        const int index = columnNamed(QStringLiteral("y"), name);
        if (index == m_x)
            fail(QStringLiteral("y column %1: that column is x").arg(quoted(name)), IoError::BadRequest);
        if (index == m_group)
            fail(QStringLiteral("y column %1: that column is the group").arg(quoted(name)), IoError::BadRequest);
        // Each column once: a column named twice would make two series of one name.
        if (std::find(m_ys.begin(), m_ys.end(), static_cast<std::size_t>(index)) == m_ys.end())
            m_ys.push_back(static_cast<std::size_t>(index));
    }
    const bool chosen = !m_ys.empty();
    for (std::size_t i = 0; i < m_columns.size() && !chosen; ++i)
        if (static_cast<int>(i) != m_x && static_cast<int>(i) != m_group && !m_skipped.count(i))
            m_ys.push_back(i);
    std::vector<std::size_t> numeric;
    for (std::size_t i : m_ys) {
        const TypedColumn& y = m_columns[i];
        if (y.kind == Kind::Numeric)
            numeric.push_back(i);
        else if (y.kind == Kind::Time)
            m_notes << QStringLiteral("column %1 holds dates; skipped").arg(quoted(y.data.name));
        else if (y.kind == Kind::Text)
            m_notes << QStringLiteral("column %1 holds text; skipped").arg(quoted(y.data.name));
    }
    m_ys = std::move(numeric);
}

// A file whose only numbers are in its first column draws that column against the row number.
void CsvRoles::fallBackToRowNumber(qint64 headerLine)
{
    if (!m_ys.empty())
        return;
    const bool soleSeries = m_x != rowNumber && column(m_x).kind == Kind::Numeric && m_options.x.isEmpty();
    if (!soleSeries)
        Orv::Chart::fail(QStringLiteral("%1:%2: no numeric column: %3")
                             .arg(m_path)
                             .arg(headerLine)
                             .arg(m_x == rowNumber ? QStringLiteral("no column holds numbers")
                                                   : QStringLiteral("every column besides x holds text")));
    m_ys.push_back(static_cast<std::size_t>(m_x));
    m_x = rowNumber;
    m_group = -1;
}

DataColumn CsvRoles::xColumn(DataSet& data)
{
    if (m_x == rowNumber) {
        DataColumn rows{QStringLiteral("row"), QString(), {}, {}};
        rows.values.reserve(m_rows);
        for (std::size_t row = 0; row < m_rows; ++row)
            rows.append(static_cast<float>(row + 1), false);
        return rows;
    }
    TypedColumn& x = m_columns[static_cast<std::size_t>(m_x)];
    if (x.kind == Kind::Text && !x.tooVaried) {
        data.discreteX = true;
        data.categories = categoriesOf(x);
    }
    if (x.kind == Kind::Time) {
        data.timeX = true;
        data.xTimes = x.times;
    }
    return x.data;
}

std::vector<std::size_t> CsvRoles::allRows() const
{
    std::vector<std::size_t> rows(m_rows);
    std::iota(rows.begin(), rows.end(), std::size_t{0});
    return rows;
}

std::vector<std::vector<std::size_t>> CsvRoles::rowsOfGroups() const
{
    if (m_group < 0)
        return {allRows()};
    const TypedColumn& groups = column(m_group);
    std::vector<std::vector<std::size_t>> rowsOf(groups.texts.size());
    for (std::size_t row = 0; row < groups.codes.size(); ++row)
        if (groups.codes[row] != TextCodes::missing)
            rowsOf[groups.codes[row]].push_back(row);
    return rowsOf;
}

bool CsvRoles::xRepeats(const std::vector<std::size_t>* rows) const
{
    if (m_x == rowNumber)
        return false;
    std::vector<double> keys = keysOf(column(m_x), rows, m_rows);
    // Strictly ascending x, the common case, cannot repeat and needs no sorting.
    if (std::adjacent_find(keys.begin(), keys.end(), std::greater_equal<>()) == keys.end())
        return false;
    std::sort(keys.begin(), keys.end());
    return std::adjacent_find(keys.begin(), keys.end()) != keys.end();
}

// Ascending or descending (newest first), repeats allowed.
bool CsvRoles::xOrdered(const std::vector<std::size_t>& rows) const
{
    const std::vector<double> keys = keysOf(column(m_x), &rows, m_rows);
    return std::is_sorted(keys.begin(), keys.end()) || std::is_sorted(keys.rbegin(), keys.rend());
}

// Neither in order nor free of repeats: points, not a line.
bool CsvRoles::xScattered(const std::vector<std::size_t>& rows) const
{
    if (m_x == rowNumber)
        return false;
    const std::vector<double> keys = keysOf(column(m_x), &rows, m_rows);
    return !std::is_sorted(keys.begin(), keys.end()) && xRepeats(&rows);
}

// The series of one group (all rows when `group` is empty): one per y column.
void CsvRoles::addSeries(DataSet& data, DataColumn& x, const std::vector<std::size_t>& rows,
                         const QString& group)
{
    const bool aggregate = data.discreteX && m_options.aggregate != CsvAggregate::None && xRepeats(&rows);
    m_aggregated = m_aggregated || aggregate;
    if (group.isEmpty() && !aggregate)
        return addWholeFile(data, std::move(x));
    for (std::size_t index : m_ys) {
        const DataColumn& y = m_columns[index].data;
        const QString name = group.isEmpty()     ? y.name
                             : m_ys.size() == 1 ? group
                                                : group + QLatin1Char(' ') + y.name;
        if (aggregate) {
            data.series.push_back(aggregated(x, y, rows, name));
            data.series.back().valueName = group.isEmpty() ? QString() : y.name;
            continue;
        }
        data.series.push_back(DataSeries{pickColumn(x, rows, x.name), pickColumn(y, rows, name),
                                         data.timeX ? rows : std::vector<std::size_t>{}, y.name});
    }
}

// The series of every row: the file's own columns move over; x is copied for all but the last series, which
// takes it.
void CsvRoles::addWholeFile(DataSet& data, DataColumn x)
{
    const auto valuesOf = [this](std::size_t index) {
        DataColumn& column = m_columns[index].data;
        return DataColumn{column.name, column.unit, std::move(column.values), std::move(column.undefined)};
    };
    for (std::size_t k = 0; k + 1 < m_ys.size(); ++k)
        data.series.push_back(DataSeries{x, valuesOf(m_ys[k]), {}});
    data.series.push_back(DataSeries{std::move(x), valuesOf(m_ys.back()), {}});
}

// One point per category, in order of first appearance: the mean (or sum) of the rows' defined values.
DataSeries CsvRoles::aggregated(const DataColumn& x, const DataColumn& y, const std::vector<std::size_t>& rows,
                                const QString& name) const
{
    std::vector<double> sums;
    std::vector<std::size_t> counts;
    std::vector<int> slotOf;
    DataSeries series{DataColumn{x.name, x.unit, {}, {}}, DataColumn{name, y.unit, {}, {}}, {}};
    for (std::size_t row : rows) {
        const auto code = static_cast<std::size_t>(x.values[row]);
        if (code >= slotOf.size())
            slotOf.resize(code + 1, -1);
        if (slotOf[code] < 0) {
            slotOf[code] = static_cast<int>(sums.size());
            sums.push_back(0.0);
            counts.push_back(0);
            series.x.append(x.values[row], false);
        }
        if (!y.undefined[row] && !std::isnan(y.values[row])) {
            sums[static_cast<std::size_t>(slotOf[code])] += y.values[row];
            ++counts[static_cast<std::size_t>(slotOf[code])];
        }
    }
    const bool mean = m_options.aggregate != CsvAggregate::Sum;
    for (std::size_t slot = 0; slot < sums.size(); ++slot) {
        const double value = mean && counts[slot] > 0 ? sums[slot] / static_cast<double>(counts[slot]) : sums[slot];
        series.y.append(counts[slot] > 0 ? static_cast<float>(value) : notANumber, counts[slot] == 0);
    }
    return series;
}

SeriesShape CsvRoles::shapeOf(const DataSet& data, const std::vector<std::vector<std::size_t>>& groups) const
{
    if (m_options.shape)
        return *m_options.shape;
    if (data.discreteX && m_options.aggregate != CsvAggregate::None)
        return SeriesShape::Bars;
    const bool scattered =
        std::any_of(groups.begin(), groups.end(), [this](const auto& rows) { return xScattered(rows); });
    if (scattered)
        return SeriesShape::Points;
    return data.discreteX ? SeriesShape::Bars : SeriesShape::Lines;
}

int CsvRoles::columnNamed(const QString& option, const QString& name) const
{
    return static_cast<int>(Orv::Chart::columnNamed(m_columns, option, name, m_path));
}

} // namespace Orv::Chart
