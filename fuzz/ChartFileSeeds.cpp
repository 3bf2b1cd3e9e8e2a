// Writes the seed corpus of the chart file target into the given folder: a
// new element of every class the registry knows, each saved as a host saves
// it, compacted to keep the seeds small. (The sample chart's seed was written
// by kelchart --save.)
//
//   chart_file_seeds <folder>

#include "ChartFile.h"
#include "ElementClasses.h"

#include <QDir>
#include <QFile>
#include <QJsonDocument>

#include <cstdio>

namespace {

bool writeSeed(const QDir& folder, const QString& name, const KelProperties& root)
{
    QFile file(folder.filePath(name + QStringLiteral(".json")));
    const QByteArray json = QJsonDocument::fromJson(Orv::Chart::ChartFile::toJson(root)).toJson(QJsonDocument::Compact);
    return file.open(QIODevice::WriteOnly) && file.write(json) == json.size();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <folder>\n", argv[0]);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    KelModifiedGroup group;
    bool written = true;
    for (const QString& type : Orv::Chart::ElementClasses::types())
        written = writeSeed(folder, type, *Orv::Chart::ElementClasses::make(type, group)) && written;
    return written ? 0 : 1;
}
