#pragma once
// Turns the records of a CSV file into typed columns while they stream in:
// the header's names and units, then each column's kind (numbers, dates or
// text, as its first value says), its values and, for text, one code per row.

#include "CsvDialect_p.h"
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

// How cells are read: the two readings of slash dates a column may need until
// its order shows, and the decimal mark of numbers.
struct CellReaders {
    TimeText monthFirst;
    TimeText dayFirst;
    // A user's format: tried before numbers, since it may match digits only.
    bool formatGiven = false;
    std::optional<DateOrder> order;
    bool decimalComma = false;
};

// One column of the table. Every kind keeps one entry per row in `data`
// (undefined where the cell is missing); dates keep their instants in `times`
// and text its codes in `codes`.
class TypedColumn {
public:
    enum class Kind { Empty, Numeric, Time, Text };
    // More distinct texts than this are not kept: such a column can be neither categories nor groups.
    static constexpr std::size_t mostTexts = 100000;

    void take(std::string_view cell, qint64 line, const CellReaders& readers);
    // Settles the order of slash dates; the notes say what was guessed or lost.
    void finish(QStringList& notes);
    // Whether some text comes twice, among at most `most` distinct ones.
    bool repeats(std::size_t most) const;
    std::size_t rows() const { return data.size(); }
    // Makes this a text column: numbers so far become their texts.
    void turnText();

    Kind kind = Kind::Empty;
    DataColumn data;
    std::vector<ParsedTime> times;
    TextCodes texts;
    std::vector<std::uint32_t> codes;
    bool tooVaried = false;
    unsigned numberMarks = 0;
    qint64 firstLine = 0; // where the first value stands

private:
    void decide(std::string_view cell, const CellReaders& readers);
    void finishNumbers(const QString& name, QStringList& notes);
    void appendMissing();
    void takeNumber(std::string_view cell, const CellReaders& readers);
    void takeTime(std::string_view cell, qint64 line, const CellReaders& readers);
    void takeText(std::string_view cell);

    std::size_t m_present = 0;
    // Slash dates: the day-first reading of every row, and what the cells showed.
    std::vector<ParsedTime> m_dayFirst;
    bool m_monthFirstOnly = false;
    bool m_dayFirstOnly = false;
    std::vector<std::size_t> m_dayFirstOnlyRows;
    std::size_t m_badTimes = 0;
    qint64 m_firstBadLine = 0;
    std::string m_firstBad;
};

// The column a role option names, by its name or its whole header text ("b [m]"); a fault of the request
// naming the option, the column and the file when there is none.
std::size_t columnNamed(const std::vector<TypedColumn>& columns, const QString& option, const QString& name,
                        const QString& path);

class CsvColumns {
public:
    CsvColumns(const QString& path, const CsvOptions& options, const CsvDialect& dialect);

    void take(const std::vector<std::string>& fields, std::size_t count, qint64 line);
    DataSet finish(qint64 lastLine);
    [[noreturn]] void fail(qint64 line, const QString& message) const;

private:
    void takeHeader(const std::vector<std::string>& fields, std::size_t count, qint64 line);
    void nameColumns(std::size_t count);
    void checkOptionColumns() const;
    void takeRow(const std::vector<std::string>& fields, std::size_t count, qint64 line);
    void settleRowLayout(const std::vector<std::string>& fields, std::size_t count, qint64 line);
    [[noreturn]] void failRagged(std::size_t count, qint64 line) const;

    QString m_path;
    CsvOptions m_options;
    CsvDialect m_dialect;
    CellReaders m_readers;
    bool m_headerSeen = false;
    bool m_layoutSettled = false;
    qint64 m_headerLine = 0;
    std::size_t m_rowCount = 0;
    // Fields before the header's first column (R's row names) and after its last (a trailing separator).
    std::size_t m_leadingExtra = 0;
    std::size_t m_trailingExtra = 0;
    std::vector<TypedColumn> m_columns;
    QStringList m_notes;
};

} // namespace Orv::Chart
