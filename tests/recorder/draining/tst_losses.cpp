#include <csignal>
#include <QFile>
#include <sys/resource.h>

#include "recordedhost.h"
#include "recordedrun.h"
#include "support/tests.h"

namespace {

/// Steps of a host under a flood from eight boards: from the file "go" on it waits for so many reports, then
/// for the file "end".
QStringList floodFor(int reports)
{
    const QString delivered = QString("delivered=%1").arg(reports);
    return {host,      byName,          "attach",    "touch=attached", "until=go",
            delivered, "touch=flooded", "until=end", "detach",         "counts"};
}

/// A longer run counts for longer.
bool isLongRun()
{
    return qEnvironmentVariableIntValue("PADSCOPE_ROUNDS") > 0;
}

/// How long the recorder is stopped, or a flood lasts at least.
void waitMs(int ms)
{
    QTest::qWait(ms); // the time is the subject
}

/// Those of the lines "board 1001 123" that the simulator counts.
std::map<std::int32_t, std::uint64_t> deliveredIn(const QStringList &output)
{
    std::map<std::int32_t, std::uint64_t> delivered;
    for (const QString &line : output.filter("board "))
        delivered[line.section(' ', 1, 1).toInt()] = line.section(' ', 2, 2).toULongLong();
    return delivered;
}

} // namespace

/// What was recorded and what was lost is what was delivered, board by board.
class LossesTests : public QObject
{
    Q_OBJECT

private slots:
    void aFloodIsRecordedWhole();
    void nothingIsLostWhileTheRecorderIsStopped();
    void aSmallRingLosesAndCounts();
    void aFullDiskIsALoss();

private:
    /// \return of all boards
    static std::uint64_t deliveredWhenCounted(const RecordedRun &run, const CaptureFacts &facts);
};

std::uint64_t LossesTests::deliveredWhenCounted(const RecordedRun &run, const CaptureFacts &facts)
{
    const auto delivered = deliveredIn(run.output());
    std::uint64_t sum = 0;
    if (!facts.end || facts.end->boards.size() != delivered.size())
        return 0;
    for (const capture::BoardCounts &board : facts.end->boards) {
        const auto recorded = facts.reports.find(board.board);
        const std::uint64_t inFile = recorded == facts.reports.end() ? 0 : recorded->second;
        const bool isRight = board.recorded == inFile && board.recorded + board.lost == board.delivered &&
                             delivered.count(board.board) > 0 && delivered.at(board.board) == board.delivered;
        if (!isRight)
            return 0;
        sum += board.delivered;
    }
    return sum;
}

void LossesTests::aFloodIsRecordedWhole()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
    run.start(floodFor(2000));
    run.touch("go");
    waitMs(isLongRun() ? 5000 : 0);
    run.touch("end");
    QCOMPARE(run.finish(), 0);
    const CaptureFacts facts = run.facts();
    QVERIFY(facts.isWhole);
    QCOMPARE(facts.reports.size(), std::size_t{8});
    QVERIFY(deliveredWhenCounted(run, facts) >= 2000);
    QCOMPARE(facts.lost, std::uint64_t{0});
    QCOMPARE(facts.interfaces, (QStringList{"driver", "board 1001", "board 1002", "board 1003", "board 1004",
                                            "board 1005", "board 1006", "board 1007", "board 1008"}));
}

void LossesTests::nothingIsLostWhileTheRecorderIsStopped()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
    run.start(floodFor(2000));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("attached")), 30'000);
    const auto recorder = static_cast<pid_t>(run.process.processId());
    QCOMPARE(kill(recorder, SIGSTOP), 0);
    run.touch("go");
    waitMs(1000);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("flooded")), 30'000);
    QCOMPARE(kill(recorder, SIGCONT), 0);
    run.touch("end");
    QCOMPARE(run.finish(), 0);
    const CaptureFacts facts = run.facts();
    QVERIFY(deliveredWhenCounted(run, facts) >= 2000);
    QCOMPARE(facts.lost, std::uint64_t{0});
}

void LossesTests::aSmallRingLosesAndCounts()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
    run.start(floodFor(3000), {"--ring", "64K"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("attached")), 30'000);
    const auto recorder = static_cast<pid_t>(run.process.processId());
    QCOMPARE(kill(recorder, SIGSTOP), 0);
    run.touch("go");
    // The ring has room for at most 1024 reports.
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("flooded")), 30'000);
    QCOMPARE(kill(recorder, SIGCONT), 0);
    waitMs(isLongRun() ? 4000 : 0);
    run.touch("end");
    QCOMPARE(run.finish(), 0);
    const CaptureFacts facts = run.facts();
    QVERIFY(deliveredWhenCounted(run, facts) >= 3000);
    QVERIFY(facts.lost > 1000);
    QCOMPARE(facts.dropCount, facts.lost);
    QCOMPARE(facts.lostAtEnd(), facts.lost);
    QCOMPARE(facts.end->lost, std::optional<std::uint64_t>(facts.lost));
    QVERIFY(outputOf(PADSCOPE_FILE, {"check", run.file()}).startsWith("3\n"));
    QCOMPARE(run.errors(), QStringList{"padscope: lost reports and calls: " + QString::number(facts.lost)});
}

/// A limit of the recorder's files stands for the disk.
void LossesTests::aFullDiskIsALoss()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
    run.start(floodFor(3000));
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("attached")), 30'000);
    const rlimit limit{64 * 1024, RLIM_INFINITY};
    QCOMPARE(prlimit(static_cast<pid_t>(run.process.processId()), RLIMIT_FSIZE, &limit, nullptr), 0);
    run.touch("go");
    run.touch("end");
    QCOMPARE(run.finish(), 1);
    QCOMPARE(run.errors().size(), 2);
    QCOMPARE(run.errors().first(), "padscope: " + run.file() + ": File too large");
    QVERIFY(deliveredIn(run.output()).at(1001) > 100);
    const CaptureFacts facts = run.facts();
    QVERIFY(facts.isWhole);
    QVERIFY(facts.packets > 100);
    QVERIFY(!facts.end);
}

PADSCOPE_TESTS(LossesTests);
#include "tst_losses.moc"
