#include <QDir>
#include <QRandomGenerator>

#include "checksum.h"
#include "monitor.h"
#include "monitor/inspect.h"
#include "monitorrows.h"
#include "records.h"
#include "support/datalines.h"
#include "support/fakewindow.h"
#include "support/packets.h"
#include "support/tests.h"

namespace {

const QByteArray noPayload;

/// \param what a report's bytes, behind "~" when another thread than the tool's delivers it, or the name of
/// another packet
QByteArray packetFrom(const QByteArray &what)
{
    static const QMap<QByteArray, QByteArray> others{
        {"attach", packetBytes(2, 0, 1, 0, 0, noPayload)},
        {"attached", packetBytes(3, 0, 1, 0, 0, noPayload)},
        {"send", packetBytes(2, 1, 6, 7, 0, noPayload)},
        {"sent", packetBytes(3, 1, 6, 7, 0, noPayload)},
        {"clock",
         packetBytes(5, 0, 0, 0, 0, blocks::number(5'000'000'000, 8) + QByteArray(8 + 8 + 4 + 4, '\0'))},
        {"detach", packetBytes(2, 0, 2, 0, 0, noPayload)},
        {"detached", packetBytes(3, 0, 2, 0, 0, noPayload)},
        {"closing", packetBytes(2, 1, 32, 7, 0, hex("07000000 01000000 ffffffff"))},
        {"status", packetBytes(5, 0, 0, 0, 0, noPayload)},
        {"slice-end", packetBytes(8, 0, 0, 0, 0, hex("04000000 00000000 00000000"))},
        {"end", packetBytes(8, 0, 0, 0, 0, noPayload)},
    };
    if (what.startsWith('~'))
        return packetFrom(what.mid(1)).replace(28, 4, "else");
    return others.contains(what) ? others[what] : packetBytes(1, 1, 0, 7, 0, hex(what));
}

/// A report of any layout and any length up to beyond the longest, or of an unknown type.
QByteArray randomReport(QRandomGenerator &random)
{
    static const QByteArray types = hex("2f 32 32 68 77 77 a2 a3 a4 21");
    static const QByteArray lengths = hex("0a 0e 10 19 28 34 3a 0c");
    QByteArray bytes(1, lengths[random.bounded(lengths.size())]);
    bytes += types[random.bounded(types.size())];
    if (random.bounded(4) > 0)
        bytes += static_cast<char>(random.bounded(2) ? random.bounded(8) : 12);
    for (int i = random.bounded(45); i > 0; --i)
        bytes += static_cast<char>(random.bounded(4) ? random.bounded(256) : 10 + 2 * random.bounded(2));
    return bytes;
}

QByteArray loggedText()
{
    QDir folder(QDir::homePath() + "/qorvexgraph logs");
    QByteArray text;
    for (const QString &name : folder.entryList(QDir::Files)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            text += file.readAll();
    }
    return text;
}

} // namespace

class MonitorRowsTests : public QObject
{
    Q_OBJECT

private slots:
    void rows_data();
    void rows();
    void noMoreThanTheLimit();
    void reportsThatAreNotWanted();
    void checksums();
    void agreesWithTheMonitor();
};

void MonitorRowsTests::rows_data()
{
    addColumns<QString, QByteArray, QStringList>("threshold", "rows", "packets");
    for (const QStringList &parts : dataLines(TEST_FOLDER "/monitorrows.txt", 4, 14)) {
        const QString rows = parts[2] == "none" ? QString() : parts[2] + " & ";
        addRow(qPrintable(parts[0]), parts[1].trimmed(), QString(rows).replace(" & ", "\n").toLatin1(),
               QStringList(parts.mid(3)));
    }
}

void MonitorRowsTests::rows()
{
    QFETCH(QString, threshold);
    QFETCH(QStringList, packets);
    decoding::MonitorRows rows(threshold == "-" ? std::nullopt : std::optional(threshold.toInt()));
    decoding::Lines lines;
    for (const QString &packet : qAsConst(packets)) {
        const int ms = packet.section(' ', 0, 0).toInt();
        const OwnRecord own(packetFrom(packet.section(' ', 1).toLatin1()),
                            1'000'000'000 + quint64(ms) * 1'000'000);
        rows.follow(own.record, lines);
        if (own.record.header.kindOf() == capture::Kind::Report)
            rows.show(own.record, ms, true, lines);
    }
    rows.finish(lines);
    QTEST(QByteArray::fromStdString(lines.text), "rows");
}

void MonitorRowsTests::noMoreThanTheLimit()
{
    decoding::MonitorRows rows(std::nullopt);
    decoding::Lines lines;
    lines.left = 1;
    const OwnRecord text(packetFrom("003261"));
    const OwnRecord twoLines(packetFrom("0032620a63"));
    rows.show(text.record, 0, true, lines);
    rows.show(twoLines.record, 100, true, lines);
    rows.finish(lines);
    QCOMPARE(lines.text, std::string("ab.\n"));
}

/// They go into a line, and into what is repeated, but make no rows.
void MonitorRowsTests::reportsThatAreNotWanted()
{
    decoding::MonitorRows rows(std::nullopt);
    decoding::Lines lines;
    int ms = 0;
    const auto show = [&](const QByteArray &bytes, bool isWanted) {
        const OwnRecord own(packetFrom(bytes), quint64(ms += 100) * 1'000'000);
        rows.follow(own.record, lines);
        rows.show(own.record, ms, isWanted, lines);
    };
    show("030141", false);
    show("0032 6162", false);
    show("0032 630a", true);
    show("0032 640a65", false);
    show("09a200000001000200", false);
    show("09a200000001000200", true);
    show("030142", false);
    show("030143", true); // the "e" is due
    QCOMPARE(lines.text, std::string("abc.\n..C\n03 01 43 \n"));
}

void MonitorRowsTests::checksums()
{
    const auto checksum = [](const QByteArray &bytes) {
        return decoding::checksumOf(capture::viewOf({bytes.constData(), std::size_t(bytes.size())}));
    };
    QCOMPARE(checksum("123456789"), std::uint16_t{0x906E});
    QCOMPARE(checksum("HH"), std::uint16_t{0x49AD});
    QCOMPARE(checksum(""), qChecksum("", 0));
    QByteArray bytes;
    for (int i = 0; i < 1000; ++i) {
        bytes += static_cast<char>(i * i * 31);
        QCOMPARE(checksum(bytes), qChecksum(bytes.constData(), uint(bytes.size())));
    }
}

/// Without the timer, which the Monitor has of its own.
void MonitorRowsTests::agreesWithTheMonitor()
{
    FakeWindow window;
    monitor view(&window);
    view.LogToFile(true);
    decoding::MonitorRows rows(std::nullopt);
    decoding::Lines lines;
    QRandomGenerator random(7);
    int ms = 86'399'000; // midnight comes
    // No text: the time of the dummy before the first report is that of the test.
    QByteArray bytes = hex("032100");
    for (int i = 0; i < 3000; ++i) {
        ms = (ms + random.bounded(60)) % 86'400'000;
        if (i > 0 && random.bounded(4) > 0)
            bytes = randomReport(random);
        _DataPacket packet = packetOf(bytes, QTime::fromMSecsSinceStartOfDay(ms));
        view.Display(&packet);
        const OwnRecord own(packetBytes(1, 1, 0, 7, 0, bytes));
        rows.show(own.record, ms, true, lines);
    }
    delete Inspect::previousPacket(view);
    const QByteArray expected = loggedText();
    QVERIFY(expected.count('\n') > 1000);
    QCOMPARE(QByteArray::fromStdString(lines.text), expected);
}

PADSCOPE_TESTS(MonitorRowsTests);
#include "tst_monitorrows.moc"
