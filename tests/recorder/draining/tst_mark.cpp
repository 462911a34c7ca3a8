#include <csignal>
#include <fcntl.h>
#include <QFile>
#include <sys/syscall.h>
#include <unistd.h>

#include "recordedhost.h"
#include "recordedrun.h"
#include "recordreader.h"
#include "support/tests.h"

namespace {

QString idOf(const QProcess &process)
{
    return QString::number(process.processId());
}

QByteArray mark(const RecordedRun &run, const QStringList &text = {})
{
    return outputOf(PADSCOPE_FILE, QStringList{"mark", "--recorder", idOf(run.process)} + text);
}

/// Reports that no board sends by itself, and marks, in the order of their packets: "report", "mark pen
/// lifted".
QStringList orderIn(const QString &path)
{
    const int file = open(QFile::encodeName(path), O_RDONLY);
    capture::RecordReader reader(file);
    QStringList order;
    while (reader.next() == capture::pcapng::Event::Packet) {
        const capture::Record &record = reader.record();
        if (record.header.kindOf() == capture::Kind::Report && record.payload.text() == "\x06!!\"#$")
            order += "report";
        else if (record.header.kindOf() == capture::Kind::Mark)
            order += "mark " + QString::fromStdString(std::string(record.payload.text()));
    }
    close(file);
    return order;
}

/// Comments of the packets of marks.
QByteArray commentsIn(const QString &path)
{
    return outputOf("tshark", {"-r", path, "-Y", "frame.comment", "-T", "fields", "-e", "frame.comment"});
}

bool isInPoll(const QString &process)
{
    QFile call("/proc/" + process + "/syscall");
    return call.open(QFile::ReadOnly) && call.readAll().startsWith(QByteArray::number(SYS_poll) + ' ');
}

} // namespace

/// `padscope mark` and SIGUSR2 set marks in a recording that runs.
class MarkTests : public QObject
{
    Q_OBJECT

private slots:
    void marksAreRecorded();
    void theHostIsNotSignalled();
    void aMarkStandsWhereItWasAskedFor();
    void whoIsMeant();
    void nobodyRecords();
    void aRecorderThatDoesNotAnswer();
    void wrongText();
};

void MarkTests::marksAreRecorded()
{
    RecordedRun run;
    run.start({host, byName, "touch=ready", "until=end"}, {"--note", "board 3"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("ready")), 30'000);
    QCOMPARE(mark(run, {"pen l\xC3\xAF"
                        "fted"}),
             QByteArray("0\nmark 1\n"));
    QCOMPARE(mark(run), QByteArray("0\nmark 2\n"));
    QCOMPARE(mark(run, {"--", "--help"}), QByteArray("0\nmark 3\n"));
    run.touch("end");
    QCOMPARE(run.finish(), 0);
    QCOMPARE(run.facts().notes, (QStringList{"board 3",
                                             "pen l\xC3\xAF"
                                             "fted",
                                             "mark 2", "--help"}));
    QCOMPARE(run.errors(), QStringList());
    QVERIFY(commentsIn(run.file())
                .endsWith("\nboard 3\npen l\xC3\xAF"
                          "fted\nmark 2\n--help\n"));
    QCOMPARE(outputOf(PADSCOPE_FILE, {"check", run.file()}), QByteArray("0\n"));
}

/// Which has no handler for it.
void MarkTests::theHostIsNotSignalled()
{
    RecordedRun run;
    run.start({host, byName, "touch=ready", "until=end"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("ready")), 30'000);
    const auto recorder = static_cast<pid_t>(run.process.processId());
    QCOMPARE(kill(recorder, SIGUSR2), 0);
    QTRY_VERIFY_WITH_TIMEOUT(run.facts().notes.size() == 1, 30'000);
    QCOMPARE(kill(recorder, SIGUSR2), 0);
    QTRY_VERIFY_WITH_TIMEOUT(run.facts().notes.size() == 2, 30'000);
    run.touch("end");
    QCOMPARE(run.finish(), 0);
    QCOMPARE(run.facts().notes, (QStringList{"mark 1", "mark 2"}));
    QCOMPARE(int(run.facts().end->reason), 1);
}

/// However late the recorder comes to it.
void MarkTests::aMarkStandsWhereItWasAskedFor()
{
    RecordedRun run;
    run.start({host, byName, "plug=1001", "attach", "report=1001", "touch=ready", "until=first",
               "report=1001", "report=1001", "touch=second", "until=third", "report=1001", "touch=fourth",
               "until=end"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("ready")), 30'000);
    QTRY_VERIFY_WITH_TIMEOUT(orderIn(run.file()).size() == 1, 30'000);
    const auto recorder = static_cast<pid_t>(run.process.processId());
    QCOMPARE(kill(recorder, SIGSTOP), 0);
    run.touch("first");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("second")), 30'000);
    QProcess asking;
    asking.start(PADSCOPE_FILE, {"mark", "--recorder", idOf(run.process), "here"});
    // Its request is there when it waits for the answer.
    QVERIFY(asking.waitForStarted());
    QTRY_VERIFY_WITH_TIMEOUT(isInPoll(idOf(asking)), 4'000);
    run.touch("third");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("fourth")), 30'000);
    QCOMPARE(kill(recorder, SIGCONT), 0);
    QVERIFY(asking.waitForFinished(30'000));
    QCOMPARE(asking.readAllStandardOutput(), QByteArray("mark 1\n"));
    run.touch("end");
    QCOMPARE(run.finish(), 0);
    QCOMPARE(orderIn(run.file()), (QStringList{"report", "report", "report", "mark here", "report"}));
}

/// Others may record on this machine meanwhile.
void MarkTests::whoIsMeant()
{
    RecordedRun first;
    RecordedRun second;
    for (RecordedRun *run : {&first, &second}) {
        run->start({host, byName, "touch=ready", "until=end"});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run->path("ready")), 30'000);
    }
    const QByteArray several = outputOf(PADSCOPE_FILE, {"mark", "text"});
    QVERIFY2(several.startsWith("2\npadscope: several recordings run; --recorder takes one of "), several);
    for (const RecordedRun *run : {&first, &second})
        QVERIFY2(several.contains(idOf(run->process).toUtf8()), several);
    QCOMPARE(several.count('\n'), 2);
    const QByteArray wrong = outputOf(PADSCOPE_FILE, {"mark", "--recorder", "1", "text"});
    QVERIFY2(wrong.startsWith("2\npadscope: process 1 is no recorder of yours; these are: "), wrong);
    QCOMPARE(mark(second, {"second"}), QByteArray("0\nmark 1\n"));
    for (RecordedRun *run : {&first, &second}) {
        run->touch("end");
        QCOMPARE(run->finish(), 0);
    }
    QCOMPARE(first.facts().notes, QStringList());
    QCOMPARE(second.facts().notes, QStringList{"second"});
}

/// In a network namespace of its own, where nothing listens.
void MarkTests::nobodyRecords()
{
    if (!outputOf("unshare", {"-rn", "true"}).startsWith("0\n"))
        QSKIP("No network namespaces here.");
    QCOMPARE(outputOf("unshare", {"-rn", PADSCOPE_FILE, "mark", "text"}),
             QByteArray("2\npadscope: you have no recording that runs\n"));
}

void MarkTests::aRecorderThatDoesNotAnswer()
{
    RecordedRun run;
    run.start({host, byName, "touch=ready", "until=end"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("ready")), 30'000);
    const auto recorder = static_cast<pid_t>(run.process.processId());
    QCOMPARE(kill(recorder, SIGSTOP), 0);
    const QByteArray printed = mark(run);
    QCOMPARE(kill(recorder, SIGCONT), 0);
    QCOMPARE(printed, QByteArray("1\npadscope: the recorder, process ") + idOf(run.process).toUtf8() +
                          ", does not answer\n");
    run.touch("end");
    QCOMPARE(run.finish(), 0);
}

void MarkTests::wrongText()
{
    QCOMPARE(outputOf(PADSCOPE_FILE, {"mark", QString(65'496, 'a')}),
             QByteArray("2\npadscope: TEXT: a mark has at most 65495 bytes; see --help\n"));
    QCOMPARE(outputOf("sh", {"-c", "$0 mark $(printf '\\377')", PADSCOPE_FILE}),
             QByteArray("2\npadscope: TEXT: a mark is UTF-8; see --help\n"));
}

PADSCOPE_TESTS(MarkTests);
#include "tst_mark.moc"
