#include "program.h"
#include "support/tests.h"

namespace {

using blocks::number;

/// A SignalReport of sub-type 1 with its "yFine60", bytes 21 and 22, and its "xFine0", bytes 13 and 14.
QByteArray signalReport(int yFine60, int xFine0 = 0)
{
    return QByteArray::fromHex("282f01") + QByteArray(10, '\0') + number(quint64(xFine0), 2) +
           QByteArray(6, '\0') + number(quint64(yFine60), 2) + QByteArray(17, '\0');
}

QByteArray packetAt(quint64 ms, const QByteArray &data)
{
    return blocks::packet(examplecapture::startNs + ms * 1'000'000, data);
}

QByteArray reportAt(quint64 ms, const QByteArray &report, int board = 1001)
{
    return packetAt(ms, packetBytes(1, 1, 0, board, 0, report, 1));
}

/// Ten reports of a signal that rises, 10 ms apart.
QList<QByteArray> tenReports(int board = 1001)
{
    QList<QByteArray> packets;
    for (int i = 0; i < 10; ++i)
        packets += reportAt(quint64(10 * i), signalReport(100 + 2 * i), board);
    return packets;
}

QByteArray captureOf(const QList<QByteArray> &packets)
{
    return examplecapture::start() + packets.join();
}

} // namespace

/// `padscope diff` as a process.
class DiffTests : public QObject
{
    Q_OBJECT

private slots:
    void namesWhatDiffers_data();
    void namesWhatDiffers();
    void tellsADifferenceOnce_data();
    void tellsADifferenceOnce();
    void recordingDoesNotCount();
    void tolerances_data();
    void tolerances();
    void aRemovedReportAmongThoseWithinATolerance();
    void oneOfEqualReports();
    void ignoredFields_data();
    void ignoredFields();
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
    ProgramRun diff(const QList<QByteArray> &a, const QList<QByteArray> &b,
                    const QStringList &options = {}) const
    {
        return padscope(QStringList{"diff"} + options +
                        QStringList{files.write("a", captureOf(a)), files.write("b", captureOf(b))});
    }

    const Files files;
};

void DiffTests::namesWhatDiffers_data()
{
    addColumns<QList<QByteArray>, QString>("b", "output");
    const QList<QByteArray> a = tenReports();
    const auto with = [&a](int index, const QByteArray &packet) {
        QList<QByteArray> b = a;
        b[index] = packet;
        return b;
    };
    QList<QByteArray> removed = a;
    removed.removeAt(4);
    QList<QByteArray> added = a;
    added.insert(7, reportAt(65, QByteArray::fromHex("0f21010203")));
    QList<QByteArray> swapped = a;
    swapped[3] = reportAt(30, signalReport(108));
    swapped[4] = reportAt(40, signalReport(106));
    const QByteArray changed = reportAt(50, signalReport(113));
    QList<QByteArray> several = with(5, changed);
    several.removeAt(8);
    addRow("nothing", a, "");
    addRow("a report is removed", removed, "+0.040 s board 1001 SignalReport 1 only in A\n");
    addRow("a report is added", added, "+0.065 s board 1001 unknown only in B\n");
    addRow("a field", with(5, changed), "+0.050 s board 1001 SignalReport 1 yFine60 110 -> 113\n");
    addRow("two are swapped", swapped,
           "+0.030 s board 1001 SignalReport 1 only in A\n+0.040 s board 1001 SignalReport 1 only in B\n");
    addRow("several", several,
           "+0.050 s board 1001 SignalReport 1 yFine60 110 -> 113\n"
           "+0.080 s board 1001 SignalReport 1 only in A\n");
    addRow("two fields", with(5, reportAt(50, signalReport(-110, 3))),
           "+0.050 s board 1001 SignalReport 1 xFine0 0 -> 3, yFine60 110 -> -110\n");
    addRow("a byte without a field", with(5, reportAt(50, signalReport(110).replace(12, 1, "\xFF"))),
           "+0.050 s board 1001 SignalReport 1 byte 12 00 -> ff\n");
    addRow("a byte that is cut off", with(5, reportAt(50, signalReport(110).chopped(3))),
           "+0.050 s board 1001 SignalReport 1 length 40 -> 37, frequencyRaw 0 -> none\n");
    addRow("another type", with(5, reportAt(50, QByteArray::fromHex("0f21"))),
           "+0.050 s board 1001 SignalReport 1 only in A\n+0.050 s board 1001 unknown only in B\n");
}

void DiffTests::namesWhatDiffers()
{
    QFETCH(QList<QByteArray>, b);
    const ProgramRun run = diff(tenReports(), b);
    QTEST(QString(run.output), "output");
    QCOMPARE(run.errors, QByteArray());
    QCOMPARE(run.status, run.output.isEmpty() ? 0 : 1);
}

void DiffTests::tellsADifferenceOnce_data()
{
    addColumns<QByteArray, QByteArray, QStringList, QString>("a", "b", "options", "difference");
    const QByteArray reading = QByteArray::fromHex("34770c3e01");      // 318
    const QByteArray otherReading = QByteArray::fromHex("34770c4101"); // 321, 14.64 mV more
    const QByteArray text("\x06\x32high");
    const QByteArray shorter("\x05\x32hi!");
    addRow("a field and the same scaled", reading, otherReading, QStringList{},
           "AdcReport adcRaw 318 -> 321");
    addRow("within the tolerance", reading, otherReading, QStringList{"--tolerance", "adcRaw=3"}, "");
    addRow("beyond it", reading, otherReading, QStringList{"--tolerance", "adcRaw=2"},
           "AdcReport adcRaw 318 -> 321");
    addRow("within the scaled one's", reading, otherReading, QStringList{"--tolerance", "volts=0.015"}, "");
    addRow("beyond the scaled one's", reading, otherReading, QStringList{"--tolerance", "volts=0.014"},
           "AdcReport adcRaw 318 -> 321");
    addRow("a text and its length", text, shorter, QStringList{}, R"(TextReport characters "high" -> "hi!")");
    addRow("a length and the byte with it", QByteArray::fromHex("022100"), QByteArray::fromHex("0121"),
           QStringList{}, "unknown length 3 -> 2");
    addRow("another first byte", QByteArray::fromHex("022100"), QByteArray::fromHex("0521"), QStringList{},
           "unknown length 3 -> 2, reportLength 2 -> 5");
    const QByteArray position = QByteArray::fromHex("1fa47f") + QByteArray(28, '\0');
    QByteArray otherPosition = position;
    otherPosition.replace(0, 1, "\x22");
    addRow("a length", position, otherPosition, QStringList{}, "PositionReport reportLength 31 -> 34");
    addRow("within its tolerance", position, otherPosition, QStringList{"--tolerance", "reportLength=3"}, "");
    addRow("beyond it", position, otherPosition, QStringList{"--tolerance", "reportLength=2"},
           "PositionReport reportLength 31 -> 34");
    addRow("a length that is ignored", position, otherPosition, QStringList{"--ignore", "reportLength"}, "");
    addRow("types and sub-types", QByteArray::fromHex("0421ff00"), QByteArray::fromHex("04200000"),
           QStringList{}, "unknown reportType 33 -> 32, reportSubType 255 -> 0");
    addRow("one of which is ignored", QByteArray::fromHex("0421ff00"), QByteArray::fromHex("04200000"),
           QStringList{"--ignore", "reportType"}, "unknown reportSubType 255 -> 0");
    addRow("the type of a text", QByteArray("\x04\x32hi"), QByteArray("\x04\x77hi"), QStringList{},
           "TextReport reportType 50 -> 119");
    // There it is half of a field.
    QByteArray phase = QByteArray::fromHex("2868") + QByteArray(38, '\0');
    addRow("a field in place of a sub-type", phase, QByteArray(phase).replace(2, 1, "\1"), QStringList{},
           "PhaseReport xRs0 0 -> 256");
}

void DiffTests::tellsADifferenceOnce()
{
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QFETCH(QStringList, options);
    QFETCH(QString, difference);
    const ProgramRun run = diff({reportAt(0, a)}, {reportAt(0, b)}, options);
    QCOMPARE(QString(run.output),
             difference.isEmpty() ? QString() : "+0.000 s board 1001 " + difference + '\n');
    QCOMPARE(run.status, difference.isEmpty() ? 0 : 1);
}

/// Times, sequence, session, thread, listener, losses, status, marks, and flags of a replay and of an edit.
void DiffTests::recordingDoesNotCount()
{
    QList<QByteArray> recorded{packetAt(0, packetBytes(5, 0, 0, 0, 0, examplecapture::statusPayload()))};
    const int withinCall = 4;
    const int fromReplay = 64;
    const int edited = 128;
    for (int i = 0; i < 10; ++i) {
        QByteArray data = packetBytes(1, 1 + withinCall + fromReplay + edited, 0, 1001, 0,
                                      signalReport(100 + 2 * i), quint32(i), quint32(i), quint64(1000 * i));
        data.replace(24, 4, "sess").replace(28, 4, "thrd");
        recorded += packetAt(quint64(500 + 7 * i), data);
        recorded += packetAt(quint64(501 + 7 * i), packetBytes(6, 0, 0, 0, 0, "a mark"));
    }
    const ProgramRun run = diff(tenReports(), recorded);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(run.status, 0);
}

void DiffTests::tolerances_data()
{
    addColumns<QStringList, int>("options", "status");
    addRow("none", QStringList{}, 1);
    addRow("just enough", QStringList{"--tolerance", "yFine60=3"}, 0);
    addRow("of the one layout", QStringList{"--tolerance", "signal1.yFine60=3"}, 0);
    addRow("too small", QStringList{"--tolerance", "yFine60=2.9"}, 1);
    addRow("another field's", QStringList{"--tolerance", "yFine0=3"}, 1);
    addRow("with another field's", QStringList{"--tolerance", "xFine0=1", "--tolerance", "yFine60=3"}, 0);
}

void DiffTests::tolerances()
{
    QFETCH(QStringList, options);
    QList<QByteArray> b = tenReports();
    b[5] = reportAt(50, signalReport(113));
    const ProgramRun run = diff(tenReports(), b, options);
    QTEST(run.status, "status");
    QCOMPARE(run.output.isEmpty(), run.status == 0);
}

/// Its neighbours are equal to it within the tolerance.
void DiffTests::aRemovedReportAmongThoseWithinATolerance()
{
    QList<QByteArray> b = tenReports();
    b[5] = reportAt(50, signalReport(113));
    b.removeAt(2);
    const ProgramRun run = diff(tenReports(), b, {"--tolerance", "yFine60=3"});
    QCOMPARE(run.output, QByteArray("+0.020 s board 1001 SignalReport 1 only in A\n"));
}

/// Its time tells which of them it is.
void DiffTests::oneOfEqualReports()
{
    QList<QByteArray> a;
    for (int i = 0; i < 10; ++i)
        a += reportAt(quint64(10 * i), signalReport(1));
    QList<QByteArray> b = a;
    b.removeAt(4);
    QCOMPARE(diff(a, b).output, QByteArray("+0.040 s board 1001 SignalReport 1 only in A\n"));
    QCOMPARE(diff(b, a).output, QByteArray("+0.040 s board 1001 SignalReport 1 only in B\n"));
}

void DiffTests::ignoredFields_data()
{
    addColumns<QByteArray, QByteArray, QString, int>("a", "b", "field", "status");
    addRow("a field", signalReport(1), signalReport(2), "yFine60", 0);
    addRow("another one", signalReport(1), signalReport(2), "yFine0", 1);
    addRow("a text", QByteArray("\x04\x32hi"), QByteArray("\x05\x32hey"), "characters", 0);
    const QByteArray reading = QByteArray::fromHex("34770c0100");
    const QByteArray otherReading = QByteArray::fromHex("34770c0200");
    addRow("two fields of the same bits, the raw one", reading, otherReading, "adcRaw", 0);
    addRow("two fields of the same bits, the scaled one", reading, otherReading, "volts", 0);
}

void DiffTests::ignoredFields()
{
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QFETCH(QString, field);
    QTEST(diff({reportAt(0, a)}, {reportAt(0, b)}, {"--ignore", field}).status, "status");
}

void DiffTests::times()
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

void DiffTests::boardsThatAreMapped()
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

void DiffTests::boardsOfOneFileOnly()
{
    const QByteArray other = reportAt(100, QByteArray::fromHex("0f21"), -5);
    const ProgramRun run = diff(tenReports(), tenReports() + QList<QByteArray>{other});
    QCOMPARE(run.output, QByteArray("+0.100 s board -5 unknown only in B\n"));
}

/// Each kind for itself: a report that comes before a call here and after it there is no difference.
void DiffTests::kinds()
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

void DiffTests::callsByTheirArguments_data()
{
    addColumns<QByteArray, QByteArray, QString>("a", "b", "differences");
    const QByteArray board = number(1001, 4);
    const auto text = [](const QByteArray &bytes) { return number(quint64(bytes.size()), 4) + bytes; };
    addRow("a text", board + text("?\r"), board + text("!\r"), R"(command "?\r" -> "!\r")");
    addRow("quotes", board + text("say \"\""), board + text("\\"), R"(command "say \"\"" -> "\\")");
    addRow("null", board + text("a"), board + number(0xFFFFFFFF, 4), R"(command "a" -> none)");
    addRow("bytes behind", board + text("a"), board + text("a") + "x", "length 9 -> 10");
}

void DiffTests::callsByTheirArguments()
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

void DiffTests::summary()
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

void DiffTests::cutFiles()
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

void DiffTests::trouble_data()
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

void DiffTests::trouble()
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

void DiffTests::pipes()
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

PADSCOPE_TESTS(DiffTests);
#include "tst_diff.moc"
