#include <algorithm>
#include <csignal>
#include <cstring>
#include <QDir>
#include <QFile>

#include "recordedhost.h"
#include "recordedrun.h"
#include "support/tests.h"

namespace {

/// More rounds in a longer run.
int rounds()
{
    const int set = qEnvironmentVariableIntValue("PADSCOPE_ROUNDS");
    return set > 0 ? set : 2;
}

/// What the host has counted, board by board, behind each of its callbacks.
std::vector<unsigned> countsIn(const QString &path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return {};
    const QByteArray bytes = file.readAll();
    std::vector<unsigned> counts(static_cast<std::size_t>(bytes.size()) / sizeof(unsigned));
    std::memcpy(counts.data(), bytes.constData(), counts.size() * sizeof(unsigned));
    return counts;
}

/// Inode of the ring that a process maps; empty when it maps none.
QByteArray ringOf(const QString &process)
{
    QFile maps("/proc/" + process + "/maps");
    if (!maps.open(QFile::ReadOnly))
        return {};
    const QList<QByteArray> lines = maps.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.contains("memfd:padscope"))
            return line.simplified().split(' ').at(4);
    }
    return {};
}

bool isMapped(const QByteArray &ring)
{
    const QStringList processes = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
    return std::any_of(processes.begin(), processes.end(),
                       [&ring](const QString &process) { return ringOf(process) == ring; });
}

} // namespace

/// What is left when the host or the recorder is killed.
class EndsTests : public QObject
{
    Q_OBJECT

private slots:
    void aKilledHostLosesNothing();
    void theCallInProgressIsSeen();
    void theHostOutlivesTheRecorder();
};

void EndsTests::aKilledHostLosesNothing()
{
    for (int round = 0; round < rounds(); ++round) {
        RecordedRun run;
        run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
        QCOMPARE(run.run({host, byName, "count=" + run.path("counts"), "attach",
                          QString("delivered=%1").arg(1000 + 37 * round), "raise=9"}),
                 137);
        const CaptureFacts facts = run.facts();
        const std::vector<unsigned> counts = countsIn(run.path("counts"));
        unsigned counted = 0;
        for (int board = 1001; board <= 1008; ++board) {
            const unsigned returned = counts.at(static_cast<std::size_t>(board));
            const std::uint64_t recorded = facts.reports.at(board);
            // One callback of each board may not have returned.
            QVERIFY2(recorded == returned || recorded == returned + 1, qPrintable(QString::number(board)));
            counted += returned;
        }
        QVERIFY(counted >= 1000);
        QVERIFY(facts.isWhole && facts.end);
        QCOMPARE(int(facts.end->reason), 2);
        QCOMPARE(facts.end->value, 9);
        QVERIFY(outputOf(PADSCOPE_FILE, {"info", run.file()}).contains("signal 9"));
        // A callback that it was killed in may be lost.
        const QByteArray checked = outputOf(PADSCOPE_FILE, {"check", run.file()});
        QVERIFY2(checked.startsWith(facts.lost > 0 ? "3\n" : "0\n"), checked);
    }
}

void EndsTests::theCallInProgressIsSeen()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "slow-command");
    run.start({"sh", "-c", "echo $$ >id; exec $0 $1 attach command=?", host, byName});
    QTRY_VERIFY_WITH_TIMEOUT(run.hasFile() && run.facts().calls.endsWith("6"), 30'000);
    QCOMPARE(kill(run.number("id"), SIGKILL), 0);
    QCOMPARE(run.finish(), 137);
    QCOMPARE(run.facts().calls.last(), QString("6"));
    QVERIFY(outputOf(PADSCOPE_FILE, {"info", run.file()}).contains("orvexSendCommand"));
}

void EndsTests::theHostOutlivesTheRecorder()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
    run.start({host, byName, "attach", "touch=attached", "until=end", "detach", "touch=gone-on"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("attached")), 30'000);
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(run.file()).size() > 100'000, 30'000);
    const QByteArray ring = ringOf(QString::number(run.process.processId()));
    QVERIFY(!ring.isEmpty() && isMapped(ring));
    QCOMPARE(kill(static_cast<pid_t>(run.process.processId()), SIGKILL), 0);
    run.touch("end");
    QCOMPARE(run.finish(), 137);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("gone-on")), 30'000);
    QTRY_VERIFY_WITH_TIMEOUT(!isMapped(ring), 30'000);
    QCOMPARE(QDir("/dev/shm").entryList({"*padscope*"}), QStringList());
    const QString repaired = run.path("repaired.pcapng");
    // There is no clean end.
    QVERIFY(outputOf(PADSCOPE_FILE, {"check", run.file(), "--repair", repaired}).startsWith("3\n"));
    QVERIFY(factsOf(repaired).isWhole);
    QVERIFY(factsOf(repaired).packets > 100);
    const QByteArray listed = outputOf("tshark", {"-r", repaired, "-c", "10"});
    QVERIFY2(listed.startsWith("0\n"), listed);
}

PADSCOPE_TESTS(EndsTests);
#include "tst_ends.moc"
