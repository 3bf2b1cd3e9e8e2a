#include "Files_p.h"

#include "Fault_p.h"

#include <QFile>
#include <QFileInfo>

namespace Orv::Chart {

QByteArray readFile(const QString& path)
{
    if (QFileInfo(path).isDir())
        fail(QStringLiteral("%1: is a directory, expected a file").arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        fail(QStringLiteral("%1: cannot read: %2").arg(path, file.errorString()));
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        fail(QStringLiteral("%1: cannot read: %2").arg(path, file.errorString()));
    return bytes;
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    OutputFile file(path);
    if (file.device().write(bytes) != bytes.size())
        fail(QStringLiteral("%1: cannot write: %2").arg(path, file.device().errorString()));
    file.commit();
}

OutputFile::OutputFile(const QString& path)
    : m_file(path)
{
    if (!m_file.open(QIODevice::WriteOnly))
        fail(QStringLiteral("%1: cannot write: %2").arg(path, m_file.errorString()));
}

void OutputFile::commit()
{
    if (!m_file.commit())
        fail(QStringLiteral("%1: cannot write: %2").arg(m_file.fileName(), m_file.errorString()));
}

} // namespace Orv::Chart
