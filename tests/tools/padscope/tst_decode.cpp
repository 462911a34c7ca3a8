#include "program.h"
#include "support/tests.h"

using examplecapture::packets;
using examplecapture::start;
using examplecapture::whole;

/// `padscope decode` as a process.
class DecodeTests : public QObject
{
    Q_OBJECT

private slots:
    void formats_data();
    void formats();
    void filters_data();
    void filters();
    void statuses_data();
    void statuses();
    void aFileThatIsMissing();
    void aFolder();
    void readsStandardInput();
    void aReaderMayEndEarly();
    void outputThatCannotBeWritten();

private:
    const Files files;
};

void DecodeTests::formats_data()
{
    addColumns<QStringList, QList<QByteArray>>("options", "lines");
    addRow("text", QStringList(), examplecapture::textLines());
    const QList<QByteArray> rows{"0:     1  60:    -1  120:     3  Integs:   9", "Hi..", "..A", "03 01 41 "};
    addRow("rows", QStringList{"--format", "rows"}, rows);
    addRow("rows with a rate limit", QStringList{"--format=rows", "--threshold=0"},
           rows.mid(2)); // a first line comes too soon
    addRow("epoch", QStringList{"--time", "epoch", "--limit", "1"},
           QList<QByteArray>{"1700000000.000000000  -  status"});
    addRow("utc", QStringList{"--time", "utc", "--limit", "1"},
           QList<QByteArray>{"2023-11-14T22:13:20.000000000Z  -  status"});
    addRow(
        "jsonl", QStringList{"--format", "jsonl", "--kind", "mark"},
        QList<QByteArray>{
            "{\"frame\":10,\"time\":\"0.600000000\",\"magic\":\"0x4450\",\"version\":1,\"headerLength\":40,"
            "\"kind\":6,\"flags\":\"0x00\",\"call\":0,\"board\":0,\"result\":0,\"sequence\":\"9\","
            "\"session\":\"0x5f0c93a1\",\"thread\":1234,\"link\":0,\"lost\":0,\"mark\":\"hi\"}"});
}

void DecodeTests::formats()
{
    QFETCH(QStringList, options);
    const ProgramRun run = padscope(QStringList{"decode", files.write("x.pcapng", whole())} + options);
    QTEST(run.lines(), "lines");
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 0);
}

void DecodeTests::filters_data()
{
    addColumns<QStringList, QList<int>>("options", "packets");
    addRow("a kind", QStringList{"--kind", "call"}, QList<int>{1, 7});
    addRow("two kinds", QStringList{"--kind", "call", "--kind", "mark"}, QList<int>{1, 7, 9});
    addRow("a type", QStringList{"--type", "TextReport"}, QList<int>{5});
    addRow("a type by the name of its fields", QStringList{"--type", "text"}, QList<int>{5});
    addRow("a sub-type", QStringList{"--type", "signal4"}, QList<int>{4});
    addRow("another sub-type", QStringList{"--type", "signal5"}, QList<int>());
    addRow("two types", QStringList{"--type", "unknown", "--type", "SignalReport"}, QList<int>{4, 6});
    addRow("a board", QStringList{"--board", "1001"}, QList<int>{3, 4, 5, 6, 7});
    addRow("boards that are not there", QStringList{"--board", "-7", "--board", "0"}, QList<int>());
    addRow("two boards", QStringList{"--board", "7", "--board", "1001"}, QList<int>{3, 4, 5, 6, 7});
    addRow("a board and kinds", QStringList{"--board", "1001", "--kind", "call", "--kind", "board"},
           QList<int>{3, 7});
    addRow("a type and another kind", QStringList{"--type", "TextReport", "--kind", "call"}, QList<int>());
    addRow("from", QStringList{"--from", "0.6"}, QList<int>{9, 10});
    addRow("to", QStringList{"--to", "0.002"}, QList<int>{0, 1});
    addRow("from and to", QStringList{"--from", "0.1", "--to", "0.3"}, QList<int>{4, 5});
    addRow("from and to, to the ns", QStringList{"--from", "0.100000001", "--to", "0.300000001"},
           QList<int>{5, 6});
    addRow("a limit with zeros in front", QStringList{"--limit", "010"},
           QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    addRow("limit", QStringList{"--limit", "2"}, QList<int>{0, 1});
    addRow("limit of what is shown", QStringList{"--kind", "report", "--limit", "2"}, QList<int>{4, 5});
    addRow("none at all", QStringList{"--limit", "0"}, QList<int>());
}

void DecodeTests::filters()
{
    QFETCH(QStringList, options);
    QFETCH(QList<int>, packets);
    const ProgramRun run =
        padscope(QStringList{"decode"} + options + QStringList{files.write("x.pcapng", whole())});
    QList<QByteArray> expected;
    for (const int index : qAsConst(packets))
        expected += examplecapture::textLines()[index];
    QCOMPARE(run.lines(), expected);
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, 0);
}

void DecodeTests::statuses_data()
{
    addColumns<QByteArray, int, QString>("bytes", "status", "errors");
    const QByteArray later = packetBytes(6, 0, 0, 0, 0, "x").replace(2, 1, "\x02");
    addRow("whole", whole(), 0, "");
    addRow("within a block", whole().chopped(1), 3,
           QString("padscope: standard input: byte %1: it ends within a block\n")
               .arg(whole().size() - packets().last().size()));
    addRow("a later version", whole() + blocks::packet(0, later), 1,
           QString("padscope: standard input: byte %1: a packet of a later version of the format; 1 of these "
                   "are passed by\n")
               .arg(whole().size()));
    addRow("a few bytes", QByteArray("hello"), 1,
           "padscope: standard input: byte 0: no pcapng file: it does not begin with a section header\n");
    addRow("without an end", start() + packets().mid(0, 10).join(), 3, "");
    addRow("empty", QByteArray(), 3, "padscope: standard input: byte 0: it is empty\n");
    addRow("with losses", whole(2), 3, "");
    addRow("damaged", whole() + QByteArray(64, '\0'), 1,
           QString("padscope: standard input: byte %1: a block length of 0\n").arg(whole().size()));
    addRow("another format", QByteArray(64, 'x'), 1,
           "padscope: standard input: byte 0: no pcapng file: it does not begin with a section header\n");
    // The second session has no end.
    QByteArray other = packetBytes(6, 0, 0, 0, 0, "x");
    other[24] = 'x';
    addRow("two sessions", start() + blocks::packet(examplecapture::startNs, other) + packets().join(), 3,
           "");
}

void DecodeTests::statuses()
{
    QFETCH(QByteArray, bytes);
    for (const char *verb : {"decode", "info", "check"}) {
        const ProgramRun run = padscope({verb, "-"}, bytes);
        QTEST(run.status, "status");
        if (verb != std::string("check"))
            QTEST(QString(run.errors), "errors");
    }
}

void DecodeTests::aFileThatIsMissing()
{
    const ProgramRun run = padscope({"decode", "/nowhere.pcapng"});
    QCOMPARE(run.errors, QByteArray("padscope: /nowhere.pcapng: No such file or directory\n"));
    QCOMPARE(run.status, 1);
}

void DecodeTests::aFolder()
{
    const ProgramRun run = padscope({"decode", "/"});
    QCOMPARE(run.errors, QByteArray("padscope: /: byte 0: Is a directory\n"));
    QCOMPARE(run.status, 1);
}

void DecodeTests::readsStandardInput()
{
    const ProgramRun run = padscope({"decode", "-"}, whole());
    QCOMPARE(run.lines(), examplecapture::textLines());
    QCOMPARE(run.status, 0);
}

/// More than a pipe holds is left when the reader ends.
void DecodeTests::aReaderMayEndEarly()
{
    QByteArray bytes = start();
    for (quint64 i = 0; i < 20'000; ++i)
        bytes += blocks::packet(examplecapture::startNs + i, packetBytes(6, 0, 0, 0, 0, "x", 0, 0, i));
    const QString path = files.write("long.pcapng", bytes);
    for (const char *format : {"text", "csv", "jsonl"}) {
        const ProgramRun run = runProgram(
            "/bin/bash", {"-c", "set -o pipefail; \"$0\" decode --format \"$1\" \"$2\" | head -n 1",
                          PADSCOPE_PROGRAM, format, path});
        QCOMPARE(run.lines().size(), 1);
        QCOMPARE(run.errors, QByteArray());
        QCOMPARE(run.status, 0);
    }
}

void DecodeTests::outputThatCannotBeWritten()
{
    const QString path = files.write("x.pcapng", whole());
    for (const char *verb : {"decode", "info"}) {
        const ProgramRun run =
            runProgram("/bin/sh", {"-c", "\"$0\" \"$1\" \"$2\" >/dev/full", PADSCOPE_PROGRAM, verb, path});
        QCOMPARE(run.errors, QByteArray("padscope: standard output: No space left on device\n"));
        QCOMPARE(run.status, 1);
    }
}

PADSCOPE_TESTS(DecodeTests);
#include "tst_decode.moc"
