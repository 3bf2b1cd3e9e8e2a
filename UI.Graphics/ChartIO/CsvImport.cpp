#include "CsvImport.h"

#include "CsvColumns_p.h"
#include "CsvDialect_p.h"
#include "Fault_p.h"

#include <csv.h>

#include <QFile>
#include <QFileDevice>
#include <QFileInfo>

#include <array>
#include <functional>

namespace Orv::Chart {

namespace {

constexpr qint64 blockSize = 1 << 16;
// The guesses look at this many lines of the head, or at most this much of it.
constexpr int headLines = 30;
constexpr int mostHead = 1 << 20;
constexpr int readTimeout = 30000;

// Counts line ends in text, a CR LF pair as one.
qint64 lineBreaks(const char* text, std::size_t size)
{
    qint64 count = 0;
    for (std::size_t i = 0; i < size; ++i)
        count += text[i] == '\n' || (text[i] == '\r' && (i + 1 == size || text[i + 1] != '\n'));
    return count;
}

// Feeds blocks of the file to the CSV parser and hands each record, with the line it starts on, to the columns.
class RecordFeed {
public:
    RecordFeed(const QString& path, CsvColumns& columns)
        : m_path(path)
        , m_columns(columns)
    {
        csv_init(&m_parser, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL);
    }
    ~RecordFeed() { csv_free(&m_parser); }
    RecordFeed(const RecordFeed&) = delete;
    RecordFeed& operator=(const RecordFeed&) = delete;

    void setSeparator(char separator)
    {
        csv_set_delim(&m_parser, static_cast<unsigned char>(separator));
        // A tab that separates fields is no blank to trim.
        if (separator == '\t')
            csv_set_space_func(&m_parser, [](unsigned char c) { return c == ' ' ? 1 : 0; });
    }

    void feed(const char* text, std::size_t size)
    {
        if (csv_parse(&m_parser, text, size, onField, onRecordEnd, this) != size)
            m_columns.fail(m_line, QStringLiteral("misplaced quote: a quote may only enclose a whole field"));
    }

    void finish()
    {
        if (csv_fini(&m_parser, onField, onRecordEnd, this) != 0)
            m_columns.fail(m_line, QStringLiteral("unterminated quoted field"));
    }

    qint64 lastRecordLine() const { return m_recordLine; }

private:
    static void onField(void* text, std::size_t size, void* self)
    {
        static_cast<RecordFeed*>(self)->takeField(static_cast<const char*>(text), size);
    }
    static void onRecordEnd(int terminator, void* self) { static_cast<RecordFeed*>(self)->endRecord(terminator); }

    void takeField(const char* text, std::size_t size)
    {
        if (m_count == 0)
            m_recordLine = m_line;
        if (m_count == m_fields.size())
            m_fields.emplace_back();
        m_fields[m_count++].assign(text ? text : "", text ? size : 0);
        m_line += lineBreaks(text, text ? size : 0);
        m_afterCarriageReturn = false;
    }

    // Every unquoted CR and LF ends a record, most of them empty; a CR LF pair ends one line.
    void endRecord(int terminator)
    {
        if (m_count > 0)
            m_columns.take(m_fields, m_count, m_recordLine);
        m_count = 0;
        if (terminator == '\r' || (terminator == '\n' && !m_afterCarriageReturn))
            ++m_line;
        m_afterCarriageReturn = terminator == '\r';
    }

    QString m_path;
    CsvColumns& m_columns;
    csv_parser m_parser{};
    std::vector<std::string> m_fields;
    std::size_t m_count = 0;
    qint64 m_line = 1;
    qint64 m_recordLine = 1;
    bool m_afterCarriageReturn = false;
};

QByteArray readBlock(QIODevice& device, const QString& source)
{
    QByteArray block = device.read(blockSize);
    // A pipe or socket may have nothing yet without being at its end.
    while (block.isEmpty() && device.isSequential() && device.waitForReadyRead(readTimeout))
        block = device.read(blockSize);
    const auto* file = qobject_cast<const QFileDevice*>(&device);
    if (file && file->error() != QFileDevice::NoError)
        fail(QStringLiteral("%1: cannot read: %2").arg(source, device.errorString()));
    return block;
}

// The start of the file, without a byte-order mark: enough whole lines to guess its dialect from.
QByteArray readHead(QIODevice& device, const QString& source, bool& complete)
{
    QByteArray head = readBlock(device, source);
    if (head.startsWith("\xEF\xBB\xBF"))
        head.remove(0, 3);
    complete = head.isEmpty();
    while (!complete && head.count('\n') < headLines && head.size() < mostHead) {
        const QByteArray block = readBlock(device, source);
        complete = block.isEmpty();
        head += block;
    }
    return head;
}

// Feeds text to the parser, through the filter that turns runs of blanks into tabs when fields are so separated.
class DialectFeed {
public:
    DialectFeed(RecordFeed& feed, const CsvDialect& dialect)
        : m_feed(feed)
        , m_blankRuns(dialect.blankRuns)
    {
        m_feed.setSeparator(dialect.separator);
    }

    void feed(const QByteArray& text)
    {
        const QByteArray fed = m_blankRuns ? m_filter.apply(text) : text;
        m_feed.feed(fed.constData(), static_cast<std::size_t>(fed.size()));
    }

private:
    RecordFeed& m_feed;
    bool m_blankRuns;
    BlankRunFilter m_filter;
};

DataSet readDevice(QIODevice& device, const QString& source, const CsvOptions& options)
{
    if (!device.isOpen() && !device.open(QIODevice::ReadOnly))
        fail(QStringLiteral("%1: cannot read: %2").arg(source, device.errorString()));
    bool complete = false;
    QByteArray head = readHead(device, source, complete);
    const CsvDialect dialect = guessDialect(head, complete, options);
    blankCommentLines(head, dialect.commentLines);
    CsvColumns columns(source, options, dialect);
    RecordFeed records(source, columns);
    DialectFeed feed(records, dialect);
    feed.feed(head);
    for (QByteArray block = readBlock(device, source); !block.isEmpty(); block = readBlock(device, source))
        feed.feed(block);
    records.finish();
    return columns.finish(records.lastRecordLine());
}

CsvImport::Result resultOf(const std::function<DataSet()>& read)
{
    CsvImport::Result result;
    result.data = guarded(read, &result.error, DataSet());
    return result;
}

} // namespace

CsvImport::Result CsvImport::read(QIODevice& device, const QString& source, const CsvOptions& options)
{
    return resultOf([&] { return readDevice(device, source, options); });
}

CsvImport::Result CsvImport::read(const QString& path, const CsvOptions& options)
{
    return resultOf([&] {
        if (QFileInfo(path).isDir())
            fail(QStringLiteral("%1: is a directory, expected a CSV file").arg(path));
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            fail(QStringLiteral("%1: cannot read: %2").arg(path, file.errorString()));
        return readDevice(file, path, options);
    });
}

} // namespace Orv::Chart
