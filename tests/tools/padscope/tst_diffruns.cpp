#include "diffs.h"
#include "support/tests.h"

using blocks::number;

/// `padscope diff` as a process: its options, and what it reads.
class DiffRunTests : public QObject
{
    Q_OBJECT

private slots:
    void times();
    void boardsThatAreMapped();
    void boardsOfOneFileOnly();
    void kinds();
    void callsByTheirArguments_data();
    void callsByTheirArguments();
    void summary();
    void cutFiles();
    void trouble_data();
    void trouble();
    void pipes();

private:
    const Files files;
};

void DiffRunTests::times()
{
    QList<QByteArray> b = tenReports();
    b[5] = reportAt(54, signalReport(110));
    QCOMPARE(diff(tenReports(), b, {"--times", "4"}).status, 0);
    const ProgramRun run = diff(tenReports(), b, {"--times", "3.9"});
    QCOMPARE(run.output, QByteArray("+0.050 s board 1001 SignalReport 1 time 0.050000 s -> 0.054000 s\n"));
    QCOMPARE(run.status, 1);
    // They count from the first packet that is compared.
    const QByteArray mark = packetAt(0, packetBytes(6, 0, 0, 0, 0, "a mark"));
    QList<QByteArray> later{mark};
    for (int i = 0; i < 10; ++i)
        later += reportAt(quint64(700 + 10 * i), signalReport(100 + 2 * i));
    QCOMPARE(diff(tenReports(), later, {"--times", "0"}).status, 0);
}

void DiffRunTests::boardsThatAreMapped()
{
    const QByteArray call =
        packetAt(200, packetBytes(2, 1, 6, 1001, 0, "\xe9\x03" + number(0, 2) + "\1" + number(0, 3) + "?"));
    const QByteArray otherCall =
        packetAt(200, packetBytes(2, 1, 6, 7, 0, number(7, 4) + "\1" + number(0, 3) + "?"));
    const QList<QByteArray> a = tenReports() + QList<QByteArray>{call};
    const QList<QByteArray> b = tenReports(7) + QList<QByteArray>{otherCall};
    QCOMPARE(diff(a, b, {"--kinds", "report,call"}).lines().size(), 22);
    const ProgramRun run = diff(a, b, {"--kinds", "report,call", "--map", "1001=7"});
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 0);
    // Both at once.
    const QList<QByteArray> both = tenReports() + QList<QByteArray>{reportAt(200, signalReport(9), 7)};
    const QList<QByteArray> crossed = tenReports(7) + QList<QByteArray>{reportAt(200, signalReport(9), 1001)};
    QCOMPARE(diff(both, crossed, {"--map", "1001=7", "--map", "7=1001"}).status, 0);
    QCOMPARE(diff(both, crossed, {"--map", "1001=7"}).output,
             QByteArray("+0.200 s board 7 SignalReport 1 only in A\n"
                        "+0.200 s board 1001 of B SignalReport 1 only in B\n"));
}

void DiffRunTests::boardsOfOneFileOnly()
{
    const QByteArray other = reportAt(100, QByteArray::fromHex("0f21"), -5);
    const ProgramRun run = diff(tenReports(), tenReports() + QList<QByteArray>{other});
    QCOMPARE(run.output, QByteArray("+0.100 s board -5 unknown only in B\n"));
}

/// Each kind for itself: a report that comes before a call here and after it there is no difference.
void DiffRunTests::kinds()
{
    const QByteArray attach = packetBytes(2, 0, 1, 0, 0, {});
    const QByteArray returned = packetBytes(3, 2, 1, 0, 1, {}, 1);
    const QByteArray hotplug = packetBytes(4, 0, 0, 0, 0, {}, 2);
    const QList<QByteArray> a{packetAt(0, attach), reportAt(1, signalReport(1)), packetAt(2, returned),
                              packetAt(3, hotplug)};
    const QList<QByteArray> b{reportAt(0, signalReport(1)), packetAt(1, attach),
                              packetAt(2, packetBytes(3, 2, 1, 0, 0, {}, 1))};
    QCOMPARE(diff(a, b).status, 0);
    QCOMPARE(diff(a, b, {"--kinds", "call"}).output,
             QByteArray("+0.002 s no board return orvexAttach result 1 -> 0\n"));
    const ProgramRun run = diff(a, b, {"--kinds", "report,call,hotplug"});
    QCOMPARE(run.output, QByteArray("+0.002 s no board return orvexAttach result 1 -> 0\n"
                                    "+0.003 s no board hotplug only in A\n"));
    QCOMPARE(run.status, 1);
}

void DiffRunTests::callsByTheirArguments_data()
{
    addColumns<QByteArray, QByteArray, QString>("a", "b", "differences");
    const QByteArray board = number(1001, 4);
    const auto text = [](const QByteArray &bytes) { return number(quint64(bytes.size()), 4) + bytes; };
    addRow("a text", board + text("?\r"), board + text("!\r"), R"(command "?\r" -> "!\r")");
    addRow("quotes", board + text("say \"\""), board + text("\\"), R"(command "say \"\"" -> "\\")");
    addRow("null", board + text("a"), board + number(0xFFFFFFFF, 4), R"(command "a" -> none)");
    addRow("bytes behind", board + text("a"), board + text("a") + "x", "length 9 -> 10");
}

void DiffRunTests::callsByTheirArguments()
{
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QFETCH(QString, differences);
    const auto call = [](const QByteArray &payload) {
        return QList<QByteArray>{packetAt(0, packetBytes(2, 1, 6, 1001, 0, payload))};
    };
    const ProgramRun run = diff(call(a), call(b), {"--kinds", "call"});
    QCOMPARE(QString(run.output), "+0.000 s board 1001 call orvexSendCommand " + differences + '\n');
}

void DiffRunTests::summary()
{
    QList<QByteArray> b = tenReports();
    b[5] = reportAt(50, signalReport(1000));
    b.removeAt(1);
    b += reportAt(100, signalReport(7), 2);
    const ProgramRun run = diff(tenReports(), b, {"--summary"});
    QCOMPARE(run.output, QByteArray("board 2 report: 0 equal, 0 changed, 0 only in A, 1 only in B\n"
                                    "board 1001 report: 8 equal, 1 changed, 1 only in A, 0 only in B\n"));
    QCOMPARE(run.status, 1);
    QCOMPARE(diff(b, b, {"--summary"}).status, 0);
}

void DiffRunTests::cutFiles()
{
    const QByteArray whole = captureOf(tenReports());
    const QString a = files.write("whole", whole);
    const QString b = files.write("cut", whole.chopped(1));
    const ProgramRun run = padscope({"diff", a, b});
    QCOMPARE(run.output, QByteArray("+0.090 s board 1001 SignalReport 1 only in A\n"));
    QCOMPARE(run.errors, "padscope: " + b.toUtf8() + ": byte " +
                             QByteArray::number(whole.size() - tenReports().last().size()) +
                             ": it ends within a block; compared up to there\n");
    QCOMPARE(run.status, 1);
    QCOMPARE(padscope({"diff", b, b}).status, 0);
}

void DiffRunTests::trouble_data()
{
    addColumns<QByteArray, QString>("b", "reason");
    const QByteArray whole = captureOf(tenReports());
    addRow("damage", whole + QByteArray(64, '\0'), QString("byte %1: a block length of 0").arg(whole.size()));
    addRow("empty", QByteArray(), "byte 0: it is empty");
    addRow("no packets", examplecapture::start(), "no packet of a capture in it");
    QByteArray newer = tenReports().first();
    newer[28 + 2] = '\x02';
    addRow("a later version", captureOf({newer}),
           QString("byte %1: a packet of a later version of the format").arg(examplecapture::start().size()));
}

void DiffRunTests::trouble()
{
    QFETCH(QByteArray, b);
    QFETCH(QString, reason);
    const QString good = files.write("good", captureOf(tenReports()));
    const QString bad = files.write("bad", b);
    for (const QStringList &order : {QStringList{good, bad}, QStringList{bad, good}}) {
        const ProgramRun run = padscope(QStringList{"diff"} + order);
        QCOMPARE(QString(run.errors), "padscope: " + bad + ": " + reason + '\n');
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.status, 2);
    }
    const ProgramRun missing = padscope({"diff", good, "/nowhere"});
    QCOMPARE(missing.errors, QByteArray("padscope: /nowhere: No such file or directory\n"));
    QCOMPARE(missing.status, 2);
}

void DiffRunTests::pipes()
{
    QList<QByteArray> b = tenReports();
    b.removeAt(4);
    const QByteArray expected = "+0.040 s board 1001 SignalReport 1 only in A\n";
    const QString a = files.write("a", captureOf(tenReports()));
    QCOMPARE(padscope({"diff", a, "-"}, captureOf(b)).output, expected);
    const ProgramRun both = runProgram("bash", {"-c", R"("$0" diff <(cat "$1") <(cat "$2"))",
                                                PADSCOPE_PROGRAM, a, files.write("b", captureOf(b))});
    QCOMPARE(both.output, expected);
    QCOMPARE(both.errors, QByteArray());
    QCOMPARE(both.status, 1);
}

PADSCOPE_TESTS(DiffRunTests);
#include "tst_diffruns.moc"
