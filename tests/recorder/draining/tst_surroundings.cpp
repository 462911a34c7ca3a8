#include <csignal>
#include <QFile>
#include <sys/stat.h>
#include <unistd.h>

#include "recordedrun.h"
#include "support/tests.h"

namespace {

const QString host = RECORDED_HOST;
const char byName[] = "load=liborvexboardex.so.1";

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
    void aSetuidHostObeysNoVariable();
};

void SurroundingsTests::theHostFindsWhatItFindsAlone_data()
{
    addColumns<QString>("before");
    addRow("plain", QString());
    addRow("signals ignored", QString("trap '' INT HUP TERM PIPE;"));
    addRow("no standard input", QString("exec <&-;"));
    addRow("no standard error", QString("exec 2>&-;"));
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
    run.start({host, byName, "touch=loaded", "wait=300", "exit=4"});
    QTRY_VERIFY(QFile::exists(run.path("loaded")));
    QCOMPARE(kill(static_cast<pid_t>(run.process.processId()), number), 0);
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
    QTRY_VERIFY(QFile::exists(run.path("loaded")));
    QCOMPARE(kill(static_cast<pid_t>(run.process.processId()), number), 0);
    QCOMPARE(run.finish(), 128 + number);
    QCOMPARE(run.facts().end->value, number);
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

PADSCOPE_TESTS(SurroundingsTests);
#include "tst_surroundings.moc"
