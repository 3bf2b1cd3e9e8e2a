#pragma once
// Reading whole input files and writing output files safely: an output is
// written to a temporary file beside its target and renamed over it only when
// complete, so a failed run never leaves a half-written file behind. Faults
// throw a Failure naming the file.

#include <QByteArray>
#include <QSaveFile>
#include <QString>

namespace Orv::Chart {

QByteArray readFile(const QString& path);
void writeFile(const QString& path, const QByteArray& bytes);

// An output file open for writing; `commit` puts it in place, and destruction
// without a commit leaves the target as it was.
class OutputFile {
public:
    explicit OutputFile(const QString& path);
    QIODevice& device() { return m_file; }
    void commit();

private:
    QSaveFile m_file;
};

} // namespace Orv::Chart
