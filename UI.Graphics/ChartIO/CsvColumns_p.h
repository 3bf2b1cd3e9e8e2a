#pragma once
// Turns the records of a CSV file into a DataSet while they stream in: the
// header's names and units, the kind of x, each other column's kind (numbers
// until its first text cell), the codes of text columns, and at the end the
// group column, the series and how they are drawn.

#include "CsvImport.h"
#include "DataSet.h"
#include "TimeText.h"

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Orv::Chart {

// Distinct texts numbered in order of first appearance.
class TextCodes {
public:
    static constexpr std::uint32_t missing = UINT32_MAX;

    std::uint32_t codeOf(std::string_view text);
    std::size_t size() const { return m_texts.size(); }
    QString text(std::uint32_t code) const { return QString::fromStdString(m_texts[code]); }
    QStringList texts() const;
    void clear();

private:
    std::unordered_map<std::string, std::uint32_t> m_codes;
    std::vector<std::string> m_texts;
};

// The x column: numbers, times or categories, as its first cells decide.
class XColumn {
public:
    enum class Kind { Unknown, Numeric, Time, Text };

    explicit XColumn(const QString& timeFormat);

    // False when the cell is not of the kind that x has taken on.
    bool take(std::string_view cell, qint64 line);
    // Whether x over these rows (all when null) goes back somewhere and holds a value twice.
    bool isScattered(const std::vector<std::size_t>* rows) const;
    bool repeats() const;

    Kind kind = Kind::Unknown;
    qint64 kindLine = 0;
    DataColumn column;
    std::vector<ParsedTime> times;
    TextCodes categories;

private:
    bool takeTyped(std::string_view cell);
    bool takeTime(std::string_view cell);
    void switchToCategories();
    double key(std::size_t row) const;

    TimeText m_timeText;
    bool m_timeFirst;
};

// Any other column: numbers until a text cell turns it into a text column,
// whose values are kept as codes while it may still be the group column.
class ValueColumn {
public:
    void take(std::string_view cell);
    // Whether some value comes twice, among few enough distinct ones to be groups.
    bool repeats() const { return !m_tooVaried && codes.size() > 0 && values.size() < m_present; }

    DataColumn data;
    bool isText = false;
    bool keepsText = false; // the user's group column: text from the start, however varied
    TextCodes values;
    std::vector<std::uint32_t> codes;

private:
    void takeText(std::string_view cell);
    void turnText();

    std::size_t m_present = 0;
    bool m_tooVaried = false;
};

class CsvColumns {
public:
    CsvColumns(const QString& path, const CsvOptions& options);

    void take(const std::vector<std::string>& fields, std::size_t count, qint64 line);
    DataSet finish(qint64 lastLine);
    [[noreturn]] void fail(qint64 line, const QString& message) const;

private:
    void takeHeader(const std::vector<std::string>& fields, std::size_t count, qint64 line);
    void assignRoles();
    int columnNamed(const QString& option, const QString& name) const;
    void takeRow(const std::vector<std::string>& fields, qint64 line);
    [[noreturn]] void failX(std::string_view cell, qint64 line) const;

    int findGroup();
    void noteTextColumns(DataSet& data, int group) const;
    std::vector<std::size_t> numericYs() const;
    void addAllRows(DataSet& data, const std::vector<std::size_t>& ys);
    void addGroups(DataSet& data, const std::vector<std::size_t>& ys, int group);
    SeriesShape shapeOf(const DataSet& data, const std::vector<std::vector<std::size_t>>& groupRows) const;

    QString m_path;
    CsvOptions m_options;
    bool m_headerSeen = false;
    qint64 m_headerLine = 0;
    std::size_t m_rowCount = 0;
    std::size_t m_xIndex = 0;
    int m_forcedGroup = -1;
    std::vector<std::size_t> m_yOrder;
    XColumn m_x;
    std::vector<ValueColumn> m_columns;
};

} // namespace Orv::Chart
