#include "TempFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace OrvTest {

namespace {

// The folder is named after the running test, so that one left behind by a
// crash tells whose it was.
QString folderTemplate()
{
    QString test = QStringLiteral("orv-test");
    if (const ::testing::TestInfo* info = ::testing::UnitTest::GetInstance()->current_test_info())
        test = QString::fromStdString(std::string(info->test_suite_name()) + '.' + info->name());
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9_.-]+"));
    return QDir::tempPath() + QLatin1Char('/') + test.replace(unsafe, QStringLiteral("_")) + QStringLiteral("-XXXXXX");
}

} // namespace

TempFolder::TempFolder()
    : dir_(folderTemplate())
{
    if (!dir_.isValid())
        ADD_FAILURE() << "cannot create a temporary folder: " << dir_.errorString().toStdString();
}

QString TempFolder::write(const QString& name, const QByteArray& bytes) const
{
    const QString file = path(name);
    QFile out(file);
    if (!QDir().mkpath(QFileInfo(file).absolutePath()) || !out.open(QIODevice::WriteOnly)
        || out.write(bytes) != bytes.size())
        ADD_FAILURE() << "cannot write " << file.toStdString();
    return file;
}

QByteArray TempFolder::read(const QString& name) const
{
    QFile in(path(name));
    if (!in.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot read " << in.fileName().toStdString();
        return QByteArray();
    }
    return in.readAll();
}

} // namespace OrvTest
