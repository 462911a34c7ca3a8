#include <csignal>
#include <QFile>

#include "recordedhost.h"
#include "recordedrun.h"
#include "support/tests.h"

/// A disk that is slow, or full for a moment.
class PoorDiskTests : public QObject
{
    Q_OBJECT

private slots:
    void noFileWithoutItsHead_data();
    void noFileWithoutItsHead();
    void aFullDiskForAMomentIsALoss();
    void aSlowDiskDelaysNoSignal();
};

void PoorDiskTests::noFileWithoutItsHead_data()
{
    addColumns<QString>("write");
    addRow("section", QString("1"));
    addRow("interface", QString("2"));
}

/// The host is not started.
void PoorDiskTests::noFileWithoutItsHead()
{
    QFETCH(QString, write);
    RecordedRun run;
    run.preload(POOR_DISK);
    run.setEnvironment("FAILED_WRITE", write);
    QCOMPARE(run.run({host, byName, "touch=started"}), 1);
    QCOMPARE(run.errors(), QStringList{"padscope: " + run.file() + ": No space left on device"});
    QVERIFY(!run.hasFile());
    QVERIFY(!QFile::exists(run.path("started")));
}

void PoorDiskTests::aFullDiskForAMomentIsALoss()
{
    RecordedRun run;
    run.preload(POOR_DISK);
    run.setEnvironment("FAILED_WRITE", "3");
    QCOMPARE(run.run({host, byName, "attach", "detach"}), 1);
    const CaptureFacts facts = run.facts();
    QVERIFY(facts.isWhole && facts.end);
    QVERIFY(facts.lost > 0);
    QCOMPARE(facts.dropCount, facts.lost);
    QCOMPARE(run.errors(), (QStringList{"padscope: " + run.file() + ": No space left on device",
                                        "padscope: lost reports and calls: " + QString::number(facts.lost)}));
    QVERIFY(outputOf(PADSCOPE_FILE, {"check", run.file()}).startsWith("3\n"));
}

/// The ring is never empty meanwhile.
void PoorDiskTests::aSlowDiskDelaysNoSignal()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
    run.preload(POOR_DISK);
    run.setEnvironment("WRITE_US", "200000");
    run.start({host, byName, "attach", "touch=attached", "until=go", "delivered=20000", "catch=15",
               "touch=catching", "until=caught", "raise=9"},
              {"--ring", "1M"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("attached")), 30'000);
    const auto recorder = static_cast<pid_t>(run.process.processId());
    // The ring has room for at most 16384 reports, of which one write takes some hundreds.
    QCOMPARE(kill(recorder, SIGSTOP), 0);
    run.touch("go");
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("catching")), 60'000);
    QCOMPARE(kill(recorder, SIGCONT), 0);
    QCOMPARE(kill(recorder, SIGTERM), 0);
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("caught")), 10'000);
    QCOMPARE(run.finish(), 137);
    const CaptureFacts facts = run.facts();
    QVERIFY(facts.isWhole && facts.end);
    QVERIFY(facts.lost > 0);
}

PADSCOPE_TESTS(PoorDiskTests);
#include "tst_poordisk.moc"
