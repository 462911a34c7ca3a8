#include "program.h"
#include "support/tests.h"

using examplecapture::whole;

/// Captures that Wireshark's tools have rewritten.
class ForeignToolTests : public QObject
{
    Q_OBJECT

private slots:
    void rewritten_data();
    void rewritten();
    void merged();
    void cutPackets();

private:
    const Files files;
};

void ForeignToolTests::rewritten_data()
{
    addColumns<QStringList, int, int, int>("command", "first", "count", "status");
    addRow("copied by editcap", QStringList{"editcap"}, 0, 11, 0);
    addRow("sliced", QStringList{"editcap", "-r", "%in", "%out", "1", "5-7"}, 4, 3, 3);
    addRow("commented", QStringList{"editcap", "-a", "3:seen", "%in", "%out"}, 0, 11, 0);
    addRow("rewritten by tshark", QStringList{"tshark", "-r", "%in", "-w", "%out"}, 0, 11, 0);
    addRow("rewritten by mergecap", QStringList{"mergecap", "-w", "%out", "%in"}, 0, 11, 0);
}

void ForeignToolTests::rewritten()
{
    QFETCH(QStringList, command);
    QFETCH(int, first);
    QFETCH(int, count);
    QFETCH(int, status);
    const QString in = files.write("in.pcapng", whole());
    const QString out = files.path("out.pcapng");
    QFile::remove(out);
    if (!command.contains("%in"))
        command += {"%in", "%out"};
    command.replaceInStrings("%in", in).replaceInStrings("%out", out);
    QCOMPARE(runProgram(command[0], command.mid(1)).status, 0);
    const ProgramRun run = padscope({"decode", out});
    // A slice keeps the first packet, from which times count.
    QList<QByteArray> expected = examplecapture::textLines().mid(first, count);
    if (first > 0)
        expected.prepend(examplecapture::textLines()[0]);
    QCOMPARE(run.lines(), expected);
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, status);
    QCOMPARE(padscope({"check", out}).status, status);
}

/// Each packet twice, and each session once.
void ForeignToolTests::merged()
{
    QByteArray other = whole();
    other.replace(blocks::number(0x5f0c93a1, 4), blocks::number(0x11111111, 4));
    const QString out = files.path("merged.pcapng");
    QCOMPARE(runProgram("mergecap", {"-w", out, files.write("a", whole()), files.write("b", other)}).status,
             0);
    QList<QByteArray> expected;
    for (const QByteArray &line : examplecapture::textLines())
        expected << line << line;
    QCOMPARE(padscope({"decode", out}).lines(), expected);
    QCOMPARE(padscope({"check", out}).status, 0);
    const ProgramRun info = padscope({"info", out});
    QCOMPARE(info.output.count("exit status 0"), 2);
    QCOMPARE(info.status, 0);
}

/// To their headers and 5 bytes.
void ForeignToolTests::cutPackets()
{
    const QString out = files.path("cut.pcapng");
    QCOMPARE(runProgram("editcap", {"-s", "45", files.write("in", whole()), out}).status, 0);
    const ProgramRun run = padscope({"decode", "--kind", "report", out});
    QCOMPARE(run.lines(), (QList<QByteArray>{
                              "0.100000000  1001  [cut] 0:     1  60:     0  120:     0  Integs:   0",
                              "0.200000000  1001  [cut] Hi.",
                              "0.300000000  1001  ..A   03 01 41 ",
                          }));
}

PADSCOPE_TESTS(ForeignToolTests);
#include "tst_foreigntools.moc"
