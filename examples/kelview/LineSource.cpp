#include "LineSource.h"

#include "Failure.h"

#include <QFile>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelview {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int chunkSize = 1 << 16;
// How long a followed pipe or file without news is left before it is asked again.
constexpr std::chrono::milliseconds followPause{20};

// Where the `count`-th line ends (after its line break), or -1 when fewer lines are held.
int endOfLine(const QByteArray& text, int count)
{
    int end = 0;
    for (int n = 0; n < count && end >= 0; ++n) {
        end = text.indexOf('\n', end);
        end = end < 0 ? -1 : end + 1;
    }
    return end;
}

bool isPipe(int fd)
{
    struct stat status = {};
    return ::fstat(fd, &status) == 0 && S_ISFIFO(status.st_mode);
}

} // namespace

LineSource::LineSource(int fd, bool owned, const QString& name, AtEnd atEnd)
    : m_fd(fd)
    , m_owned(owned)
    , m_name(name)
    , m_atEnd(atEnd)
    , m_pipe(isPipe(fd))
{
}

// Without blocking: a named pipe would otherwise hold the window until a writer opens it.
std::unique_ptr<LineSource> LineSource::open(const QString& path)
{
    const int fd = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0)
        throw kelchart::Failure(
            QStringLiteral("%1: cannot read: %2").arg(path, QString::fromLocal8Bit(std::strerror(errno))));
    return std::make_unique<LineSource>(fd, true, path, AtEnd::Wait);
}

LineSource::~LineSource()
{
    stop();
    if (m_owned)
        ::close(m_fd);
}

QStringList LineSource::bind(KelChartVariableList& variables, const Orv::Chart::AxisPairs& pairs)
{
    Orv::Chart::CsvLines::Bound bound = m_lines->bind(variables, pairs);
    keepForFeed(std::move(bound.head));
    return bound.unbound;
}

void LineSource::run()
{
    if (!readHead() || !waitForFeed())
        return;
    readRows();
}

// Gathers lines until the table is known: a header and at least a row.
bool LineSource::readHead()
{
    Clock::time_point firstByte;
    int tried = 0;
    while (!stopping()) {
        const Read read = readAvailable(std::chrono::milliseconds(50));
        if (read == Read::Fault)
            return false;
        if (read == Read::End && m_text.trimmed().isEmpty()) {
            Q_EMIT failed(QStringLiteral("%1 ended before a table arrived").arg(m_name));
            return false;
        }
        if (read == Read::Some && firstByte == Clock::time_point())
            firstByte = Clock::now();
        const int lines = m_text.count('\n');
        const bool due = lines >= headLines || (lines > 0 && Clock::now() - firstByte >= headWait);
        if (read == Read::End || (due && lines > tried)) {
            tried = lines;
            const Head head = startTable(read == Read::End);
            if (head != Head::Waiting)
                return head == Head::Started;
        }
    }
    return false;
}

// The first `headLines` lines settle the table; the rest waits for the feed. A head that does not settle it
// yet (a header alone) waits for more lines, unless no more will come.
LineSource::Head LineSource::startTable(bool ended)
{
    if (ended && !m_text.endsWith('\n'))
        m_text += '\n';
    const int end = endOfLine(m_text, headLines);
    const int cut = end < 0 ? m_text.size() : end;
    auto lines = std::make_unique<Orv::Chart::CsvLines>(m_name);
    const Orv::Chart::CsvImport::Result started = lines->start(m_text.left(cut));
    if (!started.ok() && !ended && end < 0)
        return Head::Waiting;
    if (!started.ok()) {
        Q_EMIT failed(started.error.message);
        return Head::Failed;
    }
    m_text.remove(0, cut);
    m_lines = std::move(lines);
    tellReady(started.data);
    return Head::Started;
}

void LineSource::readRows()
{
    Clock::time_point lastBatch = Clock::now();
    while (!stopping()) {
        const Read read = readAvailable(batchInterval);
        if (read == Read::Fault)
            return;
        if (read == Read::End || read == Read::WriterGone)
            passOnAll();
        if (read == Read::End) {
            Q_EMIT ended(QStringLiteral("%1 ended: the chart shows the %2 row(s) that arrived")
                             .arg(m_name)
                             .arg(m_lines->rowsRead()));
            return;
        }
        if (!m_text.isEmpty() && Clock::now() - lastBatch >= batchInterval) {
            passOn(m_lines->read(m_text));
            m_text.clear();
            lastBatch = Clock::now();
        }
    }
}

// The text held, its last line too, though it has no line break.
void LineSource::passOnAll()
{
    passOn(m_lines->read(m_text));
    passOn(m_lines->finish());
    m_text.clear();
}

void LineSource::passOn(std::vector<Items> rows)
{
    post(std::move(rows));
    for (const QString& note : m_lines->takeNotes())
        Q_EMIT remark(note);
}

// What the descriptor has within `wait`. Standard input blocks: poll says when a read will not.
LineSource::Read LineSource::readAvailable(std::chrono::milliseconds wait)
{
    pollfd watched{m_fd, POLLIN, 0};
    const int polled = ::poll(&watched, 1, static_cast<int>(wait.count()));
    if (polled <= 0)
        return Read::None;
    char chunk[chunkSize];
    const ssize_t got = ::read(m_fd, chunk, sizeof chunk);
    if (got > 0) {
        m_text.append(chunk, static_cast<int>(got));
        return Read::Some;
    }
    if (got < 0 && (errno == EAGAIN || errno == EINTR))
        return Read::None;
    if (got < 0) {
        Q_EMIT failed(QStringLiteral("%1: cannot read: %2").arg(m_name, QString::fromLocal8Bit(std::strerror(errno))));
        return Read::Fault;
    }
    if (m_atEnd == AtEnd::Stop)
        return Read::End;
    pause(followPause);
    return m_pipe ? Read::WriterGone : Read::None;
}

} // namespace kelview
