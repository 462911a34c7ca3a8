#include <csignal>
#include <QElapsedTimer>
#include <QTest>
#include <unistd.h>

#include "program.h"
#include "support/tests.h"

/// Signals to `padscope replay`, which end its host.
class ReplaySignalsTests : public QObject
{
    Q_OBJECT

private slots:
    void passesSignalsOn_data();
    void passesSignalsOn();
    void passesSignalsOnAtOnce_data() { passesSignalsOn_data(); }
    void passesSignalsOnAtOnce();
    void aSignalOfTheGroupComesOnce_data() { passesSignalsOn_data(); }
    void aSignalOfTheGroupComesOnce();

private:
    const Files files;
    const QString one = files.write("one.pcapng", examplecapture::whole());
};

void ReplaySignalsTests::passesSignalsOn_data()
{
    addColumns<int>("number");
    addRow("SIGINT", SIGINT);
    addRow("SIGTERM", SIGTERM);
    addRow("SIGHUP", SIGHUP);
}

void ReplaySignalsTests::passesSignalsOn()
{
    QFETCH(int, number);
    QProcess process;
    process.start(PADSCOPE_PROGRAM, {"replay", one, "--", "sh", "-c", "echo started; exec sleep 60"});
    QVERIFY(process.waitForReadyRead(30'000));
    QCOMPARE(kill(static_cast<pid_t>(process.processId()), number), 0);
    QVERIFY(process.waitForFinished(30'000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 128 + number);
}

/// Well below the 50 ms within which a replay stops. The host's own end takes its time as well.
void ReplaySignalsTests::passesSignalsOnAtOnce()
{
    QFETCH(int, number);
    qint64 leastMs = 1000;
    for (int i = 0; i < 10 && leastMs >= 30; ++i) { // the machine may be busy
        const Files own;
        QProcess process;
        process.setWorkingDirectory(own.path("."));
        process.start(PADSCOPE_PROGRAM, {"replay", one, "--", RECORDED_HOST, QString("catch=%1").arg(number),
                                         "touch=ready", "until=caught", "touch=stopped"});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(own.path("ready")), 30'000);
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(kill(static_cast<pid_t>(process.processId()), number), 0);
        while (!QFile::exists(own.path("stopped")) && timer.elapsed() < 30'000)
            usleep(500);
        leastMs = qMin(leastMs, timer.elapsed());
        QVERIFY(process.waitForFinished(30'000));
    }
    QVERIFY2(leastMs < 30, QByteArray::number(leastMs));
}

/// As from a terminal, or by `timeout`.
void ReplaySignalsTests::aSignalOfTheGroupComesOnce()
{
    QFETCH(int, number);
    const Files own;
    QProcess process;
    process.setWorkingDirectory(own.path("."));
    process.start("setsid",
                  {PADSCOPE_PROGRAM, "replay", one, "--", RECORDED_HOST, QString("catch=%1").arg(number),
                   "touch=ready", "until=caught", "wait=300", "caught=0"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(own.path("ready")), 30'000);
    const auto replay = static_cast<pid_t>(process.processId());
    // However long the second one takes, both are there when it goes on.
    QCOMPARE(kill(replay, SIGSTOP), 0);
    QCOMPARE(kill(replay, number), 0);
    QCOMPARE(kill(-replay, number), 0);
    QCOMPARE(kill(replay, SIGCONT), 0);
    QVERIFY(process.waitForFinished(30'000));
    QCOMPARE(process.readAllStandardOutput(), QByteArray("caught 1\n"));
}

PADSCOPE_TESTS(ReplaySignalsTests);
#include "tst_replaysignals.moc"
