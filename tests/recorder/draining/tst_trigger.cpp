#include <algorithm>
#include <csignal>
#include <QFile>
#include <QRegularExpression>

#include "recordedhost.h"
#include "recordedrun.h"
#include "support/tests.h"

namespace {

/// What `padscope decode` prints, line by line.
QStringList decoded(const QString &path, const QStringList &options)
{
    const QByteArray printed = outputOf(PADSCOPE_FILE, QStringList{"decode", path} + options);
    return QString::fromUtf8(printed).split('\n').mid(1);
}

double lastSeconds(const QString &path)
{
    const QStringList lines = decoded(path, {"--kind", "end"});
    return lines.value(0).section(' ', 0, 0).toDouble();
}

} // namespace

/// `padscope record --on` keeps the last seconds until something happens.
class TriggerTests : public QObject
{
    Q_OBJECT

private slots:
    void usage_data();
    void usage();
    void aMark();
    void aSignalToTheRecorder();
    void otherEvents_data();
    void otherEvents();
    void aWrapperThatTellsOfASignal_data();
    void aWrapperThatTellsOfASignal();
    void nothingHappened();
    void aFileThatIsThere();
};

void TriggerTests::usage_data()
{
    addColumns<QStringList, QString>("options", "line");
    addRow("no such event", QStringList{"--on", "crash"},
           "--on: crash is none of mark, signal, call:NAME, type:NAME");
    addRow("a mark with a name", QStringList{"--on", "mark:x"},
           "--on: mark:x is none of mark, signal, call:NAME, type:NAME");
    addRow("no name", QStringList{"--on", "call"}, "--on:  is none of orvexAttach, orvexDetach, ");
    addRow("no such call", QStringList{"--on", "call:orvexattach"},
           "--on: orvexattach is none of orvexAttach, orvexDetach, ");
    addRow("no such type", QStringList{"--on", "type:Signal"}, "--on: Signal is none of AdcReport, ");
    addRow("before what", QStringList{"--before", "1"}, "--before requires --on");
    addRow("behind what", QStringList{"--after", "1"}, "--after requires --on");
    addRow("no time", QStringList{"--on", "mark", "--after", "nan"}, "--after: nan is no number");
    addRow("less than nothing", QStringList{"--on", "mark", "--before", "-1"},
           "--before: Value -1 not in range");
    addRow("more than a day", QStringList{"--on", "mark", "--before", "86401"},
           "--before: Value 86401 not in range");
}

void TriggerTests::usage()
{
    QFETCH(QStringList, options);
    QFETCH(QString, line);
    RecordedRun run;
    QCOMPARE(run.run({host}, options), 2);
    QCOMPARE(run.errors().size(), 1);
    QVERIFY2(run.errors().first().startsWith("padscope: " + line), qPrintable(run.errors().first()));
    QVERIFY(!run.hasFile());
}

void TriggerTests::aMark()
{
    RecordedRun run;
    run.setEnvironment("ORVEXSIM_SCENARIO", "default");
    run.start({host, byName, "attach", "delivered=30", "touch=ready", "until=end"},
              {"--on", "mark", "--before", "0.2", "--after", "0.1", "--note", "board 3"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("ready")), 30'000);
    QVERIFY(!run.hasFile());
    const QString recorder = QString::number(run.process.processId());
    QCOMPARE(outputOf(PADSCOPE_FILE, {"mark", "--recorder", recorder, "here"}), QByteArray("0\nmark 1\n"));
    QTRY_VERIFY_WITH_TIMEOUT(run.hasFile() && run.facts().end, 30'000);
    run.touch("end");
    QCOMPARE(run.finish(), 0);
    const CaptureFacts facts = run.facts();
    QCOMPARE(int(facts.end->reason), 4);
    QCOMPARE(facts.notes, (QStringList{"board 3", "here"}));
    QCOMPARE(facts.interfaces, (QStringList{"driver", "board 1001"}));
    QVERIFY(facts.reports.at(1001) > 0);
    // Status, note and board come first, a ns each.
    const QStringList marks = decoded(run.file(), {"--kind", "mark"});
    QCOMPARE(marks.value(0), QString("0.000000001  -  mark: \"board 3\""));
    QCOMPARE(marks.value(1), QString("0.200000003  -  mark: \"here\""));
    QCOMPARE(decoded(run.file(), {"--kind", "board"}).value(0), QString("0.000000002  1001  seen, index 0"));
    QCOMPARE(lastSeconds(run.file()), 0.300000003);
    QCOMPARE(outputOf(PADSCOPE_FILE, {"check", run.file()}), QByteArray("0\n"));
    const QByteArray read = outputOf("capinfos", {"-c", run.file()});
    QVERIFY2(read.startsWith("0\n"), read);
}

void TriggerTests::aSignalToTheRecorder()
{
    RecordedRun run;
    run.start({host, byName, "touch=ready", "until=end"}, {"--on", "signal", "--after", "0"});
    QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(run.path("ready")), 30'000);
    const auto recorder = static_cast<pid_t>(run.process.processId());
    // A mark that is asked for otherwise is no signal.
    QCOMPARE(outputOf(PADSCOPE_FILE, {"mark", "--recorder", QString::number(recorder)}),
             QByteArray("0\nmark 1\n"));
    QCOMPARE(kill(recorder, SIGUSR2), 0);
    QTRY_VERIFY_WITH_TIMEOUT(run.hasFile() && run.facts().end, 30'000);
    run.touch("end");
    QCOMPARE(run.finish(), 0);
    QCOMPARE(run.facts().notes, (QStringList{"mark 1", "mark 2"}));
    QVERIFY(!QFile::exists(run.path("x-2.pcapng")));
}

void TriggerTests::otherEvents_data()
{
    addColumns<QString, QStringList, int, QString>("event", "steps", "status", "line");
    addRow("a call", "call:orvexDetach", QStringList{"attach", "detach"}, 0, "  -  orvexDetach()");
    addRow("a report", "type:unknown", QStringList{"plug=1001", "attach", "report=1001", "delivered=1"}, 0,
           "  1001  .!!\"#$   06 21 21 22 23 24 ");
    addRow("a crash", "signal", QStringList{"attach", "raise=6"}, 134, "  -  end: signal 6");
}

/// The event is in the file, and so is what came before.
void TriggerTests::otherEvents()
{
    QFETCH(QString, event);
    QFETCH(QStringList, steps);
    QFETCH(QString, line);
    RecordedRun run;
    const int status = run.run(QStringList{host, byName} + steps, {"--on", event});
    QTEST(status, "status");
    const QStringList lines = decoded(run.file(), {});
    const auto isEvent = [&line](const QString &text) { return text.contains(line); };
    QVERIFY2(std::any_of(lines.begin(), lines.end(), isEvent), qPrintable(lines.join('\n')));
    QVERIFY(lines.indexOf(QRegularExpression(".*orvexAttach\\(\\)")) >= 0);
    QCOMPARE(outputOf(PADSCOPE_FILE, {"check", run.file()}), QByteArray("0\n"));
}

void TriggerTests::aWrapperThatTellsOfASignal_data()
{
    addColumns<QString, QString, int, bool>("end", "script", "status", "isEvent");
    const QString wrapped = "\"$@\"; ";
    addRow("the host's status", "raise=6", wrapped + "exit $?", 134, true);
    addRow("a signal of its own", "raise=6", wrapped + "kill -9 $$", 137, true);
    addRow("the last real-time signal", "exit=0", wrapped + "exit 192", 192, true);
    addRow("beyond it", "exit=0", wrapped + "exit 193", 193, false);
    addRow("below the first", "exit=0", wrapped + "exit 128", 128, false);
}

/// How the process ended that had opened the library is known only of a child.
void TriggerTests::aWrapperThatTellsOfASignal()
{
    QFETCH(QString, end);
    QFETCH(QString, script);
    QFETCH(bool, isEvent);
    RecordedRun run;
    const int status = run.run({"sh", "-c", script, "sh", host, byName, "attach", end}, {"--on", "signal"});
    QTEST(status, "status");
    QCOMPARE(run.hasFile(), isEvent);
    if (isEvent)
        QVERIFY(decoded(run.file(), {"--kind", "end"}).value(0).contains("-  end: unknown"));
}

void TriggerTests::nothingHappened()
{
    RecordedRun run;
    QCOMPARE(run.run({host, byName, "attach", "exit=3"}, {"--on", "call:orvexLock"}), 3);
    QVERIFY(!run.hasFile());
    QCOMPARE(run.errors(), QStringList{"padscope: nothing happened that --on names: no file was written"});
}

/// Which is said before the host is started.
void TriggerTests::aFileThatIsThere()
{
    RecordedRun run;
    run.touch("x.pcapng");
    QCOMPARE(run.run({host, "touch=started"}, {"--on", "mark"}), 1);
    QCOMPARE(run.errors(), QStringList{"padscope: " + run.file() + ": File exists"});
    QVERIFY(!QFile::exists(run.path("started")));
}

PADSCOPE_TESTS(TriggerTests);
#include "tst_trigger.moc"
