#pragma once
// Rows of a table read line by line from a file descriptor: standard input,
// a named pipe, or a file that a program appends to.
//
// The thread gathers the head (the first `headLines` lines, or what came
// within `headWait` of the first byte, at least a header and a row) and reads
// it as a CSV file would be read (CsvLines). After that it reads what the
// descriptor has, waiting in blocking polls, and hands the complete lines to
// CsvLines and their rows to the feed at most every `batchInterval`, so that
// a fast writer is read in large batches and a slow one with little delay.
//
// Standard input ends the stream when it closes. A named pipe or a file is
// followed until the window closes: when it has nothing more, the source
// waits for a writer to add to it, as `tail -f` does. The writers of a pipe
// may come and go; a line that one leaves without its line break ends there.

#include "LiveSource.h"

#include <QByteArray>

namespace kelview {

class LineSource final : public LiveSource {
public:
    static constexpr int headLines = 20;
    static constexpr std::chrono::milliseconds headWait{200};
    static constexpr std::chrono::milliseconds batchInterval{10};

    // What the end of what the descriptor holds means.
    enum class AtEnd { Stop, Wait };

    // Reads `fd`, and closes it at the end when `owned`; `name` names it in messages.
    LineSource(int fd, bool owned, const QString& name, AtEnd atEnd);
    // A named pipe or file, followed; one that does not open throws a kelchart::Failure.
    static std::unique_ptr<LineSource> open(const QString& path);
    ~LineSource() override;

    QString name() const override { return m_name; }
    QStringList bind(KelChartVariableList& variables, const Orv::Chart::AxisPairs& pairs) override;

private:
    enum class Read { Some, None, WriterGone, End, Fault };
    enum class Head { Started, Waiting, Failed };

    void run() override;
    bool readHead();
    Head startTable(bool ended);
    void readRows();
    void passOnAll();
    void passOn(std::vector<Items> rows);
    Read readAvailable(std::chrono::milliseconds wait);

    int m_fd;
    bool m_owned;
    QString m_name;
    AtEnd m_atEnd;
    bool m_pipe;
    std::unique_ptr<Orv::Chart::CsvLines> m_lines;
    // Text read but not yet handed to the table.
    QByteArray m_text;
};

} // namespace kelview
