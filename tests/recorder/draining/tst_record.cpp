#include <QFile>
#include <QFileInfo>

#include "recordedhost.h"
#include "recordedrun.h"
#include "support/tests.h"

class RecordTests : public QObject
{
    Q_OBJECT

private slots:
    void endsAsItsHost_data();
    void endsAsItsHost();
    void hostsThatCannotBeStarted_data();
    void hostsThatCannotBeStarted();
    void scriptsWithoutAnInterpreter_data();
    void scriptsWithoutAnInterpreter();
    void aBrokenPipeIsNotTheHostsEnd();
    void noFileWithoutRoomForTheRing();
    void overwritesNothing();
    void passesArgumentsOn();
    void callsAreTheSameAsAlone_data();
    void callsAreTheSameAsAlone();
    void runsAloneWithoutALibrary();
    void saysWhenTheHostDoesNotOpenTheLibrary();
    void saysWhenTheTapHasNoLibrary_data();
    void saysWhenTheTapHasNoLibrary();
    void theUsersLibraryComesFirst();
    void theRunpathIsFollowed();
    void saysWhatItDidNotRecord();
    void notes();
};

void RecordTests::endsAsItsHost_data()
{
    addColumns<QString, int, int, int>("step", "status", "reason", "value");
    addRow("0", QString("exit=0"), 0, 1, 0);
    addRow("7", QString("exit=7"), 7, 1, 7);
    addRow("SIGTERM", QString("raise=15"), 143, 2, 15);
    addRow("SIGKILL", QString("raise=9"), 137, 2, 9);
}

void RecordTests::endsAsItsHost()
{
    QFETCH(QString, step);
    QFETCH(int, status);
    QFETCH(int, reason);
    QFETCH(int, value);
    RecordedRun run;
    QCOMPARE(run.run({host, byName, "attach", step}), status);
    QCOMPARE(run.output(), (QStringList{"loaded", "attached 1"}));
    QCOMPARE(run.errors(), QStringList());
    const CaptureFacts facts = run.facts();
    QVERIFY(facts.isWhole && facts.end);
    QCOMPARE(int(facts.end->reason), reason);
    QCOMPARE(facts.end->value, value);
    QCOMPARE(facts.calls, (QStringList{"11", "return 11", "1", "return 1", "9", "return 9"}));
}

void RecordTests::hostsThatCannotBeStarted_data()
{
    addColumns<QString, int, QString>("command", "status", "line");
    addRow("not found", QString("/nowhere/host"), 127,
           QString("padscope: /nowhere/host: No such file or directory"));
    addRow("not in PATH", QString("no-such-host"), 127,
           QString("padscope: no-such-host: No such file or directory"));
    addRow("not executable", QString("/etc/passwd"), 126,
           QString("padscope: /etc/passwd: Permission denied"));
    addRow("folder", QString("/"), 126, QString("padscope: /: Permission denied"));
}

void RecordTests::hostsThatCannotBeStarted()
{
    QFETCH(QString, command);
    QFETCH(int, status);
    QFETCH(QString, line);
    RecordedRun run;
    QCOMPARE(run.run({command}), status);
    QCOMPARE(run.errors(), QStringList{line});
    QVERIFY(!run.hasFile());
}

void RecordTests::scriptsWithoutAnInterpreter_data()
{
    addColumns<bool>("inPath");
    addRow("path", false);
    addRow("name", true);
}

/// As shells and execvp() run them.
void RecordTests::scriptsWithoutAnInterpreter()
{
    QFETCH(bool, inPath);
    RecordedRun run;
    QFile script(run.path("plain-script"));
    QVERIFY(script.open(QFile::WriteOnly));
    script.write("\"$@\"\nexit 6\n");
    QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    script.close();
    if (inPath)
        run.setEnvironment("PATH", run.path(".") + ":/usr/bin:/bin");
    QCOMPARE(run.run({inPath ? "plain-script" : script.fileName(), host, byName, "attach"}), 6);
    QCOMPARE(run.output(), (QStringList{"loaded", "attached 1"}));
    QVERIFY(run.facts().end.has_value());
}

void RecordTests::aBrokenPipeIsNotTheHostsEnd()
{
    RecordedRun run;
    const QString script = "{ \"$@\"; echo $? >status; } 2>&1 | true";
    const QStringList recorder{PADSCOPE_FILE, "record", "-o", run.file(), "--"};
    QCOMPARE(run.runAlone(QStringList{"sh", "-c", script, "sh"} + recorder +
                          QStringList{host, "wait=300", "exit=5"}),
             0);
    QFile status(run.path("status"));
    QVERIFY(status.open(QFile::ReadOnly));
    QCOMPARE(status.readAll(), QByteArray("5\n"));
}

void RecordTests::noFileWithoutRoomForTheRing()
{
    RecordedRun run;
    const QStringList recorder{PADSCOPE_FILE, "record", "-o", run.file(), "--"};
    QCOMPARE(run.runAlone(QStringList{"sh", "-c", "ulimit -f 0; exec \"$@\"", "sh"} + recorder +
                          QStringList{host, byName, "touch=started"}),
             1);
    QCOMPARE(run.errors(), QStringList{"padscope: no room for the ring: File too large"});
    QVERIFY(!run.hasFile());
    QVERIFY(!QFile::exists(run.path("started")));
}

void RecordTests::overwritesNothing()
{
    RecordedRun run;
    QFile there(run.file());
    QVERIFY(there.open(QFile::WriteOnly));
    there.write("there");
    there.close();
    QCOMPARE(run.run({host, "exit=7"}), 1);
    QCOMPARE(run.errors(), QStringList{"padscope: " + run.file() + ": File exists"});
    QVERIFY(there.open(QFile::ReadOnly));
    QCOMPARE(there.readAll(), QByteArray("there"));
}

/// Whatever they look like.
void RecordTests::passesArgumentsOn()
{
    RecordedRun run;
    const QStringList arguments{"[a,b]", "--help", "", "--", "-o", "{}", "%%", "info"};
    run.run(QStringList{"printf", "<%s>\\n"} + arguments);
    QStringList expected;
    for (const QString &argument : arguments)
        expected += '<' + argument + '>';
    QCOMPARE(run.output(), expected);
}

void RecordTests::callsAreTheSameAsAlone_data()
{
    addColumns<QString, bool>("folder", "isRecorded");
    addRow("all names", QString(SIMULATOR_FOLDER), true);
    addRow("old", QString(SIMULATOR_FOLDER "/old"), true);
    addRow("bare", QString(SIMULATOR_FOLDER "/bare"), true);
    addRow("empty", QString(SIMULATOR_FOLDER "/empty"), false);
}

void RecordTests::callsAreTheSameAsAlone()
{
    QFETCH(QString, folder);
    QFETCH(bool, isRecorded);
    const QStringList steps{host,      byName,   "attach", "command=?", "command=:MDU0\r",
                            "wait=50", "send=5", "detach", "calls",     "exit=3"};
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "default");
    run.setEnvironment("LD_LIBRARY_PATH", folder);
    QCOMPARE(run.runAlone(steps), 3);
    const QStringList alone = run.output();
    QCOMPARE(alone.contains("0 orvexAttach()"), isRecorded);
    QCOMPARE(run.run(steps), 3);
    QCOMPARE(run.output(), alone);
    QCOMPARE(run.facts().calls.contains("return 1"), isRecorded);
}

/// The loader's text for it, too.
void RecordTests::runsAloneWithoutALibrary()
{
    RecordedRun run;
    run.setEnvironment("LD_LIBRARY_PATH", "/nowhere");
    QCOMPARE(run.runAlone({host, byName, "exit=0"}), 0);
    const QStringList alone = run.output();
    QCOMPARE(run.run({host, byName, "exit=0"}), 1);
    QCOMPARE(run.output(), alone);
    QCOMPARE(run.errors(), QStringList{"padscope: nothing was recorded: " + host +
                                       " has handed over no driver library to a tap that could record, "
                                       "and there is none in LD_LIBRARY_PATH (/nowhere), the RUNPATH of " +
                                       host + ", the loader's cache and its default folders"});
    QVERIFY(!run.hasFile());
    QCOMPARE(run.run({host, byName, "exit=5"}), 5);
}

void RecordTests::saysWhenTheHostDoesNotOpenTheLibrary()
{
    RecordedRun run;
    QCOMPARE(run.run({host, "exit=0"}), 1);
    QCOMPARE(run.errors(), QStringList{"padscope: nothing was recorded: " + host +
                                       " has not opened the driver library through a tap that could "
                                       "record: " SIMULATOR_FOLDER "/liborvexboardex.so.1"});
    QVERIFY(!run.hasFile());
    QCOMPARE(run.run({host, "raise=15"}), 143);
}

void RecordTests::saysWhenTheTapHasNoLibrary_data()
{
    addColumns<QString, QString>("library", "line");
    addRow("none that loads", QString("short"), QString("%1/short: file too short"));
    addRow("the tap itself", QString(TAP_FILE),
           QString("padscope: this is the tap, no driver library: " TAP_FILE));
}

/// It was opened through the tap.
void RecordTests::saysWhenTheTapHasNoLibrary()
{
    QFETCH(QString, library);
    QFETCH(QString, line);
    RecordedRun run;
    run.touch("short");
    line.replace("%1", QFileInfo(run.path(".")).canonicalFilePath());
    QCOMPARE(run.run({host, byName, "exit=0"}, {"--driver", library}), 1);
    QCOMPARE(run.output(), QStringList{"loaded"});
    QCOMPARE(run.errors(), (QStringList{line, "padscope: nothing was recorded: " + host +
                                                  " has opened the tap, which could not load the driver "
                                                  "library and has said why"}));
    QVERIFY(!run.hasFile());
}

/// The host's loader would find one that lacks this entry point.
void RecordTests::theUsersLibraryComesFirst()
{
    RecordedRun run;
    run.setEnvironment("LD_LIBRARY_PATH", SIMULATOR_FOLDER "/empty");
    QVERIFY(QFile::link(SIMULATOR_FOLDER, run.path("link")));
    QCOMPARE(run.run({host, byName, "attach"}, {"--driver", "link/liborvexboardex.so.1"}), 0);
    QCOMPARE(run.output(), (QStringList{"loaded", "attached 1"}));
    QCOMPARE(run.run({host}, {"--driver", "/nowhere"}), 2);
}

void RecordTests::theRunpathIsFollowed()
{
    RecordedRun run;
    run.setEnvironment("LD_LIBRARY_PATH", {});
    QCOMPARE(run.run({RECORDED_HOST_RUNPATH, byName, "attach"}), 0);
    QCOMPARE(run.output(), (QStringList{"loaded", "attached 1"}));
    QVERIFY(run.facts().end.has_value());
}

void RecordTests::saysWhatItDidNotRecord()
{
    RecordedRun run;
    const QString script = "$0 $1 touch=open attach until=second & "
                           "while [ ! -e open ]; do sleep 0.01; done; $0 $1 attach touch=second; wait";
    QCOMPARE(run.run({"sh", "-c", script, host, byName}), 0);
    QCOMPARE(run.output().filter("attached").size(), 2);
    QCOMPARE(run.errors(),
             QStringList{"padscope: processes that opened the driver library and were not recorded: 1"});
}

void RecordTests::notes()
{
    RecordedRun run;
    QCOMPARE(run.run({host, byName}, {"--note", "before the cable was moved \u00fc"}), 0);
    QCOMPARE(run.facts().notes, QStringList{"before the cable was moved \u00fc"});
}

PADSCOPE_TESTS(RecordTests);
#include "tst_record.moc"
