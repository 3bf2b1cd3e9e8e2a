#include "CsvDialect_p.h"

#include "CsvCells_p.h"
#include "TimeText.h"

#include <QList>

#include <array>
#include <string>
#include <vector>

namespace Orv::Chart {

namespace {

constexpr int sampleLines = 30;
constexpr std::array<char, 4> separators = {',', ';', '\t', '|'};

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isBlankLine(const QByteArray& line)
{
    for (char c : line)
        if (!isBlank(c) && c != '\r')
            return false;
    return true;
}

bool isComment(const QByteArray& line)
{
    return line.trimmed().startsWith('#');
}

// The first whole lines of the head, enough for the guesses; a quoted line break keeps its line in one piece.
QList<QByteArray> linesOf(const QByteArray& head, bool complete)
{
    constexpr int mostLines = 4 * sampleLines;
    QList<QByteArray> lines;
    bool quoted = false;
    int start = 0;
    for (int i = 0; i < head.size() && lines.size() < mostLines; ++i) {
        quoted = quoted != (head[i] == '"');
        if (head[i] == '\n' && !quoted) {
            lines << head.mid(start, i - start);
            start = i + 1;
        }
    }
    if (complete && start < head.size() && lines.size() < mostLines)
        lines << head.mid(start);
    return lines;
}

// The fields of a line split at `separator` outside quotes (or at runs of blanks).
std::vector<std::string> fieldsOf(const QByteArray& line, char separator, bool blankRuns)
{
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (char c : line.trimmed()) {
        if (c == '"') {
            quoted = !quoted;
            continue;
        }
        const bool splits = !quoted && (blankRuns ? isBlank(c) : c == separator);
        if (splits && !(blankRuns && fields.back().empty()))
            fields.emplace_back();
        else if (!splits)
            fields.back() += c;
    }
    return fields;
}

// How well splitting this way fits the lines: their common number of fields (0 when they do not agree or there
// is only one), doubled, plus one when the first line agrees too rather than being one short of the rest (a
// header without a cell above row names).
std::size_t fit(const QList<QByteArray>& lines, char separator, bool blankRuns)
{
    std::size_t width = 0;
    for (int i = 1; i < lines.size(); ++i) {
        const std::size_t count = fieldsOf(lines[i], separator, blankRuns).size();
        if (width != 0 && count != width)
            return 0;
        width = count;
    }
    const std::size_t first = fieldsOf(lines.front(), separator, blankRuns).size();
    if (lines.size() == 1)
        width = first;
    if (width < 2 || (first != width && first + 1 != width))
        return 0;
    return 2 * width + (first == width ? 1 : 0);
}

// The separator found most often outside quotes in the header line.
char mostFrequentSeparator(const QByteArray& header)
{
    std::array<int, separators.size()> counts{};
    bool quoted = false;
    for (char c : header) {
        quoted = quoted != (c == '"');
        for (std::size_t k = 0; k < separators.size() && !quoted; ++k)
            counts[k] += c == separators[k];
    }
    std::size_t best = 0;
    for (std::size_t k = 1; k < separators.size(); ++k)
        if (counts[k] > counts[best])
            best = k;
    return separators[best];
}

void guessSeparator(CsvDialect& dialect, const QList<QByteArray>& table)
{
    std::size_t best = 0;
    for (char separator : separators) {
        const std::size_t score = fit(table, separator, false);
        if (score > best) {
            best = score;
            dialect.separator = separator;
        }
    }
    if (best == 0 && fit(table, ' ', true) > 0) {
        dialect.blankRuns = true;
        dialect.separator = '\t';
    } else if (best == 0) {
        dialect.separator = mostFrequentSeparator(table.front());
    }
}

void takeSeparatorOption(CsvDialect& dialect, const QString& separator)
{
    if (separator == QLatin1String(" ")) {
        dialect.blankRuns = true;
        dialect.separator = '\t';
    } else {
        dialect.separator = separator == QLatin1String("\\t") ? '\t' : separator.at(0).toLatin1();
    }
}

// Decimal commas and no decimal points in the cells of the table; never with commas between fields.
bool guessDecimalComma(const QList<QByteArray>& table, const CsvDialect& dialect)
{
    if (dialect.separator == ',' && !dialect.blankRuns)
        return false;
    bool comma = false;
    for (const QByteArray& line : table) {
        for (const std::string& field : fieldsOf(line, dialect.separator, dialect.blankRuns)) {
            const std::string_view cell = trimmedCell(field);
            if (hasDecimalPoint(cell))
                return false;
            comma = comma || hasDecimalComma(cell);
        }
    }
    return comma;
}

// A first line of numbers and dates only is data, not names.
bool looksLikeData(const QByteArray& line, const CsvDialect& dialect)
{
    static const TimeText times;
    for (const std::string& field : fieldsOf(line, dialect.separator, dialect.blankRuns)) {
        const std::string_view cell = trimmedCell(field);
        float value = 0.0f;
        unsigned marks = 0;
        if (!isMissingCell(cell) && !parseCellNumber(cell, value, marks, dialect.decimalComma)
            && !times.parse(QString::fromUtf8(cell.data(), static_cast<int>(cell.size()))))
            return false;
    }
    return true;
}

} // namespace

CsvDialect guessDialect(const QByteArray& head, bool complete, const CsvOptions& options)
{
    CsvDialect dialect;
    QList<QByteArray> table;
    bool aboveTable = true;
    for (const QByteArray& line : linesOf(head, complete)) {
        if (aboveTable && isComment(line))
            ++dialect.commentLines;
        else if (!isBlankLine(line) && table.size() < sampleLines)
            table << line;
        aboveTable = aboveTable && table.isEmpty();
    }
    if (table.isEmpty())
        return dialect;
    if (options.separator.isEmpty())
        guessSeparator(dialect, table);
    else
        takeSeparatorOption(dialect, options.separator);
    dialect.decimalComma = options.decimalComma.value_or(guessDecimalComma(table, dialect));
    dialect.header = options.header.value_or(!looksLikeData(table.front(), dialect));
    return dialect;
}

void blankCommentLines(QByteArray& head, int count)
{
    int index = 0;
    for (int seen = 0; seen < count && index < head.size();) {
        const int end = head.indexOf('\n', index);
        const QByteArray line = head.mid(index, end < 0 ? -1 : end - index);
        if (isComment(line)) {
            head.replace(index, line.size(), QByteArray());
            ++seen;
        }
        index = head.indexOf('\n', index);
        if (index < 0)
            break;
        ++index;
    }
}

QByteArray BlankRunFilter::apply(const QByteArray& block)
{
    QByteArray out;
    out.reserve(block.size());
    for (char c : block) {
        if (!m_quoted && isBlank(c)) {
            m_pendingBlank = !m_lineStart;
            continue;
        }
        if (!m_quoted && (c == '\n' || c == '\r')) {
            m_pendingBlank = false;
            m_lineStart = true;
            out += c;
            continue;
        }
        if (m_pendingBlank)
            out += '\t';
        m_pendingBlank = false;
        m_lineStart = false;
        m_quoted = m_quoted != (c == '"');
        out += c;
    }
    return out;
}

} // namespace Orv::Chart
