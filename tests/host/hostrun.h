#pragma once

#include <QDebug>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>

/// How a run of the host ended and what it printed.
struct Run
{
    int status = -1;
    QString output;
    QStringList errors;
};

/// Lines on standard error that the host wrote, not the platform's plugins.
inline QStringList hostLines(const QByteArray &text)
{
    QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    return lines.filter(QRegularExpression(QStringLiteral("^tendro-host: ")));
}

inline Run run(const QStringList &arguments, const QProcessEnvironment &environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(TENDRO_HOST), arguments);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        qWarning() << process.errorString() << process.readAllStandardError();
        return {};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            hostLines(process.readAllStandardError())};
}

inline Run run(const QStringList &arguments)
{
    return run(arguments, QProcessEnvironment::systemEnvironment());
}
