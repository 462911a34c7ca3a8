#include "program.h"
#include "support/tests.h"

/// What `padscope` says of itself and of arguments that are wrong.
class UsageTests : public QObject
{
    Q_OBJECT

private slots:
    void usage_data();
    void usage();
    void namesInErrors();
    void helpAndVersion_data();
    void helpAndVersion();
    void needsNoWindow();
};

void UsageTests::usage_data()
{
    addColumns<QStringList, QString>("arguments", "line");
    addRow("no verb", QStringList(), "A subcommand is required");
    addRow("no such verb", QStringList{"rewind"}, "A subcommand is required");
    addRow("no file", QStringList{"decode"}, "FILE is required");
    addRow("no such format", QStringList{"decode", "-", "--format", "xml"},
           "--format: xml is none of csv, jsonl, rows, text");
    addRow("a format's number", QStringList{"decode", "-", "--format", "2"},
           "--format: 2 is none of csv, jsonl, rows, text");
    addRow(
        "no such type", QStringList{"decode", "-", "--type", "Signal"},
        "--type: Signal is none of AdcReport, DualPenReport, PenIdentityReport, PhaseReport, PositionReport, "
        "SignalReport, TextReport, unknown, signal1, signal2, signal3, signal4, signal5, signal6, phase, "
        "penIdentity, dualPen, position, adc, text");
    addRow("no such kind", QStringList{"decode", "-", "--kind", "reports"},
           "--kind: reports is none of report, call, return, hotplug, status, mark, board, end");
    addRow("no board", QStringList{"decode", "-", "--board", "first"}, "Could not convert: --board = first");
    addRow("no time", QStringList{"decode", "-", "--from", "nan"}, "--from: nan is no number");
    addRow("a limit below zero", QStringList{"decode", "-", "--limit", "-1"},
           "--limit: -1 is no whole number");
    addRow("a threshold of text", QStringList{"decode", "-", "--threshold", "5"},
           "--threshold: needs --format rows");
    addRow("a threshold below zero", QStringList{"decode", "-", "--format", "rows", "--threshold", "-5"},
           "--threshold: -5 is no whole number");
    addRow("no such option", QStringList{"check", "--foo", "-"},
           "The following argument was not expected: --foo");
    addRow("info in another format", QStringList{"info", "-", "--format", "csv"},
           "--format: csv is none of text, json");
    addRow("one file to compare", QStringList{"diff", "-"}, "B is required");
    addRow("standard input twice", QStringList{"diff", "-", "-"}, "B: standard input can't be both");
    addRow("a kind that is not compared", QStringList{"diff", "a", "b", "--kinds", "report,mark"},
           "--kinds: mark is none of report, call, hotplug");
    addRow("a tolerance of no field", QStringList{"diff", "a", "b", "--tolerance", "yFine61=3"},
           "--tolerance: yFine61 is no field of a report or a call");
    addRow("a tolerance of a text", QStringList{"diff", "a", "b", "--tolerance", "characters=3"},
           "--tolerance: characters is no number");
    addRow("a tolerance below zero", QStringList{"diff", "a", "b", "--tolerance", "yFine60=-3"},
           "--tolerance: yFine60=-3 is not FIELD=N with a number from 0 on");
    addRow("a tolerance without a number", QStringList{"diff", "a", "b", "--tolerance", "yFine60"},
           "--tolerance: yFine60 is not FIELD=N with a number from 0 on");
    addRow("an unknown field", QStringList{"diff", "a", "b", "--ignore", "sequence"},
           "--ignore: sequence is no field of a report or a call");
    addRow("a board without its other", QStringList{"diff", "a", "b", "--map", "1001"},
           "--map: 1001 is not ID=ID");
    addRow("a board with two others", QStringList{"diff", "a", "b", "--map", "1=2", "--map", "3=2"},
           "--map: 3=2: a board has two others");
    addRow("times below zero", QStringList{"diff", "a", "b", "--times", "-1"}, "--times: it is below zero");
}

void UsageTests::usage()
{
    QFETCH(QStringList, arguments);
    const ProgramRun run = padscope(arguments);
    QCOMPARE(run.status, 2);
    QCOMPARE(run.output, QByteArray());
    QTEST(QString(run.errors).remove("padscope: ").remove("; see --help\n"), "line");
    QCOMPARE(run.errors.count('\n'), 1);
}

/// Whatever a file is called, it is one line without control characters.
void UsageTests::namesInErrors()
{
    const QString file = "/no/\x1b[31m\n.pcapng";
    for (const QStringList &verb :
         {QStringList{"info"}, QStringList{"decode"}, QStringList{"check"}, QStringList{"stats"},
          QStringList{"redact", "-o", "/no/out"}, QStringList{"report", "-o", "/no/a.html"},
          QStringList{"plot", "--what", "path", "-o", "/no/a.svg"}}) {
        QCOMPARE(padscope(verb + QStringList{file}).errors,
                 QByteArray("padscope: /no/\\x1b[31m\\n.pcapng: No such file or directory\n"));
    }
    QCOMPARE(padscope({"report", "-", "-o", file}).errors,
             QByteArray("padscope: --output: /no/\\x1b[31m\\n.pcapng ends in none of .html; see --help\n"));
}

void UsageTests::helpAndVersion_data()
{
    addColumns<QString>("verb");
    for (const char *verb : {"record", "replay", "mark", "info", "decode", "check", "stats", "diff", "redact",
                             "plot", "report", "dissector"})
        addRow(verb, verb);
}

void UsageTests::helpAndVersion()
{
    QFETCH(QString, verb);
    const ProgramRun help = padscope({verb, "--help"});
    QVERIFY(help.output.contains("Usage: padscope " + verb.toUtf8()));
    QCOMPARE(help.errors, QByteArray());
    QCOMPARE(help.status, 0);
    const ProgramRun version = padscope({verb, "--version"});
    QCOMPARE(version.output, padscope({"--version"}).output);
    QVERIFY(version.output.startsWith("padscope "));
    QCOMPARE(version.errors, QByteArray());
    QCOMPARE(version.status, 0);
}

/// It is of use where no Qt is.
void UsageTests::needsNoWindow()
{
    const ProgramRun run = runProgram("readelf", {"-d", PADSCOPE_PROGRAM});
    QVERIFY(run.output.contains("Shared library: [libc.so.6]"));
    QVERIFY(!run.output.contains("Qt"));
}

PADSCOPE_TESTS(UsageTests);
#include "tst_usage.moc"
