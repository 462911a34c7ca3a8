#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include "tools/decoding/examplecapture.h"

/// What a program printed, and how it ended.
struct ProgramRun
{
    int status = -1;
    QByteArray output;
    QByteArray errors;

    QList<QByteArray> lines() const { return output.split('\n').mid(0, output.count('\n')); }
};

inline ProgramRun runProgram(const QString &program, const QStringList &arguments,
                             const QByteArray &input = {})
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60'000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, process.readAllStandardOutput(), process.readAllStandardError()};
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

/// `padscope` with these arguments.
inline ProgramRun padscope(const QStringList &arguments, const QByteArray &input = {})
{
    return runProgram(QStringLiteral(PADSCOPE_PROGRAM), arguments, input);
}

/// Files that go with the test.
class Files
{
public:
    QString path(const char *name) const { return folder.filePath(QString::fromUtf8(name)); }

    QString write(const char *name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("%s cannot be written", name);
        return file.fileName();
    }

    /// All that are there, links to nowhere included.
    QStringList names() const
    {
        return QDir(folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    static QByteArray read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir folder;
};
