#include "shark.h"

#include <QFile>
#include <QProcess>
#include <QTest>

#include "capture/blocks.h"

QByteArray outputOf(const QString &program, const QStringList &arguments, int otherStatus)
{
    QProcess process;
    process.start(program, arguments);
    const bool hasFinished = process.waitForFinished(60'000) && process.exitStatus() == QProcess::NormalExit;
    const int status = process.exitCode();
    if (!hasFinished || (status != 0 && status != otherStatus))
        QTest::qFail(qPrintable(program + ": status " + QString::number(status)), __FILE__, __LINE__);
    const QByteArray errors = process.readAllStandardError();
    for (const QByteArray &line : errors.split('\n')) {
        if (!line.isEmpty() && !line.startsWith("Running as user \"root\"") &&
            !line.startsWith("This plugin does not support"))
            QTest::qFail(line.constData(), __FILE__, __LINE__);
    }
    return process.readAllStandardOutput();
}

Shark::Shark()
{
    QFile file(dissector());
    if (!file.open(QIODevice::WriteOnly))
        qFatal("the dissector cannot be written");
    file.write(outputOf(QStringLiteral(PADSCOPE), {QStringLiteral("dissector")}));
}

void Shark::write(const QList<QByteArray> &packets)
{
    QFile file(capture());
    if (!file.open(QIODevice::WriteOnly))
        qFatal("the capture cannot be written");
    file.write(blocks::section() + blocks::interface("driver"));
    quint64 time = 1'700'000'000'000'000'000;
    for (const QByteArray &packet : packets)
        file.write(blocks::packet(time += 1'000'000, packet));
}

QByteArray Shark::output(const QStringList &arguments) const
{
    return outputOf(QStringLiteral("tshark"),
                    QStringList{"-X", "lua_script:" + dissector(), "-r", capture()} + arguments);
}

QList<QStringList> Shark::fields(const QStringList &names, const QStringList &arguments) const
{
    QStringList all = QStringList{"-T", "fields", "-E", "separator=\x1F"} + arguments;
    for (const QString &name : names)
        all += {"-e", name};
    QList<QStringList> packets;
    for (const QString &line : QString::fromUtf8(output(all)).chopped(1).split('\n'))
        packets += line.split('\x1F');
    return packets;
}

QList<QStringList> Shark::trees() const
{
    QList<QStringList> trees;
    for (const QString &line : QString::fromUtf8(output({"-V"})).split('\n', Qt::SkipEmptyParts)) {
        if (line.startsWith("Frame "))
            trees += QStringList();
        else if (!line.startsWith(' ') || !trees.last().isEmpty())
            trees.last() += line;
    }
    return trees;
}
