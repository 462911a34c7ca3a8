#include <csignal>
#include <QDir>
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

#include "recordedhost.h"
#include "recordedrun.h"
#include "support/tests.h"

namespace {

/// Children that have ended and that it has not waited for.
int zombiesOf(qint64 parent)
{
    int count = 0;
    const QStringList processes = QDir("/proc").entryList({"[0-9]*"}, QDir::Dirs);
    for (const QString &process : processes) {
        QFile file("/proc/" + process + "/stat");
        if (file.open(QFile::ReadOnly) && file.readAll().contains(") Z " + QByteArray::number(parent) + ' '))
            ++count;
    }
    return count;
}

} // namespace

/// What the host finds is what it finds alone.
class SurroundingsTests : public QObject
{
    Q_OBJECT

private slots:
    void theHostFindsWhatItFindsAlone_data();
    void theHostFindsWhatItFindsAlone();
    void signalsOfTheTerminalAreTheHosts_data();
    void signalsOfTheTerminalAreTheHosts();
    void endingSignalsArePassedOn_data();
    void endingSignalsArePassedOn();
    void aSignalOfTheGroupComesOnce_data();
    void aSignalOfTheGroupComesOnce();
    void outlivesAWrapper_data();
    void outlivesAWrapper();
    void leavesNoZombies();
    void aSetuidHostObeysNoVariable();
    void aHostThatKeepsTheLibraryOpenItself();
};

void SurroundingsTests::theHostFindsWhatItFindsAlone_data()
{
    addColumns<QString>("before");
    addRow("plain", QString());
    addRow("signals ignored", QString("trap '' INT HUP TERM PIPE;"));
    addRow("no standard input", QString("exec <&-;"));
    addRow("no standard error", QString("exec 2>&-;"));
    addRow("children ignored", QString("set -- env --ignore-signal=CHLD \"$@\";"));
}

void SurroundingsTests::theHostFindsWhatItFindsAlone()
{
    QFETCH(QString, before);
    const QString script = before + "\"$@\"; exit $?";
    const QStringList steps{host, byName, "surroundings"};
    RecordedRun run;
    QCOMPARE(run.runAlone(QStringList{"sh", "-c", script, "sh"} + steps), 0);
    const QStringList alone = run.output();
    QVERIFY(alone.contains("group of the parent"));
    const QStringList recorder{PADSCOPE_FILE, "record", "-o", run.file(), "--"};
    QCOMPARE(run.runAlone(QStringList{"sh", "-c", script, "sh"} + recorder + steps), 0);
    QCOMPARE(run.output(), alone);
    QVERIFY(run.facts().end.has_value());
}

void SurroundingsTests::signalsOfTheTerminalAreTheHosts_data()
{
    addColumns<int>("number");
    addRow("SIGINT", SIGINT);
    addRow("SIGQUIT", SIGQUIT);
}

void SurroundingsTests::signalsOfTheTerminalAreTheHosts()
{
    QFETCH(int, number);
    RecordedRun run;
    run.start({host, byName, "touch=loaded", "until=sent", "wait=300", "exit=4"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("loaded")), 30'000);
    QCOMPARE(kill(static_cast<pid_t>(run.process.processId()), number), 0);
    run.touch("sent");
    QCOMPARE(run.finish(), 4);
    QCOMPARE(run.facts().end->value, 4);
}

void SurroundingsTests::endingSignalsArePassedOn_data()
{
    addColumns<int>("number");
    addRow("SIGTERM", SIGTERM);
    addRow("SIGHUP", SIGHUP);
}

void SurroundingsTests::endingSignalsArePassedOn()
{
    QFETCH(int, number);
    RecordedRun run;
    run.start({host, byName, "touch=loaded", "wait=30000"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("loaded")), 30'000);
    QCOMPARE(kill(static_cast<pid_t>(run.process.processId()), number), 0);
    QCOMPARE(run.finish(), 128 + number);
    QCOMPARE(run.facts().end->value, number);
}

void SurroundingsTests::aSignalOfTheGroupComesOnce_data()
{
    addColumns<bool, bool>("toRecorder", "toGroup");
    addRow("to the recorder", true, false);
    addRow("to the group", false, true);
    addRow("to both, as timeout does", true, true);
}

void SurroundingsTests::aSignalOfTheGroupComesOnce()
{
    QFETCH(bool, toRecorder);
    QFETCH(bool, toGroup);
    RecordedRun run;
    const QStringList command{PADSCOPE_FILE, "record", "-o", run.file(), "--", host, byName};
    run.startAlone(QStringList{"setsid"} + command +
                   QStringList{"catch=15", "touch=loaded", "until=caught", "wait=300", "caught=15"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("loaded")), 30'000);
    const auto recorder = static_cast<pid_t>(run.process.processId());
    // However long the second one takes, both are there when it goes on.
    QCOMPARE(kill(recorder, SIGSTOP), 0);
    if (toRecorder)
        QCOMPARE(kill(recorder, SIGTERM), 0);
    if (toGroup)
        QCOMPARE(kill(-recorder, SIGTERM), 0);
    QCOMPARE(kill(recorder, SIGCONT), 0);
    QCOMPARE(run.finish(), 0);
    QCOMPARE(run.output(), (QStringList{"loaded", "caught 1"}));
}

/// Processes whose parents have ended become the recorder's.
void SurroundingsTests::outlivesAWrapper_data()
{
    addColumns<QString>("script");
    addRow("opened before", QString("$0 $1 attach touch=open wait=500 detach & "
                                    "while [ ! -e open ]; do sleep 0.01; done; exit 3"));
    addRow("opened behind", QString("$0 wait=500 $1 attach detach & exit 3"));
}

void SurroundingsTests::outlivesAWrapper()
{
    QFETCH(QString, script);
    RecordedRun run;
    QCOMPARE(run.run({"sh", "-c", script, host, byName}), 3);
    const CaptureFacts facts = run.facts();
    QVERIFY(facts.calls.contains("return 2"));
    QVERIFY(facts.end.has_value());
    QCOMPARE(int(facts.end->reason), 3);
}

void SurroundingsTests::leavesNoZombies()
{
    RecordedRun run;
    const QString script = "for i in 1 2 3 4 5; do (true &); done; exec $0 $1 touch=loaded until=end";
    run.start({"sh", "-c", script, host, byName});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("loaded")), 30'000);
    QTRY_COMPARE_WITH_TIMEOUT(zombiesOf(run.process.processId()), 0, 30'000);
    run.touch("end");
    QCOMPARE(run.finish(), 0);
}

/// As it loads the tap by its path, only the variables are left.
void SurroundingsTests::aSetuidHostObeysNoVariable()
{
    if (geteuid() != 0)
        QSKIP("only root can make a program that runs as somebody else");
    RecordedRun run;
    const QByteArray file = QFile::encodeName(run.path("setuid-host"));
    QVERIFY(QFile::copy(RECORDED_HOST, file));
    constexpr uid_t nobody = 65534;
    QCOMPARE(chown(file, nobody, nobody), 0);
    QCOMPARE(chmod(file, 04755), 0);
    QCOMPARE(chmod(QFile::encodeName(run.path(".")), 0755), 0);
    const QStringList steps{file, "secure", "load=" TAP_FILE, "attach", "exit=0"};
    QCOMPARE(run.run(steps), 1);
    if (!run.output().contains("secure 1"))
        QSKIP("files here may not be setuid");
    QCOMPARE(run.output(), (QStringList{"secure 1", "loaded"}));
    QCOMPARE(run.errors().first(), QString("padscope: the environment names no driver library"));
    QVERIFY(!run.hasFile());
}

void SurroundingsTests::aHostThatKeepsTheLibraryOpenItself()
{
    RecordedRun run;
    QCOMPARE(run.run({TAP_HOLDER, "own", "open", "call", "close"}), 0);
    QCOMPARE(run.errors(),
             QStringList("padscope: the driver library stayed open when it was closed through the tap: "
                         "what used it later is not recorded"));
    RecordedRun without;
    QCOMPARE(without.run({TAP_HOLDER, "open", "call", "close"}), 0);
    QCOMPARE(without.errors(), QStringList());
}

PADSCOPE_TESTS(SurroundingsTests);
#include "tst_surroundings.moc"
