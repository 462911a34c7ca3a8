#pragma once

#include <QProcess>
#include <QString>

/// How a program ended and what it printed.
struct ChildRun
{
    int status = -1; ///< -1 when it crashed, hung or did not start
    QByteArray output;
    QByteArray errors;
};

inline ChildRun runChild(const QString &program, const QStringList &arguments,
                         const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    const bool ended = process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}
