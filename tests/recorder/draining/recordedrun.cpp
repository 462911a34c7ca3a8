#include "recordedrun.h"

#include <fcntl.h>
#include <QFile>
#include <QTest>
#include <unistd.h>

#include "recordreader.h"

namespace {

int statusOf(const QProcess &process)
{
    return process.exitStatus() == QProcess::CrashExit ? 128 + process.exitCode() : process.exitCode();
}

void follow(CaptureFacts &facts, const capture::Record &record)
{
    ++facts.packets;
    facts.lost += record.header.lost;
    facts.dropCount += record.dropCount;
    switch (record.header.kindOf()) {
    case capture::Kind::Report:
        ++facts.reports[record.header.board];
        break;
    case capture::Kind::Call:
        facts.calls += QString::number(record.header.call);
        break;
    case capture::Kind::Return:
        facts.calls += QStringLiteral("return %1").arg(record.header.call);
        break;
    case capture::Kind::Mark:
        facts.notes += QString::fromStdString(std::string(record.payload.text()));
        break;
    case capture::Kind::End:
        facts.end = capture::endOf(record.payload);
        break;
    default:
        break;
    }
}

} // namespace

std::uint64_t CaptureFacts::lostAtEnd() const
{
    std::uint64_t sum = 0;
    for (const capture::BoardCounts &board : end->boards)
        sum += board.lost;
    return sum;
}

CaptureFacts factsOf(const QString &file)
{
    CaptureFacts facts;
    const int descriptor = open(QFile::encodeName(file), O_RDONLY);
    capture::RecordReader reader(descriptor);
    capture::pcapng::Event event = reader.next();
    for (; event == capture::pcapng::Event::Packet; event = reader.next())
        follow(facts, reader.record());
    facts.isWhole = event == capture::pcapng::Event::End && !reader.file().endsWithinBlock();
    for (const capture::pcapng::Interface &interface : reader.file().interfaces())
        facts.interfaces += QString::fromStdString(interface.name);
    close(descriptor);
    return facts;
}

QByteArray outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(60'000))
        return "did not end";
    return QByteArray::number(statusOf(process)) + '\n' + process.readAll();
}

RecordedRun::RecordedRun()
{
    environment.insert("LD_LIBRARY_PATH", SIMULATOR_FOLDER);
    environment.insert("ORVEXSIM_SCENARIO", "no-boards");
}

void RecordedRun::start(const QStringList &program, const QStringList &options)
{
    startAlone(QStringList{PADSCOPE_FILE, "record", "-o", file()} + options + QStringList{"--"} + program);
}

int RecordedRun::finish()
{
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(60'000))
        return -1;
    standardOutput = process.readAllStandardOutput();
    standardError = process.readAllStandardError();
    return statusOf(process);
}

void RecordedRun::startAlone(const QStringList &command)
{
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder.path());
    process.start(command.first(), command.mid(1));
    QVERIFY(process.waitForStarted());
}

void RecordedRun::preload(const QString &library)
{
    environment.insert("LD_PRELOAD", library);
    // Which would have to come first.
    const QString options = environment.value("ASAN_OPTIONS");
    environment.insert("ASAN_OPTIONS", options + ":verify_asan_link_order=0");
}

int RecordedRun::number(const QString &name) const
{
    QFile file(path(name));
    return file.open(QFile::ReadOnly) ? file.readAll().trimmed().toInt() : 0;
}

void RecordedRun::touch(const QString &name) const
{
    QFile made(path(name));
    QVERIFY(made.open(QFile::WriteOnly));
}

bool RecordedRun::hasFile() const
{
    return QFile::exists(file());
}

CaptureFacts RecordedRun::facts() const
{
    return factsOf(file());
}

QStringList RecordedRun::lines(const QByteArray &text)
{
    QStringList all = QString::fromUtf8(text).split('\n');
    if (all.last().isEmpty())
        all.removeLast();
    return all;
}
