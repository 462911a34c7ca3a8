#include <QFileInfo>
#include <QTest>

#include "program.h"
#include "replayed.h"
#include "support/tests.h"

namespace {

QByteArray reportsOfBoards(int count)
{
    QByteArray file = examplecapture::start();
    for (int i = 0; i < count; ++i)
        file += blocks::packet(examplecapture::startNs + quint64(i),
                               packetBytes(1, 1, 0, 1000 + i, 0, "a", 1, 0, quint64(i)));
    return file;
}

} // namespace

/// `padscope replay`: its options, what it refuses, what the host finds, and how it ends.
class ReplayCommandTests : public QObject
{
    Q_OBJECT

private slots:
    void options_data();
    void options();
    void refusesWhatCannotBePlayed_data();
    void refusesWhatCannotBePlayed();
    void asManyBoardsAsThereMayBe();
    void refusesAPathThatIsNoUtf8();
    void hasTheHostReadTheScenario_data();
    void hasTheHostReadTheScenario();
    void nobodyChangesTheScenario();
    void goesBeforeOtherLibraries();
    void endsAsItsHost_data();
    void endsAsItsHost();
    void sendsWhatWasRecorded_data();
    void sendsWhatWasRecorded();

private:
    /// A file of two sessions, 5f0c93a1 and 00c0ffee.
    QString twoSessions() const;

    const Files files;
    const QString one = files.write("one.pcapng", examplecapture::whole());
};

QString ReplayCommandTests::twoSessions() const
{
    QByteArray other = examplecapture::whole();
    other.replace(blocks::number(0x5f0c93a1, 4), blocks::number(0x00c0ffee, 4));
    return files.write("two.pcapng", examplecapture::whole() + other);
}

void ReplayCommandTests::options_data()
{
    addColumns<QStringList, QByteArray>("arguments", "line");
    addRow("no file", QStringList{"--", "true"}, QByteArray("FILE is required"));
    addRow("no host", QStringList{"x", "--"}, QByteArray("-- HOST is required"));
    addRow("too slow", QStringList{"x", "--rate", "0.09", "--", "true"},
           QByteArray("--rate: 0.09 is neither max nor a number from 0.1 to 100"));
    addRow("too fast", QStringList{"x", "--rate", "101", "--", "true"},
           QByteArray("--rate: 101 is neither max nor a number from 0.1 to 100"));
    addRow("no rate", QStringList{"x", "--rate", "nan", "--", "true"},
           QByteArray("--rate: nan is neither max nor a number from 0.1 to 100"));
    addRow("no round", QStringList{"x", "--loop", "0", "--", "true"},
           QByteArray("--loop: 0 is neither forever nor a whole number from 1 to 1000000"));
    addRow("half a round", QStringList{"x", "--loop", "1.5", "--", "true"},
           QByteArray("--loop: 1.5 is neither forever nor a whole number from 1 to 1000000"));
    addRow("before the start", QStringList{"x", "--from", "-1", "--", "true"},
           QByteArray("--from: -1 is no number of seconds from 0 to 1000000000"));
    addRow("no seconds", QStringList{"x", "--skip-gaps", "2s", "--", "true"},
           QByteArray("--skip-gaps: 2s is no number of seconds from 0 to 1000000000"));
    addRow("nothing between", QStringList{"x", "--from", "2", "--to", "2", "--", "true"},
           QByteArray("--to: is not later than --from"));
    addRow("no session", QStringList{"x", "--session", "5f0c93a1f", "--", "true"},
           QByteArray("--session: 5f0c93a1f is no session, which has up to eight hexadecimal digits"));
}

void ReplayCommandTests::options()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, line);
    const ProgramRun run = padscope(QStringList{"replay"} + arguments);
    QCOMPARE(run.status, 2);
    QCOMPARE(run.errors, "padscope: " + line + "; see --help\n");
    QCOMPARE(run.output, QByteArray());
}

void ReplayCommandTests::refusesWhatCannotBePlayed_data()
{
    const QByteArray whole = examplecapture::whole();
    addColumns<QString, QStringList, QString>("file", "arguments", "line");
    addRow("none", files.path("none"), QStringList(), files.path("none") + ": No such file or directory");
    addRow("folder", files.path("."), QStringList(), files.path(".") + ": it is not a regular file");
    addRow("standard input", QString("-"), QStringList(), QString("-: No such file or directory"));
    const QString text = files.write("text", "text");
    addRow("text", text, QStringList(),
           text + ": offset 0: no pcapng file: it does not begin with a section header");
    const QString nothing = files.write("nothing.pcapng", examplecapture::start());
    addRow("no packet", nothing, QStringList(), nothing + ": there is no packet of a capture in it");
    const QString damaged = files.write("damaged.pcapng", whole + "damage in place of a block");
    addRow("damaged", damaged, QStringList(),
           damaged + QString(": offset %1: ").arg(whole.size()) + "a block length of 1763730791");
    const QString two = twoSessions();
    addRow("two sessions", two, QStringList(),
           two + ": there are several sessions, of which one must be chosen: 00c0ffee, 5f0c93a1");
    addRow("another session", two, QStringList{"--session", "C0FFED"},
           two + ": there is no session 00c0ffed; allowed are 00c0ffee, 5f0c93a1");
    addRow("from behind the end", one, QStringList{"--from", "1.5"},
           one + ": there is no report from 1.5 s on; the session ends 1 s after its first packet");
    const QString many = files.write("many.pcapng", reportsOfBoards(257));
    addRow("257 boards", many, QStringList(), many + ": there are too many boards at once; allowed are 256");
}

void ReplayCommandTests::refusesWhatCannotBePlayed()
{
    QFETCH(QString, file);
    QFETCH(QStringList, arguments);
    QFETCH(QString, line);
    const ProgramRun run =
        padscope(QStringList{"replay", file} + arguments + QStringList{"--", "echo", "started"});
    QCOMPARE(QString(run.errors), "padscope: " + line + "\n");
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 2);
}

void ReplayCommandTests::asManyBoardsAsThereMayBe()
{
    const QString many = files.write("many.pcapng", reportsOfBoards(256));
    QCOMPARE(padscope({"replay", many, "--", "echo", "started"}).output, QByteArray("started\n"));
}

/// Scenarios are UTF-8.
void ReplayCommandTests::refusesAPathThatIsNoUtf8()
{
    const QString script = "name=\"$1$(printf '\\377')\"; cp \"$1\" \"$name\"; "
                           "exec \"$2\" replay \"$name\" -- echo started";
    const ProgramRun run = runProgram("sh", {"-c", script, "sh", one, PADSCOPE_PROGRAM});
    QCOMPARE(run.errors, "padscope: " + one.toUtf8() + "\\xff: a path that is no UTF-8 cannot be played\n");
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 2);
}

void ReplayCommandTests::hasTheHostReadTheScenario_data()
{
    const QString two = twoSessions();
    const QString cut = files.write("cut.pcapng", examplecapture::whole().chopped(3));
    addColumns<QString, QStringList, QString>("file", "arguments", "settings");
    const QString usual = R"("from":0.0,"to":null,"skipGaps":null,"paused":false,"lockstep":false)";
    addRow("usual", one, QStringList(), R"("rate":1.0,"loop":1,)" + usual + R"(,"session":null)");
    addRow("cut", cut, QStringList(), R"("rate":1.0,"loop":1,)" + usual + R"(,"session":null)");
    addRow("fastest, for ever", one, QStringList{"--rate", "max", "--loop", "forever"},
           R"("rate":"max","loop":"forever",)" + usual + R"(,"session":null)");
    addRow("slow", one, QStringList{"--rate", "0.1", "--loop", "1000000"},
           R"("rate":0.1,"loop":1000000,)" + usual + R"(,"session":null)");
    addRow("all", two,
           QStringList{"--rate", "100", "--loop", "3", "--from", "0.25", "--to", "0.75", "--skip-gaps", "0",
                       "--paused", "--lockstep", "--session", "C0ffee"},
           R"("rate":100.0,"loop":3,"from":0.25,"to":0.75,"skipGaps":0.0,"paused":true,"lockstep":true,)"
           R"("session":"00c0ffee")");
}

void ReplayCommandTests::hasTheHostReadTheScenario()
{
    QFETCH(QString, file);
    QFETCH(QStringList, arguments);
    QFETCH(QString, settings);
    const ProgramRun run = padscope(QStringList{"replay", file} + arguments +
                                    QStringList{"--", "sh", "-c", "tr -d ' \n' <\"$ORVEXSIM_SCENARIO\""});
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 0);
    QCOMPARE(QString(run.output), R"({"replay":{"capture":")" + file + "\"," + settings + "}}");
}

void ReplayCommandTests::nobodyChangesTheScenario()
{
    const ProgramRun run = padscope(
        {"replay", one, "--", "sh", "-c",
         "echo x >>\"$ORVEXSIM_SCENARIO\"; true >\"$ORVEXSIM_SCENARIO\"; wc -c <\"$ORVEXSIM_SCENARIO\""});
    QVERIFY(run.output.toInt() > 100);
}

void ReplayCommandTests::goesBeforeOtherLibraries()
{
    const QString folder = QFileInfo(SIMULATOR_FILE).path();
    const QStringList print{"--", "sh", "-c", "printf %s \"$LD_LIBRARY_PATH\""};
    qunsetenv("LD_LIBRARY_PATH");
    QCOMPARE(QString(padscope(QStringList{"replay", one} + print).output), folder);
    qputenv("LD_LIBRARY_PATH", "/one:/two");
    QCOMPARE(QString(padscope(QStringList{"replay", one} + print).output), folder + ":/one:/two");
    qunsetenv("LD_LIBRARY_PATH");
}

void ReplayCommandTests::endsAsItsHost_data()
{
    addColumns<QStringList, int, QByteArray>("host", "status", "line");
    addRow("0", QStringList{"true"}, 0, QByteArray());
    addRow("7", QStringList{"sh", "-c", "exit 7"}, 7, QByteArray());
    addRow("SIGKILL", QStringList{"sh", "-c", "kill -9 $$"}, 137, QByteArray());
    addRow("none", QStringList{"/nowhere/host"}, 127,
           QByteArray("padscope: /nowhere/host: No such file or directory\n"));
    addRow("not executable", QStringList{"/etc/passwd"}, 126,
           QByteArray("padscope: /etc/passwd: Permission denied\n"));
    addRow("options of its own", QStringList{"sh", "-c", "exit $#", "sh", "--rate", "--", "x"}, 3,
           QByteArray());
}

void ReplayCommandTests::endsAsItsHost()
{
    QFETCH(QStringList, host);
    QFETCH(QByteArray, line);
    const ProgramRun run = padscope(QStringList{"replay", one, "--"} + host);
    QTEST(run.status, "status");
    QCOMPARE(run.errors, line);
}

void ReplayCommandTests::sendsWhatWasRecorded_data()
{
    addColumns<QString, QStringList, int, bool>("scenario", "sent", "rounds", "isRecordedInside");
    addRow("once", "many-boards", QStringList(), 1, true);
    addRow("three rounds", "many-boards", QStringList(), 3, true);
    addRow("recorded from outside", "many-boards", QStringList(), 1, false);
    addRow("empty reports", "garbage", QStringList(), 1, true);
    addRow("null and too long", "default", QStringList{"null=0", "null=5", "sized=65495", "sized=70000"}, 1,
           true);
}

/// It is recorded again meanwhile.
void ReplayCommandTests::sendsWhatWasRecorded()
{
    QFETCH(QString, scenario);
    QFETCH(QStringList, sent);
    QFETCH(int, rounds);
    QFETCH(bool, isRecordedInside);
    const auto host = [](const QStringList &steps, int count) {
        return QStringList{RECORDED_HOST, "load=liborvexboardex.so.1", "attach"} + steps +
               QStringList{QString("total=%1").arg(count), "detach"};
    };
    const Files own;
    const QString first = own.path("first.pcapng");
    const QString again = own.path("again.pcapng");
    qputenv("LD_LIBRARY_PATH", QFileInfo(SIMULATOR_FILE).path().toUtf8());
    qputenv("ORVEXSIM_SCENARIO", scenario.toUtf8());
    QCOMPARE(padscope(QStringList{"record", "-o", first, "--"} + host(sent, 100)).status, 0);
    qunsetenv("LD_LIBRARY_PATH");
    const CapturedReports recorded = reportsOf(first);
    QVERIFY(recorded.reports.size() >= 100);
    QVERIFY(recorded.withoutFlag > 0);

    const QStringList record{PADSCOPE_PROGRAM, "record", "-o", again, "--"};
    const QStringList replay = QStringList{
        PADSCOPE_PROGRAM, "replay", first, "--rate", "max", "--loop", QString::number(rounds), "--"};
    const QStringList command =
        (isRecordedInside ? replay + record : record + replay) + host({}, rounds * recorded.reports.size());
    const ProgramRun run = padscope(command.mid(1));
    QCOMPARE(run.status, 0);
    QVERIFY2(run.errors.startsWith("replay: asked rate max, achieved "), run.errors);
    const CapturedReports replayed = reportsOf(again);
    QList<QByteArray> wanted;
    for (int round = 0; round < rounds; ++round)
        wanted += recorded.reports;
    QCOMPARE(replayed.reports, wanted);
    QCOMPARE(replayed.withoutFlag, 0);
    const ProgramRun diff = padscope({"diff", first, again});
    QVERIFY2(diff.status == (rounds > 1 ? 1 : 0), diff.output.left(500));
}

PADSCOPE_TESTS(ReplayCommandTests);
#include "tst_replaycommand.moc"
