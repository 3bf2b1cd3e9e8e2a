#pragma once
// A temporary folder for one test: files a test writes for the code under test
// to read, or that the code writes for the test to check. Make it a member of
// the fixture or a local of the test; the folder and everything in it go when
// it is destroyed. Failing to create, write or read fails the running test.

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace OrvTest {

class TempFolder {
public:
    TempFolder();

    bool isValid() const { return dir_.isValid(); }
    QString path() const { return dir_.path(); }
    // The path of `name` inside the folder; `name` may hold subfolders ("in/a.csv").
    QString path(const QString& name) const { return dir_.filePath(name); }

    // Writes `bytes` to `name`, creating the subfolders it names; returns the path.
    QString write(const QString& name, const QByteArray& bytes) const;
    QByteArray read(const QString& name) const;

private:
    QTemporaryDir dir_;
};

} // namespace OrvTest
