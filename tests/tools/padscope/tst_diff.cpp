#include "diffs.h"
#include "support/tests.h"

/// What `padscope diff` finds different in reports.
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

PADSCOPE_TESTS(DiffTests);
#include "tst_diff.moc"
