#include "CsvImport.h"

#include "CsvColumns_p.h"
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
constexpr int readTimeout = 30000;

// Counts line ends in text, a CR LF pair as one.
qint64 lineBreaks(const char* text, std::size_t size)
{
    qint64 count = 0;
    for (std::size_t i = 0; i < size; ++i)
        count += text[i] == '\n' || (text[i] == '\r' && (i + 1 == size || text[i + 1] != '\n'));
    return count;
}

// The separator the header line holds most often outside quotes: comma, semicolon or tab, in that order
// on a tie. Nothing while the header line has not ended within `text` and more may follow.
std::optional<char> separatorOf(const QByteArray& text, bool atEnd)
{
    static constexpr std::array<char, 3> candidates = {',', ';', '\t'};
    std::array<int, 3> counts{};
    bool quoted = false;
    bool blank = true;
    int i = 0;
    for (; i < text.size(); ++i) {
        const char c = text[i];
        quoted = quoted != (c == '"');
        if (quoted)
            continue;
        if ((c == '\n' || c == '\r') && !blank)
            break;
        blank = blank && (c == ' ' || c == '\n' || c == '\r');
        for (std::size_t k = 0; k < candidates.size(); ++k)
            counts[k] += c == candidates[k];
    }
    if (i == text.size() && !atEnd)
        return std::nullopt;
    std::size_t best = 0;
    for (std::size_t k = 1; k < candidates.size(); ++k)
        if (counts[k] > counts[best])
            best = k;
    return candidates[best];
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

// The start of the file up to the end of its header line (or all of it), without a byte-order mark.
QByteArray readHead(QIODevice& device, const QString& source, char& separator)
{
    QByteArray head = readBlock(device, source);
    if (head.startsWith("\xEF\xBB\xBF"))
        head.remove(0, 3);
    for (QByteArray block = head;; head += block) {
        if (const std::optional<char> found = separatorOf(head, block.isEmpty())) {
            separator = *found;
            return head;
        }
        block = readBlock(device, source);
    }
}

DataSet readDevice(QIODevice& device, const QString& source, const CsvOptions& options)
{
    if (!device.isOpen() && !device.open(QIODevice::ReadOnly))
        fail(QStringLiteral("%1: cannot read: %2").arg(source, device.errorString()));
    CsvColumns columns(source, options);
    RecordFeed feed(source, columns);
    char separator = ',';
    const QByteArray head = readHead(device, source, separator);
    feed.setSeparator(separator);
    feed.feed(head.constData(), static_cast<std::size_t>(head.size()));
    for (QByteArray block = readBlock(device, source); !block.isEmpty(); block = readBlock(device, source))
        feed.feed(block.constData(), static_cast<std::size_t>(block.size()));
    feed.finish();
    return columns.finish(feed.lastRecordLine());
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
