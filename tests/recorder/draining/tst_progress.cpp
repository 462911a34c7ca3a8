#include <QFileInfo>

#include "recordedrun.h"
#include "support/terminal.h"
#include "support/tests.h"

/// What `padscope record` says on a terminal.
class ProgressTests : public QObject
{
    Q_OBJECT

private slots:
    void aLineWithoutAProgressStandsAlone();
    void aStoppedTerminalStopsNothing();
    void notes_data();
    void notes();
};

void ProgressTests::aLineWithoutAProgressStandsAlone()
{
    RecordedRun run;
    Terminal terminal;
    run.process.setStandardErrorFile(terminal.path());
    QCOMPARE(run.run({"/nowhere/host"}), 127);
    QCOMPARE(terminal.text(), QByteArray("padscope: /nowhere/host: No such file or directory\r\n"));
}

void ProgressTests::aStoppedTerminalStopsNothing()
{
    RecordedRun run;
    Terminal terminal;
    run.setEnvironment("ORVEXSIM_SCENARIO", "flood");
    run.process.setStandardErrorFile(terminal.path());
    run.start({RECORDED_HOST, "load=liborvexboardex.so.1", "attach", "wait=60000"});
    QTRY_VERIFY_WITH_TIMEOUT(terminal.text().contains(" reports "), 20'000);
    terminal.stop();
    // The next lines would be due.
    const qint64 before = QFileInfo(run.file()).size();
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(run.file()).size() > before + 2'000'000, 60'000);
    run.process.terminate();
    QTRY_COMPARE_WITH_TIMEOUT(run.process.state(), QProcess::NotRunning, 20'000);
    QCOMPARE(run.finish(), 143);
}

void ProgressTests::notes_data()
{
    addColumns<QByteArray, bool>("note", "isTaken");
    addRow("longest", QByteArray(65'495, 'x'), true);
    addRow("too long", QByteArray(65'496, 'x'), false);
    addRow("four bytes", QByteArray("\xf4\x8f\xbf\xbf"), true);
    addRow("above the last character", QByteArray("\xf4\x90\x80\x80"), false);
    addRow("surrogate", QByteArray("\xed\xa0\x80"), false);
    addRow("overlong", QByteArray("\xc1\xbf"), false);
    addRow("cut", QByteArray("\xe2\x82"), false);
    addRow("alone", QByteArray("\x80"), false);
}

void ProgressTests::notes()
{
    QFETCH(QByteArray, note);
    QFETCH(bool, isTaken);
    RecordedRun run;
    QFile file(run.path("note"));
    QVERIFY(file.open(QFile::WriteOnly));
    file.write(note);
    file.close();
    // A shell passes on what is no text.
    const QString command = "exec \"$0\" record -o x.pcapng --note \"$(cat note)\" -- " RECORDED_HOST
                            " load=liborvexboardex.so.1";
    QCOMPARE(run.runAlone({"sh", "-c", command, PADSCOPE_FILE}), isTaken ? 0 : 2);
    QCOMPARE(run.hasFile(), isTaken);
    if (isTaken)
        QCOMPARE(run.facts().notes, QStringList{QString::fromUtf8(note)});
}

PADSCOPE_TESTS(ProgressTests);
#include "tst_progress.moc"
