#include "simulator/replay/replaycapture.h"
#include "support/tests.h"

/// What a host is handed of a report.
class tst_replaybytes : public QObject
{
    Q_OBJECT

private slots:
    void aFileThatIsCutWhileItIsPlayed();
    void aReportThatWasCut();
    void nullAndLengthAreAsRecorded_data();
    void nullAndLengthAreAsRecorded();
    void reportsOfOtherLengthsAreNotTheSame();
};

namespace {

/// Of listener 1 unless said otherwise.
QByteArray reportBlock(int flags, const QByteArray &recorded, quint32 length, quint32 listener = 1)
{
    QByteArray block =
        blocks::packet(ReplayCapture::startNs, packetBytes(1, flags, 0, 1001, 0, recorded, listener));
    block.replace(24, 4, blocks::number(40 + length, 4)); // the original length
    return block;
}

} // namespace

void tst_replaybytes::aFileThatIsCutWhileItIsPlayed()
{
    ReplayCapture capture;
    capture.report(0, 1001, "04c800");
    for (int i = 0; i < 3000; ++i) // more than is read at once
        capture.report(1, 1001, "04c801");
    const QByteArray path = capture.file();
    const StandardError errors;
    Playing playing(capture.scenario("\"paused\": true"));
    QVERIFY(QFile::resize(path, 10'000));
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    QTRY_VERIFY(errors.text().startsWith("replay: " + path + ": offset "));
    QVERIFY(errors.text().contains(": it cannot be read any more\nreplay: asked rate 1, "));
    QVERIFY(playing.recorder.count() > 50 && playing.recorder.count() < 3000);
}

void tst_replaybytes::aReportThatWasCut()
{
    ReplayCapture capture;
    capture.add(0, packetBytes(1, 1 | 8, 0, 1001, 0, "\x04\xC8", 1));
    capture.add(1, packetBytes(1, 1, 0, 1001, 0, {}, 1));
    Playing playing(capture.file());
    QVERIFY(ends(playing.library));
    QCOMPARE(heard(playing.recorder), (QList<QByteArray>{"1001:04c8", "1001:"}));
}

/// A null pointer and the length are handed over as they were.
void tst_replaybytes::nullAndLengthAreAsRecorded_data()
{
    addColumns<int, QByteArray, quint32, QByteArray>("flags", "recorded", "length", "delivered");
    addRow("empty", 1, QByteArray(), quint32(0), QByteArray("at some address: 0"));
    addRow("null", 1 | 16, QByteArray(), quint32(0), QByteArray("null: 0"));
    addRow("null with a length", 1 | 16, QByteArray(), quint32(5), QByteArray("null: 5"));
    addRow("cut", 1 | 8, QByteArray("\x05!"), quint32(5), QByteArray("0521000000: 5"));
    addRow("the longest that was cut", 1 | 8, QByteArray("\x05!"), quint32(1'048'576),
           "0521" + QByteArray(2'097'148, '0') + ": 1048576");
    addRow("one beyond it", 1 | 8, QByteArray("\x05!"), quint32(1'048'577),
           "0521" + QByteArray(2'097'148, '0') + ": 1048576");
}

void tst_replaybytes::nullAndLengthAreAsRecorded()
{
    QFETCH(int, flags);
    QFETCH(QByteArray, recorded);
    QFETCH(quint32, length);
    QFETCH(QByteArray, delivered);
    ReplayCapture capture;
    capture.packets.append(reportBlock(flags, recorded, length));
    Playing playing(capture.scenario("\"paused\": true"));
    QByteArray heard;
    playing.library.orvexClearCallback(1001, Recorder::data, &playing.recorder);
    playing.library.orvexSetCallback(
        1001,
        [](int, const unsigned char *bytes, unsigned int count, void *text) {
            const QByteArray hex = QByteArray(reinterpret_cast<const char *>(bytes), int(count)).toHex();
            const QByteArray shown = count > 0 ? hex : "at some address";
            *static_cast<QByteArray *>(text) = (bytes ? shown : "null") + ": " + QByteArray::number(count);
        },
        &heard);
    playing.library.replayPause(0);
    QVERIFY(ends(playing.library));
    QCOMPARE(heard, delivered);
}

/// Of two listeners.
void tst_replaybytes::reportsOfOtherLengthsAreNotTheSame()
{
    ReplayCapture capture;
    capture.packets = {reportBlock(1 | 16, {}, 5, 1), reportBlock(1 | 16, {}, 5, 2), // the same
                       reportBlock(1 | 16, {}, 0, 3), reportBlock(1, {}, 0, 4)};
    Playing playing(capture.scenario("\"paused\": true"));
    QCOMPARE(replayOf(playing.library).reports, 3ULL);
}

PADSCOPE_TESTS(tst_replaybytes);
#include "tst_replaybytes.moc"
