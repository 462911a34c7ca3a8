#include <QRandomGenerator>

#include "capture/blocks.h"
#include "recordreader.h"
#include "support/tests.h"

using namespace blocks;
using capture::pcapng::Event;

namespace {

const QByteArray header = QByteArray::fromHex("5044"     // "PD"
                                              "01"       // version
                                              "28"       // 40 bytes
                                              "03"       // a return
                                              "06"       // with a result, within a call
                                              "2900"     // the 41st entry point
                                              "f9ffffff" // board -7
                                              "feffffff" // result -2
                                              "0807060504030201"
                                              "93c0f1a5"
                                              "d2040000"
                                              "11000000"
                                              "03000000");

/// Byte by byte.
template <typename Integer>
Integer plainIntegerAt(const QByteArray &bytes, int index, capture::ByteOrder order)
{
    constexpr int size = sizeof(Integer);
    quint64 value = 0;
    for (int i = 0; i < size; ++i) {
        const int at = index + (order == capture::ByteOrder::Little ? i : size - 1 - i);
        if (at < bytes.size())
            value |= quint64{static_cast<uchar>(bytes[at])} << (8 * i);
    }
    return static_cast<Integer>(value);
}

template <typename... Integers>
bool areEqual(const QByteArray &bytes, int index, capture::ByteOrder order)
{
    const capture::ByteView view{reinterpret_cast<const unsigned char *>(bytes.constData()),
                                 static_cast<std::size_t>(bytes.size())};
    return ((capture::integerAt<Integers>(view, static_cast<std::size_t>(index), order) ==
             plainIntegerAt<Integers>(bytes, index, order)) &&
            ...);
}

} // namespace

class RecordTests : public QObject
{
    Q_OBJECT

private slots:
    void integersAreThoseOfTheirBytes();
    void aHeaderIsFortyBytes();
    void namesOfKinds();
    void readsRecords();
    void passesForeignPacketsBy();
    void numbersFramesAsWiresharkDoes();
    void passesOtherLinkTypesBy();
    void passesALaterVersionBy();
};

void RecordTests::integersAreThoseOfTheirBytes()
{
    QCOMPARE(capture::integerAt<quint32>(capture::viewOf("\x01\x02\x03"), 1), 0x0302u);
    QCOMPARE(capture::integerAt<quint32>(capture::viewOf("\x01\x02\x03"), 1, capture::ByteOrder::Big),
             0x02030000u);
    QRandomGenerator random(20);
    for (int round = 0; round < 2000; ++round) {
        QByteArray bytes(random.bounded(20), 0);
        for (char &byte : bytes)
            byte = static_cast<char>(random.bounded(256));
        const int index = random.bounded(24);
        for (const auto order : {capture::ByteOrder::Little, capture::ByteOrder::Big}) {
            const bool same = areEqual<quint8, qint8, quint16, qint16, quint32, qint32, quint64, qint64>(
                bytes, index, order);
            QVERIFY2(same, bytes.toHex() + " at " + QByteArray::number(index));
        }
    }
}

void RecordTests::aHeaderIsFortyBytes()
{
    capture::Header written = capture::newHeader(capture::Kind::Return);
    written.flags = capture::ResultIsValid | capture::WithinCall;
    written.call = 41;
    written.board = -7;
    written.result = -2;
    written.sequence = 0x0102030405060708;
    written.session = 0xA5F1C093;
    written.thread = 1234;
    written.link = 17;
    written.lost = 3;
    std::string bytes;
    append(bytes, written);
    QCOMPARE(QByteArray::fromStdString(bytes).toHex(), header.toHex());
}

void RecordTests::namesOfKinds()
{
    QCOMPARE(capture::nameOf(capture::Kind::Report), "report");
    QCOMPARE(capture::nameOf(capture::Kind::Return), "return");
    QCOMPARE(capture::nameOf(capture::Kind::End), "end");
    QVERIFY(!capture::nameOf(static_cast<capture::Kind>(9)));
}

void RecordTests::readsRecords()
{
    const QByteArray longer = QByteArray(header).replace(3, 1, "\x2c") + "new.";
    const MemoryFile file(section() + interface("driver") + packet(5, header + "payload") +
                          packet(6, longer + "pay"));
    capture::RecordReader reader(file.descriptor());
    QCOMPARE(reader.next(), Event::Packet);
    const capture::Record &record = reader.record();
    QCOMPARE(record.frame, std::uint64_t{1});
    QCOMPARE(record.offset, std::uint64_t{28 + 44});
    QCOMPARE(record.timeNs, std::uint64_t{5});
    QCOMPARE(record.header.kindOf(), capture::Kind::Return);
    QVERIFY(record.header.has(capture::ResultIsValid) && record.header.has(capture::WithinCall));
    QVERIFY(!record.header.has(capture::BoardIsValid));
    QCOMPARE(record.header.call, std::uint16_t{41});
    QCOMPARE(record.header.board, -7);
    QCOMPARE(record.header.result, -2);
    QCOMPARE(record.header.sequence, std::uint64_t{0x0102030405060708});
    QCOMPARE(record.header.session, 0xA5F1C093U);
    QCOMPARE(record.header.thread, 1234U);
    QCOMPARE(record.header.link, 17U);
    QCOMPARE(record.header.lost, 3U);
    QCOMPARE(record.payload.text(), std::string_view("payload"));
    QCOMPARE(record.payloadLength, 7U);
    QCOMPARE(reader.next(), Event::Packet);
    QCOMPARE(record.payload.text(), std::string_view("pay")); // behind what the header has more
    QCOMPARE(reader.next(), Event::End);
}

void RecordTests::passesForeignPacketsBy()
{
    const QByteArray shortHeader = QByteArray(header).replace(3, 1, "\x24");
    const QByteArray oddHeader = QByteArray(header).replace(3, 1, "\x29") + "....";
    const MemoryFile file(section() + interface("driver") + packet(1, "") + packet(2, "PD\x01") +
                          packet(3, "QD\x01(") + packet(4, header.left(39)) + packet(5, shortHeader) +
                          packet(6, oddHeader) + block(0x77, "....") + packet(7, header));
    capture::RecordReader reader(file.descriptor());
    QCOMPARE(reader.next(), Event::Packet);
    QCOMPARE(reader.record().frame, std::uint64_t{7});
    QCOMPARE(reader.record().payload.size, std::size_t{0});
    QCOMPARE(reader.next(), Event::End);
    QCOMPARE(reader.skipped().foreignPackets, std::uint64_t{3});
    QCOMPARE(reader.skipped().cutHeaders, std::uint64_t{3});
    QCOMPARE(reader.skipped().otherBlocks, std::uint64_t{1});
}

/// Simple packets, entries of a journal, events of an operating system and custom blocks of either sort.
void RecordTests::numbersFramesAsWiresharkDoes()
{
    const QByteArray simple = block(3, number(4, 4) + "abcd");
    const QByteArray journal = block(9, "a=b\n");
    const QByteArray custom = block(0xBAD, "....") + block(0x40000BAD, "....");
    const QByteArray events = block(0x204, "....") + block(0x216, "....") + block(0x221, "....");
    const MemoryFile file(section() + interface("driver") + simple + journal + custom + events +
                          packet(1, header));
    capture::RecordReader reader(file.descriptor());
    QCOMPARE(reader.next(), Event::Packet);
    QCOMPARE(reader.record().frame, std::uint64_t{8});
    QCOMPARE(reader.skipped().foreignPackets, std::uint64_t{7});
    QCOMPARE(reader.skipped().otherBlocks, std::uint64_t{0});
}

/// Whatever a network card has sent.
void RecordTests::passesOtherLinkTypesBy()
{
    const QByteArray ethernet = block(1, number(1, 2) + number(0, 2) + number(65535, 4));
    const MemoryFile file(section() + ethernet + packet(1, header));
    capture::RecordReader reader(file.descriptor());
    QCOMPARE(reader.next(), Event::End);
    QCOMPARE(reader.skipped().foreignPackets, std::uint64_t{1});
}

/// Others may lie behind it, of a session that was merged.
void RecordTests::passesALaterVersionBy()
{
    const QByteArray newer = QByteArray(header).replace(2, 1, "\x02");
    const MemoryFile file(section() + interface("driver") + packet(1, header) + packet(2, newer) +
                          packet(3, newer) + packet(4, header));
    capture::RecordReader reader(file.descriptor());
    QList<QPair<quint64, capture::HeaderTrouble>> passedBy;
    reader.onPassedBy = [&](std::uint64_t frame, capture::HeaderTrouble trouble) {
        passedBy.append({frame, trouble});
    };
    QCOMPARE(reader.next(), Event::Packet);
    QCOMPARE(reader.next(), Event::Packet);
    QCOMPARE(reader.record().frame, std::uint64_t{4});
    QCOMPARE(reader.next(), Event::End);
    QCOMPARE(reader.skipped().newVersions, std::uint64_t{2});
    QCOMPARE(reader.skipped().newVersionOffset, std::uint64_t{28 + 44 + 72});
    using Trouble = capture::HeaderTrouble;
    QVERIFY(passedBy == (QList<QPair<quint64, Trouble>>{{2, Trouble::NewVersion}, {3, Trouble::NewVersion}}));
}

PADSCOPE_TESTS(RecordTests);
#include "tst_records.moc"
